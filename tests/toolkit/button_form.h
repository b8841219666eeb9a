// A form with picture buttons, and a record of what each is told.
#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "tests/ui/host_form.h"
#include "tests/ui/pixels.h"
#include "toolkit/button.h"
#include "toolkit/button_bar.h"

// The strips of these tests: each frame is one colour on its left half. In a strip
// with a mask the right half lets the background through, and the focus and
// disabled frames cover their top two and bottom two rows alone.
namespace strip {

inline constexpr int frameWidth = 20;
inline constexpr int frameHeight = 16;

inline constexpr COLORREF normal = RGB(10, 20, 30);
inline constexpr COLORREF pressed = RGB(200, 20, 30);
inline constexpr COLORREF hot = RGB(10, 200, 30);
inline constexpr COLORREF focus = RGB(10, 20, 200);
inline constexpr COLORREF disabled = RGB(120, 120, 100);
inline constexpr COLORREF pressedHot = RGB(200, 200, 30);

// Of a frame, in client pixels of the button.
inline constexpr POINT onFrame = {5, 8};
inline constexpr POINT onBackground = {15, 8};
inline constexpr POINT onFocus = {5, 0};
inline constexpr POINT onDisabled = {5, 15};

}  // namespace strip

// Loads a strip of 8 bits a pixel with the frames that the style declares.
void LoadStrip(XMemBitmap& image, std::uint32_t style);

// What a button shows in its window.
COLORREF Shown(const XButton& button, POINT where = strip::onFrame);

class ProbeButton : public XButton {
public:
    using XButton::XButton;

    void OnClick(std::uint32_t which) override { Note("click", which); }
    void OnRepeat(std::uint32_t which) override { Note("repeat", which); }
    void OnPressed(std::uint32_t which) override { Note("pressed", which); }
    void OnCancelled(std::uint32_t which) override { Note("cancelled", which); }

    // "pressed 0", "click 0" and so on. Repeats are counted by themselves, since
    // how many there are depends on the time.
    std::vector<std::string> calls;
    std::vector<std::uint32_t> repeats;
    // Called from within each operation, after it was noted.
    std::function<void(const std::string&)> meanwhile;

private:
    void Note(const char* what, std::uint32_t which);
};

struct ButtonWish {
    std::uint32_t style = 0;
    const wchar_t* tooltip = nullptr;
    const XMemBitmap* background = nullptr;
    std::uint16_t menuId = 0;
    HMENU menu = nullptr;
};

// A dialog with an edit control, a default push button and, from (100, 60) on, a
// row of picture buttons 40 pixels apart.
class ButtonForm {
public:
    enum class Timer { Running, None };

    ButtonForm(const std::vector<ButtonWish>& wishes, Timer timer);
    ButtonForm(const ButtonForm&) = delete;
    ButtonForm& operator=(const ButtonForm&) = delete;
    ~ButtonForm();

    HWND Window() const { return form.Window(); }
    HWND Edit() const { return form.Child(editId); }
    ProbeButton& At(std::size_t index) { return *buttons[index]; }
    // Creates a button that was torn down, where it was; the bar is not told.
    void MakeAgain(std::size_t index);
    // Moves the pointer to a button's middle, or to where no button is.
    void PointAt(std::size_t index);
    void PointAway();
    // On the screen.
    POINT MiddleOf(std::size_t index);
    // Hands a message to the bar alone.
    LRESULT Route(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);

    XButtonBar bar;
    std::uint64_t timerId = 0;
    // What the bar last set.
    std::uint32_t lastHandled = 0;
    // Ids of the commands that the form was sent.
    std::vector<int> commands;

    static constexpr int editId = 1001;
    static constexpr POINT firstButton = {100, 60};
    static constexpr int buttonStep = 40;

private:
    void MakeButton(const ButtonWish& wish);

    HostForm form;
    std::vector<std::unique_ptr<ProbeButton>> buttons;
};
