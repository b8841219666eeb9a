// The one folder that may stand on the command line.
#pragma once

#include "foundation/arrays.h"
#include "foundation/string.h"

// The argument from its root to its leaf: for each component the path down to it,
// with a trailing backslash. Quotes are not removed.
struct StartPath {
    clStringList names;  // "C:\", "Music\", ...
    clStringList paths;  // "C:\", "C:\Music\", ...
};
// Empty for an argument of fewer than three characters, which counts as none.
[[nodiscard]] StartPath SplitStartPath(const clString& argument);

// A component without its backslashes: how the tree names a computer.
[[nodiscard]] clString WithoutBackslashes(const clString& component);
