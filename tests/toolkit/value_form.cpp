#include "tests/toolkit/value_form.h"

#include <algorithm>

#include "tests/support/text.h"
#include "tests/ui/pointer.h"
#include "tests/ui/pump.h"

void ProbeValueList::OnSelChange() {
    calls.push_back("selected " + std::to_string(CurrentRow()));
}

void ProbeValueList::OnValueChanged(std::int32_t row) {
    calls.push_back("value " + std::to_string(row));
}

void ProbeValueList::OnRowContextMenu(std::int32_t x, std::int32_t y) {
    calls.push_back("menu " + std::to_string(x) + "," + std::to_string(y));
}

void ProbeValueList::OnRowDoubleClick(std::int32_t row) {
    calls.push_back("double " + std::to_string(row));
}

ValueForm::ValueForm(DWORD formStyle) {
    form.created = [this] { list.Create(form.Window()); };
    form.route = [this](HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                        std::uint32_t* flag) {
        if (message == WM_KEYDOWN) keysDown.push_back(wParam);
        if (message == WM_KEYUP) keysUp.push_back(wParam);
        return list.Route(window, message, wParam, lParam, flag);
    };
    DialogTemplate dialog(formStyle, 350, 302);
    dialog.Add({L"BUTTON", WS_VISIBLE | WS_TABSTOP, 120, 281, 50, 14, buttonId, L"Other"});
    form.Show(dialog);
}

std::int32_t ValueForm::Add(ValueKind kind, const wchar_t* name, const wchar_t* value,
                            const clValueRowParams& more) {
    clValueRowParams params = more;
    params.kind = kind;
    params.name.Assign(name);
    params.value.Assign(value);
    return list.AddRow(params);
}

void ValueForm::Fill(std::int32_t count) {
    for (std::int32_t i = 0; i < count; ++i) {
        const std::wstring name = L"row " + std::to_wstring(i);
        Add(ValueKind::Text, name.c_str(), L"");
    }
}

LRESULT ValueForm::Ask(UINT message, WPARAM wParam, LPARAM lParam) const {
    return SendMessageW(Box(), message, wParam, lParam);
}

std::string ValueForm::Value(std::int32_t row) const {
    return Utf8(list.Row(row)->value);
}

RECT ValueForm::RowRect(std::int32_t row) const {
    RECT rect = {};
    Ask(LB_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&rect));
    return rect;
}

POINT ValueForm::InRow(std::int32_t row, int x) const {
    const RECT rect = RowRect(row);
    return ScreenPoint(Box(), x, (rect.top + rect.bottom) / 2);
}

RECT ValueForm::Place(HWND child) const {
    RECT rect = {};
    GetWindowRect(child, &rect);
    MapWindowPoints(nullptr, Box(), reinterpret_cast<POINT*>(&rect), 2);
    return rect;
}

void ValueForm::FocusBox() const {
    SetFocus(Box());
    PumpMessages();
}

LRESULT ValueForm::Send(UINT message, WPARAM wParam, LPARAM lParam) {
    handled = 77;
    return list.Route(form.Window(), message, wParam, lParam, &handled);
}

LRESULT ValueForm::Draw(const Canvas& canvas, std::int32_t row, UINT state, const SIZE& size, int x,
                        int y) {
    DRAWITEMSTRUCT item = {};
    item.CtlType = ODT_LISTBOX;
    item.itemID = static_cast<UINT>(row);
    item.itemAction = ODA_DRAWENTIRE;
    item.itemState = state;
    item.hwndItem = Box();
    item.hDC = canvas.Dc();
    item.rcItem = {x, y, x + size.cx, y + size.cy};
    return Send(WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&item));
}

std::vector<std::string> ValueForm::Taken() {
    std::vector<std::string> taken;
    taken.swap(list.calls);
    return taken;
}

int ValueForm::Count(const std::string& call) const {
    return static_cast<int>(std::ranges::count(list.calls, call));
}

std::string WindowText(HWND window) {
    wchar_t text[500] = {};
    GetWindowTextW(window, text, 500);
    return Utf8(text);
}
