// Rows of value lists for the gallery.
#pragma once

#include <windows.h>

#include "toolkit/mem_bitmap.h"
#include "toolkit/value_list.h"

// The program's pictures for both kinds of switch.
void SetValueIcons(XValueList& list);
// A row of each kind, and what a kind has in variants.
void AddEveryKind(XValueList& list);
// Paints a row as the list box `form` would ask for it; ODS_* are the states.
void CatchValueRow(XValueList& list, HWND form, std::int32_t row, UINT state, XMemBitmap& still);
// A row of that kind with three choices.
clValueRowParams ValueRow(ValueKind kind, const wchar_t* name, const wchar_t* value);
const clStringList& ValueChoices();
