// The base of what sits on a control that the platform made.
#pragma once

#include <windows.h>

#include <cstdint>

// Offers each message of a control to `WndHook` before the control sees it. The
// control's user data (GWLP_USERDATA) holds the object's address while it is
// attached: one object for each control. The subclass mutex is held throughout
// each message, so all other threads wait while any control processes one.
class XSubClassCtrl {
public:
    XSubClassCtrl() = default;
    XSubClassCtrl(const XSubClassCtrl&) = delete;
    XSubClassCtrl& operator=(const XSubClassCtrl&) = delete;
    // Detaches.
    virtual ~XSubClassCtrl();

    // Setting `*handled`, which starts at 0, ends the message with the value
    // returned; otherwise the control's own procedure answers it. Does nothing
    // and gives 0. The thread of the control.
    virtual LRESULT WndHook(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                            std::uint32_t* handled);

    // Detaches from any earlier control, then takes over the messages of
    // `window`; null only detaches. If the platform refuses, the object is left
    // detached. The thread of the control; takes the subclass mutex.
    void Attach(HWND window);
    // Gives the control its own procedure back. Does nothing when detached.
    void Detach();

    // The control; null when detached. A control that was destroyed stays here
    // until `Detach`.
    HWND Control() const { return controlHandle; }

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    WNDPROC previousProcedure = nullptr;
    HWND controlHandle = nullptr;
};
