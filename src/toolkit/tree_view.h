// A tree control of a dialog: its notifications become virtual operations.
#pragma once

#include <windows.h>
// commctrl.h needs windows.h before it.
#include <commctrl.h>

#include <cstdint>

#include "foundation/string.h"
#include "toolkit/tree_item.h"

// The form offers every message of its own to `Route` and the tree sees nothing
// else. The thread of the tree.
class XTreeView {
public:
    XTreeView() = default;
    XTreeView(const XTreeView&) = delete;
    XTreeView& operator=(const XTreeView&) = delete;

    // The operations, in the order of their slots; none does anything by itself.
    // `action` is TVE_* for expansion and TVC_* for selection. `cancel` and
    // `result` point at a byte that is 0; any other value counts as set.

    // An item was opened or closed.
    virtual void OnItemExpanded(std::uint32_t action, XTreeItem item);
    // An item is about to be opened or closed; `*cancel` prevents it.
    virtual void OnItemExpanding(std::uint32_t action, XTreeItem item, std::uint8_t* cancel);
    // The selection has moved. Either item may be none.
    virtual void OnSelChanged(XTreeItem newItem, XTreeItem oldItem, std::uint32_t action);
    // The selection is about to move; `*cancel` keeps the old one.
    virtual void OnSelChanging(XTreeItem newItem, XTreeItem oldItem, std::uint32_t action,
                               std::uint8_t* cancel);
    // Clicks anywhere in the tree, before the selection moves; setting `*result`
    // keeps the control from acting on the click.
    virtual void OnTreeClick(std::uint8_t* result);
    virtual void OnTreeDoubleClick(std::uint8_t* result);
    virtual void OnTreeRightClick(std::uint8_t* result);
    virtual void OnTreeRightDoubleClick(std::uint8_t* result);
    // Unsigned screen coordinates, both 65535 from the keyboard. An item under
    // them is selected by then.
    virtual void OnTreeContextMenu(std::uint32_t x, std::uint32_t y);
    // The Space key.
    virtual void OnTreeSpace();

    // Appends to the children of `parent`, or to the roots for no item. Indices
    // of the tree's image list; -1 inserts without that image. The result is no
    // item if the control refuses.
    XTreeItem InsertItem(const clString& text, std::int32_t image, std::int32_t selectedImage,
                         std::int64_t data, XTreeItem parent);

    // Serves the form's WM_NOTIFY and WM_CONTEXTMENU that concern the tree, and
    // clears `*handled` for every other message. Returns the message's result.
    LRESULT Route(HWND window, UINT message, WPARAM wParam, LPARAM lParam, std::uint32_t* handled);

    // The control, which is the form's to find; null until set.
    void SetTreeWindow(HWND window) { treeWindow = window; }
    HWND TreeWindow() const { return treeWindow; }

protected:
    // Never deleted through this class; a derived class is final.
    ~XTreeView() = default;

private:
    LRESULT RouteNotify(NMHDR* header, std::uint32_t* handled);
    LRESULT RouteSelection(const NMTREEVIEWW& change, std::uint32_t* handled);
    LRESULT RouteExpansion(const NMTREEVIEWW& change, std::uint32_t* handled);
    LRESULT RouteClick(UINT code, std::uint32_t* handled);
    void RouteContextMenu(LPARAM lParam);
    XTreeItem ItemOf(const TVITEMW& item) const { return {item.hItem, treeWindow}; }

    HWND treeWindow = nullptr;
};
