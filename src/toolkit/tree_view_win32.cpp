#include "toolkit/tree_view.h"

#include <windows.h>
// commctrl.h needs windows.h before it.
#include <commctrl.h>

namespace {

constexpr std::uint32_t isHandled = 1;

}  // namespace

void XTreeView::OnItemExpanded(std::uint32_t, XTreeItem) {}
void XTreeView::OnItemExpanding(std::uint32_t, XTreeItem, std::uint8_t*) {}
void XTreeView::OnSelChanged(XTreeItem, XTreeItem, std::uint32_t) {}
void XTreeView::OnSelChanging(XTreeItem, XTreeItem, std::uint32_t, std::uint8_t*) {}
void XTreeView::OnTreeClick(std::uint8_t*) {}
void XTreeView::OnTreeDoubleClick(std::uint8_t*) {}
void XTreeView::OnTreeRightClick(std::uint8_t*) {}
void XTreeView::OnTreeRightDoubleClick(std::uint8_t*) {}
void XTreeView::OnTreeContextMenu(std::uint32_t, std::uint32_t) {}
void XTreeView::OnTreeSpace() {}

XTreeItem XTreeView::InsertItem(const clString& text, std::int32_t image,
                                std::int32_t selectedImage, std::int64_t data, XTreeItem parent) {
    clString shown(text);  // the structure wants text that may be written
    TVINSERTSTRUCTW insertion = {};
    insertion.hParent = parent.item;
    insertion.hInsertAfter = TVI_LAST;
    TVITEMW& item = insertion.item;
    item.mask = TVIF_TEXT | TVIF_PARAM;
    item.pszText = const_cast<wchar_t*>(shown.Chars());
    item.lParam = data;
    if (image != -1) {
        item.mask |= TVIF_IMAGE;
        item.iImage = image;
    }
    if (selectedImage != -1) {
        item.mask |= TVIF_SELECTEDIMAGE;
        item.iSelectedImage = selectedImage;
    }
    const LRESULT inserted =
        SendMessageW(treeWindow, TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&insertion));
    return {reinterpret_cast<HTREEITEM>(inserted), treeWindow};
}

LRESULT XTreeView::Route(HWND, UINT message, WPARAM wParam, LPARAM lParam, std::uint32_t* handled) {
    *handled = 0;
    if (treeWindow == nullptr) return 0;
    if (message == WM_NOTIFY) {
        auto* const header = reinterpret_cast<NMHDR*>(lParam);
        return header->hwndFrom == treeWindow ? RouteNotify(header, handled) : 0;
    }
    if (message == WM_CONTEXTMENU && reinterpret_cast<HWND>(wParam) == treeWindow) {
        RouteContextMenu(lParam);
        // The flag is the form's: what the operation sent may have set it.
        *handled = 0;
    }
    return 0;
}

LRESULT XTreeView::RouteNotify(NMHDR* header, std::uint32_t* handled) {
    switch (header->code) {
        case TVN_SELCHANGINGW:
        case TVN_SELCHANGEDW:
            return RouteSelection(*reinterpret_cast<NMTREEVIEWW*>(header), handled);
        case TVN_ITEMEXPANDINGW:
        case TVN_ITEMEXPANDEDW:
            return RouteExpansion(*reinterpret_cast<NMTREEVIEWW*>(header), handled);
        case TVN_KEYDOWN:
            if (reinterpret_cast<NMTVKEYDOWN*>(header)->wVKey != VK_SPACE) return 0;
            *handled = isHandled;
            OnTreeSpace();
            *handled = isHandled;
            return 1;
        case NM_CLICK:
        case NM_DBLCLK:
        case NM_RCLICK:
        case NM_RDBLCLK:
            return RouteClick(header->code, handled);
        default:
            return 0;
    }
}

// Here and below the flag is set a second time: it is the form's, and messages
// that the operation sent have left their own values there.
LRESULT XTreeView::RouteSelection(const NMTREEVIEWW& change, std::uint32_t* handled) {
    *handled = isHandled;
    std::uint8_t cancel = 0;
    if (change.hdr.code == TVN_SELCHANGINGW) {
        OnSelChanging(ItemOf(change.itemNew), ItemOf(change.itemOld), change.action, &cancel);
    } else {
        OnSelChanged(ItemOf(change.itemNew), ItemOf(change.itemOld), change.action);
    }
    *handled = isHandled;
    return cancel != 0 ? 1 : 0;
}

LRESULT XTreeView::RouteExpansion(const NMTREEVIEWW& change, std::uint32_t* handled) {
    *handled = isHandled;
    std::uint8_t cancel = 0;
    if (change.hdr.code == TVN_ITEMEXPANDINGW) {
        OnItemExpanding(change.action, ItemOf(change.itemNew), &cancel);
    } else {
        OnItemExpanded(change.action, ItemOf(change.itemNew));
    }
    *handled = isHandled;
    return cancel != 0 ? 1 : 0;
}

LRESULT XTreeView::RouteClick(UINT code, std::uint32_t* handled) {
    std::uint8_t result = 0;
    if (code == NM_CLICK) OnTreeClick(&result);
    if (code == NM_DBLCLK) OnTreeDoubleClick(&result);
    if (code == NM_RCLICK) OnTreeRightClick(&result);
    if (code == NM_RDBLCLK) OnTreeRightDoubleClick(&result);
    *handled = result != 0 ? isHandled : 0;
    return result != 0 ? 1 : 0;
}

void XTreeView::RouteContextMenu(LPARAM lParam) {
    const std::uint32_t x = LOWORD(lParam);
    const std::uint32_t y = HIWORD(lParam);
    TVHITTESTINFO hit = {};
    hit.pt = {static_cast<LONG>(x), static_cast<LONG>(y)};
    ScreenToClient(treeWindow, &hit.pt);
    const LRESULT item = SendMessageW(treeWindow, TVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
    if (item != 0) SendMessageW(treeWindow, TVM_SELECTITEM, TVGN_CARET, item);
    OnTreeContextMenu(x, y);
}
