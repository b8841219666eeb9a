// What is compared: the operations of the selection, as the controls call them.
#pragma once

#include <cstddef>
#include <vector>

#include "tests/selection/oracle/plain_text.h"

namespace oracle {

// The five lists, in the order in which they are compared and printed.
enum ListName : std::size_t {
    FoldersRecursive,
    FoldersOnly,
    FoldersExcluded,
    FilesIncluded,
    FilesExcluded,
    ListCount,
};

const char* NameOf(ListName list);

enum class MenuCommand { CheckAll, UncheckAll, Invert, Nothing };

// Implemented by the reference, by its deliberately wrong variants, and over the
// product's model. Nodes are the stage's numbers, 0 is none; rows count from 0.
class Rules {
public:
    virtual ~Rules() = default;

    virtual void ToggleFolder(int node) = 0;
    virtual int ToggleBySpace() = 0;
    virtual bool CoveredByParent(int node) const = 0;
    virtual int InheritedState(int node) const = 0;
    virtual bool HasTickedFile(const Text& folder) const = 0;
    virtual bool RowTicked(int row) const = 0;
    virtual void RowTickChanged(int row, bool ticked) = 0;
    virtual void ForgetFile(const Text& path) = 0;
    virtual void OnRowChecked(int row, bool ticked) = 0;
    virtual void RunMenu(MenuCommand command) = 0;
    virtual void ApplyToChildren(int node) = 0;
    virtual void UpdateAncestors(int node) = 0;
    virtual void ClearStates(int first) = 0;
    virtual void ResetSelections() = 0;

    virtual bool IsWantedAudioFile(const Text& path) = 0;
    // The filter dialog left: one type's exclusion, and the memo is forgotten.
    virtual void SetTypeExcluded(int type, bool excluded) = 0;
    virtual void GatherFiles(std::vector<Text>& files) = 0;

    virtual void ReadList(ListName list, std::vector<Text>& out) const = 0;
    // The list dialog's two accesses to the lists: an unticked row, and the
    // clean-up behind it, which takes from the included files the excluded ones.
    virtual void AppendExcludedFile(const Text& path) = 0;
    virtual void DropExcludedFromIncluded() = 0;
};

}  // namespace oracle
