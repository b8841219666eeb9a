// Messages dispatched by hand, as a program's own loop would.
#pragma once

#include <windows.h>

#include <functional>

// Dispatches what is queued for this thread, to dialogs through the keyboard
// handling of the platform's dialog loop, until nothing is left.
void PumpMessages();

// Pumps until `condition` holds; false if it does not within `limitMs`.
[[nodiscard]] bool PumpUntil(const std::function<bool()>& condition, DWORD limitMs = 5000);

// Pumps for that long, where a test says that nothing happens.
void PumpFor(DWORD milliseconds);
