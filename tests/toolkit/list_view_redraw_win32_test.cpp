// What of a list is marked to be painted anew, and what is drawn at once.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/text.h"
#include "tests/toolkit/list_form.h"
#include "tests/ui/pixels.h"
#include "tests/ui/pointer.h"
#include "tests/ui/pump.h"

using testing::ElementsAre;

namespace {

constexpr COLORREF mark = RGB(255, 0, 255);

RECT BoundsOf(const ListForm& form, std::int32_t row) {
    RECT bounds = {};
    bounds.left = LVIR_BOUNDS;
    form.Ask(LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&bounds));
    return bounds;
}

using Extent = std::pair<LONG, LONG>;

// Top and bottom of what is to be painted.
Extent Marked(HWND window) {
    RECT marked = {};
    GetUpdateRect(window, &marked, FALSE);
    return {marked.top, marked.bottom};
}

Extent RowsFrom(const ListForm& form, std::int32_t first, std::int32_t last) {
    return {BoundsOf(form, first).top, BoundsOf(form, last).bottom};
}

Extent Client(HWND window) {
    RECT client = {};
    GetClientRect(window, &client);
    return {client.top, client.bottom};
}

// A list with a scroll bar, nothing of which is to be painted.
class LongList : public testing::Test {
protected:
    LongList() {
        form.Fill(300);
        ValidateRect(form.Control(), nullptr);
    }
    void Write(std::int32_t row) { XListView::CellWriter(form.list).SetCell(L"written", row, 1); }
    bool SortBackwards() {
        return form.list.SortRows([](LPARAM first, LPARAM second,
                                     LPARAM) -> int { return static_cast<int>(second - first); },
                                  0);
    }
    // Paints over the middle of the scroll bar, or tells whether that is still there.
    void PaintOverScrollBar() {
        const HDC context = GetWindowDC(form.Control());
        SetPixel(context, onScrollBar().x, onScrollBar().y, mark);
        ReleaseDC(form.Control(), context);
        ASSERT_FALSE(ScrollBarIsDrawn());
    }
    bool ScrollBarIsDrawn() const {
        const HDC context = GetWindowDC(form.Control());
        const Colour found{GetPixel(context, onScrollBar().x, onScrollBar().y)};
        ReleaseDC(form.Control(), context);
        return found != Colour{mark};
    }

    ListForm form;

private:
    // From the corner of the window.
    POINT onScrollBar() const {
        SCROLLBARINFO bar = {};
        bar.cbSize = sizeof bar;
        EXPECT_TRUE(GetScrollBarInfo(form.Control(), static_cast<LONG>(OBJID_VSCROLL), &bar));
        RECT window = {};
        GetWindowRect(form.Control(), &window);
        const RECT& place = bar.rcScrollBar;
        return {(place.left + place.right) / 2 - window.left,
                (place.top + place.bottom) / 2 - window.top};
    }
};

TEST_F(LongList, WrittenRowsInViewAreMarkedAlone) {
    {
        XListView::CellWriter cells(form.list);
        cells.SetCell(L"seen", 1, 1);
        cells.SetCell(L"seen too", 1, 2);
        cells.SetCell(L"unseen", 250, 1);
    }
    EXPECT_EQ(Utf8(form.list.CellText(1, 1)), "seen");
    EXPECT_EQ(Utf8(form.list.CellText(1, 2)), "seen too");
    EXPECT_EQ(Utf8(form.list.CellText(250, 1)), "unseen");
    EXPECT_EQ(Marked(form.Control()), RowsFrom(form, 1, 1));
}

TEST_F(LongList, WritingKeepsWhatWasMarkedBefore) {
    const RECT before = BoundsOf(form, 0);
    InvalidateRect(form.Control(), &before, TRUE);
    Write(2);
    EXPECT_EQ(Marked(form.Control()), RowsFrom(form, 0, 2));
}

TEST_F(LongList, WritingKeepsWhatWasMarkedInTheHeader) {
    const RECT part = {5, 2, 9, 7};
    ValidateRect(form.Header(), nullptr);
    InvalidateRect(form.Header(), &part, TRUE);
    Write(2);
    EXPECT_EQ(Marked(form.Header()), Extent(2, 7));
}

TEST_F(LongList, WritingMarksNothingInTheHeader) {
    ValidateRect(form.Header(), nullptr);
    Write(2);
    EXPECT_FALSE(GetUpdateRect(form.Header(), nullptr, FALSE));
}

TEST_F(LongList, WritingKeepsWhatWasMarkedInTheEditor) {
    form.list.Editor().Start(form.list, 1, 1);
    const HWND editor = GetFocus();
    ASSERT_EQ(GetParent(editor), form.Control());
    PumpMessages();
    InvalidateRect(editor, nullptr, TRUE);
    Write(2);
    EXPECT_TRUE(GetUpdateRect(editor, nullptr, FALSE));
}

TEST(EditableList, WritingKeepsWhatWasMarkedInTheLabelEditor) {
    ListForm form(LVS_EDITLABELS);
    form.Fill(3);
    const auto editor = reinterpret_cast<HWND>(form.Ask(LVM_EDITLABELW, 1));
    ASSERT_NE(editor, nullptr);
    PumpMessages();
    InvalidateRect(editor, nullptr, TRUE);
    XListView::CellWriter(form.list).SetCell(L"written", 2, 1);
    EXPECT_TRUE(GetUpdateRect(editor, nullptr, FALSE));
}

TEST_F(LongList, AWriterWithoutACellMarksNothing) {
    { const XListView::CellWriter cells(form.list); }
    EXPECT_FALSE(GetUpdateRect(form.Control(), nullptr, FALSE));
}

TEST_F(LongList, WritingGoesOnToBeShown) {
    Write(2);
    ValidateRect(form.Control(), nullptr);
    form.list.SetCell(L"later", 3, 1);
    EXPECT_EQ(Marked(form.Control()), RowsFrom(form, 3, 3));
}

// It is right as it is, and takes longer than all the cells.
TEST_F(LongList, WritingDrawsNoScrollBar) {
    PaintOverScrollBar();
    Write(2);
    EXPECT_FALSE(ScrollBarIsDrawn());
    RedrawWindow(form.Control(), nullptr, nullptr, RDW_FRAME | RDW_INVALIDATE | RDW_UPDATENOW);
    EXPECT_TRUE(ScrollBarIsDrawn());
}

TEST_F(LongList, AScrollBarThatIsStillToBeDrawnIsDrawn) {
    PaintOverScrollBar();
    RedrawWindow(form.Control(), nullptr, nullptr, RDW_FRAME | RDW_INVALIDATE);
    Write(250);
    EXPECT_TRUE(SortBackwards());
    PumpMessages();
    EXPECT_TRUE(ScrollBarIsDrawn());
}

TEST_F(LongList, WritingLeavesAHiddenListHidden) {
    ShowWindow(form.Control(), SW_HIDE);
    Write(2);
    EXPECT_FALSE(IsWindowVisible(form.Control()));
    ShowWindow(form.Control(), SW_SHOW);
    PumpMessages();
    form.list.SetCell(L"later", 3, 1);
    EXPECT_EQ(Marked(form.Control()), RowsFrom(form, 3, 3));
}

TEST_F(LongList, SortingDrawsNoScrollBar) {
    PaintOverScrollBar();
    EXPECT_TRUE(SortBackwards());
    EXPECT_FALSE(ScrollBarIsDrawn());
    EXPECT_EQ(form.list.RowData(0), 299);
    EXPECT_EQ(Marked(form.Control()), Client(form.Control()));
}

// The sort is the first to end the batch around it, which may have brought rows.
TEST_F(LongList, SortingDrawsTheScrollBarForNewRows) {
    PaintOverScrollBar();
    form.list.BeginBatch();
    form.list.InsertRow(-1, 0, -1, 300);
    EXPECT_TRUE(SortBackwards());
    EXPECT_TRUE(ScrollBarIsDrawn());
    form.list.EndBatch();
}

TEST_F(LongList, APauseKeepsWhatIsToBeErased) {
    const std::int64_t before = form.list.erasures;
    { const XListView::RedrawPause pause(form.list); }
    PumpMessages();
    EXPECT_EQ(form.list.erasures, before);
    InvalidateRect(form.Control(), nullptr, TRUE);
    { const XListView::RedrawPause pause(form.list); }
    PumpMessages();
    EXPECT_GT(form.list.erasures, before);
}

TEST_F(LongList, APauseTellsOfChangesAndMarksTheListAtItsEnd) {
    {
        const XListView::RedrawPause pause(form.list);
        form.list.SelectRow(1, false);
        form.list.SelectRow(250, false);
        EXPECT_FALSE(GetUpdateRect(form.Control(), nullptr, FALSE));
    }
    EXPECT_THAT(form.list.calls, ElementsAre("selected 1,0", "selected 250,0"));
    EXPECT_EQ(Marked(form.Control()), Client(form.Control()));
    ValidateRect(form.Control(), nullptr);
    form.Tick(2);
    EXPECT_EQ(Marked(form.Control()), RowsFrom(form, 2, 2));
}

// Row by row the control would look up on the screen what may be far from it.
TEST_F(LongList, APressOnTheBoxOfManyRowsMarksTheListOnce) {
    form.list.SelectRow(1, false);
    form.list.SelectRow(250, false);
    ValidateRect(form.Control(), nullptr);
    MovePointer(form.InCell(1, 0, 5));
    SendMessageW(form.Control(), WM_LBUTTONDOWN, MK_LBUTTON, 0);
    EXPECT_EQ(Marked(form.Control()), Client(form.Control()));
    EXPECT_NE(form.RowBits(250) & 0x2000, 0u);
}

TEST_F(LongList, APressOnTheBoxOfOneRowMarksThatRowAlone) {
    form.list.SelectRow(1, false);
    ValidateRect(form.Control(), nullptr);
    MovePointer(form.InCell(1, 0, 5));
    SendMessageW(form.Control(), WM_LBUTTONDOWN, MK_LBUTTON, 0);
    EXPECT_EQ(Marked(form.Control()), RowsFrom(form, 1, 1));
    EXPECT_NE(form.RowBits(1) & 0x2000, 0u);
}

}  // namespace
