// How menu items look, painted by GDI alone.
#pragma once

#include <windows.h>

#include "tests/ui/pixels.h"

struct MenuLook {
    bool selected = false;
    bool checked = false;
    bool disabled = false;
    const wchar_t* text = L"";
    // The one that shows, in its grey form if disabled; null for none.
    HICON icon = nullptr;
};

// An item with a strip for images of 16 pixels, at `place`.
void DrawExpectedItem(HDC dc, const RECT& place, const MenuLook& look);
// A separator beside such items.
void DrawExpectedSeparator(HDC dc, const RECT& place);

// Compares two rectangles of one size, pixel by pixel.
void ExpectSamePixels(const Canvas& actual, const RECT& actualPlace, const Canvas& expected,
                      const RECT& expectedPlace);
