// What was painted, pixel by pixel.
#pragma once

#include <windows.h>

#include <ostream>

// A client pixel of a window as it stands on the screen.
COLORREF PixelOf(HWND window, int x, int y);

// A 32-bit bitmap in memory to paint into.
class Canvas {
public:
    Canvas(int width, int height, COLORREF fill = RGB(255, 255, 255));
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;
    ~Canvas();

    HDC Dc() const { return context; }
    SIZE Size() const { return {columns, rows}; }
    COLORREF At(int x, int y) const { return GetPixel(context, x, y); }
    // Pixels of a rectangle that have this colour; the whole canvas without one.
    int Count(COLORREF colour) const;
    int Count(COLORREF colour, const RECT& rect) const;
    // The smallest rectangle around all pixels of other colours, empty for none.
    RECT BoundsOfOthers(COLORREF background) const;

private:
    int columns;
    int rows;
    HDC context;
    HBITMAP bitmap;
    HGDIOBJ previous;
};

// Whether a window shows exactly this, from that client pixel on.
bool ShowsCanvas(HWND window, POINT corner, const Canvas& expected);

// "0xBBGGRR" in expectations: EXPECT_EQ(Colour{canvas.At(0, 0)}, Colour{RGB(1, 2, 3)}).
struct Colour {
    COLORREF value;
    bool operator==(const Colour&) const = default;
};
void PrintTo(const Colour& colour, std::ostream* out);
