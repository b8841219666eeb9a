// Folders: the states of nodes and what they leave in the lists.
#include "selection/selection_model.h"

namespace {

bool IsNetworkMarker(const clString& path) {
    return path.Equals(networkMarker) || path.Equals(networkComputerMarker);
}

bool IsTickedState(std::int32_t state) {
    return state == StateRecursive || state == StateFolderOnly;
}

void RemoveBeneath(SelectionLists& lists, const clString& folder) {
    lists._FoldersRecursive.RemoveBeneath(folder);
    lists._FoldersOnly.RemoveBeneath(folder);
    lists._FoldersExcluded.RemoveBeneath(folder);
    lists._FilesIncluded.RemoveBeneath(folder);
    lists._FilesExcluded.RemoveBeneath(folder);
}

void ClearAll(SelectionLists& lists) {
    lists._FoldersRecursive.Clear();
    lists._FoldersOnly.Clear();
    lists._FoldersExcluded.Clear();
    lists._FilesIncluded.Clear();
    lists._FilesExcluded.Clear();
}

}  // namespace

void SelectionModel::ToggleFolder(TreeNode node) {
    if (node == 0) return;
    const clString path = host_.NodePath(node);
    if (IsNetworkMarker(path)) {
        host_.RefuseNetworkNode();
        return;
    }
    RemoveBeneath(lists_, path);
    StepState(node, path);
    ApplyToChildren(node);
    UpdateAncestors(node);
    const RowFlips flips(*this);
    const std::int32_t rows = host_.RowCount();
    for (std::int32_t row = 0; row < rows; ++row) {
        host_.SetRowCheckState(row, RowTicked(row) ? ::RowTicked : ::RowUnticked);
    }
}

void SelectionModel::StepState(TreeNode node, const clString& path) {
    switch (host_.State(node)) {
        case StateNone:
            host_.SetState(node, StateRecursive);
            if (!CoveredByParent(node)) lists_._FoldersRecursive.Add(path);
            break;
        case StateRecursive:
            host_.SetState(node, StateFolderOnly);
            lists_._FoldersOnly.Add(path);
            break;
        default:
            // From 2 and 3 too: the click clears what shows through, it does not tick.
            host_.SetState(node, StateNone);
            if (CoveredByParent(node)) lists_._FoldersExcluded.Add(path);
            break;
    }
}

std::int32_t SelectionModel::ToggleBySpace() {
    const TreeNode node = host_.SelectedNode();
    if (node == 0) return 0;
    ToggleFolder(node);
    const std::int32_t state = host_.State(node);
    host_.SetState(node, state == StateNone ? StateFolderOnly : state - 1);
    return state;
}

bool SelectionModel::CoveredByParent(TreeNode node) const {
    const TreeNode parent = host_.Parent(node);
    return parent != 0 && host_.State(parent) == StateRecursive &&
           !lists_._FoldersRecursive.Contains(host_.NodePath(node));
}

std::int32_t SelectionModel::InheritedState(TreeNode node) const {
    const TreeNode parent = host_.Parent(node);
    const bool inherits = parent != 0 && host_.State(parent) == StateRecursive &&
                          !lists_._FoldersExcluded.Contains(host_.NodePath(node));
    return inherits ? StateRecursive : StateNone;
}

void SelectionModel::ApplyToChildren(TreeNode node) {
    for (TreeNode child = host_.FirstChild(node); child != 0; child = host_.NextSibling(child)) {
        host_.SetState(child, InheritedState(child));
        ApplyToChildren(child);
    }
}

void SelectionModel::UpdateAncestors(TreeNode node) {
    if (node == 0) return;
    const std::int32_t state = host_.State(node);
    if (state == StateNone || state == StateChildSelected || state == StateHasFiles) {
        host_.SetState(node, HasTickedFile(host_.NodePath(node)) ? StateHasFiles : StateNone);
    }
    for (; node != 0; node = host_.Parent(node)) {
        const std::int32_t now = host_.State(node);
        if (now != StateNone && now != StateChildSelected) continue;
        host_.SetState(node, HasSelectedChild(node) ? StateChildSelected : StateNone);
    }
}

bool SelectionModel::HasSelectedChild(TreeNode node) const {
    for (TreeNode child = host_.FirstChild(node); child != 0; child = host_.NextSibling(child)) {
        if (host_.State(child) != StateNone) return true;
    }
    return false;
}

bool SelectionModel::HasTickedFile(const clString& folder) const {
    return lists_._FilesIncluded.HasEntryDirectlyIn(folder);
}

bool SelectionModel::SelectedFolderIsTicked() const {
    const TreeNode selected = host_.SelectedNode();
    return selected != 0 && IsTickedState(host_.State(selected));
}

void SelectionModel::ClearStates(TreeNode first) {
    for (TreeNode node = first; node != 0; node = host_.NextSibling(node)) {
        host_.SetState(node, StateNone);
        const TreeNode child = host_.FirstChild(node);
        if (child != 0) ClearStates(child);
    }
    if (first != host_.FirstRoot()) return;
    ClearAll(lists_);
    host_.ListFolder(host_.SelectedNode());
}

void SelectionModel::ResetSelections() {
    if (host_.ConfirmReset()) ClearStates(host_.FirstRoot());
}
