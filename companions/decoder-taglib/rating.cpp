#include "companions/decoder-taglib/rating.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace companion {

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
    return RatingFromNumber(value, fraction);
}

}  // namespace companion
