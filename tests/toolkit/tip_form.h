// A form with windows that tips belong to.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

#include "tests/ui/host_form.h"
#include "toolkit/tool_tip.h"

// A dialog of 400 x 300 pixels with an edit control, which has the focus, and three
// static controls that are transparent to the mouse, as picture buttons are.
class TipForm {
public:
    TipForm();
    TipForm(const TipForm&) = delete;
    TipForm& operator=(const TipForm&) = delete;

    HWND Window() const { return form.Window(); }
    HWND Edit() const { return form.Child(1001); }
    HWND First() const { return first; }
    HWND Second() const { return second; }
    HWND Tall() const { return tall; }
    // Of a child, on the screen.
    static RECT RectOf(HWND window);
    // Moves the pointer to a child's middle, or to where no tip applies.
    static void PointAt(HWND window);
    void PointAway() const;
    void MoveTo(int left, int top) const;

private:
    HWND MakeAnchor(int x, int y, int width, int height) const;

    HostForm form;
    HWND first = nullptr;
    HWND second = nullptr;
    HWND tall = nullptr;
};

// A tip's parameters with delays that a test can wait for.
XToolTipParams QuickTip(HWND anchor, const wchar_t* text = L"Tip");

// Pump until the tip's window shows, or is destroyed.
[[nodiscard]] bool WaitUntilShowing(const XToolTip& tip, DWORD limitMs = 5000);
[[nodiscard]] bool WaitUntilGone(const XToolTip& tip, DWORD limitMs = 5000);
// Alpha of a layered window as the platform has it; -1 for none.
int AlphaOf(HWND window);
