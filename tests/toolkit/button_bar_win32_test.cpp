#include "toolkit/button_bar.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "tests/toolkit/button_form.h"
#include "tests/ui/pointer.h"
#include "tests/ui/pump.h"

namespace {

// Before any form of these tests took one.
const std::uint64_t firstTimerId = NewBarTimerId();

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

using Timer = ButtonForm::Timer;

constexpr std::uint32_t normal = button_state::normal;
constexpr std::uint32_t pressed = button_state::pressed;
constexpr std::uint32_t hot = button_state::hot;

void Press(PointerButton button = PointerButton::Left) {
    PressButton(button);
    PumpMessages();
}

void Release(PointerButton button = PointerButton::Left) {
    ReleaseButton(button);
    PumpMessages();
}

TEST(ButtonBar, PointerOverAButtonMakesItHotAndLeavingMakesItNormal) {
    ButtonForm form({{}, {}}, Timer::None);
    EXPECT_EQ(form.At(0).State(), normal);
    form.PointAt(0);
    EXPECT_EQ(form.At(0).State(), hot);
    EXPECT_EQ(form.At(1).State(), normal);
    EXPECT_EQ(Colour{Shown(form.At(0))}, Colour{strip::hot});
    form.PointAt(1);
    EXPECT_EQ(form.At(0).State(), normal);
    EXPECT_EQ(form.At(1).State(), hot);
    form.PointAway();
    EXPECT_EQ(form.At(1).State(), normal);
    EXPECT_EQ(Colour{Shown(form.At(1))}, Colour{strip::normal});
    EXPECT_THAT(form.At(0).calls, IsEmpty());
}

TEST(ButtonBar, TimerSeesThePointerLeaveTheForm) {
    ButtonForm form({{}}, Timer::Running);
    form.PointAt(0);
    ASSERT_EQ(form.At(0).State(), hot);
    // No move reaches the form from there.
    MovePointer({1200, 900});
    EXPECT_TRUE(PumpUntil([&] { return form.At(0).State() == normal; }));
}

TEST(ButtonBar, PressAndReleaseClick) {
    ButtonForm form({{}}, Timer::None);
    form.PointAt(0);
    Press();
    EXPECT_EQ(form.At(0).State(), pressed);
    EXPECT_TRUE(form.At(0).IsLeftHeld());
    EXPECT_EQ(Colour{Shown(form.At(0))}, Colour{strip::pressed});
    EXPECT_EQ(GetCapture(), form.Window());
    EXPECT_THAT(form.At(0).calls, ElementsAre("pressed 0"));
    Release();
    EXPECT_THAT(form.At(0).calls, ElementsAre("pressed 0", "click 0"));
    EXPECT_FALSE(form.At(0).IsLeftHeld());
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_EQ(form.At(0).State(), hot);
    EXPECT_EQ(Colour{Shown(form.At(0))}, Colour{strip::hot});
}

TEST(ButtonBar, ReleaseAwayFromTheButtonCancels) {
    ButtonForm form({{}, {}}, Timer::None);
    form.PointAt(0);
    Press();
    form.PointAway();
    EXPECT_EQ(form.At(0).State(), normal);
    EXPECT_EQ(Colour{Shown(form.At(0))}, Colour{strip::normal});
    EXPECT_TRUE(form.At(0).IsLeftHeld());
    Release();
    EXPECT_THAT(form.At(0).calls, ElementsAre("pressed 0", "cancelled 0"));
    EXPECT_FALSE(form.At(0).IsLeftHeld());
}

TEST(ButtonBar, ReleaseOutsideTheFormReachesIt) {
    ButtonForm form({{}}, Timer::Running);
    form.PointAt(0);
    Press();
    MovePointer({1200, 900});
    ASSERT_TRUE(PumpUntil([&] { return form.At(0).State() == normal; }));
    Release();
    EXPECT_THAT(form.At(0).calls, ElementsAre("pressed 0", "cancelled 0"));
}

TEST(ButtonBar, ComingBackBeforeTheReleaseClicks) {
    ButtonForm form({{}}, Timer::None);
    form.PointAt(0);
    Press();
    form.PointAway();
    form.PointAt(0);
    EXPECT_EQ(form.At(0).State(), pressed);
    Release();
    EXPECT_THAT(form.At(0).calls, ElementsAre("pressed 0", "click 0"));
}

// Only the button that was pressed is told of the release.
TEST(ButtonBar, ReleaseOverAnotherButtonClicksNeither) {
    ButtonForm form({{}, {}}, Timer::None);
    form.PointAt(0);
    Press();
    form.PointAt(1);
    EXPECT_EQ(form.At(1).State(), hot);
    Release();
    EXPECT_THAT(form.At(0).calls, ElementsAre("pressed 0", "cancelled 0"));
    EXPECT_THAT(form.At(1).calls, IsEmpty());
}

TEST(ButtonBar, RightButtonClicksToo) {
    ButtonForm form({{}}, Timer::None);
    form.PointAt(0);
    Press(PointerButton::Right);
    EXPECT_TRUE(form.At(0).IsRightHeld());
    EXPECT_FALSE(form.At(0).IsLeftHeld());
    EXPECT_EQ(form.At(0).State(), pressed);
    EXPECT_EQ(GetCapture(), form.Window());
    Release(PointerButton::Right);
    EXPECT_THAT(form.At(0).calls, ElementsAre("pressed 1", "click 1"));
    EXPECT_EQ(form.At(0).ClickPosition().x, 0);
    EXPECT_EQ(form.At(0).ClickPosition().y, 0);
    form.PointAt(0);
    Press(PointerButton::Right);
    form.PointAway();
    Release(PointerButton::Right);
    EXPECT_THAT(form.At(0).calls, ElementsAre("pressed 1", "click 1", "pressed 1", "cancelled 1"));
}

// The second press of each comes as a double click message.
TEST(ButtonBar, TwoQuickClicksClickTwice) {
    ButtonForm form({{}}, Timer::None);
    DoubleClick(form.MiddleOf(0));
    EXPECT_THAT(form.At(0).calls, ElementsAre("pressed 0", "click 0", "pressed 0", "click 0"));
    form.At(0).calls.clear();
    DoubleClick(form.MiddleOf(0), PointerButton::Right);
    EXPECT_THAT(form.At(0).calls, ElementsAre("pressed 1", "click 1", "pressed 1", "click 1"));
}

TEST(ButtonBar, DisabledButtonIsPressedAndCancelledAndNeverLooksIt) {
    ButtonForm form({{}}, Timer::None);
    EnableWindow(form.At(0).Window(), FALSE);
    form.PointAt(0);
    EXPECT_EQ(form.At(0).State(), normal);
    Press();
    EXPECT_EQ(form.At(0).State(), normal);
    Release();
    EXPECT_THAT(form.At(0).calls, ElementsAre("pressed 0", "cancelled 0"));
}

TEST(ButtonBar, NothingLightsUpInADisabledForm) {
    ButtonForm form({{}}, Timer::None);
    form.PointAt(0);
    ASSERT_EQ(form.At(0).State(), hot);
    EnableWindow(form.Window(), FALSE);
    form.Route(WM_MOUSEMOVE);
    EXPECT_EQ(form.At(0).State(), normal);
    EnableWindow(form.Window(), TRUE);
}

TEST(ButtonBar, HiddenButtonIsNotHit) {
    ButtonForm form({{}}, Timer::None);
    ShowWindow(form.At(0).Window(), SW_HIDE);
    form.PointAt(0);
    EXPECT_EQ(form.At(0).State(), normal);
    Press();
    Release();
    EXPECT_THAT(form.At(0).calls, IsEmpty());
}

TEST(ButtonBar, NothingIsHitInAHiddenForm) {
    ButtonForm form({{}}, Timer::None);
    ShowWindow(form.Window(), SW_HIDE);
    form.PointAt(0);
    form.Route(WM_MOUSEMOVE);
    EXPECT_EQ(form.At(0).State(), normal);
    form.Route(WM_LBUTTONDOWN);
    EXPECT_EQ(form.lastHandled, 0u);
}

TEST(ButtonBar, PressTakesTheFocusIfTheStripHasAFocusFrame) {
    ButtonForm form({{135}, {0x83}}, Timer::None);
    SetFocus(form.Edit());
    Click(form.MiddleOf(1));
    EXPECT_EQ(GetFocus(), form.Edit());
    Click(form.MiddleOf(0));
    EXPECT_EQ(GetFocus(), form.At(0).Window());
}

TEST(ButtonBar, PartnersLightUpTogether) {
    ButtonForm form({{}, {}, {}}, Timer::None);
    form.At(0).SetPartner(&form.At(1));
    form.PointAt(0);
    EXPECT_EQ(form.At(1).State(), hot);
    EXPECT_EQ(form.At(2).State(), normal);
    form.PointAt(1);
    EXPECT_EQ(form.At(0).State(), hot);
    // A press is the pressed one's alone.
    Press();
    EXPECT_EQ(form.At(0).State(), hot);
    EXPECT_EQ(form.At(1).State(), pressed);
    Release();
    EXPECT_THAT(form.At(0).calls, IsEmpty());
    form.At(2).SetPartner(&form.At(1));
    form.Route(WM_MOUSEMOVE);
    EXPECT_EQ(form.At(0).State(), normal);
    EXPECT_EQ(form.At(2).State(), hot);
    form.At(1).SetPartner(nullptr);
    form.Route(WM_MOUSEMOVE);
    EXPECT_EQ(form.At(2).State(), normal);
}

TEST(ButtonBar, TornDownButtonLeavesItsPartnerAlone) {
    ButtonForm form({{}, {}}, Timer::None);
    form.At(0).SetPartner(&form.At(1));
    form.At(0).Teardown();
    form.PointAt(1);
    EXPECT_EQ(form.At(1).State(), hot);
    form.MakeAgain(0);
    form.PointAt(0);
    EXPECT_EQ(form.At(0).State(), hot);
    EXPECT_EQ(form.At(1).State(), normal);
}

TEST(ButtonBar, MoveForgetsTheClickPosition) {
    ButtonForm form({{}, {}}, Timer::None);
    const POINT middle = form.MiddleOf(0);
    Click(middle);
    EXPECT_EQ(form.At(0).ClickPosition().x, middle.x);
    EXPECT_EQ(form.At(0).ClickPosition().y, middle.y);
    form.PointAt(1);
    EXPECT_EQ(form.At(0).ClickPosition().x, 0);
    EXPECT_EQ(form.At(0).ClickPosition().y, 0);
}

// A strip whose pressed frame and pressed-hot frame differ shows it.
TEST(ButtonBar, ButtonLatchedByAClickLooksLatchedUntilThePointerMoves) {
    ButtonForm form({{0x96}}, Timer::None);
    ProbeButton& button = form.At(0);
    button.meanwhile = [&](const std::string& call) {
        if (call != "click 0") return;
        button.SetLatched(true);
        button.Paint(nullptr, button.State(), true);
    };
    const POINT middle = form.MiddleOf(0);
    Click(middle);
    EXPECT_EQ(button.State(), hot);
    EXPECT_EQ(Colour{Shown(button)}, Colour{strip::pressed});
    button.Paint(nullptr, button.State(), true);
    EXPECT_EQ(Colour{Shown(button)}, Colour{strip::pressed});
    MovePointer({middle.x + 1, middle.y});
    PumpMessages();
    button.Paint(nullptr, button.State(), true);
    EXPECT_EQ(Colour{Shown(button)}, Colour{strip::pressedHot});
    // Also back at the same spot.
    MovePointer(middle);
    PumpMessages();
    button.Paint(nullptr, button.State(), true);
    EXPECT_EQ(Colour{Shown(button)}, Colour{strip::pressedHot});
}

TEST(ButtonBar, EverySecondTickUpdatesTheHover) {
    ButtonForm form({{}}, Timer::None);
    SetCursorPos(form.MiddleOf(0).x, form.MiddleOf(0).y);
    ASSERT_EQ(form.At(0).State(), normal);  // no message has been routed since
    EXPECT_EQ(form.Route(WM_TIMER, form.timerId), 0);
    EXPECT_EQ(form.lastHandled, 1u);
    EXPECT_EQ(form.At(0).State(), normal);
    form.Route(WM_TIMER, form.timerId);
    EXPECT_EQ(form.lastHandled, 1u);
    EXPECT_EQ(form.At(0).State(), hot);
    form.PointAway();
}

TEST(ButtonBar, LeavesOtherTimersAlone) {
    ButtonForm form({{}}, Timer::None);
    form.At(0).Paint(nullptr, pressed, false);
    form.Route(WM_TIMER, form.timerId + 1);
    EXPECT_EQ(form.lastHandled, 0u);
    EXPECT_THAT(form.At(0).repeats, IsEmpty());
    form.bar.SetForm(form.Window(), 0);
    form.Route(WM_TIMER, 0);
    EXPECT_EQ(form.lastHandled, 0u);
    EXPECT_THAT(form.At(0).repeats, IsEmpty());
    form.bar.SetForm(form.Window(), form.timerId);
}

TEST(ButtonBar, RepeatsWhileAButtonShowsAsPressed) {
    ButtonForm form({{}, {}}, Timer::Running);
    form.PointAt(0);
    Press();
    EXPECT_TRUE(PumpUntil([&] { return form.At(0).repeats.size() >= 3; }));
    EXPECT_THAT(form.At(0).repeats, Each(0u));
    form.PointAway();
    form.At(0).repeats.clear();
    PumpFor(200);
    EXPECT_THAT(form.At(0).repeats, IsEmpty());
    Release();
    form.PointAt(0);
    Press(PointerButton::Right);
    EXPECT_TRUE(PumpUntil([&] { return form.At(0).repeats.size() >= 3; }));
    EXPECT_THAT(form.At(0).repeats, Each(1u));
    Release(PointerButton::Right);
    EXPECT_THAT(form.At(1).repeats, IsEmpty());
}

TEST(ButtonBar, HandledIsSetForAHitAlone) {
    ButtonForm form({{}}, Timer::None);
    constexpr UINT presses[] = {WM_LBUTTONDOWN, WM_LBUTTONDBLCLK, WM_RBUTTONDOWN, WM_RBUTTONDBLCLK};
    for (const UINT message : presses) {
        form.PointAway();
        form.Route(message);
        EXPECT_EQ(form.lastHandled, 0u) << message;
        form.PointAt(0);
        form.Route(message);
        EXPECT_EQ(form.lastHandled, 1u) << message;
    }
    constexpr UINT others[] = {WM_MOUSEMOVE, WM_LBUTTONUP, WM_RBUTTONUP, WM_MBUTTONDOWN, WM_PAINT};
    for (const UINT message : others) {
        EXPECT_EQ(form.Route(message), 0) << message;
        EXPECT_EQ(form.lastHandled, 0u) << message;
    }
}

TEST(ButtonBar, ReleaseIsNeverHandledWhateverAClickLeavesBehind) {
    ButtonForm form({{}}, Timer::None);
    form.At(0).meanwhile = [&](const std::string&) { form.lastHandled = 1; };
    for (const auto& [press, release] :
         {std::pair(WM_LBUTTONDOWN, WM_LBUTTONUP), std::pair(WM_RBUTTONDOWN, WM_RBUTTONUP)}) {
        form.At(0).calls.clear();
        form.PointAt(0);
        form.Route(static_cast<UINT>(press));
        form.Route(static_cast<UINT>(release));
        EXPECT_EQ(form.At(0).calls.size(), 2u);
        EXPECT_EQ(form.lastHandled, 0u);
    }
}

TEST(ButtonBar, ReleaseGivesUpTheCaptureOfTheForm) {
    ButtonForm form({{}}, Timer::None);
    SetCapture(form.Window());
    form.Route(WM_LBUTTONUP);
    EXPECT_EQ(GetCapture(), nullptr);
    SetCapture(form.Window());
    form.Route(WM_RBUTTONUP);
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST(ButtonBar, PaintsTheButtonThatIsAskedFor) {
    ButtonForm form({{}, {}}, Timer::None);
    const Canvas canvas(strip::frameWidth, strip::frameHeight);
    DRAWITEMSTRUCT item = {};
    item.CtlType = ODT_STATIC;
    item.hDC = canvas.Dc();
    item.hwndItem = form.Edit();
    EXPECT_EQ(form.Route(WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&item)), 0);
    EXPECT_EQ(form.lastHandled, 0u);
    item.hwndItem = nullptr;
    EXPECT_EQ(form.Route(WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&item)), 0);
    EXPECT_EQ(canvas.Count(RGB(255, 255, 255)), strip::frameWidth * strip::frameHeight);
    form.PointAt(1);
    item.hwndItem = form.At(1).Window();
    EXPECT_EQ(form.Route(WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&item)), 1);
    EXPECT_EQ(form.lastHandled, 1u);
    EXPECT_EQ(Colour{canvas.At(strip::onFrame.x, strip::onFrame.y)}, Colour{strip::hot});
    EXPECT_EQ(form.At(1).State(), hot);
}

// A nested message is dropped, here and in any other form, until a button was
// painted inside.
TEST(ButtonBar, LeavesNestedMessagesAloneUntilOneHasPainted) {
    ButtonForm other({{}}, Timer::None);
    ButtonForm form({{}}, Timer::None);
    ProbeButton& button = form.At(0);
    const Canvas canvas(strip::frameWidth, strip::frameHeight);
    std::vector<std::string> seen;
    std::uint32_t otherHandled = 7;
    button.meanwhile = [&](const std::string& call) {
        if (call != "pressed 0") return;
        SendMessageW(form.Window(), WM_LBUTTONUP, 0, 0);
        other.Route(WM_TIMER, other.timerId);
        otherHandled = other.lastHandled;
        seen = button.calls;
        DRAWITEMSTRUCT item = {};
        item.hDC = canvas.Dc();
        item.hwndItem = button.Window();
        SendMessageW(form.Window(), WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&item));
        SendMessageW(form.Window(), WM_LBUTTONUP, 0, 0);
    };
    form.PointAt(0);
    Press();
    EXPECT_THAT(seen, ElementsAre("pressed 0"));
    EXPECT_EQ(otherHandled, 0u);
    EXPECT_EQ(Colour{canvas.At(strip::onFrame.x, strip::onFrame.y)}, Colour{strip::pressed});
    EXPECT_THAT(button.calls, ElementsAre("pressed 0", "click 0"));
    Release();
    EXPECT_THAT(button.calls, ElementsAre("pressed 0", "click 0"));
}

// The list must not grow under a walk over it.
TEST(ButtonBar, AnotherThreadAddsNoButtonWhileOneIsPressed) {
    XButton late;
    ButtonForm form({{}, {}}, Timer::None);
    std::atomic<bool> isAdded{false};
    std::thread other;
    form.At(0).meanwhile = [&](const std::string& call) {
        if (call != "pressed 0") return;
        other = std::thread([&] {
            form.bar.AddButton(&late);
            isAdded = true;
        });
        for (int i = 0; i < 20 && !isAdded; ++i)
            Sleep(25);
        EXPECT_FALSE(isAdded);
    };
    form.PointAt(0);
    form.Route(WM_LBUTTONDOWN);
    ASSERT_TRUE(other.joinable());
    other.join();
    EXPECT_TRUE(isAdded);
    form.Route(WM_LBUTTONUP);
}

TEST(ButtonBar, ClickMayTearAllButtonsDown) {
    ButtonForm form({{}, {}}, Timer::None);
    form.At(0).meanwhile = [&](const std::string& call) {
        if (call == "click 0") form.bar.DestroyButtons();
    };
    Click(form.MiddleOf(0));
    EXPECT_THAT(form.At(0).calls, ElementsAre("pressed 0", "click 0"));
    EXPECT_EQ(form.At(0).Window(), nullptr);
    EXPECT_EQ(form.At(1).Window(), nullptr);
}

TEST(ButtonBar, DestroyingTheButtonsEndsTimerAndWindows) {
    ButtonForm form({{}, {}}, Timer::Running);
    form.At(0).SetPartner(&form.At(1));
    HWND const first = form.At(0).Window();
    HWND const second = form.At(1).Window();
    form.bar.DestroyButtons();
    EXPECT_FALSE(IsWindow(first));
    EXPECT_FALSE(IsWindow(second));
    EXPECT_EQ(form.At(0).Window(), nullptr);
    EXPECT_FALSE(KillTimer(form.Window(), form.timerId));
    form.Route(WM_MOUSEMOVE);
    form.Route(WM_TIMER, form.timerId);
    EXPECT_EQ(form.lastHandled, 0u);
    form.bar.DestroyButtons();
    // Made anew, a button is not the bar's until it is added again.
    form.MakeAgain(0);
    form.PointAt(0);
    EXPECT_EQ(form.At(0).State(), normal);
    form.bar.AddButton(&form.At(0));
    form.Route(WM_MOUSEMOVE);
    EXPECT_EQ(form.At(0).State(), hot);
}

TEST(ButtonBar, TimerIdsCountUpFromTheSettledOne) {
    EXPECT_EQ(firstTimerId, 7788u);
    const std::uint64_t next = NewBarTimerId();
    EXPECT_GT(next, firstTimerId);
    EXPECT_EQ(NewBarTimerId(), next + 1);
}

}  // namespace
