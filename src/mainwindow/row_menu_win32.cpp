#include "mainwindow/row_menu.h"

#include "resources/ids.h"
#include "toolkit/icon_resource.h"

void PrepareRowMenu(XSkinMenu& menu) {
    if (!menu.LoadMenuAndPrepare()) return;
    menu.SetItemIcon(ID_CHECK_ALL, LoadIconResource(IDI_TICKED).Get());
    menu.SetItemIcon(ID_UNCHECK_ALL, LoadIconResource(IDI_STATE_NONE).Get());
}

int AskRowMenu(const XSkinMenu& menu, HWND owner) {
    POINT pointer = {};
    GetCursorPos(&pointer);
    return TrackPopupMenu(GetSubMenu(menu.Menu(), 0),
                          TPM_RIGHTBUTTON | TPM_RETURNCMD | TPM_NONOTIFY, pointer.x, pointer.y, 0,
                          owner, nullptr);
}
