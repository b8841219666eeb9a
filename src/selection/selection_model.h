// The choice of folders and files: five lists of paths that describe it by
// exception, and the rules that keep node states and row ticks in step.
#pragma once

#include <cstdint>

#include "foundation/string.h"
#include "selection/path_list.h"
#include "selection/selection_host.h"

// Folder entries end in a backslash. New entries go to the end of a list.
struct SelectionLists {
    PathList _FoldersRecursive;  // ticked with everything beneath, where no parent covers them
    PathList _FoldersOnly;       // ticked for their own files only
    PathList _FoldersExcluded;   // cut out of a ticked parent
    // Ticked one by one, where the folder does not cover them. Asked at each flip
    // of a row whether the folder holds some.
    PathList _FilesIncluded{PathList::FolderIndex::Kept};
    PathList _FilesExcluded;  // unticked one by one, where the folder covers them
};

// What a user does to all rows at once.
enum class RowCommand { CheckAll, UncheckAll, InvertSelection };

// Runs on the user interface thread and never touches the disk.
class SelectionModel {
public:
    explicit SelectionModel(SelectionHost& host) : host_(host) {}

    SelectionLists& Lists() { return lists_; }
    const SelectionLists& Lists() const { return lists_; }

    // One step of the node's cycle 1, 4, 5, 1 (from 2 and 3 to 1): forgets all
    // that was chosen at or beneath the node, notes its new state, passes it on
    // to the existing descendants, the ancestors and the rows. Network markers
    // are refused and nothing changes. `node` is the selected node.
    void ToggleFolder(TreeNode node);
    // The key Space: ToggleFolder on the selected node, then the state that the
    // control, which steps it by one after the handler, turns into the right one.
    // Returns the state that ToggleFolder left (what has to stand in the end), or
    // 0 without a selected node.
    std::int32_t ToggleBySpace();

    // True if the parent is in state 4 and the node has no entry of its own in
    // _FoldersRecursive.
    bool CoveredByParent(TreeNode node) const;
    // The state of a node that comes into being: 4 under a parent in state 4
    // unless it is in _FoldersExcluded, otherwise 1.
    std::int32_t InheritedState(TreeNode node) const;
    // Gives every existing descendant its InheritedState, depth first.
    void ApplyToChildren(TreeNode node);
    // Derives states 3, 2 and 1 from the node up to its root.
    void UpdateAncestors(TreeNode node);
    // True if a file directly in the folder stands in _FilesIncluded.
    bool HasTickedFile(const clString& folder) const;

    // Whether a row of the selected folder is ticked, by folder and exceptions.
    bool RowTicked(std::int32_t row) const;
    // Whether the state of the selected folder ticks its files.
    bool SelectedFolderIsTicked() const;
    // Whether a file is ticked in such a folder: `RowTicked` for who asks for many.
    bool FileTicked(const clString& path, bool folderIsTicked) const;
    // Stores the new tick as an exception, or as nothing where it says the same
    // as the folder.
    void RowTickChanged(std::int32_t row, bool ticked);
    // Removes the path from _FilesIncluded and _FilesExcluded.
    void ForgetFile(const clString& path);
    // While it lives, flips of rows that the host reports leave the ancestors
    // stale, and its end brings them up to date once: they depend on the last
    // flip alone, and each update may look at all siblings up to the root.
    class RowFlips {
    public:
        explicit RowFlips(SelectionModel& model);
        RowFlips(const RowFlips&) = delete;
        RowFlips& operator=(const RowFlips&) = delete;
        ~RowFlips();

    private:
        SelectionModel& model_;
    };

    // A row's check picture flipped, by the user or by a call.
    void OnRowChecked(std::int32_t row, bool ticked);
    // Acts on every row of the list, then brings the ancestors up to date.
    void RunRowCommand(RowCommand command);
    // Ends the row menu without a choice: only the ancestors are brought up to date.
    void UpdateSelectedAncestors();

    // State 1 for the node, its following siblings and all beneath them. Called
    // with the first root it also clears the lists and lists the selected folder
    // anew.
    void ClearStates(TreeNode first);
    // Asks, and on yes clears everything.
    void ResetSelections();

private:
    void StepState(TreeNode node, const clString& path);
    bool HasSelectedChild(TreeNode node) const;

    SelectionHost& host_;
    SelectionLists lists_;
    std::int32_t openFlips_ = 0;
    bool ancestorsAreStale_ = false;
};
