#include "tests/toolkit/window_class.h"

#include "tests/support/text.h"

std::string ClassOf(HWND window) {
    wchar_t name[64] = {};
    GetClassNameW(window, name, 64);
    return Utf8(name);
}

bool IsRegistered(const std::string& className) {
    WNDCLASSEXW description = {};
    description.cbSize = sizeof(description);
    const std::wstring wide(className.begin(), className.end());
    return GetClassInfoExW(GetModuleHandleW(nullptr), wide.c_str(), &description) != 0;
}
