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
    EXPECT_EQ(pool.BlockCount(), 3);
}

TEST(TagEntryPool, TrimKeepsOneBlockOnceAllIsGivenBack) {
    TagEntryPool pool;
    pool.Trim();
    EXPECT_EQ(pool.BlockCount(), 0);
    std::vector<void*> rooms;
    for (int i = 0; i < 3000; ++i)
        rooms.push_back(pool.Take());
    for (void* room : rooms) {
        pool.Trim();
        EXPECT_EQ(pool.BlockCount(), 3);
        pool.Give(room);
    }
    EXPECT_EQ(pool.BlockCount(), 3);
    pool.Trim();
    EXPECT_EQ(pool.BlockCount(), 1);
    for (int i = 0; i < 1024; ++i)
        pool.Take();
    EXPECT_EQ(pool.BlockCount(), 1);
    pool.Take();
    EXPECT_EQ(pool.BlockCount(), 2);
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
        EXPECT_EQ(pool.BlockCount(), 2);
        EXPECT_EQ(Utf8(tags.Take(L"Even")), "0");
        EXPECT_EQ(tags.Count(), 1001);
        EXPECT_EQ(Utf8(tags.Get(L"odd")), "1");
        EXPECT_EQ(Utf8(tags.At(999).value), "1999");
        tags.Clear();
        pool.Trim();
        EXPECT_EQ(pool.BlockCount(), 1);
    }
}
