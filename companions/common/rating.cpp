#include "companions/common/rating.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace companion {

int RatingFromPopularity(int value) {
    if (value <= 0) return 0;
    if (value == 1) return 2;
    constexpr int steps[] = {2, 23, 32, 64, 96, 128, 160, 196, 224, 255};
    const auto above = std::upper_bound(std::begin(steps), std::end(steps), value);
    return static_cast<int>(above - std::begin(steps));
}

int RatingFromNumber(double number, bool hasPoint) {
    if (hasPoint && number <= 1) return static_cast<int>(std::lround(number * 10));
    if (number <= 5) return static_cast<int>(std::lround(number * 2));
    if (number <= 10) return static_cast<int>(std::lround(number));
    if (number <= 100) return static_cast<int>(std::lround(number / 10));
    return RatingFromPopularity(static_cast<int>(std::min(number, 255.0)));
}

}  // namespace companion
