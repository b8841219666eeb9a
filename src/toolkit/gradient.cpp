#include "toolkit/gradient.h"

#include <algorithm>

namespace {

std::uint32_t BlendChannel(std::uint32_t from, std::uint32_t to, std::int32_t distance,
                           std::int32_t span) {
    const std::int64_t difference = static_cast<std::int64_t>(to) - static_cast<std::int64_t>(from);
    const std::int64_t value = static_cast<std::int64_t>(from) + difference * distance / span;
    return static_cast<std::uint32_t>(value) & 0xFF;
}

}  // namespace

bool RunsAcross(const clCornerColours& colours) {
    return colours.topLeft == colours.bottomLeft && colours.topRight == colours.bottomRight;
}

std::uint32_t BlendColours(std::uint32_t from, std::uint32_t to, std::int32_t distance,
                           std::int32_t span) {
    span = std::max(span, 1);
    std::uint32_t blended = 0;
    for (unsigned shift = 0; shift < 24; shift += 8) {
        const std::uint32_t channel =
            BlendChannel((from >> shift) & 0xFF, (to >> shift) & 0xFF, distance, span);
        blended |= channel << shift;
    }
    return blended;
}
