// Where tabs lead to in a line that does not begin at the left edge.
#pragma once

#include <cstdint>
#include <vector>

// Stops in pixels from the line's start, so that tabs end at multiples of 8
// average characters from the place to which `startX` is a distance. A start
// beyond one unit is reduced by whole units. As many as characters fit the
// desktop, plus 10. An average width below 1 counts as 1.
std::vector<std::int32_t> TabStops(std::int32_t startX, std::int32_t averageWidth,
                                   std::int32_t desktopWidth);
