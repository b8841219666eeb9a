#include <windows.h>

#include <memory>
#include <utility>

#include "toolkit/grey_icon.h"
#include "toolkit/menu_layout.h"
#include "toolkit/skin_menu.h"

namespace {

constexpr UINT rowMenu = 111;
constexpr UINT longestText = 260;  // the terminator included

// Ids that no resource uses.
std::int32_t nextId = 53000;

COLORREF WindowColour() {
    return GetSysColor(COLOR_WINDOW);
}

}  // namespace

XSkinMenu::~XSkinMenu() {
    Attach(nullptr, false);
}

void XSkinMenu::Attach(HMENU newMenu, bool owned) {
    if (ownsMenu && menu != nullptr) DestroyMenu(menu);
    menu = newMenu;
    ownsMenu = owned;
    items.Clear();
    // Built for the images of the menu before.
    separator.Clear();
}

bool XSkinMenu::LoadMenuAndPrepare(HMODULE module) {
    imageWidth = 16;
    imageHeight = 16;
    const HMODULE source = module != nullptr ? module : GetModuleHandleW(nullptr);
    Attach(LoadMenuW(source, MAKEINTRESOURCEW(rowMenu)), true);
    Prepare();
    return menu != nullptr;
}

void XSkinMenu::Prepare(clOwnedList<clMenuLayout>* layouts, bool isTop) {
    if (menu == nullptr) return;
    const std::int32_t count = GetMenuItemCount(menu);
    for (std::int32_t position = 0; position < count; ++position) {
        if (const HMENU child = GetSubMenu(menu, position)) {
            XSkinMenu walk;
            walk.imageWidth = imageWidth;
            walk.imageHeight = imageHeight;
            walk.Attach(child, false);
            walk.Prepare(layouts, false);
        }
        if (!isTop) PrepareItem(*layouts, position);
    }
}

void XSkinMenu::PrepareItem(clOwnedList<clMenuLayout>& layouts, std::int32_t position) {
    MENUITEMINFOW info = {};
    info.cbSize = sizeof(info);
    info.fMask = MIIM_FTYPE | MIIM_ID | MIIM_SUBMENU;
    if (!GetMenuItemInfoW(menu, static_cast<UINT>(position), TRUE, &info)) return;
    info.fMask = MIIM_FTYPE | MIIM_ID;
    info.fType |= MFT_OWNERDRAW;
    // By their ids items are told apart when they are measured and drawn. One that
    // opens a submenu may have come without, since it sends no command; it gets
    // what the platform's AppendMenuW would have given it, the submenu's handle.
    if (info.wID == 0) info.wID = static_cast<UINT>(reinterpret_cast<UINT_PTR>(info.hSubMenu));
    SetMenuItemInfoW(menu, static_cast<UINT>(position), TRUE, &info);
    const clMenuItem item = ItemAt(position);
    if (item.separator) return;
    auto layout = std::make_unique<clMenuLayout>();
    layout->id = item.id;
    BuildItem(layout->text, item.text, nullptr);
    layouts.Add(std::move(layout));
}

namespace {

void AddText(clText& layout, const clMenuPart& part, const clString& text) {
    clTextString record;
    record.at = {part.area.left, part.area.top};
    record.text.Assign(text);
    record.colour = part.colour;
    record.condition = part.condition;
    layout.AddText(record);
}

void AddIcon(clText& layout, const clMenuPart& part, HICON icon) {
    layout.AddIcon(
        {.icon = icon, .at = {part.area.left, part.area.top}, .condition = part.condition});
}

void AddPart(clText& layout, const clMenuPart& part, const clString& text, HICON icon,
             HICON greyIcon) {
    const clArea& area = part.area;
    const COLORREF first = part.colour;
    const COLORREF second = part.secondColour;
    switch (part.kind) {
        case MenuPartKind::Fill:
            layout.AddFill({.area = area, .colour = first, .condition = part.condition});
            return;
        case MenuPartKind::GradientAcross:
            layout.AddGradient({.area = area,
                                .colours = {first, second, first, second},
                                .condition = part.condition});
            return;
        case MenuPartKind::GradientDown:
            layout.AddGradient({.area = area,
                                .colours = {first, first, second, second},
                                .condition = part.condition});
            return;
        case MenuPartKind::Box:
            layout.AddBox({.area = area,
                           .brushColour = first,
                           .penColour = second,
                           .condition = part.condition});
            return;
        case MenuPartKind::Line:
            layout.AddLine({.colour = first,
                            .from = {area.left, area.top},
                            .to = {area.right, area.bottom},
                            .condition = part.condition});
            return;
        case MenuPartKind::Text:
            return AddText(layout, part, text);
        case MenuPartKind::Icon:
            return AddIcon(layout, part, icon);
        case MenuPartKind::GreyIcon:
            return AddIcon(layout, part, greyIcon);
    }
}

}  // namespace

void XSkinMenu::BuildItem(clText& layout, const clString& text, HICON icon) const {
    layout.Clear();
    const clIconHandle grey = MakeGreyIcon(icon);
    for (const clMenuPart& part : MenuItemParts(imageWidth, WindowColour(), icon != nullptr))
        AddPart(layout, part, text, icon, grey.Get());
}

void XSkinMenu::BuildSeparator() {
    for (const clMenuPart& part : MenuSeparatorParts(imageWidth, WindowColour()))
        AddPart(separator, part, {}, nullptr, nullptr);
}

clText* XSkinMenu::LayoutOf(std::int32_t id) const {
    for (std::int64_t i = 0; i < items.Count(); ++i) {
        clMenuLayout* layout = items.At(i);
        if (layout->id == id) return &layout->text;
    }
    return nullptr;
}

void XSkinMenu::SetItemIcon(std::int32_t id, HICON icon) {
    if (clText* layout = LayoutOf(id)) BuildItem(*layout, ItemById(id).text, icon);
}

clMenuItem XSkinMenu::ReadItem(UINT item, BOOL byPosition) const {
    wchar_t text[longestText] = {};
    MENUITEMINFOW info = {};
    info.cbSize = sizeof(info);
    info.fMask = MIIM_STRING | MIIM_FTYPE | MIIM_STATE | MIIM_ID | MIIM_DATA;
    info.dwTypeData = text;
    info.cch = longestText;
    clMenuItem result;
    if (!GetMenuItemInfoW(menu, item, byPosition, &info)) return result;
    result.text.Assign(text);
    result.checked = (info.fState & MFS_CHECKED) != 0;
    result.disabled = (info.fState & (MF_GRAYED | MF_DISABLED)) != 0;
    result.separator = (info.fType & MFT_SEPARATOR) != 0;
    result.id = static_cast<std::int32_t>(info.wID);
    result.data = static_cast<std::int64_t>(info.dwItemData);
    return result;
}

clMenuItem XSkinMenu::ItemAt(std::int32_t position) const {
    return ReadItem(static_cast<UINT>(position), TRUE);
}

clMenuItem XSkinMenu::ItemById(std::int32_t id) const {
    return ReadItem(static_cast<UINT>(id), FALSE);
}

std::int32_t XSkinMenu::InsertItem(std::int32_t position, const clMenuItem& item) {
    const bool append = position == 0;
    return Insert(append ? static_cast<UINT>(GetMenuItemCount(menu)) : static_cast<UINT>(position),
                  TRUE, item);
}

std::int32_t XSkinMenu::InsertItemBefore(std::int32_t before, const clMenuItem& item) {
    return Insert(static_cast<UINT>(before), FALSE, item);
}

std::int32_t XSkinMenu::Insert(UINT before, BOOL byPosition, const clMenuItem& item) {
    MENUITEMINFOW info = {};
    info.cbSize = sizeof(info);
    info.fMask = MIIM_FTYPE;
    if (item.separator) {
        info.fType = MFT_SEPARATOR;
        InsertMenuItemW(menu, before, byPosition, &info);
        return 0;
    }
    const std::int32_t id = item.id != 0 ? item.id : nextId++;
    clString text = item.text;
    info.fMask |= MIIM_STRING | MIIM_STATE | MIIM_ID | MIIM_DATA;
    info.fType = MFT_STRING;
    info.fState =
        (item.checked ? MFS_CHECKED : MFS_UNCHECKED) | (item.disabled ? MFS_DISABLED : MFS_ENABLED);
    info.wID = static_cast<UINT>(id);
    info.dwItemData = static_cast<ULONG_PTR>(item.data);
    info.dwTypeData = const_cast<wchar_t*>(text.Chars());
    InsertMenuItemW(menu, before, byPosition, &info);
    return id;
}
