#include "toolkit/button.h"

namespace {

bool keyboardCue = false;

constexpr DWORD childStyle = WS_CHILD | WS_VISIBLE | SS_OWNERDRAW;
static_assert(childStyle == 0x5000000D);

bool AsksAboutReturn(const MSG* message) {
    return message != nullptr && (message->message == WM_KEYDOWN || message->message == WM_KEYUP) &&
           message->wParam == VK_RETURN;
}

// A key that opens a menu has its character in the queue already, which would
// close the menu again as if it were typed there.
void DropCharacter(HWND window) {
    MSG message;
    if (PeekMessageW(&message, window, WM_CHAR, WM_CHAR, PM_REMOVE) == FALSE) return;
    // That one comes through every filter, and is for the form's own loop.
    if (message.message == WM_QUIT) PostQuitMessage(static_cast<int>(message.wParam));
}

}  // namespace

XButton::XButton() = default;

XButton::~XButton() {
    Teardown();
}

void XButton::OnClick(std::uint32_t) {}

void XButton::OnRepeat(std::uint32_t) {}

void XButton::OnPressed(std::uint32_t) {}

void XButton::OnCancelled(std::uint32_t) {}

bool XButton::IsKeyboardCueOn() {
    return keyboardCue;
}

void XButton::Create(HWND parentWindow, const XButtonParams& params, XWindow* buttonOwner) {
    parent = parentWindow;
    owner = buttonOwner;
    style = params.style != 0 ? params.style : button_style::byDefault;
    menuId = params.menuId;
    menu = params.menu;
    frameWidth = 0;
    frameHeight = 0;
    if (!textMode) {
        const ButtonStrip strip = MeasureStrip(style, image.Width(), image.Height());
        frameWidth = strip.frameWidth;
        frameHeight = strip.frameHeight;
    }
    MakeBitmaps(params.x, params.y, params.background);
    const DWORD tabStop = (style & button_style::focusFrame) != 0 ? WS_TABSTOP : 0;
    childWindow = CreateWindowExW(0, L"STATIC", params.caption, childStyle | tabStop, params.x,
                                  params.y, frameWidth, frameHeight, parent, nullptr,
                                  GetModuleHandleW(nullptr), nullptr);
    if (childWindow == nullptr) return;
    Attach(childWindow);
    if (params.tooltip == nullptr) return;
    XToolTipParams tool;
    tool.anchorWindow = childWindow;
    tool.text = params.tooltip;
    tooltip.AddTool(tool);
}

void XButton::SetTextSize(std::int32_t width, std::int32_t height, const XMemBitmap* behind) {
    if (!textMode || childWindow == nullptr) return;
    frameWidth = width;
    frameHeight = height;
    POINT corner{0, 0};
    MapWindowPoints(childWindow, parent, &corner, 1);
    MakeBitmaps(corner.x, corner.y, behind);
    SetWindowPos(childWindow, nullptr, 0, 0, width, height,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    Paint(nullptr, state, true);
}

void XButton::SetLayout(ButtonLayout which, const clText& layout) {
    const clMutexLock lock(textMutex);
    clText& own = layouts[static_cast<std::size_t>(which)];
    own.CopyFrom(layout);
    const bool paintsHere = GetWindowThreadProcessId(childWindow, nullptr) == GetCurrentThreadId();
    if (!paintsHere) own.KeepNoContexts();
}

void XButton::SetPartner(XButton* other) {
    UnlinkPartner();
    if (other == nullptr) return;
    other->UnlinkPartner();
    partner = other;
    other->partner = this;
}

void XButton::UnlinkPartner() {
    if (partner == nullptr) return;
    partner->partner = nullptr;
    partner = nullptr;
}

void XButton::Teardown() {
    tooltip.Stop();
    Detach();
    // First forgotten and then destroyed: its last messages find no button.
    HWND const old = childWindow;
    childWindow = nullptr;
    if (old != nullptr) DestroyWindow(old);
    image.Release();
    work.Release();
    background.Release();
    {
        const clMutexLock lock(textMutex);
        for (clText& layout : layouts)
            layout.Clear();
    }
    UnlinkPartner();
    state = button_state::normal;
    leftHeld = false;
    rightHeld = false;
    keyHeld = false;
    clickPosition = {};
}

bool XButton::ServeMenu(HWND menuOwner) {
    switch (AskForMenu(HasMenu(), IsWindowEnabled(childWindow) == FALSE)) {
        case ButtonMenuAnswer::Proceed:
            return false;
        case ButtonMenuAnswer::Swallow:
            return true;
        case ButtonMenuAnswer::Show:
            break;
    }
    HMENU loaded = nullptr;
    if (menu == nullptr) {
        const HINSTANCE module = menuModule != nullptr ? menuModule : GetModuleHandleW(nullptr);
        loaded = LoadMenuW(module, MAKEINTRESOURCEW(menuId));
        if (loaded == nullptr) return false;
    }
    keyHeld = true;
    POINT corner{0, frameHeight};
    ClientToScreen(childWindow, &corner);
    TrackPopupMenu(GetSubMenu(menu != nullptr ? menu : loaded, 0), TPM_RIGHTBUTTON, corner.x,
                   corner.y, 0, menuOwner, nullptr);
    if (loaded != nullptr) DestroyMenu(loaded);
    keyHeld = false;
    return true;
}

LRESULT XButton::WndHook(HWND, UINT message, WPARAM wParam, LPARAM lParam, std::uint32_t* handled) {
    // A button sees many messages and answers five.
    if (message < WM_SETFOCUS || message > WM_KEYUP) return 0;
    switch (message) {
        case WM_SETFOCUS:
        case WM_KILLFOCUS:
            Paint(nullptr, state, true);
            return 0;
        case WM_GETDLGCODE:
            // Return presses this button and not the dialog's default one.
            if (!AsksAboutReturn(reinterpret_cast<const MSG*>(lParam))) return 0;
            *handled = 1;
            return DLGC_WANTALLKEYS;
        case WM_KEYDOWN:
        case WM_KEYUP:
            return OnKey(message, wParam, handled);
        default:
            return 0;
    }
}

LRESULT XButton::OnKey(UINT message, WPARAM wParam, std::uint32_t* handled) {
    const bool isDisabled = IsWindowEnabled(childWindow) == FALSE;
    const ButtonKeyAnswer answer =
        AnswerKey({static_cast<std::uint32_t>(wParam), message == WM_KEYDOWN, isDisabled, keyHeld});
    keyHeld = answer.isHeld;
    if (answer.presses) OnKeyPressed(handled);
    if (answer.clicks) OnClick(button_which::left);
    if (answer.turnsCueOn) keyboardCue = true;
    Paint(nullptr, state, true);
    return 0;
}

void XButton::OnKeyPressed(std::uint32_t* handled) {
    Paint(nullptr, state, true);
    if (HasMenu()) DropCharacter(childWindow);
    if (ServeMenu(parent)) {
        keyHeld = false;
        *handled = 1;
    } else {
        OnPressed(button_which::left);
    }
}
