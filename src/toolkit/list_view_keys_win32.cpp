#include "toolkit/list_view.h"

void XListView::RunListKey(std::uint32_t virtualKey) {
    if (virtualKey == VK_F2) EditByKey();
    if (virtualKey == 'A' && GetKeyState(VK_CONTROL) < 0) SelectAllByKey();
    OnListKey(virtualKey);
}

void XListView::EditByKey() {
    const LONG_PTR style = GetWindowLongPtrW(listWindow, GWL_STYLE);
    if ((style & LVS_EDITLABELS) == 0 && editMode == EditMode::None) return;
    if (!CanEditByKey()) return;
    const auto row = static_cast<std::int32_t>(Ask(LVM_GETSELECTIONMARK));
    if (row == -1) return;
    // The mark stays behind when the last row is deselected.
    if (Ask(LVM_GETSELECTEDCOUNT) == 0) return;
    if (editMode != EditMode::None) {
        valueControl.Start(*this, row, 0);
    } else {
        Ask(LVM_EDITLABELW, static_cast<WPARAM>(row));
    }
}

// The form hears of each row, but neither the screen nor `OnItemChanged` follows
// row by row: that is what takes the time in a long list.
void XListView::SelectAllByKey() {
    const LONG_PTR style = GetWindowLongPtrW(listWindow, GWL_STYLE);
    if ((style & LVS_SINGLESEL) != 0 || !CanSelectAll()) return;
    BeginBatch();
    const std::int32_t count = RowCount();
    for (std::int32_t row = 0; row < count; ++row) {
        SelectRow(row, false);
        OnRowSelected(row, 0, true);
    }
    EndBatch();
}
