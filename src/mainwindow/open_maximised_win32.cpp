#include "mainwindow/open_maximised.h"

namespace {

constexpr int watchedTimers = 2;

}  // namespace

clOpenMaximised* clOpenMaximised::latest = nullptr;

void clOpenMaximised::Show(HWND dialog) {
    End();
    ShowWindow(dialog, SW_MAXIMIZE);
    hook = SetWindowsHookExW(WH_CBT, &Watch, nullptr, GetCurrentThreadId());
    if (hook == nullptr) return;
    watched = dialog;
    timersLeft = watchedTimers;
    earlier = latest;
    latest = this;
}

LRESULT CALLBACK clOpenMaximised::Watch(int code, WPARAM wParam, LPARAM lParam) {
    if (code == HCBT_MINMAX && LOWORD(lParam) == SW_SHOWNORMAL) {
        for (const clOpenMaximised* one = latest; one != nullptr; one = one->earlier) {
            if (one->watched == reinterpret_cast<HWND>(wParam)) return 1;
        }
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

void clOpenMaximised::OnTimer() {
    if (hook == nullptr || IsWindowEnabled(watched) == FALSE) return;
    if (--timersLeft == 0) End();
}

void clOpenMaximised::End() {
    if (hook == nullptr) return;
    UnhookWindowsHookEx(hook);
    hook = nullptr;
    watched = nullptr;
    clOpenMaximised** link = &latest;
    while (*link != this)
        link = &(*link)->earlier;
    *link = earlier;
    earlier = nullptr;
}
