#include <windows.h>
// commctrl.h needs windows.h before it.
#include <commctrl.h>

#include "toolkit/tree_item.h"

namespace {

constexpr int textCapacity = 999;  // characters, terminator included
constexpr UINT stateImageShift = 12;
constexpr UINT allStatesButImages = 254;

bool ReadItem(const XTreeItem& item, TVITEMW& wanted) {
    wanted.mask |= TVIF_HANDLE;
    wanted.hItem = item.item;
    return SendMessageW(item.tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&wanted)) != 0;
}

}  // namespace

std::int64_t XTreeItem::ItemData() const {
    if (!IsValid()) return 0;
    TVITEMW wanted = {};
    wanted.mask = TVIF_PARAM;
    return ReadItem(*this, wanted) ? wanted.lParam : 0;
}

clString XTreeItem::ItemText() const {
    if (!IsValid()) return clString();
    wchar_t buffer[textCapacity] = {};
    TVITEMW wanted = {};
    wanted.mask = TVIF_TEXT;
    wanted.pszText = buffer;
    wanted.cchTextMax = textCapacity;
    // The control may point elsewhere instead of filling the buffer.
    return ReadItem(*this, wanted) ? clString(wanted.pszText) : clString();
}

std::uint32_t XTreeItem::ItemStateImage() const {
    TVITEMW wanted = {};
    wanted.mask = TVIF_STATE;
    wanted.stateMask = TVIS_STATEIMAGEMASK;
    if (!ReadItem(*this, wanted)) return 0;
    // The control gives all bits, whatever the mask asks for.
    return (wanted.state & TVIS_STATEIMAGEMASK) >> stateImageShift;
}

void XTreeItem::SetItemStateImage(std::uint32_t index) const {
    TVITEMW change = {};
    change.mask = TVIF_HANDLE | TVIF_STATE;
    change.hItem = item;
    change.state = index << stateImageShift;
    change.stateMask = TVIS_STATEIMAGEMASK;
    SendMessageW(tree, TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&change));
}

bool XTreeItem::IsExpanded() const {
    if (!IsValid()) return false;
    TVITEMW wanted = {};
    wanted.mask = TVIF_STATE;
    wanted.stateMask = allStatesButImages;
    return ReadItem(*this, wanted) && (wanted.state & TVIS_EXPANDED) != 0;
}
