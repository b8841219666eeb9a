#include "companions/decoder-taglib/rating.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace companion {

int RatingFromPopularity(int value) {
    if (value <= 0) return 0;
    if (value == 1) return 2;
    constexpr int steps[] = {2, 23, 32, 64, 96, 128, 160, 196, 224, 255};
    const auto above = std::upper_bound(std::begin(steps), std::end(steps), value);
    return static_cast<int>(above - std::begin(steps));
}

int RatingFromPercent(int value) {
    if (value <= 0) return 0;
    constexpr int stars[] = {1, 25, 50, 75, 99};
    int best = 0;
    for (int i = 1; i < 5; ++i) {
        if (std::abs(stars[i] - value) < std::abs(stars[best] - value)) best = i;
    }
    return 2 * (best + 1);
}

std::optional<int> RatingFromText(std::string_view text) {
    double value = 0;
    const auto end = std::from_chars(text.data(), text.data() + text.size(), value);
    if (end.ec != std::errc() || !(value >= 0) || value > 1e6) return std::nullopt;
    const bool fraction = text.find('.') != std::string_view::npos;
    if (fraction && value <= 1) return static_cast<int>(std::lround(value * 10));
    if (value <= 5) return static_cast<int>(std::lround(value * 2));
    if (value <= 10) return static_cast<int>(std::lround(value));
    if (value <= 100) return static_cast<int>(std::lround(value / 10));
    return RatingFromPopularity(static_cast<int>(std::min(value, 255.0)));
}

}  // namespace companion
