// A conversion list in the tests' own process, worked from within its own loop.
#pragma once

#include <windows.h>
// commctrl.h needs windows.h before it.
#include <commctrl.h>

#include <functional>
#include <string>
#include <vector>

#include "foundation/arrays.h"
#include "selection/path_list.h"

// The dialog while its loop runs.
class ShownList {
public:
    explicit ShownList(HWND window) : dialog(window) {}

    HWND Dialog() const { return dialog; }
    HWND List() const;
    int RowCount() const { return ListView_GetItemCount(List()); }
    bool IsTicked(int row) const { return ListView_GetCheckState(List(), row) != FALSE; }
    void SetTicked(int row, bool ticked) const;
    std::string Cell(int row, int column) const;
    // Of a control, in client coordinates of the dialog.
    RECT Place(int id) const;
    // Pixels of so many horizontal (x) and vertical (y) dialog units.
    POINT Units(int horizontal, int vertical) const;
    // Runs a command of the menu of the rows, or of the columns with the pointer on
    // the header; the menu's own time is left out.
    void ChooseForRows(int command) const;
    void ChooseForColumns(int command) const;
    void Press(int id) const;
    void ClickHeader(int column) const;
    // Of that column's header: 0 ascending, 1 descending, -1 none.
    int Arrow(int column) const;
    // Of one column, from the top.
    std::vector<std::string> Cells(int column) const;
    // Whether the line above the list shows exactly that text now, pixel by pixel.
    bool Tells(const clString& text) const;

private:
    void Choose(POINT pointer, int command) const;

    HWND dialog;
};

// What a run of the dialog left behind.
struct ListOutcome {
    std::vector<std::string> excluded;
    bool converts = false;
};

// Runs the dialog over these files, `work` in its loop; behind it the dialog is
// closed, if it still stands.
ListOutcome RunList(const clStringList& files, const wchar_t* columns,
                    const std::function<void(const ShownList&)>& work, HWND owner = nullptr);
