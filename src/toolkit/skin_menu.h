// Menus drawn by the toolkit in place of the platform.
#pragma once

#include <windows.h>

#include <cstdint>

#include "foundation/string.h"
#include "toolkit/mem_bitmap.h"
#include "toolkit/owned_list.h"
#include "toolkit/text.h"

// One menu item, described plainly.
struct clMenuItem {
    clString text;
    bool checked = false;
    bool disabled = false;
    bool separator = false;
    std::int32_t id = 0;  // the command; 0 lets `InsertItem` choose one
    std::int64_t data = 0;
};

// The look of one item.
struct clMenuLayout {
    std::int32_t id = 0;
    clText text;
};

// Switches the items of a menu to owner drawing and draws them with display
// lists. The form that shows the menu offers every message to `Route`. The user
// interface thread.
class XSkinMenu {
public:
    XSkinMenu() = default;
    XSkinMenu(const XSkinMenu&) = delete;
    XSkinMenu& operator=(const XSkinMenu&) = delete;
    ~XSkinMenu();

    // Takes `newMenu`, or none, and gives up the earlier menu and all layouts. An
    // owned menu is destroyed with this object; a submenu belongs to its menu.
    void Attach(HMENU newMenu, bool owned);
    // Images of 16 by 16; attaches and prepares the program's menu 111, or that
    // of `module` if it is not null. False if it can't be loaded.
    [[nodiscard]] bool LoadMenuAndPrepare(HMODULE module = nullptr);
    // Switches all items to owner drawing, those of submenus included, and builds
    // their layouts into `layouts`: those of the top object. The items of the top
    // menu itself stay as they are if `isTop`: they only open submenus. Those of
    // submenus that open further ones and have no id get one. Once for each menu;
    // does nothing without one.
    void Prepare(clOwnedList<clMenuLayout>* layouts, bool isTop);
    void Prepare() { Prepare(&items, true); }

    // Gives an item of this menu or its submenus an icon, which is copied. Ids
    // without a layout are ignored.
    void SetItemIcon(std::int32_t id, HICON icon);
    // An item by its 0-based position in this menu, or by its id in this menu and
    // its submenus; empty if it can't be read. Of the text 259 characters count.
    clMenuItem ItemAt(std::int32_t position) const;
    clMenuItem ItemById(std::int32_t id) const;
    // Inserts before a 0-based position of this menu, or appends with position 0.
    // Items without an id get the next of a process-wide counter from 53000 on.
    // Returns the id used; a separator has none, which is 0.
    std::int32_t InsertItem(std::int32_t position, const clMenuItem& item);
    // The same before the item with the id `before`, anywhere in this menu and its
    // submenus; appended to this menu if there is none.
    std::int32_t InsertItemBefore(std::int32_t before, const clMenuItem& item);

    // Serves WM_MEASUREITEM and WM_DRAWITEM of menus, and clears `*handled` for
    // everything else. Returns the message's result.
    LRESULT Route(HWND window, UINT message, WPARAM wParam, LPARAM lParam, std::uint32_t* handled);

    HMENU Menu() const { return menu; }
    // The layout of an item, or null.
    clText* LayoutOf(std::int32_t id) const;

private:
    clMenuItem ReadItem(UINT item, BOOL byPosition) const;
    std::int32_t Insert(UINT before, BOOL byPosition, const clMenuItem& item);
    void PrepareItem(clOwnedList<clMenuLayout>& layouts, std::int32_t position);
    void BuildItem(clText& layout, const clString& text, HICON icon) const;
    void BuildSeparator();
    LRESULT Measure(MEASUREITEMSTRUCT& item, std::uint32_t* handled) const;
    LRESULT Draw(const DRAWITEMSTRUCT& item, std::uint32_t* handled);
    void DrawSeparator(const DRAWITEMSTRUCT& item);
    void DrawItem(clText& layout, const DRAWITEMSTRUCT& item);

    HMENU menu = nullptr;
    bool ownsMenu = false;
    clOwnedList<clMenuLayout> items;
    clText separator;
    XMemBitmap work;

public:
    // The size of the images, in pixels; width 0 means no strip for them. Set
    // before `Prepare`.
    std::int32_t imageWidth = 16;
    std::int32_t imageHeight = 16;
};
