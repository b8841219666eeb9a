#include <algorithm>
#include <type_traits>
#include <vector>

#include "foundation/mutex.h"
#include "toolkit/list_view.h"
#include "toolkit/row_order.h"

static_assert(std::is_same_v<RowCompare, PFNLVCOMPARE>);

namespace {

int CALLBACK CompareRanks(LPARAM first, LPARAM second, LPARAM context) {
    const auto& ranks = *reinterpret_cast<const clRanksByParameter*>(context);
    return ranks.RankOf(first) - ranks.RankOf(second);
}

}  // namespace

// LVM_SORTITEMSEX would do it in one call, and does on Windows. Wine's gives its
// comparator indices into an array that it is just sorting, while the list still
// answers in the old order: the result is no order at all. So the rows are
// ordered here, and the control's plain sort only carries the result out.
bool XListView::SortRows(PFNLVCOMPARE compare, LPARAM context) {
    const clMutexLock lock(SubclassMutex);
    const std::int32_t count = RowCount();
    std::vector<std::int64_t> rowData;
    rowData.reserve(static_cast<std::size_t>(count));
    for (std::int32_t row = 0; row < count; ++row)
        rowData.push_back(RowData(row));
    return SortRows(compare, context, rowData);
}

bool XListView::SortRows(PFNLVCOMPARE compare, LPARAM context, std::vector<std::int64_t>& rowData) {
    // Without it every cell that the comparator reads would enter the kernel.
    const clMutexLock lock(SubclassMutex);
    // Of a batch around this one rows may be new.
    const bool rowsStay = !batching;
    const Marks marks(*this);
    BeginBatch();
    const std::vector<std::int32_t> ranks =
        StableRanks(static_cast<std::int32_t>(rowData.size()), compare, context);
    const clRanksByParameter byParameter(rowData, ranks);
    if (byParameter.AllDiffer() && !std::ranges::is_sorted(ranks)) {
        Ask(LVM_SORTITEMS, reinterpret_cast<WPARAM>(&byParameter),
            reinterpret_cast<LPARAM>(&CompareRanks));
        const std::vector<std::int64_t> before(rowData);
        for (std::size_t row = 0; row < before.size(); ++row)
            rowData[static_cast<std::size_t>(ranks[row])] = before[row];
    }
    if (rowsStay)
        RedrawInPlace(marks);
    else
        Ask(WM_SETREDRAW, TRUE);
    LeaveBatch();
    return byParameter.AllDiffer();
}
