#include <optional>

#include "toolkit/list_rules.h"
#include "toolkit/list_view.h"

namespace {

bool Contains(const clPtrArray& rows, std::int64_t row) {
    for (std::int64_t i = 0; i < rows.Count(); ++i) {
        if (rows.Get(i) == row) return true;
    }
    return false;
}

}  // namespace

// A press on the check box of a selected row acts on the whole selection; on
// another row it first makes that row the selection. The form hears of it
// through LVN_ITEMCHANGED, row by row. True if the press was one.
bool XListView::ClickCheckBox() {
    if ((Ask(LVM_GETEXTENDEDLISTVIEWSTYLE) & LVS_EX_CHECKBOXES) == 0) return false;
    if (!IsInCheckZone(PointerInList().x, FirstColumnLeft())) return false;
    clPtrArray rows;
    SelectedRows(rows);
    const std::int32_t clicked = RowUnderPointer();
    if (clicked == -1) return false;
    if (!Contains(rows, clicked)) {
        SelectRow(clicked, true);
        rows.Clear();
        rows.Add(clicked);
    }
    std::optional<RedrawPause> pause;
    if (rows.Count() > 1) pause.emplace(*this);
    const std::uint32_t state = ToggledCheckState(RowState(clicked, LVIS_STATEIMAGEMASK));
    for (std::int64_t i = 0; i < rows.Count(); ++i)
        SetRowState(static_cast<std::int32_t>(rows.Get(i)), state, LVIS_STATEIMAGEMASK);
    return true;
}

bool XListView::MayEdit(std::int32_t row, std::int32_t column) {
    if (editMode == EditMode::None) return false;
    if (editMode != EditMode::AllColumns && column != 0) return false;
    return CanEditCell(row, column);
}

// Opens the editor on the cell under a press; true if it is a cell to edit.
bool XListView::EditUnderPress(LPARAM lParam) {
    // Those keys belong to the selection. Asked of the keyboard itself: what the
    // message tells may be synthetic.
    for (const int key : {VK_LCONTROL, VK_RCONTROL, VK_LSHIFT, VK_RSHIFT}) {
        if ((GetAsyncKeyState(key) & 0x8000) != 0) return false;
    }
    const POINT point = {static_cast<std::int16_t>(LOWORD(lParam)),
                         static_cast<std::int16_t>(HIWORD(lParam))};
    const LVHITTESTINFO hit = HitTest(point);
    if (hit.iItem == -1 || !MayEdit(hit.iItem, hit.iSubItem)) return false;
    valueControl.Start(*this, hit.iItem, hit.iSubItem);
    return true;
}

void XListView::HookLeftDown(LPARAM lParam, std::uint32_t* handled) {
    const bool onCheckBox = ClickCheckBox();
    std::uint32_t taken = onCheckBox ? 1 : 0;
    if (!onCheckBox) {
        const POINT point = PointerInList();
        OnLeftDown(HitTest(point).iItem, point, &taken);
    }
    if (editMode != EditMode::None) {
        valueControl.Commit();
        valueControl.Close();
        // A press on a check box ends an edit but begins none.
        if (!onCheckBox && EditUnderPress(lParam)) taken = 1;
    }
    *handled = taken;
}

LRESULT XListView::WndHook(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                           std::uint32_t* handled) {
    Answer answer;
    switch (message) {
        case WM_LBUTTONDOWN:
            HookLeftDown(lParam, &answer.handled);
            break;
        case WM_LBUTTONDBLCLK:
            // The second of two fast presses. Left to itself the control would
            // toggle the row under the pointer alone, or not even that one.
            if (ClickCheckBox()) answer.handled = 1;
            break;
        case WM_VSCROLL:
            OnVScroll(LOWORD(wParam), HIWORD(wParam));
            break;
        case WM_NOTIFY: {
            auto* const header = reinterpret_cast<NMHDR*>(lParam);
            if (header->hwndFrom == Header()) answer = HookHeaderNotify(header);
            break;
        }
        default:
            return XSubClassCtrl::WndHook(window, message, wParam, lParam, handled);
    }
    // Last: what was called may have sent messages to the list.
    *handled = answer.handled;
    return answer.result;
}
