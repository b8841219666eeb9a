// Files: the ticks of the list's rows and the exceptions that they leave.
#include "selection/selection_model.h"

SelectionModel::RowFlips::RowFlips(SelectionModel& model) : model_(model) {
    model_.host_.BeginRowFlips();
    ++model_.openFlips_;
}

SelectionModel::RowFlips::~RowFlips() {
    if (--model_.openFlips_ == 0 && model_.ancestorsAreStale_) {
        model_.ancestorsAreStale_ = false;
        model_.UpdateSelectedAncestors();
    }
    model_.host_.EndRowFlips();
}

bool SelectionModel::RowTicked(std::int32_t row) const {
    return FileTicked(host_.RowFilePath(row), SelectedFolderIsTicked());
}

bool SelectionModel::FileTicked(const clString& path, bool folderIsTicked) const {
    if (!folderIsTicked && !lists_._FilesIncluded.Contains(path)) return false;
    return !lists_._FilesExcluded.Contains(path);
}

void SelectionModel::RowTickChanged(std::int32_t row, bool ticked) {
    const clString path = host_.RowFilePath(row);
    ForgetFile(path);
    // Without exceptions a row says what its folder says.
    if (ticked == SelectedFolderIsTicked()) return;
    (ticked ? lists_._FilesIncluded : lists_._FilesExcluded).Add(path);
}

void SelectionModel::ForgetFile(const clString& path) {
    lists_._FilesIncluded.Remove(path);
    lists_._FilesExcluded.Remove(path);
}

void SelectionModel::OnRowChecked(std::int32_t row, bool ticked) {
    RowTickChanged(row, ticked);
    if (openFlips_ > 0) {
        ancestorsAreStale_ = true;
    } else {
        UpdateSelectedAncestors();
    }
}

void SelectionModel::RunRowCommand(RowCommand command) {
    const RowFlips flips(*this);
    ancestorsAreStale_ = true;
    const std::int32_t rows = host_.RowCount();
    for (std::int32_t row = 0; row < rows; ++row) {
        const bool ticked = command == RowCommand::InvertSelection
                                ? host_.RowCheckState(row) == ::RowUnticked
                                : command == RowCommand::CheckAll;
        host_.SetRowCheckState(row, ticked ? ::RowTicked : ::RowUnticked);
        RowTickChanged(row, ticked);
    }
}

void SelectionModel::UpdateSelectedAncestors() {
    UpdateAncestors(host_.SelectedNode());
}
