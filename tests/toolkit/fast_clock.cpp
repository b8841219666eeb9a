#include "tests/toolkit/fast_clock.h"

namespace {

constexpr DWORD factor = 10;

decltype(&GetTickCount) realTickCount;
decltype(&MsgWaitForMultipleObjects) realWait;
DWORD begin;

DWORD WINAPI FastTickCount() {
    return begin + (realTickCount() - begin) * factor;
}

DWORD WINAPI FastWait(DWORD count, const HANDLE* handles, BOOL all, DWORD milliseconds,
                      DWORD wakeMask) {
    const DWORD shorter =
        milliseconds == INFINITE ? INFINITE : (milliseconds + factor - 1) / factor;
    return realWait(count, handles, all, shorter, wakeMask);
}

// Other threads may ask as soon as the first stub is in its place.
decltype(&GetTickCount) ReadyTickCount() {
    realTickCount = &GetTickCount;
    realWait = &MsgWaitForMultipleObjects;
    begin = GetTickCount();
    return &FastTickCount;
}

}  // namespace

FastClock::FastClock()
    : tickCount("GetTickCount", ReadyTickCount()), wait("MsgWaitForMultipleObjects", &FastWait) {}

DWORD FastClock::Passed() const {
    return GetTickCount() - begin;
}
