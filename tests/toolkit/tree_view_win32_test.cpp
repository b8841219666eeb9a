#include "toolkit/tree_view.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/text.h"
#include "tests/toolkit/tree_form.h"
#include "tests/ui/pump.h"
#include "tests/ui/resource_counts.h"

// What `Route` makes of each message, and what the control then does.

namespace {

using Lines = std::vector<std::string>;

NMTREEVIEWW Change(XTreeItem newItem, XTreeItem oldItem, UINT action) {
    NMTREEVIEWW change = {};
    change.itemNew.hItem = newItem.item;
    change.itemOld.hItem = oldItem.item;
    change.action = action;
    return change;
}

NMTVKEYDOWN Key(WORD virtualKey) {
    NMTVKEYDOWN key = {};
    key.wVKey = virtualKey;
    return key;
}

// Only a header, in a form that `Notify` takes.
struct Bare {
    NMHDR hdr = {};
};

class RouteTest : public testing::Test {
protected:
    RouteTest() : stage(hiddenForm) {}
    TreeForm stage;
};

TEST_F(RouteTest, SelectionAndExpansionAreHandledWithTheAnswer) {
    struct Row {
        UINT code;
        const char* line;
        bool isAsked;  // has an answer
    };
    const Row rows[] = {
        {TVN_SELCHANGINGW, "changing Deck Anchor 2", true},
        {TVN_SELCHANGEDW, "changed Deck Anchor 2", false},
        {TVN_ITEMEXPANDINGW, "expanding 2 Deck", true},
        {TVN_ITEMEXPANDEDW, "expanded 2 Deck", false},
    };
    for (const Row& row : rows) {
        for (const std::uint8_t answer : {std::uint8_t{0}, std::uint8_t{1}, std::uint8_t{200}}) {
            stage.tree.answer = answer;
            const LRESULT result = stage.Notify(Change(stage.deck, stage.anchor, 2), row.code);
            EXPECT_EQ(result, row.isAsked && answer != 0 ? 1 : 0) << row.line;
            EXPECT_EQ(stage.handled, 1u) << row.line;
            EXPECT_EQ(stage.Taken(), Lines{row.line});
        }
    }
}

TEST_F(RouteTest, ItemsMayBeNone) {
    stage.Notify(Change({}, stage.anchor, 0), TVN_SELCHANGEDW);
    stage.Notify(Change(stage.eye, {}, 1), TVN_SELCHANGINGW);
    EXPECT_EQ(stage.Taken(), (Lines{"changed - Anchor 0", "changing Eye - 1"}));
}

TEST_F(RouteTest, ClicksAreHandledOnlyIfTheOperationSaysSo) {
    struct Row {
        UINT code;
        const char* line;
    };
    const Row rows[] = {
        {NM_CLICK, "click"},
        {NM_DBLCLK, "double click"},
        {NM_RCLICK, "right click"},
        {NM_RDBLCLK, "right double click"},
    };
    for (const Row& row : rows) {
        for (const std::uint8_t answer : {std::uint8_t{0}, std::uint8_t{1}, std::uint8_t{200}}) {
            stage.tree.answer = answer;
            EXPECT_EQ(stage.Notify(Bare{}, row.code), answer != 0 ? 1 : 0) << row.line;
            EXPECT_EQ(stage.handled, answer != 0 ? 1u : 0u) << row.line;
            EXPECT_EQ(stage.Taken(), Lines{row.line});
        }
    }
}

TEST_F(RouteTest, OnlySpaceIsTakenOfTheKeys) {
    EXPECT_EQ(stage.Notify(Key(VK_SPACE), TVN_KEYDOWN), 1);
    EXPECT_EQ(stage.handled, 1u);
    EXPECT_EQ(stage.Taken(), Lines{"space"});
    for (const WORD key : {WORD{VK_RETURN}, WORD{'A'}, WORD{VK_DOWN}, WORD{0}}) {
        EXPECT_EQ(stage.Notify(Key(key), TVN_KEYDOWN), 0);
        EXPECT_EQ(stage.handled, 0u);
    }
    EXPECT_TRUE(stage.Taken().empty());
}

TEST_F(RouteTest, EverythingElseClearsTheFlag) {
    for (const UINT code : std::vector<UINT>{NM_CUSTOMDRAW, NM_RETURN, NM_SETFOCUS, TVN_DELETEITEMW,
                                             TVN_SELCHANGEDA, TVN_ITEMEXPANDINGA}) {
        EXPECT_EQ(stage.Notify(Change(stage.deck, stage.anchor, 1), code), 0);
        EXPECT_EQ(stage.handled, 0u) << code;
    }
    for (const UINT message : std::vector<UINT>{WM_COMMAND, WM_TIMER, WM_PAINT, WM_USER}) {
        EXPECT_EQ(stage.Send(message, reinterpret_cast<WPARAM>(stage.tree.TreeWindow()), 0), 0);
        EXPECT_EQ(stage.handled, 0u) << message;
    }
    EXPECT_TRUE(stage.Taken().empty());
}

TEST_F(RouteTest, NotificationsOfOthersAreNotTaken) {
    NMTREEVIEWW change = Change(stage.deck, stage.anchor, 1);
    change.hdr.code = TVN_SELCHANGINGW;
    for (const HWND from : {stage.form.Window(), HWND{nullptr}}) {
        change.hdr.hwndFrom = from;
        EXPECT_EQ(stage.Send(WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&change)), 0);
        EXPECT_EQ(stage.handled, 0u);
    }
    EXPECT_TRUE(stage.Taken().empty());
}

TEST_F(RouteTest, NothingIsTakenBeforeTheTreeIsKnown) {
    const HWND known = stage.tree.TreeWindow();
    stage.tree.SetTreeWindow(nullptr);
    NMTREEVIEWW change = Change(stage.deck, stage.anchor, 1);
    change.hdr.code = TVN_SELCHANGINGW;
    stage.Send(WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&change));
    EXPECT_EQ(stage.handled, 0u);
    stage.Send(WM_CONTEXTMENU, 0, -1);
    EXPECT_EQ(stage.handled, 0u);
    stage.tree.SetTreeWindow(known);
    EXPECT_TRUE(stage.Taken().empty());
}

// Messages that an operation sends go through the form and leave their values in
// its flag.
TEST_F(RouteTest, TheFlagHoldsWhateverTheOperationSends) {
    stage.tree.during = [this] {
        stage.tree.during = nullptr;
        stage.handled = 0;
    };
    stage.tree.answer = 1;
    EXPECT_EQ(stage.Notify(Change(stage.deck, stage.anchor, 1), TVN_SELCHANGINGW), 1);
    EXPECT_EQ(stage.handled, 1u);
    stage.tree.during = [this] { stage.handled = 0; };
    stage.Notify(Change(stage.deck, stage.anchor, 1), TVN_ITEMEXPANDINGW);
    EXPECT_EQ(stage.handled, 1u);
    stage.Notify(Key(VK_SPACE), TVN_KEYDOWN);
    EXPECT_EQ(stage.handled, 1u);
    stage.tree.during = [this] { stage.handled = 1; };
    stage.tree.answer = 0;
    stage.Notify(Bare{}, NM_CLICK);
    EXPECT_EQ(stage.handled, 0u);
    stage.Send(WM_CONTEXTMENU, reinterpret_cast<WPARAM>(stage.tree.TreeWindow()), -1);
    EXPECT_EQ(stage.handled, 0u);
}

TEST_F(RouteTest, TheFlagIsSetBeforeTheOperationRuns) {
    std::uint32_t flagInside = 0;
    stage.tree.during = [&] { flagInside = stage.handled; };
    for (const UINT code : std::vector<UINT>{TVN_SELCHANGINGW, TVN_SELCHANGEDW, TVN_ITEMEXPANDINGW,
                                             TVN_ITEMEXPANDEDW}) {
        flagInside = 0;
        stage.Notify(Change(stage.deck, stage.anchor, 1), code);
        EXPECT_EQ(flagInside, 1u);
    }
}

TEST_F(RouteTest, AContextMenuSelectsTheItemUnderIt) {
    const POINT point = stage.OnLabel(stage.deck);
    EXPECT_EQ(stage.Send(WM_CONTEXTMENU, reinterpret_cast<WPARAM>(stage.tree.TreeWindow()),
                         MAKELPARAM(point.x, point.y)),
              0);
    EXPECT_EQ(stage.handled, 0u);
    EXPECT_EQ(stage.Selected(), "Deck");
    const std::string menu = "menu " + std::to_string(point.x) + " " + std::to_string(point.y);
    EXPECT_EQ(stage.Taken(), (Lines{"changing Deck Anchor 0", "changed Deck Anchor 0", menu}));
}

TEST_F(RouteTest, AContextMenuBesideTheItemsSelectsNothing) {
    const POINT point = stage.BesideItems();
    stage.Send(WM_CONTEXTMENU, reinterpret_cast<WPARAM>(stage.tree.TreeWindow()),
               MAKELPARAM(point.x, point.y));
    EXPECT_EQ(stage.Selected(), "Anchor");
    EXPECT_EQ(stage.Taken().size(), 1u);
}

TEST_F(RouteTest, AContextMenuOfTheKeyboardHasNoPoint) {
    stage.Send(WM_CONTEXTMENU, reinterpret_cast<WPARAM>(stage.tree.TreeWindow()), -1);
    EXPECT_EQ(stage.handled, 0u);
    EXPECT_EQ(stage.Taken(), Lines{"menu 65535 65535"});
    EXPECT_EQ(stage.Selected(), "Anchor");
}

TEST_F(RouteTest, AContextMenuOfAnotherWindowIsNotTaken) {
    stage.Send(WM_CONTEXTMENU, reinterpret_cast<WPARAM>(stage.form.Window()), -1);
    EXPECT_EQ(stage.handled, 0u);
    EXPECT_TRUE(stage.Taken().empty());
}

TEST_F(RouteTest, TheControlFollowsACancel) {
    stage.tree.answer = 1;
    stage.Select(stage.deck);
    EXPECT_EQ(stage.Selected(), "Anchor");
    stage.Ask(TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(stage.anchor.item));
    EXPECT_FALSE(stage.anchor.IsExpanded());
    EXPECT_EQ(stage.Taken(), (Lines{"changing Deck Anchor 0", "expanding 2 Anchor"}));
    stage.tree.answer = 0;
    stage.Select(stage.deck);
    EXPECT_EQ(stage.Selected(), "Deck");
    stage.Ask(TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(stage.anchor.item));
    EXPECT_TRUE(stage.anchor.IsExpanded());
    EXPECT_EQ(stage.Taken(), (Lines{"changing Deck Anchor 0", "changed Deck Anchor 0",
                                    "expanding 2 Anchor", "expanded 2 Anchor"}));
}

TEST_F(RouteTest, ACancelHoldsAlthoughTheOperationSendsMessages) {
    stage.tree.answer = 1;
    stage.tree.during = [this] { SendMessageW(stage.form.Window(), WM_USER, 0, 0); };
    stage.Select(stage.deck);
    EXPECT_EQ(stage.Selected(), "Anchor");
}

TEST(TreeViewBase, DoesNothing) {
    class Plain final : public XTreeView {};
    TreeForm stage(hiddenForm);
    Plain plain;
    plain.SetTreeWindow(stage.tree.TreeWindow());
    NMTREEVIEWW change = Change(stage.deck, stage.anchor, 1);
    change.hdr.hwndFrom = plain.TreeWindow();
    std::uint32_t handled = 99;
    for (const UINT code : std::vector<UINT>{TVN_SELCHANGINGW, TVN_SELCHANGEDW, TVN_ITEMEXPANDINGW,
                                             TVN_ITEMEXPANDEDW}) {
        change.hdr.code = code;
        EXPECT_EQ(plain.Route(nullptr, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&change), &handled),
                  0);
        EXPECT_EQ(handled, 1u);
    }
    for (const UINT code : std::vector<UINT>{NM_CLICK, NM_DBLCLK, NM_RCLICK, NM_RDBLCLK}) {
        change.hdr.code = code;
        EXPECT_EQ(plain.Route(nullptr, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&change), &handled),
                  0);
        EXPECT_EQ(handled, 0u);
    }
}

TEST(TreeViewLeaks, AThousandTreesLeaveNothing) {
    const auto makeAndEnd = [] {
        HostForm form;
        ProbeTree tree;
        form.Show(
            DialogTemplate(hiddenForm, 60, 60).Add({WC_TREEVIEWW, WS_VISIBLE, 1, 1, 50, 50, 1001}));
        tree.SetTreeWindow(form.Child(1001));
        for (std::int64_t i = 0; i < 5; ++i)
            tree.InsertItem(L"item", -1, -1, i, {});
    };
    for (int i = 0; i < 20; ++i)
        makeAndEnd();
    const ResourceCounts before = CountResources();
    for (int i = 0; i < 1000; ++i)
        makeAndEnd();
    EXPECT_EQ(CountResources(), before);
}

}  // namespace
