#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/toolkit/value_form.h"
#include "tests/ui/keys.h"
#include "tests/ui/pointer.h"
#include "tests/ui/pump.h"
#include "toolkit/dpi.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

std::int32_t PageOf(const ValueForm& form) {
    RECT client = {};
    GetClientRect(form.Box(), &client);
    return client.bottom / ScaleForDpi(21);
}

TEST(ValueKeys, MoveTheSelection) {
    ValueForm form;
    form.Fill(60);
    form.FocusBox();
    const std::int32_t page = PageOf(form);
    ASSERT_GT(page, 5);
    ASSERT_LT(page, 30);
    struct Row {
        WORD key;
        std::int32_t current;
    };
    const Row rows[] = {
        {VK_DOWN, 0},  {VK_DOWN, 1},          {VK_NEXT, 1 + page}, {VK_UP, page},
        {VK_PRIOR, 0}, {VK_PRIOR, 0},         {VK_END, 59},        {VK_DOWN, 59},
        {VK_NEXT, 59}, {VK_PRIOR, 59 - page}, {VK_HOME, 0},        {VK_LEFT, 0},
        {VK_RIGHT, 0}, {VK_UP, -1},           {VK_UP, -1},         {VK_DOWN, 0},
    };
    for (const Row& row : rows) {
        PressKey(row.key);
        EXPECT_EQ(form.list.CurrentRow(), row.current) << "key " << row.key;
    }
}

TEST(ValueKeys, TellOfEachRowOnce) {
    ValueForm form;
    form.Fill(60);
    form.FocusBox();
    form.Taken();
    PressKey(VK_DOWN);
    PressKey(VK_END);
    PressKey(VK_HOME);
    PressKey(VK_UP);
    EXPECT_THAT(form.Taken(),
                ElementsAre("selected 0", "selected 59", "selected 0", "selected -1"));
}

TEST(ValueKeys, OfAnEmptyListDoNothing) {
    ValueForm form;
    form.FocusBox();
    for (const int key : {VK_DOWN, VK_UP, VK_NEXT, VK_PRIOR, VK_HOME, VK_END, VK_SPACE}) {
        PressKey(static_cast<WORD>(key));
        EXPECT_EQ(form.list.CurrentRow(), -1) << key;
    }
}

TEST(ValueKeys, PagesAndEndsActWhenTheyAreLetGo) {
    ValueForm form;
    form.Fill(60);
    form.FocusBox();
    form.list.SelectRowAt(30);
    form.Taken();
    for (const int key :
         {VK_SHIFT, VK_CONTROL, VK_PRIOR, VK_NEXT, VK_END, VK_HOME, VK_LEFT, VK_RIGHT}) {
        form.Ask(WM_KEYDOWN, static_cast<WPARAM>(key));
        EXPECT_EQ(form.list.CurrentRow(), 30) << key;
    }
    EXPECT_THAT(form.Taken(), IsEmpty());
    form.Ask(WM_KEYUP, VK_END);
    EXPECT_EQ(form.list.CurrentRow(), 59);
}

TEST(ValueKeys, WithoutAMeaningLeaveTheSelection) {
    ValueForm form;
    form.Fill(4);
    form.list.SelectRowAt(2);
    form.FocusBox();
    form.Taken();
    TypeText(L"r0 ");
    PressKey(VK_F5);
    EXPECT_EQ(form.list.CurrentRow(), 2);
    EXPECT_THAT(form.Taken(), IsEmpty());
}

TEST(ValueKeys, TabGoesToTheDialog) {
    ValueForm form;
    form.Fill(2);
    form.FocusBox();
    form.keysDown.clear();
    form.keysUp.clear();
    form.Ask(WM_KEYDOWN, VK_TAB);
    form.Ask(WM_KEYUP, VK_TAB);
    EXPECT_EQ(form.list.CurrentRow(), -1);
    EXPECT_EQ(form.Ask(LB_GETCURSEL), LB_ERR);
    MSG message = {};
    ASSERT_TRUE(PeekMessageW(&message, form.form.Window(), WM_KEYDOWN, WM_KEYUP, PM_REMOVE));
    EXPECT_EQ(message.hwnd, form.form.Window());
    EXPECT_EQ(message.message, static_cast<UINT>(WM_KEYDOWN));
    EXPECT_EQ(message.wParam, static_cast<WPARAM>(VK_TAB));
    ASSERT_TRUE(PeekMessageW(&message, form.form.Window(), WM_KEYDOWN, WM_KEYUP, PM_REMOVE));
    EXPECT_EQ(message.hwnd, form.form.Window());
    EXPECT_EQ(message.message, static_cast<UINT>(WM_KEYUP));
    EXPECT_EQ(message.wParam, static_cast<WPARAM>(VK_TAB));
}

TEST(ValueKeys, TabLeavesTheList) {
    ValueForm form;
    form.Fill(2);
    form.FocusBox();
    PressKey(VK_TAB);
    EXPECT_EQ(GetFocus(), form.form.Child(ValueForm::buttonId));
    PressKey(VK_TAB);
    EXPECT_EQ(GetFocus(), form.Box());
}

TEST(ValueKeys, TabLeavesAnEditor) {
    ValueForm form;
    clValueRowParams params;
    params.buttonCaption = L"Pick";
    form.Add(ValueKind::Edit, L"name", L"value", params);
    form.list.SelectRowAt(0);
    ASSERT_EQ(GetFocus(), form.Edit());
    PressKey(VK_TAB);
    EXPECT_EQ(GetFocus(), form.form.Child(ValueForm::buttonId));
    EXPECT_EQ(WindowText(form.Edit()), "value");  // no tab was typed
    PressKey(VK_TAB);
    EXPECT_EQ(GetFocus(), form.Edit());  // as the list gets the focus
}

// A text of several lines would take a tab for a character.
TEST(ValueKeys, TabInAnEditorIsForTheDialogAlone) {
    ValueForm form;
    clValueRowParams params;
    params.lines = 3;
    form.Add(ValueKind::Edit, L"name", L"value", params);
    form.list.SelectRowAt(0);
    const HWND field = form.list.Editor().Control();
    ASSERT_EQ(field, form.Edit());
    PumpMessages();
    form.keysUp.clear();
    SendMessageW(field, WM_KEYUP, VK_TAB, 0);
    PumpMessages();
    EXPECT_THAT(form.keysUp, ElementsAre(VK_TAB));
    SendMessageW(field, WM_CHAR, VK_TAB, 0);
    EXPECT_EQ(WindowText(field), "value");
}

TEST(ValueWheel, ScrollsTheRows) {
    ValueForm form;
    form.Fill(60);
    form.FocusBox();
    MovePointer(form.InRow(3, 60));
    TurnWheel(-1);
    ASSERT_TRUE(PumpUntil([&form] { return form.Ask(LB_GETTOPINDEX) > 0; }));
    EXPECT_EQ(form.list.CurrentRow(), -1);
}

}  // namespace
