#include "toolkit/tool_tip_place.h"

namespace {

constexpr std::int32_t gapAbove = 2;
constexpr std::int32_t gapBelow = 1;
constexpr std::int32_t farthest = 50;  // from the pointer

}  // namespace

clPoint PlaceTip(const TipSurroundings& around, const clExtent& size) {
    clPoint place{around.left, around.referenceTop - size.height - gapAbove};
    const std::int32_t atPointer = around.pointerY - size.height;
    if (!around.isPointTip && atPointer - place.y > farthest) {
        place.y = atPointer - farthest;
    }
    if (place.y < 0) {
        place.y = around.referenceBottom + gapBelow;
        if (place.y - around.pointerY > farthest) place.y = around.pointerY + farthest;
    }
    if (place.x + size.width > around.desktopRight) place.x = around.desktopRight - size.width;
    return place;
}

bool TipAreaHolds(const clArea& area, const clPoint& point) {
    return point.x >= area.left && point.x <= area.right && point.y >= area.top &&
           point.y <= area.bottom;
}

std::uint32_t RegionLook(bool isHit, bool isPressed) {
    if (!isHit) return region_look::normal;
    return isPressed ? region_look::pressed : region_look::hot;
}

bool RegionFires(bool isIcon, bool isHit, std::uint32_t look) {
    return isIcon ? look == region_look::pressed : isHit;
}
