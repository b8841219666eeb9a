#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "foundation/arrays.h"
#include "tests/support/allocations.h"
#include "tests/support/text.h"

namespace {

using Texts = std::vector<std::string>;

Texts Items(const clStringList& list) {
    Texts result;
    for (std::int64_t i = 0; i < list.Count(); ++i)
        result.push_back(Utf8(*list.At(i)));
    return result;
}

template <std::size_t size>
Texts Packed(const wchar_t (&text)[size], std::int64_t byteLength) {
    clStringList list;
    list.Add(L"before");
    list.SplitPacked(text, byteLength);
    return Items(list);
}

// All of the literal but its terminator.
template <std::size_t size>
Texts Packed(const wchar_t (&text)[size]) {
    return Packed(text, std::int64_t{(size - 1) * sizeof(wchar_t)});
}

std::int64_t EntryOf(const clString& text) {
    return reinterpret_cast<std::int64_t>(&text);
}

}  // namespace

TEST(StringList, AddedStringsAreCopiesWithTheGivenTag) {
    clString text(L"one");
    text.tag = 5;
    clStringList list;
    list.Add(text);
    list.Add(text, 7);
    list.Add(L"two", 8);
    text.Assign(L"changed");
    EXPECT_EQ(Items(list), (Texts{"one", "one", "two"}));
    EXPECT_EQ(list.At(0)->tag, 0);
    EXPECT_EQ(list.At(1)->tag, 7);
    EXPECT_EQ(list.At(2)->tag, 8);
}

TEST(StringList, InsertedStringsHaveNoTag) {
    clString text(L"new");
    text.tag = 5;
    for (const std::int64_t index : {-1, 2, 99}) {
        clStringList list;
        list.Add(L"a");
        list.Add(L"b");
        list.Insert(index, text);
        EXPECT_EQ(Items(list), (Texts{"a", "b", "new"})) << index;
        EXPECT_EQ(list.At(2)->tag, 0);
    }
    clStringList list;
    list.Add(L"a");
    list.Insert(0, text);
    EXPECT_EQ(Items(list), (Texts{"new", "a"}));
}

TEST(StringList, RemoveAtIgnoresTheOutside) {
    clStringList list;
    for (const wchar_t* text : {L"a", L"b", L"c"})
        list.Add(text);
    list.RemoveAt(-1);
    list.RemoveAt(3);
    EXPECT_EQ(list.Count(), 3);
    list.RemoveAt(1);
    EXPECT_EQ(Items(list), (Texts{"a", "c"}));
    list.RemoveAt(0);
    list.RemoveAt(0);
    EXPECT_EQ(list.Count(), 0);
}

TEST(StringList, ClearTakes32HeapEntriesForTheNextAdd) {
    clStringList list;
    list.Add(L"a");
    list.Clear();
    EXPECT_EQ(list.Count(), 0);
    EXPECT_EQ(list.Capacity(), 0);
    list.Add(L"b");
    EXPECT_EQ(list.Capacity(), 32);
    EXPECT_EQ(Items(list), (Texts{"b"}));
}

TEST(StringList, UpToSixteenItemsCostTheirStringsOnly) {
    AllocationCount count;
    {
        clStringList list;
        for (int i = 0; i < 16; ++i)
            list.Add(L"short");
    }
    EXPECT_EQ(count.Blocks(), 16u);
}

TEST(StringList, ItemCopyIsEmptyOutsideTheList) {
    clStringList list;
    list.Add(L"a", 3);
    EXPECT_EQ(Utf8(list.ItemCopy(0)), "a");
    EXPECT_EQ(list.ItemCopy(0).tag, 3);
    EXPECT_EQ(Utf8(list.ItemCopy(-1)), "");
    EXPECT_EQ(Utf8(list.ItemCopy(1)), "");
    list.Clear();
    EXPECT_EQ(Utf8(list.ItemCopy(0)), "");
}

TEST(StringList, IndexOfFindsTheFirstEqualItem) {
    clStringList list;
    for (const wchar_t* text : {L"a", L"B", L"b"})
        list.Add(text);
    EXPECT_EQ(list.IndexOf(L"b", false), 2);
    EXPECT_EQ(list.IndexOf(L"b", true), 1);
    EXPECT_EQ(list.IndexOf(L"c", true), -1);
}

TEST(StringList, AMoveTakesTheItems) {
    clStringList source;
    source.Add(L"a", 4);
    const clStringList taken(std::move(source));
    EXPECT_EQ(Items(taken), (Texts{"a"}));
    EXPECT_EQ(taken.At(0)->tag, 4);
    // NOLINTNEXTLINE(bugprone-use-after-move): what is left is the promise
    EXPECT_EQ(source.Count(), 0);
}

TEST(StringList, TheComparatorGoesByUnitsOrWithoutAsciiCase) {
    const struct {
        const wchar_t* left;
        const wchar_t* right;
        bool exact;
        bool noCase;
    } rows[] = {{L"a", L"b", true, true},         {L"b", L"a", false, false},
                {L"a", L"a", false, false},       {L"B", L"a", true, false},
                {L"a", L"B", false, true},        {L"ab", L"abc", true, true},
                {L"abc", L"ab", false, false},    {L"", L"a", true, true},
                {L"a", L"A", false, false},       {L"A", L"a", true, false},
                {L"\xE4", L"\xC4", false, false}, {L"\xC4", L"\xE4", true, true},
                {L"a", L"\xFFFF", true, true}};
    for (const auto& row : rows) {
        const clString left(row.left);
        const clString right(row.right);
        EXPECT_EQ(StringGoesBefore(EntryOf(left), EntryOf(right), 0), row.exact)
            << Utf8(left) << ' ' << Utf8(right);
        EXPECT_EQ(StringGoesBefore(EntryOf(left), EntryOf(right), 1), row.noCase)
            << Utf8(left) << ' ' << Utf8(right);
    }
}

TEST(StringList, NullOnTheRightNeverGoesAfter) {
    const clString text(L"a");
    for (const std::int64_t context : {0, 1}) {
        EXPECT_FALSE(StringGoesBefore(EntryOf(text), 0, context));
        EXPECT_FALSE(StringGoesBefore(0, 0, context));
        EXPECT_TRUE(StringGoesBefore(0, EntryOf(text), context));
    }
}

TEST(StringList, SortsExactlyOrWithoutCase) {
    for (const std::int64_t context : {0, 1, 7}) {
        clStringList list;
        for (const wchar_t* text : {L"b", L"C", L"a", L"B2"})
            list.Add(text);
        list.Sort(context);
        EXPECT_EQ(Items(list),
                  context == 0 ? (Texts{"B2", "C", "a", "b"}) : (Texts{"a", "b", "B2", "C"}));
    }
}

TEST(StringList, ItemsEqualButForCaseEndWhereThePartitionLeavesThem) {
    clStringList list;
    for (const wchar_t* text : {L"x", L"X", L"x", L"X", L"a"})
        list.Add(text, list.Count());
    list.Sort(1);
    std::vector<std::int64_t> tags;
    for (std::int64_t i = 0; i < list.Count(); ++i)
        tags.push_back(list.At(i)->tag);
    // By hand: a X x X x, that is 4 3 2 1 0, and then the last two swapped.
    EXPECT_EQ(tags.front(), 4);
    EXPECT_EQ(tags, (std::vector<std::int64_t>{4, 3, 2, 0, 1}));
}

TEST(StringList, SortByTakesAnyRule) {
    clStringList list;
    for (const std::int64_t tag : {1, 3, 2})
        list.Add(L"same", tag);
    list.SortBy(
        [](std::int64_t a, std::int64_t b, std::int64_t) {
            return reinterpret_cast<clString*>(a)->tag > reinterpret_cast<clString*>(b)->tag;
        },
        0);
    EXPECT_EQ(list.At(0)->tag, 3);
    EXPECT_EQ(list.At(2)->tag, 1);
}

TEST(StringListText, JoinPutsOneSeparatorBetweenItems) {
    const struct {
        std::vector<const wchar_t*> items;
        const char* expected;
    } rows[] = {{{}, ""},           {{L"a"}, "a"},
                {{L""}, ""},        {{L"a", L"", L"b"}, "a\r\rb"},
                {{L"", L""}, "\r"}, {{L"a", L"b", L""}, "a\rb\r"}};
    for (const auto& row : rows) {
        clStringList list;
        for (const wchar_t* item : row.items)
            list.Add(item);
        clString out(L"before");
        list.Join(out);
        EXPECT_EQ(Utf8(out), row.expected);
    }
}

TEST(StringListText, JoinMayWriteIntoAnItem) {
    clStringList list;
    list.Add(L"a");
    list.Add(L"b");
    list.Join(*list.At(0));
    EXPECT_EQ(Items(list), (Texts{"a\rb", "b"}));
}

TEST(StringListText, SplitKeepsEmptyItemsAndUndoesJoin) {
    const struct {
        const wchar_t* text;
        Texts expected;
    } rows[] = {
        {L"", {}},           {L"a", {"a"}},       {L"\r", {"", ""}},   {L"a\r\rb", {"a", "", "b"}},
        {L"a\r", {"a", ""}}, {L"\ra", {"", "a"}}, {L"a\nb", {"a\nb"}}, {L"a\r\nb", {"a", "\nb"}}};
    for (const auto& row : rows) {
        clStringList list;
        list.Split(row.text);
        EXPECT_EQ(Items(list), row.expected) << Utf8(row.text);
        clString joined;
        list.Join(joined);
        EXPECT_EQ(Utf8(joined), Utf8(row.text));
    }
}

TEST(StringListText, SplitAppends) {
    clStringList list;
    list.Add(L"first");
    list.Split(L"a\rb");
    list.Split(L"");
    EXPECT_EQ(Items(list), (Texts{"first", "a", "b"}));
}

TEST(StringListText, SplitLinesSkipsLineFeedsBehindASeparator) {
    const struct {
        const wchar_t* text;
        Texts expected;
    } rows[] = {{L"", {}},
                {L"a\r\n\nb", {"a", "b"}},
                {L"a\r\rb", {"a", "", "b"}},
                {L"a\r", {"a"}},
                {L"a\r\n", {"a"}},
                {L"a\r\r", {"a", ""}},
                {L"\r", {""}},
                {L"\n\ra", {"\n", "a"}},
                {L"a\nb", {"a\nb"}},
                {L"a\r\n\r\nb", {"a", "", "b"}}};
    for (const auto& row : rows) {
        clStringList list;
        list.Add(L"before");
        list.SplitLines(row.text);
        EXPECT_EQ(Items(list), row.expected) << Utf8(row.text);
    }
}

TEST(StringListText, SplitLinesMayReadAnItem) {
    clStringList list;
    list.Add(L"a\r\nb");
    list.SplitLines(*list.At(0));
    EXPECT_EQ(Items(list), (Texts{"a", "b"}));
}

TEST(StringListText, SplitPackedEndsAtTheFirstEmptyItem) {
    EXPECT_EQ(Packed(L"a\r\rb"), (Texts{"a"}));
    EXPECT_EQ(Packed(L"a\r[Empty]\rb"), (Texts{"a", "", "b"}));
    EXPECT_EQ(Packed(L"a\rb\r"), (Texts{"a", "b"}));
    EXPECT_EQ(Packed(L"\ra"), (Texts{}));
    EXPECT_EQ(Packed(L""), (Texts{}));
    EXPECT_EQ(Packed(L"[Empty]"), (Texts{""}));
    EXPECT_EQ(Packed(L"[empty]\r[Empty] "), (Texts{"[empty]", "[Empty] "}));
    // Behind a NUL of the text itself separators are plain characters.
    EXPECT_EQ(Packed(L"a\rb\0c\rd"), (Texts{"a", "b", "c\rd"}));
    EXPECT_EQ(Packed(L"a\nb"), (Texts{"a\nb"}));
}

TEST(StringListText, SplitPackedReadsNoMoreThanItsBytes) {
    EXPECT_EQ(Packed(L"abc\rdef", 0), (Texts{}));
    EXPECT_EQ(Packed(L"abc\rdef", -4), (Texts{}));
    EXPECT_EQ(Packed(L"abc\rdef", 6), (Texts{"abc"}));
    EXPECT_EQ(Packed(L"abc\rdef", 8), (Texts{"abc"}));
    EXPECT_EQ(Packed(L"abc\rdef", 10), (Texts{"abc", "d"}));
    // Half a character at the end counts with its low byte.
    EXPECT_EQ(Packed(L"abc\rdef", 3), (Texts{"ab"}));
    clStringList list;
    list.SplitPacked(nullptr, 0);
    EXPECT_EQ(list.Count(), 0);
}

TEST(StringListText, SplitPackedNeedsNoTerminator) {
    // On the heap, so that a read behind the block is seen.
    const std::vector<wchar_t> block = {L'x', L'\r', L'y'};
    clStringList list;
    list.SplitPacked(block.data(), 6);
    EXPECT_EQ(Items(list), (Texts{"x", "y"}));
}
