#include "foundation/mutex.h"
#include "mainwindow/file_list.h"
#include "mainwindow/sort_keys.h"

namespace {

constexpr std::int32_t noImage = -1;
constexpr std::int32_t ascendingImage = 0;
constexpr std::int32_t descendingImage = 1;

struct KeyedOrder {
    const SortKeys& keys;
    bool ascending;
};

int CALLBACK CompareKeys(LPARAM first, LPARAM second, LPARAM context) {
    const auto& order = *reinterpret_cast<const KeyedOrder*>(context);
    const std::int32_t result = order.keys.Compare(first, second);
    return order.ascending ? result : -result;
}

// The key of a display row, behind those of the rows before it.
void AddKey(SortKeys& keys, SortValue value, const SortContext& order, std::int32_t displayRow) {
    const FileRow* row = order.rows->RowOf(order.list->RowData(displayRow));
    keys.Add(row, IsTextValue(value) ? order.list->CellText(displayRow, order.column) : clString());
}

}  // namespace

int CALLBACK CompareRows(LPARAM first, LPARAM second, LPARAM sortContext) {
    const auto& order = *reinterpret_cast<const SortContext*>(sortContext);
    const std::int32_t count = order.list->RowCount();
    if (first < 0 || second < 0 || first >= count || second >= count) return 0;
    const SortValue value = SortValueOf(order.columnName);
    SortKeys keys(value);
    AddKey(keys, value, order, static_cast<std::int32_t>(first));
    AddKey(keys, value, order, static_cast<std::int32_t>(second));
    const std::int32_t result = keys.Compare(0, 1);
    return order.ascending ? result : -result;
}

void clFileList::ToggleSort(std::int32_t column) {
    const std::int32_t shown = view.ColumnImage(column);
    for (std::int32_t i = 0; i < view.ColumnCount(); ++i)
        SetColumnSortImage(i, noImage);
    SetColumnSortImage(column, shown == ascendingImage ? descendingImage : ascendingImage);
    SortList();
}

SortContext clFileList::CurrentOrder() {
    SortContext order;
    order.list = &view;
    order.rows = this;
    for (std::int32_t column = 0; column < view.ColumnCount(); ++column) {
        const std::int32_t image = view.ColumnImage(column);
        if (image == noImage) continue;
        order.columnName.Assign(view.ColumnTitle(column));
        order.column = column;
        order.ascending = image == ascendingImage;
    }
    return order;
}

// Each comparison of CompareRows asks the control for two cells. Asked once for
// each row, the control's answers are not what the time of a sort goes into.
void clFileList::SortList() {
    // Without it each of the list's many messages would enter the kernel.
    const clMutexLock lock(SubclassMutex);
    const SortContext order = CurrentOrder();
    const SortValue value = SortValueOf(order.columnName);
    SortKeys keys(value);
    const std::int32_t count = view.RowCount();
    for (std::int32_t row = 0; row < count; ++row)
        keys.Add(RowAt(row), IsTextValue(value) ? view.CellText(row, order.column) : clString());
    const KeyedOrder keyed{keys, order.ascending};
    view.SortRows(&CompareKeys, reinterpret_cast<LPARAM>(&keyed), paramsInOrder);
}
