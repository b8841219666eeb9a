#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tests/toolkit/tree_form.h"
#include "tests/ui/keys.h"
#include "tests/ui/pointer.h"
#include "tests/ui/pump.h"

// The tree under a real pointer and real keys.

namespace {

using Lines = std::vector<std::string>;

class TreeInput : public testing::Test {
protected:
    TreeInput() {
        SetFocus(stage.tree.TreeWindow());
        PumpMessages();
        stage.Taken();
    }
    // Pumps until the tree has told this; the lines stay.
    bool Hears(const std::string& line) {
        return PumpUntil([&] { return Count(line) > 0; });
    }
    int Count(const std::string& line) {
        return static_cast<int>(std::ranges::count(stage.tree.lines, line));
    }
    TreeForm stage;
};

std::string MenuAt(POINT point) {
    return "menu " + std::to_string(point.x) + " " + std::to_string(point.y);
}

TEST_F(TreeInput, AClickComesBeforeTheSelection) {
    std::string selectedAtClick;
    stage.tree.during = [&] {
        if (stage.tree.lines.back() == "click") selectedAtClick = stage.Selected();
    };
    Click(stage.OnLabel(stage.deck));
    ASSERT_TRUE(Hears("changed Deck Anchor 1"));
    EXPECT_EQ(stage.Taken(), (Lines{"click", "changing Deck Anchor 1", "changed Deck Anchor 1"}));
    EXPECT_EQ(selectedAtClick, "Anchor");
    EXPECT_EQ(stage.Selected(), "Deck");
}

TEST_F(TreeInput, AClickThatIsTakenSelectsNothing) {
    stage.tree.answer = 1;
    Click(stage.OnLabel(stage.deck));
    ASSERT_TRUE(Hears("click"));
    PumpFor(100);
    EXPECT_EQ(stage.Selected(), "Anchor");
    EXPECT_EQ(stage.Taken(), Lines{"click"});
}

TEST_F(TreeInput, ACancelKeepsTheSelectionUnderAClick) {
    stage.tree.during = [&] { stage.tree.answer = stage.tree.lines.back() == "click" ? 1 : 0; };
    stage.tree.answer = 0;
    stage.tree.during = nullptr;
    Click(stage.OnLabel(stage.eye));
    ASSERT_TRUE(Hears("changed Eye Anchor 1"));
    stage.Taken();
    stage.tree.answer = 1;
    Click(stage.OnLabel(stage.deck));
    PumpFor(100);
    EXPECT_EQ(stage.Selected(), "Eye");
}

// Of the left button: not every tree control tells of the right one's.
TEST_F(TreeInput, ADoubleClickFollowsItsClick) {
    DoubleClick(stage.OnLabel(stage.deck));
    ASSERT_TRUE(Hears("double click"));
    EXPECT_EQ(stage.Taken(),
              (Lines{"click", "changing Deck Anchor 1", "changed Deck Anchor 1", "double click"}));
}

TEST_F(TreeInput, ARightClickSelectsByItsMenuOnly) {
    stage.routeMenus = false;
    const POINT deck = stage.OnLabel(stage.deck);
    Click(deck, PointerButton::Right);
    ASSERT_TRUE(Hears("right click"));
    PumpFor(100);
    EXPECT_EQ(stage.Selected(), "Anchor");
    EXPECT_EQ(stage.Taken(), Lines{"right click"});

    stage.routeMenus = true;
    std::string selectedAtClick;
    stage.tree.during = [&] {
        if (stage.tree.lines.back() == "right click") selectedAtClick = stage.Selected();
    };
    Click(deck, PointerButton::Right);
    ASSERT_TRUE(Hears(MenuAt(deck)));
    EXPECT_EQ(selectedAtClick, "Anchor");
    EXPECT_EQ(stage.Selected(), "Deck");
    EXPECT_EQ(stage.Taken(), (Lines{"right click", "changing Deck Anchor 0",
                                    "changed Deck Anchor 0", MenuAt(deck)}));
}

TEST_F(TreeInput, ARightClickBesideTheItemsHasItsMenuToo) {
    const POINT beside = stage.BesideItems();
    Click(beside, PointerButton::Right);
    ASSERT_TRUE(Hears(MenuAt(beside)));
    EXPECT_EQ(stage.Selected(), "Anchor");
}

TEST_F(TreeInput, TheMenuKeyHasNoPoint) {
    PressKey(VK_APPS);
    ASSERT_TRUE(Hears("menu 65535 65535"));
    EXPECT_EQ(stage.Selected(), "Anchor");
}

TEST_F(TreeInput, SpaceEndsInItsOperationEachTime) {
    PressKey(VK_SPACE);
    ASSERT_TRUE(Hears("space"));
    PressKey(VK_SPACE);
    ASSERT_TRUE(PumpUntil([&] { return Count("space") == 2; }));
    PumpFor(50);
    EXPECT_EQ(stage.Taken(), (Lines{"space", "space"}));
    EXPECT_EQ(stage.Selected(), "Anchor");
}

TEST_F(TreeInput, ArrowsSelectByTheKeyboardAndOpen) {
    PressKey(VK_DOWN);
    ASSERT_TRUE(Hears("changed Deck Anchor 2"));
    EXPECT_EQ(stage.Taken(), (Lines{"changing Deck Anchor 2", "changed Deck Anchor 2"}));
    PressKey(VK_UP);
    ASSERT_TRUE(Hears("changed Anchor Deck 2"));
    stage.Taken();
    PressKey(VK_RIGHT);
    ASSERT_TRUE(Hears("expanded 2 Anchor"));
    EXPECT_EQ(stage.Taken(), (Lines{"expanding 2 Anchor", "expanded 2 Anchor"}));
    PressKey(VK_LEFT);
    ASSERT_TRUE(Hears("expanded 1 Anchor"));
    EXPECT_EQ(stage.Taken(), (Lines{"expanding 1 Anchor", "expanded 1 Anchor"}));
}

}  // namespace
