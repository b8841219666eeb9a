#include "mainwindow/open_maximised.h"

namespace {

constexpr int watchedTimers = 2;

}  // namespace

HWND clOpenMaximised::watched = nullptr;

void clOpenMaximised::Show(HWND dialog) {
    ShowWindow(dialog, SW_MAXIMIZE);
    watched = own = dialog;
    timersLeft = watchedTimers;
    hook = SetWindowsHookExW(WH_CBT, &Watch, nullptr, GetCurrentThreadId());
}

LRESULT CALLBACK clOpenMaximised::Watch(int code, WPARAM wParam, LPARAM lParam) {
    if (code == HCBT_MINMAX && reinterpret_cast<HWND>(wParam) == watched &&
        LOWORD(lParam) == SW_SHOWNORMAL) {
        return 1;
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

void clOpenMaximised::OnTimer() {
    if (hook != nullptr && --timersLeft == 0) End();
}

void clOpenMaximised::End() {
    if (hook == nullptr) return;
    UnhookWindowsHookEx(hook);
    hook = nullptr;
    // A dialog opened meanwhile may be watched instead.
    if (watched == own) watched = nullptr;
}
