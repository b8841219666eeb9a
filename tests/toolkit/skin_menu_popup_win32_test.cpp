#include <gtest/gtest.h>
#include <windows.h>

#include <cstdint>
#include <map>
#include <vector>

#include "tests/toolkit/menu_item.h"
#include "tests/toolkit/menu_looks.h"
#include "tests/ui/host_form.h"
#include "tests/ui/menu_driver.h"
#include "tests/ui/pixels.h"
#include "tests/ui/pump.h"
#include "toolkit/skin_menu.h"

namespace {

constexpr std::int32_t checkAll = 40001;
constexpr std::int32_t uncheckAll = 40002;
constexpr std::int32_t invert = 40003;
constexpr std::int32_t deeper = 40004;

// A form whose row menu is shown as the lists show it.
class ShownMenu : public testing::Test {
protected:
    ShownMenu() {
        EXPECT_TRUE(menu.LoadMenuAndPrepare());
        form.route = [this](HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                            std::uint32_t* handled) {
            if (message == WM_DRAWITEM) Remember(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
            return menu.Route(window, message, wParam, lParam, handled);
        };
        form.Show(DialogTemplate(visibleForm, 200, 150));
    }

    // What was chosen, 0 for nothing, once the driver has taken all its steps.
    int Track(std::vector<MenuDriver::Step> steps) {
        MenuDriver driver(std::move(steps));
        places.clear();
        const int chosen = TrackPopupMenu(GetSubMenu(menu.Menu(), 0), TPM_RETURNCMD, 200, 200, 0,
                                          form.Window(), nullptr);
        EXPECT_TRUE(driver.IsDone());
        PumpMessages();
        return chosen;
    }

    // Looks at the items of the menu that shows.
    MenuDriver::Step Look(std::int32_t id, const MenuLook& look) {
        return [this, id, look](HWND window) {
            ASSERT_TRUE(places.contains(id)) << id;
            const RECT place = places[id];
            const Canvas expected(place.right, place.bottom);
            DrawExpectedItem(expected.Dc(), place, look);
            ExpectShown(window, place, expected);
        };
    }
    MenuDriver::Step LookAtSeparator() {
        return [this](HWND window) {
            ASSERT_TRUE(places.contains(0));
            const RECT place = places[0];
            const Canvas expected(place.right, place.bottom);
            DrawExpectedSeparator(expected.Dc(), place);
            ExpectShown(window, place, expected);
        };
    }

    std::map<std::int32_t, RECT> places;  // of the items as last drawn
    XSkinMenu menu;
    HostForm form;

private:
    void Remember(const DRAWITEMSTRUCT& item) {
        if (item.CtlType == ODT_MENU) places[static_cast<std::int32_t>(item.itemID)] = item.rcItem;
    }
    static void ExpectShown(HWND window, const RECT& place, const Canvas& expected) {
        const Canvas shown(place.right, place.bottom);
        const HDC dc = GetDC(window);
        BitBlt(shown.Dc(), 0, 0, place.right, place.bottom, dc, 0, 0, SRCCOPY);
        ReleaseDC(window, dc);
        ExpectSamePixels(shown, place, expected, place);
    }
};

}  // namespace

TEST_F(ShownMenu, IsWorkedWithTheKeys) {
    EXPECT_EQ(Track({Key(VK_DOWN), Key(VK_DOWN), Key(VK_RETURN)}), uncheckAll);
    EXPECT_EQ(Track({Key(VK_DOWN), Key(VK_RETURN)}), checkAll);
    EXPECT_EQ(Track({Key(VK_ESCAPE)}), 0);
}

TEST_F(ShownMenu, ShowsItsItemsInTheirStates) {
    CheckMenuItem(menu.Menu(), checkAll, MF_CHECKED);
    Track({Look(checkAll, {.checked = true, .text = L"Check All"}),
           Look(uncheckAll, {.text = L"Uncheck All"}),
           Look(invert, {.disabled = true, .text = L"Invert Selection"}), LookAtSeparator(),
           Key(VK_DOWN), Look(checkAll, {.selected = true, .checked = true, .text = L"Check All"}),
           Key(VK_DOWN), Look(checkAll, {.checked = true, .text = L"Check All"}),
           Look(uncheckAll, {.selected = true, .text = L"Uncheck All"}), Key(VK_ESCAPE)});
}

TEST_F(ShownMenu, ShowsTheItemsOfASubmenu) {
    // Up goes to the last item, which opens it.
    EXPECT_EQ(Track({Key(VK_UP), Key(VK_RIGHT),
                     [this](HWND) {
                         ASSERT_TRUE(places.contains(deeper));
                         const RECT place = places[deeper];
                         EXPECT_EQ(place.bottom - place.top, 18);
                     },
                     Key(VK_RETURN)}),
              deeper);
}

TEST_F(ShownMenu, AnItemThatOpensASubmenuNeedsNoId) {
    const HMENU top = CreateMenu();
    const HMENU rows = CreatePopupMenu();
    AppendMenuW(top, MF_POPUP, reinterpret_cast<UINT_PTR>(rows), L"Rows");
    AppendWithoutId(rows, L"Much more of the same", CreatePopupMenu());
    menu.Attach(top, true);
    menu.Prepare();
    Track({[this](HWND) {
               ASSERT_EQ(places.size(), 1u);
               const auto& [id, place] = *places.begin();
               EXPECT_NE(id, 0);
               EXPECT_EQ(place.bottom - place.top, 18);
               EXPECT_GT(place.right - place.left, 100);
           },
           Key(VK_ESCAPE)});
}

TEST_F(ShownMenu, IsAsWideEachTime) {
    LONG widths[3] = {};
    for (LONG& width : widths) {
        Track({[&](HWND) { width = places[invert].right - places[invert].left; }, Key(VK_ESCAPE)});
    }
    EXPECT_GT(widths[0], 60);
    EXPECT_EQ(widths[1], widths[0]);
    EXPECT_EQ(widths[2], widths[0]);
}
