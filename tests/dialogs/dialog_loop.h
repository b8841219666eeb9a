// Modal dialogs in the tests' own process, worked from within their own loops.
#pragma once

#include <windows.h>

#include <functional>

// A window that a dialog can be run over.
class OwnerWindow {
public:
    OwnerWindow();
    OwnerWindow(const OwnerWindow&) = delete;
    OwnerWindow& operator=(const OwnerWindow&) = delete;
    ~OwnerWindow() { DestroyWindow(window); }

    HWND Window() const { return window; }
    bool IsEnabled() const { return IsWindowEnabled(window) != FALSE; }

private:
    HWND window;
};

// Calls `show`, which runs a dialog, and `work` from within that one's loop; the
// dialog is closed behind it, if it still stands. It is known by having a control
// of the id `control`. Fails the test if none came to show.
void WorkInDialog(int control, const std::function<void(HWND dialog)>& work,
                  const std::function<void()>& show);
