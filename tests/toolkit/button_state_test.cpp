#include "toolkit/button_state.h"

#include <gtest/gtest.h>

namespace {

constexpr std::uint32_t normal = button_state::normal;
constexpr std::uint32_t pressed = button_state::pressed;
constexpr std::uint32_t hot = button_state::hot;
constexpr std::uint32_t pressedHot = button_state::pressedHot;

TEST(ButtonState, FollowsThePointerAndWhatHoldsTheButton) {
    struct Row {
        const char* what;
        ButtonHover hover;
        std::uint32_t state;
    };
    // over, partner, disabled, parent disabled, left, right, key
    const Row rows[] = {
        {"nothing", {false, false, false, false, false, false, false}, normal},
        {"over", {true, false, false, false, false, false, false}, hot},
        {"partner over", {false, true, false, false, false, false, false}, hot},
        {"left", {true, false, false, false, true, false, false}, pressed},
        {"right", {true, false, false, false, false, true, false}, pressed},
        {"both", {true, false, false, false, true, true, false}, pressed},
        {"partner over, held", {false, true, false, false, true, false, false}, pressed},
        {"moved off, left held", {false, false, false, false, true, false, false}, normal},
        {"moved off, right held", {false, false, false, false, false, true, false}, normal},
        {"key, pointer elsewhere", {false, false, false, false, false, false, true}, pressed},
        {"key, pointer over", {true, false, false, false, false, false, true}, pressed},
        {"disabled, over", {true, false, true, false, false, false, false}, normal},
        {"disabled, held", {true, false, true, false, true, false, false}, normal},
        {"disabled, key", {false, false, true, false, false, false, true}, normal},
        {"disabled, partner over", {false, true, true, false, false, false, false}, normal},
        {"parent disabled, over", {true, false, false, true, false, false, false}, normal},
        {"parent disabled, held", {true, false, false, true, true, false, false}, normal},
        {"parent disabled, key", {false, false, false, true, false, false, true}, normal},
    };
    for (const Row& row : rows)
        EXPECT_EQ(StateAfterHover(row.hover), row.state) << row.what;
}

TEST(ButtonState, IsPressedInTwoOfFourStates) {
    EXPECT_FALSE(button_state::IsPressed(normal));
    EXPECT_TRUE(button_state::IsPressed(pressed));
    EXPECT_FALSE(button_state::IsPressed(hot));
    EXPECT_TRUE(button_state::IsPressed(pressedHot));
}

TEST(ShownState, IsTheStateItselfUnlessLatched) {
    for (std::uint32_t state = 0; state < 5; ++state)
        EXPECT_EQ(ShownState(state, false, {10, 20}, {10, 20}), state);
}

TEST(ShownState, OfALatchedButtonIsTurnedRound) {
    struct Row {
        std::uint32_t state;
        clPoint click;
        clPoint pointer;
        std::uint32_t shown;
    };
    const Row rows[] = {
        {normal, {0, 0}, {10, 20}, pressed},
        {pressed, {0, 0}, {10, 20}, normal},
        {pressedHot, {0, 0}, {10, 20}, hot},
        {hot, {0, 0}, {10, 20}, pressedHot},
        // The pointer stands where it clicked.
        {hot, {10, 20}, {10, 20}, pressed},
        {hot, {10, 20}, {11, 20}, pressedHot},
        {hot, {10, 20}, {10, 19}, pressedHot},
        {hot, {-10, -20}, {-10, -20}, pressed},
        // A click at the edge of the screen is no click.
        {hot, {0, 20}, {0, 20}, pressedHot},
        {hot, {10, 0}, {10, 0}, pressedHot},
        {hot, {0, 0}, {0, 0}, pressedHot},
        // It matters to the hot look alone.
        {normal, {10, 20}, {10, 20}, pressed},
        {pressed, {10, 20}, {10, 20}, normal},
        {pressedHot, {10, 20}, {10, 20}, hot},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(ShownState(row.state, true, row.click, row.pointer), row.shown)
            << row.state << ", clicked at " << row.click.x << "," << row.click.y;
    }
}

TEST(ButtonStrip, HasTwoFramesAndThoseOfTheStyle) {
    struct Row {
        std::uint32_t style;
        std::int32_t width;
        std::int32_t height;
        std::int32_t frames;
        std::int32_t frameWidth;
        std::int32_t frameHeight;
    };
    const Row rows[] = {
        {135, 180, 98, 4, 45, 49}, {135, 68, 34, 4, 17, 17},  {0x01, 90, 49, 2, 45, 49},
        {0x02, 90, 49, 3, 30, 49}, {0x04, 90, 49, 3, 30, 49}, {0x08, 90, 49, 3, 30, 49},
        {0x10, 90, 49, 3, 30, 49}, {0x80, 90, 49, 2, 45, 24}, {0x9E, 60, 20, 6, 10, 10},
        {0x1E, 60, 20, 6, 10, 20}, {0x87, 7, 9, 4, 1, 4},     {0x87, 3, 1, 4, 0, 0},
        {0x60, 60, 20, 2, 30, 20}, {0, 60, 20, 2, 30, 20},    {135, 0, 0, 4, 0, 0},
    };
    for (const Row& row : rows) {
        const ButtonStrip strip = MeasureStrip(row.style, row.width, row.height);
        EXPECT_EQ(strip.frames, row.frames) << row.style;
        EXPECT_EQ(strip.frameWidth, row.frameWidth) << row.style;
        EXPECT_EQ(strip.frameHeight, row.frameHeight) << row.style;
    }
}

TEST(ButtonStrip, FramesLieInTheSettledOrder) {
    struct Row {
        std::uint32_t style;
        std::int32_t normalAt, pressedAt, hotAt, focusAt, disabledAt, pressedHotAt;
    };
    const Row rows[] = {
        {0x00, 0, 1, -1, -1, -1, -1}, {135, 0, 1, 2, 3, -1, -1},   {0x1E, 0, 1, 2, 3, 4, 5},
        {0x10, 0, 1, -1, -1, -1, 2},  {0x08, 0, 1, -1, -1, 2, -1}, {0x04, 0, 1, -1, 2, -1, -1},
        {0x12, 0, 1, 2, -1, -1, 3},   {0x0C, 0, 1, -1, 2, 3, -1},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(FrameIndex(row.style, ButtonFrame::Normal), row.normalAt) << row.style;
        EXPECT_EQ(FrameIndex(row.style, ButtonFrame::Pressed), row.pressedAt) << row.style;
        EXPECT_EQ(FrameIndex(row.style, ButtonFrame::Hot), row.hotAt) << row.style;
        EXPECT_EQ(FrameIndex(row.style, ButtonFrame::Focus), row.focusAt) << row.style;
        EXPECT_EQ(FrameIndex(row.style, ButtonFrame::Disabled), row.disabledAt) << row.style;
        EXPECT_EQ(FrameIndex(row.style, ButtonFrame::PressedHot), row.pressedHotAt) << row.style;
    }
}

struct LookRow {
    std::uint32_t style;
    std::uint32_t shown;
    ButtonCondition condition;  // disabled, focus, cue
    ButtonFrame frame;
    bool overlaysDisabled;
    bool overlaysFocus;
};

constexpr ButtonCondition plain{false, false, false};
constexpr ButtonCondition disabled{true, false, false};
constexpr ButtonCondition focused{false, true, true};

void ExpectLook(const ButtonLook& look, const LookRow& row) {
    EXPECT_EQ(look.frame, row.frame) << row.style << " " << row.shown;
    EXPECT_EQ(look.overlaysDisabled, row.overlaysDisabled) << row.style << " " << row.shown;
    EXPECT_EQ(look.overlaysFocus, row.overlaysFocus) << row.style << " " << row.shown;
}

TEST(PictureLook, FollowsTheStateAsFarAsTheStripGoes) {
    const LookRow rows[] = {
        {135, normal, plain, ButtonFrame::Normal, false, false},
        {135, pressed, plain, ButtonFrame::Pressed, false, false},
        {135, hot, plain, ButtonFrame::Hot, false, false},
        {135, pressedHot, plain, ButtonFrame::Pressed, false, false},
        {0x85, hot, plain, ButtonFrame::Normal, false, false},
        {0x10, pressedHot, plain, ButtonFrame::PressedHot, false, false},
        {0x90, pressedHot, plain, ButtonFrame::PressedHot, false, false},
        {0x10, pressed, plain, ButtonFrame::Pressed, false, false},
    };
    for (const LookRow& row : rows)
        ExpectLook(PictureLook(row.style, row.shown, row.condition), row);
}

TEST(PictureLook, DisabledTakesTheFrameOrLiesOverIt) {
    const LookRow rows[] = {
        {0x08, normal, disabled, ButtonFrame::Disabled, false, false},
        {0x08, pressed, disabled, ButtonFrame::Disabled, false, false},
        {0x88, normal, disabled, ButtonFrame::Normal, true, false},
        {0x88, pressed, disabled, ButtonFrame::Pressed, true, false},
        // No frame for it.
        {0x02, normal, disabled, ButtonFrame::Normal, false, false},
        {135, normal, disabled, ButtonFrame::Normal, false, false},
        {0x88, normal, plain, ButtonFrame::Normal, false, false},
    };
    for (const LookRow& row : rows)
        ExpectLook(PictureLook(row.style, row.shown, row.condition), row);
}

TEST(PictureLook, FocusLiesOverAMaskedFrameOnceTheCueIsOn) {
    const LookRow rows[] = {
        {135, normal, focused, ButtonFrame::Normal, false, true},
        {135, pressed, focused, ButtonFrame::Pressed, false, true},
        {135, normal, {false, true, false}, ButtonFrame::Normal, false, false},
        {135, normal, {false, false, true}, ButtonFrame::Normal, false, false},
        {0x83, normal, focused, ButtonFrame::Normal, false, false},
        {0x07, normal, focused, ButtonFrame::Normal, false, false},
        {0x8C, normal, {true, true, true}, ButtonFrame::Normal, true, true},
    };
    for (const LookRow& row : rows)
        ExpectLook(PictureLook(row.style, row.shown, row.condition), row);
}

TEST(TextLook, FollowsTheSameSelectionWithoutAMask) {
    const LookRow rows[] = {
        {0x06, normal, plain, ButtonFrame::Normal, false, false},
        {0x06, pressed, plain, ButtonFrame::Pressed, false, false},
        {0x06, hot, plain, ButtonFrame::Hot, false, false},
        {0x04, hot, plain, ButtonFrame::Normal, false, false},
        {0x06, pressedHot, plain, ButtonFrame::Pressed, false, false},
        {0x16, pressedHot, plain, ButtonFrame::PressedHot, false, false},
        {0x0E, hot, disabled, ButtonFrame::Disabled, false, false},
        {0x8E, hot, disabled, ButtonFrame::Disabled, false, false},
        {0x06, hot, disabled, ButtonFrame::Hot, false, false},
        {0x06, normal, focused, ButtonFrame::Normal, false, true},
        {0x02, normal, focused, ButtonFrame::Normal, false, false},
        {0x06, normal, {false, true, false}, ButtonFrame::Normal, false, false},
    };
    for (const LookRow& row : rows)
        ExpectLook(TextLook(row.style, row.shown, row.condition), row);
}

TEST(ButtonMenu, OnlyAnEnabledButtonWithAMenuShowsIt) {
    EXPECT_EQ(AskForMenu(false, false), ButtonMenuAnswer::Proceed);
    EXPECT_EQ(AskForMenu(false, true), ButtonMenuAnswer::Proceed);
    EXPECT_EQ(AskForMenu(true, false), ButtonMenuAnswer::Show);
    EXPECT_EQ(AskForMenu(true, true), ButtonMenuAnswer::Swallow);
}

TEST(ButtonKey, SpaceAndReturnPressAndClick) {
    constexpr std::uint32_t space = 0x20;
    constexpr std::uint32_t enter = 0x0D;
    constexpr std::uint32_t tab = 0x09;
    constexpr std::uint32_t letter = 'A';
    struct Row {
        ButtonKey key;           // code, down, disabled, held
        ButtonKeyAnswer answer;  // held, presses, clicks, cue
    };
    const Row rows[] = {
        {{space, true, false, false}, {true, true, false, false}},
        {{enter, true, false, false}, {true, true, false, false}},
        // The key repeats while it is down: each is a press.
        {{space, true, false, true}, {true, true, false, false}},
        {{space, true, true, false}, {false, false, false, false}},
        {{space, true, true, true}, {false, false, false, false}},
        // Another key gives the button up.
        {{letter, true, false, true}, {false, false, false, false}},
        {{tab, true, false, true}, {false, false, false, false}},
        {{space, false, false, true}, {false, false, true, false}},
        {{enter, false, false, true}, {false, false, true, false}},
        // Held by one, let go by the other.
        {{enter, false, true, true}, {false, false, true, false}},
        // Pressed elsewhere.
        {{space, false, false, false}, {false, false, false, false}},
        {{enter, false, false, false}, {false, false, false, false}},
        {{tab, false, false, false}, {false, false, false, true}},
        {{tab, false, false, true}, {true, false, false, true}},
        {{tab, false, true, false}, {false, false, false, true}},
        {{letter, false, false, true}, {true, false, false, false}},
    };
    for (const Row& row : rows) {
        const ButtonKeyAnswer answer = AnswerKey(row.key);
        EXPECT_EQ(answer.isHeld, row.answer.isHeld) << row.key.code << " " << row.key.isDown;
        EXPECT_EQ(answer.presses, row.answer.presses) << row.key.code << " " << row.key.isDown;
        EXPECT_EQ(answer.clicks, row.answer.clicks) << row.key.code << " " << row.key.isDown;
        EXPECT_EQ(answer.turnsCueOn, row.answer.turnsCueOn) << row.key.code;
    }
}

}  // namespace
