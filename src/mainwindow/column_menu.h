// The menu on a list's header, which adds columns to the list and removes them.
#pragma once

#include <windows.h>

#include <cstdint>

#include "foundation/arrays.h"
#include "mainwindow/file_list.h"

// What the menu leaves to the form.
class ColumnMenuHost {
public:
    virtual ~ColumnMenuHost() = default;
    // A column has been appended, but `_ColumnNames` is still the old list. Its
    // cells are to be filled.
    virtual void FillNewColumn() = 0;
    // The default columns stand, all empty.
    virtual void FillDefaultColumns() = 0;
};

// Shows the menu at the pointer, and does what is chosen. Loads each decoder
// library once, to ask for the names of its extended properties. `owner` draws
// the menu and must be the form. User interface thread.
void ShowColumnMenu(HWND owner, XListView& view, clFileList& list, ColumnMenuHost& host);

// The menu as the user finds it, to be destroyed by the caller: the columns of
// `columnNames` (one CR between two) are ticked; those that are neither in the
// catalogue nor known to a decoder stand at the end. Null if it cannot be loaded.
[[nodiscard]] HMENU BuildColumnMenu(const clString& columnNames);

// The names that the libraries of the decoder folder offer as columns, sorted.
// A name is met again whatever the case of A to Z, since a tag is looked up without
// regard to it; it keeps the spelling met first.
void DiscoverPropertyNames(clStringList& names);

// Adds the column to the list, or removes it if it is there. `title` is compared
// with `_ColumnNames` without regard to the case of A to Z.
void ToggleColumn(const clString& title, XListView& view, clFileList& list, ColumnMenuHost& host);
// Back to the default columns, with their default widths.
void RestoreDefaultColumns(clFileList& list, ColumnMenuHost& host);
