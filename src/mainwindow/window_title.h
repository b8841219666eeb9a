// The title of the main window.
#pragma once

#include "foundation/string.h"

// The program's title; where a file "OEM.txt" lies in `programFolder` (with its
// trailing backslash), followed by ": " and its first line, which is UTF-16 and
// may be empty. A file that cannot be read is met in silence.
[[nodiscard]] clString BuildWindowTitle(const clString& programFolder);
