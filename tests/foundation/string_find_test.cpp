#include <gtest/gtest.h>

#include "foundation/string.h"
#include "foundation/text.h"
#include "tests/support/text.h"

TEST(StringFind, EqualsIsExactAndNullIsEqualToNothing) {
    const struct {
        const wchar_t* left;
        const wchar_t* right;
        bool expected;
    } rows[] = {{L"", L"", true},       {L"", nullptr, false},   {L"a", nullptr, false},
                {L"abc", L"abc", true}, {L"abc", L"abC", false}, {L"abc", L"ab", false},
                {L"ab", L"abc", false}, {L"", L"a", false},      {L"\xE4", L"\xC4", false}};
    for (const auto& row : rows) {
        EXPECT_EQ(clString(row.left).Equals(row.right), row.expected) << Utf8(row.left);
        if (row.right != nullptr) {
            EXPECT_EQ(clString(row.left).Equals(clString(row.right)), row.expected)
                << Utf8(row.left);
        }
    }
}

TEST(StringFind, CompareNoCaseFoldsAsciiOnly) {
    const struct {
        const wchar_t* left;
        const wchar_t* right;
        std::int32_t limit;
        std::int32_t expected;
    } rows[] = {
        {L"abc", L"ABC", 0, 0},
        {L"abc", L"abd", 0, -1},
        {L"abd", L"ABC", 0, 1},
        {L"ab", L"abc", 0, -1},
        {L"abc", L"ab", 0, 1},
        {L"", L"", 0, 0},
        {L"", nullptr, 0, 1},
        {L"a", nullptr, 1, 1},
        // Accented letters keep their case; the order is that of unsigned units.
        {L"\xC4", L"\xE4", 0, -1},
        {L"\xE4", L"\xC4", 0, 1},
        {L"\xFFFF", L"a", 0, 1},
        // Capitals fold downwards, so the underscore stands before all letters.
        {L"_", L"A", 0, -1},
        {L"[", L"Z", 0, -1},
        // A limit compares that many characters.
        {L"abcX", L"ABCY", 3, 0},
        {L"abcX", L"ABCY", 4, -1},
        {L"ab", L"abc", 3, -1},
        {L"ab", L"abc", 2, 0},
        {L"ab", L"AB", 10, 0},
        // -1 asks whether the string begins with the text.
        {L"C:\\Music\\a", L"c:\\music\\", -1, 0},
        {L"C:\\Mus", L"c:\\music\\", -1, -1},
        {L"C:\\Musid", L"c:\\music\\", -1, 1},
        {L"abc", L"AB", POS_LAST, 0},
        {L"abc", L"", -1, 1},
        {L"", L"", -1, 0},
    };
    for (const auto& row : rows) {
        const clString left(row.left);
        EXPECT_EQ(left.CompareNoCase(row.right, row.limit), row.expected)
            << Utf8(row.left) << ' ' << Utf8(row.right) << ' ' << row.limit;
        if (row.right != nullptr) {
            EXPECT_EQ(left.CompareNoCase(clString(row.right), row.limit), row.expected)
                << Utf8(row.left) << ' ' << Utf8(row.right) << ' ' << row.limit;
        }
    }
}

TEST(StringFind, FindGivesTheFirstMatchFromTheStart) {
    const struct {
        const wchar_t* text;
        const wchar_t* needle;
        std::int32_t start;
        bool ignoreCase;
        std::int32_t expected;
    } rows[] = {
        {L"abcabc", L"abc", 1, false, 1},
        {L"abcabc", L"abc", 2, false, 4},
        {L"abcabc", L"abc", 5, false, 0},
        {L"abcabc", L"c", 6, false, 6},
        {L"abcabc", L"c", POS_LAST, false, 6},
        // No match at position 1 for a start that is no position.
        {L"abcabc", L"abc", 0, false, 0},
        {L"abcabc", L"abc", -1, false, 0},
        {L"abcabc", L"c", 7, false, 0},
        // An empty needle matches where the search starts.
        {L"abc", L"", 1, false, 1},
        {L"abc", L"", 3, false, 3},
        {L"abc", L"", 4, false, 0},
        {L"", L"", 1, false, 0},
        {L"", L"a", 1, false, 0},
        {L"abc", nullptr, 1, false, 0},
        {L"abc", L"ABC", 1, false, 0},
        {L"xabc", L"ABC", 1, true, 2},
        {L"xABC", L"abc", 1, true, 2},
        {L"\xE4", L"\xC4", 1, true, 0},
        {L"abc", L"abcd", 1, false, 0},
        {L"aab", L"ab", 1, false, 2},
    };
    for (const auto& row : rows) {
        const clString text(row.text);
        EXPECT_EQ(text.Find(row.needle, row.start, row.ignoreCase), row.expected)
            << Utf8(row.text) << ' ' << Utf8(row.needle) << ' ' << row.start;
        if (row.needle != nullptr) {
            EXPECT_EQ(text.Find(clString(row.needle), row.start, row.ignoreCase), row.expected)
                << Utf8(row.text) << ' ' << Utf8(row.needle) << ' ' << row.start;
        }
    }
    EXPECT_EQ(clString(L"abc").Find(L"b"), 2);
}

TEST(StringFind, SingleCharactersAreFoundFromBothEnds) {
    const clString text(L"a\\b\\c");
    EXPECT_EQ(text.FindChar(L'\\'), 2);
    EXPECT_EQ(text.FindChar(L'\\', 3), 4);
    EXPECT_EQ(text.FindChar(L'\\', 5), 0);
    EXPECT_EQ(text.FindChar(L'\\', 0), 0);
    EXPECT_EQ(text.FindChar(L'A'), 0);
    EXPECT_EQ(text.FindLast(L'\\'), 4);
    EXPECT_EQ(text.FindLast(L'a'), 1);
    EXPECT_EQ(text.FindLast(L'c'), 5);
    EXPECT_EQ(text.FindLast(L'x'), 0);
    EXPECT_EQ(clString().FindLast(L'x'), 0);
}

TEST(StringFind, BareTextFoldsAndMeasuresAlike) {
    EXPECT_EQ(MeasureText(L""), 0);
    EXPECT_EQ(MeasureText(L"abc"), 3);
    EXPECT_EQ(FoldAscii(L'A'), L'a');
    EXPECT_EQ(FoldAscii(L'Z'), L'z');
    EXPECT_EQ(FoldAscii(L'@'), L'@');
    EXPECT_EQ(FoldAscii(L'['), L'[');
    EXPECT_EQ(FoldAscii(L'\xC4'), L'\xC4');
    EXPECT_EQ(UpperAscii(L'a'), L'A');
    EXPECT_EQ(UpperAscii(L'z'), L'Z');
    EXPECT_EQ(UpperAscii(L'`'), L'`');
    EXPECT_EQ(UpperAscii(L'{'), L'{');
    EXPECT_EQ(UpperAscii(L'\xE4'), L'\xE4');
}
