#include "tests/ui/painted_line.h"

#include "tests/ui/pixels.h"
#include "toolkit/font.h"

bool ShowsLine(HWND window, const SIZE& band, POINT place, const clString& text) {
    const Canvas expected(band.cx, band.cy, PixelOf(window, 1, 1));
    clFont font;
    font.Create(expected.Dc());
    font.DrawString(place.x, place.y, text);
    font.Release();
    return ShowsCanvas(window, {0, 0}, expected);
}
