// A dialog that opens maximised, and stays so.
#pragma once

#include <windows.h>

// Windows leaves a dialog alone that was maximised while it was made. Wine's
// dialog loop shows it in its normal size once its queue has first run empty or
// its first timer has fired. While this watches, that one restoring is refused;
// it ends with the form's second timer message, so that a user's own restoring is
// never fought. Several may watch at once; the thread of the dialogs.
class clOpenMaximised {
public:
    clOpenMaximised() = default;
    clOpenMaximised(const clOpenMaximised&) = delete;
    clOpenMaximised& operator=(const clOpenMaximised&) = delete;
    ~clOpenMaximised() { End(); }

    // Maximises the dialog, within its OnCreate, and begins to watch.
    void Show(HWND dialog);
    // Each timer message of the form. Those that come while the dialog is disabled do
    // not count: the loop of a dialog above it dispatched them, and its own loop may
    // still have its queue to run empty for the first time.
    void OnTimer();

private:
    static LRESULT CALLBACK Watch(int code, WPARAM wParam, LPARAM lParam);
    void End();

    HHOOK hook = nullptr;
    HWND watched = nullptr;
    int timersLeft = 0;
    // The latest of those that watch, and the one before this.
    static clOpenMaximised* latest;
    clOpenMaximised* earlier = nullptr;
};
