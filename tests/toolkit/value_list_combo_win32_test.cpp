#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/toolkit/value_editor_form.h"
#include "tests/ui/keys.h"
#include "tests/ui/pointer.h"
#include "tests/ui/pump.h"

using testing::ElementsAre;

namespace {

TEST(ValueCombo, CompletesWhatIsTyped) {
    EditorForm form;
    form.Select(2);
    EXPECT_EQ(GetWindowLongW(form.Edit(), GWL_STYLE) | WS_VSCROLL, 0x50210042);
    EXPECT_EQ(form.Field(), GetWindow(form.Edit(), GW_CHILD));
    EXPECT_EQ(GetFocus(), form.Field());
    TypeText(L"a");
    EXPECT_EQ(WindowText(form.Edit()), "apple");
    EXPECT_EQ(form.Selected(), Range(1, 5));
    TypeText(L"pr");
    EXPECT_EQ(WindowText(form.Edit()), "apricot");
    EXPECT_EQ(form.Selected(), Range(3, 7));
    TypeText(L"x");
    EXPECT_EQ(WindowText(form.Edit()), "aprx");
    EXPECT_EQ(form.Selected(), Range(4, 4));
}

TEST(ValueCombo, KeepsACompletionByAKeyAndDropsItWithTheFocus) {
    EditorForm form;
    form.Select(2);
    TypeText(L"ba");
    PressKey(VK_RETURN);
    EXPECT_EQ(form.Value(2), "banana");
    form.Select(2);
    TypeText(L"ap");
    EXPECT_EQ(WindowText(form.Edit()), "apple");
    SetFocus(form.form.Child(ValueForm::buttonId));
    EXPECT_EQ(WindowText(form.Edit()), "ap");
    form.Select(2);
    form.SetCaret(0, 2);
    SetFocus(form.form.Child(ValueForm::buttonId));
    EXPECT_EQ(WindowText(form.Edit()), "ap");  // from the start it is the user's
}

// The platform tells of the choice before it shows it in the edit field.
TEST(ValueCombo, TellsOfAChoiceWithTheTextBeforeAndTakesTheChoiceAtItsEnd) {
    EditorForm form;
    form.Select(2);
    SetWindowTextW(form.Edit(), L"before");
    form.Taken();
    EditorForm::told.clear();
    SendMessageW(form.Edit(), CB_SHOWDROPDOWN, TRUE, 0);
    PumpMessages();
    COMBOBOXINFO parts = {};
    parts.cbSize = sizeof(parts);
    ASSERT_TRUE(GetComboBoxInfo(form.Edit(), &parts));
    const auto height = static_cast<int>(SendMessageW(parts.hwndList, LB_GETITEMHEIGHT, 0, 0));
    Click(ScreenPoint(parts.hwndList, 10, height + height / 2));
    EXPECT_TRUE(PumpUntil([&form] { return WindowText(form.Edit()) == "apricot"; }));
    EXPECT_THAT(EditorForm::told, ElementsAre("change before"));
    form.Select(0);
    EXPECT_EQ(form.Value(2), "apricot");
}

TEST(ValueCombo, DoesNotCompleteOnOtherKeys) {
    EditorForm form;
    form.Select(2);
    TypeText(L"ba");
    PressKey(VK_BACK);
    EXPECT_EQ(WindowText(form.Edit()), "ba");
    PressKey(VK_BACK);
    PressKey(VK_BACK);
    EXPECT_EQ(WindowText(form.Edit()), "");
    PressKey(VK_SPACE);
    EXPECT_EQ(WindowText(form.Edit()), " ");
}

}  // namespace
