#include "mainwindow/placement.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

void ExpectPlace(const WindowPlace& place, const WindowPlace& expected) {
    EXPECT_EQ(place.x, expected.x);
    EXPECT_EQ(place.y, expected.y);
    EXPECT_EQ(place.width, expected.width);
    EXPECT_EQ(place.height, expected.height);
}

constexpr WindowPlace desktop = {0, 0, 1283, 1024};

TEST(PlaceOfWindow, IsTheMiddleThreeFifthsWhenNothingIsStored) {
    ExpectPlace(PlaceOfWindow({}, desktop), {256, 204, 768, 612});
    ExpectPlace(PlaceOfWindow({}, {-100, 50, 1000, 500}), {100, 150, 600, 300});
}

TEST(PlaceOfWindow, IsTheStoredOneWhenAnyEdgeSaysSomething) {
    ExpectPlace(PlaceOfWindow({1, 0, -1, 0}, desktop), {1, 0, -1, 0});
    ExpectPlace(PlaceOfWindow({0, 0, 300, 200}, desktop), {0, 0, 300, 200});
    ExpectPlace(PlaceOfWindow({-8, -8, 8, 8}, desktop), {-8, -8, 8, 8});
}

TEST(PlaceOfWindow, AnyStoredNumbersAreSafe) {
    constexpr std::int32_t most = std::numeric_limits<std::int32_t>::max();
    ExpectPlace(PlaceOfWindow({most, most, most, most}, desktop), {most, most, most, most});
}

}  // namespace
