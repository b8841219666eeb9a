#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cwchar>
#include <string>

#include "tests/support/text.h"
#include "tests/toolkit/list_form.h"
#include "tests/ui/pump.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

NMLISTVIEW Change(int row, int column, UINT mask, UINT before, UINT after) {
    NMLISTVIEW change = {};
    change.iItem = row;
    change.iSubItem = column;
    change.uChanged = mask;
    change.uOldState = before;
    change.uNewState = after;
    return change;
}

NMITEMACTIVATE ClickOn(int row, int column, POINT point) {
    NMITEMACTIVATE click = {};
    click.iItem = row;
    click.iSubItem = column;
    click.ptAction = point;
    return click;
}

NMHEADERW WidthChange(int column, HDITEMW& item, int width) {
    item.mask = HDI_WIDTH;
    item.cxy = width;
    NMHEADERW change = {};
    change.iItem = column;
    change.pitem = &item;
    return change;
}

TEST(ListRoute, LeavesOtherMessagesAlone) {
    ListForm form;
    form.Fill(2);
    const UINT others[] = {WM_SIZE, WM_COMMAND, WM_TIMER, WM_MOUSEMOVE, WM_USER + 5};
    for (const UINT message : others) {
        EXPECT_EQ(form.Send(message, 0, 0), 0) << message;
        EXPECT_EQ(form.handled, 0u) << message;
    }
    // Another control's notifications, one with the code of a list.
    const HWND other = form.form.Window();
    EXPECT_EQ(form.Notify(Change(0, 0, LVIF_STATE, 0, LVIS_SELECTED), LVN_ITEMCHANGED, other), 0);
    EXPECT_EQ(form.handled, 0u);
    EXPECT_EQ(form.Notify(NMHEADERW{}, HDN_ENDDRAG, other), 0);
    EXPECT_THAT(form.list.calls, IsEmpty());
}

TEST(ListRoute, TellsAStateChangeInOrder) {
    ListForm form;
    form.Fill(3);
    form.Tick(2);
    form.list.recordChanges = true;
    form.Notify(Change(2, 1, LVIF_STATE, 0x1000, 0x2002), LVN_ITEMCHANGED);
    EXPECT_EQ(form.handled, 1u);
    EXPECT_THAT(form.list.calls,
                ElementsAre("changed 2,1 8: 1000 to 2002", "selected 2,1", "checked 2"));
}

TEST(ListRoute, ReadsTheTickFromTheRowItself) {
    ListForm form;
    form.Fill(3);
    form.Notify(Change(1, 0, LVIF_STATE, 0x1000, 0x2000), LVN_ITEMCHANGED);
    EXPECT_THAT(form.list.calls, ElementsAre("unchecked 1"));
}

TEST(ListRoute, OnlyATickOrASelectionThatFlipsIsTold) {
    ListForm form;
    form.Fill(3);
    form.list.recordChanges = true;
    form.Notify(Change(0, 0, LVIF_STATE, 0x1002, 0x1003), LVN_ITEMCHANGED);
    form.Notify(Change(0, 2, LVIF_TEXT, 0, 0), LVN_ITEMCHANGED);
    form.Notify(Change(0, 2, LVIF_TEXT | LVIF_STATE, 0, 0x2002), LVN_ITEMCHANGED);
    EXPECT_EQ(form.handled, 1u);
    EXPECT_THAT(form.list.calls, ElementsAre("changed 0,0 8: 1002 to 1003", "changed 0,2 1: 0 to 0",
                                             "changed 0,2 9: 0 to 2002"));
}

TEST(ListRoute, DropsChangesInABatch) {
    ListForm form;
    form.Fill(3);
    form.list.recordChanges = true;
    form.list.BeginBatch();
    form.list.SelectRow(1, false);
    form.Notify(Change(2, 0, LVIF_STATE, 0, 0x2002), LVN_ITEMCHANGED);
    EXPECT_EQ(form.handled, 0u);
    EXPECT_THAT(form.list.calls, IsEmpty());
    form.list.EndBatch();
    form.list.SelectRow(2, false);
    EXPECT_EQ(form.list.Count("selected 2,0"), 1);
}

TEST(ListRoute, EndOfABatchRedrawsTheWholeList) {
    ListForm form;
    form.Fill(3);
    PumpMessages();
    form.list.BeginBatch();
    form.list.SelectRow(1, false);
    EXPECT_FALSE(GetUpdateRect(form.Control(), nullptr, FALSE));
    form.list.EndBatch();
    RECT update = {};
    EXPECT_TRUE(GetUpdateRect(form.Control(), &update, FALSE));
    RECT client = {};
    GetClientRect(form.Control(), &client);
    EXPECT_EQ(update.right, client.right);
    EXPECT_EQ(update.bottom, client.bottom);
    form.list.recordDrawing = true;
    PumpMessages();
    EXPECT_EQ(form.list.Count("draw"), 3);
}

TEST(ListRoute, EndOfABatchErasesTheListByItself) {
    ListForm form;
    form.Fill(3);
    form.list.swallowRedraw = true;
    form.list.erasures = 0;
    form.list.EndBatch();
    EXPECT_TRUE(GetUpdateRect(form.Control(), nullptr, FALSE));
    PumpMessages();
    EXPECT_GE(form.list.erasures, 1);
}

TEST(ListRoute, GivesTheFourClicksWithPlaceAndLeavesThemUnhandled) {
    struct Row {
        UINT code;
        const char* call;
    };
    const Row rows[] = {
        {static_cast<UINT>(NM_CLICK), "click 1,2 at 30,40"},
        {static_cast<UINT>(NM_DBLCLK), "double click 1,2 at 30,40"},
        {static_cast<UINT>(NM_RCLICK), "right click 1,2 at 30,40"},
        {static_cast<UINT>(NM_RDBLCLK), "right double click 1,2 at 30,40"},
    };
    ListForm form;
    for (const Row& row : rows) {
        form.list.Forget();
        EXPECT_EQ(form.Notify(ClickOn(1, 2, {30, 40}), row.code), 0);
        EXPECT_EQ(form.handled, 0u) << row.call;
        EXPECT_THAT(form.list.calls, ElementsAre(row.call));
    }
}

TEST(ListRoute, PassesDragAndColumnClickOn) {
    ListForm form;
    form.Notify(Change(3, 0, 0, 0, 0), LVN_BEGINDRAG);
    EXPECT_EQ(form.handled, 0u);
    form.Notify(Change(-1, 2, 0, 0, 0), LVN_COLUMNCLICK);
    EXPECT_EQ(form.handled, 0u);
    EXPECT_THAT(form.list.calls, ElementsAre("drag 3", "column 2"));
}

TEST(ListRoute, AnswersTheMarquee) {
    ListForm form;
    EXPECT_EQ(form.Notify(Change(-1, 0, 0, 0, 0), LVN_MARQUEEBEGIN), 0);
    EXPECT_EQ(form.handled, 1u);
    form.list.marqueeAnswer = 5;
    EXPECT_EQ(form.Notify(Change(-1, 0, 0, 0, 0), LVN_MARQUEEBEGIN), 5);
    EXPECT_EQ(form.handled, 1u);
}

NMLVDISPINFOW LabelEdit(int row, wchar_t* text) {
    NMLVDISPINFOW info = {};
    info.item.iItem = row;
    info.item.pszText = text;
    return info;
}

TEST(ListRoute, TellsTheEndOfALabelEditWithTheTextInTheList) {
    ListForm form;
    form.Fill(2);
    wchar_t text[] = L"renamed";
    EXPECT_EQ(form.Notify(LabelEdit(1, text), LVN_ENDLABELEDITW), 0);
    EXPECT_EQ(form.handled, 1u);
    EXPECT_EQ(form.Notify(LabelEdit(1, nullptr), LVN_ENDLABELEDITW), 0);
    EXPECT_EQ(form.handled, 1u);
    EXPECT_THAT(form.list.calls,
                ElementsAre("label end 1 renamed, cell renamed", "label cancelled 1"));
    EXPECT_EQ(Utf8(form.list.CellText(1, 0)), "renamed");
}

TEST(ListRoute, IgnoresALabelEditOfNoRow) {
    ListForm form;
    form.list.labelEditAnswer = 1;
    wchar_t text[] = L"renamed";
    EXPECT_EQ(form.Notify(LabelEdit(-1, text), LVN_ENDLABELEDITW), 0);
    EXPECT_EQ(form.handled, 0u);
    EXPECT_EQ(form.Notify(LabelEdit(-1, nullptr), LVN_BEGINLABELEDITW), 0);
    EXPECT_EQ(form.handled, 0u);
    EXPECT_THAT(form.list.calls, IsEmpty());
}

TEST(ListRoute, AnswersTheBeginOfALabelEdit) {
    ListForm form;
    EXPECT_EQ(form.Notify(LabelEdit(0, nullptr), LVN_BEGINLABELEDITW), 0);
    EXPECT_EQ(form.handled, 1u);
    form.list.labelEditAnswer = 1;
    EXPECT_EQ(form.Notify(LabelEdit(0, nullptr), LVN_BEGINLABELEDITW), 1);
    EXPECT_EQ(form.handled, 1u);
    EXPECT_THAT(form.list.calls, ElementsAre("label begin 0", "label begin 0"));
}

TEST(ListRoute, CutsTheInfoTipToTheControlsBuffer) {
    ListForm form;
    form.list.infoTip = L"0123456789";
    wchar_t buffer[16];
    NMLVGETINFOTIPW tip = {};
    tip.iItem = 4;
    tip.pszText = buffer;
    struct Row {
        int size;
        const char* text;
    };
    for (const Row& row :
         {Row{11, "0123456789"}, Row{10, "012345678"}, Row{1, ""}, Row{0, "0123456789"}}) {
        std::wmemset(buffer, L'#', 16);
        tip.cchTextMax = row.size;
        EXPECT_EQ(form.Notify(tip, LVN_GETINFOTIPW), 0);
        EXPECT_EQ(form.handled, 1u);
        EXPECT_EQ(Utf8(buffer), row.text) << row.size;
        EXPECT_EQ(buffer[std::wcslen(buffer) + 1], L'#') << row.size;
    }
    EXPECT_EQ(form.list.Count("tip 4"), 4);
}

TEST(ListRoute, DrawsTheRowsOfItsOwnControlOnly) {
    ListForm form;
    form.Fill(3);
    form.list.recordDrawing = true;
    DRAWITEMSTRUCT item = {};
    const auto draw = [&](UINT row, UINT_PTR id) {
        item.itemID = row;
        form.Send(WM_DRAWITEM, id, reinterpret_cast<LPARAM>(&item));
        EXPECT_EQ(form.handled, 0u);
    };
    draw(2, ListForm::listId);
    draw(3, ListForm::listId);  // as many as there are rows
    draw(4, ListForm::listId);
    draw(0xFFFFFFFF, ListForm::listId);
    draw(1, ListForm::listId + 1);
    draw(1, 0);
    EXPECT_THAT(form.list.calls, ElementsAre("draw 2", "draw 3"));
}

TEST(ListRoute, IsAskedByTheControlToDrawEachRow) {
    ListForm form;
    form.Fill(3);
    form.list.recordDrawing = true;
    InvalidateRect(form.Control(), nullptr, TRUE);
    UpdateWindow(form.Control());
    EXPECT_THAT(form.list.calls, ElementsAre("draw 0", "draw 1", "draw 2"));
}

TEST(ListRoute, OpensTheMenuForItsOwnControlWithUnsignedCoordinates) {
    ListForm form;
    const auto menuOf = [&](HWND window, int x, int y) {
        form.Send(WM_CONTEXTMENU, reinterpret_cast<WPARAM>(window), MAKELPARAM(x, y));
        EXPECT_EQ(form.handled, 0u);
    };
    menuOf(form.Control(), 300, 200);
    menuOf(form.Control(), -1, -1);
    menuOf(form.form.Window(), 5, 5);
    EXPECT_THAT(form.list.calls, ElementsAre("menu 300,200", "menu 65535,65535"));
}

TEST(ListRoute, TellsWhatTheHeaderDoes) {
    ListForm form;
    NMHEADERW change = {};
    change.iItem = 2;
    form.Notify(change, HDN_ENDTRACKW, form.Header());
    EXPECT_EQ(form.handled, 0u);
    form.Notify(change, HDN_ENDDRAG, form.Header());
    EXPECT_EQ(form.handled, 0u);
    EXPECT_THAT(form.list.calls, ElementsAre("resized 2", "reordered"));
}

// Windows' list hands its header's announcements on to the form, Wine's keeps
// them: the width must be kept on either way.
TEST(ListMinimumWidth, IsKeptWhereverTheHeaderAnnouncesTheWidth) {
    ListForm form;
    HDITEMW item = {};
    EXPECT_EQ(form.Notify(WidthChange(0, item, 49), HDN_ITEMCHANGINGW, form.Header()), 1);
    EXPECT_EQ(form.handled, 1u);
    EXPECT_EQ(form.list.ColumnWidth(0), 50);

    NMHEADERW change = WidthChange(1, item, 4);
    change.hdr = {form.Header(), 0, static_cast<UINT>(HDN_ITEMCHANGINGW)};
    EXPECT_EQ(form.Ask(WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&change)), 1);
    EXPECT_EQ(form.list.ColumnWidth(1), 5);
}

TEST(ListMinimumWidth, LetsEveryOtherChangePass) {
    ListForm form;
    HDITEMW item = {};
    EXPECT_EQ(form.Notify(WidthChange(0, item, 50), HDN_ITEMCHANGINGW, form.Header()), 0);
    EXPECT_EQ(form.handled, 0u);
    NMHEADERW change = WidthChange(0, item, 10);
    item.mask |= HDI_FORMAT;
    EXPECT_EQ(form.Notify(change, HDN_ITEMCHANGINGW, form.Header()), 0);
    change.pitem = nullptr;
    EXPECT_EQ(form.Notify(change, HDN_ITEMCHANGINGW, form.Header()), 0);
    // A column that the form put in past the list has no minimum.
    LVCOLUMNW column = {};
    column.mask = LVCF_WIDTH;
    column.cx = 80;
    form.Ask(LVM_INSERTCOLUMNW, 3, reinterpret_cast<LPARAM>(&column));
    EXPECT_EQ(form.Notify(WidthChange(3, item, 1), HDN_ITEMCHANGINGW, form.Header()), 0);
    EXPECT_EQ(form.handled, 0u);
    EXPECT_EQ(form.list.ColumnWidth(0), 200);
}

TEST(ListMinimumWidth, GoesWithItsColumn) {
    ListForm form;
    form.list.RemoveColumn(0);
    HDITEMW item = {};
    EXPECT_EQ(form.Notify(WidthChange(0, item, 20), HDN_ITEMCHANGINGW, form.Header()), 0);
    EXPECT_EQ(form.Notify(WidthChange(0, item, 4), HDN_ITEMCHANGINGW, form.Header()), 1);
    form.list.AddColumn(L"Wide", 300, LVCFMT_LEFT, 250);
    EXPECT_EQ(form.Notify(WidthChange(2, item, 249), HDN_ITEMCHANGINGW, form.Header()), 1);
    EXPECT_EQ(form.list.ColumnWidth(2), 250);
}

// The header asks its list, on either platform, when an image is -1.
TEST(ListHeaderImages, AreNoneWhenTheHeaderAsks) {
    ListForm form;
    for (const UINT code :
         {static_cast<UINT>(HDN_GETDISPINFOW), static_cast<UINT>(HDN_GETDISPINFOA)}) {
        NMHDDISPINFOW asked = {};
        asked.hdr = {form.Header(), 0, code};
        asked.mask = HDI_IMAGE;
        asked.iImage = 3;
        form.Ask(WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&asked));
        EXPECT_EQ(asked.iImage, -1);
    }
}

// Every operation sends the form a message that leaves another value in its
// handled flag.
TEST(ListRoute, KeepsItsAnswerWhenAnOperationSendsMessages) {
    ListForm form;
    form.Fill(3);
    form.Tick(1);
    constexpr UINT disturb = WM_APP + 3;
    std::uint32_t* flag = nullptr;
    std::uint32_t leave = 0;
    int disturbed = 0;
    form.form.route = [&](HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                          std::uint32_t* handled) -> LRESULT {
        if (message == disturb) {
            ++disturbed;
            *handled = *flag = leave;
            return 0;
        }
        return form.list.Route(window, message, wParam, lParam, handled);
    };
    form.list.nestedMessage = disturb;
    flag = &form.handled;

    leave = 0;
    form.Notify(Change(1, 0, LVIF_STATE, 0x1000, 0x2002), LVN_ITEMCHANGED);
    EXPECT_EQ(form.handled, 1u);
    form.Notify(LabelEdit(1, nullptr), LVN_ENDLABELEDITW);
    EXPECT_EQ(form.handled, 1u);
    form.Notify(LabelEdit(1, nullptr), LVN_BEGINLABELEDITW);
    EXPECT_EQ(form.handled, 1u);
    leave = 1;
    form.Notify(ClickOn(1, 2, {}), static_cast<UINT>(NM_CLICK));
    EXPECT_EQ(form.handled, 0u);
    form.Notify(Change(-1, 2, 0, 0, 0), LVN_COLUMNCLICK);
    EXPECT_EQ(form.handled, 0u);
    EXPECT_GE(disturbed, 6);
}

TEST(ListHook, TellsOfScrollingAndLetsItHappen) {
    ListForm form;
    form.Fill(200);
    const LRESULT top = form.Ask(LVM_GETTOPINDEX);
    form.Ask(WM_VSCROLL, MAKEWPARAM(SB_PAGEDOWN, 0), 0);
    form.Ask(WM_VSCROLL, MAKEWPARAM(SB_THUMBPOSITION, 17), 0);
    EXPECT_THAT(form.list.calls, ElementsAre("scroll 3 0", "scroll 4 17"));
    EXPECT_GT(form.Ask(LVM_GETTOPINDEX), top);
}

}  // namespace
