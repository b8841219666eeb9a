// The menu on the rows of a list of files.
#pragma once

#include <windows.h>

#include "toolkit/skin_menu.h"

// Loads the menu with its icons; one that cannot be loaded stays empty and shows
// nothing. The user interface thread, as below.
void PrepareRowMenu(XSkinMenu& menu);

// Shows it at the pointer and returns the command that was chosen (ID_CHECK_ALL and
// its neighbours), 0 for none. `owner` draws the menu and must be the form.
[[nodiscard]] int AskRowMenu(const XSkinMenu& menu, HWND owner);
