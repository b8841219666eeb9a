#include "mainwindow/file_rows.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "tests/support/text.h"

namespace {

constexpr std::int64_t manyRows = 5000;  // some blocks of them

FileRow Row(std::int64_t number) {
    FileRow row;
    row.path.Assign(clString(number));
    row.lengthMs = number;
    return row;
}

TEST(FileRows, StayWhereTheyWereAdded) {
    clFileRows rows;
    std::vector<const FileRow*> added;
    for (std::int64_t number = 0; number < manyRows; ++number) {
        added.push_back(&rows.Add(Row(number)));
        ASSERT_EQ(rows.Count(), number + 1);
    }
    for (std::int64_t number = 0; number < manyRows; ++number) {
        ASSERT_EQ(rows.At(number), added[static_cast<std::size_t>(number)]) << number;
        ASSERT_EQ(rows.At(number)->lengthMs, number);
        ASSERT_EQ(Utf8(rows.At(number)->path), std::to_string(number));
    }
}

TEST(FileRows, ThereIsNoneOutsideTheList) {
    clFileRows rows;
    EXPECT_EQ(rows.Count(), 0);
    EXPECT_EQ(rows.At(0), nullptr);
    rows.Add(Row(7));
    EXPECT_EQ(rows.At(-1), nullptr);
    EXPECT_EQ(rows.At(1), nullptr);
}

TEST(FileRows, BeginAnewBehindClear) {
    clFileRows rows;
    for (std::int64_t number = 0; number < manyRows; ++number)
        rows.Add(Row(number));
    rows.Clear();
    EXPECT_EQ(rows.Count(), 0);
    EXPECT_EQ(rows.At(0), nullptr);
    rows.Add(Row(3));
    ASSERT_EQ(rows.Count(), 1);
    EXPECT_EQ(rows.At(0)->lengthMs, 3);
}

TEST(FileRows, TakeOverWhatARowHeld) {
    FileRow row;
    for (int i = 0; i < 300; ++i)
        row.path.Append(L'x');
    const wchar_t* const text = row.path.Chars();
    clFileRows rows;
    EXPECT_EQ(rows.Add(std::move(row)).path.Chars(), text);
}

}  // namespace
