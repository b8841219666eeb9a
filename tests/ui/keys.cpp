#include "tests/ui/keys.h"

#include "tests/ui/pump.h"

namespace {

bool IsExtended(WORD virtualKey) {
    switch (virtualKey) {
        case VK_LEFT:
        case VK_RIGHT:
        case VK_UP:
        case VK_DOWN:
        case VK_HOME:
        case VK_END:
        case VK_PRIOR:
        case VK_NEXT:
        case VK_INSERT:
        case VK_DELETE:
        case VK_APPS:
        case VK_RCONTROL:
        case VK_RMENU:
            return true;
        default:
            return false;
    }
}

void SendKey(WORD virtualKey, DWORD flags) {
    INPUT input = {};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = virtualKey;
    input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(virtualKey, MAPVK_VK_TO_VSC));
    input.ki.dwFlags = flags | (IsExtended(virtualKey) ? KEYEVENTF_EXTENDEDKEY : 0);
    SendInput(1, &input, sizeof(input));
}

}  // namespace

void HoldKey(WORD virtualKey) {
    SendKey(virtualKey, 0);
}

void ReleaseKey(WORD virtualKey) {
    SendKey(virtualKey, KEYEVENTF_KEYUP);
}

void PressKey(WORD virtualKey) {
    HoldKey(virtualKey);
    ReleaseKey(virtualKey);
    PumpMessages();
}

void PressChord(WORD modifier, WORD virtualKey) {
    HoldKey(modifier);
    HoldKey(virtualKey);
    ReleaseKey(virtualKey);
    ReleaseKey(modifier);
    PumpMessages();
}

void TypeText(const wchar_t* text) {
    for (; *text != 0; ++text) {
        const SHORT key = VkKeyScanW(*text);
        const auto virtualKey = static_cast<WORD>(key & 0xFF);
        const bool isShifted = (key & 0x100) != 0;
        if (isShifted) {
            PressChord(VK_SHIFT, virtualKey);
        } else {
            PressKey(virtualKey);
        }
    }
}
