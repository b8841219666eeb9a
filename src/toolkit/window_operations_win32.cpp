#include <windows.h>

#include "toolkit/window.h"

// What each operation does where a form has nothing to say.

void XWindow::OnActivate(HWND, std::uint32_t, std::uint32_t) {
    handledFlag = 0;
}

void XWindow::OnClose() {
    handledFlag = 0;
}

void XWindow::OnContextMenu(HWND, std::uint32_t, std::uint32_t) {
    handledFlag = 0;
}

void XWindow::OnCommand(std::uint32_t, HWND, std::uint32_t) {}

void XWindow::OnCreate() {
    handledFlag = 0;
}

void XWindow::OnDestroy() {
    handledFlag = 0;
}

void XWindow::OnDeactivate(HWND, std::uint32_t) {
    handledFlag = 0;
}

void XWindow::OnDrawItem(HWND, std::uint32_t, const DRAWITEMSTRUCT&) {
    handledFlag = 0;
}

void XWindow::OnEraseBackground(HDC) {
    handledFlag = 0;
}

void XWindow::OnHide(std::uint32_t) {
    handledFlag = 0;
}

void XWindow::OnKeyDown(std::uint32_t, std::uint32_t) {
    handledFlag = 0;
}

void XWindow::OnKeyUp(std::uint32_t, std::uint32_t) {
    handledFlag = 0;
}

void XWindow::OnChar(wchar_t) {
    handledFlag = 0;
}

void XWindow::OnMouseDown(std::int32_t, std::int32_t, std::uint32_t, std::uint32_t) {
    handledFlag = 0;
}

void XWindow::OnMouseUp(std::int32_t, std::int32_t, std::uint32_t, std::uint32_t) {
    handledFlag = 0;
}

void XWindow::OnMouseMove(std::int32_t, std::int32_t, std::uint32_t) {
    handledFlag = 0;
}

void XWindow::OnMouseWheel(std::int32_t, std::int32_t, std::int32_t, std::uint32_t) {
    handledFlag = 0;
}

void XWindow::OnMove(std::int32_t, std::int32_t) {
    handledFlag = 0;
}

LRESULT XWindow::OnNotify(NMHDR*) {
    handledFlag = 0;
    return 0;
}

void XWindow::OnPaint() {
    handledFlag = 0;
}

void XWindow::OnShow(std::uint32_t) {
    handledFlag = 0;
}

void XWindow::OnSize(std::uint32_t, std::uint32_t, std::uint32_t) {
    handledFlag = 0;
}

void XWindow::OnSysCommand(std::uint32_t) {}

void XWindow::OnTimer(std::uint32_t, std::int64_t) {
    handledFlag = 0;
}

HBRUSH XWindow::OnCtlColorStatic() {
    handledFlag = 0;
    return nullptr;
}

HBRUSH XWindow::OnCtlColorDlg() {
    handledFlag = 0;
    return nullptr;
}

LRESULT XWindow::PreDispatch(HWND, UINT, WPARAM, LPARAM, std::uint32_t*) {
    return 0;
}

void XWindow::OnIdOk() {}
void XWindow::OnIdCancel() {}
void XWindow::OnIdAbort() {}
void XWindow::OnIdClose() {}
void XWindow::OnIdHelp() {}
void XWindow::OnIdIgnore() {}
void XWindow::OnIdNo() {}
void XWindow::OnIdRetry() {}
void XWindow::OnIdYes() {}
