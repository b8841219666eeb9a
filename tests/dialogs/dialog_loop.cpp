#include "tests/dialogs/dialog_loop.h"

#include <gtest/gtest.h>

namespace {

constexpr UINT untilTheLoopRunsMs = 10;

struct LoopWork {
    int control;
    const std::function<void(HWND)>& work;
    bool isDone;
};

// The one that is at work.
LoopWork* current = nullptr;

BOOL CALLBACK TakeDialog(HWND window, LPARAM found) {
    if (GetDlgItem(window, current->control) == nullptr) return TRUE;
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

void CALLBACK DoWork(HWND, UINT, UINT_PTR timer, DWORD) {
    HWND dialog = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), &TakeDialog, reinterpret_cast<LPARAM>(&dialog));
    // Some loops show it only when their queue has first run empty.
    if (dialog == nullptr || IsWindowVisible(dialog) == FALSE) return;
    KillTimer(nullptr, timer);
    current->isDone = true;
    current->work(dialog);
    PostMessageW(dialog, WM_CLOSE, 0, 0);
}

}  // namespace

OwnerWindow::OwnerWindow()
    : window(CreateWindowExW(0, L"Static", L"", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50, nullptr,
                             nullptr, nullptr, nullptr)) {}

void WorkInDialog(int control, const std::function<void(HWND dialog)>& work,
                  const std::function<void()>& show) {
    LoopWork pending{control, work, false};
    current = &pending;
    const UINT_PTR timer = SetTimer(nullptr, 0, untilTheLoopRunsMs, &DoWork);
    show();
    KillTimer(nullptr, timer);
    current = nullptr;
    // A dialog that could not be made would let every test of it pass.
    EXPECT_TRUE(pending.isDone) << "no dialog came to show";
}
