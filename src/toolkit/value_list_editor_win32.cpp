#include <utility>
#include <vector>

#include "toolkit/dpi.h"
#include "toolkit/font.h"
#include "toolkit/value_list.h"

namespace {

constexpr std::int32_t editorHeight = 21;    // at 96 DPI
constexpr std::int32_t buttonTextSize = 12;  // at 96 DPI
constexpr std::int32_t spaceInButton = 20;   // pixels
constexpr std::int32_t droppedHeight = 200;  // pixels, of a combo box with its list
constexpr int spareCharacters = 10;

constexpr DWORD childStyle = WS_CHILD | WS_VISIBLE;
constexpr DWORD editStyle = childStyle | WS_TABSTOP | ES_AUTOHSCROLL;
constexpr DWORD multiLineStyle = ES_MULTILINE | ES_AUTOVSCROLL | ES_WANTRETURN | WS_VSCROLL;
constexpr DWORD comboStyle = childStyle | WS_TABSTOP | WS_VSCROLL | CBS_AUTOHSCROLL | CBS_DROPDOWN;
constexpr DWORD choiceStyle = childStyle | WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST;
static_assert(editStyle == 0x50010080 && multiLineStyle == 0x201044);
static_assert(comboStyle == 0x50210042 && choiceStyle == 0x50210003);

std::int32_t ButtonWidth(const clString& caption) {
    const clScreenContext screen;
    clFont font;
    font.Create(nullptr, nullptr, ScaleForDpi(buttonTextSize));
    return font.TextWidth(screen.Get(), caption) + spaceInButton;
}

void Move(HWND window, const clArea& place) {
    if (window == nullptr) return;
    SetWindowPos(window, nullptr, place.left, place.top, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace

void XValueList::clValueControl::ShowEditor(std::int32_t atRow, std::int32_t valueX) {
    CloseEditor();
    const clValueRow* const shown = owner.Row(atRow);
    if (shown == nullptr || shown->readOnly || owner.ListBox() == nullptr) return;
    const bool hasButton = !shown->buttonCaption.IsEmpty();
    const RECT rect = owner.RowRect(atRow);
    RECT client = {};
    GetClientRect(owner.ListBox(), &client);
    ValueEditorSpace space;
    space.row = {rect.left, rect.top, rect.right, rect.bottom};
    space.clientHeight = client.bottom;
    space.valueX = shown->valueX != 0 ? shown->valueX : valueX;
    space.valueWidth = shown->valueWidth;
    space.lineHeight = ScaleForDpi(editorHeight);
    space.lines = shown->kind == ValueKind::Edit ? shown->lines : 0;
    space.buttonWidth = hasButton ? ButtonWidth(shown->buttonCaption) : 0;
    places = PlaceValueEditor(space);
    if (HasEditor(shown->kind)) MakeEditor(*shown, places.editor);
    if (editorWindow != nullptr) row = atRow;
    if (hasButton) {
        buttonWindow =
            MakeChild(L"BUTTON", shown->buttonCaption.Chars(), childStyle, 0, places.button);
    }
}

HWND XValueList::clValueControl::MakeChild(const wchar_t* className, const wchar_t* text,
                                           DWORD style, DWORD exStyle, const clArea& place) const {
    const HWND made = CreateWindowExW(exStyle, className, text, style, place.left, place.top,
                                      place.right - place.left, place.bottom - place.top,
                                      owner.ListBox(), nullptr, GetModuleHandleW(nullptr), nullptr);
    if (made != nullptr) {
        const LRESULT font = SendMessageW(owner.parent, WM_GETFONT, 0, 0);
        SendMessageW(made, WM_SETFONT, static_cast<WPARAM>(font), FALSE);
    }
    return made;
}

void XValueList::clValueControl::MakeEditor(const clValueRow& shown, const clArea& place) {
    if (shown.kind == ValueKind::Edit)
        MakeEdit(shown, place);
    else
        MakeCombo(shown, place);
    if (editorWindow != nullptr) SetFocus(editorWindow);
}

void XValueList::clValueControl::MakeEdit(const clValueRow& shown, const clArea& place) {
    const DWORD style = shown.lines > 1 ? editStyle | multiLineStyle : editStyle;
    editorWindow = MakeChild(L"EDIT", nullptr, style, WS_EX_CLIENTEDGE, place);
    if (editorWindow == nullptr) return;
    SetWindowTextW(editorWindow, shown.value.Chars());
    SendMessageW(editorWindow, EM_SETSEL, 0, -1);
    Attach(editorWindow);
}

void XValueList::clValueControl::MakeCombo(const clValueRow& shown, const clArea& place) {
    const bool isChoice = shown.kind == ValueKind::Choice;
    clArea dropped = place;
    dropped.bottom = dropped.top + droppedHeight;
    editorWindow = MakeChild(L"COMBOBOX", nullptr, isChoice ? choiceStyle : comboStyle, 0, dropped);
    if (editorWindow == nullptr) return;
    for (std::int64_t i = 0; i < shown.choices.Count(); ++i) {
        SendMessageW(editorWindow, CB_ADDSTRING, 0,
                     reinterpret_cast<LPARAM>(shown.choices.At(i)->Chars()));
    }
    if (isChoice) {
        const std::int32_t choice = ChoiceOf(shown.value, shown.choices);
        SendMessageW(editorWindow, CB_SETCURSEL, static_cast<WPARAM>(choice), 0);
        Attach(editorWindow);
    } else {
        SetWindowTextW(editorWindow, shown.value.Chars());
        Attach(GetWindow(editorWindow, GW_CHILD));
    }
    SendMessageW(editorWindow, CB_SETEDITSEL, 0, MAKELPARAM(0, -1));
}

void XValueList::clValueControl::PutBack() const {
    Move(editorWindow, places.editor);
    Move(buttonWindow, places.button);
}

bool XValueList::clValueControl::HasFocusIn(HWND window) {
    const HWND focus = GetFocus();
    return window != nullptr && (focus == window || IsChild(window, focus));
}

clString XValueList::clValueControl::Text() const {
    std::vector<wchar_t> text(
        static_cast<std::size_t>(GetWindowTextLengthW(editorWindow) + spareCharacters));
    GetWindowTextW(editorWindow, text.data(), static_cast<int>(text.size()));
    return text.data();
}

// What is chosen in a list of choices; the row's value if nothing is.
clString XValueList::clValueControl::ChosenText() const {
    const LRESULT choice = SendMessageW(editorWindow, CB_GETCURSEL, 0, 0);
    if (choice == CB_ERR) return owner.Row(row)->value;
    const LRESULT length =
        SendMessageW(editorWindow, CB_GETLBTEXTLEN, static_cast<WPARAM>(choice), 0);
    std::vector<wchar_t> text(static_cast<std::size_t>(length + spareCharacters));
    SendMessageW(editorWindow, CB_GETLBTEXT, static_cast<WPARAM>(choice),
                 reinterpret_cast<LPARAM>(text.data()));
    return text.data();
}

void XValueList::clValueControl::Commit() {
    clValueRow* const edited = owner.Row(row);
    if (editorWindow == nullptr || edited == nullptr) return;
    if (nameEditing) {
        edited->name.Assign(Text());
        owner.OnValueChanged(row);
        return;
    }
    edited->value.Assign(edited->kind == ValueKind::Choice ? ChosenText() : Text());
}

void XValueList::clValueControl::CloseEditor(bool refresh, bool keepButton) {
    Commit();
    // From a child the list box takes the focus without opening the editor anew.
    if (HasFocusIn(editorWindow) || (!keepButton && HasFocusIn(buttonWindow)))
        SetFocus(owner.ListBox());
    // Forgotten before they go: their end sends messages.
    const HWND editor = std::exchange(editorWindow, nullptr);
    const HWND button = keepButton ? nullptr : std::exchange(buttonWindow, nullptr);
    row = -1;
    Detach();
    if (editor != nullptr) DestroyWindow(editor);
    if (button != nullptr) DestroyWindow(button);
    if (refresh) owner.Invalidate();
}
