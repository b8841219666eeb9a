#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "tests/toolkit/button_form.h"
#include "tests/ui/keys.h"
#include "tests/ui/menu_driver.h"
#include "tests/ui/pointer.h"
#include "tests/ui/pump.h"
#include "toolkit/button.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Timer = ButtonForm::Timer;

constexpr std::uint16_t menuId = 900;
constexpr int secondCommand = 902;
constexpr int readyCommand = 911;

// What chooses the second item of an open menu, behind `first`.
std::vector<MenuDriver::Step> ChooseSecondAfter(MenuDriver::Step first) {
    return {std::move(first), Key(VK_DOWN), Key(VK_DOWN), Key(VK_RETURN)};
}

void Press(ButtonForm& form, PointerButton button = PointerButton::Left) {
    form.PointAt(0);
    PressButton(button);
    PumpMessages();
    ReleaseButton(button);
    PumpMessages();
}

ButtonWish WithMenu(std::uint16_t id, HMENU menu = nullptr) {
    return {135, nullptr, nullptr, id, menu};
}

TEST(ButtonMenu, PressOpensItBelowTheButtonInsteadOfPressing) {
    ButtonForm form({WithMenu(menuId)}, Timer::None);
    RECT place = {};
    bool isKeyHeld = false;
    COLORREF look = 0;
    MenuDriver driver(ChooseSecondAfter([&](HWND menu) {
        GetWindowRect(menu, &place);
        isKeyHeld = form.At(0).IsKeyHeld();
        look = Shown(form.At(0));
    }));
    Press(form);
    EXPECT_TRUE(driver.IsDone());
    const POINT corner = ScreenPoint(form.At(0).Window(), 0, strip::frameHeight);
    EXPECT_EQ(place.left, corner.x);
    EXPECT_EQ(place.top, corner.y);
    EXPECT_TRUE(isKeyHeld);
    EXPECT_EQ(Colour{look}, Colour{strip::pressed});
    EXPECT_THAT(form.commands, ElementsAre(secondCommand));
    EXPECT_THAT(form.At(0).calls, IsEmpty());
    EXPECT_FALSE(form.At(0).IsKeyHeld());
    EXPECT_FALSE(form.At(0).IsLeftHeld());
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST(ButtonMenu, RightPressOpensItToo) {
    ButtonForm form({WithMenu(menuId)}, Timer::None);
    MenuDriver driver({Key(VK_ESCAPE)});
    Press(form, PointerButton::Right);
    EXPECT_TRUE(driver.IsDone());
    EXPECT_THAT(form.commands, IsEmpty());
    EXPECT_THAT(form.At(0).calls, IsEmpty());
    EXPECT_FALSE(form.At(0).IsRightHeld());
}

// The key's own character does not reach the menu, which it would close.
TEST(ButtonMenu, KeyOpensItAndTheButtonLooksPressedMeanwhile) {
    for (const WORD key : {WORD{VK_SPACE}, WORD{VK_RETURN}}) {
        ButtonForm form({WithMenu(menuId)}, Timer::Running);
        SetFocus(form.At(0).Window());
        std::uint32_t state = 77;
        MenuDriver driver(ChooseSecondAfter([&](HWND) {
            // The form's timer runs inside the menu's loop.
            (void)PumpUntil([&] { return form.At(0).State() == button_state::pressed; }, 2000);
            state = form.At(0).State();
        }));
        HoldKey(key);
        PumpMessages();
        ReleaseKey(key);
        PumpMessages();
        EXPECT_TRUE(driver.IsDone()) << key;
        EXPECT_EQ(state, button_state::pressed) << key;
        EXPECT_THAT(form.commands, ElementsAre(secondCommand)) << key;
        EXPECT_THAT(form.At(0).calls, IsEmpty()) << key;
        EXPECT_FALSE(form.At(0).IsKeyHeld()) << key;
    }
}

TEST(ButtonMenu, ReadyMadeOneGoesBeforeTheResourceAndIsNotDestroyed) {
    HMENU const menu = CreateMenu();
    HMENU const popup = CreatePopupMenu();
    AppendMenuW(popup, MF_STRING, readyCommand, L"Ready");
    AppendMenuW(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(popup), L"Button");
    ButtonForm form({WithMenu(menuId, menu)}, Timer::None);
    MenuDriver driver({Key(VK_DOWN), Key(VK_RETURN)});
    Press(form);
    EXPECT_THAT(form.commands, ElementsAre(readyCommand));
    EXPECT_TRUE(IsMenu(menu));
    DestroyMenu(menu);
}

TEST(ButtonMenu, DisabledButtonSwallowsThePress) {
    ButtonForm form({WithMenu(menuId)}, Timer::None);
    EnableWindow(form.At(0).Window(), FALSE);
    MenuDriver driver({Key(VK_ESCAPE)});
    Press(form);
    EXPECT_FALSE(driver.IsDone());
    EXPECT_THAT(form.At(0).calls, IsEmpty());
    form.PointAt(0);
    form.Route(WM_LBUTTONDOWN);
    EXPECT_EQ(form.lastHandled, 1u);
    EXPECT_FALSE(form.At(0).IsLeftHeld());
}

TEST(ButtonMenu, MenuThatCannotBeLoadedLetsThePressProceed) {
    ButtonForm form({WithMenu(999)}, Timer::None);
    MenuDriver driver({Key(VK_ESCAPE)});
    Press(form);
    EXPECT_THAT(form.At(0).calls, ElementsAre("pressed 0", "click 0"));
    // Another module has no such menu either.
    ButtonForm other({WithMenu(menuId)}, Timer::None);
    other.At(0).SetMenuModule(GetModuleHandleW(L"kernel32.dll"));
    Press(other);
    EXPECT_THAT(other.At(0).calls, ElementsAre("pressed 0", "click 0"));
    EXPECT_FALSE(driver.IsDone());
}

}  // namespace
