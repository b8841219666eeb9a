#include "mainwindow/splitter.h"

#include <gtest/gtest.h>

namespace {

clSplitter At(std::int32_t position) {
    clSplitter splitter;
    splitter.Restore(position, 0);
    return splitter;
}

TEST(Splitter, StandsAtAThirdOfTheDesktopUntilItWasMoved) {
    clSplitter splitter;
    splitter.Restore(0, 1280);
    EXPECT_EQ(splitter.Position(), 426);
    splitter.Restore(0, 200);
    EXPECT_EQ(splitter.Position(), 100);
}

TEST(Splitter, KeepsAStoredPositionFromAHundredOn) {
    EXPECT_EQ(At(50).Position(), 100);
    EXPECT_EQ(At(-7).Position(), 100);
    EXPECT_EQ(At(100).Position(), 100);
    EXPECT_EQ(At(4000).Position(), 4000);
}

TEST(Splitter, LeavesTheListWhatIsBehindItsStrip) {
    EXPECT_EQ(At(300).ListLeft(), 304);
    EXPECT_EQ(At(300).ListWidth(1000), 696);
    EXPECT_EQ(At(4000).ListWidth(1000), -3004);
}

// Anything may stand in the registry.
TEST(Splitter, WrapsBeyondTheLargestPosition) {
    EXPECT_EQ(At(0x7FFFFFFF).ListLeft(), -0x7FFFFFFF + 2);
    EXPECT_EQ(At(0x7FFFFFFF).ListWidth(1000), -0x7FFFFFFF + 996);
    EXPECT_EQ(At(0x7FFFFFFC).ListWidth(0), -0x7FFFFFFF - 1);
}

TEST(Splitter, IsHeldWithinFivePixelsAcross) {
    const SplitterZone zone = At(300).Zone(700);
    EXPECT_FALSE(zone.Has(299, 400));
    EXPECT_TRUE(zone.Has(300, 400));
    EXPECT_TRUE(zone.Has(304, 400));
    EXPECT_FALSE(zone.Has(305, 400));
}

TEST(Splitter, IsHeldFromTheBandDownToTheStripExclusively) {
    const SplitterZone zone = At(300).Zone(700);
    EXPECT_FALSE(zone.Has(302, 55));
    EXPECT_TRUE(zone.Has(302, 56));
    EXPECT_TRUE(zone.Has(302, 699));
    EXPECT_FALSE(zone.Has(302, 700));
}

TEST(Splitter, FollowsThePointerWithoutAnUpperLimit) {
    clSplitter splitter = At(300);
    splitter.Begin(302);
    EXPECT_TRUE(splitter.IsDragging());
    splitter.Drag(310);
    EXPECT_EQ(splitter.Position(), 308);
    splitter.Drag(5000);
    EXPECT_EQ(splitter.Position(), 4998);
    splitter.End();
    EXPECT_FALSE(splitter.IsDragging());
}

TEST(Splitter, StopsAtAHundredAndFollowsAgainAtOnceOnTheWayBack) {
    clSplitter splitter = At(120);
    splitter.Begin(122);
    splitter.Drag(20);
    EXPECT_EQ(splitter.Position(), 100);
    splitter.Drag(30);
    EXPECT_EQ(splitter.Position(), 110);
}

}  // namespace
