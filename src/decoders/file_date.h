// The dates of files as the lists show them.
#pragma once

#include "decoders/file_row.h"
#include "foundation/string.h"

// The user's short form of the date, a blank, and the time, both in UTC. Empty
// for a moment that has no date.
[[nodiscard]] clString FileDateText(const clFileTime& moment);
