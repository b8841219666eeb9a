// Ratings as the many programs write them, on the scale of the column: 0 to 10.
#pragma once

#include <optional>
#include <string_view>

namespace companion {

// The rating byte of an ID3v2 "POPM" frame, 0 to 255. The steps lie around the
// values that the common players write for one to five stars: 1, 64, 128, 196
// and 255.
int RatingFromPopularity(int value);

// The percentage that Windows Media files hold: 1, 25, 50, 75, 99 for one to
// five stars, anything between to the nearest star.
int RatingFromPercent(int value);

// A rating in text, as Vorbis comments, APE tags and MP4 items have it: a
// fraction up to 1, stars up to 5, a value up to 10, a percentage up to 100, or
// else as in a POPM frame. Nothing for text that is no number or is negative.
std::optional<int> RatingFromText(std::string_view text);

}  // namespace companion
