#include <windows.h>

#include "foundation/mutex.h"
#include "toolkit/sub_class_ctrl.h"

XSubClassCtrl::~XSubClassCtrl() {
    Detach();
}

LRESULT XSubClassCtrl::WndHook(HWND, UINT, WPARAM, LPARAM, std::uint32_t*) {
    return 0;
}

void XSubClassCtrl::Attach(HWND window) {
    Detach();
    if (window == nullptr) return;
    const clMutexLock lock(SubclassMutex);
    controlHandle = window;
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    previousProcedure = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Procedure)));
    if (previousProcedure == nullptr) {
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
        controlHandle = nullptr;
    }
}

void XSubClassCtrl::Detach() {
    if (controlHandle == nullptr) return;
    const clMutexLock lock(SubclassMutex);
    SetWindowLongPtrW(controlHandle, GWLP_USERDATA, 0);
    SetWindowLongPtrW(controlHandle, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(previousProcedure));
    controlHandle = nullptr;
}

LRESULT CALLBACK XSubClassCtrl::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const clMutexLock lock(SubclassMutex);
    auto* const object = reinterpret_cast<XSubClassCtrl*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (object == nullptr) return 0;
    // Read before the hook, which may detach the object or destroy it.
    const WNDPROC previous = object->previousProcedure;
    if (previous == nullptr) return 0;
    std::uint32_t handled = 0;
    const LRESULT result = object->WndHook(window, message, wParam, lParam, &handled);
    return handled != 0 ? result : CallWindowProcW(previous, window, message, wParam, lParam);
}
