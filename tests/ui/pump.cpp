#include "tests/ui/pump.h"

#include <cwchar>

namespace {

bool IsDialog(HWND window) {
    wchar_t name[16] = {};
    GetClassNameW(window, name, 16);
    return std::wcscmp(name, L"#32770") == 0;
}

void DispatchOne(MSG& message) {
    const HWND root = GetAncestor(message.hwnd, GA_ROOT);
    if (root != nullptr && IsDialog(root) && IsDialogMessageW(root, &message)) return;
    TranslateMessage(&message);
    DispatchMessageW(&message);
}

void WaitForMessage(DWORD milliseconds) {
    MsgWaitForMultipleObjectsEx(0, nullptr, milliseconds, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
}

}  // namespace

void PumpMessages() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
        DispatchOne(message);
}

bool PumpUntil(const std::function<bool()>& condition, DWORD limitMs) {
    const DWORD begin = GetTickCount();
    for (;;) {
        PumpMessages();
        if (condition()) return true;
        if (GetTickCount() - begin >= limitMs) return false;
        WaitForMessage(10);
    }
}

void PumpFor(DWORD milliseconds) {
    const DWORD begin = GetTickCount();
    PumpMessages();
    while (GetTickCount() - begin < milliseconds) {
        WaitForMessage(10);
        PumpMessages();
    }
}
