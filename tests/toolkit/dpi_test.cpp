#include "toolkit/dpi.h"

#include <gtest/gtest.h>

namespace {

struct Scaled {
    std::int32_t value;
    std::int32_t dpi;
    std::int32_t expected;
};

TEST(ScaleByDpi, TruncatesTowardsZero) {
    const Scaled rows[] = {
        {0, 96, 0},      {13, 96, 13}, {13, 120, 16}, {21, 120, 26}, {13, 144, 19},
        {-13, 120, -16}, {1, 72, 0},   {-1, 72, 0},   {16, 192, 32}, {100, 120, 125},
    };
    for (const Scaled& row : rows) {
        EXPECT_EQ(ScaleByDpi(row.value, row.dpi), row.expected) << row.value << " at " << row.dpi;
    }
}

TEST(ScaleByDpi, MultipliesInThirtyTwoBits) {
    // 2^30 times 96 wraps to 0 before the division.
    EXPECT_EQ(ScaleByDpi(0x40000000, 96), 0);
}

}  // namespace
