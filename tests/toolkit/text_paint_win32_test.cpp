#include <gtest/gtest.h>
#include <windows.h>

#include <cstdint>
#include <functional>

#include "tests/support/import_stub.h"
#include "tests/toolkit/painted_list.h"
#include "tests/ui/icons.h"
#include "tests/ui/pixels.h"
#include "toolkit/text.h"

namespace {

using painted::blue;
using painted::ExpectPaintedAs;
using painted::green;
using painted::height;
using painted::left;
using painted::Paint;
using painted::paper;
using painted::red;
using painted::top;
using painted::width;

// Runs `draw` with a brush and a pen.
void WithBrushAndPen(HDC dc, COLORREF brushColour, COLORREF penColour,
                     const std::function<void()>& draw) {
    const HBRUSH brush = CreateSolidBrush(brushColour);
    const HPEN pen = CreatePen(PS_SOLID, 0, penColour);
    const HGDIOBJ previousBrush = SelectObject(dc, brush);
    const HGDIOBJ previousPen = SelectObject(dc, pen);
    draw();
    SelectObject(dc, previousBrush);
    SelectObject(dc, previousPen);
    DeleteObject(brush);
    DeleteObject(pen);
}

HBITMAP WINAPI NoBitmap(HDC, int, int) {
    return nullptr;
}

class TextPaint : public PaintedList {};

}  // namespace

TEST_F(TextPaint, AFillCoversItsArea) {
    clText list;
    list.AddFill({.area = {3, 2, 0x120004, 0x120002}, .colour = red});
    const Canvas canvas(width, height, paper);
    Paint(list, canvas);
    // From (13, 7) to before (106, 43).
    EXPECT_EQ(canvas.Count(red), (106 - 13) * (43 - 7));
    EXPECT_EQ(canvas.Count(red, {13, 7, 106, 43}), (106 - 13) * (43 - 7));
    EXPECT_EQ(canvas.Count(paper), width * height - (106 - 13) * (43 - 7));
}

TEST_F(TextPaint, ABoxHasAnEdge) {
    clText list;
    list.AddBox({.area = {1, 0, 0x120001, 0x20000}, .brushColour = green, .penColour = blue});
    const Canvas canvas(width, height, paper);
    Paint(list, canvas);
    const int inner = 96 * 38;
    EXPECT_EQ(canvas.Count(green), inner);
    EXPECT_EQ(canvas.Count(blue), 98 * 40 - inner);
    EXPECT_EQ(Colour{canvas.At(11, 5)}, Colour{blue});
    EXPECT_EQ(Colour{canvas.At(108, 44)}, Colour{blue});
    EXPECT_EQ(Colour{canvas.At(12, 6)}, Colour{green});
}

TEST_F(TextPaint, ABoxMayHaveRoundCorners) {
    clText list;
    list.AddBox(
        {.area = {0, 0, 60, 30}, .brushColour = green, .penColour = blue, .cornerRadius = 14});
    ExpectPaintedAs(list, [](HDC dc) {
        WithBrushAndPen(dc, green, blue, [dc] { RoundRect(dc, 10, 5, 70, 35, 14, 14); });
    });
    const Canvas canvas(width, height, paper);
    Paint(list, canvas);
    EXPECT_EQ(Colour{canvas.At(10, 5)}, Colour{paper});
}

TEST_F(TextPaint, FramesAreOnePixelOrAFocusRectangle) {
    clText list;
    list.AddFrame({.area = {0, 0, 0x20000, 0x20000}, .colour = red});
    const Canvas canvas(width, height, paper);
    Paint(list, canvas);
    EXPECT_EQ(canvas.Count(red), 2 * 100 + 2 * 38);
    EXPECT_EQ(Colour{canvas.At(10, 5)}, Colour{red});
    EXPECT_EQ(Colour{canvas.At(109, 44)}, Colour{red});
    clText focus;
    focus.AddFrame({.area = {3, 2, 40, 20}, .colour = red, .focus = true});
    ExpectPaintedAs(focus, [](HDC dc) {
        const RECT rectangle = {13, 7, 50, 25};
        DrawFocusRect(dc, &rectangle);
    });
}

TEST_F(TextPaint, AGradientFillsItsAreaOnly) {
    clText list;
    list.AddGradient(
        {.area = {3, 2, 0x120003, 0x120002}, .colours = {0xF7F4EC, 0xF7F4EC, 0xF4EDDB, 0xF4EDDB}});
    const Canvas canvas(width, height, paper);
    Paint(list, canvas);
    const auto part = [](int from, int to, int y) { return from + (to - from) * y / 36; };
    for (int y = 0; y < 36; ++y) {
        const COLORREF expected =
            RGB(part(0xEC, 0xDB, y), part(0xF4, 0xED, y), part(0xF7, 0xF4, y));
        ASSERT_EQ(canvas.Count(expected, {13, 7 + y, 107, 8 + y}), 94) << y;
    }
    EXPECT_EQ(canvas.Count(paper), width * height - 94 * 36);
}

TEST_F(TextPaint, AGradientIsKeptUntilItsSizeChanges) {
    clText list;
    list.AddGradient({.area = {0, 0, 0x20000, 0x20000}, .colours = {0, red, 0, red}});
    const Canvas canvas(width, height, paper);
    Paint(list, canvas);
    const clGradientCache& cache = list.gradients.At(0)->cache;
    EXPECT_EQ(cache.width, 100);
    EXPECT_EQ(cache.height, 40);
    const HBITMAP kept = cache.bitmap.Bitmap();
    ASSERT_NE(kept, nullptr);
    // What is in the cache shows: it isn't drawn anew.
    SetPixelV(cache.bitmap.Context(), 50, 20, green);
    Paint(list, canvas);
    EXPECT_EQ(Colour{canvas.At(60, 25)}, Colour{green});
    list.minimumWidth = 101;
    list.dirty = true;
    list.Paint(canvas.Dc(), left, top);
    EXPECT_EQ(cache.width, 101);
    EXPECT_NE(Colour{canvas.At(60, 25)}, Colour{green});
}

TEST_F(TextPaint, AGradientIsTriedAgainWhereNoBitmapCouldBeHad) {
    clText list;
    list.AddGradient({.area = {0, 0, 0x20000, 0x20000}, .colours = {red, red, red, red}});
    const Canvas canvas(width, height, paper);
    {
        const ImportStub none("CreateCompatibleBitmap", &NoBitmap);
        Paint(list, canvas);
        EXPECT_EQ(canvas.Count(red), 0);
    }
    Paint(list, canvas);
    EXPECT_EQ(canvas.Count(red), 100 * 40);
}

TEST_F(TextPaint, AGradientMayDropItsCache) {
    clText list;
    list.AddGradient(
        {.area = {0, 0, 0x20000, 0x20000}, .colours = {red, red, red, red}, .dropCache = true});
    const Canvas canvas(width, height, paper);
    Paint(list, canvas);
    EXPECT_EQ(canvas.Count(red), 100 * 40);
    const clGradientCache& cache = list.gradients.At(0)->cache;
    EXPECT_EQ(cache.bitmap.Bitmap(), nullptr);
    EXPECT_EQ(cache.width, 0);
    EXPECT_EQ(cache.height, 0);
}

TEST_F(TextPaint, AGradientTurnedInsideOutShowsNothing) {
    clText list;
    list.AddGradient({.area = {80, 30, 20, 10}, .colours = {red, red, red, red}});
    const Canvas canvas(width, height, paper);
    Paint(list, canvas);
    EXPECT_EQ(canvas.Count(paper), width * height);
}

TEST_F(TextPaint, ALineEndsBeforeItsLastPixel) {
    clText list;
    list.AddLine({.colour = red, .from = {29, 0x10000}, .to = {0x20000, 0x10000}});
    const Canvas canvas(width, height, paper);
    Paint(list, canvas);
    EXPECT_EQ(canvas.Count(red), 100 - 29);
    EXPECT_EQ(canvas.Count(red, {39, 25, 110, 26}), 100 - 29);
    clText slanted;
    slanted.AddLine({.colour = blue, .from = {0x12000B, 0x10003}, .to = {0x120009, 0x10005}});
    const Canvas second(width, height, paper);
    Paint(slanted, second);
    EXPECT_EQ(second.Count(blue), 2);
    EXPECT_EQ(Colour{second.At(99, 28)}, Colour{blue});
    EXPECT_EQ(Colour{second.At(100, 29)}, Colour{blue});
}

TEST_F(TextPaint, HigherLayersCoverLowerOnes) {
    const RECT all = {10, 5, 110, 45};
    clText list;
    list.AddFill({.area = {0, 0, 0x20000, 0x20000}, .colour = red}, 5);
    list.AddFrame({.area = {0, 0, 0x20000, 0x20000}, .colour = green}, 2);
    list.AddFill({.area = {0, 0, 0x20000, 0x20000}, .colour = blue}, 1);
    const Canvas canvas(width, height, paper);
    Paint(list, canvas);
    EXPECT_EQ(canvas.Count(red, all), 4000);
    const Canvas low(width, height, paper);
    list.PaintLayer(low.Dc(), left, top, 1);
    EXPECT_EQ(low.Count(blue, all), 4000);
    list.PaintLayer(low.Dc(), left, top, 2);
    EXPECT_EQ(low.Count(green), 276);
    list.PaintLayer(low.Dc(), left, top, 3);
    EXPECT_EQ(low.Count(blue), 4000 - 276);
}

TEST_F(TextPaint, KindsOfOneLayerLieInAFixedOrder) {
    XMemBitmap image;
    image.CreateEmpty(nullptr, 20, 20);
    const HICON icon = MakeIcon(20, 20, RGB(0, 0, 7));
    const clArea area = {0, 0, 20, 20};
    const COLORREF order[] = {1, 2, 3, 4, 5, 6, RGB(0, 0, 7)};
    image.FillColour(order[5]);
    // Added from the top kind to the bottom one; the last that is there shows.
    for (int kinds = 1; kinds <= 7; ++kinds) {
        clText list;
        if (kinds > 6) list.AddIcon({.icon = icon}, 1);
        if (kinds > 5) list.AddPicture({}, image, 1);
        if (kinds > 4) list.AddLine({.colour = order[4], .from = {0, 0}, .to = {20, 0}}, 1);
        if (kinds > 3) list.AddFrame({.area = area, .colour = order[3]}, 1);
        if (kinds > 2) {
            list.AddGradient({.area = area, .colours = {order[2], order[2], order[2], order[2]}},
                             1);
        }
        if (kinds > 1) list.AddBox({.area = area, .brushColour = 2, .penColour = order[1]}, 1);
        list.AddFill({.area = area, .colour = order[0]}, 1);
        const Canvas canvas(width, height, paper);
        Paint(list, canvas);
        EXPECT_EQ(Colour{canvas.At(15, 5)}, Colour{order[kinds - 1]}) << kinds;
    }
    DestroyIcon(icon);
}

TEST_F(TextPaint, WithinAKindTheLaterOneCovers) {
    clText list;
    list.AddFill({.area = {0, 0, 20, 20}, .colour = red}, 1);
    list.AddFill({.area = {0, 0, 20, 20}, .colour = green}, 1);
    const Canvas canvas(width, height, paper);
    Paint(list, canvas);
    EXPECT_EQ(canvas.Count(green), 400);
}

TEST_F(TextPaint, AConditionNeedsAllItsBits) {
    clText list;
    list.AddFill({.area = {0, 0, 10, 10}, .colour = red, .condition = 5});
    const struct {
        std::uint32_t flags;
        int painted;
    } rows[] = {{0, 0}, {1, 0}, {4, 0}, {5, 100}, {0x25, 100}, {0x22, 0}};
    for (const auto& row : rows) {
        const Canvas canvas(width, height, paper);
        list.stateFlags = row.flags;
        Paint(list, canvas);
        EXPECT_EQ(canvas.Count(red), row.painted) << row.flags;
    }
}

TEST_F(TextPaint, MeasuresOnlyWhenDirty) {
    clText list;
    list.AddFill({.area = {0, 0, 0x20000, 0x20000}, .colour = red});
    list.minimumWidth = 30;
    list.minimumHeight = 20;
    const Canvas canvas(width, height, paper);
    list.Paint(canvas.Dc(), 0, 0);
    EXPECT_FALSE(list.dirty);
    EXPECT_EQ(list.width, 30);
    EXPECT_EQ(list.height, 20);
    EXPECT_EQ(canvas.Count(red), 600);
    list.minimumWidth = 40;
    list.Paint(canvas.Dc(), 0, 0);
    EXPECT_EQ(canvas.Count(red), 600);
    list.dirty = true;
    list.Paint(canvas.Dc(), 0, 0);
    EXPECT_EQ(canvas.Count(red), 800);
}

TEST_F(TextPaint, ACopyPaintsFromLayerOneOn) {
    clText list;
    list.AddFill({.area = {0, 0, 10, 10}, .colour = red});
    list.AddFill({.area = {5, 5, 15, 15}, .colour = green});
    clText copy;
    copy.CopyFrom(list);
    const Canvas canvas(width, height, paper);
    copy.PaintLayer(canvas.Dc(), 0, 0, 0);
    EXPECT_EQ(canvas.Count(paper), width * height);
    copy.Paint(canvas.Dc(), 0, 0);
    EXPECT_EQ(canvas.Count(red), 75);
    EXPECT_EQ(canvas.Count(green), 100);
}

TEST_F(TextPaint, WithoutAContextNothingHappens) {
    clText list;
    list.AddFill({.area = {0, 0, 10, 10}, .colour = red});
    list.AddText({.text = L"a"});
    list.Paint(nullptr, 0, 0);
    const FontCount count;
    list.Paint(nullptr, 0, 0);
    EXPECT_EQ(FontCount::Made(), 0);
    EXPECT_EQ(list.width, list.Measure().width);
}

TEST_F(TextPaint, TheContextIsLeftAsItWas) {
    const HICON icon = MakeIcon(8, 8, red);
    clText list;
    list.AddBox({.area = {0, 0, 10, 10}});
    list.AddLine({.from = {0, 0}, .to = {5, 5}});
    list.AddIcon({.icon = icon});
    list.AddText({.text = L"a", .colour = red});
    DestroyIcon(icon);
    const Canvas canvas(width, height, paper);
    SetTextColor(canvas.Dc(), green);
    SetBkMode(canvas.Dc(), OPAQUE);
    const HGDIOBJ pen = GetCurrentObject(canvas.Dc(), OBJ_PEN);
    const HGDIOBJ brush = GetCurrentObject(canvas.Dc(), OBJ_BRUSH);
    const HGDIOBJ font = GetCurrentObject(canvas.Dc(), OBJ_FONT);
    list.Paint(canvas.Dc(), 0, 0);
    EXPECT_EQ(GetCurrentObject(canvas.Dc(), OBJ_PEN), pen);
    EXPECT_EQ(GetCurrentObject(canvas.Dc(), OBJ_BRUSH), brush);
    EXPECT_EQ(GetCurrentObject(canvas.Dc(), OBJ_FONT), font);
    EXPECT_EQ(GetTextColor(canvas.Dc()), green);
    EXPECT_EQ(GetBkMode(canvas.Dc()), OPAQUE);
}
