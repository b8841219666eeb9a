// The program's own icons.
#pragma once

#include <windows.h>

#include "toolkit/gdi_handle.h"

// Pixels on each side of the icons that stand in lists, trees and menus.
inline constexpr int smallIconSize = 16;

// The form of that size of an icon among the program's resources; holds none if it
// cannot be loaded. Any thread.
[[nodiscard]] inline clIconHandle LoadIconResource(int id, int size = smallIconSize) {
    return clIconHandle(static_cast<HICON>(
        LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(id), IMAGE_ICON, size, size, 0)));
}
