// The order of a real list: what its header says, and what becomes of its rows.
#include <gmock/gmock.h>

#include <functional>

#include "tests/mainwindow/file_list_form.h"
#include "tests/support/text.h"

using testing::ElementsAre;

namespace {

constexpr std::int32_t none = -1;

struct SortedColumn {
    const char* name;
    const wchar_t* title;
    // Texts and records of three rows, which belong in the order b, c, a.
    std::vector<const wchar_t*> cells;
    std::function<void(FileRow&, int)> fill;
};

class SortedByColumn : public testing::TestWithParam<SortedColumn> {};

// The ranks of the rows a, b and c.
constexpr int ranks[] = {3, 1, 2};

clFileTime Time(int rank) {
    return {static_cast<std::uint32_t>(4 - rank), static_cast<std::uint32_t>(rank)};
}

}  // namespace

TEST_P(SortedByColumn, FirstClickAscendsAndTheNextTurnsItRound) {
    const SortedColumn& tested = GetParam();
    clString names(L"Name\r");
    names.Append(tested.title);
    FileListForm form(names.Chars());
    const wchar_t* const paths[] = {L"a", L"b", L"c"};
    for (int i = 0; i < 3; ++i) {
        FileRow& row = form.AddRow(paths[i], {paths[i], tested.cells.at(static_cast<size_t>(i))});
        if (tested.fill) tested.fill(row, ranks[i]);
    }
    form.files.ToggleSort(1);
    EXPECT_THAT(form.FirstCells(), ElementsAre("b", "c", "a"));
    EXPECT_THAT(form.Images(), ElementsAre(none, 0));
    form.files.ToggleSort(1);
    EXPECT_THAT(form.FirstCells(), ElementsAre("a", "c", "b"));
    EXPECT_THAT(form.Images(), ElementsAre(none, 1));
    form.files.ToggleSort(1);
    EXPECT_THAT(form.FirstCells(), ElementsAre("b", "c", "a"));
}

// The same order by the comparison of two rows alone, as a list control asks for it.
TEST_P(SortedByColumn, ComparatorOfRowsSaysTheSame) {
    const SortedColumn& tested = GetParam();
    clString names(L"Name\r");
    names.Append(tested.title);
    FileListForm form(names.Chars());
    for (int i = 0; i < 3; ++i) {
        FileRow& row = form.AddRow(L"", {L"", tested.cells.at(static_cast<size_t>(i))});
        if (tested.fill) tested.fill(row, ranks[i]);
    }
    SortContext context;
    context.columnName.Assign(tested.title);
    context.column = 1;
    context.list = &form.view;
    context.rows = &form.files;
    for (const bool ascending : {true, false}) {
        context.ascending = ascending;
        for (int first = 0; first < 3; ++first) {
            for (int second = 0; second < 3; ++second) {
                const int order = ranks[first] < ranks[second]   ? -1
                                  : ranks[first] > ranks[second] ? 1
                                                                 : 0;
                EXPECT_EQ(CompareRows(first, second, reinterpret_cast<LPARAM>(&context)),
                          ascending ? order : -order)
                    << first << ',' << second;
            }
        }
    }
}

// Where the record counts, the cells say the opposite.
INSTANTIATE_TEST_SUITE_P(
    Columns, SortedByColumn,
    testing::Values(
        SortedColumn{"Size",
                     L"Size",
                     {L"1", L"3", L"2"},
                     [](FileRow& row, int rank) {
                         row.sizeBytes = static_cast<std::uint64_t>(rank) * 5000000000u;
                     }},
        SortedColumn{"Length",
                     L"Length",
                     {L"1", L"3", L"2"},
                     [](FileRow& row, int rank) { row.lengthMs = rank * 5000000000ll; }},
        SortedColumn{"BitRate",
                     L"Bit Rate",
                     {L"1", L"3", L"2"},
                     [](FileRow& row, int rank) { row.bitRate = rank * 1000; }},
        SortedColumn{"Rating",
                     L"Rating",
                     {L"1", L"3", L"2"},
                     [](FileRow& row, int rank) { row.rating = rank * 5; }},
        SortedColumn{"Compression",
                     L"Compression",
                     {L"1", L"3", L"2"},
                     [](FileRow& row, int rank) { row.compressionPercent = rank * 9; }},
        SortedColumn{"DateModified",
                     L"Date Modified",
                     {L"1", L"3", L"2"},
                     [](FileRow& row, int rank) { row.dateModified = Time(rank); }},
        SortedColumn{"DateAccessed",
                     L"Date Accessed",
                     {L"1", L"3", L"2"},
                     [](FileRow& row, int rank) { row.dateAccessed = Time(rank); }},
        SortedColumn{"DateCreated",
                     L"Date Created",
                     {L"1", L"3", L"2"},
                     [](FileRow& row, int rank) { row.dateCreated = Time(rank); }},
        SortedColumn{"AudioQuality", L"Audio Quality", {L"Perfect", L"Lossy", L"High"}, {}},
        SortedColumn{"AudioQualityByText", L"audio quality", {L"Perfect", L"high", L"Lossy"}, {}},
        SortedColumn{"SampleRateByText", L"Sample Rate", {L"8 KHz", L"22 KHz", L"44.1 KHz"}, {}},
        SortedColumn{"TextWithoutCase", L"Artist", {L"gamma", L"Alpha", L"beta"}, {}}),
    [](const auto& tested) { return std::string(tested.param.name); });

TEST(SortedList, ArrowOfTheLastColumnWins) {
    FileListForm form(L"Name\rArtist\rTitle");
    form.AddRow(L"a", {L"a", L"1", L"2"});
    form.AddRow(L"b", {L"b", L"2", L"1"});
    form.files.SetColumnSortImage(1, 0);
    form.files.SetColumnSortImage(2, 0);
    form.files.SortList();
    EXPECT_THAT(form.FirstCells(), ElementsAre("b", "a"));
}

TEST(SortedList, WithoutAnArrowTheFirstColumnsTextCounts) {
    FileListForm form(L"Size\rArtist");
    form.AddRow(L"a", {L"20", L"x"}).sizeBytes = 20;
    form.AddRow(L"b", {L"100", L"y"}).sizeBytes = 100;
    form.files.SetColumnSortImage(1, 1);
    form.view.RemoveColumn(1);
    EXPECT_THAT(form.Images(), ElementsAre(none));
    form.files.SortList();
    EXPECT_THAT(form.FirstCells(), ElementsAre("100", "20"));
}

TEST(SortedList, ClickOnAnotherColumnAlwaysAscends) {
    FileListForm form(L"Name\rArtist");
    form.AddRow(L"a", {L"a", L"2"});
    form.AddRow(L"b", {L"b", L"1"});
    form.files.ToggleSort(0);
    form.files.ToggleSort(0);
    EXPECT_THAT(form.Images(), ElementsAre(1, none));
    form.files.ToggleSort(1);
    EXPECT_THAT(form.Images(), ElementsAre(none, 0));
    form.files.ToggleSort(0);
    EXPECT_THAT(form.Images(), ElementsAre(0, none));
    EXPECT_THAT(form.FirstCells(), ElementsAre("a", "b"));
}

TEST(SortedList, EqualRowsAndTicksStayWithTheirFiles) {
    FileListForm form(L"Name\rArtist");
    form.AddRow(L"a", {L"a", L"same"}, true);
    form.AddRow(L"b", {L"b", L"SAME"}, false);
    form.AddRow(L"c", {L"c", L"first"}, true);
    form.files.ToggleSort(1);
    EXPECT_THAT(form.FirstCells(), ElementsAre("c", "a", "b"));
    EXPECT_TRUE(form.files.IsTicked(0));
    EXPECT_TRUE(form.files.IsTicked(1));
    EXPECT_FALSE(form.files.IsTicked(2));
    EXPECT_EQ(Utf8(form.files.RowAt(2)->path), "b");
}

TEST(TickedRows, RowThatWasNotInsertedTicksNoOther) {
    FileListForm form(L"Name");
    form.AddRow(L"a", {L"a"});
    form.AddRow(L"b", {L"b"});
    form.files.SetTicked(-1, true);
    EXPECT_FALSE(form.files.IsTicked(0));
    EXPECT_FALSE(form.files.IsTicked(1));
}

TEST(CompareRows, RowsWithoutARecordAreEqual) {
    FileListForm form(L"Name\rSize");
    form.AddRow(L"a", {L"a", L"1"}).sizeBytes = 1;
    form.AddRow(L"b", {L"b", L"2"}).sizeBytes = 2;
    SortContext context;
    context.list = &form.view;
    context.rows = &form.files;
    const auto compare = [&context] {
        return CompareRows(0, 1, reinterpret_cast<LPARAM>(&context));
    };
    for (const wchar_t* column : {L"Name", L"Size"}) {
        context.columnName.Assign(column);
        context.column = form.files.ColumnTitled(column);
        for (const LPARAM param : {-1, 2, 7}) {
            LVITEMW item = {};
            item.mask = LVIF_PARAM;
            item.iItem = 1;
            item.lParam = param;
            SendMessageW(form.Control(), LVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
            EXPECT_EQ(compare(), 0) << Utf8(column) << ' ' << param;
            item.lParam = 1;
            SendMessageW(form.Control(), LVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
            EXPECT_EQ(compare(), -1) << Utf8(column);
        }
    }
}

TEST(CompareRows, RowsOutsideTheListAreEqual) {
    FileListForm form(L"Name");
    form.AddRow(L"a", {L"a"});
    form.AddRow(L"b", {L"b"});
    SortContext context;
    context.list = &form.view;
    context.rows = &form.files;
    const auto compare = [&](LPARAM first, LPARAM second) {
        return CompareRows(first, second, reinterpret_cast<LPARAM>(&context));
    };
    EXPECT_LT(compare(0, 1), 0);
    EXPECT_GT(compare(1, 0), 0);
    EXPECT_EQ(compare(-1, 0), 0);
    EXPECT_EQ(compare(1, 2), 0);
    EXPECT_EQ(compare(2, 0), 0);
    context.ascending = false;
    EXPECT_GT(compare(0, 1), 0);
}
