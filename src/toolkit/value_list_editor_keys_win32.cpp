#include "toolkit/value_list.h"

static_assert(VK_SPACE == 0x20 && VK_UP == 0x26 && VK_DOWN == 0x28);

namespace {

struct Selection {
    DWORD start = 0;
    DWORD end = 0;
};

Selection SelectionOf(HWND edit) {
    Selection selection;
    SendMessageW(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&selection.start),
                 reinterpret_cast<LPARAM>(&selection.end));
    return selection;
}

}  // namespace

LRESULT XValueList::clValueControl::WndHook(HWND, UINT message, WPARAM wParam, LPARAM lParam,
                                            std::uint32_t* handled) {
    const Answer answer = HookMessage(message, wParam, lParam);
    *handled = answer.handled;
    return answer.result;
}

XValueList::Answer XValueList::clValueControl::HookMessage(UINT message, WPARAM wParam,
                                                           LPARAM lParam) {
    const auto virtualKey = static_cast<std::uint32_t>(wParam);
    switch (message) {
        case WM_GETDLGCODE:
            return {DLGC_WANTALLKEYS, 1};
        case WM_KEYDOWN:
            return {0, RunKeyDown(virtualKey, lParam) ? 1U : 0U};
        case WM_KEYUP:
            return {0, RunKeyUp(virtualKey, lParam) ? 1U : 0U};
        case WM_CHAR:
            return {0, wParam == VK_TAB ? 1U : 0U};
        case WM_MOUSEWHEEL:
            PostMessageW(owner.ListBox(), message, wParam, lParam);
            return {0, 1};
        case WM_KILLFOCUS:
            DropCompletion();
            return {};
        default:
            return {};
    }
}

ValueCaret XValueList::clValueControl::Caret() const {
    const Selection selection = SelectionOf(Control());
    const LRESULT line = SendMessageW(Control(), EM_LINEFROMCHAR, static_cast<WPARAM>(-1), 0);
    const LRESULT lineCount = SendMessageW(Control(), EM_GETLINECOUNT, 0, 0);
    return {selection.start != selection.end, static_cast<std::int32_t>(line),
            static_cast<std::int32_t>(lineCount)};
}

// True if the key is not for the editor: its window may be gone by then.
bool XValueList::clValueControl::RunKeyDown(std::uint32_t virtualKey, LPARAM keyData) {
    if (virtualKey == VK_TAB) {
        PostMessageW(owner.ListBox(), WM_KEYDOWN, virtualKey, keyData);
        return true;
    }
    const clValueRow* const edited = owner.Row(row);
    if (edited == nullptr || (virtualKey != VK_UP && virtualKey != VK_DOWN)) return false;
    const std::int32_t step = ValueArrowStep(virtualKey, edited->lines, Caret());
    if (step == 0) return false;
    owner.SelectRowAt(row + step);
    return true;
}

bool XValueList::clValueControl::RunKeyUp(std::uint32_t virtualKey, LPARAM keyData) {
    if (virtualKey == VK_TAB) {
        PostMessageW(owner.ListBox(), WM_KEYUP, virtualKey, keyData);
        return false;
    }
    const clValueRow* const edited = owner.Row(row);
    if (edited == nullptr) return false;
    if (virtualKey == VK_RETURN && edited->lines == 0) {
        // The row stays selected, and so its button stays.
        CloseEditor(true, true);
        SetFocus(owner.ListBox());
        return true;
    }
    if (edited->kind == ValueKind::Combo && IsCompletionKey(virtualKey)) Complete();
    return false;
}

void XValueList::clValueControl::Complete() {
    const std::optional<ValueCompletion> completion =
        CompleteValue(Text(), owner.Row(row)->choices);
    if (!completion) return;
    SetWindowTextW(editorWindow, completion->text.Chars());
    SendMessageW(editorWindow, CB_SETEDITSEL, 0, MAKELPARAM(completion->typedLength, -1));
}

// What was appended and not accepted is still selected.
void XValueList::clValueControl::DropCompletion() const {
    const clValueRow* const edited = owner.Row(row);
    if (edited == nullptr || edited->kind != ValueKind::Combo) return;
    const Selection selection = SelectionOf(Control());
    if (selection.start == selection.end || selection.start == 0) return;
    SendMessageW(Control(), EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(L""));
}
