#include <algorithm>
#include <utility>

#include "toolkit/dpi.h"
#include "toolkit/value_list.h"

namespace {

constexpr std::int32_t rowHeightAt96 = 21;
constexpr std::int32_t usualNameX = 4;
constexpr std::int32_t usualValueX = 150;
constexpr std::int32_t usualTextSize = 13;

// In dialog units.
constexpr LONG listLeft = 7;
constexpr LONG listTop = 7;
constexpr LONG listWidth = 336;
constexpr LONG listHeight = 254;

constexpr DWORD listStyle = WS_CHILD | WS_VISIBLE | WS_VSCROLL | WS_TABSTOP | LBS_NOTIFY |
                            LBS_OWNERDRAWFIXED | LBS_HASSTRINGS | LBS_NOINTEGRALHEIGHT |
                            LBS_WANTKEYBOARDINPUT;
static_assert(listStyle == 0x50210551);

}  // namespace

XValueList::XValueList() : valueControl(*this) {}

XValueList::~XValueList() {
    const HWND ending = listBox;
    valueControl.CloseEditor();
    // Forgotten before it goes: its end sends messages to the form.
    ForgetListBox();
    if (ending != nullptr) DestroyWindow(ending);
    rows.clear();
    for (const HICON icon : toggleIcons)
        if (icon != nullptr) DestroyIcon(icon);
}

void XValueList::ForgetListBox() {
    listBox = nullptr;
    Detach();
}

void XValueList::Create(HWND dialog) {
    valueControl.CloseEditor();
    if (const HWND earlier = listBox; earlier != nullptr) {
        ForgetListBox();
        DestroyWindow(earlier);
    }
    rows.clear();
    parent = dialog;
    controlId = 0;  // with which the list box asks for the height of its rows
    pixelMode = false;
    rowHeight = ScaleForDpi(rowHeightAt96);
    defaultNameX = usualNameX;
    defaultValueX = usualValueX;
    defaultNameSize = usualTextSize;
    defaultValueSize = usualTextSize;
    dragMessage = 0;
    RECT place = {listLeft, listTop, listLeft + listWidth, listTop + listHeight};
    MapDialogRect(parent, &place);
    const HWND made = CreateWindowExW(WS_EX_CLIENTEDGE, L"LISTBOX", nullptr, listStyle, place.left,
                                      place.top, place.right - place.left, place.bottom - place.top,
                                      parent, nullptr, GetModuleHandleW(nullptr), nullptr);
    if (made == nullptr) return;
    // Unlikely to be that of another control of the dialog.
    controlId =
        static_cast<std::int32_t>(LOWORD(reinterpret_cast<ULONG_PTR>(made)) + GetTickCount());
    SetWindowLongW(made, GWL_ID, controlId);
    SendMessageW(made, WM_SETFONT, static_cast<WPARAM>(SendMessageW(parent, WM_GETFONT, 0, 0)),
                 FALSE);
    listBox = made;
    Attach(made);
}

LRESULT XValueList::Ask(UINT message, WPARAM wParam, LPARAM lParam) const {
    return listBox != nullptr ? SendMessageW(listBox, message, wParam, lParam) : 0;
}

// In client coordinates of the list box.
RECT XValueList::RowRect(std::int32_t row) const {
    RECT rect = {};
    Ask(LB_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&rect));
    return rect;
}

void XValueList::SetToggleIcons(HICON on, HICON off) {
    SetToggleIcon(ToggleIcon::On, on);
    SetToggleIcon(ToggleIcon::Off, off);
}

void XValueList::SetToggleIcon(ToggleIcon which, HICON icon) {
    HICON& kept = toggleIcons[static_cast<std::size_t>(which)];
    const HICON earlier = std::exchange(kept, icon != nullptr ? CopyIcon(icon) : nullptr);
    if (earlier != nullptr) DestroyIcon(earlier);
}

HICON XValueList::IconOf(ToggleIcon which) const {
    return toggleIcons[static_cast<std::size_t>(which)];
}

clValueRow* XValueList::Row(std::int32_t row) const {
    if (row < 0 || row >= RowCount()) return nullptr;
    return rows[static_cast<std::size_t>(row)].get();
}

std::int32_t XValueList::CurrentRow() const {
    if (listBox == nullptr) return -1;
    const auto row = static_cast<std::int32_t>(Ask(LB_GETCURSEL));
    return Row(row) != nullptr ? row : -1;
}

void XValueList::SelectRowAt(std::int32_t row) {
    if (listBox == nullptr || row < -1 || row >= RowCount()) return;
    valueControl.CloseEditor();
    Ask(LB_SETCURSEL, static_cast<WPARAM>(row));
    SyncEditor();
    OnSelChange();
}

std::int32_t XValueList::RowUnderPointer() const {
    POINT pointer = {};
    if (listBox == nullptr || !GetCursorPos(&pointer)) return -1;
    const HWND under = WindowFromPoint(pointer);
    if (under != listBox && !IsChild(listBox, under)) return -1;
    ScreenToClient(listBox, &pointer);
    const auto itemHeight = static_cast<std::int32_t>(Ask(LB_GETITEMHEIGHT));
    return ValueRowAt(pointer.y, itemHeight > 0 ? itemHeight : rowHeight,
                      static_cast<std::int32_t>(Ask(LB_GETTOPINDEX)), RowCount());
}

bool XValueList::IsOn(std::int32_t row) const {
    const clValueRow* const asked = Row(row);
    return asked != nullptr && IsValueOn(asked->kind, asked->value);
}

void XValueList::SetOn(bool on, std::int32_t row) {
    SwitchValue(on, row, RowCount(), [this](std::int32_t at) -> clValueRow& { return *Row(at); });
    Invalidate();
}

void XValueList::SyncEditor() {
    const std::int32_t row = CurrentRow();
    if (row != -1)
        valueControl.ShowEditor(row, defaultValueX);
    else
        valueControl.CloseEditor();
    Invalidate();
}

void XValueList::Invalidate() const {
    for (const HWND window : {listBox, valueControl.EditorWindow(), valueControl.ButtonWindow()})
        if (window != nullptr) InvalidateRect(window, nullptr, FALSE);
}

// The base operations.

void XValueList::OnSelChange() {}

void XValueList::OnValueChanged(std::int32_t) {}

void XValueList::OnRowContextMenu(std::int32_t, std::int32_t) {}

void XValueList::OnRowDoubleClick(std::int32_t) {}
