// The real pointer, moved and pressed as by a mouse. Nothing is seen of it
// before messages are pumped or another thread does.
#pragma once

#include <windows.h>

enum class PointerButton { Left, Right, Middle };

// Of a client point of `window`.
POINT ScreenPoint(HWND window, LONG x, LONG y);
// Of the middle of a client rectangle.
POINT ScreenMiddle(HWND window, const RECT& rect);
// Of the middle of the whole client area.
POINT ScreenMiddle(HWND window);

// Moves the pointer to a point of the screen and pumps until it is there and the
// window under it has had the move.
void MovePointer(POINT screen);
void PressButton(PointerButton button = PointerButton::Left);
void ReleaseButton(PointerButton button = PointerButton::Left);
// By notches, positive away from the user.
void TurnWheel(int notches);

// Moves, presses and releases, then pumps. Waits first where it would otherwise
// be the second half of a double click.
void Click(POINT screen, PointerButton button = PointerButton::Left);
void DoubleClick(POINT screen, PointerButton button = PointerButton::Left);
