// Looks of buttons that no picture of the program has: each frame tells its name.
#pragma once

#include <cstdint>

#include "toolkit/button.h"

namespace strip_style {

inline constexpr std::uint32_t plain = 0x01;  // the two frames that every strip has
inline constexpr std::uint32_t allFrames = plain | button_style::hotFrame |
                                           button_style::focusFrame | button_style::disabledFrame |
                                           button_style::pressedHotFrame;

}  // namespace strip_style

// Draws the frames that the style declares, 45 by 49 pixels each.
void DrawStrip(XMemBitmap& image, std::uint32_t style);
// Gives a button in text mode its six layouts and the same size.
void FillTextButton(XButton& button, const XMemBitmap* behind);
