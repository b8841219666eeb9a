#include "toolkit/draw.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <cstdint>

#include "tests/ui/icons.h"
#include "tests/ui/pixels.h"

namespace {

constexpr COLORREF paper = RGB(1, 2, 3);

// What GDI itself makes of one row.
void FillRow(HDC dc, int left, int right, int y, COLORREF from, COLORREF to) {
    const auto channel = [](int value) { return static_cast<COLOR16>(value * 256); };
    TRIVERTEX ends[] = {
        {left, y, channel(GetRValue(from)), channel(GetGValue(from)), channel(GetBValue(from)), 0},
        {right, y + 1, channel(GetRValue(to)), channel(GetGValue(to)), channel(GetBValue(to)), 0}};
    GRADIENT_RECT row = {0, 1};
    ASSERT_TRUE(GradientFill(dc, ends, 2, &row, 1, GRADIENT_FILL_RECT_H));
}

}  // namespace

TEST(DrawGradient, RunsAcrossIncludingTheFarEdges) {
    const Canvas canvas(40, 20, paper);
    DrawGradient(canvas.Dc(), {5, 3, 25, 10}, {0xF0F0F0, 0xFBFBFB, 0xF0F0F0, 0xFBFBFB});
    for (int x = 5; x <= 25; ++x) {
        const COLORREF expected = 0x010101u * static_cast<COLORREF>(0xF0 + 11 * (x - 5) / 20);
        for (int y = 3; y <= 10; ++y)
            ASSERT_EQ(Colour{canvas.At(x, y)}, Colour{expected}) << x << ", " << y;
    }
    EXPECT_EQ(canvas.Count(paper), 40 * 20 - 21 * 8);
}

TEST(DrawGradient, RunsDownIncludingTheFarEdges) {
    const Canvas canvas(40, 20, paper);
    DrawGradient(canvas.Dc(), {5, 3, 25, 13}, {0x000000, 0x000000, 0xFF6432, 0xFF6432});
    for (int y = 3; y <= 13; ++y) {
        const auto part = [y](unsigned full) { return full * static_cast<unsigned>(y - 3) / 10; };
        const COLORREF expected = part(0xFF) << 16 | part(0x64) << 8 | part(0x32);
        for (int x = 5; x <= 25; ++x)
            ASSERT_EQ(Colour{canvas.At(x, y)}, Colour{expected}) << x << ", " << y;
    }
    EXPECT_EQ(canvas.Count(paper), 40 * 20 - 21 * 11);
}

TEST(DrawGradient, FourColoursRunAcrossEachRow) {
    const Canvas canvas(40, 20, paper);
    const Canvas rows(40, 20, paper);
    DrawGradient(canvas.Dc(), {5, 3, 25, 13}, {0x000000, 0x0000FF, 0xFF0000, 0x00FF00});
    for (int y = 3; y <= 13; ++y) {
        const auto part = [y](unsigned full) { return full * static_cast<unsigned>(y - 3) / 10; };
        const COLORREF left = part(0xFF) << 16;
        const COLORREF right = (0xFF - part(0xFF)) | part(0xFF) << 8;
        FillRow(rows.Dc(), 5, 25, y, left, right);
    }
    for (int y = 0; y < 20; ++y) {
        for (int x = 0; x < 40; ++x)
            ASSERT_EQ(Colour{canvas.At(x, y)}, Colour{rows.At(x, y)}) << x << ", " << y;
    }
    EXPECT_EQ(Colour{canvas.At(5, 3)}, Colour{0x000000});
    EXPECT_EQ(Colour{canvas.At(5, 13)}, Colour{0xFF0000});
}

TEST(DrawGradient, RowsWhoseEndsMeetAreOneLine) {
    const Canvas canvas(40, 20, paper);
    // Alike at the top, apart at the bottom.
    DrawGradient(canvas.Dc(), {5, 3, 25, 13}, {0x808080, 0x808080, 0x000000, 0xFFFFFF});
    EXPECT_EQ(canvas.Count(0x808080, {5, 3, 26, 4}), 21);
    // A filled row ends before its right edge.
    EXPECT_EQ(Colour{canvas.At(25, 4)}, Colour{paper});
}

TEST(DrawGradient, ASinglePixelHasItsFirstColour) {
    const Canvas across(5, 5, paper);
    DrawGradient(across.Dc(), {2, 2, 2, 2}, {0x102030, 0xFFFFFF, 0x102030, 0xFFFFFF});
    EXPECT_EQ(Colour{across.At(2, 2)}, Colour{0x102030});
    EXPECT_EQ(across.Count(paper), 24);
    const Canvas down(5, 5, paper);
    DrawGradient(down.Dc(), {2, 2, 2, 2}, {0x102030, 0x102030, 0xFFFFFF, 0xFFFFFF});
    EXPECT_EQ(Colour{down.At(2, 2)}, Colour{0x102030});
    EXPECT_EQ(down.Count(paper), 24);
}

TEST(DrawGradient, LeavesTheContextAsItWas) {
    const Canvas canvas(10, 10, paper);
    SetDCPenColor(canvas.Dc(), RGB(9, 8, 7));
    const HGDIOBJ pen = GetCurrentObject(canvas.Dc(), OBJ_PEN);
    DrawGradient(canvas.Dc(), {0, 0, 9, 9}, {0, 0xFFFFFF, 0, 0xFFFFFF});
    EXPECT_EQ(GetCurrentObject(canvas.Dc(), OBJ_PEN), pen);
    EXPECT_EQ(GetDCPenColor(canvas.Dc()), RGB(9, 8, 7));
    DrawGradient(nullptr, {0, 0, 9, 9}, {0, 0xFFFFFF, 0, 0xFFFFFF});
}

TEST(IconSize, IsThatOfTheColourBitmap) {
    const HICON icon = MakeIcon(20, 17, RGB(255, 0, 0));
    EXPECT_EQ(IconWidth(icon), 20);
    EXPECT_EQ(IconHeight(icon), 17);
    DestroyIcon(icon);
    EXPECT_EQ(IconWidth(nullptr), 0);
    EXPECT_EQ(IconHeight(nullptr), 0);
    const HICON monochrome = MakeMonochromeIcon(16, 16);
    ASSERT_NE(monochrome, nullptr);
    EXPECT_EQ(IconWidth(monochrome), 0);
    EXPECT_EQ(IconHeight(monochrome), 0);
    DestroyIcon(monochrome);
}
