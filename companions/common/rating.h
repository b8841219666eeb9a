// Ratings as the many programs write them, on the scale of the column: 0 to 10.
#pragma once

namespace companion {

// The rating byte of an ID3v2 "POPM" frame, 0 to 255. The steps lie around the
// values that the common players write for one to five stars: 1, 64, 128, 196
// and 255.
int RatingFromPopularity(int value);

// A number of 0 or above that says its scale by its size: a fraction up to 1,
// if it is written with a point; stars up to 5, a value up to 10, a percentage
// up to 100, or else as in a POPM frame.
int RatingFromNumber(double number, bool hasPoint);

}  // namespace companion
