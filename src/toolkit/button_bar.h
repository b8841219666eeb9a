// The companion of a form's picture buttons, which turns the form's messages into
// their hover, presses and clicks.
#pragma once

#include <windows.h>

#include <cstdint>
#include <vector>

#include "foundation/mutex.h"
#include "toolkit/button.h"

// Drives all buttons of one form. The form starts the timer itself and hands every
// message to `Route`. All on the thread of the form.
class XButtonBar {
public:
    XButtonBar() = default;
    XButtonBar(const XButtonBar&) = delete;
    XButtonBar& operator=(const XButtonBar&) = delete;

    // Whose buttons these are, and the timer of the form that drives them: `id` is
    // what NewBarTimerId gave. 0 for no timer. `DestroyButtons` kills it.
    void SetForm(HWND form, std::uint64_t id);

    // Not given away. The button must stay until `DestroyButtons`. Takes the
    // bar's mutex.
    void AddButton(XButton* button);

    // Called by the form's PreDispatch on every message, before anything else of
    // the form. Sets `*handled` if the message was the bar's alone, and returns
    // its result. A message that comes while another is routed, in this bar or
    // another, is left alone, unless it asks for the painting of a button. The
    // bar's mutex is held while the buttons' operations run.
    LRESULT Route(HWND window, UINT message, WPARAM wParam, LPARAM lParam, std::uint32_t* handled);

    // Kills the timer, tears all buttons down and forgets them. Dispatches
    // messages, as XButton::Teardown does.
    void DestroyButtons();

private:
    LRESULT Serve(HWND window, UINT message, WPARAM wParam, LPARAM lParam, std::uint32_t* handled);
    void OnMouseMove();
    LRESULT OnDrawItem(const DRAWITEMSTRUCT& item, std::uint32_t* handled);
    void OnTimer(std::uint32_t* handled);
    void OnButtonDown(HWND window, std::uint32_t which, std::uint32_t* handled);
    void OnButtonUp(std::uint32_t which);

    XButton* ButtonOf(HWND child) const;
    XButton* ButtonUnderPointer() const;
    void UpdateHover();

    std::uint64_t timerId = 0;  // 0 for none
    std::uint64_t ticks = 0;    // of that timer
    std::vector<XButton*> buttons;
    clMutex mutex;  // guards the list and the buttons' held flags
    HWND parent = nullptr;
};

// The id of a form's bar timer: 7788 for the first form of the process, then one
// more each time. Far from those that XWindow::AddTimer counts from 1.
std::uint64_t NewBarTimerId();
