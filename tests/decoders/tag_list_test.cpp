#include "decoders/tag_list.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "tests/support/text.h"

namespace {

// Bytes of a tag block, written one piece behind the other.
class Block {
public:
    Block& Int(std::int32_t value) {
        const auto* raw = reinterpret_cast<const std::uint8_t*>(&value);
        bytes.insert(bytes.end(), raw, raw + sizeof(value));
        return *this;
    }
    // The units without a terminator.
    Block& Units(const wchar_t* text) {
        const auto* raw = reinterpret_cast<const std::uint8_t*>(text);
        bytes.insert(bytes.end(), raw, raw + 2 * clString(text).Length());
        return *this;
    }
    Block& Text(const wchar_t* text) { return Units(text).Raw({0, 0}); }
    Block& Raw(std::vector<std::uint8_t> raw) {
        bytes.insert(bytes.end(), raw.begin(), raw.end());
        return *this;
    }
    // A well-formed entry.
    Block& Entry(const wchar_t* name, const wchar_t* value, std::vector<std::uint8_t> data = {}) {
        Int(4 + 2 * (clString(name).Length() + 1) + 2 * (clString(value).Length() + 1) +
            static_cast<std::int32_t>(data.size()));
        return Text(name).Text(value).Raw(std::move(data));
    }

    std::vector<std::uint8_t> bytes;
};

// "name=value" of each entry, with "+" and the payload's bytes if it has any.
std::string Shown(const TagList& list) {
    std::string out;
    for (std::int64_t i = 0; i < list.Count(); ++i) {
        const TagEntry& entry = list.At(i);
        if (i != 0) out += ' ';
        out += Utf8(entry.name) + '=' + Utf8(entry.value);
        if (entry.data.size != 0) out += '+';
        for (std::int64_t k = 0; k < entry.data.size; ++k)
            out += "0123456789ABCDEF"[entry.data.data[k] & 15];
    }
    return out;
}

// Parses the block from memory that ends with it, so that a read beyond it is
// found where there is a sanitizer; `skew` bytes in front move its address.
std::string Parsed(const Block& block, std::size_t skew = 0) {
    const std::size_t size = block.bytes.size();
    const std::unique_ptr<std::uint8_t[]> memory(new std::uint8_t[skew + size]);
    if (size != 0) std::memcpy(memory.get() + skew, block.bytes.data(), size);
    TagList list;
    list.Parse(memory.get() + skew, static_cast<std::int32_t>(size));
    return Shown(list);
}

struct Case {
    const char* what;
    Block block;
    const char* entries;
};

void Check(const std::vector<Case>& cases) {
    for (const Case& c : cases) {
        for (std::size_t skew = 0; skew < 4; ++skew) {
            EXPECT_EQ(Parsed(c.block, skew), c.entries) << c.what << ", " << skew << " bytes off";
        }
    }
}

constexpr std::int32_t largest = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t smallest = std::numeric_limits<std::int32_t>::min();

TagList& Fill(TagList& list, std::initializer_list<const wchar_t*> namesAndValues) {
    for (auto it = namesAndValues.begin(); it != namesAndValues.end(); it += 2) {
        list.Add(it[0], it[1]);
    }
    return list;
}

}  // namespace

TEST(TagBlock, WellFormedEntriesComeInOrder) {
    Check({
        {"one", Block().Int(1).Entry(L"a", L"b"), "a=b"},
        {"three", Block().Int(3).Entry(L"a", L"b").Entry(L"Title", L"c").Entry(L"a", L"d"),
         "a=b Title=c a=d"},
        {"an empty name", Block().Int(2).Entry(L"", L"b").Entry(L"a", L""), "=b a="},
        {"a payload", Block().Int(1).Entry(L"a", L"b", {1, 2, 3, 4}), "a=b+1234"},
        {"an odd payload moves the next entry",
         Block().Int(3).Entry(L"a", L"b", {1}).Entry(L"c", L"d", {2, 3, 4}).Entry(L"e", L"f"),
         "a=b+1 c=d+234 e=f"},
        {"several values", Block().Int(1).Entry(L"a", L"b\rc"), "a=b\rc"},
        {"text beyond ASCII", Block().Int(1).Entry(L"\u00C4", L"\u4E2D"), "\xC3\x84=\xE4\xB8\xAD"},
    });
}

TEST(TagBlock, NothingComesOfABlockWithoutEntries) {
    Check({
        {"no bytes", Block(), ""},
        {"a part of the count", Block().Raw({1, 0, 0}), ""},
        {"the count alone, of 4 bytes", Block().Int(1), ""},
        {"a count of 0", Block().Int(0).Entry(L"a", L"b"), ""},
        {"a count of -1", Block().Int(-1).Entry(L"a", L"b"), ""},
        {"the smallest count", Block().Int(smallest).Entry(L"a", L"b"), ""},
    });
}

TEST(TagBlock, ANullBlockOrASizeThatIsNotPositiveEmptiesTheList) {
    const Block block = Block().Int(1).Entry(L"a", L"b");
    const std::int32_t size = static_cast<std::int32_t>(block.bytes.size());
    TagList list;
    Fill(list, {L"old", L"1"}).Parse(nullptr, size);
    EXPECT_EQ(list.Count(), 0);
    for (const std::int32_t wrong : {0, -1, smallest}) {
        Fill(list, {L"old", L"1"}).Parse(block.bytes.data(), wrong);
        EXPECT_EQ(list.Count(), 0) << wrong;
    }
}

TEST(TagBlock, ParsingReplacesWhatTheListHeld) {
    TagList list;
    Fill(list, {L"old", L"1"});
    const Block block = Block().Int(1).Entry(L"a", L"b");
    list.Parse(block.bytes.data(), static_cast<std::int32_t>(block.bytes.size()));
    EXPECT_EQ(Shown(list), "a=b");
}

// An entry of name "a" and value "b" has 12 bytes.
TEST(TagBlock, AnEntrySizeOutsideTheBlockEndsTheWalkWithoutAnEntry) {
    Check({
        {"negative", Block().Int(2).Entry(L"x", L"y").Int(-1).Text(L"a").Text(L"b"), "x=y"},
        {"the smallest", Block().Int(1).Int(smallest).Text(L"a").Text(L"b"), ""},
        {"one byte too large", Block().Int(1).Int(13).Text(L"a").Text(L"b"), ""},
        {"one byte too large, second",
         Block().Int(2).Entry(L"x", L"y").Int(13).Text(L"a").Text(L"b"), "x=y"},
        {"the largest", Block().Int(1).Int(largest).Text(L"a").Text(L"b"), ""},
        {"fewer than 4 bytes for it", Block().Int(2).Entry(L"x", L"y").Raw({12, 0, 0}), "x=y"},
        {"one byte for it", Block().Int(9).Entry(L"x", L"y").Raw({12}), "x=y"},
    });
}

TEST(TagBlock, AnEntryWithoutRoomForAValueStaysWithoutOneAndEndsTheWalk) {
    Check({
        {"room for the name only", Block().Int(2).Int(8).Text(L"a").Entry(L"x", L"y"), "a="},
        {"nothing but the size", Block().Int(2).Int(4).Text(L"a").Entry(L"x", L"y"), "a="},
        {"not even the size", Block().Int(2).Int(0).Text(L"a").Entry(L"x", L"y"), "a="},
        {"3 bytes", Block().Int(2).Int(3).Text(L"a").Entry(L"x", L"y"), "a="},
        {"the name runs past its entry", Block().Int(2).Int(6).Text(L"long").Entry(L"x", L"y"),
         "long="},
        {"behind another entry",
         Block().Int(3).Entry(L"x", L"y").Int(8).Text(L"a").Entry(L"p", L"q"), "x=y a="},
        {"the size as the block's last bytes", Block().Int(1).Int(4), "="},
    });
}

TEST(TagBlock, AValueThatRunsPastItsEntryStaysAndEndsTheWalk) {
    Check({
        {"one byte of room", Block().Int(2).Int(9).Text(L"a").Text(L"bc").Entry(L"x", L"y"),
         "a=bc"},
        {"terminator outside", Block().Int(2).Int(12).Text(L"a").Text(L"bc").Entry(L"x", L"y"),
         "a=bc"},
        {"terminator half outside", Block().Int(2).Int(13).Text(L"a").Text(L"bc").Entry(L"x", L"y"),
         "a=bc"},
    });
}

TEST(TagBlock, TextWithoutATerminatorRunsToTheEndOfTheBlock) {
    Check({
        {"name", Block().Int(1).Int(10).Units(L"abc"), "abc="},
        {"name with an odd byte", Block().Int(1).Int(11).Units(L"abc").Raw({0x41}), "abc="},
        {"name behind an entry", Block().Int(2).Entry(L"x", L"y").Int(6).Units(L"a"), "x=y a="},
        {"name of no unit and one byte", Block().Int(1).Int(5).Raw({0x41}), "="},
        {"value", Block().Int(1).Int(14).Text(L"a").Units(L"bcd"), "a=bcd"},
        {"value with an odd byte", Block().Int(1).Int(13).Text(L"a").Units(L"bc").Raw({0}), "a=bc"},
        {"value of no unit and one byte", Block().Int(1).Int(9).Text(L"a").Raw({0x41}), "a="},
    });
}

TEST(TagBlock, TheWalkEndsWithTheCountOrWithTheBlock) {
    Check({
        {"the count comes first", Block().Int(1).Entry(L"a", L"b").Entry(L"c", L"d"), "a=b"},
        {"bytes behind the last entry", Block().Int(1).Entry(L"a", L"b").Raw({1, 2, 3}), "a=b"},
        {"the block comes first", Block().Int(3).Entry(L"a", L"b").Entry(L"c", L"d"), "a=b c=d"},
        {"the largest count", Block().Int(largest).Entry(L"a", L"b"), "a=b"},
    });
}

// Its entries end at the bytes 30, 43 and 53.
const Block& ThreeEntries() {
    static const Block block =
        Block().Int(3).Entry(L"Artist", L"One").Entry(L"b", L"", {1, 2, 3}).Entry(L"", L"z");
    return block;
}

Block CutAt(std::size_t size) {
    Block cut;
    const auto begin = ThreeEntries().bytes.begin();
    cut.bytes.assign(begin, begin + static_cast<std::ptrdiff_t>(size));
    return cut;
}

TEST(TagBlock, ACutBlockGivesTheEntriesThatAreWhole) {
    ASSERT_EQ(ThreeEntries().bytes.size(), 53u);
    for (std::size_t size = 0; size <= 53; ++size) {
        const char* expected = "Artist=One b=+123 =z";
        if (size < 53) expected = "Artist=One b=+123";
        if (size < 43) expected = "Artist=One";
        if (size < 30) expected = "";
        EXPECT_EQ(Parsed(CutAt(size)), expected) << size;
    }
}

// Beyond the bounds that the memory around the block watches, no damage may
// conjure up entries that the bytes have no room for.
TEST(TagBlock, AnyOneWrongByteKeepsTheWalkInsideTheBlock) {
    for (std::size_t size = 0; size <= 53; ++size) {
        for (std::size_t i = 0; i < size; ++i) {
            for (const int byte : {0x00, 0x01, 0x7F, 0x80, 0xFF}) {
                Block changed = CutAt(size);
                changed.bytes[i] = static_cast<std::uint8_t>(byte);
                const std::string shown = Parsed(changed);
                const auto entries = std::count(shown.begin(), shown.end(), '=');
                EXPECT_LE(entries, static_cast<std::ptrdiff_t>(size / 8 + 1));
            }
        }
    }
}

TEST(TagList, AddNeverLooksForAnOlderEntry) {
    TagList list;
    Fill(list, {L"Track", L"1", L"Track", L"2", L"track", L"3"});
    EXPECT_EQ(Shown(list), "Track=1 Track=2 track=3");
}

TEST(TagList, GetFindsTheFirstOfANameWhateverTheCaseOfItsAsciiLetters) {
    TagList list;
    Fill(list, {L"Artist", L"1", L"ARTIST", L"2", L"\u00C4", L"3", L"Art", L"4", L"", L"5"});
    struct Case {
        const wchar_t* name;
        const char* value;
    };
    const Case cases[] = {
        {L"Artist", "1"}, {L"aRTIST", "1"}, {L"Art", "4"},   {L"Arti", ""},
        {L"", "5"},       {L"\u00C4", "3"}, {L"\u00E4", ""}, {L"Title", ""},
    };
    for (const Case& c : cases)
        EXPECT_EQ(Utf8(list.Get(c.name)), c.value) << Utf8(c.name);
}

TEST(TagList, TakeAnswersTheFirstAndRemovesAllOfThatName) {
    TagList list;
    Fill(list, {L"Track", L"1", L"a", L"b", L"TRACK", L"2", L"track", L"3", L"c", L"d"});
    EXPECT_EQ(Utf8(list.Take(L"tracK")), "1");
    EXPECT_EQ(Shown(list), "a=b c=d");
    EXPECT_EQ(Utf8(list.Take(L"Track")), "");
    EXPECT_EQ(Shown(list), "a=b c=d");
}

TEST(TagList, TakeMayBeGivenTheNameOfAnEntryThatGoes) {
    TagList list;
    Fill(list, {L"a", L"1", L"b", L"2", L"A", L"3"});
    EXPECT_EQ(Utf8(list.Take(list.At(2).name)), "1");
    EXPECT_EQ(Shown(list), "b=2");
}

TEST(TagList, MergeAppendsOnlyNamesThatAreNotThereYet) {
    TagList list;
    TagList other;
    Fill(list, {L"Artist", L"1", L"b", L"2"});
    Fill(other, {L"ARTIST", L"x", L"c", L"y", L"C", L"z", L"d", L"w"});
    list.Merge(other);
    EXPECT_EQ(Shown(list), "Artist=1 b=2 c=y d=w");
    EXPECT_EQ(Shown(other), "ARTIST=x c=y C=z d=w");
}

clString Numbered(wchar_t letter, std::int64_t number) {
    clString name;
    name.Append(letter);
    name.Append(clString(number));
    return name;
}

TEST(TagList, MergeOfManyNamesIsThatOfFew) {
    TagList list;
    TagList other;
    for (int i = 0; i < 3000; ++i) {
        list.Add(Numbered(L'n', i % 2000), L"old");
        other.Add(Numbered(L'N', i), L"new");
    }
    list.Merge(other);
    ASSERT_EQ(list.Count(), 4000);
    EXPECT_EQ(Utf8(list.Get(L"N1999")), "old");
    for (int i = 2000; i < 3000; ++i) {
        EXPECT_EQ(Utf8(list.At(1000 + i).name), "N" + std::to_string(i));
        EXPECT_EQ(Utf8(list.At(1000 + i).value), "new");
    }
}

TEST(TagList, MergeCopiesThePayload) {
    const Block block = Block().Int(1).Entry(L"a", L"b", {1, 2});
    TagList list;
    {
        TagList other;
        other.Parse(block.bytes.data(), static_cast<std::int32_t>(block.bytes.size()));
        list.Merge(other);
    }
    EXPECT_EQ(Shown(list), "a=b+12");
}

TEST(TagList, MergeWithItselfChangesNothing) {
    TagList list;
    Fill(list, {L"a", L"b", L"a", L"c"});
    list.Merge(list);
    EXPECT_EQ(Shown(list), "a=b a=c");
}

TEST(TagList, ClearFreesAllAndTheListGoesOn) {
    TagList list;
    for (int i = 0; i < 100; ++i)
        list.Add(L"a", L"b");
    list.Clear();
    EXPECT_EQ(list.Count(), 0);
    EXPECT_EQ(Shown(Fill(list, {L"c", L"d"})), "c=d");
}
