// Waiting for what other threads do.
#pragma once

#include <windows.h>

#include <functional>

// Polls until the condition holds; false when it does not within ten seconds.
inline bool Eventually(const std::function<bool()>& condition) {
    const DWORD begin = GetTickCount();
    while (!condition()) {
        if (GetTickCount() - begin > 10000) return false;
        Sleep(1);
    }
    return true;
}
