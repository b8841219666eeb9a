#include <gtest/gtest.h>
#include <windows.h>

// commctrl.h needs windows.h before it.
#include <commctrl.h>

#include <algorithm>
#include <cstdint>
#include <vector>

#include "tests/toolkit/painted_list.h"
#include "tests/ui/encoded_picture.h"
#include "tests/ui/icons.h"
#include "tests/ui/pixels.h"
#include "toolkit/font.h"
#include "toolkit/text.h"

namespace {

using painted::blue;
using painted::ExpectPaintedAs;
using painted::green;
using painted::height;
using painted::Paint;
using painted::paper;
using painted::red;
using painted::width;

// Text written by GDI in a font of its own.
void WriteText(HDC dc, const LOGFONTW& description, COLORREF colour, int x, int y,
               const wchar_t* text) {
    const HFONT font = CreateFontIndirectW(&description);
    const HGDIOBJ previous = SelectObject(dc, font);
    SetTextColor(dc, colour);
    SetBkMode(dc, TRANSPARENT);
    TabbedTextOutW(dc, x, y, text, lstrlenW(text), 0, nullptr, 0);
    SelectObject(dc, previous);
    DeleteObject(font);
}

LOGFONTW FontOf(std::int32_t size, bool bold = false, const char* face = nullptr) {
    clFont font;
    font.Create(nullptr, face, size, 0, bold);
    return font.Description();
}

class TextContent : public PaintedList {};

int FontsMadeToPaint(clText& list, const Canvas& canvas) {
    list.Paint(canvas.Dc(), 0, 0);  // measures
    const FontCount count;
    list.Paint(canvas.Dc(), 0, 0);
    return FontCount::Made();
}

}  // namespace

TEST_F(TextContent, APictureIsCopiedByItsRasterOperation) {
    XMemBitmap image;
    image.CreateEmpty(nullptr, 20, 10);
    image.FillColour(RGB(0xF0, 0x0F, 0xFF));
    clText list;
    list.AddPicture({.at = {0x60000, 0x90000}}, image);
    list.AddPicture({.at = {2, 3}, .rasterOp = SRCAND}, image);
    list.AddPicture({.at = {30, 3}, .rasterOp = SRCINVERT}, image);
    const Canvas canvas(width, height, RGB(0x33, 0x33, 0x33));
    Paint(list, canvas);
    // At the right edge, in the middle of the height.
    EXPECT_EQ(canvas.Count(RGB(0xF0, 0x0F, 0xFF), {90, 20, 110, 30}), 200);
    EXPECT_EQ(canvas.Count(RGB(0x30, 0x03, 0x33), {12, 8, 32, 18}), 200);
    EXPECT_EQ(canvas.Count(RGB(0xC3, 0x3C, 0xCC), {40, 8, 60, 18}), 200);
    EXPECT_EQ(canvas.Count(RGB(0x33, 0x33, 0x33)), width * height - 600);
}

TEST_F(TextContent, EncodedPicturesAreDecodedAtEachPaint) {
    const std::vector<std::uint8_t> bytes =
        EncodedBmp(8, 6, [](int x, int) { return x < 4 ? red : green; });
    clText list;
    list.AddPicture({.at = {2, 3}}, bytes.data(), static_cast<std::int64_t>(bytes.size()));
    for (int round = 0; round < 2; ++round) {
        const Canvas canvas(width, height, paper);
        Paint(list, canvas);
        EXPECT_EQ(canvas.Count(red, {12, 8, 16, 14}), 24);
        EXPECT_EQ(canvas.Count(green, {16, 8, 20, 14}), 24);
        // Nothing decoded is kept.
        EXPECT_EQ(list.pictures.At(0)->source.image.Bitmap(), nullptr);
    }
}

TEST_F(TextContent, AnExternalPictureGoesFirstWhileItHasBytes) {
    const std::vector<std::uint8_t> own = EncodedBmp(4, 4, [](int, int) { return red; });
    const std::vector<std::uint8_t> foreign = EncodedBmp(4, 4, [](int, int) { return green; });
    clByteBuffer external;
    clText list;
    list.AddPicture({}, own.data(), static_cast<std::int64_t>(own.size()));
    list.pictures.At(0)->source.external = &external;
    const Canvas first(width, height, paper);
    Paint(list, first);
    EXPECT_EQ(first.Count(red), 16);
    ASSERT_TRUE(external.Resize(static_cast<std::int64_t>(foreign.size()), false));
    std::copy(foreign.begin(), foreign.end(), external.data);
    const Canvas second(width, height, paper);
    Paint(list, second);
    EXPECT_EQ(second.Count(green), 16);
    EXPECT_EQ(second.Count(red), 0);
}

TEST_F(TextContent, APictureThatCannotBeDecodedShowsNothing) {
    clText list;
    list.AddPicture({}, "not a picture", 13);
    const Canvas canvas(width, height, paper);
    Paint(list, canvas);
    EXPECT_EQ(canvas.Count(paper), width * height);
}

TEST_F(TextContent, AnIconIsDrawnInItsOwnSize) {
    const HICON icon = MakeIcon(20, 12, [](int x, int y) {
        return y == 0 ? CLR_NONE : x < 10 ? red : blue;
    });
    clText list;
    list.AddIcon({.icon = icon, .at = {0x90000, 0x160004}});
    DestroyIcon(icon);
    const Canvas canvas(width, height, paper);
    Paint(list, canvas);
    // In the middle of the width, 4 pixels above the lower edge.
    EXPECT_EQ(canvas.Count(red), 110);
    EXPECT_EQ(canvas.Count(red, {50, 30, 60, 41}), 110);
    EXPECT_EQ(canvas.Count(blue, {60, 30, 70, 41}), 110);
    EXPECT_EQ(canvas.Count(paper), width * height - 220);
}

TEST_F(TextContent, AnExternalIconIsReadAtEachPaint) {
    HICON external = nullptr;
    const HICON own = MakeIcon(8, 8, red);
    clText list;
    list.AddIcon({.icon = own, .external = &external});
    DestroyIcon(own);
    const Canvas first(width, height, paper);
    Paint(list, first);
    EXPECT_EQ(first.Count(red), 64);
    external = MakeIcon(10, 10, green);
    const Canvas second(width, height, paper);
    Paint(list, second);
    EXPECT_EQ(second.Count(green), 100);
    EXPECT_EQ(second.Count(red), 0);
    DestroyIcon(external);
    external = nullptr;
    const Canvas third(width, height, paper);
    Paint(list, third);
    EXPECT_EQ(third.Count(red), 64);
}

TEST_F(TextContent, AStringIsWrittenAsGdiWritesIt) {
    clText list;
    list.AddText(
        {.at = {7, 3}, .text = L"Check\tAll", .colour = RGB(0, 0, 128), .bold = true, .size = 17});
    ExpectPaintedAs(list, [](HDC dc) {
        WriteText(dc, FontOf(17, true), RGB(0, 0, 128), 17, 8, L"Check\tAll");
    });
    clText faced;
    faced.AddText({.at = {7, 3}, .text = L"Check", .face = L"Courier New", .size = 20});
    ExpectPaintedAs(
        faced, [](HDC dc) { WriteText(dc, FontOf(20, false, "Courier New"), 0, 17, 8, L"Check"); });
}

TEST_F(TextContent, AStringWithoutSizeIsThirteenHigh) {
    clText list;
    list.AddText({.at = {0, 0}, .text = L"Ag"});
    ExpectPaintedAs(list, [](HDC dc) { WriteText(dc, FontOf(13), 0, 10, 5, L"Ag"); });
}

TEST_F(TextContent, AnchorsOfAStringKnowItsSize) {
    clText list;
    list.AddText({.at = {0x160004, 0x90000}, .text = L"Right\rAy"});
    ExpectPaintedAs(list, [](HDC dc) {
        clFont font;
        font.Create(dc);
        const std::int32_t textWidth = font.TextWidth(nullptr, L"Right\rAy", true, 0x160004);
        const std::int32_t lineHeight = font.LineHeight();
        const int x = 110 - textWidth - 4;
        const int y = 5 + 20 - 2 * lineHeight / 2;
        WriteText(dc, font.Description(), 0, x, y, L"Right");
        WriteText(dc, font.Description(), 0, x, y + lineHeight, L"Ay");
    });
}

TEST_F(TextContent, AStringIsShortenedToItsMaximumWidth) {
    clText list;
    list.AddText({.at = {0, 0}, .text = L"Conversion list", .maximumWidth = 50});
    ExpectPaintedAs(list, [](HDC dc) {
        clFont font;
        font.Create(dc);
        clString text = L"Conversion list";
        EXPECT_TRUE(font.FitWithEllipsis(50, text));
        WriteText(dc, font.Description(), 0, 10, 5, text.Chars());
    });
    EXPECT_TRUE(list.texts.At(0)->text.Equals(L"Conversion list"));
}

TEST_F(TextContent, OneFontServesARunOfLikeStrings) {
    const Canvas canvas(width, height, paper);
    clText list;
    for (int i = 0; i < 5; ++i)
        list.AddText({.text = L"a"}, 1);
    EXPECT_EQ(FontsMadeToPaint(list, canvas), 1);
    // Each field that the font depends on starts a new run.
    const std::vector<clTextString> others = {
        {.text = L"a", .face = L"Arial"},  {.text = L"a", .colour = red},
        {.text = L"a", .bold = true},      {.text = L"a", .italic = true},
        {.text = L"a", .underline = true}, {.text = L"a", .size = 14}};
    for (const clTextString& other : others) {
        clText mixed;
        mixed.AddText({.text = L"a"}, 1);
        mixed.AddText(other, 1);
        mixed.AddText(other, 1);
        EXPECT_EQ(FontsMadeToPaint(mixed, canvas), 2);
    }
    // What doesn't show is no part of a run.
    clText hidden;
    hidden.AddText({.text = L"a"}, 1);
    hidden.AddText({.text = L"a", .bold = true, .condition = 1}, 1);
    hidden.AddText({.text = L"a"}, 1);
    EXPECT_EQ(FontsMadeToPaint(hidden, canvas), 1);
}

TEST_F(TextContent, StringsLieAboveIconsOfTheirLayer) {
    const HICON icon = MakeIcon(40, 20, green);
    clText list;
    list.AddText({.text = L"WWWW", .colour = red}, 1);
    list.AddIcon({.icon = icon}, 1);
    DestroyIcon(icon);
    const Canvas canvas(width, height, paper);
    Paint(list, canvas);
    EXPECT_GT(canvas.Count(red), 0);
}
