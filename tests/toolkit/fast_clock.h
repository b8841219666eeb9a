// Waits that are measured in seconds, without waiting for seconds.
#pragma once

#include <windows.h>

#include "tests/support/import_stub.h"

// While it lives, time runs ten times as fast for whatever in this program asks for
// the tick count and waits for messages or handles: a wait of five seconds is over
// in half a second, and is five seconds long by the count. Nothing that takes down
// a tick count meanwhile may outlive it. One at a time.
class FastClock {
public:
    FastClock();

    // Fast milliseconds since its construction.
    DWORD Passed() const;

private:
    ImportStub tickCount;
    ImportStub wait;
};
