#include "toolkit/coordinate.h"

#include <algorithm>

namespace {

// Coordinates come from callers as they are: sums wrap instead of overflowing.
std::int32_t Plus(std::int32_t a, std::int32_t b) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}

std::int32_t Less(std::int32_t a, std::int32_t b) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) - static_cast<std::uint32_t>(b));
}

bool Take(std::int32_t& coded, std::int32_t flag) {
    const bool isSet = (coded & flag) != 0;
    coded &= ~flag;
    return isSet;
}

void Include(clExtent& extent, std::int32_t right, std::int32_t bottom) {
    extent.width = std::max(extent.width, right);
    extent.height = std::max(extent.height, bottom);
}

}  // namespace

std::int32_t ResolveCoordinate(std::int32_t coded, std::int32_t parentSize, std::int32_t ownSize) {
    std::int32_t start = 0;
    if (Take(coded, anchor::half)) start = parentSize / 2;
    if (Take(coded, anchor::end)) start = Plus(start, parentSize);
    if (Take(coded, anchor::lessHalfSize)) start = Less(start, ownSize / 2);
    if (Take(coded, anchor::lessSize)) start = Less(start, ownSize);
    // The bit is still in what remains, which thus becomes the negative offset.
    if ((coded & anchor::negative) != 0) coded = Less(anchor::negative, coded);
    return Plus(start, coded);
}

clPoint ResolvePoint(const clPoint& coded, const clExtent& parent, const clExtent& own,
                     const clPoint& origin) {
    return {Plus(ResolveCoordinate(coded.x, parent.width, own.width), origin.x),
            Plus(ResolveCoordinate(coded.y, parent.height, own.height), origin.y)};
}

clArea ResolveArea(const clArea& coded, const clExtent& parent, const clPoint& origin) {
    const clExtent own{Less(coded.right, coded.left), Less(coded.bottom, coded.top)};
    const clPoint start = ResolvePoint({coded.left, coded.top}, parent, own, origin);
    const clPoint end = ResolvePoint({coded.right, coded.bottom}, parent, own, origin);
    return {start.x, start.y, end.x, end.y};
}

bool ConditionHolds(std::uint32_t condition, std::uint32_t stateFlags) {
    return (condition & stateFlags) == condition;
}

void IncludeArea(clExtent& extent, const clArea& coded) {
    const clArea area = ResolveArea(coded, {}, {});
    Include(extent, area.right, area.bottom);
}

void IncludeLine(clExtent& extent, const clPoint& from, const clPoint& to) {
    const clArea area = ResolveArea({from.x, from.y, to.x, to.y}, {}, {});
    Include(extent, std::max(area.left, area.right), std::max(area.top, area.bottom));
}

void IncludeItem(clExtent& extent, const clPoint& coded, const clExtent& own,
                 const clExtent& beyond) {
    const clPoint place = ResolvePoint(coded, {}, own, {});
    const clPoint end{Plus(std::max(place.x, 0), own.width),
                      Plus(std::max(place.y, 0), own.height)};
    Include(extent, Plus(end.x, beyond.width), Plus(end.y, beyond.height));
}
