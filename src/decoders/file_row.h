// One listed file: what the file system knows of it, and what its decoder told.
#pragma once

#include <cstdint>

#include "foundation/string.h"

// A moment as the file system counts it: 100-nanosecond intervals since
// 1601-01-01 UTC, in two halves. The layout of the platform's FILETIME.
struct clFileTime {
    std::uint32_t low = 0;
    std::uint32_t high = 0;
};

// Owned by the row array of its list; a reader fills its fields under the meta-data
// mutex. A sort and the status line look at them without it, each number by itself,
// and both come again behind the last file. A list row's item parameter is the index
// of its FileRow.
struct FileRow {
    clString path;                // full path
    clString typeName;            // the shell's name of the type
    std::uint64_t sizeBytes = 0;  // 0: not known yet
    clFileTime dateModified;      // last write
    clFileTime dateAccessed;
    clFileTime dateCreated;
    std::int64_t lengthMs = 0;            // 0 until read
    std::int32_t bitRate = 0;             // bits per second, 0 until read
    std::int32_t compressionPercent = 0;  // 0 until read
    std::int32_t rating = 0;              // the tag "Rating", 0 until read
};
