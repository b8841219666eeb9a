#include <windows.h>
// These need windows.h before them.
#include <commctrl.h>
#include <shellapi.h>

#include <utility>

#include "toolkit/draw.h"
#include "toolkit/value_list.h"

namespace {

// Whatever list serves a message, what comes of it is not to be served as the
// user's doing.
bool isRouting = false;

class RoutingScope {
public:
    RoutingScope() : before(std::exchange(isRouting, true)) {}
    RoutingScope(const RoutingScope&) = delete;
    RoutingScope& operator=(const RoutingScope&) = delete;
    ~RoutingScope() { isRouting = before; }

private:
    bool before;
};

}  // namespace

LRESULT XValueList::Route(HWND, UINT message, WPARAM wParam, LPARAM lParam,
                          std::uint32_t* handled) {
    *handled = 0;
    if (listBox == nullptr && message != WM_MEASUREITEM) return 0;
    if (isRouting && message != WM_DRAWITEM) return 0;
    const RoutingScope scope;
    const Answer answer = RouteMessage(message, wParam, lParam);
    // Last: what was called may have sent messages to the form, which leave their
    // own value here.
    *handled = answer.handled;
    return answer.result;
}

XValueList::Answer XValueList::RouteMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    Answer answer;
    if (message == WM_DRAWITEM) {
        const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
        if (item.hwndItem == listBox) answer = DrawItem(item);
    } else if (message == WM_MEASUREITEM) {
        auto& item = *reinterpret_cast<MEASUREITEMSTRUCT*>(lParam);
        if (item.CtlType == ODT_LISTBOX && item.CtlID == static_cast<UINT>(controlId)) {
            item.itemHeight = static_cast<UINT>(rowHeight);
            answer = {1, 1};
        }
    } else if (message == WM_COMMAND) {
        if (reinterpret_cast<HWND>(lParam) == listBox) RouteCommand(HIWORD(wParam), answer.result);
    } else if (message == WM_PARENTNOTIFY) {
        if (LOWORD(wParam) == WM_LBUTTONDOWN) RoutePress();
    } else if (dragMessage != 0 && message == dragMessage) {
        const auto& drag = *reinterpret_cast<const DRAGLISTINFO*>(lParam);
        if (drag.hWnd == listBox) answer = RouteDrag(drag.uNotification, drag.ptCursor);
    }
    return answer;
}

void XValueList::RouteCommand(WORD code, LRESULT& result) {
    if (code == LBN_SELCHANGE) {
        SyncEditor();
        OnSelChange();
        return;
    }
    const std::int32_t row = CurrentRow();
    if (code != LBN_DBLCLK || row == -1) return;
    if (Row(row)->kind == ValueKind::Link) {
        ShellExecuteW(nullptr, nullptr, Row(row)->value.Chars(), nullptr, nullptr, SW_SHOWNORMAL);
        MessageBeep(0);
    }
    result = 1;
    OnRowDoubleClick(row);
}

// The list box has not seen the press yet: the selection is still the old one.
void XValueList::RoutePress() {
    const std::int32_t row = RowUnderPointer();
    const clValueRow* const pressed = Row(row);
    if (pressed == nullptr || pressed->readOnly || !IsSwitch(pressed->kind)) return;
    POINT pointer = {};
    GetCursorPos(&pointer);
    ScreenToClient(listBox, &pointer);
    const RECT rect = RowRect(row);
    const bool isToggle = pressed->kind == ValueKind::Toggle;
    const HICON icon = IconOf(isToggle ? ToggleIcon::On : ToggleIcon::RadioOn);
    const ValueSwitchZone zone = {rect.right - rect.left, pressed->toggleX, IconWidth(icon),
                                  row == CurrentRow() && pressed->buttonCaption.IsEmpty()};
    if (!HitsSwitch(pointer.x, zone)) return;
    SetOn(!isToggle || !IsOn(row), row);
    TellChange(row);
}

void XValueList::TellChange(std::int32_t row) {
    const clValueRow* const changed = Row(row);
    if (changed != nullptr && changed->changeCallback != nullptr) changed->changeCallback(*this);
}
