// What a dialog is told of the rows of its list.
#pragma once

#include <windows.h>
// commctrl.h needs windows.h before it.
#include <commctrl.h>

#include <functional>
#include <utility>

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
