#include "foundation/worker.h"

#include <gtest/gtest.h>

TEST(Worker, GraceIsOverOnceMoreThanItHasPassed) {
    struct Row {
        std::uint32_t begin;
        std::uint32_t now;
        std::uint32_t graceMs;
        bool over;
    };
    const Row rows[] = {
        {1000, 1000, 50, false},
        {1000, 1050, 50, false},
        {1000, 1051, 50, true},
        {1000, 1025, 20000, false},
        {1000, 21001, 20000, true},
        // The tick counter wraps after 49.7 days.
        {0xFFFFFFF0, 0x00000010, 50, false},
        {0xFFFFFFF0, 0x00000022, 50, false},
        {0xFFFFFFF0, 0x00000023, 50, true},
        {0x7FFFFFF0, 0x80000010, 50, false},
        {0x7FFFFFF0, 0x80000023, 50, true},
        // Without limit.
        {1000, 1000, 0, false},
        {1000, 0xFFFFFFFF, 0, false},
        {1000, 999, 0, false},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(GraceIsOver(row.begin, row.now, row.graceMs), row.over)
            << row.begin << " to " << row.now << ", grace " << row.graceMs;
    }
}
