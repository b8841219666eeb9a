#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/toolkit/value_form.h"
#include "tests/ui/icons.h"
#include "tests/ui/keys.h"
#include "tests/ui/pointer.h"
#include "tests/ui/pump.h"
#include "toolkit/dpi.h"

using testing::Contains;
using testing::ElementsAre;

namespace {

int changes = 0;

void CountChange(XValueList&) {
    ++changes;
}

// The icons are 16 pixels wide and stand at x 4, the default.
class SwitchForm : public ValueForm {
public:
    SwitchForm() {
        const HICON icon = MakeIcon(16, 16, RGB(0, 200, 0));
        list.SetToggleIcons(icon, icon);
        list.SetToggleIcon(ToggleIcon::RadioOn, icon);
        list.SetToggleIcon(ToggleIcon::RadioOff, icon);
        DestroyIcon(icon);
        changes = 0;
    }

    std::int32_t AddSwitch(ValueKind kind, const wchar_t* value, bool readOnly = false,
                           const wchar_t* caption = L"") {
        clValueRowParams params;
        params.nameX = 44;
        params.readOnly = readOnly;
        params.buttonCaption = caption;
        params.changeCallback = &CountChange;
        return Add(kind, L"name", value, params);
    }
    std::string States() const {
        std::string states;
        for (std::int32_t row = 0; row < list.RowCount(); ++row)
            states += list.IsOn(row) ? '1' : '0';
        return states;
    }
};

TEST(ValueSwitch, FlipsByItsIconWhetherSelectedOrNot) {
    SwitchForm form;
    form.AddSwitch(ValueKind::Toggle, L"0");
    form.AddSwitch(ValueKind::Toggle, L"1");
    Click(form.InRow(1, 8));
    EXPECT_EQ(form.States(), "00");
    EXPECT_EQ(form.list.CurrentRow(), 1);
    EXPECT_EQ(changes, 1);
    Click(form.InRow(1, 8));
    EXPECT_EQ(form.States(), "01");
    EXPECT_EQ(form.Value(1), "1");
    Click(form.InRow(0, 8));
    EXPECT_EQ(form.States(), "11");
    EXPECT_EQ(form.list.CurrentRow(), 0);
    EXPECT_EQ(changes, 3);
}

TEST(ValueSwitch, FlipsByItsTextOnlyOnTheSelectedRow) {
    SwitchForm form;
    form.AddSwitch(ValueKind::Toggle, L"0");
    form.AddSwitch(ValueKind::Toggle, L"0");
    Click(form.InRow(1, 120));
    EXPECT_EQ(form.States(), "00");  // this press selects
    EXPECT_EQ(form.list.CurrentRow(), 1);
    Click(form.InRow(1, 120));
    EXPECT_EQ(form.States(), "01");
    Click(form.InRow(0, 120));
    EXPECT_EQ(form.States(), "01");
    EXPECT_EQ(changes, 1);
}

TEST(ValueSwitch, TakesPressesOnBothEdgesOfItsIcon) {
    struct Row {
        int x;
        bool hit;
    };
    for (const Row& row : {Row{3, false}, {4, true}, {20, true}, {21, false}}) {
        SwitchForm form;
        form.AddSwitch(ValueKind::Toggle, L"0");
        Click(form.InRow(0, row.x));
        EXPECT_EQ(form.list.IsOn(0), row.hit) << row.x;
    }
}

TEST(ValueSwitch, WithAButtonTakesNoPressesOnItsText) {
    SwitchForm form;
    form.AddSwitch(ValueKind::Toggle, L"0", false, L"Pick");
    form.list.SelectRowAt(0);
    Click(form.InRow(0, 120));
    EXPECT_EQ(form.States(), "0");
    Click(form.InRow(0, 8));
    EXPECT_EQ(form.States(), "1");
}

TEST(ValueSwitch, OfAReadOnlyRowStays) {
    SwitchForm form;
    form.AddSwitch(ValueKind::Toggle, L"0", true);
    form.AddSwitch(ValueKind::Radio, L"5", true);
    Click(form.InRow(0, 8));
    form.FocusBox();
    PressKey(VK_SPACE);
    Click(form.InRow(1, 8));
    PressKey(VK_SPACE);
    EXPECT_EQ(form.States(), "00");
    EXPECT_EQ(changes, 0);
    EXPECT_EQ(form.list.CurrentRow(), 1);
}

TEST(ValueSwitch, OfARadioGroupHasOneThatIsOn) {
    SwitchForm form;
    for (const wchar_t* value : {L"7", L"-7", L"7", L"8", L"-8"})
        form.AddSwitch(ValueKind::Radio, value);
    EXPECT_EQ(form.States(), "01001");
    Click(form.InRow(0, 8));
    EXPECT_EQ(form.States(), "10001");
    Click(form.InRow(0, 8));  // again changes nothing
    EXPECT_EQ(form.States(), "10001");
    Click(form.InRow(3, 120));  // selects
    EXPECT_EQ(form.States(), "10001");
    Click(form.InRow(3, 120));
    EXPECT_EQ(form.States(), "10010");
    EXPECT_EQ(form.Value(0), "-7");
    EXPECT_EQ(form.Value(1), "7");
    EXPECT_EQ(changes, 3);
}

TEST(ValueSwitch, FlipsBySpace) {
    SwitchForm form;
    form.AddSwitch(ValueKind::Toggle, L"0");
    form.AddSwitch(ValueKind::Radio, L"3");
    form.Add(ValueKind::Text, L"name", L"0");
    form.list.SelectRowAt(0);
    form.FocusBox();
    PressKey(VK_SPACE);
    EXPECT_EQ(form.States(), "100");
    PressKey(VK_SPACE);
    EXPECT_EQ(form.States(), "000");
    EXPECT_EQ(form.Value(0), "");
    form.list.SelectRowAt(1);
    PressKey(VK_SPACE);
    PressKey(VK_SPACE);
    EXPECT_EQ(form.States(), "010");
    EXPECT_EQ(changes, 4);
    form.list.SelectRowAt(2);
    PressKey(VK_SPACE);
    EXPECT_EQ(form.Value(2), "0");
    EXPECT_EQ(form.list.CurrentRow(), 2);
}

TEST(ValueSwitch, HasNothingToFlipInAnEmptyList) {
    SwitchForm form;
    form.FocusBox();
    PressKey(VK_SPACE);
    EXPECT_EQ(form.list.CurrentRow(), -1);
    EXPECT_EQ(form.Ask(WM_KEYDOWN, VK_SPACE), 0);
    EXPECT_EQ(changes, 0);
}

TEST(ValueSwitch, IsSetByTheProgramWithoutACall) {
    SwitchForm form;
    form.AddSwitch(ValueKind::Toggle, L"0");
    form.AddSwitch(ValueKind::Radio, L"-3");
    form.Add(ValueKind::Text, L"name", L"0");
    form.list.SetOn(true, 0);
    form.list.SetOn(false, 1);
    form.list.SetOn(true, 2);
    form.list.SetOn(true, 3);
    form.list.SetOn(true, -1);
    EXPECT_EQ(form.States(), "100");
    EXPECT_EQ(form.Value(1), "3");
    EXPECT_EQ(form.Value(2), "0");
    EXPECT_FALSE(form.list.IsOn(3));
    EXPECT_FALSE(form.list.IsOn(-1));
    EXPECT_EQ(changes, 0);
}

TEST(ValuePress, OnTheRightSelectsAndAsksForAMenu) {
    SwitchForm form;
    form.AddSwitch(ValueKind::Toggle, L"0");
    form.AddSwitch(ValueKind::Toggle, L"0");
    const POINT point = form.InRow(1, 8);
    Click(point, PointerButton::Right);
    EXPECT_EQ(form.list.CurrentRow(), 1);
    EXPECT_EQ(form.States(), "00");
    const auto calls = form.Taken();
    EXPECT_THAT(calls, Contains("selected 1"));
    EXPECT_EQ(calls.back(), "menu " + std::to_string(point.x) + "," + std::to_string(point.y));
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST(ValuePress, TellsOfTheSelectionAndOfADoubleClick) {
    ValueForm form;
    form.Fill(3);
    Click(form.InRow(2, 60));
    EXPECT_THAT(form.Taken(), Contains("selected 2"));
    DoubleClick(form.InRow(1, 60));
    const auto calls = form.Taken();
    EXPECT_THAT(calls, Contains("selected 1"));
    EXPECT_THAT(calls, Contains("double 1"));
    EXPECT_EQ(
        form.Send(WM_COMMAND, MAKEWPARAM(0, LBN_DBLCLK), reinterpret_cast<LPARAM>(form.Box())), 1);
    form.list.SelectRowAt(-1);
    form.Taken();
    EXPECT_EQ(
        form.Send(WM_COMMAND, MAKEWPARAM(0, LBN_DBLCLK), reinterpret_cast<LPARAM>(form.Box())), 0);
    EXPECT_EQ(form.Count("double -1"), 0);
}

}  // namespace
