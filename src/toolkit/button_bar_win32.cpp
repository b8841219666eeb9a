#include "toolkit/button_bar.h"

#include <algorithm>

namespace {

// One for the process: while a press of any bar runs, no other message moves a
// button.
bool isRouting = false;

POINT PointerPosition() {
    POINT pointer{};
    GetCursorPos(&pointer);
    return pointer;
}

}  // namespace

std::uint64_t NewBarTimerId() {
    constexpr std::uint64_t before = 7787;
    static std::uint64_t forms = 0;
    return before + ++forms;
}

void XButtonBar::SetForm(HWND form, std::uint64_t id) {
    parent = form;
    timerId = id;
}

void XButtonBar::AddButton(XButton* button) {
    const clMutexLock lock(mutex);
    buttons.push_back(button);
}

void XButtonBar::DestroyButtons() {
    if (parent != nullptr && timerId != 0) KillTimer(parent, timerId);
    timerId = 0;
    const clMutexLock lock(mutex);
    // By index, here and below: messages that a teardown dispatches, or what a
    // button does, may empty the list.
    for (std::size_t i = 0; i < buttons.size(); ++i) {
        buttons[i]->UnlinkPartner();
        buttons[i]->Teardown();
    }
    buttons.clear();
}

LRESULT XButtonBar::Route(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                          std::uint32_t* handled) {
    if (isRouting && message != WM_DRAWITEM) return 0;
    isRouting = true;
    const LRESULT result = Serve(window, message, wParam, lParam, handled);
    // Also behind a button painted inside another message: from there on that
    // message's further ones are routed.
    isRouting = false;
    return result;
}

LRESULT XButtonBar::Serve(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                          std::uint32_t* handled) {
    switch (message) {
        case WM_MOUSEMOVE:
            OnMouseMove();
            return 0;
        case WM_DRAWITEM:
            return OnDrawItem(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam), handled);
        case WM_TIMER:
            if (timerId != 0 && wParam == timerId) OnTimer(handled);
            return 0;
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
            OnButtonDown(window, button_which::left, handled);
            return 0;
        case WM_RBUTTONDOWN:
        case WM_RBUTTONDBLCLK:
            OnButtonDown(window, button_which::right, handled);
            return 0;
        case WM_LBUTTONUP:
        case WM_RBUTTONUP:
            OnButtonUp(message == WM_LBUTTONUP ? button_which::left : button_which::right);
            *handled = 0;  // whatever the messages left there that a click led to
            return 0;
        default:
            return 0;
    }
}

void XButtonBar::OnMouseMove() {
    const clMutexLock lock(mutex);
    for (XButton* button : buttons)
        button->clickPosition = {};
    UpdateHover();
}

LRESULT XButtonBar::OnDrawItem(const DRAWITEMSTRUCT& item, std::uint32_t* handled) {
    XButton* const button = ButtonOf(item.hwndItem);
    if (button == nullptr) return 0;
    button->Paint(item.hDC, button->state, true);
    *handled = 1;
    return 1;
}

void XButtonBar::OnTimer(std::uint32_t* handled) {
    const clMutexLock lock(mutex);
    for (std::size_t i = 0; i < buttons.size(); ++i) {
        XButton& button = *buttons[i];
        if (!button_state::IsPressed(button.state)) continue;
        button.OnRepeat(button.leftHeld || button.keyHeld ? button_which::left
                                                          : button_which::right);
    }
    if (++ticks % 2 == 0) UpdateHover();
    *handled = 1;
}

void XButtonBar::OnButtonDown(HWND window, std::uint32_t which, std::uint32_t* handled) {
    const clMutexLock lock(mutex);
    XButton* const button = ButtonUnderPointer();
    if (button == nullptr) return;
    bool& isHeld = which == button_which::left ? button->leftHeld : button->rightHeld;
    isHeld = true;
    UpdateHover();
    if (button->ServeMenu(parent)) {
        isHeld = false;
    } else {
        if ((button->style & button_style::focusFrame) != 0) SetFocus(button->childWindow);
        SetCapture(window);
        button->OnPressed(which);
    }
    UpdateHover();
    *handled = 1;
}

void XButtonBar::OnButtonUp(std::uint32_t which) {
    ReleaseCapture();
    const clMutexLock lock(mutex);
    const bool isLeft = which == button_which::left;
    for (std::size_t i = 0; i < buttons.size(); ++i) {
        XButton& button = *buttons[i];
        bool& isHeld = isLeft ? button.leftHeld : button.rightHeld;
        if (!isHeld) continue;
        isHeld = false;
        if (!button_state::IsPressed(button.state)) {
            button.OnCancelled(which);
            continue;
        }
        button.OnClick(which);
        if (!isLeft) continue;
        const POINT pointer = PointerPosition();
        button.clickPosition = {pointer.x, pointer.y};
    }
    UpdateHover();
}

XButton* XButtonBar::ButtonOf(HWND child) const {
    const auto found = std::ranges::find_if(
        buttons, [child](const XButton* button) { return button->childWindow == child; });
    return found != buttons.end() && child != nullptr ? *found : nullptr;
}

XButton* XButtonBar::ButtonUnderPointer() const {
    POINT pointer = PointerPosition();
    ScreenToClient(parent, &pointer);
    XButton* const button = ButtonOf(ChildWindowFromPointEx(parent, pointer, CWP_SKIPINVISIBLE));
    return button != nullptr && IsWindowVisible(button->childWindow) ? button : nullptr;
}

void XButtonBar::UpdateHover() {
    const clMutexLock lock(mutex);
    const XButton* const under = ButtonUnderPointer();
    for (XButton* button : buttons) {
        ButtonHover hover;
        hover.isUnderPointer = button == under;
        hover.isPartnerUnderPointer = under != nullptr && button->partner == under;
        hover.isDisabled = IsWindowEnabled(button->childWindow) == FALSE;
        hover.isParentDisabled = IsWindowEnabled(button->parent) == FALSE;
        hover.isLeftHeld = button->leftHeld;
        hover.isRightHeld = button->rightHeld;
        hover.isKeyHeld = button->keyHeld;
        button->Paint(nullptr, StateAfterHover(hover), false);
    }
}
