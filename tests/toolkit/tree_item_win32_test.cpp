#include "toolkit/tree_item.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "tests/support/text.h"
#include "tests/toolkit/tree_form.h"

namespace {

UINT StateOf(const TreeForm& stage, XTreeItem item) {
    TVITEMW wanted = {};
    wanted.mask = TVIF_STATE | TVIF_HANDLE;
    wanted.hItem = item.item;
    wanted.stateMask = 0xFFFF;
    stage.Ask(TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&wanted));
    return wanted.state;
}

TVITEMW ImagesOf(const TreeForm& stage, XTreeItem item) {
    TVITEMW wanted = {};
    wanted.mask = TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_HANDLE;
    wanted.hItem = item.item;
    stage.Ask(TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&wanted));
    return wanted;
}

std::string ChildrenOf(const TreeForm& stage, XTreeItem parent) {
    std::string names;
    LRESULT next = stage.Ask(TVM_GETNEXTITEM, parent.item != nullptr ? TVGN_CHILD : TVGN_ROOT,
                             reinterpret_cast<LPARAM>(parent.item));
    while (next != 0) {
        const XTreeItem item = {reinterpret_cast<HTREEITEM>(next), stage.tree.TreeWindow()};
        names += Utf8(item.ItemText()) + " ";
        next = stage.Ask(TVM_GETNEXTITEM, TVGN_NEXT, next);
    }
    return names;
}

TEST(TreeItem, NoItemHasNothing) {
    TreeForm stage(hiddenForm);
    const XTreeItem without[] = {
        {}, {nullptr, stage.tree.TreeWindow()}, {stage.anchor.item, nullptr}};
    for (const XTreeItem item : without) {
        EXPECT_FALSE(item.IsValid());
        EXPECT_EQ(item.ItemData(), 0);
        EXPECT_EQ(Utf8(item.ItemText()), "");
        EXPECT_FALSE(item.IsExpanded());
    }
}

TEST(TreeItem, WhatCannotBeReadCountsAsNothing) {
    TreeForm stage(hiddenForm);
    XTreeItem item = stage.anchor;
    stage.Ask(TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(item.item));
    ASSERT_TRUE(item.IsExpanded());
    item.SetItemStateImage(3);
    item.tree = stage.form.Window();  // no tree at all
    EXPECT_EQ(item.ItemData(), 0);
    EXPECT_EQ(Utf8(item.ItemText()), "");
    EXPECT_EQ(item.ItemStateImage(), 0u);
    EXPECT_FALSE(item.IsExpanded());
}

TEST(TreeItem, DataHas64Bits) {
    TreeForm stage(hiddenForm);
    for (const std::int64_t data :
         {std::int64_t{0}, std::int64_t{-1}, INT64_MIN, INT64_MAX, std::int64_t{0x123456789ABC}}) {
        EXPECT_EQ(stage.tree.InsertItem(L"item", -1, -1, data, {}).ItemData(), data);
    }
}

TEST(TreeItem, TextIsCutAtTheBuffersEnd) {
    TreeForm stage(hiddenForm);
    for (const int length : {0, 1, 259, 260, 997, 998, 999, 1500}) {
        clString text;
        for (int i = 0; i < length; ++i)
            text.Append(static_cast<wchar_t>(L'a' + i % 26));
        const XTreeItem item = stage.tree.InsertItem(text, -1, -1, 0, {});
        EXPECT_EQ(Utf8(item.ItemText()), Utf8(text.Left(length < 998 ? length : 998))) << length;
    }
    const XTreeItem item = stage.tree.InsertItem(L"M\u00fcsik \u97f3\u697d", -1, -1, 0, {});
    EXPECT_EQ(Utf8(item.ItemText()), Utf8(L"M\u00fcsik \u97f3\u697d"));
}

TEST(TreeItem, StateImagesAreSetAndRead) {
    TreeForm stage(hiddenForm);
    stage.Ask(TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(stage.anchor.item));
    const UINT others = StateOf(stage, stage.anchor) & 0xFFF;
    ASSERT_NE(others & TVIS_EXPANDED, 0u);
    for (const std::uint32_t index : {1u, 5u, 15u, 0u, 4u}) {
        stage.anchor.SetItemStateImage(index);
        EXPECT_EQ(stage.anchor.ItemStateImage(), index);
        EXPECT_EQ(StateOf(stage, stage.anchor), others | index << 12);
        EXPECT_TRUE(stage.anchor.IsExpanded());
    }
    EXPECT_EQ(stage.deck.ItemStateImage(), 0u) << "only that item";
}

TEST(TreeItem, ExpandedIsTheItemsOwnState) {
    TreeForm stage(hiddenForm);
    EXPECT_FALSE(stage.anchor.IsExpanded());
    stage.Ask(TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(stage.anchor.item));
    EXPECT_TRUE(stage.anchor.IsExpanded());
    EXPECT_FALSE(stage.bow.IsExpanded());
    stage.Ask(TVM_EXPAND, TVE_COLLAPSE, reinterpret_cast<LPARAM>(stage.anchor.item));
    EXPECT_FALSE(stage.anchor.IsExpanded());
    stage.Select(stage.deck);
    stage.deck.SetItemStateImage(2);
    EXPECT_FALSE(stage.deck.IsExpanded()) << "selected and with a picture";
}

TEST(InsertItem, AppendsToItsParent) {
    TreeForm stage(hiddenForm);
    EXPECT_EQ(ChildrenOf(stage, {}), "Anchor Deck Eye ");
    EXPECT_EQ(ChildrenOf(stage, stage.anchor), "Bow Cleat ");
    const XTreeItem first = stage.tree.InsertItem(L"Aft", -1, -1, 9, stage.anchor);
    EXPECT_EQ(ChildrenOf(stage, stage.anchor), "Bow Cleat Aft ") << "in no alphabet";
    EXPECT_EQ(first.tree, stage.tree.TreeWindow());
    EXPECT_EQ(first.ItemData(), 9);
}

TEST(InsertItem, GivesOnlyTheImagesThatThereAre) {
    TreeForm stage(hiddenForm);
    struct Row {
        std::int32_t image, selectedImage;
        int expected, expectedSelected;
    };
    const Row rows[] = {{-1, -1, 0, 0}, {3, -1, 3, 0}, {-1, 4, 0, 4}, {5, 6, 5, 6}, {0, 0, 0, 0}};
    for (const Row& row : rows) {
        const XTreeItem item = stage.tree.InsertItem(L"x", row.image, row.selectedImage, 0, {});
        const TVITEMW images = ImagesOf(stage, item);
        EXPECT_EQ(images.iImage, row.expected) << row.image;
        EXPECT_EQ(images.iSelectedImage, row.expectedSelected) << row.selectedImage;
    }
}

TEST(InsertItem, GivesNoItemWithoutATree) {
    class Plain final : public XTreeView {};
    Plain plain;
    EXPECT_FALSE(plain.InsertItem(L"x", -1, -1, 0, {}).IsValid());
}

}  // namespace
