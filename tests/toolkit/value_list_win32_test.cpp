#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/text.h"
#include "tests/toolkit/value_form.h"
#include "tests/ui/icons.h"
#include "tests/ui/keys.h"
#include "tests/ui/pointer.h"
#include "tests/ui/pump.h"
#include "tests/ui/resource_counts.h"
#include "toolkit/dpi.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

TEST(ValueList, StandsOnItsDialogAsAnOwnerDrawnListBox) {
    ValueForm form;
    const HWND box = form.Box();
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(GetParent(box), form.form.Window());
    // The scroll bar only shows while there is something to scroll.
    EXPECT_EQ(GetWindowLongW(box, GWL_STYLE) | WS_VSCROLL, 0x50210551);
    EXPECT_NE(GetWindowLongW(box, GWL_EXSTYLE) & WS_EX_CLIENTEDGE, 0);
    RECT units = {7, 7, 343, 261};
    MapDialogRect(form.form.Window(), &units);
    RECT place = {};
    GetWindowRect(box, &place);
    MapWindowPoints(nullptr, form.form.Window(), reinterpret_cast<POINT*>(&place), 2);
    EXPECT_TRUE(EqualRect(&place, &units));
    EXPECT_EQ(SendMessageW(box, WM_GETFONT, 0, 0),
              SendMessageW(form.form.Window(), WM_GETFONT, 0, 0));
    EXPECT_NE(GetWindowLongW(box, GWL_ID), 0);
    EXPECT_EQ(form.list.Control(), box);
    form.Fill(1);
    EXPECT_EQ(form.Ask(LB_GETITEMHEIGHT), ScaleForDpi(21));
}

TEST(ValueList, WithoutAListBoxDoesNothing) {
    XValueList list;
    EXPECT_EQ(list.AddRow({}), -1);
    EXPECT_EQ(list.CurrentRow(), -1);
    EXPECT_EQ(list.RowUnderPointer(), -1);
    list.SelectRowAt(-1);
    list.SyncEditor();
    list.Invalidate();
    DRAWITEMSTRUCT item = {};
    std::uint32_t handled = 5;
    EXPECT_EQ(list.Route(nullptr, WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&item), &handled), 0);
    EXPECT_EQ(handled, 0U);
}

TEST(ValueList, LetsGoOfAListBoxThatWentWithItsDialog) {
    ValueForm form;
    clValueRowParams button;
    button.buttonCaption = L"Pick";
    form.Add(ValueKind::Edit, L"name", L"value", button);
    form.list.SelectRowAt(0);
    SetWindowTextW(form.Edit(), L"other");
    form.form.DestroyWnd();
    EXPECT_EQ(form.Box(), nullptr);
    EXPECT_EQ(form.Edit(), nullptr);
    EXPECT_EQ(form.Button(), nullptr);
    EXPECT_EQ(form.list.Control(), nullptr);
    EXPECT_EQ(form.Value(0), "other");  // the rows are there to be read
}

TEST(ValueList, KeepsWhatARowIsMadeOf) {
    ValueForm form;
    clStringList choices;
    choices.Add(L"one");
    choices.Add(L"two");
    clValueRowParams params;
    params.nameX = 30;
    params.valueX = 200;
    params.toggleX = 11;
    params.valueWidth = 90;
    params.lines = 3;
    params.readOnly = true;
    params.choices = &choices;
    params.buttonCaption = L"Pick";
    params.userData = -7;
    EXPECT_EQ(form.Add(ValueKind::Combo, L"Name", L"Value", params), 0);
    EXPECT_EQ(form.Add(ValueKind::Toggle, L"", L"1"), 1);
    const clValueRow& row = *form.list.Row(0);
    EXPECT_EQ(row.kind, ValueKind::Combo);
    EXPECT_EQ(Utf8(row.name), "Name");
    EXPECT_EQ(Utf8(row.value), "Value");
    EXPECT_EQ(row.nameX, ScaleForDpi(30));
    EXPECT_EQ(row.valueX, ScaleForDpi(200));
    EXPECT_EQ(row.toggleX, ScaleForDpi(11));
    EXPECT_EQ(row.valueWidth, ScaleForDpi(90));
    EXPECT_EQ(row.lines, 3);
    EXPECT_TRUE(row.readOnly);
    ASSERT_EQ(row.choices.Count(), 2);
    EXPECT_EQ(Utf8(*row.choices.At(1)), "two");
    EXPECT_EQ(Utf8(row.buttonCaption), "Pick");
    EXPECT_EQ(row.userData, -7);
    const clValueRow& plain = *form.list.Row(1);
    EXPECT_EQ(plain.nameX, ScaleForDpi(4));
    EXPECT_EQ(plain.valueX, ScaleForDpi(150));
    EXPECT_EQ(plain.toggleX, ScaleForDpi(4));
    EXPECT_EQ(form.list.Row(2), nullptr);
    EXPECT_EQ(form.list.Row(-1), nullptr);
    wchar_t text[50] = {};
    form.Ask(LB_GETTEXT, 0, reinterpret_cast<LPARAM>(text));
    EXPECT_EQ(Utf8(text), "Name: Value");
    form.Ask(LB_GETTEXT, 1, reinterpret_cast<LPARAM>(text));
    EXPECT_EQ(Utf8(text), "1");
}

TEST(ValueList, SelectsRowsAndNothingElse) {
    ValueForm form;
    EXPECT_EQ(form.list.CurrentRow(), -1);
    form.Fill(3);
    EXPECT_EQ(form.list.CurrentRow(), -1);
    struct Row {
        std::int32_t asked;
        std::int32_t current;
        int told;
    };
    const Row rows[] = {{2, 2, 1}, {3, 2, 0}, {-2, 2, 0}, {0, 0, 1}, {-1, -1, 1}, {-1, -1, 1}};
    for (const Row& row : rows) {
        form.Taken();
        form.list.SelectRowAt(row.asked);
        EXPECT_EQ(form.list.CurrentRow(), row.current) << row.asked;
        EXPECT_EQ(form.Count("selected " + std::to_string(row.current)), row.told) << row.asked;
    }
}

TEST(ValueList, FindsTheRowUnderThePointer) {
    ValueForm form;
    EXPECT_EQ(form.list.RowUnderPointer(), -1);
    MovePointer(ScreenPoint(form.Box(), 20, 30));
    EXPECT_EQ(form.list.RowUnderPointer(), -1);  // no rows
    form.Fill(40);
    const int height = ScaleForDpi(21);
    struct Row {
        int y;
        std::int32_t row;
    };
    for (const Row& row : {Row{0, 0}, {height - 1, 0}, {height, 1}, {5 * height + 3, 5}}) {
        MovePointer(ScreenPoint(form.Box(), 20, row.y));
        EXPECT_EQ(form.list.RowUnderPointer(), row.row) << row.y;
    }
    form.Ask(LB_SETTOPINDEX, 7);
    MovePointer(ScreenPoint(form.Box(), 20, 2 * height));
    EXPECT_EQ(form.list.RowUnderPointer(), 9);
    MovePointer(ScreenMiddle(form.form.Child(ValueForm::buttonId)));
    EXPECT_EQ(form.list.RowUnderPointer(), -1);
}

TEST(ValueList, BelowTheRowsIsTheLast) {
    ValueForm form;
    form.Fill(3);
    MovePointer(ScreenPoint(form.Box(), 20, ScaleForDpi(21) * 8));
    EXPECT_EQ(form.list.RowUnderPointer(), 2);
}

TEST(ValueList, AnEditorIsPartOfItsRow) {
    ValueForm form;
    form.Fill(2);
    form.Add(ValueKind::Edit, L"name", L"value");
    form.list.SelectRowAt(2);
    MovePointer(ScreenMiddle(form.Edit()));
    EXPECT_EQ(form.list.RowUnderPointer(), 2);
}

TEST(ValueList, MeasuresItsRowsForItsOwnId) {
    ValueForm form;
    MEASUREITEMSTRUCT item = {};
    item.CtlType = ODT_LISTBOX;
    item.CtlID = static_cast<UINT>(GetWindowLongW(form.Box(), GWL_ID));
    EXPECT_EQ(form.Send(WM_MEASUREITEM, item.CtlID, reinterpret_cast<LPARAM>(&item)), 1);
    EXPECT_EQ(form.handled, 1U);
    EXPECT_EQ(item.itemHeight, static_cast<UINT>(ScaleForDpi(21)));
    for (const bool otherId : {true, false}) {
        MEASUREITEMSTRUCT other = item;
        other.itemHeight = 3;
        if (otherId)
            ++other.CtlID;
        else
            other.CtlType = ODT_COMBOBOX;
        EXPECT_EQ(form.Send(WM_MEASUREITEM, other.CtlID, reinterpret_cast<LPARAM>(&other)), 0);
        EXPECT_EQ(form.handled, 0U);
        EXPECT_EQ(other.itemHeight, 3U);
    }
}

TEST(ValueList, CountsPixelsInPixelMode) {
    ValueForm form;
    form.list.SetPixelMode(true);
    clValueRowParams params;
    params.nameX = 0x20000 | 0x100000 | 40;
    form.Add(ValueKind::Text, L"name", L"", params);
    EXPECT_EQ(form.list.Row(0)->nameX, 0x120028);
}

// Within a message that a list serves others than WM_DRAWITEM are not looked at.
TEST(ValueList, ServesOneMessageAtATime) {
    ValueForm form;
    static ValueForm* current = nullptr;
    static int inner = 0;
    current = &form;
    inner = 0;
    clValueRowParams params;
    params.changeCallback = [](XValueList&) {
        ++inner;
        const Canvas canvas(300, 21, RGB(255, 0, 0));
        std::uint32_t handled = 9;
        MEASUREITEMSTRUCT item = {};
        item.CtlType = ODT_LISTBOX;
        item.CtlID = static_cast<UINT>(GetWindowLongW(current->Box(), GWL_ID));
        EXPECT_EQ(current->list.Route(nullptr, WM_MEASUREITEM, 0, reinterpret_cast<LPARAM>(&item),
                                      &handled),
                  0);
        EXPECT_EQ(handled, 0U);
        EXPECT_EQ(current->Draw(canvas, 0, 0), 1);
        EXPECT_EQ(Colour{canvas.At(290, 2)}, Colour{0xFFFFFF});
        // The nested message has not let go of the guard.
        const auto command = MAKEWPARAM(0, LBN_SELCHANGE);
        current->Taken();
        current->Send(WM_COMMAND, command, reinterpret_cast<LPARAM>(current->Box()));
        EXPECT_THAT(current->Taken(), IsEmpty());
    };
    const HICON icon = MakeIcon(16, 16, RGB(0, 200, 0));
    form.list.SetToggleIcons(icon, icon);
    DestroyIcon(icon);
    form.Add(ValueKind::Toggle, L"name", L"", params);
    Click(form.InRow(0, 8));
    EXPECT_EQ(inner, 1);
    form.Taken();
    form.Send(WM_COMMAND, MAKEWPARAM(0, LBN_SELCHANGE), reinterpret_cast<LPARAM>(form.Box()));
    EXPECT_THAT(form.Taken(), ElementsAre("selected 0"));
}

void DrawRows(XValueList& list, HWND parent) {
    const Canvas canvas(300, 21);
    for (std::uint32_t row = 0; row < 10; ++row) {
        DRAWITEMSTRUCT item = {};
        item.CtlType = ODT_LISTBOX;
        item.itemID = row;
        item.itemState = ODS_SELECTED;
        item.hwndItem = list.ListBox();
        item.hDC = canvas.Dc();
        item.rcItem = {0, 0, 300, 21};
        std::uint32_t handled = 0;
        ASSERT_EQ(list.Route(parent, WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&item), &handled), 1);
    }
}

// A list as a program uses it, with an editor open on it when it goes: of each
// kind in turn. Drawing and changing from one editor to the next take longer than
// all the rest, and are left to one list in ten.
void UseOneList(HWND parent, HICON icon, int number) {
    XValueList list;
    list.Create(parent);
    list.SetToggleIcons(icon, icon);
    clStringList choices;
    choices.Add(L"one");
    clValueRowParams params;
    params.icon = icon;
    params.choices = &choices;
    params.buttonCaption = L"Pick";
    for (std::uint32_t kind = 0; kind < 10; ++kind) {
        params.kind = static_cast<ValueKind>(kind);
        params.name = L"name";
        params.value = L"value";
        list.AddRow(params);
    }
    if (number % 10 == 0) {
        DrawRows(list, parent);
        for (std::int32_t row = 5; row < 8; ++row)
            list.SelectRowAt(row);
    }
    list.SelectRowAt(5 + number % 3);
    ASSERT_NE(list.Editor().EditorWindow(), nullptr);
}

void UseLists(HWND parent, HICON icon, int count) {
    for (int i = 0; i < count; ++i)
        UseOneList(parent, icon, i);
    PumpMessages();
}

TEST(ValueList, LeavesNothingBehindAfterAThousand) {
    HostForm form;
    form.Show(DialogTemplate(hiddenForm, 350, 302));
    const HICON icon = MakeIcon(16, 16, RGB(0, 200, 0));
    // What the platform makes once and keeps.
    UseLists(form.Window(), icon, 20);
    const ResourceCounts before = CountResources();
    UseLists(form.Window(), icon, 1000);
    EXPECT_EQ(CountResources(), before);
    DestroyIcon(icon);
}

}  // namespace
