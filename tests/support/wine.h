// Which of the two systems runs the tests.
#pragma once

#include <windows.h>

// False on a real Windows, whose shell, network and drives tests leave alone.
inline bool RunsUnderWine() {
    return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}
