#include <gtest/gtest.h>
#include <windows.h>

// commctrl.h needs windows.h before it.
#include <commctrl.h>

#include <algorithm>
#include <cstdint>

#include "tests/support/import_stub.h"
#include "tests/toolkit/menu_looks.h"
#include "tests/ui/icons.h"
#include "tests/ui/pixels.h"
#include "toolkit/grey_icon.h"
#include "toolkit/skin_menu.h"

namespace {

constexpr COLORREF paper = RGB(1, 2, 3);
constexpr RECT place = {10, 5, 190, 27};  // 180 by 22
constexpr RECT canvasSize = {0, 0, 200, 40};

constexpr std::int32_t checkAll = 40001;
constexpr std::int32_t invert = 40003;  // grey in the resource

struct Routed {
    LRESULT result;
    std::uint32_t handled;
};

Routed Send(XSkinMenu& menu, UINT message, void* structure) {
    Routed routed = {0, 77};
    routed.result =
        menu.Route(nullptr, message, 0, reinterpret_cast<LPARAM>(structure), &routed.handled);
    return routed;
}

MEASUREITEMSTRUCT MeasureRequest(std::int32_t id) {
    MEASUREITEMSTRUCT request = {};
    request.CtlType = ODT_MENU;
    request.itemID = static_cast<UINT>(id);
    request.itemWidth = 1234;
    request.itemHeight = 5678;
    return request;
}

DRAWITEMSTRUCT DrawRequest(const Canvas& canvas, std::int32_t id, const RECT& where,
                           UINT state = 0) {
    DRAWITEMSTRUCT request = {};
    request.CtlType = ODT_MENU;
    request.itemID = static_cast<UINT>(id);
    request.itemState = state;
    request.hDC = canvas.Dc();
    request.rcItem = where;
    return request;
}

void ExpectHandled(const Routed& routed) {
    EXPECT_EQ(routed.handled, 1u);
    EXPECT_EQ(routed.result, 1);
}

void ExpectLeft(const Routed& routed) {
    EXPECT_EQ(routed.handled, 0u);
    EXPECT_EQ(routed.result, 0);
}

int fillCalls;
const ImportStub* fillStub;

int WINAPI CountFills(HDC dc, const RECT* area, HBRUSH brush) {
    ++fillCalls;
    return fillStub->Original<int WINAPI(HDC, const RECT*, HBRUSH)>()(dc, area, brush);
}

int bitmapCalls;
const ImportStub* bitmapStub;

HBITMAP WINAPI CountBitmaps(HDC dc, int width, int height) {
    ++bitmapCalls;
    return bitmapStub->Original<HBITMAP WINAPI(HDC, int, int)>()(dc, width, height);
}

class MenuDrawing : public testing::Test {
protected:
    MenuDrawing()
        : canvas(canvasSize.right, canvasSize.bottom, paper),
          expected(canvasSize.right, canvasSize.bottom, paper) {
        EXPECT_TRUE(menu.LoadMenuAndPrepare());
    }

    void SetState(std::int32_t id, bool checked, bool disabled) const {
        const auto command = static_cast<UINT>(id);
        CheckMenuItem(menu.Menu(), command, checked ? MF_CHECKED : MF_UNCHECKED);
        EnableMenuItem(menu.Menu(), command, disabled ? MF_GRAYED : MF_ENABLED);
    }
    void Draw(std::int32_t id, const RECT& where, bool selected = false) {
        DRAWITEMSTRUCT request = DrawRequest(canvas, id, where, selected ? ODS_SELECTED : 0);
        ExpectHandled(Send(menu, WM_DRAWITEM, &request));
    }
    void ExpectCanvas() const { ExpectSamePixels(canvas, canvasSize, expected, canvasSize); }

    XSkinMenu menu;
    Canvas canvas;
    Canvas expected;
};

struct State {
    bool selected;
    bool checked;
    bool disabled;
};

constexpr State allStates[] = {{false, false, false}, {true, false, false}, {false, true, false},
                               {true, true, false},   {false, false, true}, {true, false, true},
                               {false, true, true},   {true, true, true}};

}  // namespace

TEST_F(MenuDrawing, EveryStateHasItsLook) {
    for (const State& state : allStates) {
        SCOPED_TRACE(testing::Message() << state.selected << state.checked << state.disabled);
        SetState(checkAll, state.checked, state.disabled);
        Draw(checkAll, place, state.selected);
        DrawExpectedItem(expected.Dc(), place,
                         {state.selected, state.checked, state.disabled, L"Check All"});
        ExpectCanvas();
    }
}

TEST_F(MenuDrawing, EveryStateHasItsIcon) {
    const auto colourAt = [](int x, int y) -> COLORREF {
        if (y < 3) return CLR_NONE;
        return x < 5 ? RGB(0, 0, 0) : RGB(10 * x, 200, 30 + y);
    };
    const auto greyAt = [&](int x, int y) -> COLORREF {
        const COLORREF colour = colourAt(x, y);
        if (colour == CLR_NONE || colour == 0) return colour;
        const int mean = (GetRValue(colour) + GetGValue(colour) + GetBValue(colour)) / 3;
        const int brightness = std::min(mean + 35, 255);
        return 0x010101u * static_cast<COLORREF>(brightness);
    };
    const HICON icon = MakeIcon(16, 16, colourAt);
    const HICON greyIcon = MakeIcon(16, 16, greyAt);
    menu.SetItemIcon(checkAll, icon);
    for (const State& state : allStates) {
        SCOPED_TRACE(testing::Message() << state.selected << state.checked << state.disabled);
        SetState(checkAll, state.checked, state.disabled);
        Draw(checkAll, place, state.selected);
        DrawExpectedItem(expected.Dc(), place,
                         {state.selected, state.checked, state.disabled, L"Check All",
                          state.disabled ? greyIcon : icon});
        ExpectCanvas();
    }
    DestroyIcon(icon);
    DestroyIcon(greyIcon);
}

TEST_F(MenuDrawing, ASelectedItemThatIsDisabledHasNoSelection) {
    Draw(invert, place, true);
    EXPECT_EQ(canvas.Count(0xEBD8A8), 0);
    EXPECT_GT(canvas.Count(0xC0C0C0), 0);
    EXPECT_EQ(canvas.Count(0x000000), 0);
    SetState(invert, false, false);
    Draw(invert, place, true);
    EXPECT_EQ(canvas.Count(0xEBD8A8), 2 * 178 + 2 * 20);
    EXPECT_EQ(canvas.Count(0xC0C0C0), 0);
    EXPECT_GT(canvas.Count(0x000000), 0);
}

TEST_F(MenuDrawing, ACheckedItemHasFramesAndACheckMark) {
    const HICON icon = MakeIcon(16, 16, RGB(255, 0, 0));
    menu.SetItemIcon(checkAll, icon);
    DestroyIcon(icon);
    SetState(checkAll, true, false);
    Draw(checkAll, place);
    // The frame about the icon, which lies inside it.
    EXPECT_EQ(Colour{canvas.At(11, 6)}, Colour{0xCDBA8A});
    EXPECT_EQ(Colour{canvas.At(30, 25)}, Colour{0xCDBA8A});
    EXPECT_EQ(canvas.Count(RGB(255, 0, 0), {13, 7, 29, 23}), 256);
    // The two brackets.
    EXPECT_EQ(canvas.Count(0xCDBA8A, {34, 5, 35, 27}), 20);
    EXPECT_EQ(canvas.Count(0xCDBA8A, {188, 5, 189, 27}), 20);
    // The mark: two pixels each of the short strokes, four of the long ones.
    EXPECT_EQ(canvas.Count(0, {178, 5, 190, 27}), 10);
    EXPECT_EQ(Colour{canvas.At(179, 19)}, Colour{0x000000});
    EXPECT_EQ(Colour{canvas.At(183, 17)}, Colour{0x000000});
    SetState(checkAll, false, false);
    Draw(checkAll, place);
    EXPECT_EQ(canvas.Count(0xCDBA8A), 0);
}

TEST_F(MenuDrawing, SeparatorsShareOneLookAtTheirOwnPlaces) {
    const RECT first = {10, 5, 150, 14};
    const RECT second = {30, 20, 190, 33};
    Draw(0, first);
    Draw(0, second);
    DrawExpectedSeparator(expected.Dc(), first);
    DrawExpectedSeparator(expected.Dc(), second);
    ExpectCanvas();
}

TEST_F(MenuDrawing, TheLookOfSeparatorsIsBuiltOnce) {
    Draw(0, place);
    const ImportStub stub("FillRect", CountFills);
    fillStub = &stub;
    fillCalls = 0;
    Draw(0, place);
    EXPECT_EQ(fillCalls, 1);
}

TEST_F(MenuDrawing, AnotherMenuHasSeparatorsOfItsOwn) {
    Draw(0, place);
    EXPECT_EQ(canvas.Count(0xC4C4C4), 180 - 29);
    menu.Attach(CreatePopupMenu(), true);
    menu.imageWidth = 0;
    Draw(0, place);
    EXPECT_EQ(canvas.Count(0xC4C4C4), 180 - 10) << "no strip for images";
}

TEST_F(MenuDrawing, ALargerItemAfterASmallerOneIsWhole) {
    Draw(checkAll, place);
    Draw(invert, canvasSize);
    DrawExpectedItem(expected.Dc(), canvasSize, {.disabled = true, .text = L"Invert Selection"});
    ExpectCanvas();
}

TEST_F(MenuDrawing, TheBackBufferNeverShrinks) {
    Draw(checkAll, {0, 0, 100, 40});
    Draw(checkAll, {0, 0, 200, 20});
    const ImportStub stub("CreateCompatibleBitmap", CountBitmaps);
    bitmapStub = &stub;
    bitmapCalls = 0;
    Draw(checkAll, {0, 0, 150, 30});
    // That of the strip's gradient, whose height is another.
    EXPECT_EQ(bitmapCalls, 1);
}

TEST_F(MenuDrawing, ASmallerItemAfterALargerOneTouchesItsOwnPlaceOnly) {
    Draw(checkAll, canvasSize);
    DrawExpectedItem(expected.Dc(), canvasSize, {.text = L"Check All"});
    ExpectCanvas();
    const RECT small = {20, 10, 170, 30};
    Draw(invert, small);
    DrawExpectedItem(expected.Dc(), small, {.disabled = true, .text = L"Invert Selection"});
    ExpectCanvas();
    // Wider but lower than all before: the other measure stays.
    const RECT low = {0, 20, 200, 38};
    Draw(checkAll, low);
    DrawExpectedItem(expected.Dc(), low, {.text = L"Check All"});
    ExpectCanvas();
}

TEST_F(MenuDrawing, WithoutImagesTheTextIsFartherLeft) {
    const HMENU popup = CreatePopupMenu();
    const HMENU deeper = CreatePopupMenu();
    AppendMenuW(popup, MF_POPUP, reinterpret_cast<UINT_PTR>(deeper), L"More");
    AppendMenuW(deeper, MF_STRING, 101, L"Plain");
    menu.Attach(popup, true);
    menu.imageWidth = 0;
    clOwnedList<clMenuLayout> layouts;
    menu.Prepare(&layouts, false);
    ASSERT_EQ(layouts.Count(), 2);
    for (std::int64_t i = 0; i < 2; ++i) {
        const clText& text = layouts.At(i)->text;
        EXPECT_EQ(text.gradients.Count(), 1);  // that of the selection
        EXPECT_EQ(text.texts.At(0)->at.x, 10);
    }
}

TEST_F(MenuDrawing, MeasuresASeparator) {
    MEASUREITEMSTRUCT request = MeasureRequest(0);
    ExpectHandled(Send(menu, WM_MEASUREITEM, &request));
    EXPECT_EQ(request.itemWidth, 0u);
    EXPECT_EQ(request.itemHeight, 9u);
}

TEST_F(MenuDrawing, MeasuresAnItemByItsLayout) {
    MEASUREITEMSTRUCT request = MeasureRequest(invert);
    ExpectHandled(Send(menu, WM_MEASUREITEM, &request));
    const clExtent size = menu.LayoutOf(invert)->Measure();
    EXPECT_EQ(request.itemWidth, static_cast<UINT>(size.width));
    EXPECT_GT(request.itemWidth, 60u);
    EXPECT_LE(size.height, 16);
    EXPECT_EQ(request.itemHeight, 18u);
    menu.imageHeight = 40;
    ExpectHandled(Send(menu, WM_MEASUREITEM, &request));
    EXPECT_EQ(request.itemHeight, 42u);
    menu.imageHeight = 0;
    ExpectHandled(Send(menu, WM_MEASUREITEM, &request));
    EXPECT_EQ(request.itemHeight, static_cast<UINT>(size.height + 2));
}

TEST_F(MenuDrawing, HavingBeenDrawnWideDoesNotMakeAnItemWider) {
    MEASUREITEMSTRUCT before = MeasureRequest(checkAll);
    ExpectHandled(Send(menu, WM_MEASUREITEM, &before));
    Draw(checkAll, canvasSize);
    MEASUREITEMSTRUCT after = MeasureRequest(checkAll);
    ExpectHandled(Send(menu, WM_MEASUREITEM, &after));
    EXPECT_EQ(after.itemWidth, before.itemWidth);
    EXPECT_EQ(after.itemHeight, before.itemHeight);
}

TEST_F(MenuDrawing, IdsOfOtherMenusAreLeft) {
    MEASUREITEMSTRUCT measure = MeasureRequest(12345);
    ExpectLeft(Send(menu, WM_MEASUREITEM, &measure));
    EXPECT_EQ(measure.itemWidth, 1234u);
    EXPECT_EQ(measure.itemHeight, 5678u);
    DRAWITEMSTRUCT draw = DrawRequest(canvas, 12345, place);
    ExpectLeft(Send(menu, WM_DRAWITEM, &draw));
    EXPECT_EQ(canvas.Count(paper), 200 * 40);
}

TEST_F(MenuDrawing, WhatIsNoMenuIsLeft) {
    MEASUREITEMSTRUCT measure = MeasureRequest(checkAll);
    measure.CtlType = ODT_LISTVIEW;
    ExpectLeft(Send(menu, WM_MEASUREITEM, &measure));
    DRAWITEMSTRUCT draw = DrawRequest(canvas, checkAll, place);
    draw.CtlType = ODT_BUTTON;
    ExpectLeft(Send(menu, WM_DRAWITEM, &draw));
    EXPECT_EQ(canvas.Count(paper), 200 * 40);
    ExpectLeft(Send(menu, WM_COMMAND, nullptr));
    ExpectLeft(Send(menu, WM_INITMENUPOPUP, nullptr));
}

TEST_F(MenuDrawing, WithoutAMenuItemsAreMeasuredOnly) {
    menu.Attach(nullptr, false);
    MEASUREITEMSTRUCT measure = MeasureRequest(0);
    ExpectHandled(Send(menu, WM_MEASUREITEM, &measure));
    EXPECT_EQ(measure.itemHeight, 9u);
    DRAWITEMSTRUCT draw = DrawRequest(canvas, 0, place);
    ExpectLeft(Send(menu, WM_DRAWITEM, &draw));
    EXPECT_EQ(canvas.Count(paper), 200 * 40);
}

TEST(GreyIcon, KeepsSizeMaskAndBlack) {
    const HICON icon = MakeIcon(5, 4, [](int x, int y) {
        if (y == 0) return COLORREF{CLR_NONE};
        return x == 0 ? RGB(0, 0, 0) : RGB(255, 0, 0);
    });
    const clIconHandle grey = MakeGreyIcon(icon);
    DestroyIcon(icon);
    const Canvas canvas(10, 10, paper);
    DrawIconEx(canvas.Dc(), 0, 0, grey.Get(), 0, 0, 0, nullptr, DI_NORMAL);
    EXPECT_EQ(canvas.Count(paper), 100 - 15);
    EXPECT_EQ(canvas.Count(0x000000), 3);
    EXPECT_EQ(canvas.Count(0x787878, {1, 1, 5, 4}), 12);
}

TEST(GreyIcon, NothingComesOfNothing) {
    EXPECT_FALSE(MakeGreyIcon(nullptr).IsValid());
    const HICON monochrome = MakeMonochromeIcon(16, 16);
    EXPECT_FALSE(MakeGreyIcon(monochrome).IsValid());
    DestroyIcon(monochrome);
}
