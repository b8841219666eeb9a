// Ratings as the many programs write them, on the scale of the column: 0 to 10.
#pragma once

#include <optional>
#include <string_view>

#include "companions/common/rating.h"

namespace companion {

// The percentage that Windows Media files hold: 1, 25, 50, 75, 99 for one to
// five stars, anything between to the nearest star.
int RatingFromPercent(int value);

// A rating in text, as Vorbis comments, APE tags and MP4 items have it: the
// number that it begins with (see common/rating.h). Nothing for text that begins
// with none or with a negative one.
std::optional<int> RatingFromText(std::string_view text);

}  // namespace companion
