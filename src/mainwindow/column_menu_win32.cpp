#include "mainwindow/column_menu.h"

#include "decoders/decoder_registry.h"
#include "mainwindow/columns.h"
#include "resources/ids.h"
#include "toolkit/skin_menu.h"

namespace {

// Places of the sub-menus in the resource.
constexpr int tagsPosition = 2;
constexpr int propertiesPosition = 4;

constexpr std::int32_t firstColumnCommand = 10000;
// Between the numbers of known columns and those of missing ones.
constexpr std::int32_t missingCommandGap = 10000;

// The sub-menus of one column menu, none of them owned here.
struct Menus {
    XSkinMenu root;
    XSkinMenu tags;
    XSkinMenu properties;

    explicit Menus(HMENU menu) {
        const HMENU rootMenu = GetSubMenu(menu, 0);
        root.Attach(rootMenu, false);
        tags.Attach(GetSubMenu(rootMenu, tagsPosition), false);
        properties.Attach(GetSubMenu(rootMenu, propertiesPosition), false);
    }

    void CollectTexts(clStringList& texts) {
        for (XSkinMenu* menu : {&root, &tags, &properties}) {
            const int count = GetMenuItemCount(menu->Menu());
            for (int position = 0; position < count; ++position)
                texts.Add(menu->ItemAt(position).text);
        }
    }
};

// Inserts the names in front of a placeholder, which then goes.
void ReplacePlaceholder(XSkinMenu& menu, std::int32_t placeholder, const clStringList& names,
                        std::int32_t& command, bool checked) {
    for (std::int64_t i = 0; i < names.Count(); ++i) {
        clMenuItem item;
        item.text.Assign(*names.At(i));
        item.id = command++;
        item.checked = checked;
        menu.InsertItemBefore(placeholder, item);
    }
    RemoveMenu(menu.Menu(), static_cast<UINT>(placeholder), MF_BYCOMMAND);
}

void Keep(const clStringList& names, const clStringList& known, clStringList& unknown) {
    for (std::int64_t i = 0; i < names.Count(); ++i) {
        if (known.IndexOf(*names.At(i), true) < 0) unknown.Add(*names.At(i));
    }
}

void CheckPresent(XSkinMenu& menu, const clStringList& present) {
    const int count = GetMenuItemCount(menu.Menu());
    for (int position = 0; position < count; ++position) {
        if (present.IndexOf(menu.ItemAt(position).text, true) < 0) continue;
        CheckMenuItem(menu.Menu(), static_cast<UINT>(position), MF_BYPOSITION | MF_CHECKED);
    }
}

}  // namespace

void DiscoverPropertyNames(clStringList& names) {
    WalkDecoderFolder([&names](const clString& library) {
        clTqDecoder decoder;
        clStringList offered;
        if (LoadForLists(library, decoder)) ReadPropertyNames(decoder, offered);
        for (std::int64_t i = 0; i < offered.Count(); ++i) {
            if (names.IndexOf(*offered.At(i), true) < 0) names.Add(*offered.At(i));
        }
        return true;
    });
    names.Sort(1);
}

HMENU BuildColumnMenu(const clString& columnNames) {
    const HMENU menu = LoadMenuW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDM_COLUMNS));
    if (menu == nullptr) return nullptr;
    Menus menus(menu);
    // It only keeps the sub-menus of the resource in their places.
    RemoveMenu(menus.root.Menu(), ID_COLUMNS_KEEP_PLACES, MF_BYCOMMAND);
    clStringList present;
    present.Split(columnNames);

    std::int32_t command = firstColumnCommand;
    clStringList names;
    names.Split(fileColumns);
    ReplacePlaceholder(menus.root, ID_COLUMNS_TOP, names, command, false);
    names.Clear();
    names.Split(tagColumns);
    ReplacePlaceholder(menus.tags, ID_COLUMNS_TAGS, names, command, false);

    clStringList texts;
    menus.CollectTexts(texts);
    clStringList discovered;
    DiscoverPropertyNames(discovered);
    names.Clear();
    Keep(discovered, texts, names);
    ReplacePlaceholder(menus.properties, ID_COLUMNS_PROPERTIES, names, command, false);
    for (XSkinMenu* part : {&menus.root, &menus.tags, &menus.properties})
        CheckPresent(*part, present);

    texts.Clear();
    menus.CollectTexts(texts);
    names.Clear();
    Keep(present, texts, names);
    command += missingCommandGap;
    ReplacePlaceholder(menus.root, ID_COLUMNS_MISSING, names, command, true);
    return menu;
}

void ToggleColumn(const clString& title, XListView& view, clFileList& list, ColumnMenuHost& host) {
    clStringList names;
    names.Split(list._ColumnNames);
    const std::int64_t place = names.IndexOf(title, true);
    if (place >= 0) {
        // The only column leaves the control, but stays among the names.
        if (names.Count() > 1) names.RemoveAt(place);
        view.RemoveColumn(list.ColumnTitled(title));
    } else {
        names.Add(title);
        list.InsertListColumn(title, 0);
        // With the old names still in force: a first column that needs a decoder
        // stays blank until the folder is next listed.
        host.FillNewColumn();
    }
    clString joined;
    names.Join(joined);
    list._ColumnNames.Assign(joined);
    list.Repaint();
}

void RestoreDefaultColumns(clFileList& list, ColumnMenuHost& host) {
    list._ColumnNames.Assign(defaultColumns);
    list.RemoveAllColumns();
    list.RestoreColumns(L"");
    list.SetColumnSortImage(0, 0);
    host.FillDefaultColumns();
}

void ShowColumnMenu(HWND owner, XListView& view, clFileList& list, ColumnMenuHost& host) {
    const HMENU menu = BuildColumnMenu(list._ColumnNames);
    if (menu == nullptr) return;
    POINT pointer = {};
    GetCursorPos(&pointer);
    const BOOL command =
        TrackPopupMenu(GetSubMenu(menu, 0), TPM_RIGHTBUTTON | TPM_NONOTIFY | TPM_RETURNCMD,
                       pointer.x, pointer.y, 0, owner, nullptr);
    if (command == ID_COLUMNS_DEFAULT) {
        RestoreDefaultColumns(list, host);
    } else if (command != 0) {
        XSkinMenu chosen;
        chosen.Attach(menu, false);
        ToggleColumn(chosen.ItemById(command).text, view, list, host);
    }
    DestroyMenu(menu);
}
