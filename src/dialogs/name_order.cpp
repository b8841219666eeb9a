#include "dialogs/name_order.h"

#include <algorithm>
#include <numeric>

#include "foundation/paths.h"
#include "mainwindow/sort_keys.h"

std::vector<std::int64_t> OrderByName(const clStringList& paths) {
    // Of a text the keys need no more of the record than that there is one.
    const FileRow anyRow;
    SortKeys keys(SortValue::Text);
    for (std::int64_t i = 0; i < paths.Count(); ++i)
        keys.Add(&anyRow, FileNameOf(*paths.At(i)));
    std::vector<std::int64_t> order(static_cast<std::size_t>(paths.Count()));
    std::iota(order.begin(), order.end(), 0);
    std::ranges::stable_sort(order, [&keys](std::int64_t first, std::int64_t second) {
        return keys.Compare(first, second) < 0;
    });
    return order;
}
