#include <gtest/gtest.h>

#include "companions/decoder-taglib/rating.h"

namespace companion {
namespace {

TEST(Rating, FromPercentTakesTheNearestStar) {
    constexpr int cases[][2] = {{0, 0},  {1, 2},  {12, 2},  {25, 4},  {40, 6},
                                {50, 6}, {75, 8}, {99, 10}, {100, 10}};
    for (const auto& [value, rating] : cases)
        EXPECT_EQ(rating, RatingFromPercent(value)) << value;
}

TEST(Rating, FromTextTellsItsScale) {
    constexpr std::pair<const char*, int> cases[] = {
        {"0", 0},   {"0.5", 5},  {"1.0", 10},  {"1", 2},       {"3", 6},     {"5", 10},
        {"3.5", 7}, {"6", 6},    {"10", 10},   {"20", 2},      {"80", 8},    {"100", 10},
        {"128", 6}, {"255", 10}, {"1000", 10}, {"4 stars", 8}, {"80/100", 8}};
    for (const auto& [text, rating] : cases)
        EXPECT_EQ(rating, RatingFromText(text).value_or(-1)) << text;
}

TEST(Rating, FromTextThatIsNoRatingIsNothing) {
    for (const char* text : {"", "good", "-1", "nan", "inf", "1e9", "*****"})
        EXPECT_FALSE(RatingFromText(text)) << text;
}

}  // namespace
}  // namespace companion
