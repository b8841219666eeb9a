#include "decoders/tag_entry_pool.h"

#include <gtest/gtest.h>

#include <set>
#include <vector>

#include "tests/support/text.h"

TEST(TagEntryPool, GivesEachItsOwnRoomAndTheLastOneBackFirst) {
    TagEntryPool pool;
    std::set<void*> rooms;
    for (int i = 0; i < 3000; ++i)
        EXPECT_TRUE(rooms.insert(pool.Take()).second);
    void* const one = *rooms.begin();
    void* const other = *rooms.rbegin();
    pool.Give(one);
    pool.Give(other);
    EXPECT_EQ(pool.Take(), other);
    EXPECT_EQ(pool.Take(), one);
    EXPECT_EQ(pool.BlockCount(), 47);
}

TEST(TagEntryPool, ServesAListAsTheHeapDoes) {
    TagEntryPool pool;
    TagList tags;
    tags.UsePool(pool);
    for (int round = 0; round < 3; ++round) {
        for (int i = 0; i < 2000; ++i)
            tags.Add(i % 2 == 0 ? L"Even" : L"Odd", clString(i));
        TagEntry& long_ = tags.Add(L"Lyrics", L"");
        for (int i = 0; i < 100; ++i)
            long_.value.Append(L"la la ");
        EXPECT_TRUE(long_.data.Resize(1000, false));
        EXPECT_EQ(pool.BlockCount(), 32);
        EXPECT_EQ(Utf8(tags.Take(L"Even")), "0");
        EXPECT_EQ(tags.Count(), 1001);
        EXPECT_EQ(Utf8(tags.Get(L"odd")), "1");
        EXPECT_EQ(Utf8(tags.At(999).value), "1999");
        tags.Clear();
    }
}
