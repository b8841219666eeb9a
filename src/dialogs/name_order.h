// The order of the conversion list's rows when it opens.
#pragma once

#include <cstdint>
#include <vector>

#include "foundation/arrays.h"

// Indices of the paths in ascending order of their file names, without regard to the
// case of A to Z; equal names stay in the order of the paths. It is that in which
// sorting the list by its column "Name" would put them.
[[nodiscard]] std::vector<std::int64_t> OrderByName(const clStringList& paths);
