#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/toolkit/value_editor_form.h"
#include "tests/ui/keys.h"
#include "tests/ui/pointer.h"
#include "tests/ui/pump.h"

using testing::ElementsAre;

namespace {

TEST(ValueEditor, TakesTypedTextOverAtOnce) {
    EditorForm form;
    form.Select(1);
    TypeText(L"ab");
    EXPECT_THAT(EditorForm::told, ElementsAre("change a", "change ab"));
    EXPECT_EQ(form.Value(1), "ab");
    EXPECT_EQ(form.list.Editor().Row(), 1);
    EXPECT_EQ(form.Count("value 1"), 0);
}

TEST(ValueEditor, ReturnClosesItAndKeepsTheButton) {
    EditorForm form;
    form.Select(2);
    SetWindowTextW(form.Edit(), L"free");
    PressKey(VK_RETURN);
    EXPECT_EQ(form.Edit(), nullptr);
    EXPECT_EQ(form.list.Editor().Row(), -1);
    EXPECT_EQ(form.Value(2), "free");
    EXPECT_EQ(GetFocus(), form.Box());
    EXPECT_EQ(form.list.CurrentRow(), 2);
    form.Select(5);
    PressKey(VK_RETURN);
    EXPECT_EQ(form.Edit(), nullptr);
    EXPECT_NE(form.Button(), nullptr);
}

TEST(ValueEditor, ReturnBreaksTheLineOfATextOfSeveral) {
    EditorForm form;
    form.Select(4);
    form.SetCaret(1, 1);
    PressKey(VK_RETURN);
    EXPECT_EQ(form.list.Editor().Row(), 4);
    EXPECT_EQ(form.Value(4), "a\r\n\r\nb");
}

TEST(ValueEditor, ArrowsLeaveItForTheNextRow) {
    EditorForm form;
    form.Select(8);
    PressKey(VK_DOWN);
    EXPECT_EQ(form.list.Editor().Row(), 9);
    EXPECT_EQ(GetFocus(), form.Edit());
    PressKey(VK_DOWN);  // there is none
    EXPECT_EQ(form.list.Editor().Row(), 9);
    PressKey(VK_UP);
    EXPECT_EQ(form.list.Editor().Row(), 8);
    form.Select(3);
    PressKey(VK_UP);  // of a choice too
    EXPECT_EQ(form.list.Editor().Row(), 2);
    PressKey(VK_UP);
    PressKey(VK_UP);
    EXPECT_EQ(form.list.CurrentRow(), 0);
    EXPECT_EQ(form.Edit(), nullptr);
    EXPECT_EQ(GetFocus(), form.Box());
    PressKey(VK_UP);
    EXPECT_EQ(form.list.CurrentRow(), -1);
}

TEST(ValueEditor, ArrowsMoveInsideSeveralLinesFirst) {
    EditorForm form;
    form.Select(4);
    PressKey(VK_UP);  // something is selected
    EXPECT_EQ(form.list.Editor().Row(), 4);
    form.SetCaret(0, 0);
    PressKey(VK_DOWN);
    EXPECT_EQ(form.list.Editor().Row(), 4);
    EXPECT_EQ(form.Selected(), Range(3, 3));
    PressKey(VK_DOWN);
    EXPECT_EQ(form.list.Editor().Row(), 5);
    form.Select(4);
    form.SetCaret(4, 4);
    PressKey(VK_UP);
    EXPECT_EQ(form.list.Editor().Row(), 4);
    PressKey(VK_UP);
    EXPECT_EQ(form.list.CurrentRow(), 3);
}

TEST(ValueEditor, WantsAllKeys) {
    EditorForm form;
    form.Select(1);
    EXPECT_EQ(SendMessageW(form.Field(), WM_GETDLGCODE, 0, 0), 4);
    SendMessageW(form.Field(), WM_CHAR, VK_TAB, 0);
    EXPECT_EQ(WindowText(form.Edit()), "first");
}

TEST(ValueEditor, PassesTheWheelToTheList) {
    EditorForm form;
    form.Fill(40);
    form.Select(1);
    MovePointer(ScreenMiddle(form.Edit()));
    TurnWheel(-1);
    EXPECT_TRUE(PumpUntil([&form] { return form.Ask(LB_GETTOPINDEX) > 0; }));
}

}  // namespace
