#include "tests/ui/pixels.h"

#include <algorithm>
#include <iomanip>

COLORREF PixelOf(HWND window, int x, int y) {
    const HDC dc = GetDC(window);
    const COLORREF pixel = GetPixel(dc, x, y);
    ReleaseDC(window, dc);
    return pixel;
}

Canvas::Canvas(int width, int height, COLORREF fill) : columns(width), rows(height) {
    BITMAPINFO description = {};
    description.bmiHeader.biSize = sizeof(description.bmiHeader);
    description.bmiHeader.biWidth = width;
    description.bmiHeader.biHeight = -height;
    description.bmiHeader.biPlanes = 1;
    description.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    context = CreateCompatibleDC(nullptr);
    bitmap = CreateDIBSection(context, &description, DIB_RGB_COLORS, &bits, nullptr, 0);
    previous = SelectObject(context, bitmap);
    const RECT all = {0, 0, width, height};
    const HBRUSH brush = CreateSolidBrush(fill);
    FillRect(context, &all, brush);
    DeleteObject(brush);
}

Canvas::~Canvas() {
    SelectObject(context, previous);
    DeleteObject(bitmap);
    DeleteDC(context);
}

int Canvas::Count(COLORREF colour) const {
    return Count(colour, {0, 0, columns, rows});
}

int Canvas::Count(COLORREF colour, const RECT& rect) const {
    int count = 0;
    for (int y = rect.top; y < rect.bottom; ++y) {
        for (int x = rect.left; x < rect.right; ++x) {
            if (At(x, y) == colour) ++count;
        }
    }
    return count;
}

RECT Canvas::BoundsOfOthers(COLORREF background) const {
    RECT bounds = {columns, rows, 0, 0};
    for (int y = 0; y < rows; ++y) {
        for (int x = 0; x < columns; ++x) {
            if (At(x, y) == background) continue;
            bounds.left = std::min<LONG>(bounds.left, x);
            bounds.top = std::min<LONG>(bounds.top, y);
            bounds.right = std::max<LONG>(bounds.right, x + 1);
            bounds.bottom = std::max<LONG>(bounds.bottom, y + 1);
        }
    }
    if (bounds.right == 0) bounds = {};
    return bounds;
}

bool ShowsCanvas(HWND window, POINT corner, const Canvas& expected) {
    const SIZE size = expected.Size();
    const Canvas seen(size.cx, size.cy);
    const HDC dc = GetDC(window);
    BitBlt(seen.Dc(), 0, 0, size.cx, size.cy, dc, corner.x, corner.y, SRCCOPY);
    ReleaseDC(window, dc);
    for (int y = 0; y < size.cy; ++y) {
        for (int x = 0; x < size.cx; ++x) {
            if (seen.At(x, y) != expected.At(x, y)) return false;
        }
    }
    return true;
}

void PrintTo(const Colour& colour, std::ostream* out) {
    const auto flags = out->flags();
    const char fill = out->fill('0');
    *out << "0x" << std::hex << std::uppercase << std::setw(6) << colour.value;
    out->fill(fill);
    out->flags(flags);
}
