#include <windows.h>
// windowsx.h needs windows.h before it.
#include <windowsx.h>

#include "toolkit/value_list.h"

LRESULT XValueList::WndHook(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                            std::uint32_t* handled) {
    const Answer answer = HookMessage(window, message, wParam, lParam);
    *handled = answer.handled;
    return answer.result;
}

XValueList::Answer XValueList::HookMessage(HWND window, UINT message, WPARAM wParam,
                                           LPARAM lParam) {
    const auto virtualKey = static_cast<std::uint32_t>(wParam);
    switch (message) {
        case WM_KEYDOWN:
            return {0, RunKeyDown(virtualKey, lParam) ? 1U : 0U};
        case WM_KEYUP:
            return {0, RunKeyUp(virtualKey, lParam) ? 1U : 0U};
        case WM_CHAR:
            // As for the keys below: a character would select the first row.
            return {0, 1};
        case WM_SETFOCUS:
            return HookFocus(reinterpret_cast<HWND>(wParam));
        case WM_VSCROLL:
        case WM_MOUSEWHEEL:
        case LB_SETTOPINDEX:
            return HookScroll(message, wParam, lParam);
        case WM_RBUTTONDOWN:
            PostMessageW(window, WM_LBUTTONDOWN, wParam, lParam);
            return {};
        case WM_RBUTTONUP:
            HookRightUp(lParam);
            return {};
        case WM_COMMAND:
            HookCommand(HIWORD(wParam), reinterpret_cast<HWND>(lParam));
            return {};
        case WM_DESTROY:
            // Its dialog goes, and takes it along.
            valueControl.CloseEditor();
            ForgetListBox();
            return {};
        default:
            return {};
    }
}

bool XValueList::RunKeyDown(std::uint32_t virtualKey, LPARAM keyData) {
    switch (virtualKey) {
        case VK_TAB:
            // The dialog's alone: left to the list box it would select a row.
            PostMessageW(parent, WM_KEYDOWN, virtualKey, keyData);
            return true;
        case VK_SPACE:
            RunSpace();
            return true;
        case VK_DOWN:
            SelectRowAt(CurrentRow() + 1);
            return true;
        case VK_UP:
            SelectRowAt(CurrentRow() - 1);
            return true;
        default:
            // Some are served when they are let go. The list box itself would ask the
            // dialog which row the key selects, and for want of an answer take the first.
            return true;
    }
}

bool XValueList::RunKeyUp(std::uint32_t virtualKey, LPARAM keyData) {
    switch (virtualKey) {
        case VK_TAB:
            PostMessageW(parent, WM_KEYUP, virtualKey, keyData);
            return false;
        case VK_END:
            SelectRowAt(RowCount() - 1);
            return true;
        case VK_HOME:
            SelectRowAt(0);
            return true;
        case VK_NEXT:
            SelectPage(1);
            return true;
        case VK_PRIOR:
            SelectPage(-1);
            return true;
        default:
            return false;
    }
}

void XValueList::SelectPage(std::int32_t direction) {
    RECT client = {};
    GetClientRect(listBox, &client);
    SelectRowAt(ValuePageTarget(CurrentRow(), direction, client.bottom, rowHeight, RowCount()));
}

void XValueList::RunSpace() {
    const std::int32_t row = CurrentRow();
    const clValueRow* const current = Row(row);
    if (current == nullptr || current->readOnly || !IsSwitch(current->kind)) return;
    SetOn(current->kind == ValueKind::Radio || !IsOn(row), row);
    TellChange(row);
}

XValueList::Answer XValueList::HookFocus(HWND losing) {
    if (losing != nullptr && IsChild(listBox, losing)) return {};
    SyncEditor();
    // With the focus on the editor by now, the list box would show it as its own.
    return {0, GetFocus() != listBox ? 1U : 0U};
}

// Some platforms move the child windows of a list box along with its rows; the
// editor stays where it was.
XValueList::Answer XValueList::HookScroll(UINT message, WPARAM wParam, LPARAM lParam) {
    if (scrolling) return {};
    scrolling = true;
    const LRESULT result = SendMessageW(listBox, message, wParam, lParam);
    scrolling = false;
    valueControl.PutBack();
    Invalidate();
    return {result, 1};
}

void XValueList::HookRightUp(LPARAM lParam) {
    // The list box still waits for the end of the left press that it was given.
    if (GetCapture() == listBox) SendMessageW(listBox, WM_LBUTTONUP, 0, lParam);
    POINT point = {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    ClientToScreen(listBox, &point);
    OnRowContextMenu(point.x, point.y);
}

void XValueList::HookCommand(WORD code, HWND from) {
    if (from == nullptr) return;
    const std::int32_t row = CurrentRow();
    if (from == valueControl.ButtonWindow()) {
        valueControl.Commit();
        const clValueRow* const pressed = Row(row);
        if (pressed != nullptr && pressed->buttonCallback != nullptr)
            pressed->buttonCallback(*this, row);
        return;
    }
    if (from != valueControl.EditorWindow()) return;
    if (code != EN_CHANGE && code != CBN_SELCHANGE) return;
    // -1 while the editor is being made: its first text is no change.
    const std::int32_t edited = valueControl.Row();
    valueControl.Commit();
    TellChange(edited);
}
