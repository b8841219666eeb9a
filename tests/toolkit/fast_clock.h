// Waits that are measured in seconds, without waiting for seconds.
#pragma once

#include <windows.h>

#include "tests/support/import_stub.h"

// While it lives, time runs ten times as fast for GetTickCount and
// MsgWaitForMultipleObjects, called from this program: a wait of five seconds is over
// in half a second, and is five seconds long by the count. So are the delays of a
// busy machine: upper limits must only tell one wait from two. Nothing that takes
// down a tick count meanwhile may outlive it. One at a time.
class FastClock {
public:
    FastClock();

    // Fast milliseconds since its construction.
    DWORD Passed() const;

private:
    ImportStub tickCount;
    ImportStub wait;
};
