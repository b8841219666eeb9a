#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "tests/toolkit/button_form.h"
#include "tests/ui/pump.h"
#include "toolkit/button.h"

namespace {

using Timer = ButtonForm::Timer;

constexpr std::uint32_t normal = button_state::normal;
constexpr std::uint32_t pressed = button_state::pressed;
constexpr std::uint32_t hot = button_state::hot;
constexpr std::uint32_t pressedHot = button_state::pressedHot;

constexpr std::uint32_t allFrames = 0x1F;
constexpr std::uint32_t allFramesAndMask = 0x9F;
constexpr COLORREF untouched = RGB(255, 255, 255);

Colour FaceColour() {
    return {GetSysColor(COLOR_BTNFACE)};
}

// What a button paints into a context that it is given.
class Look {
public:
    Look(XButton& button, std::uint32_t state) : canvas(40, 30, untouched) {
        button.Paint(canvas.Dc(), state, false);
    }
    Colour At(POINT where) const { return {canvas.At(where.x, where.y)}; }

private:
    Canvas canvas;
};

TEST(ButtonLooks, EachStateHasItsFrame) {
    struct Row {
        std::uint32_t style;
        std::uint32_t state;
        COLORREF frame;
    };
    const Row rows[] = {
        {allFrames, normal, strip::normal},
        {allFrames, pressed, strip::pressed},
        {allFrames, hot, strip::hot},
        {allFrames, pressedHot, strip::pressedHot},
        {allFramesAndMask, normal, strip::normal},
        {allFramesAndMask, pressed, strip::pressed},
        {allFramesAndMask, hot, strip::hot},
        {allFramesAndMask, pressedHot, strip::pressedHot},
        {135, normal, strip::normal},
        {135, pressed, strip::pressed},
        {135, hot, strip::hot},
        {135, pressedHot, strip::pressed},
        {0x81, hot, strip::normal},
    };
    for (const Row& row : rows) {
        ButtonForm form({{row.style}}, Timer::None);
        const Look look(form.At(0), row.state);
        EXPECT_EQ(look.At(strip::onFrame), Colour{row.frame}) << row.style << " " << row.state;
        const bool hasMask = (row.style & button_style::mask) != 0;
        EXPECT_EQ(look.At(strip::onBackground), hasMask ? FaceColour() : Colour{row.frame});
        EXPECT_EQ(look.At({strip::frameWidth, 0}), Colour{untouched});
        EXPECT_EQ(look.At({0, strip::frameHeight}), Colour{untouched});
        EXPECT_EQ(form.At(0).State(), row.state);
    }
}

TEST(ButtonLooks, StyleZeroIsTheDefault) {
    ButtonForm form({{0}}, Timer::None);
    EXPECT_EQ(form.At(0).FrameWidth(), strip::frameWidth);
    EXPECT_EQ(form.At(0).FrameHeight(), strip::frameHeight);
    EXPECT_EQ(Look(form.At(0), hot).At(strip::onFrame), Colour{strip::hot});
    EXPECT_NE(GetWindowLongW(form.At(0).Window(), GWL_STYLE) & WS_TABSTOP, 0);
}

TEST(ButtonLooks, DisabledFrameTakesThePlaceOfAllOthersWithoutAMask) {
    ButtonForm form({{allFrames}}, Timer::None);
    EnableWindow(form.At(0).Window(), FALSE);
    for (const std::uint32_t state : {normal, pressed, hot}) {
        EXPECT_EQ(Look(form.At(0), state).At(strip::onFrame), Colour{strip::disabled});
    }
}

TEST(ButtonLooks, DisabledFrameLiesOverTheOtherWithAMask) {
    ButtonForm form({{allFramesAndMask}, {0x83}}, Timer::None);
    EnableWindow(form.At(0).Window(), FALSE);
    const Look look(form.At(0), pressed);
    EXPECT_EQ(look.At(strip::onFrame), Colour{strip::pressed});
    EXPECT_EQ(look.At(strip::onDisabled), Colour{strip::disabled});
    EXPECT_EQ(look.At(strip::onBackground), FaceColour());
    EnableWindow(form.At(1).Window(), FALSE);
    EXPECT_EQ(Look(form.At(1), normal).At(strip::onDisabled), Colour{strip::normal});
}

TEST(ButtonLooks, LatchedButtonIsTurnedRound) {
    ButtonForm form({{allFramesAndMask}}, Timer::None);
    XButton& button = form.At(0);
    button.SetLatched(true);
    EXPECT_TRUE(button.IsLatched());
    EXPECT_EQ(Look(button, normal).At(strip::onFrame), Colour{strip::pressed});
    EXPECT_EQ(Look(button, pressed).At(strip::onFrame), Colour{strip::normal});
    EXPECT_EQ(Look(button, hot).At(strip::onFrame), Colour{strip::pressedHot});
    EXPECT_EQ(Look(button, pressedHot).At(strip::onFrame), Colour{strip::hot});
    EXPECT_EQ(button.State(), pressedHot);
    button.SetLatched(false);
    EXPECT_EQ(Look(button, normal).At(strip::onFrame), Colour{strip::normal});
}

TEST(ButtonLooks, BackgroundIsThatOfTheFormBehindTheButton) {
    XMemBitmap backdrop;
    backdrop.CreateEmpty(nullptr, 400, 200);
    backdrop.FillColour(RGB(1, 2, 3));
    const POINT at = ButtonForm::firstButton;
    SetPixel(backdrop.Context(), at.x + strip::onBackground.x, at.y + strip::onBackground.y,
             RGB(4, 5, 6));
    ButtonForm form({{135, nullptr, &backdrop}}, Timer::None);
    // Copied at once: what becomes of the backdrop is no matter.
    backdrop.FillColour(RGB(7, 8, 9));
    const Look look(form.At(0), normal);
    EXPECT_EQ(look.At(strip::onBackground), Colour{RGB(4, 5, 6)});
    EXPECT_EQ(look.At({strip::onBackground.x, 3}), Colour{RGB(1, 2, 3)});
    EXPECT_EQ(look.At(strip::onFrame), Colour{strip::normal});
}

TEST(ButtonLooks, UnchangedLookIsNotPaintedAgainUnlessForced) {
    ButtonForm form({{}}, Timer::None);
    XButton& button = form.At(0);
    HDC const dc = GetDC(button.Window());
    SetPixel(dc, strip::onFrame.x, strip::onFrame.y, RGB(1, 1, 1));
    button.Paint(nullptr, normal, false);
    EXPECT_EQ(Colour{Shown(button)}, Colour{RGB(1, 1, 1)});
    button.Paint(nullptr, normal, true);
    EXPECT_EQ(Colour{Shown(button)}, Colour{strip::normal});
    button.Paint(nullptr, hot, false);
    EXPECT_EQ(Colour{Shown(button)}, Colour{strip::hot});
    ReleaseDC(button.Window(), dc);
}

TEST(ButtonLooks, UncoveredButtonIsPaintedByTheForm) {
    ButtonForm form({{}}, Timer::None);
    form.At(0).Paint(nullptr, hot, false);
    HDC const dc = GetDC(form.At(0).Window());
    SetPixel(dc, strip::onFrame.x, strip::onFrame.y, RGB(1, 1, 1));
    ReleaseDC(form.At(0).Window(), dc);
    InvalidateRect(form.At(0).Window(), nullptr, FALSE);
    UpdateWindow(form.At(0).Window());
    EXPECT_EQ(Colour{Shown(form.At(0))}, Colour{strip::hot});
}

TEST(ButtonLooks, ButtonWithoutAPictureIsEmpty) {
    ButtonForm form({}, Timer::None);
    XButton button;
    button.Create(form.Window(), {}, nullptr);
    ASSERT_NE(button.Window(), nullptr);
    EXPECT_EQ(button.FrameWidth(), 0);
    EXPECT_EQ(button.FrameHeight(), 0);
    EXPECT_EQ(Look(button, hot).At({0, 0}), Colour{untouched});
    EXPECT_EQ(button.State(), hot);
}

TEST(ButtonLooks, PaintWithoutAWindowDoesNothing) {
    ProbeButton button;
    EXPECT_EQ(Look(button, hot).At({0, 0}), Colour{untouched});
    EXPECT_EQ(button.State(), normal);
    button.Teardown();
}

void SetFill(XButton& button, ButtonLayout which, COLORREF colour) {
    clText layout;
    clTextFill fill;
    fill.area = {0, 0, anchor::end, anchor::end};
    fill.colour = colour;
    layout.AddFill(fill);
    button.SetLayout(which, layout);
}

// Covers the last column alone, wherever the button's size puts it.
void SetEdge(XButton& button, COLORREF colour) {
    clText layout;
    clTextFill fill;
    fill.area = {anchor::end | anchor::negative | 1, 0, anchor::end, anchor::end};
    fill.colour = colour;
    layout.AddFill(fill);
    button.SetLayout(ButtonLayout::FocusOverlay, layout);
}

class TextButton : public testing::Test {
protected:
    void Make(std::uint32_t style) {
        button.SetTextMode(true);
        XButtonParams params;
        params.x = 10;
        params.y = 100;
        params.style = style;
        button.Create(form.Window(), params, nullptr);
        button.SetTextSize(30, 20, nullptr);
        SetFill(button, ButtonLayout::Normal, strip::normal);
        SetFill(button, ButtonLayout::Hot, strip::hot);
        SetFill(button, ButtonLayout::Pressed, strip::pressed);
        SetFill(button, ButtonLayout::PressedHot, strip::pressedHot);
        SetFill(button, ButtonLayout::Disabled, strip::disabled);
        SetEdge(button, strip::focus);
    }

    ButtonForm form{{}, Timer::None};
    XButton button;
};

TEST_F(TextButton, EachStateHasItsLayout) {
    Make(0x1E);
    EXPECT_EQ(Look(button, normal).At({29, 19}), Colour{strip::normal});
    EXPECT_EQ(Look(button, pressed).At({29, 19}), Colour{strip::pressed});
    EXPECT_EQ(Look(button, hot).At({29, 19}), Colour{strip::hot});
    EXPECT_EQ(Look(button, pressedHot).At({29, 19}), Colour{strip::pressedHot});
    EXPECT_EQ(Look(button, normal).At({30, 0}), Colour{untouched});
    EnableWindow(button.Window(), FALSE);
    EXPECT_EQ(Look(button, hot).At({29, 19}), Colour{strip::disabled});
}

TEST_F(TextButton, StyleSaysWhichLayoutsThereAre) {
    Make(0x81);
    EXPECT_EQ(Look(button, hot).At({5, 5}), Colour{strip::normal});
    EXPECT_EQ(Look(button, pressedHot).At({5, 5}), Colour{strip::pressed});
    EnableWindow(button.Window(), FALSE);
    EXPECT_EQ(Look(button, normal).At({5, 5}), Colour{strip::normal});
}

TEST_F(TextButton, HasNoSizeOfItsOwn) {
    XButton empty;
    empty.SetTextMode(true);
    LoadStrip(empty.Image(), 135);  // has no say in text mode
    empty.Create(form.Window(), {}, nullptr);
    EXPECT_EQ(empty.FrameWidth(), 0);
    EXPECT_EQ(empty.FrameHeight(), 0);
    Make(0x1E);
    RECT client = {};
    GetClientRect(button.Window(), &client);
    EXPECT_EQ(client.right, 30);
    EXPECT_EQ(client.bottom, 20);
}

// What has to wait while another thread sets a layout, and its name.
struct LayoutUse {
    const char* name;
    void (*use)(XButton& button);
};

class TextButtonLock : public TextButton, public testing::WithParamInterface<LayoutUse> {};

// Of two moments whichever comes first: the other thread may be late. Without the
// mutex no use waits at all.
TEST_P(TextButtonLock, UseWaitsForAThreadThatSetsALayout) {
    Make(0x1E);
    clText large;
    clTextString text;
    text.text.Assign(L"text");
    DWORD taken = 0;
    while (taken < 100) {
        for (int i = 0; i < 100000; ++i)
            large.AddText(text);
        const DWORD begin = GetTickCount();
        button.SetLayout(ButtonLayout::Pressed, large);
        taken = GetTickCount() - begin;
    }
    bool hasWaited = false;
    for (int round = 0; round < 10 && !hasWaited; ++round) {
        std::atomic<bool> isCalled{false};
        std::thread other([&] {
            isCalled = true;
            button.SetLayout(ButtonLayout::Pressed, large);
        });
        while (!isCalled)
            Sleep(0);
        Sleep(10);
        const DWORD start = GetTickCount();
        GetParam().use(button);
        hasWaited = GetTickCount() - start > taken / 3;
        other.join();
        if (button.Window() == nullptr) Make(0x1E);
    }
    EXPECT_TRUE(hasWaited);
}

INSTANTIATE_TEST_SUITE_P(
    Each, TextButtonLock,
    testing::Values(
        LayoutUse{"Painting", [](XButton& button) { button.Paint(nullptr, normal, true); }},
        LayoutUse{"AnotherLayout",
                  [](XButton& button) { button.SetLayout(ButtonLayout::Hot, clText()); }},
        LayoutUse{"Teardown", [](XButton& button) { button.Teardown(); }}),
    [](const auto& tested) { return tested.param.name; });

TEST_F(TextButton, LatchedButtonIsTurnedRoundToo) {
    Make(0x1E);
    button.SetLatched(true);
    EXPECT_EQ(Look(button, normal).At({5, 5}), Colour{strip::pressed});
}

}  // namespace
