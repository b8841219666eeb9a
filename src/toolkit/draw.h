// Gradients, and the sizes of icons.
#pragma once

#include <windows.h>

#include <cstdint>

#include "toolkit/coordinate.h"
#include "toolkit/gradient.h"

// Fills the rectangle, its right and bottom edges included. If each side is of
// one colour it runs from left to right, otherwise down the rows, each of which
// runs from its left to its right colour; a row of two colours ends before the
// right edge.
void DrawGradient(HDC context, const RECT& rectangle, const clCornerColours& colours);

// In pixels, from the icon's colour bitmap; 0 for null and for an icon without one.
std::int32_t IconWidth(HICON icon);
std::int32_t IconHeight(HICON icon);
// Both at once, for the price of one.
clExtent IconExtent(HICON icon);
