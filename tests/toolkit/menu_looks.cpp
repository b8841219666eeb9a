#include "tests/toolkit/menu_looks.h"

#include <gtest/gtest.h>

#include "toolkit/draw.h"
#include "toolkit/font.h"

namespace {

constexpr int stripWidth = 16 + 3;

// Draws in the coordinates of one item.
class ItemPainter {
public:
    ItemPainter(HDC dc, const RECT& place)
        : width(place.right - place.left), height(place.bottom - place.top), context(dc) {
        saved = SaveDC(dc);
        SetWindowOrgEx(dc, -place.left, -place.top, nullptr);
        SelectObject(dc, GetStockObject(DC_PEN));
        SelectObject(dc, GetStockObject(DC_BRUSH));
    }
    ItemPainter(const ItemPainter&) = delete;
    ItemPainter& operator=(const ItemPainter&) = delete;
    ~ItemPainter() { RestoreDC(context, saved); }

    void Fill(int left, int top, int right, int bottom, COLORREF colour) const {
        const RECT area = {left, top, right, bottom};
        SetDCBrushColor(context, colour);
        FillRect(context, &area, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
    }
    void Box(int left, int top, int right, int bottom, COLORREF brush, COLORREF pen) const {
        SetDCBrushColor(context, brush);
        SetDCPenColor(context, pen);
        Rectangle(context, left, top, right, bottom);
    }
    void Line(int fromX, int fromY, int toX, int toY, COLORREF colour) const {
        SetDCPenColor(context, colour);
        MoveToEx(context, fromX, fromY, nullptr);
        LineTo(context, toX, toY);
    }
    void Text(const wchar_t* text, COLORREF colour) const {
        clFont font;
        font.Create(context, nullptr, 13, colour);
        const int y = height / 2 - font.TextHeight(text, true) / 2;
        TabbedTextOutW(context, stripWidth + 10, y, text, lstrlenW(text), 0, nullptr, 0);
    }
    void Icon(HICON icon) const {
        DrawIconEx(context, 3, 2, icon, IconWidth(icon), IconHeight(icon), 0, nullptr, DI_NORMAL);
    }

    const int width;
    const int height;

private:
    HDC context;
    int saved;
};

COLORREF Between(COLORREF from, COLORREF to, int distance, int span) {
    const auto channel = [&](int a, int b) { return a + (b - a) * distance / span; };
    return RGB(channel(GetRValue(from), GetRValue(to)), channel(GetGValue(from), GetGValue(to)),
               channel(GetBValue(from), GetBValue(to)));
}

void DrawBackground(const ItemPainter& item) {
    item.Fill(0, 0, item.width, item.height, GetSysColor(COLOR_WINDOW));
    for (int x = 2; x < 22; ++x)
        item.Line(x, 0, x, item.height, Between(0xF8F8F8, 0xE6E6E6, x - 2, 20));
}

void DrawSelection(const ItemPainter& item) {
    item.Box(1, 0, item.width - 1, item.height, 0xFFFAEE, 0xEBD8A8);
    for (int y = 2; y < item.height - 2; ++y)
        item.Line(3, y, item.width - 3, y, Between(0xF7F4EC, 0xF4EDDB, y - 2, item.height - 4));
}

// Around the icon and around the text.
void DrawCheckFrames(const ItemPainter& item) {
    constexpr COLORREF edge = 0xCDBA8A;
    const int right = item.width - 2;
    const int bottom = item.height - 2;
    item.Box(1, 1, 21, item.height - 1, 0xEAE5DC, edge);
    item.Line(24, 1, 24, bottom, edge);
    item.Line(24, 1, 26, 1, edge);
    item.Line(24, bottom, 26, bottom, edge);
    item.Line(right, 1, right, bottom, edge);
    item.Line(right, 1, right - 2, 1, edge);
    item.Line(right, bottom, right - 2, bottom, edge);
}

void DrawCheckMark(const ItemPainter& item) {
    const int right = item.width;
    const int middle = item.height / 2;
    item.Line(right - 11, middle + 3, right - 9, middle + 5, 0);
    item.Line(right - 12, middle + 3, right - 10, middle + 5, 0);
    item.Line(right - 10, middle + 4, right - 6, middle, 0);
    item.Line(right - 11, middle + 4, right - 7, middle, 0);
}

}  // namespace

void DrawExpectedItem(HDC dc, const RECT& place, const MenuLook& look) {
    const ItemPainter item(dc, place);
    DrawBackground(item);
    if (look.checked) item.Fill(27, 2, item.width - 4, item.height - 2, 0xFFF9F3);
    if (look.selected && !look.disabled) DrawSelection(item);
    if (look.checked) DrawCheckFrames(item);
    if (!look.disabled) item.Text(look.text, 0);
    if (look.checked) item.Text(look.text, 0);
    if (look.disabled) item.Text(look.text, 0xC0C0C0);
    if (look.icon != nullptr) item.Icon(look.icon);
    if (look.checked) DrawCheckMark(item);
}

void DrawExpectedSeparator(HDC dc, const RECT& place) {
    const ItemPainter item(dc, place);
    DrawBackground(item);
    item.Line(29, item.height / 2, item.width, item.height / 2, 0xC4C4C4);
}

void ExpectSamePixels(const Canvas& actual, const RECT& actualPlace, const Canvas& expected,
                      const RECT& expectedPlace) {
    const int width = actualPlace.right - actualPlace.left;
    const int height = actualPlace.bottom - actualPlace.top;
    ASSERT_EQ(width, expectedPlace.right - expectedPlace.left);
    ASSERT_EQ(height, expectedPlace.bottom - expectedPlace.top);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const Colour is{actual.At(actualPlace.left + x, actualPlace.top + y)};
            const Colour shouldBe{expected.At(expectedPlace.left + x, expectedPlace.top + y)};
            ASSERT_EQ(is, shouldBe) << "at " << x << ", " << y;
        }
    }
}
