// What the selection asks of the tree and of the file list.
#pragma once

#include <cstdint>

#include "foundation/string.h"

// A node of the folder tree, named by the host's own number; 0 is no node.
using TreeNode = std::int64_t;

// The selection states of a node, which are the indices of its pictures too.
enum SelectionState : std::int32_t {
    StateNone = 1,           // nothing here
    StateChildSelected = 2,  // not itself, but some child is not StateNone
    StateHasFiles = 3,       // holds files ticked one by one
    StateRecursive = 4,      // ticked with its sub-folders
    StateFolderOnly = 5,     // ticked without them
};

// The two states of a list row's check picture.
enum RowCheck : std::int32_t {
    RowUnticked = 1,
    RowTicked = 2,
};

// Paths that stand for no folder.
inline constexpr const wchar_t* networkMarker = L"{ Network }";
inline constexpr const wchar_t* networkComputerMarker = L"{ Network Computer }";

// The form implements it over its controls, a test over plain data. Everything
// runs on the user interface thread.
class SelectionHost {
public:
    virtual ~SelectionHost() = default;

    virtual TreeNode FirstRoot() const = 0;  // 0 in an empty tree
    virtual TreeNode SelectedNode() const = 0;
    virtual TreeNode Parent(TreeNode node) const = 0;
    virtual TreeNode FirstChild(TreeNode node) const = 0;
    virtual TreeNode NextSibling(TreeNode node) const = 0;
    // The folder with its trailing backslash, or one of the markers.
    virtual clString NodePath(TreeNode node) const = 0;
    virtual std::int32_t State(TreeNode node) const = 0;
    virtual void SetState(TreeNode node, std::int32_t state) = 0;

    // Rows of the list, 0-based; they show files of the selected node.
    virtual std::int32_t RowCount() const = 0;
    // Full path of the row's file; empty if the row has no valid record.
    virtual clString RowFilePath(std::int32_t row) const = 0;
    virtual std::int32_t RowCheckState(std::int32_t row) const = 0;
    // May report the flip back through SelectionModel::OnRowChecked before it returns.
    virtual void SetRowCheckState(std::int32_t row, std::int32_t check) = 0;
    // Around flips of many rows, so that what follows from each can be done once at
    // the end. Calls nest, in pairs; the user is asked and told nothing between them.
    virtual void BeginRowFlips() {}
    virtual void EndRowFlips() {}

    // Tells the user that only folders within a network can be chosen.
    virtual void RefuseNetworkNode() = 0;
    // Asks whether all selections are to be cleared.
    virtual bool ConfirmReset() = 0;
    // Lists the folder of the node anew.
    virtual void ListFolder(TreeNode node) = 0;
};
