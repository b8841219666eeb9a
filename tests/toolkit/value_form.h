// A form with one real value list, and a record of what the list tells.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <vector>

#include "tests/ui/host_form.h"
#include "tests/ui/pixels.h"
#include "toolkit/value_list.h"

// Writes down each operation as one line.
class ProbeValueList final : public XValueList {
public:
    void OnSelChange() override;
    void OnValueChanged(std::int32_t row) override;
    void OnRowContextMenu(std::int32_t x, std::int32_t y) override;
    void OnRowDoubleClick(std::int32_t row) override;

    using XValueList::SetDragMessage;
    using XValueList::SetPixelMode;

    std::vector<std::string> calls;
};

// A dialog whose messages are offered to the list alone, and posted keys that
// reach the dialog itself are counted. Beside the list it has a button.
class ValueForm {
public:
    explicit ValueForm(DWORD formStyle = visibleForm);

    // Declared first, so that it still hears what the end of its window sends.
    ProbeValueList list;
    HostForm form;

    static constexpr int buttonId = 77;

    // Appends a row; returns its index.
    std::int32_t Add(ValueKind kind, const wchar_t* name, const wchar_t* value,
                     const clValueRowParams& more = {});
    // Rows "row 0" and so on, without values.
    void Fill(std::int32_t count);
    HWND Box() const { return list.ListBox(); }
    HWND Edit() const { return list.Editor().EditorWindow(); }
    HWND Button() const { return list.Editor().ButtonWindow(); }
    LRESULT Ask(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
    std::string Value(std::int32_t row) const;
    RECT RowRect(std::int32_t row) const;
    // A point of the screen, in the middle of the row's height.
    POINT InRow(std::int32_t row, int x) const;
    // Where a child of the list box lies in it.
    RECT Place(HWND child) const;
    // The focus, and pumped.
    void FocusBox() const;
    // Gives `Route` a message as the form would; `handled` is what it leaves.
    LRESULT Send(UINT message, WPARAM wParam, LPARAM lParam);
    // Paints a row, in the list's own way, at (`x`, `y`) of a canvas. Row -1 is none.
    LRESULT Draw(const Canvas& canvas, std::int32_t row, UINT state, const SIZE& size = {300, 21},
                 int x = 0, int y = 0);
    // The calls since the last time.
    std::vector<std::string> Taken();
    // How many of the calls are this one.
    int Count(const std::string& call) const;

    std::uint32_t handled = 0;
    // Virtual keys whose messages reached the dialog itself.
    std::vector<WPARAM> keysDown;
    std::vector<WPARAM> keysUp;
};

std::string WindowText(HWND window);
