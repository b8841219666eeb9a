#include "toolkit/timer_list.h"

#include <gtest/gtest.h>

#include <initializer_list>

#include "tests/support/allocations.h"

namespace {

void AddAll(clTimerList& timers, std::initializer_list<std::uint64_t> ids) {
    for (const std::uint64_t id : ids)
        timers.Add(id);
}

TEST(TimerList, NextIdIsOneAboveTheHighestEver) {
    struct Row {
        std::initializer_list<std::uint64_t> ids;
        std::uint64_t next;
    };
    const Row rows[] = {
        {{}, 1}, {{1}, 2}, {{1, 2, 3}, 4}, {{7}, 8}, {{7, 2}, 8}, {{1, 9, 4}, 10},
    };
    for (const Row& row : rows) {
        clTimerList timers;
        AddAll(timers, row.ids);
        EXPECT_EQ(timers.NextId(), row.next);
    }
}

TEST(TimerList, KeepsTheOrderOfTheirStart) {
    clTimerList timers;
    AddAll(timers, {5, 1, 3});
    ASSERT_EQ(timers.Count(), 3);
    EXPECT_EQ(timers.At(0)->id, 5u);
    EXPECT_EQ(timers.At(1)->id, 1u);
    EXPECT_EQ(timers.At(2)->id, 3u);
    EXPECT_EQ(timers.At(0)->userValue, 0);
    EXPECT_EQ(timers.At(3), nullptr);
    EXPECT_EQ(timers.At(-1), nullptr);
}

TEST(TimerList, FindsTheFirstOfAnId) {
    clTimerList timers;
    AddAll(timers, {4, 6, 6});
    EXPECT_EQ(timers.Find(6), timers.At(1));
    EXPECT_EQ(timers.Find(4), timers.At(0));
    EXPECT_EQ(timers.Find(5), nullptr);
    // Ids have 64 bits.
    EXPECT_EQ(timers.Find((std::uint64_t{1} << 32) + 4), nullptr);
}

TEST(TimerList, ClearStartsAnewAndFreesTheRecords) {
    const std::size_t before = LiveBlocks();
    {
        clTimerList timers;
        for (std::uint64_t id = 1; id <= 20; ++id)
            timers.Add(id);
        timers.Clear();
        EXPECT_EQ(timers.Count(), 0);
        EXPECT_EQ(timers.NextId(), 1u);
        EXPECT_EQ(timers.Find(1), nullptr);
        timers.Add(1);
    }
    EXPECT_EQ(LiveBlocks(), before);
}

}  // namespace
