#include "mainwindow/sort_keys.h"

#include <gtest/gtest.h>

#include "tests/support/text.h"

namespace {

std::int32_t CompareTexts(const wchar_t* column, const wchar_t* first, const wchar_t* second) {
    SortKeys keys(SortValueOf(column));
    const FileRow row;
    keys.Add(&row, first);
    keys.Add(&row, second);
    return keys.Compare(0, 1);
}

std::int32_t CompareRecords(const wchar_t* column, const FileRow& first, const FileRow& second) {
    SortKeys keys(SortValueOf(column));
    // The cells say the opposite of the records.
    keys.Add(&first, L"b");
    keys.Add(&second, L"a");
    return keys.Compare(0, 1);
}

TEST(SortValueOf, KnowsColumnsByTheirExactNames) {
    EXPECT_EQ(SortValueOf(L"Size"), SortValue::Size);
    EXPECT_EQ(SortValueOf(L"Length"), SortValue::Length);
    EXPECT_EQ(SortValueOf(L"Bit Rate"), SortValue::BitRate);
    EXPECT_EQ(SortValueOf(L"Rating"), SortValue::Rating);
    EXPECT_EQ(SortValueOf(L"Compression"), SortValue::Compression);
    EXPECT_EQ(SortValueOf(L"Audio Quality"), SortValue::AudioQuality);
    EXPECT_EQ(SortValueOf(L"Date Modified"), SortValue::DateModified);
    EXPECT_EQ(SortValueOf(L"Date Accessed"), SortValue::DateAccessed);
    EXPECT_EQ(SortValueOf(L"Date Created"), SortValue::DateCreated);
    for (const wchar_t* name : {L"size", L"audio quality", L"Sample Rate", L"Channels", L""})
        EXPECT_EQ(SortValueOf(name), SortValue::Text) << Utf8(name);
}

TEST(SortKeys, NumbersComeFromTheRecordAndNotFromTheCell) {
    FileRow small;
    FileRow large;
    large.sizeBytes = 1;
    large.lengthMs = 1;
    large.bitRate = 1;
    large.rating = 1;
    large.compressionPercent = 1;
    large.dateModified.low = 1;
    large.dateAccessed.low = 1;
    large.dateCreated.low = 1;
    for (const wchar_t* column : {L"Size", L"Length", L"Bit Rate", L"Rating", L"Compression",
                                  L"Date Modified", L"Date Accessed", L"Date Created"}) {
        EXPECT_EQ(CompareRecords(column, small, large), -1) << Utf8(column);
        EXPECT_EQ(CompareRecords(column, large, small), 1) << Utf8(column);
        EXPECT_EQ(CompareRecords(column, large, large), 0) << Utf8(column);
    }
}

TEST(SortKeys, SizesAreSignedAndDatesAreNot) {
    FileRow first;
    FileRow second;
    first.sizeBytes = std::uint64_t{1} << 63;
    EXPECT_EQ(CompareRecords(L"Size", first, second), -1);
    first.dateModified.high = 0x80000000;
    EXPECT_EQ(CompareRecords(L"Date Modified", first, second), 1);
}

struct Texts {
    const wchar_t* first;
    const wchar_t* second;
    std::int32_t expected;
};

TEST(SortKeys, TextIsComparedByUnitsWithoutTheCaseOfAToZ) {
    const Texts rows[] = {
        {L"abc", L"ABC", 0}, {L"abc", L"abd", -1},  {L"b", L"A", 1},
        {L"", L"a", -1},     {L"ab", L"a", 1},      {L"44.1 KHz", L"8 KHz", -1},
        {L"Z", L"_", 1},     {L"\xE9", L"\xC9", 1}, {L"\xFFFF", L"a", 1},
    };
    for (const Texts& row : rows) {
        EXPECT_EQ(CompareTexts(L"Artist", row.first, row.second), row.expected)
            << Utf8(row.first) << " and " << Utf8(row.second);
    }
}

TEST(SortKeys, ARowWithoutARecordEqualsEveryOther) {
    for (const wchar_t* column : {L"Size", L"Artist"}) {
        SortKeys keys(SortValueOf(column));
        FileRow row;
        row.sizeBytes = 5;
        keys.Add(&row, L"a");
        keys.Add(nullptr, L"b");
        EXPECT_EQ(keys.Compare(0, 1), 0);
        EXPECT_EQ(keys.Compare(1, 0), 0);
    }
}

TEST(SortKeys, RowsOutsideTheListAreEqual) {
    SortKeys keys(SortValue::Size);
    FileRow row;
    row.sizeBytes = 5;
    keys.Add(&row, L"");
    EXPECT_EQ(keys.Compare(0, 1), 0);
    EXPECT_EQ(keys.Compare(-1, 0), 0);
}

struct Rank {
    const wchar_t* text;
    const wchar_t* ranked;
};

TEST(RankedQuality, PutsLettersInFrontOfTheGrades) {
    const Rank rows[] = {
        {L"High", L"SHigh"},
        {L"high rate", L"Shigh rate"},
        {L"CD Quality", L"xCD Quality"},
        {L"CDs", L"CDs"},
        {L"DVD 5.1", L"xDVD 5.1"},
        {L"DAT tape", L"xDAT tape"},
        {L"DATA", L"DATA"},
        {L"perfect", L"xperfect"},
        {L"Perf", L"Perf"},
        {L"Medium", L"Medium"},
        {L"", L""},
    };
    for (const Rank& row : rows)
        EXPECT_EQ(Utf8(RankedQuality(row.text)), Utf8(row.ranked));
}

TEST(SortKeys, AudioQualityRanksLowHighThenPerfect) {
    EXPECT_EQ(CompareTexts(L"Audio Quality", L"Medium", L"High"), -1);
    EXPECT_EQ(CompareTexts(L"Audio Quality", L"High", L"CD Quality"), -1);
    EXPECT_EQ(CompareTexts(L"Audio Quality", L"CD Quality", L"Perfect"), -1);
    EXPECT_EQ(CompareTexts(L"Audio Quality", L"zebra", L"Perfect"), 1);
    // Any other spelling of the column is a plain text.
    EXPECT_EQ(CompareTexts(L"audio quality", L"Medium", L"High"), 1);
}

}  // namespace
