#include "toolkit/coordinate.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

namespace {

constexpr std::int32_t largest = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t smallest = std::numeric_limits<std::int32_t>::min();

bool Same(const clExtent& a, const clExtent& b) {
    return a.width == b.width && a.height == b.height;
}

}  // namespace

TEST(Coordinate, FlagsAnchorToTheParent) {
    const struct {
        std::int32_t coded;
        std::int32_t parent;
        std::int32_t own;
        std::int32_t expected;
    } rows[] = {
        // No flag: pixels as they stand.
        {0, 100, 30, 0},
        {7, 100, 30, 7},
        {0xFFFF, 100, 30, 0xFFFF},
        // One flag each, alone and with an offset.
        {0x10000, 100, 30, 50},
        {0x10005, 100, 30, 55},
        {0x20000, 100, 30, 100},
        {0x20005, 100, 30, 105},
        {0x80000, 100, 30, -15},
        {0x80005, 100, 30, -10},
        {0x40000, 100, 30, -30},
        {0x40005, 100, 30, -25},
        {0x100000, 100, 30, 0},
        {0x100005, 100, 30, -5},
        // What the toolkit's layouts use.
        {0x90000, 100, 30, 35},
        {0x120002, 100, 30, 98},
        {0x12000B, 100, 30, 89},
        {0x160004, 100, 30, 66},
        {0x110003, 100, 30, 47},
        // All of them: half and whole of the parent, less one and a half of the own.
        {0x1F0002, 100, 30, 103},
        // Halves truncate towards zero.
        {0x10000, 101, 0, 50},
        {0x10000, -101, 0, -50},
        {0x80000, 0, 31, -15},
        {0x80000, 0, -31, 15},
        {0x90000, 101, 31, 35},
        // Nothing to anchor to.
        {0x20000, 0, 0, 0},
        {0x120002, 0, 0, -2},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(ResolveCoordinate(row.coded, row.parent, row.own), row.expected)
            << std::hex << row.coded << std::dec << " in " << row.parent << " of " << row.own;
    }
}

TEST(Coordinate, ANegativeNumberReadsAsAllFlags) {
    // -5 has every flag; what remains, 0xFFE0FFFB without them, keeps its sign.
    const std::int32_t rest = 0x100000 - (-5 & ~0xF0000);
    EXPECT_EQ(ResolveCoordinate(-5, 100, 30), 50 + 100 - 15 - 30 + rest);
}

TEST(Coordinate, SumsBeyond32BitsWrap) {
    EXPECT_EQ(ResolveCoordinate(0x20005, largest, 0), smallest + 4);
    EXPECT_EQ(ResolveCoordinate(0x40000, 0, smallest), smallest);
    EXPECT_EQ(ResolveCoordinate(0xC0000, 0, largest), 1073741826);
    EXPECT_EQ(ResolvePoint({5, 0}, {}, {}, {largest, 0}).x, smallest + 4);
    // The size of this area is beyond 32 bits.
    const clArea area = ResolveArea({smallest, 0, 0x7FE00000, 0}, {}, {});
    EXPECT_EQ(area.left, smallest);
    EXPECT_EQ(area.right, 0x7FE00000);
}

TEST(Coordinate, PointsTakeTheirAxisAndTheOrigin) {
    const clPoint point = ResolvePoint({0x90001, 0x60000}, {100, 40}, {30, 11}, {1000, 2000});
    EXPECT_EQ(point.x, 1036);
    EXPECT_EQ(point.y, 2029);
}

TEST(Coordinate, AreasAreAsLargeAsTheirCodedValues) {
    const clArea plain = ResolveArea({3, 2, 0x120003, 0x120002}, {200, 22}, {10, 20});
    EXPECT_EQ(plain.left, 13);
    EXPECT_EQ(plain.top, 22);
    EXPECT_EQ(plain.right, 207);
    EXPECT_EQ(plain.bottom, 40);
    // 40 by 10 in the middle: the flags of both edges cancel out in the size.
    const clArea centred = ResolveArea({0x90000, 0x90000, 0x90028, 0x9000A}, {200, 22}, {});
    EXPECT_EQ(centred.left, 80);
    EXPECT_EQ(centred.top, 6);
    EXPECT_EQ(centred.right, 120);
    EXPECT_EQ(centred.bottom, 16);
}

TEST(Condition, NeedsAllItsBits) {
    const struct {
        std::uint32_t condition;
        std::uint32_t flags;
        bool holds;
    } rows[] = {{0, 0, true},  {0, 5, true},  {5, 5, true},    {5, 0x25, true}, {5, 4, false},
                {5, 1, false}, {5, 0, false}, {32, 31, false}, {9, 6, false}};
    for (const auto& row : rows)
        EXPECT_EQ(ConditionHolds(row.condition, row.flags), row.holds)
            << row.condition << " with " << row.flags;
}

TEST(Extent, OnlyFixedOffsetsOfAreasCount) {
    const struct {
        clArea area;
        clExtent expected;
    } rows[] = {
        {{0, 0, 30, 20}, {30, 20}},
        {{10, 5, 30, 20}, {30, 20}},  // the right and bottom edge, not the size
        {{0, 0, 0x20000, 0x20000}, {0, 0}},
        {{1, 0, 0x120001, 0x20000}, {0, 0}},  // one pixel before the edge of nothing
        {{2, 0, 22, 0x20000}, {22, 0}},
        {{0, 0, 0x20007, 0x10003}, {7, 3}},
        {{50, 40, 30, 20}, {30, 20}},
    };
    for (const auto& row : rows) {
        clExtent extent;
        IncludeArea(extent, row.area);
        EXPECT_TRUE(Same(extent, row.expected)) << extent.width << " by " << extent.height;
    }
}

TEST(Extent, GrowsAndNeverShrinks) {
    clExtent extent;
    IncludeArea(extent, {0, 0, 30, 5});
    IncludeArea(extent, {0, 0, 10, 20});
    EXPECT_TRUE(Same(extent, {30, 20}));
}

TEST(Extent, BothEndsOfALineCount) {
    clExtent extent;
    IncludeLine(extent, {40, 3}, {2, 9});
    EXPECT_TRUE(Same(extent, {40, 9}));
    IncludeLine(extent, {1, 50}, {60, 2});
    EXPECT_TRUE(Same(extent, {60, 50}));
}

TEST(Extent, WhatIsCentredCountsFromZero) {
    const struct {
        clPoint at;
        clExtent own;
        clExtent expected;
    } rows[] = {
        {{3, 2}, {16, 17}, {19, 19}},
        {{0x90000, 0x90000}, {16, 17}, {16, 17}},
        {{0x60000, 0x160004}, {16, 17}, {16, 17}},
        {{0x20005, 0x10006}, {16, 17}, {21, 23}},
    };
    for (const auto& row : rows) {
        clExtent extent;
        IncludeItem(extent, row.at, row.own);
        EXPECT_TRUE(Same(extent, row.expected)) << extent.width << " by " << extent.height;
        IncludeItem(extent, row.at, row.own, {4, 1});
        EXPECT_TRUE(Same(extent, {row.expected.width + 4, row.expected.height + 1}));
    }
}
