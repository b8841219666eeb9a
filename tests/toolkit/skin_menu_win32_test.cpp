#include "toolkit/skin_menu.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <cstdint>
#include <string>

#include "tests/support/text.h"
#include "tests/toolkit/menu_item.h"
#include "tests/ui/icons.h"

namespace {

bool IsOwnerDrawn(HMENU menu, int position) {
    MENUITEMINFOW info = {};
    info.cbSize = sizeof(info);
    info.fMask = MIIM_FTYPE;
    EXPECT_TRUE(GetMenuItemInfoW(menu, static_cast<UINT>(position), TRUE, &info));
    return (info.fType & MFT_OWNERDRAW) != 0;
}

UINT IdAt(HMENU menu, int position) {
    MENUITEMINFOW info = {};
    info.cbSize = sizeof(info);
    info.fMask = MIIM_ID;
    EXPECT_TRUE(GetMenuItemInfoW(menu, static_cast<UINT>(position), TRUE, &info));
    return info.wID;
}

clMenuItem Named(const wchar_t* text, std::int32_t id = 0) {
    clMenuItem item;
    item.text = text;
    item.id = id;
    return item;
}

// A popup of the items "One" (101) and "Two" (102).
class PopupMenu : public testing::Test {
protected:
    PopupMenu() {
        const HMENU popup = CreatePopupMenu();
        AppendMenuW(popup, MF_STRING, 101, L"One");
        AppendMenuW(popup, MF_STRING, 102, L"Two");
        menu.Attach(popup, true);
    }

    std::string TextAt(std::int32_t position) const { return Utf8(menu.ItemAt(position).text); }
    std::int32_t Count() const { return GetMenuItemCount(menu.Menu()); }

    XSkinMenu menu;
};

}  // namespace

TEST(SkinMenu, LoadsTheRowMenuOfTheProgram) {
    XSkinMenu menu;
    menu.imageWidth = 3;
    menu.imageHeight = 4;
    ASSERT_TRUE(menu.LoadMenuAndPrepare());
    EXPECT_EQ(menu.imageWidth, 16);
    EXPECT_EQ(menu.imageHeight, 16);
    EXPECT_EQ(GetMenuItemCount(menu.Menu()), 1);
    EXPECT_EQ(Utf8(menu.ItemById(40001).text), "Check All");
    EXPECT_EQ(Utf8(menu.ItemById(40003).text), "Invert Selection");
}

TEST(SkinMenu, AModuleWithoutTheMenuGivesNone) {
    XSkinMenu menu;
    ASSERT_TRUE(menu.LoadMenuAndPrepare());
    const HMENU earlier = menu.Menu();
    EXPECT_FALSE(menu.LoadMenuAndPrepare(GetModuleHandleW(L"kernel32.dll")));
    EXPECT_EQ(menu.Menu(), nullptr);
    EXPECT_FALSE(IsMenu(earlier));
    EXPECT_EQ(menu.LayoutOf(40001), nullptr);
    menu.Prepare();
    EXPECT_EQ(Utf8(menu.ItemAt(0).text), "");
}

TEST(SkinMenu, SubmenusAreOwnerDrawnAndTheTopIsNot) {
    XSkinMenu menu;
    ASSERT_TRUE(menu.LoadMenuAndPrepare());
    EXPECT_FALSE(IsOwnerDrawn(menu.Menu(), 0));
    const HMENU rows = GetSubMenu(menu.Menu(), 0);
    for (int position = 0; position < GetMenuItemCount(rows); ++position)
        EXPECT_TRUE(IsOwnerDrawn(rows, position)) << position;
    EXPECT_TRUE(IsOwnerDrawn(GetSubMenu(rows, 5), 0));
}

TEST(SkinMenu, EachItemThatIsNoSeparatorHasALayout) {
    XSkinMenu menu;
    ASSERT_TRUE(menu.LoadMenuAndPrepare());
    for (const std::int32_t id : {40001, 40002, 40003, 40004}) {
        const clText* layout = menu.LayoutOf(id);
        ASSERT_NE(layout, nullptr) << id;
        EXPECT_EQ(layout->texts.Count(), 3) << id;
        EXPECT_EQ(layout->icons.Count(), 0) << id;
        EXPECT_EQ(Utf8(layout->texts.At(0)->text), Utf8(menu.ItemById(id).text)) << id;
    }
    // The item that opens the submenu has one as well.
    const HMENU rows = GetSubMenu(menu.Menu(), 0);
    const clText* opening = menu.LayoutOf(static_cast<std::int32_t>(IdAt(rows, 5)));
    ASSERT_NE(opening, nullptr);
    EXPECT_EQ(Utf8(opening->texts.At(0)->text), "More");
    EXPECT_EQ(menu.LayoutOf(0), nullptr);
    EXPECT_EQ(menu.LayoutOf(40005), nullptr);
}

TEST(SkinMenu, ItemsThatOpenSubmenusAreToldApartWithoutIds) {
    XSkinMenu menu;
    ASSERT_TRUE(menu.LoadMenuAndPrepare());
    const HMENU top = CreateMenu();
    const HMENU rows = CreatePopupMenu();
    AppendMenuW(top, MF_POPUP, reinterpret_cast<UINT_PTR>(rows), L"Rows");
    AppendWithoutId(rows, L"More", CreatePopupMenu());
    AppendWithoutId(rows, L"Still more", CreatePopupMenu());
    AppendMenuW(rows, MF_SEPARATOR, 0, nullptr);
    ASSERT_EQ(IdAt(rows, 0), 0u);
    ASSERT_EQ(IdAt(rows, 1), 0u);
    menu.Attach(top, true);
    menu.Prepare();
    EXPECT_NE(IdAt(rows, 0), 0u);
    EXPECT_NE(IdAt(rows, 1), 0u);
    EXPECT_NE(IdAt(rows, 0), IdAt(rows, 1));
    EXPECT_EQ(IdAt(rows, 2), 0u) << "a separator has no command";
    for (int position = 0; position < 2; ++position) {
        const auto id = static_cast<std::int32_t>(IdAt(rows, position));
        const clText* layout = menu.LayoutOf(id);
        ASSERT_NE(layout, nullptr) << position;
        const char* text = position == 0 ? "More" : "Still more";
        EXPECT_EQ(Utf8(layout->texts.At(0)->text), text);
        EXPECT_EQ(Utf8(menu.ItemById(id).text), text);
        EXPECT_NE(GetSubMenu(rows, position), nullptr);
    }
}

TEST(SkinMenu, ASubmenuCanBePreparedByItself) {
    XSkinMenu whole;
    ASSERT_TRUE(whole.LoadMenuAndPrepare());
    const HMENU loaded = LoadMenuW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(111));
    clOwnedList<clMenuLayout> layouts;
    {
        XSkinMenu rows;
        rows.Attach(GetSubMenu(loaded, 0), false);
        rows.Prepare(&layouts, false);
        EXPECT_TRUE(IsOwnerDrawn(rows.Menu(), 0));
        EXPECT_EQ(rows.LayoutOf(40001), nullptr);  // they are in the list given
    }
    EXPECT_EQ(layouts.Count(), 5);
    EXPECT_EQ(layouts.At(0)->id, 40001);
    // It wasn't owned.
    EXPECT_TRUE(IsMenu(loaded));
    EXPECT_EQ(GetMenuItemCount(GetSubMenu(loaded, 0)), 6);
    DestroyMenu(loaded);
}

TEST(SkinMenu, DestroysTheMenuThatItOwns) {
    const HMENU owned = CreatePopupMenu();
    const HMENU borrowed = CreatePopupMenu();
    {
        XSkinMenu menu;
        menu.Attach(owned, true);
        menu.Attach(borrowed, false);
        EXPECT_FALSE(IsMenu(owned));
    }
    EXPECT_TRUE(IsMenu(borrowed));
    {
        XSkinMenu menu;
        menu.Attach(borrowed, true);
    }
    EXPECT_FALSE(IsMenu(borrowed));
}

TEST(SkinMenu, AnIconIsAddedInItsThreeForms) {
    XSkinMenu menu;
    ASSERT_TRUE(menu.LoadMenuAndPrepare());
    const HICON icon = MakeIcon(16, 16, RGB(255, 0, 0));
    menu.SetItemIcon(40001, icon);
    menu.SetItemIcon(40001, icon);  // in place of the first
    menu.SetItemIcon(99999, icon);  // nobody has this id
    DestroyIcon(icon);
    const clText* layout = menu.LayoutOf(40001);
    ASSERT_EQ(layout->icons.Count(), 3);
    EXPECT_EQ(layout->icons.At(0)->condition, 9u);
    EXPECT_EQ(layout->icons.At(1)->condition, 5u);
    EXPECT_EQ(layout->icons.At(2)->condition, 2u);
    EXPECT_EQ(layout->texts.Count(), 3);
    EXPECT_EQ(Utf8(layout->texts.At(2)->text), "Check All");
    EXPECT_EQ(menu.LayoutOf(40002)->icons.Count(), 0);
    menu.SetItemIcon(40001, nullptr);
    EXPECT_EQ(menu.LayoutOf(40001)->icons.Count(), 0);
}

TEST_F(PopupMenu, DescribesItemsByPositionAndById) {
    CheckMenuItem(menu.Menu(), 102, MF_BYCOMMAND | MF_CHECKED);
    EnableMenuItem(menu.Menu(), 102, MF_BYCOMMAND | MF_GRAYED);
    const clMenuItem first = menu.ItemAt(0);
    EXPECT_EQ(Utf8(first.text), "One");
    EXPECT_EQ(first.id, 101);
    EXPECT_FALSE(first.checked);
    EXPECT_FALSE(first.disabled);
    EXPECT_FALSE(first.separator);
    const clMenuItem second = menu.ItemById(102);
    EXPECT_EQ(Utf8(second.text), "Two");
    EXPECT_TRUE(second.checked);
    EXPECT_TRUE(second.disabled);
    EXPECT_EQ(menu.ItemAt(1).id, 102);
    EnableMenuItem(menu.Menu(), 102, MF_BYCOMMAND | MF_DISABLED);
    EXPECT_TRUE(menu.ItemById(102).disabled);
    EnableMenuItem(menu.Menu(), 102, MF_BYCOMMAND | MF_ENABLED);
    EXPECT_FALSE(menu.ItemById(102).disabled);
}

TEST_F(PopupMenu, AnItemThatIsNotThereIsEmpty) {
    for (const clMenuItem& item : {menu.ItemAt(2), menu.ItemAt(-1), menu.ItemById(999)}) {
        EXPECT_EQ(Utf8(item.text), "");
        EXPECT_EQ(item.id, 0);
        EXPECT_FALSE(item.separator);
        EXPECT_EQ(item.data, 0);
    }
}

TEST_F(PopupMenu, OfALongTextItsBeginningIsRead) {
    const std::wstring text(300, L'x');
    menu.InsertItem(0, Named(text.c_str(), 103));
    EXPECT_EQ(menu.ItemById(103).text.Length(), 259);
}

TEST_F(PopupMenu, InsertsBeforeAPositionAndAppendsAtZero) {
    EXPECT_EQ(menu.InsertItem(1, Named(L"Between", 103)), 103);
    EXPECT_EQ(menu.InsertItem(0, Named(L"Last", 104)), 104);
    ASSERT_EQ(Count(), 4);
    EXPECT_EQ(TextAt(0), "One");
    EXPECT_EQ(TextAt(1), "Between");
    EXPECT_EQ(TextAt(2), "Two");
    EXPECT_EQ(TextAt(3), "Last");
}

TEST_F(PopupMenu, InsertsBeforeAnItem) {
    EXPECT_EQ(menu.InsertItemBefore(101, Named(L"First", 103)), 103);
    EXPECT_EQ(menu.InsertItemBefore(102, Named(L"Between", 104)), 104);
    ASSERT_EQ(Count(), 4);
    EXPECT_EQ(TextAt(0), "First");
    EXPECT_EQ(TextAt(2), "Between");
}

TEST_F(PopupMenu, AnInsertedItemHasAllOfItsDescription) {
    clMenuItem item = Named(L"New", 103);
    item.checked = true;
    item.disabled = true;
    item.data = 0x123456789ABCDEF0;
    menu.InsertItem(0, item);
    const clMenuItem read = menu.ItemById(103);
    EXPECT_EQ(Utf8(read.text), "New");
    EXPECT_TRUE(read.checked);
    EXPECT_TRUE(read.disabled);
    EXPECT_EQ(read.data, 0x123456789ABCDEF0);
    EXPECT_FALSE(IsOwnerDrawn(menu.Menu(), 2));
}

TEST_F(PopupMenu, ASeparatorIsNothingElse) {
    clMenuItem line = Named(L"ignored", 103);
    line.separator = true;
    EXPECT_EQ(menu.InsertItem(1, line), 0);
    const clMenuItem read = menu.ItemAt(1);
    EXPECT_TRUE(read.separator);
    EXPECT_EQ(read.id, 0);
    EXPECT_EQ(Utf8(read.text), "");
}

// No other test of this program may let an id be chosen.
TEST_F(PopupMenu, ChosenIdsCountUpFrom53000ForAllMenus) {
    static std::int32_t next = 53000;  // the test may be repeated
    EXPECT_EQ(menu.InsertItem(0, Named(L"a")), next);
    EXPECT_EQ(menu.InsertItem(0, Named(L"b", 7)), 7);
    clMenuItem line;
    line.separator = true;
    menu.InsertItem(0, line);
    XSkinMenu other;
    other.Attach(CreatePopupMenu(), true);
    EXPECT_EQ(other.InsertItem(0, Named(L"c")), next + 1);
    EXPECT_EQ(menu.InsertItem(1, Named(L"d")), next + 2);
    EXPECT_EQ(Utf8(menu.ItemById(next + 2).text), "d");
    next += 3;
}
