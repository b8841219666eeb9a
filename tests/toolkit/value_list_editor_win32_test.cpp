#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/import_stub.h"
#include "tests/support/text.h"
#include "tests/toolkit/value_editor_form.h"
#include "tests/ui/pointer.h"
#include "tests/ui/pump.h"
#include "toolkit/dpi.h"
#include "toolkit/font.h"

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

bool IsSame(const RECT& a, const RECT& b) {
    return EqualRect(&a, &b) != FALSE;
}

TEST(ValueEditor, OfATextStandsOverTheValue) {
    EditorForm form;
    form.Select(1);
    ASSERT_NE(form.Edit(), nullptr);
    const RECT row = form.RowRect(1);
    const int left = ScaleForDpi(150) - 5;
    EXPECT_TRUE(
        IsSame(form.Place(form.Edit()), form.InRowPlace(1, left, row.right - 1, ScaleForDpi(21))));
    EXPECT_EQ(GetWindowLongW(form.Edit(), GWL_STYLE) & ~ES_LEFT, 0x50010080);
    EXPECT_NE(GetWindowLongW(form.Edit(), GWL_EXSTYLE) & WS_EX_CLIENTEDGE, 0);
    EXPECT_EQ(SendMessageW(form.Edit(), WM_GETFONT, 0, 0), form.Ask(WM_GETFONT));
    EXPECT_EQ(GetFocus(), form.Edit());
    EXPECT_EQ(WindowText(form.Edit()), "first");
    EXPECT_EQ(form.Selected(), Range(0, 5));
    EXPECT_EQ(form.list.Editor().Row(), 1);
    EXPECT_EQ(form.Button(), nullptr);
    EXPECT_THAT(EditorForm::told, IsEmpty());
}

TEST(ValueEditor, OpensAtAPressAndWithTheFocus) {
    EditorForm form;
    Click(form.InRow(1, 60));
    EXPECT_EQ(form.list.Editor().Row(), 1);
    EXPECT_EQ(GetFocus(), form.Edit());
    SetFocus(form.form.Child(ValueForm::buttonId));
    const HWND earlier = form.Edit();
    ASSERT_NE(earlier, nullptr);  // it does not go with the focus
    SetFocus(form.Box());
    EXPECT_EQ(GetFocus(), form.Edit());
    EXPECT_EQ(form.list.Editor().Row(), 1);
    EXPECT_FALSE(IsWindow(earlier) && earlier != form.Edit());
    // From its own child the list box takes the focus as it is.
    SetFocus(form.Box());
    EXPECT_EQ(GetFocus(), form.Box());
}

// A list box that has the focus would frame its row, beneath the editor.
TEST(ValueEditor, HasTheFocusInPlaceOfTheListBox) {
    EditorForm form;
    form.Select(1);
    SetFocus(form.form.Child(ValueForm::buttonId));
    bool listHasFocus = false;
    form.form.route = [&](HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                          std::uint32_t* flag) {
        if (message == WM_COMMAND && reinterpret_cast<HWND>(lParam) == form.Box()) {
            if (HIWORD(wParam) == LBN_SETFOCUS) listHasFocus = true;
            if (HIWORD(wParam) == LBN_KILLFOCUS) listHasFocus = false;
        }
        return form.list.Route(window, message, wParam, lParam, flag);
    };
    SetFocus(form.Box());
    EXPECT_EQ(GetFocus(), form.Edit());
    EXPECT_FALSE(listHasFocus);
    form.list.SelectRowAt(0);
    EXPECT_EQ(GetFocus(), form.Box());
    EXPECT_TRUE(listHasFocus);
}

TEST(ValueEditor, IsNotThereForOtherKindsAndReadOnlyRows) {
    EditorForm form;
    for (const std::int32_t row : {0, 6}) {
        form.Select(row);
        EXPECT_EQ(form.Edit(), nullptr) << row;
        EXPECT_EQ(form.Button(), nullptr) << row;
        EXPECT_EQ(form.list.Editor().Row(), -1) << row;
    }
}

TEST(ValueEditor, CommitsWhenTheRowChanges) {
    EditorForm form;
    form.Select(2);
    SetWindowTextW(form.Edit(), L"free");
    EXPECT_EQ(form.Value(2), "");
    form.list.SelectRowAt(3);
    EXPECT_EQ(form.Value(2), "free");
    EXPECT_EQ(form.list.Editor().Row(), 3);
    SendMessageW(form.Edit(), CB_SETCURSEL, 1, 0);
    Click(form.InRow(0, 60));
    EXPECT_EQ(form.Value(3), "apricot");
    EXPECT_EQ(form.Edit(), nullptr);
    form.Select(2);
    SetWindowTextW(form.Edit(), L"again");
    form.Add(ValueKind::Text, L"new", L"");
    EXPECT_EQ(form.Value(2), "again");
    EXPECT_EQ(form.Edit(), nullptr);
}

TEST(ValueEditor, OfAChoiceShowsTheLastEqualOne) {
    EditorForm form;
    form.Select(3);
    EXPECT_EQ(GetWindowLongW(form.Edit(), GWL_STYLE) | WS_VSCROLL, 0x50210003);
    EXPECT_EQ(SendMessageW(form.Edit(), CB_GETCOUNT, 0, 0), 4);
    EXPECT_EQ(SendMessageW(form.Edit(), CB_GETCURSEL, 0, 0), 2);
    EXPECT_EQ(form.Field(), form.Edit());
    form.list.Row(3)->value.Assign(L"Apple");
    form.list.Editor().ShowEditor(-1, 0);  // closes, and takes Banana over
    form.list.Row(3)->value.Assign(L"Apple");
    form.list.SyncEditor();
    EXPECT_EQ(SendMessageW(form.Edit(), CB_GETCURSEL, 0, 0), 3);
    form.list.Editor().CloseEditor();
    form.list.Row(3)->value.Assign(L"Cherry");
    form.list.SyncEditor();
    EXPECT_EQ(SendMessageW(form.Edit(), CB_GETCURSEL, 0, 0), 0);
}

TEST(ValueEditor, TellsOfAChoice) {
    EditorForm form;
    form.Select(3);
    SendMessageW(form.Edit(), CB_SETCURSEL, 1, 0);
    form.Ask(WM_COMMAND, MAKEWPARAM(0, CBN_SELCHANGE), reinterpret_cast<LPARAM>(form.Edit()));
    EXPECT_THAT(EditorForm::told, ElementsAre("change apricot"));
    form.Ask(WM_COMMAND, MAKEWPARAM(0, CBN_DROPDOWN), reinterpret_cast<LPARAM>(form.Edit()));
    EXPECT_EQ(EditorForm::told.size(), 1U);
}

TEST(ValueEditor, OfSeveralLinesGrowsDownOrUp) {
    EditorForm form;
    form.Select(4);
    const RECT row = form.RowRect(4);
    const int left = ScaleForDpi(150) - 5;
    EXPECT_TRUE(IsSame(form.Place(form.Edit()),
                       form.InRowPlace(4, left, row.right - 1, 3 * ScaleForDpi(21))));
    EXPECT_EQ(GetWindowLongW(form.Edit(), GWL_STYLE) & 0x502110C4, 0x502110C4);
    form.Ask(LB_SETCURSEL, static_cast<WPARAM>(-1));
    form.list.SyncEditor();
    clValueRowParams params;
    params.lines = 3;
    RECT client = {};
    GetClientRect(form.Box(), &client);
    while (form.RowRect(form.list.RowCount() - 1).bottom < client.bottom - ScaleForDpi(21))
        form.Add(ValueKind::Edit, L"last", L"text", params);
    const std::int32_t last = form.list.RowCount() - 1;
    form.Select(last);
    RECT expected = form.InRowPlace(last, left, row.right - 1, 3 * ScaleForDpi(21));
    OffsetRect(&expected, 0, -2 * ScaleForDpi(21));
    EXPECT_TRUE(IsSame(form.Place(form.Edit()), expected));
}

TEST(ValueEditor, LeavesRoomForAButton) {
    EditorForm form;
    form.Select(5);
    ASSERT_NE(form.Button(), nullptr);
    EXPECT_EQ(WindowText(form.Button()), "Pick");
    EXPECT_EQ(GetWindowLongW(form.Button(), GWL_STYLE) & 0x5001000F, 0x50000000);
    const RECT row = form.RowRect(5);
    const RECT edit = form.Place(form.Edit());
    const RECT button = form.Place(form.Button());
    EXPECT_EQ(edit.left, ScaleForDpi(150) - 5);
    EXPECT_EQ(edit.right, button.left);
    EXPECT_EQ(button.right, row.right - 1);
    EXPECT_EQ(button.top, edit.top);
    EXPECT_EQ(button.bottom - button.top, ScaleForDpi(21));
    clFont font;
    font.Create(nullptr, nullptr, ScaleForDpi(12));
    const clScreenContext screen;
    EXPECT_EQ(button.right - button.left, font.TextWidth(screen.Get(), L"Pick") + 20);
    EXPECT_EQ(GetFocus(), form.Edit());
}

TEST(ValueEditor, KeepsToAWidthOfTheValue) {
    EditorForm form;
    clValueRowParams params;
    params.valueX = 100;
    params.valueWidth = 120;
    const std::int32_t row = form.Add(ValueKind::Edit, L"n", L"v", params);
    form.Select(row);
    EXPECT_EQ(form.Place(form.Edit()).left, ScaleForDpi(100) - 5);
    EXPECT_EQ(form.Place(form.Edit()).right, ScaleForDpi(100) - 5 + ScaleForDpi(120));
}

TEST(ValueEditor, ButtonCallsWithTheTextTakenOver) {
    EditorForm form;
    form.Select(5);
    SendMessageW(form.Edit(), EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(L"typed"));
    EditorForm::told.clear();
    Click(ScreenMiddle(form.Button()));
    EXPECT_THAT(EditorForm::told, ElementsAre("button 5 typed"));
}

TEST(ValueEditor, ARowWithoutAnEditorMayHaveAButton) {
    EditorForm form;
    clValueRowParams params;
    params.buttonCaption = L"Go";
    params.buttonCallback = &EditorForm::NoteButton;
    const std::int32_t row = form.Add(ValueKind::Text, L"name", L"value", params);
    form.Select(row);
    EXPECT_EQ(form.Edit(), nullptr);
    ASSERT_NE(form.Button(), nullptr);
    Click(ScreenMiddle(form.Button()));
    EXPECT_THAT(EditorForm::told, ElementsAre("button 10 value"));
    form.Select(0);
    EXPECT_EQ(form.Button(), nullptr);
}

TEST(ValueEditor, StaysWhereItsRowWasWhenTheListScrolls) {
    EditorForm form;
    form.Fill(40);
    form.Select(5);
    const RECT edit = form.Place(form.Edit());
    const RECT button = form.Place(form.Button());
    for (const UINT message : {UINT{WM_VSCROLL}, UINT{WM_MOUSEWHEEL}, UINT{LB_SETTOPINDEX}}) {
        const LRESULT before = form.Ask(LB_GETTOPINDEX);
        form.Ask(message, message == WM_MOUSEWHEEL ? MAKEWPARAM(0, static_cast<WORD>(-WHEEL_DELTA))
                          : message == LB_SETTOPINDEX ? 11
                                                      : SB_LINEDOWN);
        PumpMessages();
        EXPECT_NE(form.Ask(LB_GETTOPINDEX), before) << message;
        EXPECT_TRUE(IsSame(form.Place(form.Edit()), edit)) << message;
        EXPECT_TRUE(IsSame(form.Place(form.Button()), button)) << message;
        EXPECT_EQ(form.list.Editor().Row(), 5);
    }
    form.list.SelectRowAt(9);
    EXPECT_EQ(form.Place(form.Edit()).top, form.RowRect(9).top);
}

TEST(ValueEditor, OpensALinkByADoubleClick) {
    EditorForm form;
    static std::vector<std::string> opened;
    opened.clear();
    using Execute = HINSTANCE WINAPI(HWND, LPCWSTR, LPCWSTR, LPCWSTR, LPCWSTR, INT);
    const ImportStub stub("ShellExecuteW", static_cast<Execute*>([](HWND, LPCWSTR, LPCWSTR file,
                                                                    LPCWSTR, LPCWSTR, INT show) {
                              opened.push_back(Utf8(file) + " " + std::to_string(show));
                              return HINSTANCE{};
                          }));
    const std::int32_t row = form.Add(ValueKind::Link, L"name", L"http://localhost/");
    DoubleClick(form.InRow(row, 60));
    EXPECT_THAT(opened, ElementsAre("http://localhost/ 1"));
    EXPECT_THAT(form.Taken(), Contains("double 10"));
    DoubleClick(form.InRow(0, 60));
    EXPECT_EQ(opened.size(), 1U);
    EXPECT_THAT(form.Taken(), Contains("double 0"));
}

}  // namespace
