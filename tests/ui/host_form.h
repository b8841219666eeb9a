// A dialog for tests, made from a template in memory, with a real XWindow behind it.
#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>
#include <vector>

#include "toolkit/window.h"

// One control; position and size in dialog units.
struct TemplateControl {
    const wchar_t* className;
    DWORD style;  // WS_CHILD is added
    short x, y, width, height;
    WORD id;
    const wchar_t* text = L"";
    DWORD exStyle = 0;
};

// A dialog template with the font of the program's own dialogs.
class DialogTemplate {
public:
    // Size of the client area in dialog units. Without WS_VISIBLE the dialog
    // stays hidden.
    DialogTemplate(DWORD style, short width, short height);
    DialogTemplate& Add(const TemplateControl& control);
    // Valid until the next change. The words lie on a 4-byte boundary.
    const DLGTEMPLATE* Get() const;

private:
    void AddWord(WORD value) { words.push_back(value); }
    void AddDword(DWORD value);
    void AddText(const wchar_t* text);

    std::vector<WORD> words;
};

// Makes a modeless dialog of which `form` is the object. A visible one is brought
// to the front and has the focus.
void ShowDialog(XWindow& form, const DialogTemplate& dialog);
// Runs a modal one; returns what EndDialog was given.
INT_PTR RunDialog(XWindow& form, const DialogTemplate& dialog, HWND owner = nullptr);

// Offers every message to `route` and calls `created` from OnCreate.
class HostForm : public XWindow {
public:
    using Route = std::function<LRESULT(HWND, UINT, WPARAM, LPARAM, std::uint32_t*)>;

    HostForm() = default;
    ~HostForm() override { DestroyWnd(); }

    void Show(const DialogTemplate& dialog) { ShowDialog(*this, dialog); }
    INT_PTR RunModal(const DialogTemplate& dialog, HWND owner = nullptr) {
        return RunDialog(*this, dialog, owner);
    }
    HWND Child(int id) const { return GetDlgItem(Window(), id); }

    Route route;
    std::function<void()> created;

private:
    void OnCreate() override;
    LRESULT PreDispatch(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                        std::uint32_t* handled) override;
};

// A visible form with caption in the upper left part of the display.
inline constexpr DWORD visibleForm = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_VISIBLE;
inline constexpr DWORD hiddenForm = WS_POPUP | WS_CAPTION | WS_SYSMENU;

// Makes `window` the foreground window; false if it does not get there.
[[nodiscard]] bool BringToFront(HWND window);
