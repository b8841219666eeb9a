#include "tests/mainwindow/file_list_form.h"

#include <utility>

#include "tests/support/text.h"

namespace {

constexpr DWORD programsListStyle = WS_VISIBLE | WS_TABSTOP | WS_BORDER | LVS_REPORT |
                                    LVS_OWNERDRAWFIXED | LVS_SHAREIMAGELISTS | LVS_ALIGNLEFT;
constexpr WORD listId = 1002;

}  // namespace

FileListForm::FileListForm(const wchar_t* names, const wchar_t* widths) {
    form.created = [this] {
        const HWND control = form.Child(listId);
        view.SetListWindow(control);
        view.Attach(control);
    };
    DialogTemplate dialog(hiddenForm, 360, 200);
    dialog.Add({WC_LISTVIEWW, programsListStyle, 0, 0, 350, 190, listId});
    form.Show(dialog);
    files.SetUp(LVS_EX_CHECKBOXES | LVS_EX_FULLROWSELECT);
    files._ColumnNames.Assign(names);
    files.RestoreColumns(widths);
}

FileRow& FileListForm::AddRow(const wchar_t* path, const std::vector<const wchar_t*>& cells,
                              bool ticked) {
    FileRow record;
    record.path.Assign(path);
    const std::int32_t place = files.AddRow(
        std::move(record), {}, [](const FileRow&, const clString&) -> clString { return {}; });
    files.SetTicked(place, ticked);
    std::int32_t column = 0;
    for (const wchar_t* text : cells)
        view.SetCell(text, place, column++);
    return *files.RowAt(place);
}

std::vector<std::string> FileListForm::FirstCells() const {
    std::vector<std::string> cells;
    for (std::int32_t row = 0; row < view.RowCount(); ++row)
        cells.push_back(Utf8(view.CellText(row, 0)));
    return cells;
}

std::vector<std::string> FileListForm::Titles() const {
    std::vector<std::string> titles;
    for (std::int32_t column = 0; column < view.ColumnCount(); ++column)
        titles.push_back(Utf8(view.ColumnTitle(column)));
    return titles;
}

std::vector<std::int32_t> FileListForm::Images() const {
    std::vector<std::int32_t> images;
    for (std::int32_t column = 0; column < view.ColumnCount(); ++column)
        images.push_back(view.ColumnImage(column));
    return images;
}
