#include "mainwindow/row_looks.h"

#include <gtest/gtest.h>

namespace {

constexpr std::int32_t stripWidth = 80;
constexpr std::int32_t stripHeight = 33;

void ExpectPiece(const StripPiece& piece, const StripPiece& expected, std::int64_t rating) {
    EXPECT_EQ(piece.targetX, expected.targetX) << rating;
    EXPECT_EQ(piece.sourceX, expected.sourceX) << rating;
    EXPECT_EQ(piece.sourceY, expected.sourceY) << rating;
    EXPECT_EQ(piece.width, expected.width) << rating;
}

TEST(LooksOfRating, LightsTenthsOfTheStripAndFillsUpWithUnlitStars) {
    for (std::int64_t rating = 1; rating <= 10; ++rating) {
        const auto lit = static_cast<std::int32_t>(8 * rating);
        const RatingLooks looks = LooksOfRating(rating, true, stripWidth, stripHeight);
        EXPECT_TRUE(looks.rated);
        EXPECT_EQ(looks.bandHeight, 16);
        ExpectPiece(looks.lit, {2, 0, 0, lit}, rating);
        ExpectPiece(looks.rest, {lit + 2, lit, 18, stripWidth - lit}, rating);
    }
}

TEST(LooksOfRating, AnUntickedRowShowsItsStarsUnlitAndNothingBehindThem) {
    const RatingLooks looks = LooksOfRating(7, false, stripWidth, stripHeight);
    EXPECT_TRUE(looks.rated);
    ExpectPiece(looks.lit, {2, 0, 18, 56}, 7);
    EXPECT_EQ(looks.rest.width, 0);
}

TEST(LooksOfRating, TruncatesTheWidthOfTheLitStars) {
    EXPECT_EQ(LooksOfRating(3, true, 85, stripHeight).lit.width, 25);
}

TEST(LooksOfRating, NothingFromOneToTenIsNotRated) {
    for (const std::int64_t rating :
         {std::int64_t{0}, std::int64_t{11}, std::int64_t{-1}, std::int64_t{1} << 40})
        EXPECT_FALSE(LooksOfRating(rating, true, stripWidth, stripHeight).rated) << rating;
}

TEST(CellInset, LeavesRoomForTickAndPictureInTheFirstColumn) {
    EXPECT_EQ(CellInset(false, false), 6);
    EXPECT_EQ(CellInset(true, false), 24);
    EXPECT_EQ(CellInset(true, true), 42);
}

TEST(CellTextX, FollowsTheAlignment) {
    EXPECT_EQ(CellTextX(CellAlignment::Left, 100, 30, 42), 42);
    EXPECT_EQ(CellTextX(CellAlignment::Right, 100, 30, 6), 64);
    EXPECT_EQ(CellTextX(CellAlignment::Centre, 101, 31, 6), 35);
    // A text that does not fit begins left of its column.
    EXPECT_EQ(CellTextX(CellAlignment::Right, 20, 30, 6), -16);
}

}  // namespace
