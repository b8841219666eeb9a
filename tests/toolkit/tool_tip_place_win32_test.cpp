#include <gtest/gtest.h>

#include "tests/toolkit/tip_form.h"
#include "tests/ui/pixels.h"
#include "tests/ui/pointer.h"
#include "tests/ui/pump.h"
#include "tests/ui/resource_counts.h"
#include "toolkit/draw.h"
#include "toolkit/font.h"
#include "toolkit/tool_tip.h"

namespace {

constexpr int paddingX = 2;
constexpr int paddingY = 4;

SIZE TextSize(const wchar_t* text) {
    HDC const screen = GetDC(nullptr);
    SIZE size = {};
    {
        clFont font;
        font.Create(screen);
        size = {font.TextWidth(nullptr, text, true), font.TextHeight(text, true)};
    }
    ReleaseDC(nullptr, screen);
    return size;
}

SIZE SizeOf(const RECT& rect) {
    return {rect.right - rect.left, rect.bottom - rect.top};
}

RECT ShownRect(const XToolTip& tip) {
    return TipForm::RectOf(tip.ShownWindow());
}

constexpr COLORREF frameColour = 0x767676;

// What lies under the text of a plain tip.
void DrawPlainTip(HDC dc, const RECT& whole) {
    DrawGradient(dc, whole, {0xFFFEFE, 0xFFFEFE, 0xF0E5E4, 0xF0E5E4});
    HBRUSH const brush = CreateSolidBrush(frameColour);
    FrameRect(dc, &whole, brush);
    DeleteObject(brush);
}

void DrawMiddleText(HDC dc, int left, int height, const wchar_t* text) {
    clFont font;
    font.Create(dc);
    font.DrawString(left, height / 2 - font.TextHeight(text, true) / 2, text, true);
}

// How many pixels of a painted tip are not as expected.
int Differences(HWND window, const Canvas& expected, int width, int height) {
    EXPECT_TRUE(PumpUntil([window] { return PixelOf(window, 0, 0) == frameColour; }));
    int different = 0;
    HDC const dc = GetDC(window);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            if (GetPixel(dc, x, y) != expected.At(x, y)) ++different;
        }
    }
    ReleaseDC(window, dc);
    return different;
}

class TipPlaceOnScreen : public testing::Test {
protected:
    // The tip's rectangle once the pointer has come to a point of the screen.
    RECT ShowAt(const XToolTipParams& params, POINT pointer) {
        MovePointer(pointer);
        tip.AddTool(params);
        EXPECT_TRUE(WaitUntilShowing(tip));
        return ShownRect(tip);
    }

    TipForm form;
    XToolTip tip;
};

TEST_F(TipPlaceOnScreen, StandsAboveTheAnchorAtThePointer) {
    const POINT pointer = ScreenMiddle(form.First());
    const RECT shown = ShowAt(QuickTip(form.First()), pointer);
    EXPECT_EQ(shown.left, pointer.x);
    EXPECT_EQ(shown.bottom, TipForm::RectOf(form.First()).top - 2);
}

TEST_F(TipPlaceOnScreen, TakesTheSizeOfItsText) {
    const RECT shown = ShowAt(QuickTip(form.First(), L"Some text"), ScreenMiddle(form.First()));
    const SIZE text = TextSize(L"Some text");
    EXPECT_EQ(SizeOf(shown).cx, 5 + text.cx + 4 + paddingX);
    EXPECT_EQ(SizeOf(shown).cy, text.cy + 1 + paddingY);
}

TEST_F(TipPlaceOnScreen, TakesTheLinesOfItsText) {
    const RECT shown =
        ShowAt(QuickTip(form.First(), L"Some text\rand more"), ScreenMiddle(form.First()));
    EXPECT_EQ(SizeOf(shown).cy, 2 * TextSize(L"Some text").cy + 1 + paddingY);
}

TEST_F(TipPlaceOnScreen, GoesBelowAnAnchorNearTheTopOfTheScreen) {
    form.MoveTo(300, -90);
    const RECT anchorRect = TipForm::RectOf(form.First());
    ASSERT_LT(anchorRect.top, 20);
    ASSERT_GE(anchorRect.top, 0);
    const POINT pointer = ScreenMiddle(form.First());
    const RECT shown = ShowAt(QuickTip(form.First()), pointer);
    EXPECT_EQ(shown.top, anchorRect.bottom + 1);
    EXPECT_EQ(shown.left, pointer.x);
}

TEST_F(TipPlaceOnScreen, KeepsWithinFiftyPixelsOfThePointerOverATallAnchor) {
    const RECT anchorRect = TipForm::RectOf(form.Tall());
    const POINT pointer = {anchorRect.left + 5, anchorRect.bottom - 5};
    const RECT shown = ShowAt(QuickTip(form.Tall()), pointer);
    EXPECT_EQ(shown.bottom, pointer.y - 50);
}

TEST_F(TipPlaceOnScreen, ShowsAllOfItselfAtTheRightEdge) {
    const int desktop = GetSystemMetrics(SM_CXSCREEN);
    form.MoveTo(desktop - 110, 300);
    const POINT pointer = ScreenMiddle(form.First());
    const RECT shown =
        ShowAt(QuickTip(form.First(), L"A tip that is far too long for this place"), pointer);
    EXPECT_LT(shown.left, pointer.x);
    EXPECT_EQ(shown.right, desktop);
}

TEST_F(TipPlaceOnScreen, RectangleOfAWindow) {
    XToolTipParams params = QuickTip(nullptr);
    params.rectangleWindow = form.Window();
    params.rectangle = {40, 150, 60, 170};
    const POINT topLeft = ScreenPoint(form.Window(), 40, 150);
    const POINT bottomRight = ScreenPoint(form.Window(), 60, 170);
    // One pixel beside it first.
    MovePointer({bottomRight.x + 1, bottomRight.y});
    tip.AddTool(params);
    PumpFor(400);
    EXPECT_FALSE(tip.IsShowing());
    // Its edges belong to it.
    const RECT shown = ShowAt(params, bottomRight);
    EXPECT_EQ(shown.left, bottomRight.x);
    EXPECT_EQ(shown.bottom, topLeft.y - 2);
    EXPECT_EQ(GetWindow(tip.ShownWindow(), GW_OWNER), form.Window());
    MovePointer(topLeft);
    PumpFor(200);
    EXPECT_TRUE(tip.IsShowing());
    MovePointer({topLeft.x - 1, topLeft.y});
    EXPECT_TRUE(WaitUntilGone(tip));
}

TEST_F(TipPlaceOnScreen, RectangleOfTheScreen) {
    XToolTipParams params = QuickTip(nullptr);
    params.rectangle = {800, 600, 850, 620};
    const RECT shown = ShowAt(params, {820, 610});
    EXPECT_EQ(shown.left, 820);
    EXPECT_EQ(shown.bottom, 598);
    EXPECT_EQ(GetWindow(tip.ShownWindow(), GW_OWNER), nullptr);
    form.PointAway();
    EXPECT_TRUE(WaitUntilGone(tip));
}

// Without a parent an anchor is no part of a form that the pointer could be on.
TEST_F(TipPlaceOnScreen, AnchorThatIsNoChildLeavesItToTheRectangle) {
    XToolTipParams params = QuickTip(form.Window());
    params.rectangle = {800, 290, 850, 320};
    MovePointer(ScreenMiddle(form.Window()));
    tip.AddTool(params);
    PumpFor(400);
    EXPECT_FALSE(tip.IsShowing());
    MovePointer({820, 310});
    EXPECT_TRUE(WaitUntilShowing(tip));
    // It is still what the tip stands above, and its owner.
    EXPECT_EQ(ShownRect(tip).bottom, TipForm::RectOf(form.Window()).top - 2);
    EXPECT_EQ(GetWindow(tip.ShownWindow(), GW_OWNER), form.Window());
}

TEST_F(TipPlaceOnScreen, PointTipShowsAtOnceWhereverThePointerIs) {
    XToolTipParams params = QuickTip(nullptr);
    params.point = {700, 500};
    params.showDelay = 60000;
    MovePointer({100, 900});
    tip.AddTool(params);
    ASSERT_TRUE(tip.IsShowing());
    const RECT shown = ShownRect(tip);
    EXPECT_EQ(shown.left, 700);
    EXPECT_EQ(shown.bottom, 498);
    MovePointer({900, 100});
    PumpFor(300);
    EXPECT_TRUE(tip.IsShowing());
    tip.Stop();
    params.point = {1279, 3};
    tip.AddTool(params);
    ASSERT_TRUE(tip.IsShowing());
    EXPECT_EQ(ShownRect(tip).right, GetSystemMetrics(SM_CXSCREEN));
    EXPECT_EQ(ShownRect(tip).top, 5);
}

TEST_F(TipPlaceOnScreen, IconStandsLeftOfTheText) {
    HICON const icon = LoadIconW(nullptr, IDI_INFORMATION);
    XToolTipParams params = QuickTip(form.First(), L"Text");
    params.icon = icon;
    const RECT shown = ShowAt(params, ScreenMiddle(form.First()));
    const SIZE text = TextSize(L"Text");
    EXPECT_EQ(SizeOf(shown).cx, IconWidth(icon) + 8 + text.cx + 4 + paddingX);
    EXPECT_EQ(SizeOf(shown).cy, IconHeight(icon) + paddingY);
    // With several lines it stands at the top, one pixel down.
    params.text = L"Text\rand more";
    const RECT lines = ShowAt(params, ScreenMiddle(form.First()));
    EXPECT_EQ(SizeOf(lines).cy, 1 + IconHeight(icon) + paddingY);
    // A line end before everything else makes no second line.
    params.text = L"\rText";
    const RECT one = ShowAt(params, ScreenMiddle(form.First()));
    EXPECT_EQ(SizeOf(one).cy, IconHeight(icon) + paddingY);
}

TEST_F(TipPlaceOnScreen, PaintsTheIconAtItsPlace) {
    HICON const icon = LoadIconW(nullptr, IDI_INFORMATION);
    const auto differencesWithIconAt = [&](const wchar_t* text, bool isAtTop) {
        XToolTipParams params = QuickTip(form.First(), text);
        params.icon = icon;
        const SIZE size = SizeOf(ShowAt(params, ScreenMiddle(form.First())));
        const int width = static_cast<int>(size.cx);
        const int height = static_cast<int>(size.cy);
        const Canvas expected(width, height);
        DrawPlainTip(expected.Dc(), {0, 0, width, height});
        const int top = isAtTop ? 1 : height / 2 - IconHeight(icon) / 2;
        DrawIconEx(expected.Dc(), 4, top, icon, IconWidth(icon), IconHeight(icon), 0, nullptr,
                   DI_NORMAL);
        DrawMiddleText(expected.Dc(), IconWidth(icon) + 8, height, text);
        return Differences(tip.ShownWindow(), expected, width, height);
    };
    EXPECT_EQ(differencesWithIconAt(L"Text", false), 0);
    EXPECT_EQ(differencesWithIconAt(L"Text\rand more", true), 0);
}

TEST_F(TipPlaceOnScreen, FramedModeHasLargerMarginsAndAFrame) {
    clText layout;
    clTextFill fill;
    fill.area = {0, 0, 60, 40};
    fill.colour = RGB(1, 2, 3);
    layout.AddFill(fill);
    XToolTipDescription description;
    description.anchorWindow = form.First();
    description.layout = &layout;
    description.showDelay = 50;
    description.showTime = 60000;
    form.PointAt(form.First());
    tip.Configure(description);
    ASSERT_TRUE(WaitUntilShowing(tip));
    EXPECT_EQ(SizeOf(ShownRect(tip)).cx, 62);
    EXPECT_EQ(SizeOf(ShownRect(tip)).cy, 44);
    description.mode = 1;
    tip.Configure(description);
    ASSERT_TRUE(WaitUntilShowing(tip));
    EXPECT_EQ(SizeOf(ShownRect(tip)).cx, 68);
    EXPECT_EQ(SizeOf(ShownRect(tip)).cy, 50);
    const auto style = static_cast<DWORD>(GetWindowLongW(tip.ShownWindow(), GWL_STYLE));
    EXPECT_EQ(style & WS_DLGFRAME, DWORD{WS_DLGFRAME});
}

// The window's pixels are those of the layout: a frame, in it the gradient, on it
// the text.
TEST_F(TipPlaceOnScreen, PaintsGradientFrameAndText) {
    const SIZE size = SizeOf(ShowAt(QuickTip(form.First(), L"Text"), ScreenMiddle(form.First())));
    const int width = static_cast<int>(size.cx);
    const int height = static_cast<int>(size.cy);
    const Canvas expected(width, height);
    DrawPlainTip(expected.Dc(), {0, 0, width, height});
    DrawMiddleText(expected.Dc(), 5, height, L"Text");
    EXPECT_EQ(Differences(tip.ShownWindow(), expected, width, height), 0);
    EXPECT_EQ(Colour{expected.At(1, 1)}, Colour{PixelOf(tip.ShownWindow(), 1, 1)});
    EXPECT_GT(expected.Count(0), 0) << "no black pixel: is the text there?";
}

// A context is given back by the thread that made it, and a tip's layout is freed
// by another one than the one that paints it.
TEST_F(TipPlaceOnScreen, PaintedGradientIsNotKept) {
    clTextGradient gradient;
    gradient.area = {0, 0, anchor::end, anchor::end};
    gradient.colours = {RGB(9, 0, 0), RGB(9, 0, 0), RGB(9, 0, 0), RGB(9, 0, 0)};
    clTextFill fill;
    fill.area = {0, 0, 60, 40};
    fill.colour = RGB(9, 0, 0);
    clText plain;
    plain.AddFill(fill);
    clText withGradient;
    withGradient.AddFill(fill);
    withGradient.AddGradient(gradient);
    const auto countWhileShown = [this](const clText& layout) {
        XToolTipDescription description;
        description.point = {700, 500};
        description.layout = &layout;
        description.showTime = tip_timing::forEver;
        tip.Configure(description);
        EXPECT_TRUE(PumpUntil([this] { return PixelOf(tip.ShownWindow(), 5, 5) == RGB(9, 0, 0); }));
        // Which painting holds to its end.
        const clMutexLock lock(TooltipMutex);
        return CountResources().gdiObjects;
    };
    countWhileShown(withGradient);
    EXPECT_EQ(countWhileShown(withGradient), countWhileShown(plain));
}

}  // namespace
