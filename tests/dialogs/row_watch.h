// What a dialog is told of the rows of its list.
#pragma once

#include <windows.h>
// commctrl.h needs windows.h before it.
#include <commctrl.h>

#include <gtest/gtest.h>

#include <functional>
#include <utility>

#include "tests/dialogs/open_list.h"
#include "tests/ui/pump.h"

// Looks behind each change of a row that the dialog is told of. One at a time.
class RowWatch {
public:
    RowWatch(HWND dialogToWatch, std::function<void()> look)
        : dialog(dialogToWatch),
          afterChange(std::move(look)),
          previous(reinterpret_cast<WNDPROC>(
              SetWindowLongPtrW(dialog, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Procedure)))) {
        current = this;
    }
    RowWatch(const RowWatch&) = delete;
    RowWatch& operator=(const RowWatch&) = delete;
    ~RowWatch() {
        SetWindowLongPtrW(dialog, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(previous));
        current = nullptr;
    }

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        const LRESULT result = CallWindowProcW(current->previous, window, message, wParam, lParam);
        if (message == WM_NOTIFY &&
            reinterpret_cast<const NMHDR*>(lParam)->code == static_cast<UINT>(LVN_ITEMCHANGED))
            current->afterChange();
        return result;
    }

    static inline RowWatch* current = nullptr;
    HWND dialog;
    std::function<void()> afterChange;
    WNDPROC previous;
};

// Runs a command of the menu of the rows: it tells of each of `rows`, marks none by
// itself, and the whole list at its end. What is marked above `top`, in the list's
// client coordinates, is none of them.
inline void ExpectOneMark(const ShownList& shown, int command, int rows, LONG top = 0) {
    const HWND list = shown.List();
    RECT client = {};
    GetClientRect(list, &client);
    ASSERT_TRUE(PumpUntil([list] { return GetUpdateRect(list, nullptr, FALSE) == FALSE; }));
    int turned = 0;
    int marked = 0;
    {
        const RowWatch watch(shown.Dialog(), [&] {
            ++turned;
            RECT area = {};
            GetUpdateRect(list, &area, FALSE);
            if (area.bottom > top) ++marked;
        });
        shown.ChooseForRows(command);
    }
    EXPECT_EQ(turned, rows);
    EXPECT_EQ(marked, 0);
    RECT atTheEnd = {};
    GetUpdateRect(list, &atTheEnd, FALSE);
    EXPECT_TRUE(EqualRect(&atTheEnd, &client)) << atTheEnd.bottom;
}
