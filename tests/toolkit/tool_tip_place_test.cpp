#include "toolkit/tool_tip_place.h"

#include <gtest/gtest.h>

namespace {

constexpr std::int32_t desktop = 1280;

TEST(TipPlace, StandsAboveItsAnchorWithinFiftyPixelsOfThePointer) {
    struct Row {
        const char* what;
        TipSurroundings around;  // pointer y, left, top, bottom, point tip, desktop's right
        std::int32_t width;
        std::int32_t height;
        std::int32_t left;
        std::int32_t top;
    };
    const Row rows[] = {
        {"above", {320, 100, 300, 349, false, desktop}, 80, 20, 100, 278},
        {"at the anchor's top", {300, 100, 300, 349, false, desktop}, 80, 20, 100, 278},
        // Top 278; the pointer less the height may be 50 below that.
        {"pointer 50 below", {348, 100, 300, 349, false, desktop}, 80, 20, 100, 278},
        {"pointer 51 below", {349, 100, 300, 349, false, desktop}, 80, 20, 100, 279},
        {"tall anchor", {700, 100, 300, 900, false, desktop}, 80, 20, 100, 630},
        {"tall anchor at the top edge", {700, 100, 0, 900, false, desktop}, 80, 20, 100, 630},
        // No room above.
        {"below", {30, 100, 10, 49, false, desktop}, 80, 20, 100, 50},
        {"top 0 is room enough", {30, 100, 22, 49, false, desktop}, 80, 20, 100, 0},
        {"top -1 is not", {30, 100, 21, 49, false, desktop}, 80, 20, 100, 50},
        {"50 below the pointer", {30, 100, 10, 79, false, desktop}, 80, 20, 100, 80},
        {"51 below the pointer", {30, 100, 10, 80, false, desktop}, 80, 20, 100, 80},
        {"far below the pointer", {30, 100, 10, 600, false, desktop}, 80, 20, 100, 80},
        {"too tall", {500, 100, 490, 510, false, desktop}, 80, 1100, 100, 511},
        // The right edge, and no other.
        {"touches the right edge", {320, 1200, 300, 349, false, desktop}, 80, 20, 1200, 278},
        {"beyond the right edge", {320, 1201, 300, 349, false, desktop}, 80, 20, 1200, 278},
        {"wider than the desktop", {320, 5, 300, 349, false, desktop}, 1300, 20, -20, 278},
        {"left of the desktop", {320, -30, 300, 349, false, desktop}, 80, 20, -30, 278},
        {"beyond the bottom", {1020, 100, 5, 1022, false, 1280}, 80, 1000, 100, 1023},
        // A place of the screen, wherever the pointer is.
        {"point", {900, 400, 300, 301, true, desktop}, 80, 20, 400, 278},
        {"point, no room above", {5, 400, 10, 11, true, desktop}, 80, 20, 400, 12},
        {"point, the right edge", {900, 1270, 300, 301, true, desktop}, 80, 20, 1200, 278},
    };
    for (const Row& row : rows) {
        const clPoint place = PlaceTip(row.around, {row.width, row.height});
        EXPECT_EQ(place.x, row.left) << row.what;
        EXPECT_EQ(place.y, row.top) << row.what;
    }
}

TEST(TipAreaHolds, ItsEdgesBelongToIt) {
    const clArea area{10, 20, 30, 40};
    EXPECT_TRUE(TipAreaHolds(area, {10, 20}));
    EXPECT_TRUE(TipAreaHolds(area, {30, 40}));
    EXPECT_TRUE(TipAreaHolds(area, {20, 30}));
    EXPECT_FALSE(TipAreaHolds(area, {9, 30}));
    EXPECT_FALSE(TipAreaHolds(area, {31, 30}));
    EXPECT_FALSE(TipAreaHolds(area, {20, 19}));
    EXPECT_FALSE(TipAreaHolds(area, {20, 41}));
}

TEST(TipRegion, LooksHotOrPressedUnderThePointer) {
    EXPECT_EQ(RegionLook(false, false), region_look::normal);
    EXPECT_EQ(RegionLook(false, true), region_look::normal);
    EXPECT_EQ(RegionLook(true, false), region_look::hot);
    EXPECT_EQ(RegionLook(true, true), region_look::pressed);
}

TEST(TipRegion, LinkFiresUnderThePointerAndAnIconOnlyIfItWasPressed) {
    EXPECT_TRUE(RegionFires(false, true, region_look::normal));
    EXPECT_FALSE(RegionFires(false, false, region_look::normal));
    EXPECT_TRUE(RegionFires(true, true, region_look::pressed));
    EXPECT_FALSE(RegionFires(true, true, region_look::hot));
    EXPECT_FALSE(RegionFires(true, false, region_look::normal));
}

}  // namespace
