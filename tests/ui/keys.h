// The real keyboard: keys go to the window that has the focus, once messages are
// pumped.
#pragma once

#include <windows.h>

void HoldKey(WORD virtualKey);
void ReleaseKey(WORD virtualKey);
// Down and up, then pumps.
void PressKey(WORD virtualKey);
// With a key such as VK_CONTROL held.
void PressChord(WORD modifier, WORD virtualKey);
// Characters of the keyboard's layout, shifted where they need it.
void TypeText(const wchar_t* text);
