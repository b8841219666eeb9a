#include <gtest/gtest.h>

#include <cstdlib>

#include "tests/toolkit/value_form.h"
#include "tests/ui/icons.h"
#include "tests/ui/pump.h"
#include "toolkit/dpi.h"
#include "toolkit/font.h"

namespace {

constexpr COLORREF white = 0xFFFFFF;
constexpr COLORREF paper = RGB(255, 0, 255);  // of a canvas, to see what is painted
constexpr COLORREF green = RGB(0, 200, 0);
constexpr COLORREF red = RGB(200, 0, 0);
constexpr COLORREF darkGreen = RGB(0, 60, 0);
constexpr COLORREF darkRed = RGB(60, 0, 0);
constexpr SIZE rowSize = {300, 21};

// One row painted on a canvas of its own size.
class PaintedRow {
public:
    PaintedRow(ValueForm& form, std::int32_t row, UINT state = 0)
        : canvas(rowSize.cx, rowSize.cy, paper) {
        EXPECT_EQ(form.Draw(canvas, row, state, rowSize), 1);
        EXPECT_EQ(form.handled, 1U);
    }

    Colour At(int x, int y) const { return Colour{canvas.At(x, y)}; }
    int Count(COLORREF colour, int left = 0, int right = rowSize.cx) const {
        return canvas.Count(colour, {left, 0, right, rowSize.cy});
    }

private:
    Canvas canvas;
};

bool IsNear(Colour a, Colour b, int distance) {
    const auto part = [](COLORREF colour, int shift) {
        return static_cast<int>((colour >> shift) & 0xFF);
    };
    for (const int shift : {0, 8, 16})
        if (std::abs(part(a.value, shift) - part(b.value, shift)) > distance) return false;
    return true;
}

TEST(ValuePaint, OfNoRowIsWhite) {
    ValueForm form;
    form.Fill(1);
    for (const std::int32_t row : {-1, 1, 7}) {
        const Canvas canvas(100, 40, paper);
        EXPECT_EQ(form.Draw(canvas, row, ODS_SELECTED, {50, 21}, 10, 5), 1);
        EXPECT_EQ(form.handled, 1U);
        EXPECT_EQ(canvas.Count(white, {10, 5, 60, 26}), 50 * 21);
        EXPECT_EQ(canvas.Count(paper), 100 * 40 - 50 * 21);
    }
}

TEST(ValuePaint, OfAnotherControlIsNotItsOwn) {
    ValueForm form;
    form.Fill(1);
    DRAWITEMSTRUCT item = {};
    item.CtlType = ODT_LISTBOX;
    item.hwndItem = form.form.Window();
    EXPECT_EQ(form.Send(WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&item)), 0);
    EXPECT_EQ(form.handled, 0U);
}

TEST(ValuePaint, FillsTheRectangleAndNothingElse) {
    ValueForm form;
    form.Fill(2);
    const Canvas wide(300, 40, paper);
    form.Draw(wide, 0, 0, {280, 21}, 10, 5);
    EXPECT_EQ(Colour{wide.At(10, 5)}, Colour{white});
    EXPECT_EQ(Colour{wide.At(289, 25)}, Colour{white});
    EXPECT_EQ(wide.Count(paper), 300 * 40 - 280 * 21);
    // The buffer is as large as the largest row, which shows nowhere.
    const Canvas narrow(300, 40, paper);
    form.Draw(narrow, 1, 0, {80, 15}, 0, 0);
    EXPECT_EQ(narrow.Count(paper), 300 * 40 - 80 * 15);
}

TEST(ValuePaint, ShowsTheSelection) {
    ValueForm form;
    form.Add(ValueKind::Text, L"", L"");
    const PaintedRow plain(form, 0);
    EXPECT_EQ(plain.Count(white), 300 * 21);
    const PaintedRow selected(form, 0, ODS_SELECTED);
    EXPECT_EQ(selected.At(0, 10), Colour{white});
    EXPECT_EQ(selected.At(1, 0), Colour{0xEBD8A8});
    EXPECT_EQ(selected.At(299, 20), Colour{0xEBD8A8});
    EXPECT_EQ(selected.At(2, 1), Colour{0xFFFAEE});
    EXPECT_EQ(selected.At(298, 10), Colour{0xFFFAEE});
    EXPECT_EQ(selected.At(3, 2), Colour{0xF7F4EC});
    EXPECT_EQ(selected.At(296, 2), Colour{0xF7F4EC});
    EXPECT_EQ(selected.At(297, 2), Colour{0xFFFAEE});
    EXPECT_TRUE(IsNear(selected.At(150, 18), Colour{0xF4EDDB}, 2));
    EXPECT_EQ(selected.At(150, 19), Colour{0xFFFAEE});
}

TEST(ValuePaint, ShowsTheFocus) {
    ValueForm form;
    form.Add(ValueKind::Text, L"", L"");
    const PaintedRow focused(form, 0, ODS_FOCUS);
    const auto isOnFrame = [](int x, int y) {
        return x >= 3 && x <= 297 && y >= 2 && y <= 18 && (x == 3 || x == 297 || y == 2 || y == 18);
    };
    int dots = 0;
    for (int y = 0; y < 21; ++y) {
        for (int x = 0; x < 300; ++x) {
            if (focused.At(x, y) == Colour{white}) continue;
            ++dots;
            EXPECT_TRUE(isOnFrame(x, y)) << x << "," << y;
        }
    }
    EXPECT_GT(dots, 100);
}

TEST(ValuePaint, OfABandIsAGradient) {
    ValueForm form;
    form.Add(ValueKind::Band, L"", L"");
    const PaintedRow band(form, 0);
    EXPECT_EQ(band.At(0, 0), Colour{white});
    EXPECT_EQ(band.At(0, 20), Colour{white});
    EXPECT_TRUE(IsNear(band.At(299, 0), Colour{0xF5EEDD}, 2));
    EXPECT_TRUE(IsNear(band.At(299, 20), Colour{0xFFFAEE}, 2));
    EXPECT_EQ(PaintedRow(form, 0, ODS_SELECTED).At(1, 0), Colour{0xEBD8A8});
}

TEST(ValuePaint, OfAHeadingRunsALineBehindItsName) {
    ValueForm form;
    clValueRowParams params;
    params.bold = true;
    params.nameSize = 15;
    form.Add(ValueKind::Heading, L"Heading", L"", params);
    clFont font;
    font.Create(nullptr, nullptr, 15, 0, true);
    const clScreenContext screen;
    const int left = ScaleForDpi(4) + 4 + font.TextWidth(screen.Get(), L"Heading");
    const PaintedRow row(form, 0);
    EXPECT_EQ(row.At(left - 1, 10), Colour{white});
    EXPECT_EQ(row.At(left, 10), Colour{0x808080});
    EXPECT_TRUE(IsNear(row.At((left + 296) / 2, 10), Colour{0xBFBFBF}, 3));
    EXPECT_NE(row.At(290, 10), Colour{white});
    EXPECT_EQ(row.At(296, 10), Colour{white});
    EXPECT_EQ(row.At(left, 9), Colour{white});
    EXPECT_EQ(row.At(left, 11), Colour{white});
}

TEST(ValuePaint, WritesNameAndValueInTheirColours) {
    ValueForm form;
    clValueRowParams params;
    params.nameColour = RGB(0, 0, 255);
    params.valueColour = RGB(255, 0, 0);
    form.Add(ValueKind::Text, L"HHH III", L"HHH III", params);
    form.Add(ValueKind::Link, L"HHH III", L"HHH III", params);
    const int valueX = ScaleForDpi(150);
    const PaintedRow row(form, 0);
    EXPECT_GT(row.Count(RGB(0, 0, 255), 0, valueX), 10);
    EXPECT_EQ(row.Count(RGB(0, 0, 255), valueX), 0);
    EXPECT_GT(row.Count(RGB(255, 0, 0), valueX), 10);
    EXPECT_EQ(row.Count(RGB(255, 0, 0), 0, valueX), 0);
    const PaintedRow link(form, 1);
    EXPECT_GT(link.Count(0xFF0000, valueX), row.Count(RGB(255, 0, 0), valueX) + 10);  // the line
    EXPECT_EQ(link.Count(RGB(255, 0, 0)), 0);
}

TEST(ValuePaint, OfAReadOnlyRowIsGreyForThatOnce) {
    ValueForm form;
    clValueRowParams params;
    params.readOnly = true;
    form.Add(ValueKind::Text, L"HHH III", L"HHH III", params);
    const int valueX = ScaleForDpi(150);
    const PaintedRow row(form, 0);
    EXPECT_GT(row.Count(0xC0C0C0, 0, valueX), 10);
    EXPECT_GT(row.Count(0xC0C0C0, valueX), 10);
    EXPECT_EQ(row.Count(0), 0);
    EXPECT_EQ(form.list.Row(0)->layout.texts.At(0)->colour, 0U);
    form.list.Row(0)->readOnly = false;
    EXPECT_GT(PaintedRow(form, 0).Count(0), 20);
}

TEST(ValuePaint, FollowsNameAndValueButForAFixedName) {
    ValueForm form;
    form.Add(ValueKind::Text, L"HHH", L"");
    form.Add(ValueKind::FixedText, L"HHH", L"");
    const int before = PaintedRow(form, 0).Count(0);
    for (const std::int32_t row : {0, 1}) {
        form.list.Row(row)->name.Assign(L"");
        form.list.Row(row)->value.Assign(L"HHH\rHHHHHHHHHH");
    }
    const int valueX = ScaleForDpi(150);
    EXPECT_EQ(PaintedRow(form, 0).Count(0, 0, valueX), 0);
    EXPECT_EQ(PaintedRow(form, 1).Count(0, 0, valueX), before);
    PaintedRow(form, 0).Count(0, valueX);
    EXPECT_EQ(form.list.Row(0)->layout.texts.At(1)->text.Length(), 6);  // "HHH..."
    EXPECT_EQ(PaintedRow(form, 0).Count(0, valueX), PaintedRow(form, 1).Count(0, valueX));
}

TEST(ValuePaint, KeepsALongValueInItsRow) {
    ValueForm form;
    form.Add(ValueKind::Text, L"n", L"HHHHHHHHHHHHHHHHHHHHHHHHHHHHHHHHHHHHHHHHHHHHHHHHHHHHHHHHHHH");
    const PaintedRow row(form, 0);
    EXPECT_EQ(form.list.Row(0)->layout.texts.At(1)->maximumWidth, 300 - ScaleForDpi(150));
    EXPECT_GT(row.Count(0, 260), 10);
}

TEST(ValuePaint, HintsAtAButton) {
    ValueForm form;
    clValueRowParams params;
    params.buttonCaption = L"HHH";
    form.Add(ValueKind::Text, L"", L"", params);
    params.valueWidth = 100;
    form.Add(ValueKind::Text, L"", L"", params);
    params.valueWidth = 0;
    params.readOnly = true;
    form.Add(ValueKind::Text, L"", L"", params);
    clFont font;
    font.Create(nullptr, nullptr, 13);
    const clScreenContext screen;
    const int hint = font.TextWidth(screen.Get(), L"[ HHH ]");
    const PaintedRow plain(form, 0);
    EXPECT_GT(plain.Count(128, 300 - 4 - hint, 300 - 4), 5);
    EXPECT_EQ(plain.Count(128, 0, 300 - 4 - hint), 0);
    EXPECT_EQ(plain.Count(128, 300 - 4), 0);
    EXPECT_EQ(form.list.Row(0)->layout.texts.At(1)->maximumWidth,
              300 - ScaleForDpi(150) - hint - 7);
    EXPECT_EQ(PaintedRow(form, 0, ODS_SELECTED).Count(128), 0);
    EXPECT_EQ(form.list.Row(0)->layout.texts.At(1)->maximumWidth, 300 - ScaleForDpi(150));
    const int right = ScaleForDpi(150) + ScaleForDpi(100);
    const PaintedRow narrow(form, 1);
    EXPECT_GT(narrow.Count(128, right - hint, right), 5);
    EXPECT_EQ(narrow.Count(128, right), 0);
    EXPECT_EQ(form.list.Row(1)->layout.texts.At(1)->maximumWidth, ScaleForDpi(100) - hint - 7);
    const PaintedRow disabled(form, 2);
    EXPECT_EQ(disabled.Count(128), 0);
    EXPECT_GT(disabled.Count(0xC0C0C0, 300 - 4 - hint, 300 - 4), 5);
    EXPECT_GT(PaintedRow(form, 2, ODS_SELECTED).Count(0xC0C0C0), 5);
}

// Pixels of a row with nothing but a hint that are not those of one that ends there.
int DifferencesToHint(const PaintedRow& painted, int right) {
    const Canvas expected(rowSize.cx, rowSize.cy, white);
    {
        clFont font;
        font.Create(expected.Dc(), nullptr, 13, 128);
        const int height = font.TextHeight(L"[ HHH ]", true);
        font.DrawString(right - font.TextWidth(nullptr, L"[ HHH ]", true),
                        rowSize.cy / 2 - height / 2, L"[ HHH ]", true);
    }
    int different = 0;
    for (int y = 0; y < rowSize.cy; ++y) {
        for (int x = 0; x < rowSize.cx; ++x) {
            if (painted.At(x, y) != Colour{expected.At(x, y)}) ++different;
        }
    }
    return different;
}

TEST(ValuePaint, HintEndsFourPixelsBeforeTheRowOrWithTheValue) {
    ValueForm form;
    clValueRowParams params;
    params.buttonCaption = L"HHH";
    form.Add(ValueKind::Text, L"", L"", params);
    params.valueWidth = 100;
    form.Add(ValueKind::Text, L"", L"", params);
    EXPECT_EQ(DifferencesToHint(PaintedRow(form, 0), rowSize.cx - 4), 0);
    EXPECT_EQ(DifferencesToHint(PaintedRow(form, 1), ScaleForDpi(150) + ScaleForDpi(100)), 0);
}

TEST(ValuePaint, NameEndsWhereAValueBegins) {
    ValueForm form;
    form.Add(ValueKind::Text, L"name", L"value");
    form.Add(ValueKind::Text, L"name", L"");
    form.Add(ValueKind::Toggle, L"name", L"1");
    const auto widthOfName = [&form](std::int32_t row) {
        return form.list.Row(row)->layout.texts.At(0)->maximumWidth;
    };
    EXPECT_EQ(widthOfName(0), ScaleForDpi(150) - ScaleForDpi(4));
    EXPECT_EQ(widthOfName(1), 0);
    EXPECT_EQ(widthOfName(2), 0);
}

TEST(ValuePaint, LeavesTheValueToItsEditor) {
    ValueForm form;
    form.Add(ValueKind::Edit, L"", L"HHH III");
    EXPECT_GT(PaintedRow(form, 0, ODS_SELECTED).Count(0), 10);
    form.list.SelectRowAt(0);
    EXPECT_EQ(PaintedRow(form, 0, ODS_SELECTED).Count(0), 0);
    form.list.SelectRowAt(-1);
    EXPECT_GT(PaintedRow(form, 0).Count(0), 10);
}

// Icons of 10 by 6, one for each state.
void SetIcons(ValueForm& form, bool disabledToo) {
    const auto set = [&form](ToggleIcon which, COLORREF colour) {
        const HICON icon = MakeIcon(10, 6, colour);
        form.list.SetToggleIcon(which, icon);
        DestroyIcon(icon);
    };
    set(ToggleIcon::On, green);
    set(ToggleIcon::Off, red);
    set(ToggleIcon::RadioOn, green);
    set(ToggleIcon::RadioOff, red);
    if (!disabledToo) return;
    set(ToggleIcon::DisabledOn, darkGreen);
    set(ToggleIcon::DisabledOff, darkRed);
    set(ToggleIcon::DisabledRadioOn, darkGreen);
    set(ToggleIcon::DisabledRadioOff, darkRed);
}

TEST(ValuePaint, ShowsSwitchesByTheirIcons) {
    struct Row {
        ValueKind kind;
        const wchar_t* value;
        bool readOnly;
        bool disabledToo;
        COLORREF colour;
    };
    const Row rows[] = {
        {ValueKind::Toggle, L"1", false, false, green},
        {ValueKind::Toggle, L"0", false, false, red},
        {ValueKind::Toggle, L"1", true, false, green},
        {ValueKind::Toggle, L"0", true, false, red},
        {ValueKind::Toggle, L"1", false, true, green},
        {ValueKind::Toggle, L"0", false, true, red},
        {ValueKind::Toggle, L"1", true, true, darkGreen},
        {ValueKind::Toggle, L"0", true, true, darkRed},
        {ValueKind::Radio, L"-2", false, false, green},
        {ValueKind::Radio, L"2", false, false, red},
        {ValueKind::Radio, L"-2", true, true, darkGreen},
        {ValueKind::Radio, L"2", true, true, darkRed},
    };
    for (const Row& row : rows) {
        ValueForm form;
        SetIcons(form, row.disabledToo);
        clValueRowParams params;
        params.readOnly = row.readOnly;
        params.toggleX = 14;
        form.Add(row.kind, L"", row.value, params);
        const PaintedRow painted(form, 0);
        const int left = ScaleForDpi(14);
        const auto number = &row - rows;
        EXPECT_EQ(painted.Count(row.colour), 10 * 6) << number;
        EXPECT_EQ(painted.At(left, 7), Colour{row.colour}) << number;
        EXPECT_EQ(painted.At(left + 9, 12), Colour{row.colour}) << number;
        EXPECT_EQ(painted.Count(white), 300 * 21 - 60) << number;
    }
}

// One icon at most shows in each state, whatever lies below its transparent parts.
TEST(ValuePaint, EachIconOfASwitchHasItsCondition) {
    for (const bool disabledToo : {false, true}) {
        ValueForm form;
        SetIcons(form, disabledToo);
        form.Add(ValueKind::Toggle, L"", L"1");
        const auto& icons = form.list.Row(0)->layout.icons;
        ASSERT_EQ(icons.Count(), disabledToo ? 4 : 2);
        EXPECT_EQ(icons.At(0)->condition, disabledToo ? 33U : 32U);
        EXPECT_EQ(icons.At(1)->condition, disabledToo ? 17U : 16U);
        if (!disabledToo) continue;
        EXPECT_EQ(icons.At(2)->condition, 34U);
        EXPECT_EQ(icons.At(3)->condition, 18U);
    }
}

TEST(ValuePaint, ShowsTheNameOfASwitchAndNotItsValue) {
    ValueForm form;
    clValueRowParams params;
    params.nameX = 44;
    const HICON icon = MakeIcon(12, 12, green);
    params.icon = icon;
    params.iconX = 24;
    form.Add(ValueKind::Toggle, L"HHH III", L"1", params);
    DestroyIcon(icon);
    const PaintedRow row(form, 0);
    EXPECT_GT(row.Count(0, ScaleForDpi(44), ScaleForDpi(150)), 10);
    EXPECT_EQ(row.Count(0, ScaleForDpi(150)), 0);
    EXPECT_EQ(row.Count(green, ScaleForDpi(24), ScaleForDpi(24) + 12), 144);
}

// On the screen, as the list box asks for it.
TEST(ValuePaint, HappensOnTheForm) {
    ValueForm form;
    SetIcons(form, false);
    form.Add(ValueKind::Toggle, L"", L"0");
    form.Add(ValueKind::Toggle, L"", L"1");
    form.list.SelectRowAt(1);
    UpdateWindow(form.Box());
    const int middle = ScaleForDpi(21) / 2;
    const int x = ScaleForDpi(4) + 2;
    EXPECT_EQ(Colour{PixelOf(form.Box(), x, middle)}, Colour{red});
    EXPECT_EQ(Colour{PixelOf(form.Box(), x, ScaleForDpi(21) + middle)}, Colour{green});
    EXPECT_EQ(Colour{PixelOf(form.Box(), 1, 0)}, Colour{white});
    EXPECT_EQ(Colour{PixelOf(form.Box(), 1, ScaleForDpi(21))}, Colour{0xEBD8A8});
    form.list.SetOn(true, 0);
    UpdateWindow(form.Box());
    EXPECT_EQ(Colour{PixelOf(form.Box(), x, middle)}, Colour{green});
}

}  // namespace
