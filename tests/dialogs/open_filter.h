// A filter in the tests' own process, worked from within its own loop.
#pragma once

#include <windows.h>

#include <functional>
#include <optional>
#include <string>

#include "decoders/audio_type.h"

// The dialog while its loop runs.
class ShownFilter {
public:
    explicit ShownFilter(HWND window) : dialog(window) {}

    HWND Dialog() const { return dialog; }
    // The list of the types.
    HWND Box() const { return FindWindowExW(dialog, nullptr, L"ListBox", nullptr); }
    int RowCount() const { return static_cast<int>(SendMessageW(Box(), LB_GETCOUNT, 0, 0)); }
    // The label of a row and the value that it began with, with ": " between.
    std::string RowText(int row) const;
    // Switches a row, as Space does.
    void Turn(int row) const;
    // Clicks a button.
    void Press(int id) const;
    void CloseByItsBox() const { SendMessageW(dialog, WM_CLOSE, 0, 0); }
    // Pixels of so many horizontal (x) and vertical (y) dialog units.
    POINT Units(int horizontal, int vertical) const;
    // Whether a row that is not selected shows exactly this now, pixel by pixel: the
    // box of that state, the type's picture (null is none) and the label.
    bool Shows(int row, bool included, HICON picture, const wchar_t* label) const;

private:
    HWND dialog;
};

// Runs the dialog over these types, `work` in its loop; behind it the dialog is
// closed, if it still stands. What EndDialog was given.
std::optional<INT_PTR> RunFilter(clAudioTypes& types,
                                 const std::function<void(const ShownFilter&)>& work,
                                 HWND owner = nullptr);
