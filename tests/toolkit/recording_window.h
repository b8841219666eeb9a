// A window that writes down which operations were called, and with what.
#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "toolkit/window.h"

// Each call as one line: the name and the arguments behind it, handles and
// addresses in hexadecimal, all else in decimal.
class RecordingWindow : public XWindow {
public:
    RecordingWindow() = default;
    ~RecordingWindow() override {
        // What they refer to may be gone.
        during = nullptr;
        before = nullptr;
        DestroyWnd();
    }

    // The lines since the last `Taken`.
    std::vector<std::string> Taken();
    // The only line since, or all of them in brackets.
    std::string TakenLine();

    bool callBase = true;                           // or leave the message handled
    LRESULT notifyResult = 0;                       // without the base
    HBRUSH brush = nullptr;                         // without the base
    std::function<void()> during;                   // what each operation does first
    std::uint32_t flagSeen = 0;                     // at the entry of the last operation
    std::vector<UINT> seenMessages;                 // by PreDispatch
    std::function<LRESULT(std::uint32_t*)> before;  // in PreDispatch

    std::uint32_t Flag() const { return handledFlag; }
    void SetFlag(std::uint32_t flag) { handledFlag = flag; }

    void OnActivate(HWND other, std::uint32_t minimized, std::uint32_t how) override;
    void OnClose() override;
    void OnContextMenu(HWND clicked, std::uint32_t x, std::uint32_t y) override;
    void OnCommand(std::uint32_t id, HWND control, std::uint32_t notifyCode) override;
    void OnCreate() override;
    void OnDestroy() override;
    void OnDeactivate(HWND other, std::uint32_t minimized) override;
    void OnDrawItem(HWND control, std::uint32_t id, const DRAWITEMSTRUCT& item) override;
    void OnEraseBackground(HDC dc) override;
    void OnHide(std::uint32_t reason) override;
    void OnKeyDown(std::uint32_t key, std::uint32_t keyData) override;
    void OnKeyUp(std::uint32_t key, std::uint32_t keyData) override;
    void OnChar(wchar_t character) override;
    void OnMouseDown(std::int32_t x, std::int32_t y, std::uint32_t message,
                     std::uint32_t keys) override;
    void OnMouseUp(std::int32_t x, std::int32_t y, std::uint32_t message,
                   std::uint32_t keys) override;
    void OnMouseMove(std::int32_t x, std::int32_t y, std::uint32_t keys) override;
    void OnMouseWheel(std::int32_t x, std::int32_t y, std::int32_t delta,
                      std::uint32_t keys) override;
    void OnMove(std::int32_t x, std::int32_t y) override;
    LRESULT OnNotify(NMHDR* header) override;
    void OnPaint() override;
    void OnShow(std::uint32_t reason) override;
    void OnSize(std::uint32_t width, std::uint32_t height, std::uint32_t type) override;
    void OnSysCommand(std::uint32_t command) override;
    void OnTimer(std::uint32_t id, std::int64_t userValue) override;
    HBRUSH OnCtlColorStatic() override;
    HBRUSH OnCtlColorDlg() override;
    LRESULT PreDispatch(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                        std::uint32_t* handled) override;
    void OnIdOk() override;
    void OnIdCancel() override;
    void OnIdAbort() override;
    void OnIdClose() override;
    void OnIdHelp() override;
    void OnIdIgnore() override;
    void OnIdNo() override;
    void OnIdRetry() override;
    void OnIdYes() override;

private:
    // Notes the call; true if the base is to be called.
    template <class... Arguments>
    bool Note(const char* name, Arguments... arguments);

    std::vector<std::string> calls;
};

// "0x" and hexadecimal digits, as in the lines above.
std::string AsText(const void* address);
