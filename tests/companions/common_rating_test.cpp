#include "companions/common/rating.h"

#include <gtest/gtest.h>

namespace companion {
namespace {

TEST(Rating, FromPopularityHasFiveStarsAtTheUsualBytes) {
    constexpr int cases[][2] = {{-1, 0},  {0, 0},   {1, 2},   {2, 1},   {22, 1},  {23, 2},
                                {32, 3},  {63, 3},  {64, 4},  {96, 5},  {127, 5}, {128, 6},
                                {160, 7}, {195, 7}, {196, 8}, {224, 9}, {254, 9}, {255, 10}};
    for (const auto& [value, rating] : cases)
        EXPECT_EQ(rating, RatingFromPopularity(value)) << value;
}

}  // namespace
}  // namespace companion
