// The base of every dialog and top-level window: messages become virtual operations.
#pragma once

#include <windows.h>

#include <cstdint>

#include "foundation/mutex.h"
#include "foundation/string.h"
#include "toolkit/message_decode.h"
#include "toolkit/timer_list.h"

// In `MoveTo`: the current value stays.
inline constexpr std::int32_t keepCurrent = -12345;

// A window that is written by overriding operations; it never has a window
// procedure of its own. In dialog mode it is bound to a dialog that the platform
// makes from a template:
//   DialogBoxParamW(instance, MAKEINTRESOURCEW(id), owner, &XWindow::DialogProcedure,
//                   reinterpret_cast<LPARAM>(&form));
// and the form ends it by EndDialog. In window mode `CreateWnd` makes a window
// of a class that belongs to this object alone.
//
// Every message sets the handled flag: 0 means that the platform's default
// processing still applies. Each message that is dispatched while another is
// being handled leaves its own value there, so an override that sends messages
// sets the flag as its last act.
//
// Everything runs on the thread that owns the window, but for what says otherwise.
class XWindow {
public:
    // Without a window.
    XWindow();
    XWindow(const XWindow&) = delete;
    XWindow& operator=(const XWindow&) = delete;
    // `DestroyWnd`, then the cursor and the icons. The overrides of a derived
    // class are gone by then: one that wants its OnDestroy calls `DestroyWnd` itself.
    virtual ~XWindow();

    // The operations, in the order of their slots. "Clears" says that the base
    // clears the handled flag, so that the platform's default follows; "keeps",
    // that the base does nothing and the message stays handled. Signed
    // coordinates are -32768 to 32767, unsigned ones 0 to 65535.

    // WM_ACTIVATE with anything but WA_INACTIVE. `other` is the window that loses
    // the activation, or null; `minimized` is not 0 for a minimised window; `how`
    // is WA_ACTIVE or WA_CLICKACTIVE. Clears.
    virtual void OnActivate(HWND other, std::uint32_t minimized, std::uint32_t how);
    // WM_CLOSE. Clears.
    virtual void OnClose();
    // WM_CONTEXTMENU over `clicked`, this window or a child; unsigned screen
    // coordinates, both 65535 from the keyboard. Clears.
    virtual void OnContextMenu(HWND clicked, std::uint32_t x, std::uint32_t y);
    // WM_COMMAND of any id; `control` is null for a menu or an accelerator.
    // Comes behind the operation of a standard id. Keeps.
    virtual void OnCommand(std::uint32_t id, HWND control, std::uint32_t notifyCode);
    // WM_CREATE or WM_INITDIALOG, once for each binding. Clears, but the message
    // counts as handled whatever the override leaves.
    virtual void OnCreate();
    // WM_DESTROY. Clears.
    virtual void OnDestroy();
    // WM_ACTIVATE with WA_INACTIVE. `other` is the window that gets the
    // activation, or null. Clears.
    virtual void OnDeactivate(HWND other, std::uint32_t minimized);
    // WM_DRAWITEM. `id` is 0 for a menu, and `control` then its handle. Clears.
    virtual void OnDrawItem(HWND control, std::uint32_t id, const DRAWITEMSTRUCT& item);
    // WM_ERASEBKGND. While the flag stays set the background counts as erased. Clears.
    virtual void OnEraseBackground(HDC dc);
    // WM_SHOWWINDOW when hidden; `reason` is 0 for ShowWindow, else SW_*. Clears.
    virtual void OnHide(std::uint32_t reason);
    // WM_KEYDOWN: the virtual key, and the repeat count and flags. Clears.
    virtual void OnKeyDown(std::uint32_t key, std::uint32_t keyData);
    // WM_KEYUP, as above. Clears.
    virtual void OnKeyUp(std::uint32_t key, std::uint32_t keyData);
    // WM_CHAR: one UTF-16 unit. Clears.
    virtual void OnChar(wchar_t character);
    // WM_LBUTTONDOWN, WM_RBUTTONDOWN or WM_MBUTTONDOWN, as `message` tells; signed
    // client coordinates; `keys` are MK_* bits. Clears.
    virtual void OnMouseDown(std::int32_t x, std::int32_t y, std::uint32_t message,
                             std::uint32_t keys);
    // The same for WM_LBUTTONUP, WM_RBUTTONUP and WM_MBUTTONUP. Clears.
    virtual void OnMouseUp(std::int32_t x, std::int32_t y, std::uint32_t message,
                           std::uint32_t keys);
    // WM_MOUSEMOVE, as above. Clears.
    virtual void OnMouseMove(std::int32_t x, std::int32_t y, std::uint32_t keys);
    // WM_MOUSEWHEEL: signed screen coordinates; `delta` in WHEEL_DELTA units,
    // positive away from the user. Clears.
    virtual void OnMouseWheel(std::int32_t x, std::int32_t y, std::int32_t delta,
                              std::uint32_t keys);
    // WM_MOVE: the client area's new signed position. Clears.
    virtual void OnMove(std::int32_t x, std::int32_t y);
    // WM_NOTIFY. The result is the message's result. Clears and gives 0.
    virtual LRESULT OnNotify(NMHDR* header);
    // WM_PAINT. An override paints between BeginPaint and EndPaint; the platform's
    // default follows in any case and then finds nothing to do. Clears.
    virtual void OnPaint();
    // WM_SHOWWINDOW when shown; `reason` is 0 for ShowWindow, else SW_*. Clears.
    virtual void OnShow(std::uint32_t reason);
    // WM_SIZE: the client area in pixels; `type` is SIZE_*. Clears.
    virtual void OnSize(std::uint32_t width, std::uint32_t height, std::uint32_t type);
    // WM_SYSCOMMAND: SC_*. The platform's default follows whatever the override
    // leaves. Keeps.
    virtual void OnSysCommand(std::uint32_t command);
    // WM_TIMER of a timer that `AddTimer` started; `userValue` is 0. Runs with the
    // timer mutex held. Other timers come to `PreDispatch` alone. Clears.
    virtual void OnTimer(std::uint32_t id, std::int64_t userValue);
    // WM_CTLCOLORSTATIC: the brush for the control's background, not given away.
    // Clears and gives null.
    virtual HBRUSH OnCtlColorStatic();
    // WM_CTLCOLORDLG: the same for the dialog. Clears and gives null.
    virtual HBRUSH OnCtlColorDlg();
    // Every message, before anything else. Setting `*handled` ends the message
    // with the value returned; a dialog hands `*handled` to the platform as it is.
    // Does nothing and gives 0.
    virtual LRESULT PreDispatch(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                std::uint32_t* handled);
    // WM_COMMAND of the standard ids with notify code 0, so not from an
    // accelerator; `OnCommand` follows. All keep.
    virtual void OnIdOk();
    virtual void OnIdCancel();
    virtual void OnIdAbort();
    virtual void OnIdClose();
    virtual void OnIdHelp();
    virtual void OnIdIgnore();
    virtual void OnIdNo();
    virtual void OnIdRetry();
    virtual void OnIdYes();

    // The window; null before its creation and after `DestroyWnd`. A dialog that
    // has ended keeps its handle until `DestroyWnd` or the destructor.
    HWND Window() const { return windowHandle; }

    // Destroys what there is and makes a window without a title: left, top, right
    // and bottom in screen coordinates, or the parent's for a child. Takes the
    // window mutex. `Window()` is null if the platform refuses.
    void CreateWnd(const RECT& rect, DWORD style, DWORD exStyle, HWND parent);
    // Hides and destroys the window, ends its timers and gives the class back.
    // Does nothing without one. Takes the timer mutex, then the window mutex.
    void DestroyWnd();

    // Asks the thread that made the window to destroy it, which alone may, and has
    // nothing more to do with it; no message of it comes here any more,
    // but for one that is under way: the object has to outlive that. Its class
    // is given back once it has gone and another window of `CreateWnd` is
    // destroyed. For another thread than the window's; does not wait.
    // Does nothing without a window. Takes the window mutex.
    void AbandonWnd();

    // Starts a timer of this window, which runs until `DestroyWnd`; OnTimer gets its id.
    // Returns the id, or 0 without a window or if the platform refuses.
    // The period is always 250 ms; `ignored` has no effect. Takes the timer mutex.
    std::uint32_t AddTimer(std::uint32_t ignored);

    // Pixels, in the coordinates of the window's creation; `keepCurrent` leaves a
    // value as it is. Neither the activation nor the order of windows changes.
    // Does nothing without a window.
    void MoveTo(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height);
    // Puts the window into the middle of the primary display.
    void CenterOnScreen();
    // Takes both icons, of which either may be null, and shows duplicates as those
    // of the window's class; for a dialog that is the class of all dialogs, which
    // names the duplicates until others are set. Without a window nothing happens,
    // and the icons stay the caller's.
    void SetIcons(HICON big, HICON little);

    // For DialogBoxParamW and its like, with the XWindow's address as parameter.
    static INT_PTR CALLBACK DialogProcedure(HWND window, UINT message, WPARAM wParam,
                                            LPARAM lParam);
    // Of the classes that `CreateWnd` registers; the XWindow's address is the
    // creation parameter.
    static LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM wParam,
                                            LPARAM lParam);

protected:
    std::uint32_t handledFlag;

private:
    // What a dispatched message comes to; the modes hand it back in their own ways.
    struct Outcome {
        bool isFinal;  // the result stands as it is, past the handled flag
        LRESULT result;
    };

    void Bind(HWND window, bool asDialog);
    LRESULT Dispatch(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    Outcome RunOperation(const DecodedMessage& decoded);
    Outcome BrushOutcome(HBRUSH brush) const;
    void RunStandardCommand(StandardCommand command);
    void RunTimer(std::uint64_t id);
    void StopTimers();

    HWND windowHandle;
    bool dialogMode;

protected:
    HCURSOR cursor;  // owned; null unless a derived class sets it

private:
    HICON bigIcon;    // owned
    HICON smallIcon;  // owned
    clString className;
    clTimerList timers;
    clMutex timerMutex;  // guards the timers, and is held through OnTimer
};
