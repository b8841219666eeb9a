#include "toolkit/font.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>

#include "tests/support/import_stub.h"
#include "tests/support/text.h"
#include "tests/ui/pixels.h"

namespace {

constexpr COLORREF paper = RGB(255, 255, 255);

// GDI's own answers in the context's font.
SIZE Extent(HDC dc, const wchar_t* text) {
    SIZE extent = {};
    GetTextExtentPoint32W(dc, text, static_cast<int>(std::char_traits<wchar_t>::length(text)),
                          &extent);
    return extent;
}

std::int32_t Widest(HDC dc, const wchar_t* first, const wchar_t* second) {
    return std::max(Extent(dc, first).cx, Extent(dc, second).cx);
}

void ExpectSamePixels(const Canvas& actual, const Canvas& expected, int width, int height) {
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            ASSERT_EQ(Colour{actual.At(x, y)}, Colour{expected.At(x, y)}) << x << ", " << y;
    }
}

// A canvas with the same font as a clFont, for GDI to write on.
class Reference {
public:
    Reference(const Canvas& onto, const clFont& like) : dc(onto.Dc()) {
        font = CreateFontIndirectW(&like.Description());
        previous = SelectObject(dc, font);
        SetTextColor(dc, like.colour);
        SetBkMode(dc, TRANSPARENT);
    }
    Reference(const Reference&) = delete;
    Reference& operator=(const Reference&) = delete;
    ~Reference() {
        SelectObject(dc, previous);
        DeleteObject(font);
    }

private:
    HDC dc;
    HFONT font;
    HGDIOBJ previous;
};

UINT lastOptions;

WINBOOL WINAPI KeepOptions(HDC, int, int, UINT options, const RECT*, LPCWSTR, UINT, const INT*) {
    lastOptions = options;
    return TRUE;
}

HFONT WINAPI MakeNoFont(const LOGFONTW*) {
    return nullptr;
}

}  // namespace

TEST(Font, FacesThatCannotBeUsedAreTahoma) {
    const struct {
        const char* face;
        const char* expected;
    } rows[] = {
        {nullptr, "Tahoma"},
        {"", "Tahoma"},
        {"Courier New", "Courier New"},
        {"abcdefghijklmnopqrstuvwxyz01234", "abcdefghijklmnopqrstuvwxyz01234"},  // 31
        {"abcdefghijklmnopqrstuvwxyz012345", "Tahoma"},                          // 32
        {"abcdefghijklmnopqrstuvwxyz0123456789", "Tahoma"},
    };
    for (const auto& row : rows) {
        clFont font;
        font.Create(nullptr, row.face);
        EXPECT_EQ(Utf8(font.Description().lfFaceName), row.expected);
        EXPECT_NE(font.Handle(), nullptr);
    }
}

TEST(Font, TheDescriptionHoldsNothingElse) {
    clFont font;
    font.Create(nullptr, "Arial", 17, 0, true, true, true);
    LOGFONTW expected = {};
    expected.lfHeight = 17;
    expected.lfWeight = 700;
    expected.lfItalic = 1;
    expected.lfUnderline = 1;
    std::copy_n(L"Arial", 6, expected.lfFaceName);
    EXPECT_EQ(std::memcmp(&font.Description(), &expected, sizeof(expected)), 0);
    font.Create(nullptr);
    EXPECT_EQ(font.Description().lfHeight, 13);
    EXPECT_EQ(font.Description().lfWeight, 400);
    EXPECT_EQ(font.Description().lfItalic, 0);
    EXPECT_EQ(font.Description().lfUnderline, 0);
}

TEST(Font, SelectKeepsWhatItReplaces) {
    const Canvas canvas(10, 10);
    const HDC dc = canvas.Dc();
    SetTextColor(dc, RGB(1, 2, 3));
    SetBkMode(dc, OPAQUE);
    const HGDIOBJ before = GetCurrentObject(dc, OBJ_FONT);
    clFont font;
    font.Create(dc, nullptr, 13, RGB(40, 50, 60));
    EXPECT_TRUE(font.IsSelected());
    EXPECT_EQ(GetCurrentObject(dc, OBJ_FONT), font.Handle());
    EXPECT_EQ(GetTextColor(dc), RGB(40, 50, 60));
    EXPECT_EQ(GetBkMode(dc), TRANSPARENT);
    const HFONT handle = font.Handle();
    font.Release();
    EXPECT_FALSE(font.IsSelected());
    EXPECT_EQ(font.Handle(), nullptr);
    EXPECT_EQ(GetCurrentObject(dc, OBJ_FONT), before);
    EXPECT_EQ(GetTextColor(dc), RGB(1, 2, 3));
    EXPECT_EQ(GetBkMode(dc), OPAQUE);
    EXPECT_EQ(GetObjectType(handle), 0u);
    font.Release();
}

TEST(Font, AnotherContextLetsTheFirstOneGo) {
    const Canvas first(10, 10);
    const Canvas second(10, 10);
    const HGDIOBJ before = GetCurrentObject(first.Dc(), OBJ_FONT);
    clFont font;
    font.Create(first.Dc());
    font.transparent = 0;
    font.Select(second.Dc());
    EXPECT_EQ(GetCurrentObject(first.Dc(), OBJ_FONT), before);
    EXPECT_EQ(GetCurrentObject(second.Dc(), OBJ_FONT), font.Handle());
    EXPECT_EQ(GetBkMode(second.Dc()), OPAQUE);
    font.Select(nullptr);
    EXPECT_TRUE(font.IsSelected());
}

TEST(Font, CreateStartsAnew) {
    const Canvas canvas(10, 10);
    const HGDIOBJ before = GetCurrentObject(canvas.Dc(), OBJ_FONT);
    clFont font;
    font.Create(canvas.Dc());
    font.transparent = 0;
    font.lineSpacing = 7;
    font.Create(nullptr, "Arial");
    EXPECT_EQ(GetCurrentObject(canvas.Dc(), OBJ_FONT), before);
    EXPECT_FALSE(font.IsSelected());
    EXPECT_EQ(font.transparent, 1);
    EXPECT_EQ(font.lineSpacing, 0);
}

TEST(Font, ALineIsWrittenAsGdiWritesIt) {
    const Canvas actual(120, 30);
    const Canvas expected(120, 30);
    clFont font;
    font.Create(actual.Dc(), nullptr, 13, RGB(200, 0, 0), true, true, true);
    font.DrawString(7, 5, L"A\tgy\rB");
    const Reference reference(expected, font);
    ExtTextOutW(expected.Dc(), 7, 5, 0, nullptr, L"A\tgy\rB", 6, nullptr);
    ExpectSamePixels(actual, expected, 120, 30);
    EXPECT_LT(actual.Count(paper), 120 * 30);
}

TEST(Font, WithoutTransparencyTheBackgroundIsPainted) {
    const Canvas canvas(60, 30, RGB(10, 20, 30));
    SetBkColor(canvas.Dc(), RGB(0, 255, 0));
    clFont font;
    font.Create(nullptr);
    font.transparent = 0;
    font.Select(canvas.Dc());
    font.DrawString(4, 5, L"WW");
    EXPECT_EQ(Colour{canvas.At(4, 5)}, Colour{RGB(0, 255, 0)});
    EXPECT_EQ(Colour{canvas.At(3, 5)}, Colour{RGB(10, 20, 30)});
}

TEST(Font, WithoutTransparencyALineIsWrittenOpaque) {
    const Canvas canvas(10, 10);
    const ImportStub stub("ExtTextOutW", KeepOptions);
    clFont font;
    font.Create(canvas.Dc());
    font.DrawString(0, 0, L"a");
    EXPECT_EQ(lastOptions, 0u);
    font.transparent = 0;
    font.DrawString(0, 0, L"a");
    EXPECT_EQ(lastOptions, static_cast<UINT>(ETO_OPAQUE));
}

TEST(Font, LinesFollowEachOther) {
    const Canvas actual(120, 80);
    const Canvas expected(120, 80);
    clFont font;
    font.Create(actual.Dc());
    font.lineSpacing = 3;
    font.DrawString(7, 5, L"First\r\nSe\tcond\r\rLast", true);
    const std::int32_t step = font.LineHeight() + 3;
    const Reference reference(expected, font);
    TabbedTextOutW(expected.Dc(), 7, 5, L"First", 5, 0, nullptr, 0);
    TabbedTextOutW(expected.Dc(), 7, 5 + step, L"Se\tcond", 7, 0, nullptr, 0);
    TabbedTextOutW(expected.Dc(), 7, 5 + 3 * step, L"Last", 4, 0, nullptr, 0);
    ExpectSamePixels(actual, expected, 120, 80);
}

TEST(Font, OnlyCarriageReturnsEndLines) {
    const Canvas canvas(10, 10);
    clFont font;
    font.Create(canvas.Dc());
    const std::int32_t line = font.LineHeight();
    const struct {
        const wchar_t* text;
        std::int32_t lines;
    } rows[] = {{L"", 0},       {L"A", 1},   {L"A\rB", 2}, {L"A\r\n\n\nB", 2}, {L"A\nB", 1},
                {L"A\r\rB", 3}, {L"\rA", 2}, {L"A\r", 1},  {L"A\n\rB\n", 2},   {L"A\r\nB\r\nC", 3}};
    for (const auto& row : rows) {
        EXPECT_EQ(font.TextHeight(row.text, true), row.lines * line) << Utf8(row.text);
        EXPECT_EQ(font.TextHeight(row.text), line) << Utf8(row.text);
    }
}

TEST(Font, SpacingStandsBetweenLinesOnly) {
    const Canvas canvas(10, 10);
    clFont font;
    font.Create(canvas.Dc());
    const std::int32_t line = font.LineHeight();
    EXPECT_EQ(line, Extent(canvas.Dc(), L"Ay").cy);
    font.lineSpacing = 5;
    EXPECT_EQ(font.TextHeight(L"A\rB\rC", true), 3 * line + 2 * 5);
    EXPECT_EQ(font.TextHeight(L"A", true), line);
    EXPECT_EQ(font.TextHeight(L"", true), 0);
}

TEST(Font, TheWidestLineCounts) {
    const Canvas canvas(10, 10);
    const HDC dc = canvas.Dc();
    clFont font;
    font.Create(dc);
    EXPECT_EQ(font.TextWidth(nullptr, L"iii\r\nWWW", true), Widest(dc, L"iii", L"WWW"));
    EXPECT_EQ(font.TextWidth(nullptr, L"WWW\riii", true), Widest(dc, L"iii", L"WWW"));
    EXPECT_EQ(font.TextWidth(nullptr, L"", true), 0);
    EXPECT_EQ(font.TextWidth(nullptr, L"WWWiii"), Extent(dc, L"WWWiii").cx);
    // As one line its end is a character like any other.
    EXPECT_EQ(font.TextWidth(nullptr, L"WWW\riii"), Extent(dc, L"WWW\riii").cx);
}

TEST(Font, MeasuresInAContextThatItIsNotSelectedInto) {
    const Canvas canvas(10, 10);
    const HGDIOBJ before = GetCurrentObject(canvas.Dc(), OBJ_FONT);
    clFont large;
    large.Create(nullptr, nullptr, 40);
    EXPECT_EQ(large.TextWidth(nullptr, L"Wide"), 0);
    EXPECT_EQ(large.TextHeight(L"Wide"), 0);
    EXPECT_EQ(large.LineHeight(), 0);
    const std::int32_t width = large.TextWidth(canvas.Dc(), L"Wide");
    EXPECT_EQ(GetCurrentObject(canvas.Dc(), OBJ_FONT), before);
    large.Select(canvas.Dc());
    EXPECT_EQ(width, Extent(canvas.Dc(), L"Wide").cx);
    EXPECT_GT(width, 40);
}

TEST(Font, TabsLineUpWithWhereTheLineIsDrawn) {
    const Canvas canvas(400, 30);
    const HDC dc = canvas.Dc();
    clFont font;
    font.Create(dc);
    const std::int32_t unit = 8 * (Extent(dc, L"abcdefABCDEF").cx / 12);
    const std::int32_t last = Extent(dc, L"end").cx;
    const struct {
        std::int32_t startX;
        std::int32_t firstStop;
    } rows[] = {{5, unit - 5},
                {unit - 1, 1 + unit},
                {unit + 5, unit - 5},
                {5 * unit + 9, unit - 9},
                {-5, unit + 5}};
    // What stands before the tab is wider than a stop that lies one pixel in.
    for (const auto& row : rows) {
        EXPECT_EQ(font.TextWidth(nullptr, L"i\tend", true, row.startX), row.firstStop + last)
            << row.startX;
    }
    const DWORD withDefaults = GetTabbedTextExtentW(dc, L"i\tend", 5, 0, nullptr);
    EXPECT_EQ(font.TextWidth(nullptr, L"i\tend", true), LOWORD(withDefaults));
    EXPECT_EQ(font.TextWidth(nullptr, L"i\tend", false, 5), Extent(dc, L"i\tend").cx);
}

TEST(Font, ShortensATextToBeNarrower) {
    const Canvas canvas(10, 10);
    const HDC dc = canvas.Dc();
    clFont font;
    font.Create(dc);
    const std::int32_t whole = Extent(dc, L"Various Artists").cx;
    clString text = L"Various Artists";
    EXPECT_FALSE(font.FitWithEllipsis(whole + 1, text));
    EXPECT_EQ(Utf8(text), "Various Artists");
    // As wide as the maximum is too wide.
    EXPECT_TRUE(font.FitWithEllipsis(whole, text));
    EXPECT_EQ(Utf8(text.Right(3)), "...");
    EXPECT_LT(Extent(dc, text.Chars()).cx, whole);
    // One character more would not fit.
    const std::int32_t kept = text.Length() - 3;
    clString longer = clString(L"Various Artists").Left(kept + 1);
    longer.Append(L"...");
    EXPECT_GE(Extent(dc, longer.Chars()).cx, whole);
    text = L"";
    EXPECT_FALSE(font.FitWithEllipsis(100, text));
}

TEST(Font, WithoutASelectedFontNothingHappens) {
    const Canvas canvas(40, 20);
    clFont font;
    font.Create(nullptr);
    font.DrawString(0, 0, L"Text");
    font.DrawString(0, 0, L"Text", true);
    clString text = L"Text";
    EXPECT_FALSE(font.FitWithEllipsis(1, text));
    EXPECT_EQ(Utf8(text), "Text");
    EXPECT_EQ(canvas.Count(paper), 40 * 20);
}

TEST(Font, AFontThatCannotBeMadeGivesNothing) {
    const Canvas canvas(40, 20);
    const HGDIOBJ before = GetCurrentObject(canvas.Dc(), OBJ_FONT);
    const ImportStub stub("CreateFontIndirectW", MakeNoFont);
    clFont font;
    font.Create(canvas.Dc());
    EXPECT_EQ(font.Handle(), nullptr);
    EXPECT_FALSE(font.IsSelected());
    EXPECT_EQ(GetCurrentObject(canvas.Dc(), OBJ_FONT), before);
    font.DrawString(0, 0, L"Text");
    EXPECT_EQ(canvas.Count(paper), 40 * 20);
    EXPECT_EQ(font.TextWidth(canvas.Dc(), L"Text"), 0);
    EXPECT_EQ(font.TextHeight(L"Text"), 0);
}
