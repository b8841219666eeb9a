#include "toolkit/menu_layout.h"

#include <algorithm>
#include <initializer_list>

namespace {

using enum MenuPartKind;

constexpr std::uint32_t selectedEnabled = menu_state::selected | menu_state::enabled;
constexpr std::uint32_t notSelectedEnabled = menu_state::notSelected | menu_state::enabled;

constexpr std::uint32_t checkEdge = 0xCDBA8A;
constexpr std::uint32_t disabledText = 0xC0C0C0;
constexpr clArea iconPlace{3, 2, 0, 0};

constexpr std::int32_t FromEnd(std::int32_t pixels) {
    return anchor::beforeEnd | pixels;
}

// Below the middle.
constexpr std::int32_t FromMiddle(std::int32_t pixels) {
    return anchor::half | pixels;
}

// The width that the strip takes, 0 without one.
std::int32_t StripWidth(std::int32_t imageWidth) {
    return imageWidth > 0 ? imageWidth + 3 : 0;
}

void Append(std::vector<clMenuPart>& parts, std::initializer_list<clMenuPart> more) {
    // One by one: of an insert GCC 12 claims, when it optimises, that it reads too far.
    for (const clMenuPart& part : more)
        parts.push_back(part);
}

// What separators have too: background, strip, and the looks of a selected and
// of a checked item.
std::vector<clMenuPart> CommonParts(std::int32_t imageWidth, std::uint32_t background) {
    const std::int32_t g = StripWidth(imageWidth);
    const bool hasStrip = g > 0;
    constexpr std::int32_t end = anchor::end;
    constexpr std::uint32_t checked = menu_state::checked;
    std::vector<clMenuPart> parts{{Fill, {0, 0, end, end}, background}};
    if (hasStrip) Append(parts, {{GradientAcross, {2, 0, g + 3, end}, 0xF8F8F8, 0xE6E6E6}});
    Append(parts,
           {{Fill, {g + 8, 2, FromEnd(4), FromEnd(2)}, 0xFFF9F3, 0, checked},
            {Box, {1, 0, FromEnd(1), end}, 0xFFFAEE, 0xEBD8A8, selectedEnabled},
            {GradientDown, {3, 2, FromEnd(3), FromEnd(2)}, 0xF7F4EC, 0xF4EDDB, selectedEnabled}});
    if (!hasStrip) return parts;
    Append(parts,
           {{Box, {1, 1, g + 2, FromEnd(1)}, 0xEAE5DC, checkEdge, checked},
            // A bracket on either side of the text.
            {Line, {g + 5, 1, g + 5, FromEnd(2)}, checkEdge, 0, checked},
            {Line, {g + 5, 1, g + 7, 1}, checkEdge, 0, checked},
            {Line, {g + 5, FromEnd(2), g + 7, FromEnd(2)}, checkEdge, 0, checked},
            {Line, {FromEnd(2), 1, FromEnd(2), FromEnd(2)}, checkEdge, 0, checked},
            {Line, {FromEnd(2), 1, FromEnd(4), 1}, checkEdge, 0, checked},
            {Line, {FromEnd(2), FromEnd(2), FromEnd(4), FromEnd(2)}, checkEdge, 0, checked}});
    return parts;
}

}  // namespace

std::uint32_t MenuState(bool isSelected, bool isChecked, bool isDisabled) {
    return (isSelected ? menu_state::selected : menu_state::notSelected) +
           (isChecked ? menu_state::checked : menu_state::notChecked) +
           (isDisabled ? menu_state::disabled : menu_state::enabled);
}

std::vector<clMenuPart> MenuItemParts(std::int32_t imageWidth, std::uint32_t background,
                                      bool hasIcon) {
    std::vector<clMenuPart> parts = CommonParts(imageWidth, background);
    const clArea textPlace{StripWidth(imageWidth) + 10, anchor::centred, 0, 0};
    constexpr std::uint32_t checked = menu_state::checked;
    Append(parts, {{Text, textPlace, 0, 0, menu_state::enabled},
                   {Text, textPlace, 0, 0, checked},
                   {Text, textPlace, disabledText, 0, menu_state::disabled}});
    if (hasIcon) {
        Append(parts, {{Icon, iconPlace, 0, 0, notSelectedEnabled},
                       {Icon, iconPlace, 0, 0, selectedEnabled},
                       {GreyIcon, iconPlace, 0, 0, menu_state::disabled}});
    }
    // A check mark at the right end, two pixels thick.
    Append(parts, {{Line, {FromEnd(11), FromMiddle(3), FromEnd(9), FromMiddle(5)}, 0, 0, checked},
                   {Line, {FromEnd(12), FromMiddle(3), FromEnd(10), FromMiddle(5)}, 0, 0, checked},
                   {Line, {FromEnd(10), FromMiddle(4), FromEnd(6), FromMiddle(0)}, 0, 0, checked},
                   {Line, {FromEnd(11), FromMiddle(4), FromEnd(7), FromMiddle(0)}, 0, 0, checked}});
    return parts;
}

std::vector<clMenuPart> MenuSeparatorParts(std::int32_t imageWidth, std::uint32_t background) {
    std::vector<clMenuPart> parts = CommonParts(imageWidth, background);
    const std::int32_t x = StripWidth(imageWidth) + 10;
    Append(parts, {{Line, {x, anchor::half, anchor::end, anchor::half}, 0xC4C4C4}});
    return parts;
}

std::int32_t MenuItemHeight(std::int32_t layoutHeight, std::int32_t imageHeight) {
    return std::max(layoutHeight, imageHeight) + 2;
}

std::uint32_t GreyForm(std::uint32_t pixel) {
    constexpr std::uint32_t brighter = 35;
    const std::uint32_t channels = pixel & 0xFFFFFF;
    if (channels == 0) return 0;
    const std::uint32_t sum = (channels & 0xFF) + ((channels >> 8) & 0xFF) + (channels >> 16);
    const std::uint32_t brightness = std::min(sum / 3 + brighter, std::uint32_t{255});
    return brightness * 0x010101;
}
