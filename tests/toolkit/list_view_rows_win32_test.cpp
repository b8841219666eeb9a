#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/text.h"
#include "tests/toolkit/list_form.h"
#include "tests/ui/pointer.h"
#include "tests/ui/pump.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

std::vector<std::int64_t> Entries(const clPtrArray& array) {
    std::vector<std::int64_t> entries;
    for (std::int64_t i = 0; i < array.Count(); ++i)
        entries.push_back(array.Get(i));
    return entries;
}

std::vector<std::int64_t> Selected(const ListForm& form) {
    clPtrArray rows;
    rows.Add(99);  // must go
    form.list.SelectedRows(rows);
    return Entries(rows);
}

std::vector<std::int64_t> Data(const ListForm& form) {
    std::vector<std::int64_t> data;
    for (std::int32_t row = 0; row < form.list.RowCount(); ++row)
        data.push_back(form.list.RowData(row));
    return data;
}

std::int32_t ImageOf(const ListForm& form, std::int32_t row) {
    LVITEMW item = {};
    item.mask = LVIF_IMAGE;
    item.iItem = row;
    item.iImage = 55;
    form.Ask(LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    return item.iImage;
}

class clImageList {
public:
    clImageList() : handle(ImageList_Create(16, 16, ILC_COLOR24 | ILC_MASK, 2, 0)) {
        const HICON icon = LoadIconW(nullptr, IDI_APPLICATION);
        ImageList_ReplaceIcon(handle, -1, icon);
        ImageList_ReplaceIcon(handle, -1, icon);
    }
    clImageList(const clImageList&) = delete;
    clImageList& operator=(const clImageList&) = delete;
    ~clImageList() { ImageList_Destroy(handle); }

    HIMAGELIST handle;
};

TEST(ListColumns, AreReadBack) {
    ListForm form;
    EXPECT_EQ(form.list.ColumnCount(), 3);
    EXPECT_EQ(Utf8(form.list.ColumnTitle(0)), "Name");
    EXPECT_EQ(Utf8(form.list.ColumnTitle(2)), "Type");
    EXPECT_EQ(form.list.ColumnWidth(0), 200);
    EXPECT_EQ(form.list.ColumnWidth(2), 120);

    LVCOLUMNW parts = {};
    parts.mask = LVCF_FMT | LVCF_SUBITEM;
    ASSERT_TRUE(form.Ask(LVM_GETCOLUMNW, 1, reinterpret_cast<LPARAM>(&parts)));
    EXPECT_EQ(parts.fmt & LVCFMT_JUSTIFYMASK, LVCFMT_RIGHT);
    EXPECT_EQ(parts.iSubItem, 1);
}

TEST(ListColumns, OutsideTheListAreEmpty) {
    ListForm form;
    for (const std::int32_t column : {-1, 3, 100}) {
        EXPECT_EQ(Utf8(form.list.ColumnTitle(column)), "") << column;
        EXPECT_EQ(form.list.ColumnWidth(column), 0) << column;
        form.list.RemoveColumn(column);
    }
    EXPECT_EQ(form.list.ColumnCount(), 3);
}

TEST(ListColumns, TakeTheirTextsAlongWhenOneGoes) {
    const struct {
        std::int32_t removed;
        const char* left[2];
    } cases[] = {{0, {"8", "x"}}, {1, {"one", "x"}}, {2, {"one", "8"}}};
    for (const auto& row : cases) {
        ListForm form;
        ASSERT_EQ(form.list.InsertRow(0, 0, -1, 5), 0);
        form.list.SetCell(L"one", 0, 0);
        form.list.SetCell(L"8", 0, 1);
        form.list.SetCell(L"x", 0, 2);
        form.list.RemoveColumn(row.removed);
        EXPECT_EQ(Utf8(form.list.CellText(0, 0)), row.left[0]) << row.removed;
        EXPECT_EQ(Utf8(form.list.CellText(0, 1)), row.left[1]) << row.removed;
        EXPECT_EQ(form.list.RowData(0), 5) << row.removed;
    }
}

TEST(ListColumns, TitleIsCutAtTheBuffer) {
    ListForm form;
    clString title(std::wstring(400, L'a').c_str());
    form.list.AddColumn(title, 100, LVCFMT_LEFT, 0);
    EXPECT_EQ(form.list.ColumnTitle(3).Length(), 400);
    title.Append(std::wstring(1000, L'b').c_str());
    form.list.AddColumn(title, 100, LVCFMT_LEFT, 0);
    EXPECT_LE(form.list.ColumnTitle(4).Length(), 998);
}

TEST(ListColumns, OrderIsTheDisplayedOne) {
    ListForm form;
    clPtrArray order;
    order.Add(99);
    form.list.ColumnOrder(order);
    EXPECT_THAT(Entries(order), ElementsAre(0, 1, 2));
    form.SetColumnOrder({2, 0, 1});
    form.list.ColumnOrder(order);
    EXPECT_THAT(Entries(order), ElementsAre(2, 0, 1));
}

TEST(ListColumns, FirstColumnBeginsBehindThoseDisplayedBeforeIt) {
    ListForm form;
    EXPECT_EQ(form.list.FirstColumnLeft(), 0);
    form.SetColumnOrder({2, 0, 1});
    EXPECT_EQ(form.list.FirstColumnLeft(), 120);
    form.SetColumnOrder({1, 2, 0});
    EXPECT_EQ(form.list.FirstColumnLeft(), 220);
}

TEST(ListRows, AreInsertedAtTheirPlace) {
    ListForm form;
    EXPECT_EQ(form.list.InsertRow(-1, 0, -1, 10), 0);
    EXPECT_EQ(form.list.InsertRow(-1, 0, -1, 0x123456789ABCDEF0), 1);
    EXPECT_EQ(form.list.InsertRow(0, 0, -1, -7), 0);
    EXPECT_THAT(Data(form), ElementsAre(-7, 10, 0x123456789ABCDEF0));
    EXPECT_EQ(Utf8(form.list.CellText(0, 0)), "");
}

TEST(ListRows, AnotherColumnLeavesTheRowsDataAlone) {
    ListForm form;
    form.Fill(2);
    EXPECT_EQ(form.list.InsertRow(0, 1, -1, 55), 0);
    EXPECT_EQ(form.list.InsertRow(-1, 2, -1, 56), 1);  // the last row
    EXPECT_EQ(form.list.RowCount(), 2);
    EXPECT_THAT(Data(form), ElementsAre(0, 1));
    EXPECT_EQ(Utf8(form.list.CellText(0, 1)), "");
    EXPECT_EQ(Utf8(form.list.CellText(0, 2)), "r0c2");
    EXPECT_EQ(Utf8(form.list.CellText(1, 2)), "");
}

TEST(ListRows, HaveAnImageOnlyIfGivenOne) {
    const clImageList images;
    ListForm form;
    form.Ask(LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(images.handle));
    form.list.InsertRow(-1, 0, 1, 0);
    form.list.InsertRow(-1, 0, -1, 0);
    form.list.InsertRow(-1, 0, 0, 0);
    EXPECT_EQ(ImageOf(form, 0), 1);
    EXPECT_LT(ImageOf(form, 1), 0);
    EXPECT_EQ(ImageOf(form, 2), 0);
}

TEST(ListRows, ARowComesWithTheTextOfItsFirstCell) {
    const clImageList images;
    ListForm form(LVS_SHAREIMAGELISTS);
    form.Ask(LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(images.handle));
    EXPECT_EQ(form.list.InsertRowWithText(L"a", 0, 1, 10), 0);
    EXPECT_EQ(form.list.InsertRowWithText(L"c", 1, -1, 30), 1);
    EXPECT_EQ(form.list.InsertRowWithText(L"b", 1, 0, 20), 1);
    EXPECT_THAT(Data(form), ElementsAre(10, 20, 30));
    EXPECT_EQ(Utf8(form.list.CellText(1, 0)), "b");
    EXPECT_EQ(Utf8(form.list.CellText(1, 1)), "");
    EXPECT_EQ(ImageOf(form, 0), 1);
    EXPECT_EQ(ImageOf(form, 1), 0);
    EXPECT_EQ(ImageOf(form, 2), I_IMAGENONE);
}

TEST(ListCells, KeepTheirTextAndAreReadUpToTheBuffer) {
    ListForm form;
    form.Fill(1);
    form.list.SetCell(L"new", 0, 2);
    EXPECT_EQ(Utf8(form.list.CellText(0, 2)), "new");
    form.list.SetCell(std::wstring(998, L'x').c_str(), 0, 1);
    EXPECT_EQ(form.list.CellText(0, 1).Length(), 998);
    form.list.SetCell(std::wstring(1500, L'x').c_str(), 0, 1);
    EXPECT_EQ(form.list.CellText(0, 1).Length(), 998);
    EXPECT_EQ(form.list.RowData(0), 0);
}

TEST(ListCells, OutsideTheListAreEmpty) {
    ListForm form;
    form.Fill(1);
    EXPECT_EQ(Utf8(form.list.CellText(1, 0)), "");
    EXPECT_EQ(Utf8(form.list.CellText(-1, 0)), "");
    EXPECT_EQ(form.list.RowData(1), 0);
    EXPECT_EQ(form.list.RowData(-1), 0);
}

TEST(ListSelection, GrowsByARow) {
    ListForm form;
    form.Fill(5);
    form.list.SelectRow(1, false);
    form.list.SelectRow(3, false);
    EXPECT_THAT(Selected(form), ElementsAre(1, 3));
    EXPECT_EQ(form.RowBits(3) & LVIS_FOCUSED, 0u);
}

TEST(ListSelection, OfOneRowTakesAllMarksFromTheOthers) {
    ListForm form;
    form.Fill(4);
    LVITEMW item = {};
    item.state = item.stateMask = LVIS_CUT | LVIS_DROPHILITED | LVIS_SELECTED | LVIS_FOCUSED;
    form.Ask(LVM_SETITEMSTATE, 3, reinterpret_cast<LPARAM>(&item));
    item.state = item.stateMask = LVIS_CUT;
    form.Ask(LVM_SETITEMSTATE, 1, reinterpret_cast<LPARAM>(&item));

    form.list.SelectRow(1, true);
    EXPECT_EQ(form.RowBits(1) & 0xFF, static_cast<std::uint32_t>(LVIS_SELECTED | LVIS_FOCUSED));
    EXPECT_EQ(form.RowBits(3) & 0xFF, 0u);
    EXPECT_EQ(form.Ask(LVM_GETSELECTIONMARK), 1);
    EXPECT_THAT(Selected(form), ElementsAre(1));
}

TEST(ListSelection, IsEmptyWithoutAnySelectedRow) {
    ListForm form;
    EXPECT_THAT(Selected(form), IsEmpty());
    form.Fill(3);
    EXPECT_THAT(Selected(form), IsEmpty());
    form.list.SelectRow(0, false);
    form.list.SelectRow(2, false);
    EXPECT_THAT(Selected(form), ElementsAre(0, 2));
}

TEST(ListSelection, RowUnderThePointerIsFoundInEveryColumn) {
    ListForm form;
    form.Fill(3);
    MovePointer(form.InCell(2, 1, 40));
    EXPECT_EQ(form.list.RowUnderPointer(), 2);
    MovePointer(form.BelowRows(40));
    EXPECT_EQ(form.list.RowUnderPointer(), -1);
}

int CALLBACK CompareNumbers(LPARAM first, LPARAM second, LPARAM context) {
    const auto& numbers = *reinterpret_cast<const std::vector<int>*>(context);
    return numbers[static_cast<std::size_t>(first)] - numbers[static_cast<std::size_t>(second)];
}

// A list that the form has not set yet, or whose control is gone.
TEST(ListWithoutAControl, AnswersNothing) {
    ListForm form;
    form.Fill(2);
    // A window beside it, of which nothing is to be painted then either.
    ListForm other;
    PumpMessages();
    ValidateRect(other.Control(), nullptr);
    ProbeList never;
    for (XListView* list : {static_cast<XListView*>(&never), static_cast<XListView*>(&form.list)}) {
        if (list == &form.list) form.form.DestroyWnd();
        clPtrArray rows;
        list->SelectedRows(rows);
        EXPECT_EQ(rows.Count(), 0);
        list->ColumnOrder(rows);
        EXPECT_EQ(rows.Count(), 0);
        EXPECT_EQ(list->RowCount(), 0);
        EXPECT_EQ(list->ColumnCount(), 0);
        EXPECT_EQ(list->ColumnImage(0), -1);
        EXPECT_EQ(Utf8(list->CellText(0, 0)), "");
        EXPECT_EQ(list->RowUnderPointer(), -1);
        list->SelectRow(0, true);
        list->EndBatch();
        { const XListView::RedrawPause pause(*list); }
        XListView::CellWriter(*list).SetCell(L"lost", 0, 0);
        EXPECT_TRUE(list->SortRows(&CompareNumbers, 0));
    }
    EXPECT_FALSE(GetUpdateRect(other.Control(), nullptr, FALSE));
    std::uint32_t handled = 77;
    EXPECT_EQ(never.Route(nullptr, WM_DRAWITEM, 0, 0, &handled), 0);
    EXPECT_EQ(handled, 0u);
}

TEST(ListHeaderImages, AreReadBackAsTheyWereSet) {
    const clImageList images;
    ListForm form;
    SendMessageW(form.Header(), HDM_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(images.handle));
    for (std::int32_t column = 0; column < 3; ++column)
        form.list.SetColumnImage(column, -1);
    EXPECT_EQ(form.list.ColumnImage(0), -1);
    EXPECT_EQ(form.list.ColumnImage(1), -1);
    form.list.SetColumnImage(1, 0);
    form.list.SetColumnImage(2, 1);
    EXPECT_EQ(form.list.ColumnImage(0), -1);
    EXPECT_EQ(form.list.ColumnImage(1), 0);
    EXPECT_EQ(form.list.ColumnImage(2), 1);
    form.list.SetColumnImage(1, -1);
    EXPECT_EQ(form.list.ColumnImage(1), -1);
    EXPECT_EQ(form.list.ColumnImage(3), -1);
}

TEST(ListHeaderImages, StandOnTheInnerSideAndAreDrawnByTheHeader) {
    ListForm form;
    for (std::int32_t column = 0; column < 3; ++column) {
        form.list.SetColumnImage(column, 0);
        LVCOLUMNW parts = {};
        parts.mask = LVCF_FMT;
        form.Ask(LVM_GETCOLUMNW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&parts));
        HDITEMW item = {};
        item.mask = HDI_FORMAT;
        SendMessageW(form.Header(), HDM_GETITEMW, static_cast<WPARAM>(column),
                     reinterpret_cast<LPARAM>(&item));
        const bool rightAligned = column == 1;
        EXPECT_EQ((item.fmt & HDF_BITMAP_ON_RIGHT) != 0, !rightAligned) << column;
        EXPECT_NE(item.fmt & HDF_IMAGE, 0) << column;
        EXPECT_EQ(item.fmt & HDF_JUSTIFYMASK, rightAligned ? HDF_RIGHT : HDF_LEFT) << column;
    }
}

TEST(ListSort, OrdersRowsByWhatTheComparatorSaysOfTheDisplayedOnes) {
    ListForm form;
    form.Fill(6);
    form.list.SelectRow(1, true);
    form.Tick(5);
    const std::vector<int> numbers = {3, 1, 3, 0, 2, 1};
    EXPECT_TRUE(form.list.SortRows(&CompareNumbers, reinterpret_cast<LPARAM>(&numbers)));
    EXPECT_THAT(Data(form), ElementsAre(3, 1, 5, 4, 0, 2));
    EXPECT_EQ(Utf8(form.list.CellText(2, 1)), "r5c1");
    EXPECT_EQ(form.Marks(), "nsNnnn");  // selection and tick go along
    EXPECT_THAT(form.list.calls, IsEmpty());
}

TEST(ListSort, SortsTheSortedRowsAnew) {
    ListForm form;
    form.Fill(300);
    std::mt19937 random(5);
    std::vector<std::int64_t> expected = Data(form);
    for (int round = 0; round < 3; ++round) {
        std::vector<int> numbers(300);
        for (int& number : numbers)
            number = static_cast<int>(random() % 40);
        std::vector<std::size_t> order(300);
        for (std::size_t i = 0; i < order.size(); ++i)
            order[i] = i;
        std::ranges::stable_sort(order, {}, [&numbers](std::size_t i) { return numbers[i]; });
        std::vector<std::int64_t> sorted;
        for (const std::size_t i : order)
            sorted.push_back(expected[i]);
        expected = sorted;
        ASSERT_TRUE(form.list.SortRows(&CompareNumbers, reinterpret_cast<LPARAM>(&numbers)));
        ASSERT_EQ(Data(form), expected) << "round " << round;
    }
}

TEST(ListSort, BringsTheKnownDataIntoTheNewOrder) {
    ListForm form;
    form.Fill(6);
    std::vector<std::int64_t> known = Data(form);
    for (const std::vector<int>& numbers :
         {std::vector<int>{3, 1, 3, 0, 2, 1}, {1, 2, 3, 4, 5, 6}, {6, 5, 4, 3, 2, 1}}) {
        EXPECT_TRUE(form.list.SortRows(&CompareNumbers, reinterpret_cast<LPARAM>(&numbers), known));
        EXPECT_EQ(known, Data(form));
    }
    EXPECT_THAT(known, ElementsAre(2, 0, 4, 5, 1, 3));
}

int CALLBACK NotifyAndCompare(LPARAM, LPARAM, LPARAM context) {
    NMLISTVIEW change = {};
    change.uChanged = LVIF_STATE;
    change.uNewState = LVIS_SELECTED;
    reinterpret_cast<ListForm*>(context)->Notify(change, LVN_ITEMCHANGED);
    return 0;
}

TEST(ListSort, IsOneBatch) {
    ListForm form;
    form.Fill(3);
    EXPECT_TRUE(form.list.SortRows(&NotifyAndCompare, reinterpret_cast<LPARAM>(&form)));
    EXPECT_THAT(form.list.calls, IsEmpty());
    EXPECT_TRUE(GetUpdateRect(form.Control(), nullptr, FALSE));
    form.list.SelectRow(1, false);
    EXPECT_THAT(form.list.calls, ElementsAre("selected 1,0"));
}

TEST(ListSort, LeavesRowsThatShareTheirDataAlone) {
    ListForm form;
    form.list.InsertRow(-1, 0, -1, 4);
    form.list.InsertRow(-1, 0, -1, 3);
    form.list.InsertRow(-1, 0, -1, 4);
    const std::vector<int> numbers = {3, 2, 1};
    EXPECT_FALSE(form.list.SortRows(&CompareNumbers, reinterpret_cast<LPARAM>(&numbers)));
    EXPECT_THAT(Data(form), ElementsAre(4, 3, 4));
}

}  // namespace
