#include "dialogs/filter_form.h"

#include "dialogs/filter_labels.h"
#include "foundation/folders.h"
#include "resources/ids.h"
#include "toolkit/icon_resource.h"

namespace {

constexpr std::int32_t labelLeft = 44;
constexpr std::int32_t iconLeft = 24;
constexpr INT_PTR resultUnchanged = 0;
constexpr INT_PTR resultStored = 1;

// The picture of files of that type; the file need not exist.
HICON IconOfType(const clString& extension) {
    clString path = FolderPath(SHELL_APPLICATION_DATA);
    path.Append(L'a');
    path.Append(extension);
    return ShellFileIcon(path);
}

}  // namespace

frmFilter::frmFilter(HWND parent, clAudioTypes& audioTypes) : types(audioTypes) {
    DialogBoxParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDD_FILTER), parent,
                    &XWindow::DialogProcedure,
                    reinterpret_cast<LPARAM>(static_cast<XWindow*>(this)));
}

void frmFilter::OnDestroy() {}

void frmFilter::OnClose() {
    EndDialog(Window(), resultUnchanged);
    handledFlag = 1;
}

void frmFilter::OnIdCancel() {
    EndDialog(Window(), resultUnchanged);
    handledFlag = 1;
}

void frmFilter::OnCreate() {
    list.Create(Window());
    const HWND box = list.ListBox();
    SetWindowLongPtrW(box, GWL_STYLE, GetWindowLongPtrW(box, GWL_STYLE) | WS_BORDER);
    SetWindowLongPtrW(box, GWL_EXSTYLE, GetWindowLongPtrW(box, GWL_EXSTYLE) & ~WS_EX_CLIENTEDGE);
    // A frame is measured anew only when it is said to have changed.
    SetWindowPos(box, nullptr, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
    list.SetToggleIcons(LoadIconResource(IDI_TICKED).Get(), LoadIconResource(IDI_STATE_NONE).Get());
    CenterOnScreen();
}

void frmFilter::OnShow(std::uint32_t) {
    // Shown again, the rows are there already.
    if (list.RowCount() > 0) return;
    clStringList labels;
    FilterLabels(types, labels);
    for (std::int64_t i = 0; i < labels.Count(); ++i) {
        const std::int64_t type = labels.At(i)->tag;
        const clIconHandle icon(IconOfType(types.At(type).extension));
        clValueRowParams row;
        row.kind = ValueKind::Toggle;
        row.name.Assign(*labels.At(i));
        row.nameX = labelLeft;
        row.icon = icon.Get();
        row.iconX = iconLeft;
        row.value.Assign(types.At(type).excluded ? L"0" : L"1");
        row.userData = type;
        list.AddRow(row);
    }
}

LRESULT frmFilter::PreDispatch(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                               std::uint32_t* handled) {
    const LRESULT result = list.Route(window, message, wParam, lParam, handled);
    if (*handled != 0) return result;
    // The list's own number is drawn by lot, and may be that of a button.
    if (message == WM_COMMAND && HIWORD(wParam) == BN_CLICKED) {
        if (LOWORD(wParam) == IDC_EXCLUDE_ALL) SetAll(false);
        if (LOWORD(wParam) == IDC_INCLUDE_ALL) SetAll(true);
    }
    return result;
}

// Only the rows: the types change with OK.
void frmFilter::SetAll(bool included) {
    for (std::int32_t row = 0; row < list.RowCount(); ++row)
        list.Row(row)->value.Assign(included ? L"1" : L"0");
    list.Invalidate();
}

void frmFilter::OnIdOk() {
    for (std::int32_t row = 0; row < list.RowCount(); ++row)
        types.At(list.Row(row)->userData).excluded = !list.IsOn(row);
    EndDialog(Window(), resultStored);
    handledFlag = 1;
}
