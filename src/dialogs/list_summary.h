// The totals of the conversion list, and the line that shows them.
#pragma once

#include <cstdint>

#include "decoders/file_row.h"
#include "foundation/string.h"

struct ListSummary {
    std::int64_t files = 0;  // ticked ones, as everything below
    std::uint64_t bytes = 0;
    std::int64_t lengthMs = 0;

    // Counts a ticked row in, or out again.
    void Add(const FileRow& row);
    void Remove(const FileRow& row);
};

// "Converting 12 Files, Source Size: 1.5 MB  Length: 42 minutes 7 seconds". While
// meta-data comes in, its size and length would be wrong and are not shown.
[[nodiscard]] clString SummaryText(const ListSummary& summary, bool isReading);
