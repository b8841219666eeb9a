#include "foundation/string.h"

#include <gtest/gtest.h>

#include <utility>

#include "tests/foundation/long_text.h"
#include "tests/support/allocations.h"
#include "tests/support/text.h"

namespace {

clString Tagged(const wchar_t* text, std::int64_t tag) {
    clString result(text);
    result.tag = tag;
    return result;
}

}  // namespace

static_assert(POS_LAST == -12345);
// Eight bytes each for the text, the count, the tag, the narrow block, its size
// and the capacity, and the inline buffer of 128 units.
static_assert(sizeof(clString) == 6 * 8 + 128 * 2);

TEST(String, AnEmptyStringHasNoCharacters) {
    const clString empty;
    EXPECT_EQ(empty.Length(), 0);
    EXPECT_TRUE(empty.IsEmpty());
    EXPECT_EQ(empty.Capacity(), 128);
    EXPECT_EQ(empty.tag, 0);
    EXPECT_EQ(empty.Chars()[0], 0);
    EXPECT_EQ(empty.CharAt(1), 0);
    EXPECT_EQ(empty.CharAt(POS_LAST), 0);
    EXPECT_EQ(empty.Find(L"a"), 0);
    EXPECT_EQ(empty.Find(L""), 0);
}

TEST(String, PositionsCountFromOneAndZeroIsOutside) {
    const clString text(L"abc");
    const struct {
        std::int32_t pos;
        wchar_t expected;
    } rows[] = {{-1, 0}, {0, 0}, {1, L'a'}, {3, L'c'}, {4, 0}, {5, 0}, {POS_LAST, L'c'}};
    for (const auto& row : rows)
        EXPECT_EQ(text.CharAt(row.pos), row.expected) << row.pos;
    EXPECT_EQ(text.Length(), 3);
    EXPECT_FALSE(text.IsEmpty());
}

TEST(String, NullTextGivesTheEmptyString) {
    EXPECT_TRUE(clString(static_cast<const wchar_t*>(nullptr)).IsEmpty());
    EXPECT_TRUE(clString(static_cast<const char*>(nullptr)).IsEmpty());
    clString text(L"before");
    text.Assign(static_cast<const wchar_t*>(nullptr));
    EXPECT_TRUE(text.IsEmpty());
    text.Assign(L"before");
    text = static_cast<const char*>(nullptr);
    EXPECT_TRUE(text.IsEmpty());
    text.Assign(L"before");
    text.Assign(nullptr, 5);
    EXPECT_TRUE(text.IsEmpty());
}

TEST(String, IntegersBecomeDecimalText) {
    EXPECT_EQ(Utf8(clString(std::int32_t{-7})), "-7");
    EXPECT_EQ(Utf8(clString(std::int32_t{-2147483647 - 1})), "-2147483648");
    EXPECT_EQ(Utf8(clString(std::int64_t{4294967296})), "4294967296");
    EXPECT_EQ(Utf8(clString(std::int64_t{0})), "0");
}

TEST(String, NarrowTextIsReadAndWrittenInTheAnsiCodePage) {
    clString text("caf\xE9");
    EXPECT_EQ(Utf8(text), "caf\xC3\xA9");
    text = "\x80 na\xEFve";  // 0x80 is the euro sign
    EXPECT_EQ(Utf8(text), "\xE2\x82\xAC na\xC3\xAFve");
    EXPECT_STREQ(text.Narrow(), "\x80 na\xEFve");
    text.Assign(L"\x4E00");  // not in that code page
    EXPECT_STREQ(text.Narrow(), "?");
}

TEST(String, TheNarrowBlockIsKeptWhileItsSizeFits) {
    clString text(L"abcd");
    const char* block = text.Narrow();
    text.Assign(L"wxyz");
    EXPECT_EQ(text.Narrow(), block);
    EXPECT_STREQ(block, "wxyz");
    // Four bytes behind the terminator belong to the block and are 0.
    for (int i = 4; i < 9; ++i)
        EXPECT_EQ(block[i], 0) << i;
    text.Assign(L"a longer text");
    EXPECT_STREQ(text.Narrow(), "a longer text");
    // A smaller size takes a block of its own as well.
    text.Assign(L"");
    AllocationCount count;
    const char* empty = text.Narrow();
    const std::size_t blocks = count.Blocks();
    EXPECT_STREQ(empty, "");
    EXPECT_EQ(blocks, 1u);
}

TEST(String, AssignTakesTheStoredCountOrMeasures) {
    clString text;
    text.Assign(L"abcdef");
    EXPECT_EQ(Utf8(text), "abcdef");
    text.Assign(L"abcdef", 4);  // three characters and the terminator
    EXPECT_EQ(Utf8(text), "abc");
    text.Assign(L"abcdef", POS_LAST);
    EXPECT_EQ(Utf8(text), "abcdef");
    text.Assign(L"abcdef", 1);
    EXPECT_TRUE(text.IsEmpty());
}

TEST(String, AssignKeepsABlockThatIsLargeEnough) {
    clString text;
    text.Assign(Repeated(L'a', 200));
    EXPECT_EQ(text.Capacity(), 201);  // no slack
    text.Assign(L"short");
    EXPECT_EQ(text.Capacity(), 201);
    text.Assign(Repeated(L'b', 201));
    EXPECT_EQ(text.Capacity(), 202);
    EXPECT_EQ(Utf8(text), std::string(201, 'b'));
}

TEST(String, TextFromItselfIsAssignedWhole) {
    clString text(L"folder\\name");
    text.Assign(text.Chars() + 7);
    EXPECT_EQ(Utf8(text), "name");
    text.Assign(text);
    EXPECT_EQ(Utf8(text), "name");
}

TEST(String, UpTo127CharactersNeedNoHeap) {
    const clString source(Repeated(L'a', 127));
    const clString longer(Repeated(L'a', 128));
    AllocationCount inlineBlocks;
    clString text;
    text.Assign(source);
    const clString copy(text);
    const clString part = copy.Mid(2);
    const clString upper = part.Upper();
    const std::size_t none = inlineBlocks.Blocks();
    AllocationCount heapBlocks;
    clString outside;
    outside.Assign(longer);
    const std::size_t one = heapBlocks.Blocks();
    EXPECT_EQ(none, 0u);
    EXPECT_EQ(copy.Capacity(), 128);
    EXPECT_EQ(one, 1u);
    EXPECT_EQ(outside.Capacity(), 129);
}

TEST(String, ReserveKeepsTheTextAndAddsTheSlackOnlyWhenItMoves) {
    clString text(L"kept");
    text.Reserve(128, 50);
    EXPECT_EQ(text.Capacity(), 128);
    text.Reserve(129, 50);
    EXPECT_EQ(text.Capacity(), 179);
    text.Reserve(179, 50);
    EXPECT_EQ(text.Capacity(), 179);
    text.Reserve(180, 0);
    EXPECT_EQ(text.Capacity(), 180);
    EXPECT_EQ(Utf8(text), "kept");
}

TEST(String, EveryWayToGrowHasItsOwnSlack) {
    const clString two(L"ab");
    const clString more(Repeated(L'm', 198));  // 201 with "ab" and the terminator
    clString append(two);
    append.Append(more);
    EXPECT_EQ(append.Capacity(), 201 + 67);
    clString appendText(two);
    appendText.Append(more.Chars());
    EXPECT_EQ(appendText.Capacity(), 201 + 67);
    clString plus(two);
    plus += more;
    EXPECT_EQ(plus.Capacity(), 201 + 25);
    clString plusText(two);
    plusText += more.Chars();
    EXPECT_EQ(plusText.Capacity(), 201 + 25);
    clString insert(two);
    insert.Insert(more, 2);
    EXPECT_EQ(insert.Capacity(), 201 + 32);
    clString insertText(two);
    insertText.Insert(more.Chars(), 1);
    EXPECT_EQ(insertText.Capacity(), 201 + 32);
    for (const clString* text : {&append, &appendText, &plus, &plusText, &insert, &insertText}) {
        EXPECT_EQ(text->Length(), 200);
    }
}

TEST(String, OneCharacterTooManyLeavesTheInlineBuffer) {
    clString append(Repeated(L'a', 127));
    EXPECT_EQ(append.Capacity(), 128);
    append.Append(L'b');
    EXPECT_EQ(append.Capacity(), 129 + 43);
    EXPECT_EQ(append.CharAt(POS_LAST), L'b');
    clString plus(Repeated(L'a', 127));
    plus += L'b';
    EXPECT_EQ(plus.Capacity(), 129 + 25);
}

TEST(String, ResetGoesBackToTheInlineBuffer) {
    clString text;
    text.Assign(Repeated(L'a', 300));
    text.Assign(L"first");
    text.Narrow();
    text.Reset();
    EXPECT_EQ(text.Capacity(), 128);
    text.Assign(L"again");
    EXPECT_EQ(Utf8(text), "again");
    EXPECT_STREQ(text.Narrow(), "again");  // the old narrow block of this size is gone
}

TEST(String, CopiesCarryTheTagAndNewTextDoesNotChangeIt) {
    clString text = Tagged(L"one", 77);
    const clString copy(text);
    EXPECT_EQ(copy.tag, 77);
    text.Assign(L"two");
    EXPECT_EQ(text.tag, 77);
    text.Assign(Tagged(L"three", 5));
    EXPECT_EQ(text.tag, 77);
    const clString assigned = (text = Tagged(L"four", 5));
    EXPECT_EQ(assigned.tag, 77);
    EXPECT_EQ(Utf8(assigned), "four");
    const clString wide = (text = L"five");
    const clString narrow = (text = "six");
    EXPECT_EQ(wide.tag, 77);
    EXPECT_EQ(narrow.tag, 77);
    EXPECT_EQ(Utf8(narrow), "six");
    const clString appended = (text += L"ty");
    EXPECT_EQ(appended.tag, 77);
    EXPECT_EQ(Utf8(appended), "sixty");
    EXPECT_EQ((text += clString(L"-")).tag, 77);
    EXPECT_EQ((text += L'1').tag, 77);
    EXPECT_EQ(Utf8(text), "sixty-1");
}

TEST(String, PartsAndFoldedFormsHaveNoTag) {
    const clString text = Tagged(L"Text", 9);
    EXPECT_EQ(text.Mid(1, 4).tag, 0);
    EXPECT_EQ(text.Mid(1).tag, 0);
    EXPECT_EQ(text.Left(4).tag, 0);
    EXPECT_EQ(text.Right(4).tag, 0);
    EXPECT_EQ(text.Upper().tag, 0);
    EXPECT_EQ(text.Lower().tag, 0);
}

TEST(String, AMoveTakesTextAndTagAndLeavesAnEmptyString) {
    for (const std::int32_t length : {3, 127, 128, 1000}) {
        clString source = Repeated(L'x', length);
        source.tag = 4;
        const clString taken(std::move(source));
        EXPECT_EQ(Utf8(taken), std::string(static_cast<std::size_t>(length), 'x'));
        EXPECT_EQ(taken.tag, 4);
        // NOLINTNEXTLINE(bugprone-use-after-move): what is left is the promise
        EXPECT_TRUE(source.IsEmpty());
        EXPECT_EQ(source.Capacity(), 128);
        source.Append(L"usable");
        EXPECT_EQ(Utf8(source), "usable");
    }
}

TEST(String, MidClampsTheEndAndIsEmptyOutside) {
    const clString text(L"abcde");
    const struct {
        std::int32_t first;
        std::int32_t last;
        const char* expected;
    } rows[] = {{1, 5, "abcde"},
                {2, 3, "bc"},
                {1, 1, "a"},
                {5, 5, "e"},
                {1, 6, "abcde"},
                {2, 1000, "bcde"},
                {5, 6, "e"},
                {6, 6, ""},
                {7, 9, ""},
                {0, 3, ""},
                {-1, 3, ""},
                {3, 2, ""},
                {3, 0, ""},
                {2, POS_LAST, "bcde"},
                {POS_LAST, POS_LAST, "e"}};
    for (const auto& row : rows) {
        EXPECT_EQ(Utf8(text.Mid(row.first, row.last)), row.expected)
            << row.first << ' ' << row.last;
    }
    EXPECT_EQ(Utf8(text.Mid(3)), "cde");
    EXPECT_EQ(Utf8(text.Mid(5)), "e");
    EXPECT_EQ(Utf8(text.Mid(6)), "");
    EXPECT_EQ(Utf8(text.Mid(0)), "");
}

TEST(String, LeftAndRightTakeWhatIsThere) {
    const clString text(L"abcde");
    const struct {
        std::int32_t n;
        const char* left;
        const char* right;
    } rows[] = {{0, "", ""},           {1, "a", "e"},
                {4, "abcd", "bcde"},   {5, "abcde", "abcde"},
                {6, "abcde", "abcde"}, {2147483647, "abcde", "abcde"},
                {-1, "", ""},          {-2147483647 - 1, "", ""}};
    for (const auto& row : rows) {
        EXPECT_EQ(Utf8(text.Left(row.n)), row.left) << row.n;
        EXPECT_EQ(Utf8(text.Right(row.n)), row.right) << row.n;
    }
    EXPECT_EQ(Utf8(clString().Right(3)), "");
}

TEST(String, EraseRangeRemovesWhatLiesInside) {
    const struct {
        std::int32_t first;
        std::int32_t last;
        const char* expected;
    } rows[] = {{1, 1, "bcde"},
                {5, 5, "abcd"},
                {2, 4, "ae"},
                {1, 5, ""},
                {1, 100, ""},
                {4, 6, "abc"},
                {0, 3, "abcde"},
                {-2, 3, "abcde"},
                {6, 6, "abcde"},
                {6, 9, "abcde"},
                {3, 2, "abcde"},
                {3, POS_LAST, "ab"},
                {POS_LAST, POS_LAST, "abcd"}};
    for (const auto& row : rows) {
        clString text(L"abcde");
        text.EraseRange(row.first, row.last);
        EXPECT_EQ(Utf8(text), row.expected) << row.first << ' ' << row.last;
        EXPECT_EQ(text.Length(), static_cast<std::int32_t>(std::string(row.expected).size()));
    }
    clString empty;
    empty.EraseRange(1, 1);
    EXPECT_EQ(empty.Length(), 0);
}

TEST(String, InsertGoesBeforeThePosition) {
    const struct {
        const wchar_t* text;
        std::int32_t pos;
        const char* expected;
    } rows[] = {{L"-", 0, "abc"},    {L"-", -1, "abc"},       {L"-", 1, "-abc"},
                {L"-", 2, "a-bc"},   {L"-", 3, "ab-c"},       {L"-", 4, "abc-"},
                {L"-", 5, "abc"},    {L"", 2, "abc"},         {nullptr, 2, "abc"},
                {L"xy", 2, "axybc"}, {L"-", POS_LAST, "ab-c"}};
    for (const auto& row : rows) {
        clString text(L"abc");
        text.Insert(row.text, row.pos);
        EXPECT_EQ(Utf8(text), row.expected) << Utf8(row.text) << ' ' << row.pos;
        clString other(L"abc");
        other.Insert(clString(row.text), row.pos);
        EXPECT_EQ(Utf8(other), row.expected) << Utf8(row.text) << ' ' << row.pos;
    }
    clString empty;
    empty.Insert(L"first", 1);
    EXPECT_EQ(Utf8(empty), "first");
}

TEST(String, OwnTextCanBeInsertedAndAppended) {
    clString text(L"abc");
    text.Append(text);
    EXPECT_EQ(Utf8(text), "abcabc");
    text.Insert(text.Chars() + 1, 3);
    EXPECT_EQ(Utf8(text), "abbcabccabc");
    clString moving(Repeated(L'x', 127));
    moving.Append(moving.Chars());  // the inline text moves to the heap meanwhile
    EXPECT_EQ(Utf8(moving), std::string(254, 'x'));
    moving += moving;
    EXPECT_EQ(moving.Length(), 508);
}

TEST(String, AppendingNothingChangesNothing) {
    clString text(L"abc");
    text.Append(L"");
    text.Append(clString());
    text.Append(static_cast<const wchar_t*>(nullptr));
    text.Append(L'\0');
    text += L"";
    text += L'\0';
    text += static_cast<const wchar_t*>(nullptr);
    EXPECT_EQ(Utf8(text), "abc");
    EXPECT_EQ(text.Length(), 3);  // no NUL has become part of it
}

TEST(String, ReplaceDoesNotSearchWhatItPutIn) {
    const struct {
        const wchar_t* text;
        const wchar_t* what;
        const wchar_t* with;
        const char* expected;
    } rows[] = {{L"a-b-c", L"-", L"+", "a+b+c"}, {L"aaa", L"a", L"aa", "aaaaaa"},
                {L"aaaa", L"aa", L"a", "aa"},    {L"abab", L"ab", L"", ""},
                {L"abc", L"", L"x", "abc"},      {L"abc", L"B", L"x", "abc"},
                {L"abc", L"abcd", L"x", "abc"},  {L"", L"a", L"x", ""},
                {L"--", L"-", L"--", "----"},    {L"xay", L"a", L"", "xy"},
                {L"end.", L".", L"", "end"},     {L".start", L".", L"..", "..start"}};
    for (const auto& row : rows) {
        clString text = Tagged(row.text, 3);
        text.Replace(row.what, row.with);
        EXPECT_EQ(Utf8(text), row.expected) << Utf8(row.text);
        EXPECT_EQ(text.tag, 3);
    }
    clString own(L"a-b");
    own.Replace(L"-", own);
    EXPECT_EQ(Utf8(own), "aa-bb");
}

TEST(String, TrimsTakeSpacesOnly) {
    const struct {
        const wchar_t* text;
        const char* left;
        const char* right;
    } rows[] = {{L"  a b  ", "a b  ", "  a b"},
                {L"\ta\t", "\ta\t", "\ta\t"},
                {L" \t ", "\t ", " \t"},
                {L"   ", "", ""},
                {L"", "", ""},
                {L"\xA0 x \xA0", "\xC2\xA0 x \xC2\xA0", "\xC2\xA0 x \xC2\xA0"}};
    for (const auto& row : rows) {
        clString left(row.text);
        left.TrimLeft();
        EXPECT_EQ(Utf8(left), row.left);
        clString right(row.text);
        right.TrimRight();
        EXPECT_EQ(Utf8(right), row.right);
    }
}

TEST(String, CaseChangesInAsciiOnly) {
    const clString text(L"aZ@[`{ \xDF\xE4\xC4 1");
    EXPECT_EQ(Utf8(text.Upper()), Utf8(L"AZ@[`{ \xDF\xE4\xC4 1"));
    EXPECT_EQ(Utf8(text.Lower()), Utf8(L"az@[`{ \xDF\xE4\xC4 1"));
    EXPECT_EQ(Utf8(clString().Upper()), "");
}
