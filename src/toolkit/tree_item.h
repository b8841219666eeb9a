// One item of a tree control, passed around in place of its bare handle.
#pragma once

#include <windows.h>
// commctrl.h needs windows.h before it.
#include <commctrl.h>

#include <cstdint>

#include "foundation/string.h"

// Owns nothing and is copied freely; a null item stands for no item. The
// thread of the tree.
struct XTreeItem {
    HTREEITEM item = nullptr;
    HWND tree = nullptr;

    bool IsValid() const { return item != nullptr && tree != nullptr; }

    // The item's 64-bit parameter; 0 without an item, or if it can't be read.
    std::int64_t ItemData() const;
    // At most 998 characters; empty without an item, or if it can't be read.
    clString ItemText() const;
    // Index of the state image, 1-based; 0 for none.
    std::uint32_t ItemStateImage() const;
    // 0 to 15. Nothing else of the item's state changes.
    void SetItemStateImage(std::uint32_t index) const;
    // False without an item, or if it can't be read.
    bool IsExpanded() const;
};
