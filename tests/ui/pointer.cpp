#include "tests/ui/pointer.h"

#include <cstdlib>

#include "tests/ui/pump.h"

namespace {

void SendMouse(DWORD flags, LONG x = 0, LONG y = 0, DWORD data = 0) {
    INPUT input = {};
    input.type = INPUT_MOUSE;
    input.mi.dx = x;
    input.mi.dy = y;
    input.mi.mouseData = data;
    input.mi.dwFlags = flags;
    SendInput(1, &input, sizeof(input));
}

// Absolute positions count 65536 steps across the display; rounded up, since the
// system rounds down.
LONG Absolute(LONG position, int metric) {
    const LONG size = GetSystemMetrics(metric);
    return (position * 65536 + size - 1) / size;
}

struct LastClick {
    POINT where = {-1000, -1000};
    DWORD when = 0;
};

LastClick lastClick;

bool IsNearLast(POINT screen) {
    return std::abs(screen.x - lastClick.where.x) <= GetSystemMetrics(SM_CXDOUBLECLK) &&
           std::abs(screen.y - lastClick.where.y) <= GetSystemMetrics(SM_CYDOUBLECLK);
}

void PressAndRelease(POINT screen, PointerButton button) {
    PressButton(button);
    ReleaseButton(button);
    PumpMessages();
    lastClick = {screen, GetTickCount()};
}

}  // namespace

POINT ScreenPoint(HWND window, LONG x, LONG y) {
    POINT point = {x, y};
    ClientToScreen(window, &point);
    return point;
}

POINT ScreenMiddle(HWND window, const RECT& rect) {
    return ScreenPoint(window, (rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2);
}

POINT ScreenMiddle(HWND window) {
    RECT client = {};
    GetClientRect(window, &client);
    return ScreenMiddle(window, client);
}

void MovePointer(POINT screen) {
    SendMouse(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE, Absolute(screen.x, SM_CXSCREEN),
              Absolute(screen.y, SM_CYSCREEN));
    (void)PumpUntil(
        [screen] {
            POINT now = {};
            GetCursorPos(&now);
            return now.x == screen.x && now.y == screen.y;
        },
        1000);
}

void PressButton(PointerButton button) {
    SendMouse(button == PointerButton::Left    ? MOUSEEVENTF_LEFTDOWN
              : button == PointerButton::Right ? MOUSEEVENTF_RIGHTDOWN
                                               : MOUSEEVENTF_MIDDLEDOWN);
}

void ReleaseButton(PointerButton button) {
    SendMouse(button == PointerButton::Left    ? MOUSEEVENTF_LEFTUP
              : button == PointerButton::Right ? MOUSEEVENTF_RIGHTUP
                                               : MOUSEEVENTF_MIDDLEUP);
}

void TurnWheel(int notches) {
    SendMouse(MOUSEEVENTF_WHEEL, 0, 0, static_cast<DWORD>(notches * WHEEL_DELTA));
}

void Click(POINT screen, PointerButton button) {
    while (IsNearLast(screen) && GetTickCount() - lastClick.when <= GetDoubleClickTime())
        PumpFor(10);
    MovePointer(screen);
    PressAndRelease(screen, button);
}

void DoubleClick(POINT screen, PointerButton button) {
    Click(screen, button);
    PressAndRelease(screen, button);
}
