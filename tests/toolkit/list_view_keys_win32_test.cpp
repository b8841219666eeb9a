#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "tests/toolkit/list_form.h"
#include "tests/ui/keys.h"
#include "tests/ui/pump.h"

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

namespace {

constexpr WORD letterA = 'A';

HWND LabelEdit(const ListForm& form) {
    return reinterpret_cast<HWND>(form.Ask(LVM_GETEDITCONTROL));
}

TEST(ListSelectAll, SelectsEveryRowAndTellsOfEachInOrder) {
    ListForm form;
    form.Fill(4);
    form.list.SelectRow(1, false);
    form.list.recordChanges = true;
    form.list.Forget();
    PressChord(VK_CONTROL, letterA);
    EXPECT_EQ(form.Marks(), "ssss");
    EXPECT_THAT(form.list.calls,
                ElementsAre("key 11", "may select all", "selected 0,0", "selected 1,0",
                            "selected 2,0", "selected 3,0", "key 41"));
}

TEST(ListSelectAll, EndsItsBatch) {
    ListForm form;
    form.Fill(4);
    PressChord(VK_CONTROL, letterA);
    form.list.Forget();
    form.list.SelectRow(2, true);
    EXPECT_EQ(form.list.Count("deselected"), 3);
    form.list.recordDrawing = true;
    InvalidateRect(form.Control(), nullptr, FALSE);
    PumpMessages();
    EXPECT_EQ(form.list.Count("draw"), 4);
}

TEST(ListSelectAll, NeedsTheControlKey) {
    ListForm form;
    form.Fill(3);
    PressKey(letterA);
    EXPECT_EQ(form.Marks(), "nnn");
    EXPECT_THAT(form.list.calls, ElementsAre("key 41"));
}

TEST(ListSelectAll, IsAnOrdinaryKeyWhereOneRowCanBeSelected) {
    ListForm form(LVS_SINGLESEL);
    form.Fill(3);
    PressChord(VK_CONTROL, letterA);
    EXPECT_EQ(form.Marks(), "nnn");
    EXPECT_THAT(form.list.calls, ElementsAre("key 11", "key 41"));
}

TEST(ListSelectAll, CanBeRefused) {
    ListForm form;
    form.Fill(3);
    form.list.maySelectAll = false;
    PressChord(VK_CONTROL, letterA);
    EXPECT_EQ(form.Marks(), "nnn");
    EXPECT_THAT(form.list.calls, ElementsAre("key 11", "may select all", "key 41"));
}

TEST(ListEditKey, OpensTheControlsEditorOnTheSelectedRow) {
    ListForm form(LVS_EDITLABELS);
    form.Fill(3);
    form.list.SelectRow(1, true);
    form.list.Forget();
    PressKey(VK_F2);
    EXPECT_THAT(form.list.calls, ElementsAre("may edit by key", "label begin 1", "key 71"));
    EXPECT_NE(LabelEdit(form), nullptr);
    SendMessageW(LabelEdit(form), WM_KEYDOWN, VK_ESCAPE, 0);
    PumpMessages();
    EXPECT_THAT(form.list.calls, Contains("label cancelled 1"));
}

TEST(ListEditKey, IsRefusedByTheFormWhereTheEditorOpens) {
    ListForm form(LVS_EDITLABELS);
    form.Fill(3);
    form.list.labelEditAnswer = 1;
    form.list.SelectRow(1, true);
    PressKey(VK_F2);
    EXPECT_THAT(form.list.calls, Contains("label begin 1"));
    EXPECT_EQ(LabelEdit(form), nullptr);
}

TEST(ListEditKey, NeedsAListThatAllowsEditing) {
    ListForm form;
    form.Fill(3);
    form.list.SelectRow(1, true);
    form.list.Forget();
    PressKey(VK_F2);
    EXPECT_THAT(form.list.calls, ElementsAre("key 71"));
}

TEST(ListEditKey, CanBeRefused) {
    for (const bool inPlace : {false, true}) {
        ListForm form(LVS_EDITLABELS);
        form.Fill(3);
        form.list.mayEditByKey = false;
        if (inPlace) form.list.SetEditMode(XListView::EditMode::AllColumns);
        form.list.SelectRow(1, true);
        form.list.Forget();
        PressKey(VK_F2);
        EXPECT_THAT(form.list.calls, ElementsAre("may edit by key", "key 71"));
        EXPECT_EQ(form.list.Editor().Row(), -1);
    }
}

TEST(ListEditKey, DoesNothingWithNothingSelected) {
    for (const bool inPlace : {false, true}) {
        ListForm form(LVS_EDITLABELS);
        form.Fill(3);
        if (inPlace) form.list.SetEditMode(XListView::EditMode::AllColumns);
        PressKey(VK_F2);
        EXPECT_THAT(form.list.calls, ElementsAre("may edit by key", "key 71"));

        // The selection mark stays behind.
        form.list.SelectRow(1, true);
        LVITEMW item = {};
        item.stateMask = LVIS_SELECTED;
        form.Ask(LVM_SETITEMSTATE, 1, reinterpret_cast<LPARAM>(&item));
        ASSERT_EQ(form.Ask(LVM_GETSELECTIONMARK), 1);
        form.list.Forget();
        PressKey(VK_F2);
        EXPECT_THAT(form.list.calls, ElementsAre("may edit by key", "key 71"));
        EXPECT_EQ(form.list.Editor().Row(), -1);
        EXPECT_EQ(LabelEdit(form), nullptr);
    }
}

TEST(ListEditKey, LeavesASelectionWithoutAMarkAlone) {
    ListForm form;
    form.Fill(3);
    form.list.SetEditMode(XListView::EditMode::AllColumns);
    form.list.SelectRow(1, false);
    ASSERT_EQ(form.Ask(LVM_GETSELECTIONMARK), -1);
    PressKey(VK_F2);
    EXPECT_EQ(form.Marks(), "nsn");
    EXPECT_EQ(form.list.Editor().Row(), -1);
}

TEST(ListEditKey, OpensTheInPlaceEditorOnColumnZero) {
    for (const auto mode : {XListView::EditMode::FirstColumn, XListView::EditMode::AllColumns}) {
        ListForm form;
        form.Fill(3);
        form.list.SetEditMode(mode);
        form.list.SelectRow(2, true);
        PressKey(VK_F2);
        EXPECT_EQ(form.list.Editor().Row(), 2);
        EXPECT_EQ(form.list.Editor().Column(), 0);
        EXPECT_EQ(form.list.Count("label"), 0);
    }
}

}  // namespace
