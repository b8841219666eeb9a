// A line that a form paints above its controls.
#pragma once

#include <windows.h>

#include "foundation/string.h"

// Whether the top of a window's client area, so large, shows that text in the
// toolkit's font at `place` and nothing else, pixel by pixel. The pixel at (1, 1)
// tells the background. The window may be another process's.
bool ShowsLine(HWND window, const SIZE& band, POINT place, const clString& text);
