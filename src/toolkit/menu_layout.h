// What an owner-drawn menu item is made of, as data.
#pragma once

#include <cstdint>
#include <vector>

#include "toolkit/coordinate.h"

// The state flags of a menu item, added up. In a condition they say when a part
// shows: 5 stands for selected and enabled, 9 for enabled and not selected.
namespace menu_state {

inline constexpr std::uint32_t enabled = 1;
inline constexpr std::uint32_t disabled = 2;
inline constexpr std::uint32_t selected = 4;
inline constexpr std::uint32_t notSelected = 8;
inline constexpr std::uint32_t notChecked = 16;
inline constexpr std::uint32_t checked = 32;

}  // namespace menu_state

std::uint32_t MenuState(bool isSelected, bool isChecked, bool isDisabled);

enum class MenuPartKind : std::uint8_t {
    Fill,
    GradientAcross,  // `colour` on the left, `secondColour` on the right
    GradientDown,    // `colour` at the top, `secondColour` at the bottom
    Box,             // brush `colour`, pen `secondColour`
    Line,            // from (left, top) to (right, bottom)
    Text,            // the item's text, at (left, top)
    Icon,            // at (left, top)
    GreyIcon,        // the icon in its grey form
};

struct clMenuPart {
    MenuPartKind kind;
    clArea area;  // coded coordinates
    std::uint32_t colour = 0;
    std::uint32_t secondColour = 0;
    std::uint32_t condition = 0;
};

// The parts of an item, in the order in which they lie on top of each other.
// `imageWidth` is that of the strip of images at the left, 0 for no strip;
// `background` is the colour of the system's windows.
std::vector<clMenuPart> MenuItemParts(std::int32_t imageWidth, std::uint32_t background,
                                      bool hasIcon);
// The same for a separator.
std::vector<clMenuPart> MenuSeparatorParts(std::int32_t imageWidth, std::uint32_t background);

inline constexpr std::int32_t menuSeparatorHeight = 9;
// The height of an item in pixels.
std::int32_t MenuItemHeight(std::int32_t layoutHeight, std::int32_t imageHeight);

// One pixel of an icon in its grey form, 0xRRGGBB or blue first: the mean of the
// channels plus 35 in all three. Pure black stays, and the top byte becomes 0.
std::uint32_t GreyForm(std::uint32_t pixel);
