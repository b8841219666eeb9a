#include "mainwindow/row_menu.h"

#include <gtest/gtest.h>

#include "resources/ids.h"
#include "tests/support/text.h"
#include "tests/ui/pixels.h"
#include "toolkit/icon_resource.h"

namespace {

void ExpectSamePicture(HICON actual, HICON expected) {
    const Canvas seen(smallIconSize, smallIconSize);
    const Canvas wanted(smallIconSize, smallIconSize);
    DrawIconEx(seen.Dc(), 0, 0, actual, smallIconSize, smallIconSize, 0, nullptr, DI_NORMAL);
    DrawIconEx(wanted.Dc(), 0, 0, expected, smallIconSize, smallIconSize, 0, nullptr, DI_NORMAL);
    for (int y = 0; y < smallIconSize; ++y) {
        for (int x = 0; x < smallIconSize; ++x)
            ASSERT_EQ(Colour{seen.At(x, y)}, Colour{wanted.At(x, y)}) << x << ' ' << y;
    }
}

TEST(RowMenu, HasTheBoxesOfTheStatesThatItsCommandsSet) {
    const struct {
        int command;
        const char* text;
        int icon;  // 0 for none
    } items[] = {{ID_CHECK_ALL, "Check All", IDI_TICKED},
                 {ID_UNCHECK_ALL, "Uncheck All", IDI_STATE_NONE},
                 {ID_INVERT_SELECTION, "Invert Selection", 0}};
    XSkinMenu menu;
    PrepareRowMenu(menu);
    for (const auto& item : items) {
        EXPECT_EQ(Utf8(menu.ItemById(item.command).text), item.text);
        const clText* layout = menu.LayoutOf(item.command);
        ASSERT_NE(layout, nullptr) << item.text;
        if (item.icon == 0) {
            EXPECT_EQ(layout->icons.Count(), 0);
            continue;
        }
        ASSERT_GT(layout->icons.Count(), 0) << item.text;
        ExpectSamePicture(layout->icons.At(0)->icon, LoadIconResource(item.icon).Get());
    }
}

}  // namespace
