#include "tests/selection/oracle/model_side.h"

#include <cstddef>
#include <memory>
#include <stdexcept>

namespace oracle {
namespace {

class DiskEntries : public FolderEntries {
public:
    DiskEntries(const DiskEntry* folder, const clString& path) : folder_(folder) {
        FromProduct(path, path_);
    }

    bool Next(FolderEntry& entry) override {
        if (folder_ == nullptr || next_ == folder_->entries.size()) return false;
        const DiskEntry& found = folder_->entries[next_++];
        current_.Assign(ToProduct(path_ + found.name));
        entry.path = &current_;
        entry.isDirectory = found.isDirectory;
        entry.isHidden = found.isHidden;
        return true;
    }

private:
    const DiskEntry* folder_;
    Text path_;
    std::size_t next_ = 0;
    clString current_;
};

class DiskWalk : public FolderWalk {
public:
    explicit DiskWalk(const PlainDisk& disk) : disk_(disk) {}

    std::unique_ptr<FolderEntries> Open(const clString& folder) override {
        if (folder.CharAt(POS_LAST) != L'\\') {
            throw std::logic_error("a folder was opened without its trailing backslash");
        }
        return std::make_unique<DiskEntries>(disk_.FindFolder(FromProduct(folder)), folder);
    }

private:
    const PlainDisk& disk_;
};

}  // namespace

int StageHost::ToItem(TreeNode node) const {
    if (node < 1 || node >= stage_.ItemCount()) {
        throw std::logic_error("the host was asked for a node that does not exist");
    }
    return static_cast<int>(node);
}

clString StageHost::NodePath(TreeNode node) const {
    return ToProduct(stage_.Item(ToItem(node)).path);
}

void StageHost::SetState(TreeNode node, std::int32_t state) {
    stage_.SetState(ToItem(node), state);
}

std::int32_t StageHost::RowCount() const {
    return static_cast<std::int32_t>(stage_.Rows().size());
}

clString StageHost::RowFilePath(std::int32_t row) const {
    return ToProduct(stage_.Row(row).path);
}

void StageHost::SetRowCheckState(std::int32_t row, std::int32_t check) {
    stage_.SetRowCheck(row, check);
}

void StageHost::ListFolder(TreeNode node) {
    stage_.ListFolder(node == 0 ? 0 : ToItem(node));
}

ModelSide::ModelSide(Stage& stage, const World& world, const PlainDisk& disk)
    : host_(stage), model_(host_), disk_(disk), filter_(types_) {
    for (const NamedType& type : world.types) {
        types_.Add(ToProduct(type.extension).Chars(), L"", type.isExcluded);
    }
}

bool ModelSide::HasTickedFile(const Text& folder) const {
    return model_.HasTickedFile(ToProduct(folder));
}

void ModelSide::RunMenu(MenuCommand command) {
    switch (command) {
        case MenuCommand::CheckAll:
            return model_.RunRowCommand(RowCommand::CheckAll);
        case MenuCommand::UncheckAll:
            return model_.RunRowCommand(RowCommand::UncheckAll);
        case MenuCommand::Invert:
            return model_.RunRowCommand(RowCommand::InvertSelection);
        case MenuCommand::Nothing:
            return model_.UpdateSelectedAncestors();
    }
}

bool ModelSide::IsWantedAudioFile(const Text& path) {
    return filter_.IsWantedAudioFile(ToProduct(path));
}

void ModelSide::SetTypeExcluded(int type, bool excluded) {
    types_.At(type).excluded = excluded;
    filter_.ForgetLastAudioType();
}

void ModelSide::GatherFiles(std::vector<Text>& files) {
    DiskWalk walk(disk_);
    clStringList gathered;
    gathered.Add(L"already there");
    ::GatherFiles(model_.Lists(), filter_, walk, gathered);
    if (!gathered.At(0)->Equals(L"already there")) {
        throw std::logic_error("gathering must append to the list");
    }
    for (std::int64_t i = 1; i < gathered.Count(); ++i) {
        files.push_back(FromProduct(*gathered.At(i)));
    }
}

const PathList& ModelSide::ListOf(ListName list) const {
    const SelectionLists& lists = model_.Lists();
    switch (list) {
        case FoldersRecursive:
            return lists._FoldersRecursive;
        case FoldersOnly:
            return lists._FoldersOnly;
        case FoldersExcluded:
            return lists._FoldersExcluded;
        case FilesIncluded:
            return lists._FilesIncluded;
        case FilesExcluded:
            return lists._FilesExcluded;
        case ListCount:
            break;
    }
    throw std::logic_error("there is no such list");
}

void ModelSide::ReadList(ListName list, std::vector<Text>& out) const {
    const PathList& paths = ListOf(list);
    out.clear();
    paths.ForEach([&out](const clString& path) { out.push_back(FromProduct(path)); });
    if (static_cast<std::size_t>(paths.Count()) != out.size()) {
        throw std::logic_error("the count of a list is not the number of its entries");
    }
}

void ModelSide::AppendExcludedFile(const Text& path) {
    model_.Lists()._FilesExcluded.Add(ToProduct(path));
}

void ModelSide::DropExcludedFromIncluded() {
    std::vector<Text> excluded;
    ReadList(FilesExcluded, excluded);
    for (const Text& path : excluded)
        model_.Lists()._FilesIncluded.Remove(ToProduct(path));
}

}  // namespace oracle
