#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "tests/support/text.h"
#include "tests/toolkit/list_form.h"
#include "tests/ui/keys.h"
#include "tests/ui/pointer.h"
#include "tests/ui/pump.h"

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

namespace {

std::string At(const ListForm& form, const char* what, POINT screen) {
    ScreenToClient(form.Control(), &screen);
    return std::string(what) + " at " + std::to_string(screen.x) + "," + std::to_string(screen.y);
}

TEST(ListCheckClick, ActsOnTheWholeSelection) {
    ListForm form;
    form.Fill(6);
    for (const int row : {1, 2, 3})
        form.list.SelectRow(row, false);
    form.Tick(2);
    form.Tick(4);
    Click(form.InCell(2, 0, 8));
    EXPECT_EQ(form.Marks(), "nsssNn");
    EXPECT_THAT(form.list.calls, ElementsAre("unchecked 2"));  // the others were so
    form.list.Forget();
    Click(form.InCell(1, 0, 8));
    EXPECT_EQ(form.Marks(), "nSSSNn");
    EXPECT_THAT(form.list.calls, ElementsAre("checked 1", "checked 2", "checked 3"));
}

TEST(ListCheckClick, SecondFastOneActsOnTheWholeSelectionToo) {
    ListForm form;
    form.Fill(6);
    for (const int row : {1, 2, 3})
        form.list.SelectRow(row, false);
    form.Tick(4);
    form.list.Forget();
    DoubleClick(form.InCell(2, 0, 8));
    EXPECT_EQ(form.Marks(), "nsssNn");
    EXPECT_THAT(form.list.calls, ElementsAre("checked 1", "checked 2", "checked 3", "unchecked 1",
                                             "unchecked 2", "unchecked 3"));
    form.list.Forget();
    // On another row the first one makes the selection, and the second keeps it.
    DoubleClick(form.InCell(4, 0, 20));
    EXPECT_EQ(form.Marks(), "nnnnSn");
    EXPECT_EQ(form.list.Count("unchecked 4"), 1);
    EXPECT_EQ(form.list.Count("checked 4"), 1);
    EXPECT_EQ(form.list.Count("double click"), 0);
}

TEST(ListCheckClick, ThreeFastOnesAreThree) {
    ListForm form;
    form.Fill(3);
    DoubleClick(form.InCell(1, 0, 8));
    PressButton();
    ReleaseButton();
    PumpMessages();
    EXPECT_EQ(form.Marks(), "nSn");
    EXPECT_THAT(form.list.calls,
                ElementsAre("selected 1,0", "checked 1", "unchecked 1", "checked 1"));
}

TEST(ListCheckClick, SecondFastOneElsewhereIsTheControls) {
    ListForm form;
    form.Fill(3);
    DoubleClick(form.InCell(1, 0, 21));
    EXPECT_EQ(form.Marks(), "nsn");
    EXPECT_EQ(form.list.Count("double click 1,0"), 1);
    EXPECT_EQ(form.list.Count("left"), 1) << "the first press alone";
}

TEST(ListCheckClick, OnAnotherRowMakesItTheSelection) {
    ListForm form;
    form.Fill(6);
    form.list.SelectRow(1, false);
    form.list.SelectRow(2, false);
    form.list.Forget();
    Click(form.InCell(4, 0, 8));
    EXPECT_EQ(form.Marks(), "nnnnSn");
    EXPECT_THAT(form.list.calls,
                ElementsAre("deselected 1,0", "deselected 2,0", "selected 4,0", "checked 4"));
}

TEST(ListCheckClick, ReachesTwentyPixelsIntoTheColumn) {
    ListForm form;
    form.Fill(6);
    Click(form.InCell(0, 0, 0));
    EXPECT_EQ(form.Marks(), "Snnnnn");
    Click(form.InCell(1, 0, 20));
    EXPECT_EQ(form.Marks(), "NSnnnn");
    form.list.Forget();
    const POINT right = form.InCell(3, 0, 21);
    Click(right);
    EXPECT_EQ(form.Marks(), "NNnsnn");  // as a plain click
    EXPECT_THAT(form.list.calls, Contains(At(form, "left 3", right)));
    EXPECT_THAT(form.list.calls, Contains(StartsWith("click 3,0")));
}

TEST(ListCheckClick, FollowsColumnZeroToItsPlace) {
    ListForm form;
    form.Fill(6);
    form.SetColumnOrder({2, 0, 1});
    Click(form.InCell(1, 0, 8));
    EXPECT_EQ(form.Marks(), "nSnnnn");
    Click(form.InCell(3, 2, 8));  // where the zone was
    EXPECT_EQ(form.Marks(), "nNnsnn");
    form.list.Forget();
    Click(form.InCell(4, 0, -1));  // just left of column 0
    EXPECT_EQ(form.Marks(), "nNnnsn");
    EXPECT_EQ(form.list.Count("left 4"), 1);
}

TEST(ListCheckClick, BelowTheRowsIsAPlainPress) {
    ListForm form;
    form.Fill(2);
    form.list.SelectRow(1, false);
    form.list.Forget();
    const POINT below = form.BelowRows(8);
    Click(below);
    EXPECT_THAT(form.list.calls, Contains(At(form, "left -1", below)));
    EXPECT_EQ(form.list.Count("checked"), 0);
}

TEST(ListCheckClick, NeedsCheckBoxes) {
    ListForm form(0, LVS_EX_FULLROWSELECT);
    form.Fill(2);
    Click(form.InCell(1, 0, 8));
    EXPECT_EQ(form.Marks(), "ns");
    EXPECT_EQ(form.list.Count("left 1"), 1);
    EXPECT_EQ(form.list.Count("checked"), 0);
}

// The messages of one click on a selection of all rows grow as the rows do.
TEST(ListCheckClick, CostsByTheRowAndNotByItsSquare) {
    std::int64_t messages[2] = {};
    for (int i = 0; i < 2; ++i) {
        ListForm form;
        const int rows = i == 0 ? 500 : 2000;
        form.Fill(rows);
        for (int row = 0; row < rows; ++row)
            form.list.SelectRow(row, false);
        MovePointer(form.InCell(2, 0, 8));
        form.list.Forget();
        form.list.messages = 0;
        Click(form.InCell(2, 0, 8));
        EXPECT_EQ(form.list.Count("checked"), rows);
        messages[i] = form.list.messages;
    }
    EXPECT_LT(messages[1], 4 * messages[0] + 100);
    EXPECT_LT(messages[1], 2000 * 6);
}

TEST(ListPress, IsKeptFromTheControlIfTheFormTakesIt) {
    ListForm form;
    form.Fill(3);
    form.list.takePresses = true;
    Click(form.InCell(2, 1, 30));
    EXPECT_EQ(form.Marks(), "nnn");
    form.list.takePresses = false;
    Click(form.InCell(1, 1, 50));
    EXPECT_EQ(form.Marks(), "nsn");
}

TEST(ListClicks, ComeWithRowColumnAndPoint) {
    ListForm form;
    form.Fill(4);
    const POINT point = form.InCell(2, 1, 30);
    Click(point);
    EXPECT_THAT(form.list.calls, Contains(At(form, "click 2,1", point)));
    form.list.Forget();
    const POINT other = form.InCell(3, 2, 20);
    DoubleClick(other);
    EXPECT_THAT(form.list.calls, Contains(At(form, "double click 3,2", other)));
    form.list.Forget();
    const POINT third = form.InCell(1, 1, 60);
    Click(third, PointerButton::Right);
    EXPECT_THAT(form.list.calls, Contains(At(form, "right click 1,1", third)));
    EXPECT_THAT(form.list.calls, Contains(StartsWith("menu " + std::to_string(third.x) + ",")));
}

TEST(ListClicks, OnTheHeaderAreColumnClicks) {
    ListForm form;
    form.Fill(2);
    Click(form.InHeader(1, 50));
    EXPECT_THAT(form.list.calls, Contains("column 1"));
    form.list.Forget();
    const POINT point = form.InHeader(2, 30);
    Click(point, PointerButton::Right);
    EXPECT_THAT(form.list.calls,
                Contains("menu " + std::to_string(point.x) + "," + std::to_string(point.y)));
}

void DragFromTo(const POINT& from, const POINT& to, int steps) {
    MovePointer(from);
    PressButton();
    for (int i = 1; i <= steps; ++i) {
        MovePointer({from.x + (to.x - from.x) * i / steps, from.y + (to.y - from.y) * i / steps});
        PumpMessages();
    }
}

TEST(ListMinimumWidth, StopsTheEdgeWhileItIsDragged) {
    ListForm form;
    form.Fill(2);
    const POINT edge = form.AtHeaderEdge(0, -2);
    DragFromTo(edge, {edge.x - 120, edge.y}, 4);
    EXPECT_NEAR(form.list.ColumnWidth(0), 80, 4);
    for (int i = 1; i <= 5; ++i) {
        MovePointer({edge.x - 150 - 8 * i, edge.y});
        PumpMessages();
        EXPECT_EQ(form.list.ColumnWidth(0), 50) << i;
    }
    ReleaseButton();
    PumpMessages();
    EXPECT_EQ(form.list.ColumnWidth(0), 50);
    EXPECT_THAT(form.list.calls, Contains("resized 0"));
}

TEST(ListMinimumWidth, LeavesAColumnWithoutOneFree) {
    ListForm form;
    LVCOLUMNW column = {};
    column.mask = LVCF_WIDTH;
    column.cx = 60;
    form.Ask(LVM_INSERTCOLUMNW, 3, reinterpret_cast<LPARAM>(&column));
    const POINT edge = form.AtHeaderEdge(3, -2);
    DragFromTo(edge, {edge.x - 57, edge.y}, 6);
    ReleaseButton();
    PumpMessages();
    EXPECT_LT(form.list.ColumnWidth(3), 5);
}

TEST(ListColumns, DroppedHeaderIsTold) {
    ListForm form(0, ListForm::programsExStyle | LVS_EX_HEADERDRAGDROP);
    form.Fill(2);
    const POINT from = form.InHeader(0, 60);
    DragFromTo(from, form.InHeader(2, 100), 6);
    ReleaseButton();
    PumpMessages();
    EXPECT_THAT(form.list.calls, Contains("reordered"));
    EXPECT_GT(form.list.FirstColumnLeft(), 0);
}

TEST(ListDrag, OfARowIsTold) {
    ListForm form;
    form.Fill(4);
    const POINT from = form.InCell(1, 0, 60);
    DragFromTo(from, {from.x + 60, from.y + 30}, 6);
    ReleaseButton();
    PumpMessages();
    EXPECT_THAT(form.list.calls, Contains("drag 1"));
}

TEST(ListDrag, FromEmptySpaceAsksForTheMarquee) {
    ListForm form;
    form.Fill(2);
    const POINT from = form.BelowRows(60);
    DragFromTo(from, {from.x + 60, from.y + 30}, 6);
    ReleaseButton();
    PumpMessages();
    EXPECT_THAT(form.list.calls, Contains("marquee"));
    EXPECT_THAT(form.list.calls, Not(Contains(StartsWith("drag"))));
}

}  // namespace
