// Where the window goes when it opens.
#pragma once

#include <cstdint>

// Pixels of the screen. Sizes and edges wrap in 32 bits, as they are stored.
struct WindowPlace {
    std::int32_t x = 0;
    std::int32_t y = 0;
    std::int32_t width = 0;
    std::int32_t height = 0;
};

// The stored place, or, when it says nothing at all (a first start, or a window
// that was closed maximised), the middle three fifths of the desktop.
[[nodiscard]] WindowPlace PlaceOfWindow(const WindowPlace& stored, const WindowPlace& desktop);
