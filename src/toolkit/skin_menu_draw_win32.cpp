#include <windows.h>

#include <algorithm>

#include "toolkit/menu_layout.h"
#include "toolkit/skin_menu.h"

namespace {

// Separators have no command, and no layout of their own.
bool IsSeparator(UINT id) {
    return id == 0;
}

clExtent SizeOf(const RECT& rectangle) {
    return {rectangle.right - rectangle.left, rectangle.bottom - rectangle.top};
}

// Makes the layout exactly fill the item, as long as the item is no smaller.
void Fill(clText& layout, const clExtent& size) {
    layout.minimumWidth = size.width;
    layout.minimumHeight = size.height;
    layout.dirty = true;
}

}  // namespace

LRESULT XSkinMenu::Route(HWND, UINT message, WPARAM, LPARAM lParam, std::uint32_t* handled) {
    *handled = 0;
    if (message == WM_MEASUREITEM) {
        auto& item = *reinterpret_cast<MEASUREITEMSTRUCT*>(lParam);
        if (item.CtlType == ODT_MENU) return Measure(item, handled);
    } else if (message == WM_DRAWITEM && menu != nullptr) {
        const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
        if (item.CtlType == ODT_MENU) return Draw(item, handled);
    }
    return 0;
}

LRESULT XSkinMenu::Measure(MEASUREITEMSTRUCT& item, std::uint32_t* handled) const {
    if (IsSeparator(item.itemID)) {
        item.itemWidth = 0;
        item.itemHeight = static_cast<UINT>(menuSeparatorHeight);
    } else {
        clText* layout = LayoutOf(static_cast<std::int32_t>(item.itemID));
        if (layout == nullptr) return 0;
        // The size at which it was last drawn is no need of the item itself: the
        // menu would grow each time it is shown.
        Fill(*layout, {});
        const clExtent extent = layout->Measure();
        item.itemWidth = static_cast<UINT>(extent.width);
        item.itemHeight = static_cast<UINT>(MenuItemHeight(extent.height, imageHeight));
    }
    *handled = 1;
    return 1;
}

LRESULT XSkinMenu::Draw(const DRAWITEMSTRUCT& item, std::uint32_t* handled) {
    if (IsSeparator(item.itemID)) {
        DrawSeparator(item);
    } else {
        clText* layout = LayoutOf(static_cast<std::int32_t>(item.itemID));
        if (layout == nullptr) return 0;
        DrawItem(*layout, item);
    }
    *handled = 1;
    return 1;
}

void XSkinMenu::DrawSeparator(const DRAWITEMSTRUCT& item) {
    if (separator.IsEmpty()) BuildSeparator();
    Fill(separator, SizeOf(item.rcItem));
    separator.Paint(item.hDC, item.rcItem.left, item.rcItem.top);
}

void XSkinMenu::DrawItem(clText& layout, const DRAWITEMSTRUCT& item) {
    const clMenuItem described = ItemById(static_cast<std::int32_t>(item.itemID));
    layout.stateFlags =
        MenuState((item.itemState & ODS_SELECTED) != 0, described.checked, described.disabled);
    const clExtent size = SizeOf(item.rcItem);
    if (work.Width() < size.width || work.Height() < size.height) {
        work.CreateEmpty(item.hDC, std::max(work.Width(), size.width),
                         std::max(work.Height(), size.height));
    }
    Fill(layout, size);
    layout.Paint(work.Context(), 0, 0);
    work.Blit(item.hDC, item.rcItem.left, item.rcItem.top, size.width, size.height);
}
