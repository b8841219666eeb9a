#include <windows.h>

#include <algorithm>
#include <cstdint>

#include "toolkit/draw.h"
#include "toolkit/gdi_handle.h"

namespace {

// The context's own pen, in any colour without an object for each.
class ColouredPen {
public:
    explicit ColouredPen(HDC dc)
        : context(dc), previousColour(GetDCPenColor(dc)), selected(dc, GetStockObject(DC_PEN)) {}
    ColouredPen(const ColouredPen&) = delete;
    ColouredPen& operator=(const ColouredPen&) = delete;
    ~ColouredPen() { SetDCPenColor(context, previousColour); }

    void Line(COLORREF colour, int fromX, int fromY, int toX, int toY) const {
        SetDCPenColor(context, colour);
        MoveToEx(context, fromX, fromY, nullptr);
        LineTo(context, toX, toY);
    }

private:
    HDC context;
    COLORREF previousColour;
    clSelection selected;
};

TRIVERTEX Vertex(LONG x, LONG y, COLORREF colour) {
    const auto channel = [](unsigned value) { return static_cast<COLOR16>(value << 8); };
    return {
        x, y, channel(GetRValue(colour)), channel(GetGValue(colour)), channel(GetBValue(colour)),
        0};
}

void DrawRow(HDC context, const RECT& rectangle, LONG y, COLORREF left, COLORREF right) {
    TRIVERTEX vertices[] = {Vertex(rectangle.left, y, left), Vertex(rectangle.right, y + 1, right)};
    GRADIENT_RECT row = {0, 1};
    GradientFill(context, vertices, 2, &row, 1, GRADIENT_FILL_RECT_H);
}

}  // namespace

void DrawGradient(HDC context, const RECT& rectangle, const clCornerColours& colours) {
    if (context == nullptr) return;
    const ColouredPen pen(context);
    const LONG width = rectangle.right - rectangle.left;
    const LONG height = rectangle.bottom - rectangle.top;
    if (RunsAcross(colours)) {
        for (LONG x = rectangle.left; x <= rectangle.right; ++x) {
            const COLORREF colour =
                BlendColours(colours.topLeft, colours.topRight, x - rectangle.left, width);
            pen.Line(colour, x, rectangle.top, x, rectangle.bottom + 1);
        }
        return;
    }
    for (LONG y = rectangle.top; y <= rectangle.bottom; ++y) {
        const LONG distance = y - rectangle.top;
        const COLORREF left = BlendColours(colours.topLeft, colours.bottomLeft, distance, height);
        const COLORREF right =
            BlendColours(colours.topRight, colours.bottomRight, distance, height);
        if (left == right)
            pen.Line(left, rectangle.left, y, rectangle.right + 1, y);
        else
            DrawRow(context, rectangle, y, left, right);
    }
}

clExtent IconExtent(HICON icon) {
    ICONINFO info = {};
    if (icon == nullptr || !GetIconInfo(icon, &info)) return {};
    const clBitmapHandle colour(info.hbmColor);
    const clBitmapHandle mask(info.hbmMask);
    BITMAP description = {};
    if (colour.IsValid()) GetObjectW(colour.Get(), sizeof(description), &description);
    return {description.bmWidth, description.bmHeight};
}

std::int32_t IconWidth(HICON icon) {
    return IconExtent(icon).width;
}

std::int32_t IconHeight(HICON icon) {
    return IconExtent(icon).height;
}
