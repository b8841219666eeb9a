#include "foundation/random.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

namespace {

// The published first outputs for the seed of the reference program, and its
// ten thousandth.
constexpr std::uint32_t referenceSeed = 5489;
constexpr std::array<std::uint32_t, 5> referenceOutputs = {3499211612u, 581869302u, 3890346734u,
                                                           3586334585u, 545404204u};
constexpr std::uint32_t tenThousandthOutput = 4123659995u;

}  // namespace

TEST(Random, GivesThePublishedOutputs) {
    clRandom random(referenceSeed);
    for (const std::uint32_t expected : referenceOutputs)
        EXPECT_EQ(random.Next(), expected);
}

TEST(Random, GivesThePublishedTenThousandthOutput) {
    clRandom random(referenceSeed);
    for (int i = 0; i < 9999; ++i)
        random.Next();
    EXPECT_EQ(random.Next(), tenThousandthOutput);
}

TEST(Random, StartsAnewWhenSeededAgain) {
    clRandom random(1);
    random.Next();
    random.Seed(referenceSeed);
    EXPECT_EQ(random.Next(), referenceOutputs[0]);
}

TEST(Random, RangeZeroGivesTheRawOutput) {
    clRandom random(referenceSeed);
    for (const std::uint32_t expected : referenceOutputs)
        EXPECT_EQ(random.Random(0), expected);
}

TEST(Random, RangeOneIsAlwaysZero) {
    clRandom random(referenceSeed);
    for (int i = 0; i < 2000; ++i)
        ASSERT_EQ(random.Random(1), 0u);
}

TEST(Random, RangeIsFilledFromZeroToOneBelowIt) {
    clRandom random(referenceSeed);
    std::uint32_t lowest = 9999;
    std::uint32_t highest = 0;
    for (int i = 0; i < 200000; ++i) {
        const std::uint32_t value = random.Random(9999);
        lowest = std::min(lowest, value);
        highest = std::max(highest, value);
    }
    EXPECT_EQ(lowest, 0u);
    EXPECT_EQ(highest, 9998u);
}

TEST(Random, OutputsAreScaledByTheirSizeAndTruncated) {
    struct Row {
        std::uint32_t output;
        std::uint32_t range;
        std::uint32_t expected;
    };
    const Row rows[] = {
        {0x00000000, 0, 0},
        {0xDEADBEEF, 0, 0xDEADBEEF},
        {0xFFFFFFFF, 1, 0},
        {0x00000000, 10, 0},
        {0x19999999, 10, 0},  // just below a tenth
        {0x1999999A, 10, 1},  // just above
        {0x7FFFFFFF, 2, 0},
        {0x80000000, 2, 1},
        {0xFFFFFFFF, 10, 9},
        {0xFFFFFFFF, 9999, 9998},
        {0x80000000, 9999, 4999},
        {0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFE},
        {0x80000000, 0xFFFFFFFF, 0x7FFFFFFF},
        {0x00000001, 0xFFFFFFFF, 0},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(ScaleToRange(row.output, row.range), row.expected)
            << row.output << " into " << row.range;
    }
}

// With ranges of few bits the double is exact, and integers must agree with it.
TEST(Random, SmallRangesAgreeWithIntegerArithmetic) {
    clRandom random(42);
    for (int i = 0; i < 20000; ++i) {
        const std::uint32_t output = random.Next();
        const std::uint32_t range = random.Next() >> 12 | 1;
        const std::uint64_t product = static_cast<std::uint64_t>(output) * range;
        ASSERT_EQ(ScaleToRange(output, range), product >> 32) << output << " into " << range;
    }
}

TEST(Random, SeedJoinsTheClocks) {
    struct Row {
        ClockReadings clocks;
        std::uint32_t expected;
    };
    const Row rows[] = {
        // year, hour, minute, second, ms, hasCounter, counter, ticks
        {{0, 0, 0, 0, 0, false, 0, 0}, 0},
        {{2, 3, 5, 7, 11, false, 0, 0}, 4 + 9 + 25 + 49 + 121},
        {{2, 3, 5, 7, 11, false, 1000, 6}, 208 + 6},
        {{2, 3, 5, 7, 11, true, 10, 6}, 208 * 10 + 6},
        {{2, 3, 5, 7, 11, true, 0x0000000500000000, 6}, 5 + 6},
        {{2, 3, 5, 7, 11, true, 0x000000050000000A, 6}, 208 * 10 + 5 + 6},
        {{0, 0, 0, 0, 2, true, 0x40000000, 0}, 0},  // the low 32 bits remain
        {{0, 0, 0, 0, 1, true, 0xFFFFFFFF, 2}, 1},
    };
    for (const Row& row : rows)
        EXPECT_EQ(SeedFromClocks(row.clocks), row.expected);
}
