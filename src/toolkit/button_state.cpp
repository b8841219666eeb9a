#include "toolkit/button_state.h"

namespace {

// The platform's codes; they are the same on every keyboard.
constexpr std::uint32_t keyTab = 0x09;
constexpr std::uint32_t keyReturn = 0x0D;
constexpr std::uint32_t keySpace = 0x20;

bool Has(std::uint32_t style, std::uint32_t bit) {
    return (style & bit) != 0;
}

struct DeclaredFrame {
    ButtonFrame frame;
    std::uint32_t bit;  // 0: every strip has it
};

// In the order in which they lie in the strip.
constexpr DeclaredFrame declaredFrames[] = {
    {ButtonFrame::Normal, 0},
    {ButtonFrame::Pressed, 0},
    {ButtonFrame::Hot, button_style::hotFrame},
    {ButtonFrame::Focus, button_style::focusFrame},
    {ButtonFrame::Disabled, button_style::disabledFrame},
    {ButtonFrame::PressedHot, button_style::pressedHotFrame},
};

bool IsDeclared(std::uint32_t style, const DeclaredFrame& declared) {
    return declared.bit == 0 || Has(style, declared.bit);
}

// A strip without a frame of its own for a look shows the next plainer one.
ButtonFrame FrameOfState(std::uint32_t style, std::uint32_t shown) {
    switch (shown) {
        case button_state::pressed:
            return ButtonFrame::Pressed;
        case button_state::hot:
            return Has(style, button_style::hotFrame) ? ButtonFrame::Hot : ButtonFrame::Normal;
        case button_state::pressedHot:
            return Has(style, button_style::pressedHotFrame) ? ButtonFrame::PressedHot
                                                             : ButtonFrame::Pressed;
        default:
            return ButtonFrame::Normal;
    }
}

bool ShowsDisabled(std::uint32_t style, const ButtonCondition& condition) {
    return condition.isDisabled && Has(style, button_style::disabledFrame);
}

bool ShowsFocus(std::uint32_t style, const ButtonCondition& condition) {
    return condition.hasFocus && condition.isCueOn && Has(style, button_style::focusFrame);
}

}  // namespace

std::uint32_t StateAfterHover(const ButtonHover& hover) {
    const bool isOver = hover.isUnderPointer || hover.isPartnerUnderPointer || hover.isKeyHeld;
    if (!isOver || hover.isDisabled || hover.isParentDisabled) return button_state::normal;
    const bool isHeld = hover.isLeftHeld || hover.isRightHeld || hover.isKeyHeld;
    return isHeld ? button_state::pressed : button_state::hot;
}

std::uint32_t ShownState(std::uint32_t state, bool isLatched, const clPoint& click,
                         const clPoint& pointer) {
    if (!isLatched) return state;
    const bool hasClick = click.x != 0 && click.y != 0;
    switch (state) {
        case button_state::normal:
            return button_state::pressed;
        case button_state::pressed:
            return button_state::normal;
        case button_state::hot:
            return hasClick && click.x == pointer.x && click.y == pointer.y
                       ? button_state::pressed
                       : button_state::pressedHot;
        case button_state::pressedHot:
            return button_state::hot;
        default:
            return state;
    }
}

ButtonStrip MeasureStrip(std::uint32_t style, std::int32_t width, std::int32_t height) {
    ButtonStrip strip;
    for (const DeclaredFrame& declared : declaredFrames) {
        if (IsDeclared(style, declared)) ++strip.frames;
    }
    strip.frameWidth = width / strip.frames;
    strip.frameHeight = Has(style, button_style::mask) ? height / 2 : height;
    return strip;
}

std::int32_t FrameIndex(std::uint32_t style, ButtonFrame frame) {
    std::int32_t index = 0;
    for (const DeclaredFrame& declared : declaredFrames) {
        const bool isThere = IsDeclared(style, declared);
        if (declared.frame == frame) return isThere ? index : -1;
        if (isThere) ++index;
    }
    return -1;
}

ButtonLook PictureLook(std::uint32_t style, std::uint32_t shown, const ButtonCondition& condition) {
    const bool isDisabled = ShowsDisabled(style, condition);
    if (!Has(style, button_style::mask)) {
        return {isDisabled ? ButtonFrame::Disabled : FrameOfState(style, shown), false, false};
    }
    return {FrameOfState(style, shown), isDisabled, ShowsFocus(style, condition)};
}

ButtonLook TextLook(std::uint32_t style, std::uint32_t shown, const ButtonCondition& condition) {
    const bool isDisabled = ShowsDisabled(style, condition);
    return {isDisabled ? ButtonFrame::Disabled : FrameOfState(style, shown), false,
            ShowsFocus(style, condition)};
}

ButtonMenuAnswer AskForMenu(bool hasMenu, bool isDisabled) {
    if (!hasMenu) return ButtonMenuAnswer::Proceed;
    return isDisabled ? ButtonMenuAnswer::Swallow : ButtonMenuAnswer::Show;
}

ButtonKeyAnswer AnswerKey(const ButtonKey& key) {
    const bool acts = key.code == keySpace || key.code == keyReturn;
    ButtonKeyAnswer answer;
    if (key.isDown) {
        answer.presses = acts && !key.isDisabled;
        answer.isHeld = answer.presses;
        return answer;
    }
    answer.clicks = acts && key.isHeld;
    answer.isHeld = key.isHeld && !acts;
    answer.turnsCueOn = key.code == keyTab;
    return answer;
}
