#include "tests/ui/host_form.h"

#include "tests/ui/pump.h"

namespace {

constexpr std::size_t countPosition = 4;  // in words: behind style and extended style

}  // namespace

DialogTemplate::DialogTemplate(DWORD style, short width, short height) {
    AddDword(style | DS_SETFONT);
    AddDword(0);  // extended style
    AddWord(0);   // controls
    AddWord(20);  // place
    AddWord(20);
    AddWord(static_cast<WORD>(width));
    AddWord(static_cast<WORD>(height));
    AddWord(0);  // no menu
    AddWord(0);  // the class of dialogs
    AddText(L"Host");
    AddWord(8);  // points
    AddText(L"MS Shell Dlg");
}

DialogTemplate& DialogTemplate::Add(const TemplateControl& control) {
    if (words.size() % 2 != 0) AddWord(0);
    AddDword(control.style | WS_CHILD);
    AddDword(control.exStyle);
    AddWord(static_cast<WORD>(control.x));
    AddWord(static_cast<WORD>(control.y));
    AddWord(static_cast<WORD>(control.width));
    AddWord(static_cast<WORD>(control.height));
    AddWord(control.id);
    AddText(control.className);
    AddText(control.text);
    AddWord(0);  // no creation data
    ++words[countPosition];
    return *this;
}

const DLGTEMPLATE* DialogTemplate::Get() const {
    return reinterpret_cast<const DLGTEMPLATE*>(words.data());
}

void DialogTemplate::AddDword(DWORD value) {
    AddWord(LOWORD(value));
    AddWord(HIWORD(value));
}

void DialogTemplate::AddText(const wchar_t* text) {
    do {
        AddWord(*text);
    } while (*text++ != 0);
}

void ShowDialog(XWindow& form, const DialogTemplate& dialog) {
    CreateDialogIndirectParamW(GetModuleHandleW(nullptr), dialog.Get(), nullptr,
                               &XWindow::DialogProcedure, reinterpret_cast<LPARAM>(&form));
    if (IsWindowVisible(form.Window())) (void)BringToFront(form.Window());
    PumpMessages();
}

INT_PTR RunDialog(XWindow& form, const DialogTemplate& dialog, HWND owner) {
    return DialogBoxIndirectParamW(GetModuleHandleW(nullptr), dialog.Get(), owner,
                                   &XWindow::DialogProcedure, reinterpret_cast<LPARAM>(&form));
}

void HostForm::OnCreate() {
    if (created) created();
}

LRESULT HostForm::PreDispatch(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                              std::uint32_t* handled) {
    return route ? route(window, message, wParam, lParam, handled) : 0;
}

bool BringToFront(HWND window) {
    SetForegroundWindow(window);
    return PumpUntil([window] { return GetForegroundWindow() == window; }, 2000);
}
