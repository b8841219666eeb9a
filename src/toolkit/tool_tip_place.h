// Where a tip stands on the screen, and which of its parts the pointer is on.
#pragma once

#include <cstdint>

#include "toolkit/coordinate.h"

// What the place of a tip depends on, in pixels of the screen.
struct TipSurroundings {
    std::int32_t pointerY = 0;
    // Where the tip's left edge is wanted: the pointer, or a point tip's own x.
    std::int32_t left = 0;
    // The upper and lower edge of what the tip belongs to.
    std::int32_t referenceTop = 0;
    std::int32_t referenceBottom = 0;
    bool isPointTip = false;  // belongs to one place of the screen
    std::int32_t desktopRight = 0;
};

// Above what it belongs to if there is room, else below, within 50 pixels of the
// pointer; never beyond the right edge of the desktop. The other edges are not
// looked at: a tip as tall as the desktop runs out of it at the bottom.
// The result is the top left corner.
clPoint PlaceTip(const TipSurroundings& around, const clExtent& size);

// Whether a point lies in a sensitive area, whose right and bottom edges belong to it.
bool TipAreaHolds(const clArea& area, const clPoint& point);

// The looks of an icon region of a tip.
namespace region_look {

inline constexpr std::uint32_t normal = 0;
inline constexpr std::uint32_t hot = 1;
inline constexpr std::uint32_t pressed = 2;

}  // namespace region_look

std::uint32_t RegionLook(bool isHit, bool isPressed);
// Whether a button that goes up over a tip fires a region: a link fires wherever
// the press began, an icon only if it was pressed itself.
bool RegionFires(bool isIcon, bool isHit, std::uint32_t look);
