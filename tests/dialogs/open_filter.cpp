#include "tests/dialogs/open_filter.h"

#include "dialogs/filter_form.h"
#include "resources/ids.h"
#include "tests/dialogs/dialog_loop.h"
#include "tests/support/import_stub.h"
#include "tests/support/text.h"
#include "tests/ui/pixels.h"
#include "toolkit/dpi.h"
#include "toolkit/font.h"

namespace {

std::optional<INT_PTR> result;
decltype(EndDialog)* endDialog = nullptr;

BOOL WINAPI KeepResult(HWND dialog, INT_PTR given) {
    if (!result) result = given;
    return endDialog(dialog, given);
}

void DrawIconIn(const Canvas& canvas, int x, HICON icon, int rowHeight) {
    const int size = ScaleForDpi(16);
    DrawIconEx(canvas.Dc(), ScaleForDpi(x), (rowHeight - size) / 2, icon, size, size, 0, nullptr,
               DI_NORMAL);
}

}  // namespace

std::string ShownFilter::RowText(int row) const {
    wchar_t text[300] = {};
    SendMessageW(Box(), LB_GETTEXT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(text));
    return Utf8(text);
}

void ShownFilter::Turn(int row) const {
    SendMessageW(Box(), LB_SETCURSEL, static_cast<WPARAM>(row), 0);
    SendMessageW(Box(), WM_KEYDOWN, VK_SPACE, 1);
    SendMessageW(Box(), LB_SETCURSEL, static_cast<WPARAM>(-1), 0);
}

void ShownFilter::Press(int id) const {
    SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED),
                 reinterpret_cast<LPARAM>(GetDlgItem(dialog, id)));
}

POINT ShownFilter::Units(int horizontal, int vertical) const {
    RECT units = {horizontal, vertical, 1, 1};
    MapDialogRect(dialog, &units);
    return {units.left, units.top};
}

bool ShownFilter::Shows(int row, bool included, HICON picture, const wchar_t* label) const {
    UpdateWindow(Box());
    RECT place = {};
    SendMessageW(Box(), LB_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&place));
    const SIZE size = {place.right - place.left, place.bottom - place.top};

    const Canvas expected(size.cx, size.cy);
    const int boxId = included ? IDI_TICKED : IDI_STATE_NONE;
    const auto box = static_cast<HICON>(
        LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(boxId), IMAGE_ICON, 16, 16, 0));
    DrawIconIn(expected, 4, box, size.cy);
    DestroyIcon(box);
    if (picture != nullptr) DrawIconIn(expected, 24, picture, size.cy);
    clFont font;
    font.Create(expected.Dc(), nullptr, ScaleForDpi(13));
    font.DrawString(ScaleForDpi(44), size.cy / 2 - font.TextHeight(label) / 2, label);
    font.Release();
    return ShowsCanvas(Box(), {place.left, place.top}, expected);
}

std::optional<INT_PTR> RunFilter(clAudioTypes& types,
                                 const std::function<void(const ShownFilter&)>& work, HWND owner) {
    result.reset();
    const ImportStub stub("EndDialog", &KeepResult);
    endDialog = stub.Original<decltype(EndDialog)>();
    WorkInDialog(
        IDC_EXCLUDE_ALL, [&work](HWND dialog) { work(ShownFilter(dialog)); },
        [&] { const frmFilter dialog(owner, types); });
    return result;
}
