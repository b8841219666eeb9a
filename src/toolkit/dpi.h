// Sizes that are laid out by hand are given for a display of 96 DPI.
#pragma once

#include <cstdint>

// `value` times `dpi` divided by 96, truncated towards zero, in signed 32-bit
// arithmetic that wraps.
std::int32_t ScaleByDpi(std::int32_t value, std::int32_t dpi);

// The display's horizontal DPI, read at the first call and never again: a change
// is not seen until the program restarts. Any thread.
std::int32_t DisplayDpi();

// 96-DPI pixels as pixels of this display.
std::int32_t ScaleForDpi(std::int32_t value);
