#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "tests/support/import_stub.h"
#include "tests/support/text.h"
#include "tests/toolkit/list_form.h"
#include "tests/ui/keys.h"
#include "tests/ui/pointer.h"
#include "tests/ui/pump.h"
#include "toolkit/dpi.h"

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using EditMode = XListView::EditMode;
using Cell = std::pair<std::int32_t, std::int32_t>;

constexpr Cell none = {-1, -1};

// A list of four rows that may be edited, with the operations that ask left out
// of its record.
class EditorForm : public ListForm {
public:
    explicit EditorForm(EditMode mode = EditMode::AllColumns, std::int32_t rows = 4) {
        Fill(rows);
        list.SetEditMode(mode);
    }

    HWND Edit() const { return FindWindowExW(Control(), nullptr, L"EDIT", nullptr); }
    void Start(std::int32_t row, std::int32_t column) {
        list.Editor().Start(list, row, column);
        PumpMessages();
        list.Forget();
    }
    void SetText(const wchar_t* text) const { SetWindowTextW(Edit(), text); }
    std::string Text() const {
        wchar_t text[200] = {};
        GetWindowTextW(Edit(), text, 200);
        return Utf8(text);
    }
    void SetCaret(int start, int end) const {
        SendMessageW(Edit(), EM_SETSEL, static_cast<WPARAM>(start), end);
    }
    Cell Caret() const {
        DWORD start = 0;
        DWORD end = 0;
        SendMessageW(Edit(), EM_GETSEL, reinterpret_cast<WPARAM>(&start),
                     reinterpret_cast<LPARAM>(&end));
        return {static_cast<std::int32_t>(start), static_cast<std::int32_t>(end)};
    }
    // The cell being edited, or `none`.
    Cell Edited() {
        const bool isOpen = Edit() != nullptr;
        EXPECT_EQ(isOpen, list.Editor().Row() != -1);
        return isOpen ? Cell(list.Editor().Row(), list.Editor().Column()) : none;
    }
};

TEST(ListEditor, StandsOverItsCellWithAllOfItsTextSelected) {
    EditorForm form;
    form.Start(2, 1);
    const HWND edit = form.Edit();
    ASSERT_NE(edit, nullptr);
    RECT cell = {};
    cell.left = LVIR_LABEL;
    cell.top = 1;
    form.Ask(LVM_GETSUBITEMRECT, 2, reinterpret_cast<LPARAM>(&cell));
    RECT rect = {};
    GetWindowRect(edit, &rect);
    MapWindowPoints(nullptr, form.Control(), reinterpret_cast<POINT*>(&rect), 2);
    EXPECT_TRUE(EqualRect(&rect, &cell));
    EXPECT_EQ(GetWindowLongPtrW(edit, GWL_STYLE) & 0x50010080, 0x50010080);
    EXPECT_NE(GetWindowLongPtrW(edit, GWL_EXSTYLE) & WS_EX_CLIENTEDGE, 0);
    EXPECT_EQ(GetFocus(), edit);
    EXPECT_EQ(form.Text(), "r2c1");
    EXPECT_EQ(form.Caret(), Cell(0, 4));
    EXPECT_EQ(form.Marks(), "nnsn");

    LOGFONTW font = {};
    const auto handle = reinterpret_cast<HGDIOBJ>(SendMessageW(edit, WM_GETFONT, 0, 0));
    ASSERT_NE(GetObjectW(handle, sizeof(font), &font), 0);
    EXPECT_EQ(Utf8(font.lfFaceName), "Tahoma");
    EXPECT_EQ(font.lfHeight, ScaleForDpi(13));
}

TEST(ListEditor, OpensOnAPressByTheEditMode) {
    struct Row {
        EditMode mode;
        std::int32_t column;
        Cell edited;
    };
    const Row rows[] = {
        {EditMode::None, 0, none},          {EditMode::None, 1, none},
        {EditMode::FirstColumn, 0, {1, 0}}, {EditMode::FirstColumn, 1, none},
        {EditMode::AllColumns, 0, {1, 0}},  {EditMode::AllColumns, 2, {1, 2}},
    };
    for (const Row& row : rows) {
        EditorForm form(row.mode);
        Click(form.InCell(1, row.column, 60));
        EXPECT_EQ(form.Edited(), row.edited) << row.column;
        EXPECT_EQ(form.Marks(), "nsnn");
        // A press that opens the editor is not the list's.
        EXPECT_EQ(form.list.Count("click"), row.edited == none ? 1 : 0) << row.column;
        EXPECT_EQ(form.list.Count("left 1"), 1);
        EXPECT_EQ(GetFocus(), row.edited == none ? form.Control() : form.Edit());
    }
}

TEST(ListEditor, StaysShutWhereTheFormRefuses) {
    EditorForm form;
    form.list.lockedColumns = {1};
    Click(form.InCell(1, 1, 60));
    EXPECT_EQ(form.Edited(), none);
    EXPECT_THAT(form.list.calls, Contains("may edit 1,1"));
    EXPECT_EQ(form.Marks(), "nsnn");
}

// Where the pointer enters a window, or a window gets the focus, a display may let
// go of the keys that it does not know of: they are held down again until they stay.
// Wine takes the right Shift key for the left one.
bool HoldUntilDown(WORD key) {
    const bool isShift = key == VK_LSHIFT || key == VK_RSHIFT;
    return PumpUntil([key, isShift] {
        HoldKey(key);
        PumpFor(30);
        return GetAsyncKeyState(isShift ? VK_SHIFT : key) < 0;
    });
}

TEST(ListEditor, StaysShutOnAPressThatSelects) {
    int dx = 20;  // apart, so that no press is the second of a double click
    for (const int virtualKey : {VK_LCONTROL, VK_LSHIFT, VK_RCONTROL, VK_RSHIFT}) {
        const auto key = static_cast<WORD>(virtualKey);
        EditorForm form;
        MovePointer(form.InCell(1, 1, dx += 15));
        ASSERT_TRUE(HoldUntilDown(key)) << key;
        PressButton();
        ReleaseButton();
        PumpMessages();
        ReleaseKey(key);
        PumpMessages();
        EXPECT_EQ(form.Edited(), none) << key;
        EXPECT_EQ(form.list.Count("left 1"), 1) << key;
        EXPECT_EQ(form.list.Count("may edit"), 0) << key;
    }
}

int keyHeldDown = 0;

SHORT WINAPI OneKeyIsDown(int key) {
    return key == keyHeldDown ? SHORT{-32768} : SHORT{0};
}

// By what the platform tells of each key by itself.
TEST(ListEditor, StaysShutWhileEitherKeyOfAKindIsDown) {
    for (const int key : {VK_LCONTROL, VK_RCONTROL, VK_LSHIFT, VK_RSHIFT}) {
        EditorForm form;
        keyHeldDown = key;
        const ImportStub stub("GetAsyncKeyState", &OneKeyIsDown);
        Click(form.InCell(1, 1, 60));
        EXPECT_EQ(form.Edited(), none) << key;
    }
}

TEST(ListEditor, StaysShutOnACheckBoxAndBelowTheRows) {
    EditorForm form;
    Click(form.InCell(1, 0, 8));
    EXPECT_EQ(form.Edited(), none);
    EXPECT_EQ(form.Marks(), "nSnn");
    Click(form.BelowRows(60));
    EXPECT_EQ(form.Edited(), none);
}

TEST(ListEditor, CommitsBeforeItOpensOnAnotherCell) {
    EditorForm form;
    form.Start(0, 0);
    form.SetText(L"new");
    Click(form.InCell(2, 1, 60));
    EXPECT_EQ(form.Edited(), Cell(2, 1));
    EXPECT_EQ(form.list.Count("edited 0,0 new, cell new"), 1);
    EXPECT_EQ(Utf8(form.list.CellText(0, 0)), "new");
    EXPECT_EQ(form.Text(), "r2c1");
}

TEST(ListEditor, CommitsOnAPressThatOpensNone) {
    EditorForm form;
    form.Start(0, 0);
    form.SetText(L"new");
    Click(form.BelowRows(60));
    EXPECT_EQ(form.Edited(), none);
    EXPECT_EQ(form.list.Count("edited 0,0 new"), 1);
    form.Start(0, 0);
    form.SetText(L"newer");
    Click(form.InCell(3, 0, 8));  // a check box
    EXPECT_EQ(form.Edited(), none);
    EXPECT_EQ(form.list.Count("edited 0,0 newer"), 1);
}

TEST(ListEditor, TellsNothingOfATextThatStayed) {
    EditorForm form;
    form.Start(0, 0);
    PressKey(VK_RETURN);
    EXPECT_EQ(form.Edited(), none);
    EXPECT_EQ(form.list.Count("edited"), 0);
    // Case counts.
    form.Start(0, 0);
    form.SetText(L"R0c0");
    PressKey(VK_RETURN);
    EXPECT_EQ(form.list.Count("edited 0,0 R0c0"), 1);
}

TEST(ListEditor, ReturnCommitsTypedText) {
    EditorForm form;
    form.Start(1, 2);
    TypeText(L"abc");
    PressKey(VK_RETURN);
    EXPECT_EQ(form.Edited(), none);
    EXPECT_THAT(form.list.calls, Contains("edited 1,2 abc, cell abc"));
    EXPECT_TRUE(IsWindow(form.form.Window()));
    EXPECT_EQ(GetFocus(), form.Control());
}

TEST(ListEditor, EscapeLeavesTheOldText) {
    EditorForm form;
    form.Start(1, 2);
    TypeText(L"abc");
    form.list.Forget();
    PressKey(VK_ESCAPE);
    EXPECT_EQ(form.Edited(), none);
    EXPECT_EQ(form.list.Count("edited"), 0);
    EXPECT_EQ(Utf8(form.list.CellText(1, 2)), "r1c2");
}

TEST(ListEditor, ArrowsMoveFromTheEndOfTheText) {
    struct Row {
        WORD key;
        Cell from;
        Cell to;
    };
    const Row rows[] = {
        {VK_RIGHT, {1, 0}, {1, 1}}, {VK_RIGHT, {1, 1}, {1, 2}}, {VK_RIGHT, {1, 2}, {1, 2}},
        {VK_LEFT, {1, 2}, {1, 1}},  {VK_LEFT, {1, 0}, {1, 0}},  {VK_UP, {1, 1}, {0, 1}},
        {VK_UP, {0, 1}, {0, 1}},    {VK_DOWN, {2, 1}, {3, 1}},  {VK_DOWN, {3, 1}, {3, 1}},
    };
    EditorForm form;
    for (const bool selected : {false, true}) {
        for (const Row& row : rows) {
            form.Start(row.from.first, row.from.second);
            form.SetCaret(selected ? 0 : 4, selected ? 2 : 4);
            PressKey(row.key);
            EXPECT_EQ(form.Edited(), row.to)
                << row.key << " from " << row.from.first << "," << row.from.second << selected;
        }
    }
}

TEST(ListEditor, ArrowsMoveTheCaretInsideTheText) {
    EditorForm form;
    form.Start(1, 1);
    form.SetCaret(2, 2);
    PressKey(VK_RIGHT);
    EXPECT_EQ(form.Edited(), Cell(1, 1));
    EXPECT_EQ(form.Caret(), Cell(3, 3));
    PressKey(VK_LEFT);
    EXPECT_EQ(form.Caret(), Cell(2, 2));
    form.SetCaret(0, 0);
    PressKey(VK_LEFT);
    PressKey(VK_DOWN);
    EXPECT_EQ(form.Edited(), Cell(1, 1));
    form.SetCaret(3, 3);
    PressKey(VK_RIGHT);  // to the end
    EXPECT_EQ(form.Edited(), Cell(1, 1));
    PressKey(VK_RIGHT);  // and on
    EXPECT_EQ(form.Edited(), Cell(1, 2));
}

TEST(ListEditor, ArrowsPassOverColumnsThatTheFormRefuses) {
    EditorForm form;
    form.list.lockedColumns = {1};
    form.Start(1, 0);
    PressKey(VK_RIGHT);
    EXPECT_EQ(form.Edited(), Cell(1, 2));
    PressKey(VK_LEFT);
    EXPECT_EQ(form.Edited(), Cell(1, 0));
    form.list.lockedColumns = {1, 2};
    PressKey(VK_RIGHT);
    EXPECT_EQ(form.Edited(), Cell(1, 0));
}

TEST(ListEditor, ArrowsStayInTheFirstColumnWhereOnlyThatMayBeEdited) {
    EditorForm form(EditMode::FirstColumn);
    form.Start(1, 0);
    PressKey(VK_RIGHT);
    EXPECT_EQ(form.Edited(), Cell(1, 0));
    form.SetCaret(0, 4);
    PressKey(VK_DOWN);
    EXPECT_EQ(form.Edited(), Cell(2, 0));
}

TEST(ListEditor, AMoveCommits) {
    EditorForm form;
    form.Start(1, 1);
    TypeText(L"abc");
    PressKey(VK_RIGHT);
    EXPECT_EQ(form.Edited(), Cell(1, 2));
    EXPECT_EQ(form.list.Count("edited 1,1 abc, cell abc"), 1);
    PressKey(VK_DOWN);
    EXPECT_EQ(form.list.Count("edited"), 1);
    EXPECT_EQ(form.Marks(), "nnsn");
}

TEST(ListEditor, OtherKeysStayInTheField) {
    EditorForm form;
    form.Start(1, 1);
    form.SetCaret(4, 4);
    PressKey(VK_BACK);
    PressKey(VK_HOME);
    TypeText(L"x");
    EXPECT_EQ(form.Text(), "xr1c");
    EXPECT_EQ(form.Edited(), Cell(1, 1));
}

TEST(ListEditor, WheelScrollsTheListBeneath) {
    constexpr auto twoNotchesDown = static_cast<WORD>(-2 * WHEEL_DELTA);
    EditorForm form(EditMode::AllColumns, 200);
    form.Start(3, 1);
    const LRESULT top = form.Ask(LVM_GETTOPINDEX);
    SendMessageW(form.Edit(), WM_MOUSEWHEEL, MAKEWPARAM(0, twoNotchesDown), 0);
    EXPECT_EQ(form.Ask(LVM_GETTOPINDEX), top);  // posted, not sent
    PumpMessages();
    EXPECT_GT(form.Ask(LVM_GETTOPINDEX), top);
    EXPECT_EQ(form.list.Editor().Row(), 3);
}

TEST(ListEditor, WantsAllKeys) {
    EditorForm form;
    form.Start(1, 1);
    EXPECT_EQ(SendMessageW(form.Edit(), WM_GETDLGCODE, 0, 0), DLGC_WANTALLKEYS);
}

TEST(ListEditor, ForgetsARowThatIsGone) {
    EditorForm form;
    form.Start(3, 1);
    form.SetText(L"new");
    form.Ask(LVM_DELETEITEM, 3);
    form.list.Editor().Commit();
    EXPECT_EQ(form.list.Count("edited"), 0);
    form.list.Editor().Close();
    EXPECT_EQ(form.Edited(), none);
}

TEST(ListEditor, DoesNotOpenWhereThereIsNoRow) {
    EditorForm form;
    form.list.Editor().Start(form.list, 9, 0);
    EXPECT_EQ(form.Edited(), none);
    form.list.Editor().Commit();
    form.list.Editor().Close();
    EXPECT_EQ(form.list.Count("edited"), 0);
}

TEST(ListEditor, EndsWithItsList) {
    EditorForm form;
    form.Start(1, 1);
    form.SetText(L"new");
    form.form.DestroyWnd();
    EXPECT_EQ(form.list.Editor().Row(), -1);
    form.list.Editor().Commit();
    EXPECT_EQ(form.list.Count("edited"), 0);
}

TEST(ListEditor, KeepsALongTextOfWhichItShowsTheBeginning) {
    EditorForm form;
    const std::wstring text(1500, L'x');
    form.list.SetCell(text.c_str(), 1, 1);
    form.Start(1, 1);
    EXPECT_EQ(GetWindowTextLengthW(form.Edit()), 998);
    PressKey(VK_RETURN);
    EXPECT_EQ(form.list.Count("edited"), 0);
}

}  // namespace
