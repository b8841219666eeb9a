// Icons made in memory.
#pragma once

#include <windows.h>

#include <functional>

// An icon whose pixels are what `colourAt` says; CLR_NONE is see-through. The
// caller destroys it.
HICON MakeIcon(int width, int height, const std::function<COLORREF(int x, int y)>& colourAt);
// Of one colour.
HICON MakeIcon(int width, int height, COLORREF colour);
// Black where it shows, without a colour bitmap.
HICON MakeMonochromeIcon(int width, int height);
