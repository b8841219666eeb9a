#include <algorithm>

#include "toolkit/list_rules.h"
#include "toolkit/list_view.h"

static_assert(LVIS_STATEIMAGEMASK == 0xF000 && LVIS_SELECTED == 0x0002);
static_assert(INDEXTOSTATEIMAGEMASK(1) == 0x1000 && INDEXTOSTATEIMAGEMASK(2) == 0x2000);
static_assert(LVIF_STATE == 0x0008 && HDI_WIDTH == 0x0001);

XListView::~XListView() {
    // First: what the editor's end sends would meet a list that is half gone.
    Detach();
}

LRESULT XListView::Ask(UINT message, WPARAM wParam, LPARAM lParam) const {
    return listWindow != nullptr ? SendMessageW(listWindow, message, wParam, lParam) : 0;
}

LRESULT XListView::Route(HWND, UINT message, WPARAM wParam, LPARAM lParam, std::uint32_t* handled) {
    *handled = 0;
    if (listWindow == nullptr) return 0;
    const Answer answer = RouteMessage(message, wParam, lParam);
    // Last: what was called may have sent messages to the form, which leave their
    // own value here.
    *handled = answer.handled;
    return answer.result;
}

XListView::Answer XListView::RouteMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_NOTIFY:
            return RouteNotify(reinterpret_cast<NMHDR*>(lParam));
        case WM_CONTEXTMENU:
            if (reinterpret_cast<HWND>(wParam) == listWindow) {
                OnListContextMenu(LOWORD(lParam), HIWORD(lParam), listWindow);
            }
            return {};
        case WM_DRAWITEM:
            if (static_cast<LONG_PTR>(wParam) == GetWindowLongPtrW(listWindow, GWLP_ID)) {
                RouteDrawItem(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
            }
            return {};
        default:
            return {};
    }
}

void XListView::RouteDrawItem(const DRAWITEMSTRUCT& item) {
    if (item.itemID <= static_cast<std::uint32_t>(RowCount())) OnDrawRow(item);
}

XListView::Answer XListView::RouteNotify(NMHDR* header) {
    if (header->hwndFrom == listWindow) return RouteOfList(header);
    if (header->hwndFrom != nullptr && header->hwndFrom == Header()) {
        return RouteOfHeader(*reinterpret_cast<const NMHEADERW*>(header));
    }
    return {};
}

XListView::Answer XListView::RouteOfHeader(const NMHEADERW& change) {
    switch (change.hdr.code) {
        case HDN_ENDTRACKW:
            OnColumnResized(change.iItem);
            return {};
        case HDN_ENDDRAG:
            OnColumnsReordered();
            return {};
        case HDN_ITEMCHANGINGW:
            return KeepMinimumWidth(change);
        default:
            return {};
    }
}

XListView::Answer XListView::RouteOfList(NMHDR* header) {
    const auto& change = *reinterpret_cast<const NMLISTVIEW*>(header);
    switch (header->code) {
        case LVN_ENDLABELEDITW:
            return RouteLabelEnd(reinterpret_cast<const NMLVDISPINFOW*>(header)->item);
        case LVN_BEGINLABELEDITW:
            return RouteLabelBegin(reinterpret_cast<const NMLVDISPINFOW*>(header)->item);
        case LVN_GETINFOTIPW:
            return RouteInfoTip(*reinterpret_cast<const NMLVGETINFOTIPW*>(header));
        case LVN_MARQUEEBEGIN:
            return {OnMarqueeBegin(), 1};
        case LVN_KEYDOWN:
            RunListKey(reinterpret_cast<const NMLVKEYDOWN*>(header)->wVKey);
            return {};
        case LVN_BEGINDRAG:
            OnBeginDrag(change);
            return {};
        case LVN_COLUMNCLICK:
            OnColumnClick(change.iSubItem);
            return {};
        case LVN_ITEMCHANGED:
            return RouteItemChanged(change);
        case NM_CLICK:
        case NM_DBLCLK:
        case NM_RCLICK:
        case NM_RDBLCLK:
            RouteClick(*reinterpret_cast<const NMITEMACTIVATE*>(header));
            return {};
        default:
            return {};
    }
}

XListView::Answer XListView::RouteLabelEnd(const LVITEMW& item) {
    if (item.iItem == -1) return {};
    if (item.pszText == nullptr) {
        OnLabelEditCancelled(item.iItem);
    } else {
        const clString text(item.pszText);
        SetCell(text, item.iItem, 0);
        OnLabelEditEnd(item.iItem, text);
    }
    return {0, 1};
}

XListView::Answer XListView::RouteLabelBegin(const LVITEMW& item) {
    if (item.iItem == -1) return {};
    return {OnLabelEditBegin(item.iItem), 1};
}

XListView::Answer XListView::RouteInfoTip(const NMLVGETINFOTIPW& tip) {
    const clString text = TextForBuffer(GetInfoTip(tip.iItem), tip.cchTextMax);
    if (tip.pszText != nullptr) std::copy_n(text.Chars(), text.Length() + 1, tip.pszText);
    return {0, 1};
}

XListView::Answer XListView::RouteItemChanged(const NMLISTVIEW& change) {
    if (batching) return {};
    OnItemChanged(change.iItem, change.iSubItem, change.uChanged, change.uOldState,
                  change.uNewState);
    const ListStateChange flipped =
        LookAtStateChange(change.uChanged, change.uOldState, change.uNewState);
    if (flipped.selectionFlipped) OnRowSelected(change.iItem, change.iSubItem, flipped.selected);
    if (flipped.checkFlipped) {
        const std::uint32_t image = RowState(change.iItem, LVIS_STATEIMAGEMASK);
        OnRowChecked(change.iItem, image != INDEXTOSTATEIMAGEMASK(1));
    }
    return {0, 1};
}

void XListView::RouteClick(const NMITEMACTIVATE& click) {
    switch (click.hdr.code) {
        case NM_CLICK:
            OnRowClick(click.iItem, click.iSubItem, click.ptAction);
            return;
        case NM_DBLCLK:
            OnRowDoubleClick(click.iItem, click.iSubItem, click.ptAction);
            return;
        case NM_RCLICK:
            OnRowRightClick(click.iItem, click.iSubItem, click.ptAction);
            return;
        default:
            OnRowRightDoubleClick(click.iItem, click.iSubItem, click.ptAction);
            return;
    }
}

// The base operations.

bool XListView::CanEditCell(std::int32_t, std::int32_t) {
    return true;
}

void XListView::OnItemChanged(std::int32_t, std::int32_t, std::uint32_t, std::uint32_t,
                              std::uint32_t) {}

void XListView::OnRowSelected(std::int32_t, std::int32_t, bool) {}

void XListView::OnRowChecked(std::int32_t, bool) {}

std::uint8_t XListView::OnLabelEditBegin(std::int32_t) {
    return 0;
}

bool XListView::OnLabelEditEnd(std::int32_t, const clString&) {
    return true;
}

void XListView::OnCellEdited(std::int32_t, std::int32_t, const clString&) {}

void XListView::OnLabelEditCancelled(std::int32_t) {}

void XListView::OnBeginDrag(const NMLISTVIEW&) {}

void XListView::OnListKey(std::uint32_t) {}

bool XListView::CanEditByKey() {
    return true;
}

bool XListView::CanSelectAll() {
    return true;
}

clString XListView::GetInfoTip(std::int32_t) {
    return {};
}

std::uint8_t XListView::OnMarqueeBegin() {
    return 0;
}

void XListView::OnColumnClick(std::int32_t) {}

void XListView::OnRowClick(std::int32_t, std::int32_t, const POINT&) {}

void XListView::OnLeftDown(std::int32_t, const POINT&, std::uint32_t* handled) {
    *handled = 0;
}

void XListView::OnRowDoubleClick(std::int32_t, std::int32_t, const POINT&) {}

void XListView::OnRowRightClick(std::int32_t, std::int32_t, const POINT&) {}

void XListView::OnRowRightDoubleClick(std::int32_t, std::int32_t, const POINT&) {}

void XListView::OnListContextMenu(std::uint32_t, std::uint32_t, HWND) {}

void XListView::OnColumnResized(std::int32_t) {}

void XListView::OnColumnsReordered() {}

void XListView::OnDrawRow(const DRAWITEMSTRUCT&) {}

void XListView::OnVScroll(std::uint32_t, std::uint32_t) {}
