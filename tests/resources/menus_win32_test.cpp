#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <vector>

using testing::ElementsAre;

namespace {

// "40001 Check All", "-" for a separator, "> Tags" for a sub-menu.
std::vector<std::string> ItemsOf(HMENU menu) {
    std::vector<std::string> items;
    const int count = GetMenuItemCount(menu);
    for (int i = 0; i < count; ++i) {
        const auto position = static_cast<UINT>(i);
        char text[100] = "";
        GetMenuStringA(menu, position, text, sizeof(text), MF_BYPOSITION);
        if ((GetMenuState(menu, position, MF_BYPOSITION) & MF_SEPARATOR) != 0 &&
            GetSubMenu(menu, i) == nullptr) {
            items.emplace_back("-");
        } else if (GetSubMenu(menu, i) != nullptr) {
            items.push_back(std::string("> ") + text);
        } else {
            items.push_back(std::to_string(GetMenuItemID(menu, i)) + " " + text);
        }
    }
    return items;
}

class LoadedMenu {
public:
    explicit LoadedMenu(int number)
        : menu(LoadMenuW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(number))) {}
    LoadedMenu(const LoadedMenu&) = delete;
    LoadedMenu& operator=(const LoadedMenu&) = delete;
    ~LoadedMenu() { DestroyMenu(menu); }

    HMENU Get() const { return menu; }
    HMENU Sub() const { return GetSubMenu(menu, 0); }

private:
    HMENU menu;
};

}  // namespace

TEST(Menus, RowMenuHasThreeCommandsBeneathOneSubMenu) {
    const LoadedMenu menu(111);
    ASSERT_EQ(GetMenuItemCount(menu.Get()), 1);
    EXPECT_THAT(ItemsOf(menu.Sub()),
                ElementsAre("40001 Check All", "40002 Uncheck All", "40003 Invert Selection"));
}

TEST(Menus, ColumnMenuHasItsPlacesBeneathOneSubMenu) {
    const LoadedMenu menu(120);
    ASSERT_EQ(GetMenuItemCount(menu.Get()), 1);
    EXPECT_THAT(
        ItemsOf(menu.Sub()),
        ElementsAre("40012 Top", "-", "> Tags", "-", "> Extended Properties", "40013 Missing", "-",
                    "40019 Default Columns", "40018 CANNOT MOVE POS FOR TAGS AND EXTENDED"));
    EXPECT_THAT(ItemsOf(GetSubMenu(menu.Sub(), 2)), ElementsAre("40010 Tags"));
    EXPECT_THAT(ItemsOf(GetSubMenu(menu.Sub(), 4)), ElementsAre("40011 Props"));
}
