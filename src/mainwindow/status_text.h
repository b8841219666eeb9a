// The line below the panes.
#pragma once

#include <cstdint>

#include "foundation/string.h"

// What the list shows at the moment.
struct ListTotals {
    std::int64_t shownFiles = 0;
    std::uint64_t shownBytes = 0;
    std::int64_t tickedFiles = 0;
    std::uint64_t tickedBytes = 0;
};

// "12 Audio Files Shown (1.5 MB), 2 Files Selected (300 KB) in Folder: C:\Music\".
[[nodiscard]] clString StatusText(const ListTotals& totals, const clString& folder);
