#include "foundation/arrays.h"

#include <gtest/gtest.h>

#include <random>
#include <utility>
#include <vector>

#include "tests/support/allocations.h"

namespace {

// Entries whose high half is the key and whose low half tells equal ones apart.
constexpr std::int64_t Entry(std::int64_t key, std::int64_t mark) {
    return (key << 32) | mark;
}

bool KeyGoesBefore(std::int64_t a, std::int64_t b, std::int64_t context) {
    return context == 0 ? (a >> 32) < (b >> 32) : (a >> 32) > (b >> 32);
}

int lessCalls;

bool CountedLess(std::int64_t a, std::int64_t b, std::int64_t) {
    ++lessCalls;
    return a < b;
}

std::vector<std::int64_t> Entries(const clPtrArray& array) {
    std::vector<std::int64_t> result;
    for (std::int64_t i = 0; i < array.Count(); ++i)
        result.push_back(array.Get(i));
    return result;
}

void Fill(clPtrArray& array, std::int64_t count) {
    for (std::int64_t i = array.Count(); i < count; ++i)
        array.Add(i);
}

// The same partition in its plain recursive form.
void PlainSort(std::vector<std::int64_t>& entries, std::int64_t first, std::int64_t last) {
    if (last <= first) return;
    const auto at = [&entries](std::int64_t index) -> std::int64_t& {
        return entries[static_cast<std::size_t>(index)];
    };
    const std::int64_t pivot = at((first + last) / 2);
    std::int64_t i = first;
    std::int64_t j = last;
    for (;;) {
        if (KeyGoesBefore(at(i), pivot, 0)) {
            while (i < last) {
                ++i;
                if (!KeyGoesBefore(at(i), pivot, 0)) break;
            }
        }
        if (KeyGoesBefore(pivot, at(j), 0)) {
            while (j > first) {
                --j;
                if (!KeyGoesBefore(pivot, at(j), 0)) break;
            }
        }
        if (i > j) break;
        const std::int64_t kept = at(i);
        at(i) = at(j);
        at(j) = kept;
        ++i;
        --j;
        if (i > j) break;
    }
    PlainSort(entries, first, j);
    PlainSort(entries, i, last);
}

}  // namespace

TEST(PtrArray, StartsInlineAndEmpty) {
    AllocationCount count;
    clPtrArray array;
    for (std::int64_t i = 0; i < 16; ++i)
        array.Add(i * 10);
    const std::size_t blocks = count.Blocks();
    EXPECT_EQ(blocks, 0u);
    EXPECT_EQ(array.Count(), 16);
    EXPECT_EQ(array.Capacity(), 16);
    EXPECT_EQ(array.Get(0), 0);
    EXPECT_EQ(array.Get(15), 150);
}

TEST(PtrArray, CapacitiesGrowByAStepThatDoublesUpToItsCap) {
    const std::int64_t capacities[] = {16,     48,     112,    240,     496,    1008,
                                       2032,   4080,   8176,   16368,   32752,  65520,
                                       131056, 262128, 524272, 1024272, 1524272};
    clPtrArray array;
    for (const std::int64_t capacity : capacities) {
        Fill(array, array.Count() + 1);  // one more than fitted before
        ASSERT_EQ(array.Capacity(), capacity);
        Fill(array, capacity);
        ASSERT_EQ(array.Capacity(), capacity);
    }
    for (std::int64_t i = 0; i < array.Count(); ++i)
        ASSERT_EQ(array.Get(i), i);
}

TEST(PtrArray, AfterClearTheInlineStorageIsNotUsedAgain) {
    for (const std::int64_t filled : {0, 3, 16, 17, 500}) {
        clPtrArray array;
        Fill(array, filled);
        array.Clear();
        EXPECT_EQ(array.Count(), 0);
        EXPECT_EQ(array.Capacity(), 0);
        AllocationCount count;
        array.Add(5);
        const std::size_t bytes = count.LargestBytes();
        EXPECT_EQ(bytes, 32u * 8);
        EXPECT_EQ(array.Capacity(), 32);
        EXPECT_EQ(array.Get(0), 5);
        Fill(array, 33);
        EXPECT_EQ(array.Capacity(), 32 + 64);
    }
}

TEST(PtrArray, EveryOperationWorksWithoutStorage) {
    clPtrArray array;
    array.Clear();
    array.Clear();
    array.RemoveAt(0);
    array.Sort(CountedLess, 0);
    EXPECT_EQ(array.Count(), 0);
    array.InsertAt(0, 7);
    EXPECT_EQ(Entries(array), std::vector<std::int64_t>{7});
}

TEST(PtrArray, InsertAtMovesTheTailUp) {
    const struct {
        std::int64_t index;
        std::vector<std::int64_t> expected;
    } rows[] = {{0, {9, 1, 2, 3}}, {1, {1, 9, 2, 3}},    {2, {1, 2, 9, 3}},  {3, {1, 2, 3, 9}},
                {4, {1, 2, 3, 9}}, {1000, {1, 2, 3, 9}}, {-1, {1, 2, 3, 9}}, {-2, {1, 2, 3, 9}}};
    for (const auto& row : rows) {
        clPtrArray array;
        for (const int value : {1, 2, 3})
            array.Add(value);
        array.InsertAt(row.index, 9);
        EXPECT_EQ(Entries(array), row.expected) << row.index;
    }
}

TEST(PtrArray, InsertAtGrowsWhenFull) {
    clPtrArray array;
    Fill(array, 16);
    array.InsertAt(0, 99);
    EXPECT_EQ(array.Capacity(), 48);
    EXPECT_EQ(array.Count(), 17);
    EXPECT_EQ(array.Get(0), 99);
    for (std::int64_t i = 1; i < 17; ++i)
        EXPECT_EQ(array.Get(i), i - 1);
}

TEST(PtrArray, RemoveAtClosesTheGapAndIgnoresTheOutside) {
    const struct {
        std::int64_t index;
        std::vector<std::int64_t> expected;
    } rows[] = {{0, {2, 3}}, {1, {1, 3}}, {2, {1, 2}}, {3, {1, 2, 3}}, {-1, {1, 2, 3}}};
    for (const auto& row : rows) {
        clPtrArray array;
        for (const int value : {1, 2, 3})
            array.Add(value);
        array.RemoveAt(row.index);
        EXPECT_EQ(Entries(array), row.expected) << row.index;
    }
}

TEST(PtrArray, AMoveLeavesAnArrayWithoutStorage) {
    for (const std::int64_t filled : {3, 20}) {
        clPtrArray source;
        Fill(source, filled);
        const clPtrArray taken(std::move(source));
        EXPECT_EQ(taken.Count(), filled);
        EXPECT_EQ(taken.Get(filled - 1), filled - 1);
        // NOLINTNEXTLINE(bugprone-use-after-move): what is left is the promise
        EXPECT_EQ(source.Count(), 0);
        source.Add(1);
        EXPECT_EQ(source.Capacity(), 32);
    }
}

TEST(PtrArraySort, FewerThanTwoEntriesAreNeverCompared) {
    lessCalls = 0;
    clPtrArray array;
    array.Sort(CountedLess, 0);
    array.Add(1);
    array.Sort(CountedLess, 0);
    array.Sort(CountedLess, 0, 0, 0);
    EXPECT_EQ(lessCalls, 0);
    array.Add(0);
    array.Sort(CountedLess, 0);
    EXPECT_GT(lessCalls, 0);
    EXPECT_EQ(array.Get(0), 0);
}

TEST(PtrArraySort, ARangeOutsideTheArrayIsLeftAlone) {
    const struct {
        std::int64_t first;
        std::int64_t last;
        std::vector<std::int64_t> expected;
    } rows[] = {{-1, -1, {1, 2, 3, 4, 5}}, {1, 3, {5, 2, 3, 4, 1}}, {-1, 2, {3, 4, 5, 2, 1}},
                {2, -1, {5, 4, 1, 2, 3}},  {0, 4, {1, 2, 3, 4, 5}}, {0, 5, {5, 4, 3, 2, 1}},
                {5, 6, {5, 4, 3, 2, 1}},   {3, 3, {5, 4, 3, 2, 1}}, {3, 1, {5, 4, 3, 2, 1}},
                {-2, 3, {5, 4, 3, 2, 1}}};
    for (const auto& row : rows) {
        clPtrArray array;
        for (const int value : {5, 4, 3, 2, 1})
            array.Add(value);
        array.Sort(CountedLess, 0, row.first, row.last);
        EXPECT_EQ(Entries(array), row.expected) << row.first << ' ' << row.last;
    }
}

TEST(PtrArraySort, AComparatorThatAlwaysAgreesStaysInTheRange) {
    clPtrArray array;
    Fill(array, 16);  // up to the end of the inline storage
    const std::vector<std::int64_t> before = Entries(array);
    array.Sort([](std::int64_t, std::int64_t, std::int64_t) { return true; }, 0);
    EXPECT_EQ(Entries(array), before);
}

TEST(PtrArraySort, EqualEntriesEndWhereThePartitionLeavesThem) {
    clPtrArray array;
    for (std::int64_t mark = 1; mark <= 5; ++mark)
        array.Add(Entry(0, mark));
    array.Sort(KeyGoesBefore, 0);
    // By hand: 5 4 3 2 1, then the halves 5 4 | 2 1, each swapped again.
    std::vector<std::int64_t> marks;
    for (std::int64_t entry : Entries(array))
        marks.push_back(entry & 0xFFFF);
    EXPECT_EQ(marks, (std::vector<std::int64_t>{4, 5, 3, 1, 2}));
}

TEST(PtrArraySort, TheContextReachesTheComparator) {
    clPtrArray array;
    for (const int key : {1, 3, 2})
        array.Add(Entry(key, 0));
    array.Sort(KeyGoesBefore, 1);
    EXPECT_EQ(Entries(array), (std::vector<std::int64_t>{Entry(3, 0), Entry(2, 0), Entry(1, 0)}));
}

TEST(PtrArraySort, OrderIsThatOfThePlainPartition) {
    std::mt19937 random(20240117);
    for (int round = 0; round < 2000; ++round) {
        const auto count = static_cast<std::int64_t>(random() % 60);
        const auto keys = random() % 12 + 1;
        clPtrArray array;
        std::vector<std::int64_t> plain;
        for (std::int64_t i = 0; i < count; ++i) {
            const std::int64_t entry = Entry(static_cast<std::int64_t>(random() % keys), i);
            array.Add(entry);
            plain.push_back(entry);
        }
        array.Sort(KeyGoesBefore, 0);
        PlainSort(plain, 0, count - 1);
        ASSERT_EQ(Entries(array), plain) << round;
    }
}

TEST(PtrArraySort, LongSortedAndReversedArraysAreSorted) {
    for (const bool isReversed : {false, true}) {
        clPtrArray array;
        for (std::int64_t i = 0; i < 100000; ++i)
            array.Add(isReversed ? 100000 - i : i);
        array.Sort(CountedLess, 0);
        for (std::int64_t i = 1; i < array.Count(); ++i)
            ASSERT_LT(array.Get(i - 1), array.Get(i));
    }
}
