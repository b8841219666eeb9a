// Modal dialogs in the tests' own process, worked from within their own loops.
#pragma once

#include <windows.h>

#include <functional>

// Calls `show`, which runs a dialog, and `work` from within that one's loop; the
// dialog is closed behind it, if it still stands. It is known by having a control
// of the id `control`. Fails the test if none came to show.
void WorkInDialog(int control, const std::function<void(HWND dialog)>& work,
                  const std::function<void()>& show);
