#include "toolkit/tab_stops.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

TEST(TabStops, LieAtMultiplesOfEightCharacters) {
    const struct {
        std::int32_t startX;
        std::int32_t averageWidth;
        std::int32_t first;
        std::int32_t second;
    } rows[] = {
        {5, 6, 43, 91},       {48, 6, 0, 48},  // a whole unit is not reduced
        {49, 6, 47, 95},      {96, 6, 0, 48},
        {97, 6, 47, 95},      {100000, 6, 32, 80},  // 100000 is 16 beyond 2083 units
        {0x90000, 7, 24, 80},                       // a coded place counts as it stands
        {-5, 6, 53, 101},                           // nothing to reduce
        {5, 0, 3, 11},                              // at least one pixel wide
        {5, -4, 3, 11},
    };
    for (const auto& row : rows) {
        const auto stops = TabStops(row.startX, row.averageWidth, 1280);
        ASSERT_GE(stops.size(), 2u);
        EXPECT_EQ(stops[0], row.first) << row.startX;
        EXPECT_EQ(stops[1], row.second) << row.startX;
    }
}

TEST(TabStops, FillTheDesktop) {
    const struct {
        std::int32_t averageWidth;
        std::int32_t desktop;
        std::size_t count;
    } rows[] = {{6, 1280, 223}, {7, 1280, 192}, {1, 0, 10}, {0, 5, 15}, {6, -100, 10}};
    for (const auto& row : rows)
        EXPECT_EQ(TabStops(5, row.averageWidth, row.desktop).size(), row.count) << row.desktop;
}

TEST(TabStops, FarStopsStayIn32Bits) {
    constexpr std::int32_t farthest = std::numeric_limits<std::int32_t>::max();
    const auto stops = TabStops(std::numeric_limits<std::int32_t>::min(), 6, 1280);
    for (const std::int32_t stop : stops)
        EXPECT_EQ(stop, farthest);
}
