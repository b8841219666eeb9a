#include "toolkit/button.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "tests/toolkit/button_form.h"
#include "tests/ui/keys.h"
#include "tests/ui/pointer.h"
#include "tests/ui/pump.h"
#include "tests/ui/resource_counts.h"

namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

using Timer = ButtonForm::Timer;

constexpr std::uint32_t normal = button_state::normal;
constexpr std::uint32_t pressed = button_state::pressed;

void Hold(WORD key) {
    HoldKey(key);
    PumpMessages();
}

void LetGo(WORD key) {
    ReleaseKey(key);
    PumpMessages();
}

// First of all tests that press Tab: the cue is never switched off again.
TEST(ButtonCue, FocusFrameAppearsOnceTabWasUsedAndThenInEveryForm) {
    ASSERT_FALSE(XButton::IsKeyboardCueOn()) << "an earlier test of this process pressed Tab";
    ButtonForm form({{}, {}}, Timer::None);
    ButtonForm other({{0x87}, {0x83}, {0x07}}, Timer::None);
    SetActiveWindow(form.Window());
    SetFocus(form.At(0).Window());
    PumpMessages();
    EXPECT_EQ(Colour{Shown(form.At(0), strip::onFocus)}, Colour{strip::normal});
    // Other keys are no cue.
    PressKey(VK_RIGHT);
    PressKey(VK_SPACE);
    PressKey('A');
    SetFocus(form.At(0).Window());
    EXPECT_FALSE(XButton::IsKeyboardCueOn());
    // Nor is Tab before it comes up over a button.
    Hold(VK_TAB);
    EXPECT_FALSE(XButton::IsKeyboardCueOn());
    EXPECT_EQ(GetFocus(), form.At(1).Window());
    LetGo(VK_TAB);
    EXPECT_TRUE(XButton::IsKeyboardCueOn());
    EXPECT_EQ(Colour{Shown(form.At(1), strip::onFocus)}, Colour{strip::focus});
    EXPECT_EQ(Colour{Shown(form.At(1))}, Colour{strip::normal});
    EXPECT_EQ(Colour{Shown(form.At(0), strip::onFocus)}, Colour{strip::normal});

    SetActiveWindow(other.Window());
    SetFocus(other.At(0).Window());
    EXPECT_EQ(Colour{Shown(other.At(0), strip::onFocus)}, Colour{strip::focus});
    SetFocus(other.Edit());
    EXPECT_EQ(Colour{Shown(other.At(0), strip::onFocus)}, Colour{strip::normal});
    // A style without the frame, and one without a mask to lay it over.
    SetFocus(other.At(1).Window());
    EXPECT_EQ(Colour{Shown(other.At(1), strip::onFocus)}, Colour{strip::normal});
    SetFocus(other.At(2).Window());
    EXPECT_EQ(Colour{Shown(other.At(2), strip::onFocus)}, Colour{strip::normal});
}

TEST(ButtonCue, TextButtonLaysItsFocusLayoutOverTheOther) {
    ButtonForm form({{}}, Timer::None);
    SetFocus(form.At(0).Window());
    PressKey(VK_TAB);
    SetFocus(form.At(0).Window());
    LetGo(VK_TAB);
    ASSERT_TRUE(XButton::IsKeyboardCueOn());
    XButton button;
    button.SetTextMode(true);
    XButtonParams params;
    params.style = button_style::focusFrame;
    button.Create(form.Window(), params, nullptr);
    button.SetTextSize(30, 20, nullptr);
    clText layout;
    clTextFill fill;
    fill.area = {0, 0, anchor::end, anchor::end};
    fill.colour = strip::normal;
    layout.AddFill(fill);
    button.SetLayout(ButtonLayout::Normal, layout);
    layout.Clear();
    fill.area = {anchor::end | anchor::negative | 1, 0, anchor::end, anchor::end};
    fill.colour = strip::focus;
    layout.AddFill(fill);
    button.SetLayout(ButtonLayout::FocusOverlay, layout);
    button.Paint(nullptr, normal, true);
    EXPECT_EQ(Colour{Shown(button, {29, 10})}, Colour{strip::normal});
    SetFocus(button.Window());
    EXPECT_EQ(Colour{Shown(button, {29, 10})}, Colour{strip::focus});
    EXPECT_EQ(Colour{Shown(button, {28, 10})}, Colour{strip::normal});
}

TEST(ButtonKeys, SpaceAndReturnClick) {
    for (const WORD key : {WORD{VK_SPACE}, WORD{VK_RETURN}}) {
        ButtonForm form({{}}, Timer::Running);
        SetFocus(form.At(0).Window());
        Hold(key);
        EXPECT_TRUE(form.At(0).IsKeyHeld()) << key;
        EXPECT_THAT(form.At(0).calls, ElementsAre("pressed 0")) << key;
        // The look comes with the timer, with the pointer anywhere.
        EXPECT_TRUE(PumpUntil([&] { return form.At(0).State() == pressed; })) << key;
        EXPECT_TRUE(PumpUntil([&] { return !form.At(0).repeats.empty(); })) << key;
        EXPECT_THAT(form.At(0).repeats, Each(0u)) << key;
        LetGo(key);
        EXPECT_FALSE(form.At(0).IsKeyHeld()) << key;
        EXPECT_THAT(form.At(0).calls, ElementsAre("pressed 0", "click 0")) << key;
        EXPECT_TRUE(PumpUntil([&] { return form.At(0).State() == normal; })) << key;
        // Return did not press the form's default button.
        EXPECT_THAT(form.commands, IsEmpty()) << key;
    }
}

TEST(ButtonKeys, AnotherKeyGivesThePressUp) {
    ButtonForm form({{}}, Timer::None);
    SetFocus(form.At(0).Window());
    Hold(VK_SPACE);
    PressKey('A');
    EXPECT_FALSE(form.At(0).IsKeyHeld());
    LetGo(VK_SPACE);
    EXPECT_THAT(form.At(0).calls, ElementsAre("pressed 0"));
}

TEST(ButtonKeys, DisabledButtonIgnoresThem) {
    ButtonForm form({{}}, Timer::None);
    EnableWindow(form.At(0).Window(), FALSE);
    SendMessageW(form.At(0).Window(), WM_KEYDOWN, VK_SPACE, 0);
    EXPECT_FALSE(form.At(0).IsKeyHeld());
    SendMessageW(form.At(0).Window(), WM_KEYUP, VK_SPACE, 0);
    EXPECT_THAT(form.At(0).calls, IsEmpty());
}

TEST(ButtonKeys, ReturnAloneIsWantedFromTheDialog) {
    ButtonForm form({{}}, Timer::None);
    HWND const button = form.At(0).Window();
    struct Row {
        UINT message;
        WPARAM key;
        bool isWanted;
    };
    const Row rows[] = {
        {WM_KEYDOWN, VK_RETURN, true}, {WM_KEYUP, VK_RETURN, true}, {WM_CHAR, VK_RETURN, false},
        {WM_KEYDOWN, VK_SPACE, false}, {WM_KEYDOWN, VK_TAB, false}, {WM_KEYDOWN, VK_ESCAPE, false},
        {WM_KEYUP, VK_ESCAPE, false},
    };
    for (const Row& row : rows) {
        MSG message = {};
        message.message = row.message;
        message.wParam = row.key;
        const LRESULT code =
            SendMessageW(button, WM_GETDLGCODE, row.key, reinterpret_cast<LPARAM>(&message));
        EXPECT_EQ((code & DLGC_WANTALLKEYS) != 0, row.isWanted) << row.message << " " << row.key;
    }
    EXPECT_EQ(SendMessageW(button, WM_GETDLGCODE, VK_RETURN, 0) & DLGC_WANTALLKEYS, 0);
}

// The key went down elsewhere.
TEST(ButtonKeys, KeyUpAloneIsNoClick) {
    ButtonForm form({{}}, Timer::None);
    SendMessageW(form.At(0).Window(), WM_KEYUP, VK_RETURN, 0);
    EXPECT_THAT(form.At(0).calls, IsEmpty());
}

TEST(Button, CreateMakesAnOwnerDrawnChildWithCaptionAndTabStop) {
    ButtonForm form({{135}, {0x83}}, Timer::None);
    HWND const child = form.At(0).Window();
    EXPECT_EQ(GetParent(child), form.Window());
    EXPECT_EQ(GetWindowLongW(child, GWL_STYLE), LONG{0x5001000D});
    EXPECT_EQ(GetWindowLongW(form.At(1).Window(), GWL_STYLE), LONG{0x5000000D});
    wchar_t text[32] = {};
    GetWindowTextW(child, text, 32);
    EXPECT_STREQ(text, L"Caption");
    wchar_t name[32] = {};
    GetClassNameW(child, name, 32);
    EXPECT_STREQ(name, L"Static");
    RECT rect = {};
    GetWindowRect(child, &rect);
    MapWindowPoints(nullptr, form.Window(), reinterpret_cast<POINT*>(&rect), 2);
    EXPECT_EQ(rect.left, ButtonForm::firstButton.x);
    EXPECT_EQ(rect.top, ButtonForm::firstButton.y);
    EXPECT_EQ(rect.right - rect.left, strip::frameWidth);
    EXPECT_EQ(rect.bottom - rect.top, strip::frameHeight);
    EXPECT_EQ(form.At(0).Control(), child);
    EXPECT_EQ(form.At(0).State(), normal);
    EXPECT_NE(form.At(0).Owner(), nullptr);
}

TEST(Button, TeardownGivesEverythingBackAndTheButtonCanBeMadeAnew) {
    ButtonForm form({{}}, Timer::None);
    XButton& button = form.At(0);
    HWND const child = button.Window();
    button.Paint(nullptr, pressed, false);
    button.Teardown();
    EXPECT_FALSE(IsWindow(child));
    EXPECT_EQ(button.Window(), nullptr);
    EXPECT_EQ(button.Control(), nullptr);
    EXPECT_EQ(button.Image().Width(), 0);
    EXPECT_EQ(button.State(), normal);
    button.Teardown();
    LoadStrip(button.Image(), 135);
    XButtonParams params;
    params.x = 5;
    button.Create(form.Window(), params, nullptr);
    EXPECT_TRUE(IsWindow(button.Window()));
    EXPECT_EQ(button.FrameWidth(), strip::frameWidth);
}

TEST(Button, ThousandButtonsLeaveNothingBehind) {
    ButtonForm form({}, Timer::None);
    const auto makeAndDestroy = [&form](int count) {
        for (int i = 0; i < count; ++i) {
            ProbeButton button;
            LoadStrip(button.Image(), 135);
            XButtonParams params;
            params.tooltip = L"Tip";
            button.Create(form.Window(), params, nullptr);
            button.Paint(nullptr, button_state::hot, false);
        }
        PumpMessages();
    };
    makeAndDestroy(20);
    const ResourceCounts before = CountResources();
    makeAndDestroy(1000);
    EXPECT_EQ(CountResources(), before);
}

}  // namespace
