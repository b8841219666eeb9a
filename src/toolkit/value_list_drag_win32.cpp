#include <windows.h>
// commctrl.h needs windows.h before it.
#include <commctrl.h>

#include <algorithm>
#include <utility>

#include "toolkit/value_list.h"

XValueList::Answer XValueList::RouteDrag(UINT code, const POINT& screen) {
    switch (code) {
        case DL_BEGINDRAG:
            draggedRow = LBItemFromPt(listBox, screen, FALSE);
            dragMoved = false;
            return {Row(draggedRow) != nullptr ? TRUE : FALSE, 1};
        case DL_DRAGGING:
            return DragOver(screen);
        case DL_DROPPED:
            DropAt(screen);
            return {0, 1};
        case DL_CANCELDRAG:
            DrawInsert(parent, listBox, -1);
            draggedRow = -1;
            return {0, 1};
        default:
            return {};
    }
}

XValueList::Answer XValueList::DragOver(const POINT& screen) {
    const std::int32_t before = LBItemFromPt(listBox, screen, TRUE);
    dragMoved = true;
    DrawInsert(parent, listBox, before);
    return {before == -1 ? DL_STOPCURSOR : DL_MOVECURSOR, 1};
}

void XValueList::DropAt(const POINT& screen) {
    const std::int32_t before = LBItemFromPt(listBox, screen, TRUE);
    DrawInsert(parent, listBox, -1);
    const std::int32_t dragged = std::exchange(draggedRow, -1);
    if (!dragMoved || before == -1 || Row(dragged) == nullptr) return;
    const bool firstIsBand = Row(0)->kind == ValueKind::Band;
    MoveRow(dragged, ValueDropPlace(dragged, before, firstIsBand));
}

void XValueList::MoveRow(std::int32_t from, std::int32_t to) {
    if (from == to) return;
    valueControl.CloseEditor();
    const auto first = rows.begin();
    if (from < to)
        std::rotate(first + from, first + from + 1, first + to + 1);
    else
        std::rotate(first + to, first + from, first + from + 1);
    const clString text = ValueBoxString(Row(to)->name, Row(to)->value);
    Ask(LB_DELETESTRING, static_cast<WPARAM>(from));
    Ask(LB_INSERTSTRING, static_cast<WPARAM>(to), reinterpret_cast<LPARAM>(text.Chars()));
    SelectRowAt(to);
}
