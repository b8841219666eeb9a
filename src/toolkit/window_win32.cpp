#include "toolkit/window.h"

#include <windows.h>
// shellapi.h needs windows.h before it.
#include <shellapi.h>

#include "toolkit/window_table.h"

namespace {

constexpr UINT timerPeriodMs = 250;
constexpr UINT classStyle = CS_DBLCLKS | CS_OWNDC | CS_DROPSHADOW;
static_assert(classStyle == 0x20028);
constexpr UINT moveFlags = SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOOWNERZORDER;
static_assert(moveFlags == 532);

bool RegisterPrivateClass(const clString& name, HINSTANCE instance) {
    WNDCLASSEXW description = {};
    description.cbSize = sizeof(description);
    description.style = classStyle;
    description.lpfnWndProc = &XWindow::WindowProcedure;
    description.hInstance = instance;
    description.hIcon = LoadIconW(nullptr, IDI_APPLICATION);
    description.lpszClassName = name.Chars();
    return RegisterClassExW(&description) != 0;
}

// All zeros if it can't be read.
RECT RectangleOf(HWND window) {
    RECT rect = {};
    if (!GetWindowRect(window, &rect)) rect = {};
    return rect;
}

// Shows a duplicate of `taken` as an icon of the window's class and destroys
// both what was passed in and what `kept` held.
void ReplaceIcon(HWND window, int which, HICON taken, HICON& kept) {
    const HICON old = kept;
    kept = DuplicateIcon(nullptr, taken);
    SetClassLongPtrW(window, which, reinterpret_cast<LONG_PTR>(kept));
    if (taken != nullptr) DestroyIcon(taken);
    if (old != nullptr) DestroyIcon(old);
}

}  // namespace

XWindow::XWindow()
    : handledFlag(0),
      windowHandle(nullptr),
      dialogMode(false),
      cursor(nullptr),
      bigIcon(nullptr),
      smallIcon(nullptr) {}

XWindow::~XWindow() {
    DestroyWnd();
    if (cursor != nullptr) DestroyCursor(cursor);
    if (bigIcon != nullptr) DestroyIcon(bigIcon);
    if (smallIcon != nullptr) DestroyIcon(smallIcon);
}

void XWindow::CreateWnd(const RECT& rect, DWORD style, DWORD exStyle, HWND parent) {
    DestroyWnd();
    const clString name = NewWindowClassName();
    const HINSTANCE instance = GetModuleHandleW(nullptr);
    if (!RegisterPrivateClass(name, instance)) return;
    className = name;
    windowHandle = CreateWindowExW(exStyle, className.Chars(), L"", style, rect.left, rect.top,
                                   rect.right - rect.left, rect.bottom - rect.top, parent, nullptr,
                                   instance, this);
}

void XWindow::DestroyWnd() {
    if (windowHandle != nullptr) {
        ShowWindow(windowHandle, SW_HIDE);
        StopTimers();
        DestroyWindow(windowHandle);
    }
    if (!className.IsEmpty()) {
        UnregisterClassW(className.Chars(), GetModuleHandleW(nullptr));
        className.Assign(L"");
        GiveKeptClassesBack();
    }
    RemoveFromWindowTable(this);
    windowHandle = nullptr;
}

void XWindow::AbandonWnd() {
    if (windowHandle == nullptr) return;
    RemoveFromWindowTable(this);
    // Without an object the platform's default destroys it, and its timers with it.
    PostMessageW(windowHandle, WM_CLOSE, 0, 0);
    {
        const clMutexLock lock(timerMutex);
        timers.Clear();
    }
    windowHandle = nullptr;
    if (!className.IsEmpty()) KeepClassForLater(className);
    className.Assign(L"");
}

void XWindow::StopTimers() {
    const clMutexLock lock(timerMutex);
    for (std::int64_t i = 0; i < timers.Count(); ++i)
        KillTimer(windowHandle, timers.At(i)->id);
    timers.Clear();
}

std::uint32_t XWindow::AddTimer(std::uint32_t) {
    if (windowHandle == nullptr) return 0;
    const clMutexLock lock(timerMutex);
    const UINT_PTR id = SetTimer(windowHandle, timers.NextId(), timerPeriodMs, nullptr);
    if (id == 0) return 0;
    timers.Add(id);
    return static_cast<std::uint32_t>(id);
}

void XWindow::MoveTo(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height) {
    if (windowHandle == nullptr) return;
    const RECT now = RectangleOf(windowHandle);
    if (x == keepCurrent) x = now.left;
    if (y == keepCurrent) y = now.top;
    if (width == keepCurrent) width = now.right - now.left;
    if (height == keepCurrent) height = now.bottom - now.top;
    SetWindowPos(windowHandle, nullptr, x, y, width, height, moveFlags);
}

void XWindow::CenterOnScreen() {
    if (windowHandle == nullptr) return;
    RECT desktop = {};
    GetClientRect(GetDesktopWindow(), &desktop);
    const RECT now = RectangleOf(windowHandle);
    // Each half is truncated by itself: two odd sizes lose no common pixel.
    const LONG left = (desktop.right - desktop.left) / 2 - (now.right - now.left) / 2;
    const LONG top = (desktop.bottom - desktop.top) / 2 - (now.bottom - now.top) / 2;
    MoveTo(left, top, keepCurrent, keepCurrent);
}

void XWindow::SetIcons(HICON big, HICON little) {
    if (windowHandle == nullptr) return;
    ReplaceIcon(windowHandle, GCLP_HICON, big, bigIcon);
    ReplaceIcon(windowHandle, GCLP_HICONSM, little, smallIcon);
}
