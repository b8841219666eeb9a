// Rows of value lists for the gallery.
#pragma once

#include <windows.h>

#include "toolkit/mem_bitmap.h"
#include "toolkit/value_list.h"

// The program's pictures for both kinds of switch.
void SetValueIcons(XValueList& list);
// A row of each kind, and what a kind has in variants.
void AddEveryKind(XValueList& list);
// Paints a row as if the list box had asked `form` for it; the state is ODS_*.
void CatchValueRow(XValueList& list, HWND form, std::int32_t row, UINT state, XMemBitmap& still);
// What a row of that kind is made from, with `ValueChoices` as its choices.
clValueRowParams ValueRow(ValueKind kind, const wchar_t* name, const wchar_t* value);
const clStringList& ValueChoices();
