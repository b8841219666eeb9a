#include "tests/toolkit/recording_window.h"

#include <sstream>
#include <type_traits>
#include <utility>

std::string AsText(const void* address) {
    std::ostringstream text;
    text << "0x" << std::hex << reinterpret_cast<std::uintptr_t>(address);
    return text.str();
}

namespace {

template <class Argument>
std::string ArgumentText(Argument argument) {
    if constexpr (std::is_pointer_v<Argument>) {
        return AsText(argument);
    } else {
        return std::to_string(argument);
    }
}

}  // namespace

std::vector<std::string> RecordingWindow::Taken() {
    return std::exchange(calls, {});
}

std::string RecordingWindow::TakenLine() {
    const std::vector<std::string> lines = Taken();
    if (lines.size() == 1) return lines[0];
    std::string all = "[";
    for (const std::string& line : lines)
        all += line + "; ";
    return all + "]";
}

template <class... Arguments>
bool RecordingWindow::Note(const char* name, Arguments... arguments) {
    flagSeen = handledFlag;
    std::string line = name;
    ((line += " " + ArgumentText(arguments)), ...);
    calls.push_back(line);
    const std::function<void()> now = during;  // it may replace itself
    if (now) now();
    return callBase;
}

void RecordingWindow::OnActivate(HWND other, std::uint32_t minimized, std::uint32_t how) {
    if (Note("OnActivate", other, minimized, how)) XWindow::OnActivate(other, minimized, how);
}

void RecordingWindow::OnClose() {
    if (Note("OnClose")) XWindow::OnClose();
}

void RecordingWindow::OnContextMenu(HWND clicked, std::uint32_t x, std::uint32_t y) {
    if (Note("OnContextMenu", clicked, x, y)) XWindow::OnContextMenu(clicked, x, y);
}

void RecordingWindow::OnCommand(std::uint32_t id, HWND control, std::uint32_t notifyCode) {
    if (Note("OnCommand", id, control, notifyCode)) XWindow::OnCommand(id, control, notifyCode);
}

void RecordingWindow::OnCreate() {
    if (Note("OnCreate")) XWindow::OnCreate();
}

void RecordingWindow::OnDestroy() {
    if (Note("OnDestroy")) XWindow::OnDestroy();
}

void RecordingWindow::OnDeactivate(HWND other, std::uint32_t minimized) {
    if (Note("OnDeactivate", other, minimized)) XWindow::OnDeactivate(other, minimized);
}

void RecordingWindow::OnDrawItem(HWND control, std::uint32_t id, const DRAWITEMSTRUCT& item) {
    if (Note("OnDrawItem", control, id, &item)) XWindow::OnDrawItem(control, id, item);
}

void RecordingWindow::OnEraseBackground(HDC dc) {
    if (Note("OnEraseBackground", dc)) XWindow::OnEraseBackground(dc);
}

void RecordingWindow::OnHide(std::uint32_t reason) {
    if (Note("OnHide", reason)) XWindow::OnHide(reason);
}

void RecordingWindow::OnKeyDown(std::uint32_t key, std::uint32_t keyData) {
    if (Note("OnKeyDown", key, keyData)) XWindow::OnKeyDown(key, keyData);
}

void RecordingWindow::OnKeyUp(std::uint32_t key, std::uint32_t keyData) {
    if (Note("OnKeyUp", key, keyData)) XWindow::OnKeyUp(key, keyData);
}

void RecordingWindow::OnChar(wchar_t character) {
    if (Note("OnChar", static_cast<unsigned>(character))) XWindow::OnChar(character);
}

void RecordingWindow::OnMouseDown(std::int32_t x, std::int32_t y, std::uint32_t message,
                                  std::uint32_t keys) {
    if (Note("OnMouseDown", x, y, message, keys)) XWindow::OnMouseDown(x, y, message, keys);
}

void RecordingWindow::OnMouseUp(std::int32_t x, std::int32_t y, std::uint32_t message,
                                std::uint32_t keys) {
    if (Note("OnMouseUp", x, y, message, keys)) XWindow::OnMouseUp(x, y, message, keys);
}

void RecordingWindow::OnMouseMove(std::int32_t x, std::int32_t y, std::uint32_t keys) {
    if (Note("OnMouseMove", x, y, keys)) XWindow::OnMouseMove(x, y, keys);
}

void RecordingWindow::OnMouseWheel(std::int32_t x, std::int32_t y, std::int32_t delta,
                                   std::uint32_t keys) {
    if (Note("OnMouseWheel", x, y, delta, keys)) XWindow::OnMouseWheel(x, y, delta, keys);
}

void RecordingWindow::OnMove(std::int32_t x, std::int32_t y) {
    if (Note("OnMove", x, y)) XWindow::OnMove(x, y);
}

LRESULT RecordingWindow::OnNotify(NMHDR* header) {
    return Note("OnNotify", header) ? XWindow::OnNotify(header) : notifyResult;
}

void RecordingWindow::OnPaint() {
    if (Note("OnPaint")) XWindow::OnPaint();
}

void RecordingWindow::OnShow(std::uint32_t reason) {
    if (Note("OnShow", reason)) XWindow::OnShow(reason);
}

void RecordingWindow::OnSize(std::uint32_t width, std::uint32_t height, std::uint32_t type) {
    if (Note("OnSize", width, height, type)) XWindow::OnSize(width, height, type);
}

void RecordingWindow::OnSysCommand(std::uint32_t command) {
    if (Note("OnSysCommand", command)) XWindow::OnSysCommand(command);
}

void RecordingWindow::OnTimer(std::uint32_t id, std::int64_t userValue) {
    if (Note("OnTimer", id, userValue)) XWindow::OnTimer(id, userValue);
}

HBRUSH RecordingWindow::OnCtlColorStatic() {
    return Note("OnCtlColorStatic") ? XWindow::OnCtlColorStatic() : brush;
}

HBRUSH RecordingWindow::OnCtlColorDlg() {
    return Note("OnCtlColorDlg") ? XWindow::OnCtlColorDlg() : brush;
}

LRESULT RecordingWindow::PreDispatch(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                     std::uint32_t* handled) {
    seenMessages.push_back(message);
    return before ? before(handled)
                  : XWindow::PreDispatch(window, message, wParam, lParam, handled);
}

void RecordingWindow::OnIdOk() {
    if (Note("OnIdOk")) XWindow::OnIdOk();
}

void RecordingWindow::OnIdCancel() {
    if (Note("OnIdCancel")) XWindow::OnIdCancel();
}

void RecordingWindow::OnIdAbort() {
    if (Note("OnIdAbort")) XWindow::OnIdAbort();
}

void RecordingWindow::OnIdClose() {
    if (Note("OnIdClose")) XWindow::OnIdClose();
}

void RecordingWindow::OnIdHelp() {
    if (Note("OnIdHelp")) XWindow::OnIdHelp();
}

void RecordingWindow::OnIdIgnore() {
    if (Note("OnIdIgnore")) XWindow::OnIdIgnore();
}

void RecordingWindow::OnIdNo() {
    if (Note("OnIdNo")) XWindow::OnIdNo();
}

void RecordingWindow::OnIdRetry() {
    if (Note("OnIdRetry")) XWindow::OnIdRetry();
}

void RecordingWindow::OnIdYes() {
    if (Note("OnIdYes")) XWindow::OnIdYes();
}
