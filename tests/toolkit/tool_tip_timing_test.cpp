#include "toolkit/tool_tip_timing.h"

#include <gtest/gtest.h>

namespace {

// Runs a tip's clock as its thread does: one step in 50 ms, each action done.
class WatchedTip {
public:
    explicit WatchedTip(std::uint32_t start) : now(start) {}

    TipTiming timing;
    std::uint32_t now;
    bool isInside = false;
    bool isVisible = false;

    TipAction Step() {
        const TipAction action = timing.Step(now, isInside, isVisible);
        if (action == TipAction::Show) {
            isVisible = true;
            timing.NoteShown();
        }
        if (action == TipAction::Hide) isVisible = false;
        return action;
    }

    // Steps until something happens; the milliseconds until then, or -1 if
    // nothing does within `limit`.
    std::int64_t Until(TipAction wanted, std::uint32_t limit) {
        const std::uint32_t begin = now;
        while (now - begin <= limit) {
            if (Step() == wanted) return now - begin;
            now += period;
        }
        return -1;
    }

    static constexpr std::uint32_t period = 50;
};

constexpr std::uint32_t starts[] = {1, 1000, 0x7FFFFE00, 0xFFFFFC00, 0xFFFFFFFF};

TEST(TipTiming, ShowsWithinOnePollAfterTheDefaultDelay) {
    for (const std::uint32_t start : starts) {
        WatchedTip tip(start);
        tip.isInside = true;
        const std::int64_t shown = tip.Until(TipAction::Show, 5000);
        EXPECT_GT(shown, 1000) << start;
        EXPECT_LE(shown, 1050) << start;
        EXPECT_EQ(tip.timing.showDelay, 1000u);
        EXPECT_EQ(tip.timing.showTime, 10000u);
    }
}

TEST(TipTiming, DelayMustBeExceeded) {
    TipTiming timing;
    timing.showDelay = 300;
    EXPECT_EQ(timing.Step(1000, true, false), TipAction::None);
    EXPECT_EQ(timing.waitStart, 1000u);
    EXPECT_EQ(timing.Step(1300, true, false), TipAction::None);
    EXPECT_EQ(timing.Step(1301, true, false), TipAction::Show);
    EXPECT_EQ(timing.waitStart, 0u);
    EXPECT_EQ(timing.shownAt, 1301u);
}

TEST(TipTiming, LeavingStartsTheDelayAfresh) {
    TipTiming timing;
    timing.showDelay = 300;
    EXPECT_EQ(timing.Step(1000, true, false), TipAction::None);
    EXPECT_EQ(timing.Step(1250, false, false), TipAction::None);
    EXPECT_EQ(timing.waitStart, 0u);
    EXPECT_EQ(timing.Step(1350, true, false), TipAction::None);
    EXPECT_EQ(timing.Step(1650, true, false), TipAction::None);
    EXPECT_EQ(timing.Step(1651, true, false), TipAction::Show);
}

TEST(TipTiming, WithDefaultsFadesFromSevenAndAHalfSecondsAndGoesAfterTen) {
    for (const std::uint32_t start : starts) {
        WatchedTip tip(start);
        tip.isInside = true;
        ASSERT_GE(tip.Until(TipAction::Show, 5000), 0);
        const std::uint32_t shown = tip.now;
        std::uint32_t fadesFrom = 0;
        while (tip.isVisible && tip.now - shown <= 20000) {
            tip.now += WatchedTip::period;
            tip.Step();
            if (fadesFrom == 0 && tip.timing.lastAlpha < 255) fadesFrom = tip.now - shown;
        }
        // 255 still at 7500 itself: the fade begins there.
        EXPECT_EQ(fadesFrom, 7550u) << start;
        EXPECT_EQ(tip.now - shown, 10050u) << start;
        EXPECT_EQ(tip.timing.lastAlpha, 0) << start;
    }
}

TEST(TipTiming, ComesBackOnlyAfterThePointerHasLeft) {
    WatchedTip tip(1000);
    tip.isInside = true;
    ASSERT_GE(tip.Until(TipAction::Show, 5000), 0);
    ASSERT_GE(tip.Until(TipAction::Hide, 20000), 0);
    EXPECT_TRUE(tip.timing.done);
    EXPECT_EQ(tip.Until(TipAction::Show, 60000), -1);
    tip.isInside = false;
    EXPECT_EQ(tip.Step(), TipAction::None);
    tip.isInside = true;
    EXPECT_EQ(tip.Until(TipAction::Show, 5000), 1050);
}

TEST(TipTiming, HidesWhenThePointerLeaves) {
    WatchedTip tip(1000);
    tip.isInside = true;
    ASSERT_GE(tip.Until(TipAction::Show, 5000), 0);
    tip.isInside = false;
    EXPECT_EQ(tip.Step(), TipAction::Hide);
    EXPECT_FALSE(tip.timing.done);
    tip.isInside = true;
    EXPECT_EQ(tip.Until(TipAction::Show, 5000), 1050);
}

TEST(TipTiming, ForEverNeverFadesOrEnds) {
    WatchedTip tip(0xFFF00000);
    tip.timing.showTime = tip_timing::forEver;
    tip.isInside = true;
    ASSERT_GE(tip.Until(TipAction::Show, 5000), 0);
    for (int i = 0; i < 100000; ++i) {
        tip.now += 500;
        ASSERT_EQ(tip.Step(), TipAction::None) << i;
    }
    EXPECT_EQ(tip.timing.lastAlpha, tip_timing::noAlpha);
    tip.isInside = false;
    EXPECT_EQ(tip.Step(), TipAction::Hide);
}

TEST(TipTiming, WithoutFadeGoesInOneStep) {
    WatchedTip tip(1000);
    tip.timing.showTime = 3000;
    tip.timing.noFade = true;
    tip.isInside = true;
    ASSERT_GE(tip.Until(TipAction::Show, 5000), 0);
    const std::uint32_t shown = tip.now;
    tip.now += 3000;
    EXPECT_EQ(tip.Step(), TipAction::None);
    EXPECT_EQ(tip.timing.lastAlpha, tip_timing::noAlpha);
    tip.now = shown + 3001;
    EXPECT_EQ(tip.Step(), TipAction::Hide);
    EXPECT_TRUE(tip.timing.done);
}

TEST(TipTiming, FirstStepAfterShowingSetsTheAlphaAndOthersOnlyChanges) {
    WatchedTip tip(1000);
    tip.timing.showTime = 3000;
    tip.isInside = true;
    ASSERT_GE(tip.Until(TipAction::Show, 5000), 0);
    EXPECT_EQ(tip.timing.lastAlpha, tip_timing::noAlpha);
    tip.now += 50;
    EXPECT_EQ(tip.Step(), TipAction::SetAlpha);
    EXPECT_EQ(tip.timing.lastAlpha, 255);
    tip.now += 50;
    EXPECT_EQ(tip.Step(), TipAction::None);
    tip.now = tip.timing.shownAt + 2500;
    EXPECT_EQ(tip.Step(), TipAction::SetAlpha);
    EXPECT_EQ(tip.timing.lastAlpha, 128);
}

TEST(TipTiming, HideRequestIsServedByTheNextStep) {
    WatchedTip tip(1000);
    tip.isInside = true;
    ASSERT_GE(tip.Until(TipAction::Show, 5000), 0);
    tip.timing.hideRequest = true;
    EXPECT_EQ(tip.Step(), TipAction::Hide);
    EXPECT_FALSE(tip.timing.hideRequest);
    EXPECT_TRUE(tip.timing.done);
}

TEST(TipTiming, EndOfTheShowTimeAloneKeepsTheTipAway) {
    TipTiming timing;
    timing.showDelay = 100;
    timing.showTime = 500;
    timing.shownAt = 1000;
    EXPECT_EQ(timing.Step(1501, true, true), TipAction::Hide);
    EXPECT_TRUE(timing.done);
}

// The window went before the request was seen: the step goes on as any other.
TEST(TipTiming, HideRequestWithoutAWindowIsForgotten) {
    TipTiming timing;
    timing.showDelay = 100;
    timing.waitStart = 1000;
    timing.hideRequest = true;
    EXPECT_EQ(timing.Step(1101, true, false), TipAction::Show);
    EXPECT_FALSE(timing.hideRequest);
}

TEST(TipAlpha, FallsThroughTheLastThirdOfAtMostTwoAndAHalfSeconds) {
    struct Row {
        std::uint32_t elapsed;
        std::uint32_t showTime;
        std::int32_t alpha;
    };
    const Row rows[] = {
        {0, 10000, 255},
        {7499, 10000, 255},
        {7500, 10000, 255},
        {7510, 10000, 254},
        {8750, 10000, 128},
        {9999, 10000, 1},
        {10000, 10000, 0},
        {1999, 3000, 255},
        {2000, 3000, 255},
        {2500, 3000, 128},
        {2999, 3000, 1},
        {3000, 3000, 0},
        {5000, 7500, 255},
        {6250, 7500, 128},
        {7500, 7500, 0},
        {5005, 7503, 255},
        {7503, 7503, 0},
        {600, 900, 255},
        {700, 900, 170},
        {4294964794, 4294967294, 255},
        {4294967294, 4294967294, 0},
        // The shortest: a fade of 0 or 1 ms.
        {1, 1, 255},
        {2, 2, 255},
        {2, 3, 255},
        {3, 3, 0},
        {0, 0, 255},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(TipAlpha(row.elapsed, row.showTime), row.alpha)
            << row.elapsed << " of " << row.showTime;
    }
}

}  // namespace
