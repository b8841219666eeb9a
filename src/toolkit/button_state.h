// How a picture button behaves and looks, without a window: hover and press,
// latching, the choice of frames in its strip, its menu and its keys.
#pragma once

#include <cstdint>

#include "toolkit/coordinate.h"

// What a button's strip of frames holds and how it is drawn.
namespace button_style {

inline constexpr std::uint32_t hotFrame = 0x02;
inline constexpr std::uint32_t focusFrame = 0x04;  // also: a tab stop, and a press takes the focus
inline constexpr std::uint32_t disabledFrame = 0x08;
inline constexpr std::uint32_t pressedHotFrame = 0x10;
inline constexpr std::uint32_t mask = 0x80;  // the strip's lower half is a mask
// Stands in for a style of 0. No behaviour hangs on its bit 0x01.
inline constexpr std::uint32_t byDefault = 135;

}  // namespace button_style

// The logical look of a button.
namespace button_state {

inline constexpr std::uint32_t normal = 0;
inline constexpr std::uint32_t pressed = 1;
inline constexpr std::uint32_t hot = 2;  // the pointer is over it
inline constexpr std::uint32_t pressedHot = 3;

inline bool IsPressed(std::uint32_t state) {
    return state == pressed || state == pressedHot;
}

}  // namespace button_state

// What an update of the hover looks knows of one button.
struct ButtonHover {
    bool isUnderPointer = false;
    bool isPartnerUnderPointer = false;
    bool isDisabled = false;
    bool isParentDisabled = false;
    bool isLeftHeld = false;
    bool isRightHeld = false;
    bool isKeyHeld = false;
};

std::uint32_t StateAfterHover(const ButtonHover& hover);

// The look that a button with the logical look `state` shows. `click` is where on
// the screen the pointer was at the last click; a coordinate of 0 means that
// there was none. As long as the pointer stays there, a latched button looks
// latched and not hot.
std::uint32_t ShownState(std::uint32_t state, bool isLatched, const clPoint& click,
                         const clPoint& pointer);

enum class ButtonFrame { Normal, Pressed, Hot, Focus, Disabled, PressedHot };

// What a strip's size means, in pixels.
struct ButtonStrip {
    std::int32_t frames = 0;
    std::int32_t frameWidth = 0;
    std::int32_t frameHeight = 0;
};

ButtonStrip MeasureStrip(std::uint32_t style, std::int32_t width, std::int32_t height);

// Place of a frame in the strip, counted from 0 at the left; -1 if the style
// declares no such frame. The order is that of ButtonFrame.
std::int32_t FrameIndex(std::uint32_t style, ButtonFrame frame);

struct ButtonCondition {
    bool isDisabled = false;
    bool hasFocus = false;
    bool isCueOn = false;  // Tab was used in this process
};

// The frames of one look. The overlays are laid over `frame` in this order.
struct ButtonLook {
    ButtonFrame frame = ButtonFrame::Normal;
    bool overlaysDisabled = false;
    bool overlaysFocus = false;
};

// Of a picture button. `shown` comes from ShownState. Only a strip with a mask
// has overlays: without one there is no telling what shines through.
ButtonLook PictureLook(std::uint32_t style, std::uint32_t shown, const ButtonCondition& condition);

// Of a button in text mode, whose layouts take the place of the frames and need
// no mask.
ButtonLook TextLook(std::uint32_t style, std::uint32_t shown, const ButtonCondition& condition);

// What becomes of a press, before it counts as one.
enum class ButtonMenuAnswer {
    Proceed,  // there is no menu: the press goes on
    Swallow,  // the press ends here, without a menu
    Show,
};

ButtonMenuAnswer AskForMenu(bool hasMenu, bool isDisabled);

// A key at a button: the platform's code of the key, and what goes with it.
struct ButtonKey {
    std::uint32_t code = 0;
    bool isDown = false;
    bool isDisabled = false;
    bool isHeld = false;  // a key held the button before
};

struct ButtonKeyAnswer {
    bool isHeld = false;  // a key holds the button now
    bool presses = false;
    bool clicks = false;
    bool turnsCueOn = false;
};

ButtonKeyAnswer AnswerKey(const ButtonKey& key);
