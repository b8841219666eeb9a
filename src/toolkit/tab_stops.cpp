#include "toolkit/tab_stops.h"

#include <algorithm>
#include <limits>

namespace {

constexpr std::int64_t charactersInUnit = 8;
constexpr std::int32_t spareStops = 10;

}  // namespace

std::vector<std::int32_t> TabStops(std::int32_t startX, std::int32_t averageWidth,
                                   std::int32_t desktopWidth) {
    averageWidth = std::max(averageWidth, 1);
    const std::int64_t unit = charactersInUnit * averageWidth;
    std::int64_t start = startX;
    // Whole units off until no more than one is left, which may be a full one.
    if (start > unit) start = (start - 1) % unit + 1;
    const std::int32_t count = std::max(desktopWidth / averageWidth, 0) + spareStops;
    std::vector<std::int32_t> stops;
    stops.reserve(static_cast<std::size_t>(count));
    constexpr std::int64_t farthest = std::numeric_limits<std::int32_t>::max();
    for (std::int64_t i = 1; i <= count; ++i)
        stops.push_back(static_cast<std::int32_t>(std::min(i * unit - start, farthest)));
    return stops;
}
