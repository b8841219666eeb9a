#include "tests/selection/oracle/reference.h"

#include <cstddef>

namespace oracle {

const char* NameOf(ListName list) {
    switch (list) {
        case FoldersRecursive:
            return "_FoldersRecursive";
        case FoldersOnly:
            return "_FoldersOnly";
        case FoldersExcluded:
            return "_FoldersExcluded";
        case FilesIncluded:
            return "_FilesIncluded";
        case FilesExcluded:
            return "_FilesExcluded";
        case ListCount:
            break;
    }
    return "?";
}

// ---- Folders ----

void Reference::ToggleFolder(int node) {
    const Text path = stage_.Item(node).path;
    if (path == networkPath || path == computerPath) {
        stage_.RefuseNetworkNode();
        return;
    }
    ForgetBeneath(path);
    StepState(node);
    ApplyToChildren(node);
    UpdateAncestors(node);
    for (int row = 0; row < static_cast<int>(stage_.Rows().size()); ++row) {
        stage_.SetRowCheck(row, RowTicked(row) ? 2 : 1);
    }
}

void Reference::ForgetBeneath(const Text& path) {
    for (PathVector& list : lists_) {
        for (std::size_t i = list.size(); i-- > 0;) {
            if (BeginsWith(list[i], path)) {
                list.erase(list.begin() + static_cast<std::ptrdiff_t>(i));
            }
        }
    }
}

void Reference::StepState(int node) {
    const Text path = stage_.Item(node).path;
    switch (stage_.Item(node).state) {
        case 1:
            stage_.SetState(node, 4);
            if (!CoveredByParent(node)) Add(FoldersRecursive, path);
            break;
        case 4:
            stage_.SetState(node, 5);
            Add(FoldersOnly, path);
            break;
        default:
            stage_.SetState(node, 1);
            if (CoveredByParent(node)) Add(FoldersExcluded, path);
            break;
    }
}

int Reference::ToggleBySpace() {
    const int node = stage_.Selected();
    if (node == 0) return 0;
    ToggleFolder(node);
    const int state = stage_.Item(node).state;
    stage_.SetState(node, state == 1 ? 5 : state - 1);
    return state;
}

bool Reference::CoveredByParent(int node) const {
    const int parent = stage_.Item(node).parent;
    return parent != 0 && stage_.Item(parent).state == 4 &&
           !Contains(FoldersRecursive, stage_.Item(node).path);
}

int Reference::InheritedState(int node) const {
    const int parent = stage_.Item(node).parent;
    const bool inherits = parent != 0 && stage_.Item(parent).state == 4 &&
                          !Contains(FoldersExcluded, stage_.Item(node).path);
    return inherits ? 4 : 1;
}

void Reference::ApplyToChildren(int node) {
    for (const int child : stage_.Item(node).children) {
        stage_.SetState(child, InheritedState(child));
        ApplyToChildren(child);
    }
}

bool Reference::HasTickedFile(const Text& folder) const {
    for (const Text& file : lists_[FilesIncluded]) {
        if (SamePath(FolderPart(file), folder)) return true;
    }
    return false;
}

void Reference::UpdateAncestors(int node) {
    if (node == 0) return;
    UpdateFirst(node);
    for (int up = node; up != 0; up = stage_.Item(up).parent)
        UpdateByChildren(up);
}

void Reference::UpdateFirst(int node) {
    if (stage_.Item(node).state > 3) return;
    stage_.SetState(node, HasTickedFile(stage_.Item(node).path) ? 3 : 1);
}

void Reference::UpdateByChildren(int node) {
    if (stage_.Item(node).state > 2) return;
    int state = 1;
    for (const int child : stage_.Item(node).children) {
        if (stage_.Item(child).state != 1) state = 2;
    }
    stage_.SetState(node, state);
}

void Reference::ClearStates(int first) {
    for (int node = first; node != 0; node = stage_.NextSibling(node)) {
        stage_.SetState(node, 1);
        if (stage_.FirstChild(node) != 0) ClearStates(stage_.FirstChild(node));
    }
    if (first != stage_.FirstRoot()) return;
    for (PathVector& list : lists_)
        list.clear();
    stage_.ListSelected();
}

void Reference::ResetSelections() {
    if (stage_.ConfirmReset()) ClearStates(stage_.FirstRoot());
}

// ---- Rows ----

bool Reference::RowTicked(int row) const {
    const Text& path = stage_.Row(row).path;
    const int selected = stage_.Selected();
    const int state = selected == 0 ? 0 : stage_.Item(selected).state;
    bool ticked = state == 4 || state == 5;
    if (Contains(FilesIncluded, path)) ticked = true;
    if (!ticked) return false;
    return !Contains(FilesExcluded, path);
}

void Reference::RowTickChanged(int row, bool ticked) {
    const Text path = stage_.Row(row).path;
    ForgetFile(path);
    const bool byFolder = RowTicked(row);
    if (ticked && !byFolder) Add(FilesIncluded, path);
    if (!ticked && byFolder) Add(FilesExcluded, path);
}

void Reference::ForgetFile(const Text& path) {
    RemoveEqual(FilesIncluded, path);
    RemoveEqual(FilesExcluded, path);
}

void Reference::OnRowChecked(int row, bool ticked) {
    RowTickChanged(row, ticked);
    UpdateAncestors(stage_.Selected());
}

void Reference::RunMenu(MenuCommand command) {
    const int count = command == MenuCommand::Nothing ? 0 : static_cast<int>(stage_.Rows().size());
    for (int row = 0; row < count; ++row) {
        const bool ticked = command == MenuCommand::CheckAll ||
                            (command == MenuCommand::Invert && stage_.Row(row).check == 1);
        stage_.SetRowCheck(row, ticked ? 2 : 1);
        RowTickChanged(row, ticked);
    }
    UpdateAncestors(stage_.Selected());
}

// ---- Lists ----

bool Reference::Contains(ListName list, TextView path) const {
    for (const Text& entry : lists_[list]) {
        if (SamePath(entry, path)) return true;
    }
    return false;
}

void Reference::RemoveEqual(ListName list, TextView path) {
    PathVector kept;
    for (const Text& entry : lists_[list]) {
        if (!SamePath(entry, path)) kept.push_back(entry);
    }
    lists_[list] = kept;
}

void Reference::DropExcludedFromIncluded() {
    for (const Text& path : PathVector(lists_[FilesExcluded]))
        RemoveEqual(FilesIncluded, path);
}

// ---- Gathering ----

bool Reference::IsWantedAudioFile(const Text& path) {
    const Text extension(ExtensionPart(path));
    if (!lastAudioType_.empty() && SameText(lastAudioType_, extension)) return true;
    for (const NamedType& type : types_) {
        if (type.isExcluded || !SameText(type.extension, extension)) continue;
        lastAudioType_ = extension;
        return true;
    }
    return false;
}

void Reference::SetTypeExcluded(int type, bool excluded) {
    types_[static_cast<std::size_t>(type)].isExcluded = excluded;
    lastAudioType_.clear();
}

bool Reference::IsEntered(const DiskEntry& entry) const {
    return entry.isDirectory && !entry.isHidden;
}

bool Reference::IsSkippedInWalk(const Text& folder) const {
    return Contains(FoldersExcluded, folder) || Contains(FoldersOnly, folder);
}

void Reference::GatherFile(const Text& path, std::vector<Text>& files) {
    if (IsWantedAudioFile(path) && !Contains(FilesExcluded, path)) files.push_back(path);
}

void Reference::GatherRecursive(const Text& folder, std::vector<Text>& files) {
    const DiskEntry* found = disk_.FindFolder(folder);
    if (found == nullptr) return;
    for (const DiskEntry& entry : found->entries) {
        const Text path = folder + entry.name;
        if (!IsEntered(entry)) {
            GatherFile(path, files);
        } else if (!IsSkippedInWalk(path + u"\\")) {
            GatherRecursive(path + u"\\", files);
        }
    }
}

void Reference::GatherFiles(std::vector<Text>& files) {
    for (const Text& folder : lists_[FoldersRecursive])
        GatherRecursive(folder, files);
    for (const Text& folder : lists_[FoldersOnly]) {
        const DiskEntry* found = disk_.FindFolder(folder);
        if (found == nullptr) continue;
        for (const DiskEntry& entry : found->entries) {
            if (!entry.isDirectory || entry.isHidden) GatherFile(folder + entry.name, files);
        }
    }
    for (const Text& file : lists_[FilesIncluded])
        files.push_back(file);
}

}  // namespace oracle
