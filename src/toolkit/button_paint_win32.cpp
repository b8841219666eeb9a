#include "toolkit/button.h"

namespace {

// The mask's white parts leave what is there; black parts make room for the frame.
constexpr DWORD cutOut = SRCAND;
static_assert(cutOut == 0x8800C6);
constexpr DWORD fillIn = SRCPAINT;
static_assert(fillIn == 0xEE0086);

clPoint PointerPosition() {
    POINT pointer{};
    GetCursorPos(&pointer);
    return {pointer.x, pointer.y};
}

ButtonLayout LayoutOf(ButtonFrame frame) {
    switch (frame) {
        case ButtonFrame::Pressed:
            return ButtonLayout::Pressed;
        case ButtonFrame::Hot:
            return ButtonLayout::Hot;
        case ButtonFrame::PressedHot:
            return ButtonLayout::PressedHot;
        case ButtonFrame::Disabled:
            return ButtonLayout::Disabled;
        case ButtonFrame::Focus:
            return ButtonLayout::FocusOverlay;
        case ButtonFrame::Normal:
            break;
    }
    return ButtonLayout::Normal;
}

}  // namespace

void XButton::MakeBitmaps(std::int32_t x, std::int32_t y, const XMemBitmap* behind) {
    HDC const dc = GetDC(parent);
    work.CreateEmpty(dc, frameWidth, frameHeight);
    background.CreateEmpty(dc, frameWidth, frameHeight);
    ReleaseDC(parent, dc);
    if (behind != nullptr) {
        behind->Blit(background.Context(), 0, 0, frameWidth, frameHeight, x, y);
    } else {
        background.FillColour(GetSysColor(COLOR_BTNFACE));
    }
}

ButtonCondition XButton::Condition() const {
    return {IsWindowEnabled(childWindow) == FALSE, GetFocus() == childWindow, IsKeyboardCueOn()};
}

void XButton::Paint(HDC dc, std::uint32_t newState, bool force) {
    if (childWindow == nullptr) return;
    // The bar asks ten times a second.
    if (!force && newState == state && dc == nullptr) return;
    state = newState;
    const std::uint32_t shown = ShownState(state, latched != 0, clickPosition,
                                           latched != 0 ? PointerPosition() : clPoint{});
    if (textMode) {
        ComposeText(TextLook(style, shown, Condition()));
    } else {
        Compose(PictureLook(style, shown, Condition()));
    }
    HDC const own = dc == nullptr ? GetDC(childWindow) : nullptr;
    work.Blit(dc != nullptr ? dc : own, 0, 0);
    if (own != nullptr) ReleaseDC(childWindow, own);
}

void XButton::Compose(const ButtonLook& look) {
    if ((style & button_style::mask) != 0) background.Blit(work.Context(), 0, 0);
    LayFrame(look.frame);
    if (look.overlaysDisabled) LayFrame(ButtonFrame::Disabled);
    if (look.overlaysFocus) LayFrame(ButtonFrame::Focus);
}

void XButton::LayFrame(ButtonFrame frame) {
    const std::int32_t left = FrameIndex(style, frame) * frameWidth;
    HDC const dc = work.Context();
    if ((style & button_style::mask) == 0) {
        image.Blit(dc, 0, 0, frameWidth, frameHeight, left, 0);
        return;
    }
    image.Blit(dc, 0, 0, frameWidth, frameHeight, left, frameHeight, cutOut);
    image.Blit(dc, 0, 0, frameWidth, frameHeight, left, 0, fillIn);
}

void XButton::ComposeText(const ButtonLook& look) {
    const clMutexLock lock(textMutex);
    DrawLayout(LayoutOf(look.frame));
    if (look.overlaysFocus) DrawLayout(ButtonLayout::FocusOverlay);
}

void XButton::DrawLayout(ButtonLayout which) {
    clText& layout = layouts[static_cast<std::size_t>(which)];
    // At the button's size, whatever the layout would measure by itself.
    layout.width = frameWidth;
    layout.height = frameHeight;
    layout.dirty = false;
    layout.Paint(work.Context(), 0, 0);
}
