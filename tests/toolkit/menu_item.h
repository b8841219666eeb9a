// A menu item that AppendMenuW does not make.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <string>

// Appends an item with a submenu and without an id, as an extended menu resource may
// have it; AppendMenuW gives it one of its own.
inline void AppendWithoutId(HMENU menu, const wchar_t* text, HMENU submenu) {
    std::wstring copy = text;
    MENUITEMINFOW info = {};
    info.cbSize = sizeof(info);
    info.fMask = MIIM_STRING | MIIM_SUBMENU | MIIM_ID;
    info.dwTypeData = copy.data();
    info.hSubMenu = submenu;
    EXPECT_TRUE(InsertMenuItemW(menu, static_cast<UINT>(GetMenuItemCount(menu)), TRUE, &info));
}
