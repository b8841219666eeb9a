#include "tests/toolkit/tip_form.h"

#include "tests/ui/pointer.h"
#include "tests/ui/pump.h"

namespace {

constexpr int formLeft = 300;
constexpr int formTop = 300;
constexpr int formWidth = 400;
constexpr int formHeight = 300;

}  // namespace

TipForm::TipForm() {
    form.created = [this] {
        first = MakeAnchor(50, 80, 45, 49);
        second = MakeAnchor(150, 80, 45, 49);
        tall = MakeAnchor(250, 10, 45, 250);
    };
    DialogTemplate dialog(visibleForm, 100, 100);
    dialog.Add({L"EDIT", WS_VISIBLE | WS_TABSTOP | WS_BORDER, 5, 5, 60, 14, 1001});
    form.Show(dialog);
    MoveTo(formLeft, formTop);
    PointAway();
}

HWND TipForm::MakeAnchor(int x, int y, int width, int height) const {
    return CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE | SS_OWNERDRAW, x, y, width,
                           height, form.Window(), nullptr, GetModuleHandleW(nullptr), nullptr);
}

RECT TipForm::RectOf(HWND window) {
    RECT rect = {};
    GetWindowRect(window, &rect);
    return rect;
}

void TipForm::PointAt(HWND window) {
    MovePointer(ScreenMiddle(window));
    PumpMessages();
}

void TipForm::PointAway() const {
    MovePointer(ScreenPoint(Window(), 20, 200));
    PumpMessages();
}

void TipForm::MoveTo(int left, int top) const {
    SetWindowPos(Window(), nullptr, left, top, formWidth, formHeight, SWP_NOZORDER);
    PumpMessages();
}

XToolTipParams QuickTip(HWND anchor, const wchar_t* text) {
    XToolTipParams params;
    params.anchorWindow = anchor;
    params.text = text;
    params.showDelay = 100;
    params.showTime = 60000;
    return params;
}

bool WaitUntilShowing(const XToolTip& tip, DWORD limitMs) {
    return PumpUntil([&tip] { return tip.IsShowing(); }, limitMs);
}

bool WaitUntilGone(const XToolTip& tip, DWORD limitMs) {
    return PumpUntil([&tip] { return tip.ShownWindow() == nullptr; }, limitMs);
}

int AlphaOf(HWND window) {
    BYTE alpha = 0;
    DWORD flags = 0;
    if (!GetLayeredWindowAttributes(window, nullptr, &alpha, &flags)) return -1;
    return (flags & LWA_ALPHA) != 0 ? alpha : -1;
}
