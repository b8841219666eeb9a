#include "resources/ids.h"
#include "toolkit/gdi_handle.h"
#include "toolkit/icon_resource.h"
#include "toolkit/skin_menu.h"
#include "tools/gallery/page.h"

namespace {

constexpr std::uint16_t openId = 2001;
constexpr std::int32_t plainItem = 1;
constexpr std::int32_t pictureItem = 2;
constexpr std::int32_t itemWidth = 180;
constexpr std::int32_t columnWidth = itemWidth + 16;

struct ItemState {
    const wchar_t* label;
    bool selected;
    bool checked;
    bool disabled;
};
constexpr ItemState itemStates[] = {
    {L"as it is", false, false, false},        {L"selected", true, false, false},
    {L"checked", false, true, false},          {L"checked, selected", true, true, false},
    {L"disabled", false, false, true},         {L"disabled, selected", true, false, true},
    {L"disabled, checked", false, true, true},
};

// A menu bar with one popup: an item, one with a picture, a separator.
HMENU MakeMenu() {
    HMENU const bar = CreateMenu();
    HMENU const popup = CreatePopupMenu();
    AppendMenuW(popup, MF_STRING, plainItem, L"Without a picture");
    AppendMenuW(popup, MF_STRING, pictureItem, L"With a picture");
    AppendMenuW(popup, MF_SEPARATOR, 0, nullptr);
    AppendMenuW(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(popup), L"Popup");
    return bar;
}

class MenuPage : public GalleryPage {
public:
    const wchar_t* Name() const override { return L"Menus"; }
    LRESULT PreDispatch(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                        std::uint32_t* handled) override;
    void OnCommand(std::uint32_t id, HWND control, std::uint32_t notifyCode) override;

protected:
    void Fill() override;

private:
    void PrepareMenu(XSkinMenu& menu, std::int32_t imageSize);
    void AddStills(XSkinMenu& menu, std::int32_t x, const wchar_t* heading);
    void AddItem(XSkinMenu& menu, std::int32_t x, std::int32_t y, std::int32_t id,
                 const ItemState& state);

    XSkinMenu pictured;
    XSkinMenu bare;
    XSkinMenu program;
};

void MenuPage::Fill() {
    PrepareMenu(pictured, 16);
    PrepareMenu(bare, 0);
    AddStills(pictured, 16, L"With a strip for pictures");
    AddStills(bare, 16 + 2 * columnWidth + 130, L"Without");
    AddControl(L"BUTTON", L"Open the menu of rows", WS_TABSTOP, {16, 360, 190, 386}, openId);
    AddLabel(200, 366,
             L"opens the menu of the program, its first item checked, its last disabled.");
    if (!program.LoadMenuAndPrepare()) return;
    CheckMenuItem(program.Menu(), ID_CHECK_ALL, MF_CHECKED);
    EnableMenuItem(program.Menu(), ID_INVERT_SELECTION, MF_GRAYED);
    const clIconHandle icon = LoadIconResource(IDI_TICKED);
    program.SetItemIcon(ID_CHECK_ALL, icon.Get());
    program.SetItemIcon(ID_INVERT_SELECTION, icon.Get());
}

void MenuPage::PrepareMenu(XSkinMenu& menu, std::int32_t imageSize) {
    menu.imageWidth = imageSize;
    menu.imageHeight = 16;
    menu.Attach(MakeMenu(), true);
    menu.Prepare();
    const clIconHandle icon = LoadIconResource(IDI_PROGRAM);
    if (imageSize != 0) menu.SetItemIcon(pictureItem, icon.Get());
}

void MenuPage::AddStills(XSkinMenu& menu, std::int32_t x, const wchar_t* heading) {
    AddHeading(x, 10, heading);
    const bool hasPictures = menu.imageWidth != 0;
    std::int32_t y = 36;
    for (const ItemState& state : itemStates) {
        AddLabel(x, y + 3, state.label);
        AddItem(menu, x + 120, y, plainItem, state);
        if (hasPictures) AddItem(menu, x + 120 + columnWidth, y, pictureItem, state);
        y += 34;
    }
    AddLabel(x, y + 3, L"separator");
    AddItem(menu, x + 120, y + 4, 0, {});
}

void MenuPage::AddItem(XSkinMenu& menu, std::int32_t x, std::int32_t y, std::int32_t id,
                       const ItemState& state) {
    const auto command = static_cast<UINT>(id);
    CheckMenuItem(menu.Menu(), command, state.checked ? MF_CHECKED : MF_UNCHECKED);
    EnableMenuItem(menu.Menu(), command, state.disabled ? MF_GRAYED : MF_ENABLED);
    std::uint32_t handled = 0;
    MEASUREITEMSTRUCT size = {};
    size.CtlType = ODT_MENU;
    size.itemID = command;
    menu.Route(Window(), WM_MEASUREITEM, 0, reinterpret_cast<LPARAM>(&size), &handled);
    XMemBitmap still;
    still.CreateEmpty(nullptr, itemWidth, static_cast<std::int32_t>(size.itemHeight));
    DRAWITEMSTRUCT item = {};
    item.CtlType = ODT_MENU;
    item.itemID = command;
    item.itemState = state.selected ? ODS_SELECTED : 0;
    item.hwndItem = reinterpret_cast<HWND>(GetSubMenu(menu.Menu(), 0));
    item.hDC = still.Context();
    item.rcItem = {0, 0, still.Width(), still.Height()};
    menu.Route(Window(), WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&item), &handled);
    AddStill(x, y, still);
}

void MenuPage::OnCommand(std::uint32_t id, HWND control, std::uint32_t) {
    if (id != openId) return;
    RECT place{};
    GetWindowRect(control, &place);
    TrackPopupMenu(GetSubMenu(program.Menu(), 0), TPM_RIGHTBUTTON, place.left, place.bottom, 0,
                   Window(), nullptr);
    handledFlag = 1;
}

LRESULT MenuPage::PreDispatch(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                              std::uint32_t* handled) {
    return program.Route(window, message, wParam, lParam, handled);
}

}  // namespace

std::unique_ptr<GalleryPage> MakeMenuPage() {
    return std::make_unique<MenuPage>();
}
