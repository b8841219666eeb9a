#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "tests/toolkit/button_form.h"
#include "tests/ui/keys.h"
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

HWND OpenMenu() {
    HWND const menu = FindWindowW(L"#32768", nullptr);
    return menu != nullptr && IsWindowVisible(menu) ? menu : nullptr;
}

// Runs `whenOpen` from within the menu's own loop, once a menu shows; ends the
// menu if that didn't.
class MenuDriver {
public:
    explicit MenuDriver(std::function<void(HWND)> whenOpen) : action(std::move(whenOpen)) {
        current = this;
        timer = SetTimer(nullptr, 0, 20, [](HWND, UINT, UINT_PTR, DWORD) { current->Look(); });
    }
    MenuDriver(const MenuDriver&) = delete;
    MenuDriver& operator=(const MenuDriver&) = delete;
    ~MenuDriver() {
        KillTimer(nullptr, timer);
        current = nullptr;
    }
    bool SawMenu() const { return seen > 0; }

private:
    void Look() {
        HWND const menu = OpenMenu();
        if (menu == nullptr) return;
        if (++seen == 1) action(menu);
        if (seen > 100) EndMenu();
    }

    static inline MenuDriver* current = nullptr;
    std::function<void(HWND)> action;
    UINT_PTR timer = 0;
    int seen = 0;
};

void ChooseSecond(HWND) {
    HoldKey(VK_DOWN);
    ReleaseKey(VK_DOWN);
    HoldKey(VK_DOWN);
    ReleaseKey(VK_DOWN);
    HoldKey(VK_RETURN);
    ReleaseKey(VK_RETURN);
}

void Escape(HWND) {
    HoldKey(VK_ESCAPE);
    ReleaseKey(VK_ESCAPE);
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
    MenuDriver driver([&](HWND menu) {
        GetWindowRect(menu, &place);
        isKeyHeld = form.At(0).IsKeyHeld();
        look = Shown(form.At(0));
        ChooseSecond(menu);
    });
    Press(form);
    EXPECT_TRUE(driver.SawMenu());
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
    MenuDriver driver(Escape);
    Press(form, PointerButton::Right);
    EXPECT_TRUE(driver.SawMenu());
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
        MenuDriver driver([&](HWND menu) {
            // The form's timer runs inside the menu's loop.
            (void)PumpUntil([&] { return form.At(0).State() == button_state::pressed; }, 2000);
            state = form.At(0).State();
            ChooseSecond(menu);
        });
        HoldKey(key);
        PumpMessages();
        ReleaseKey(key);
        PumpMessages();
        EXPECT_TRUE(driver.SawMenu()) << key;
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
    MenuDriver driver([](HWND) {
        HoldKey(VK_DOWN);
        ReleaseKey(VK_DOWN);
        HoldKey(VK_RETURN);
        ReleaseKey(VK_RETURN);
    });
    Press(form);
    EXPECT_THAT(form.commands, ElementsAre(readyCommand));
    EXPECT_TRUE(IsMenu(menu));
    DestroyMenu(menu);
}

TEST(ButtonMenu, DisabledButtonSwallowsThePress) {
    ButtonForm form({WithMenu(menuId)}, Timer::None);
    EnableWindow(form.At(0).Window(), FALSE);
    MenuDriver driver(Escape);
    Press(form);
    EXPECT_FALSE(driver.SawMenu());
    EXPECT_THAT(form.At(0).calls, IsEmpty());
    form.PointAt(0);
    form.Route(WM_LBUTTONDOWN);
    EXPECT_EQ(form.lastHandled, 1u);
    EXPECT_FALSE(form.At(0).IsLeftHeld());
}

TEST(ButtonMenu, MenuThatCannotBeLoadedLetsThePressProceed) {
    ButtonForm form({WithMenu(999)}, Timer::None);
    MenuDriver driver(Escape);
    Press(form);
    EXPECT_THAT(form.At(0).calls, ElementsAre("pressed 0", "click 0"));
    // Another module has no such menu either.
    ButtonForm other({WithMenu(menuId)}, Timer::None);
    other.At(0).SetMenuModule(GetModuleHandleW(L"kernel32.dll"));
    Press(other);
    EXPECT_THAT(other.At(0).calls, ElementsAre("pressed 0", "click 0"));
    EXPECT_FALSE(driver.SawMenu());
}

}  // namespace
