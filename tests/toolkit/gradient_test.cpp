#include "toolkit/gradient.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

TEST(Gradient, BlendsEachChannelAndTruncates) {
    const struct {
        std::uint32_t from;
        std::uint32_t to;
        std::int32_t distance;
        std::int32_t span;
        std::uint32_t expected;
    } rows[] = {
        {0x000000, 0xFFFFFF, 0, 10, 0x000000},
        {0x000000, 0xFFFFFF, 10, 10, 0xFFFFFF},
        {0x000000, 0xFFFFFF, 5, 10, 0x7F7F7F},  // 127.5
        {0x000000, 0xFFFFFF, 9, 10, 0xE5E5E5},  // 229.5
        {0xFFFFFF, 0x000000, 5, 10, 0x808080},  // 255 less 127
        {0xF0F0F0, 0xFBFBFB, 3, 10, 0xF3F3F3},  // 11 * 3 / 10
        {0xF8F8F8, 0xE6E6E6, 1, 20, 0xF8F8F8},  // less 0.9
        {0xF8F8F8, 0xE6E6E6, 2, 20, 0xF7F7F7},  // less 1.8
        {0x0000FF, 0xFF0000, 1, 3, 0x5500AA},   // channels on their own ways
        {0xF7F4EC, 0xF4EDDB, 7, 16, 0xF6F1E5},
        {0x123456, 0x123456, 7, 16, 0x123456},
        // Nothing to be spread over.
        {0x000000, 0xFFFFFF, 0, 0, 0x000000},
        {0x000000, 0xFFFFFF, 1, 0, 0xFFFFFF},
        {0x000000, 0xFFFFFF, 0, -5, 0x000000},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(BlendColours(row.from, row.to, row.distance, row.span), row.expected)
            << std::hex << row.from << " to " << row.to << std::dec << " at " << row.distance
            << " of " << row.span;
    }
}

TEST(Gradient, LongWaysDoNotOverflow) {
    constexpr std::int32_t span = std::numeric_limits<std::int32_t>::max();
    EXPECT_EQ(BlendColours(0x000000, 0xFFFFFF, span, span), 0xFFFFFFu);
    EXPECT_EQ(BlendColours(0xFFFFFF, 0x000000, span / 2, span), 0x818181u - 0x010101u);
}

TEST(Gradient, RunsAcrossIfBothSidesAreOfOneColour) {
    const struct {
        clCornerColours colours;
        bool across;
    } rows[] = {
        {{1, 2, 1, 2}, true},  {{1, 1, 1, 1}, true},  {{1, 1, 2, 2}, false},
        {{1, 2, 1, 3}, false}, {{1, 2, 3, 2}, false}, {{1, 2, 3, 4}, false},
    };
    for (const auto& row : rows)
        EXPECT_EQ(RunsAcross(row.colours), row.across) << row.colours.bottomRight;
}
