// The picture button: an owner-drawn STATIC that shows frames of a strip.
#pragma once

#include <windows.h>

#include <array>
#include <cstdint>

#include "foundation/mutex.h"
#include "toolkit/button_state.h"
#include "toolkit/mem_bitmap.h"
#include "toolkit/sub_class_ctrl.h"
#include "toolkit/text.h"
#include "toolkit/tool_tip.h"

class XWindow;

// How a button was pressed.
namespace button_which {

inline constexpr std::uint32_t left = 0;  // or the keyboard
inline constexpr std::uint32_t right = 1;

}  // namespace button_which

// The looks of a button in text mode.
enum class ButtonLayout { Normal, Hot, Pressed, PressedHot, Disabled, FocusOverlay };

struct XButtonParams {
    std::int32_t x = 0;  // client coordinates of the parent, in pixels
    std::int32_t y = 0;
    const wchar_t* caption = nullptr;  // the window's text, which is not drawn; may be null
    const wchar_t* tooltip = nullptr;  // null for none
    std::uint32_t style = 0;           // bits of button_style; 0 takes button_style::byDefault
    // What lies behind the parent's client area, copied at once; null takes the
    // system's button face.
    const XMemBitmap* background = nullptr;
    std::uint16_t menuId = 0;  // of a menu resource; 0 for none
    HMENU menu = nullptr;      // ready-made and not given away; goes before `menuId`
};

// A static control without SS_NOTIFY is transparent to the mouse, so the pointer's
// messages come to the form, whose XButtonBar drives the button; keys come to the
// button itself. All on the thread of the form.
//
// The state is what the last `Paint` stored; a button begins in state 0, without
// a window. The keyboard cue belongs to the process: focus looks are shown once
// Tab has reached any button.
class XButton : public XSubClassCtrl {
public:
    XButton();
    // `Teardown`; a bar that has the button must have let go of it before.
    ~XButton() override;

    LRESULT WndHook(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                    std::uint32_t* handled) override;

    // What the button does; `which` is a value of button_which. None does anything
    // here. An override may tear the button down, but not delete it.

    // Released over the button.
    virtual void OnClick(std::uint32_t which);
    // At each tick of the bar's timer while the button shows as pressed.
    virtual void OnRepeat(std::uint32_t which);
    // Pressed; a key that is held down repeats it.
    virtual void OnPressed(std::uint32_t which);
    // Released elsewhere.
    virtual void OnCancelled(std::uint32_t which);

    // Makes the child window, once until `Teardown`. The strip must be in `Image`
    // before. `buttonOwner` may be null; it is what `Owner` gives.
    // A button without a picture or with too small a one is empty; nothing is reported.
    void Create(HWND parentWindow, const XButtonParams& params, XWindow* buttonOwner);

    // Stops the tooltip (which dispatches messages), destroys the window and frees
    // the pictures and layouts. Harmless without a window.
    void Teardown();

    // Shows the look of `newState` and stores it. All looks are made here. Does
    // nothing without a window, nor for the same state without `force` and `dc`.
    // `dc` null: the button's own context.
    void Paint(HDC dc, std::uint32_t newState, bool force);

    // Runs the button's pop-up menu below it, if it has one; its commands come to
    // `menuOwner`. True if that was all there is to this press.
    bool ServeMenu(HWND menuOwner);

    // The strip of frames, loaded before `Create`.
    XMemBitmap& Image() { return image; }
    // Where the menu resource lies; null means the program.
    void SetMenuModule(HINSTANCE module) { menuModule = module; }
    // The two buttons light up together from now on; null takes them apart.
    void SetPartner(XButton* other);
    // Shows the button as latched in, from the next forced `Paint` on.
    void SetLatched(bool isLatched) { latched = isLatched ? 1 : 0; }

    // Text mode: the six layouts are the look and there is no strip. Set before
    // `Create`, which makes the child 0 by 0 since no picture gives a size.
    void SetTextMode(bool isOn) { textMode = isOn; }
    // The size of the child and of its looks in pixels, in text mode, after
    // `Create`. `behind` as XButtonParams::background.
    void SetTextSize(std::int32_t width, std::int32_t height, const XMemBitmap* behind);
    // Takes a copy of `layout`, which has to cover the whole button but for the
    // focus overlay. From any thread; takes the text mutex. Shown at the next `Paint`.
    void SetLayout(ButtonLayout which, const clText& layout);

    std::uint32_t State() const { return state; }
    bool IsLatched() const { return latched != 0; }
    bool IsLeftHeld() const { return leftHeld; }
    bool IsRightHeld() const { return rightHeld; }
    bool IsKeyHeld() const { return keyHeld; }
    // Screen position of the last click with the left button; both 0 for none.
    clPoint ClickPosition() const { return clickPosition; }
    XWindow* Owner() const { return owner; }
    // The child window, or null.
    HWND Window() const { return childWindow; }
    std::int32_t FrameWidth() const { return frameWidth; }
    std::int32_t FrameHeight() const { return frameHeight; }
    XToolTip& Tip() { return tooltip; }

    // Whether focus looks are shown. It is never switched off again.
    static bool IsKeyboardCueOn();

private:
    // Drives the held flags and the click position.
    friend class XButtonBar;

    void MakeBitmaps(std::int32_t x, std::int32_t y, const XMemBitmap* behind);
    void UnlinkPartner();
    bool HasMenu() const { return menuId != 0 || menu != nullptr; }
    ButtonCondition Condition() const;
    void Compose(const ButtonLook& look);
    void LayFrame(ButtonFrame frame);
    void ComposeText(const ButtonLook& look);
    void DrawLayout(ButtonLayout which);
    LRESULT OnKey(UINT message, WPARAM wParam, std::uint32_t* handled);
    void OnKeyPressed(std::uint32_t* handled);

    std::uint32_t state = button_state::normal;
    bool leftHeld = false;
    bool rightHeld = false;
    bool keyHeld = false;  // also during the pop-up menu
    XButton* partner = nullptr;
    clPoint clickPosition;
    XWindow* owner = nullptr;
    std::uint32_t style = 0;
    std::uint16_t menuId = 0;
    HMENU menu = nullptr;
    HWND childWindow = nullptr;
    HWND parent = nullptr;
    HINSTANCE menuModule = nullptr;
    XMemBitmap image;
    XMemBitmap work;        // a look is composed here
    XMemBitmap background;  // what lies behind the button
    std::int32_t frameWidth = 0;
    std::int32_t frameHeight = 0;
    XToolTip tooltip;
    bool textMode = false;
    clMutex textMutex;  // guards the layouts
    std::array<clText, 6> layouts;
    std::uint32_t latched = 0;
};
