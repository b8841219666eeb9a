// The columns of a list of files. A column is nothing but its name: the exact
// title, which is at once the key of a file's fact and the name of a tag.
#pragma once

#include <cstdint>

#include "foundation/arrays.h"
#include "foundation/string.h"

// Lists of names with one CR between them, in the order in which the menu shows
// them. Names are case-sensitive unless an operation says otherwise.
//
// The columns that the directory entry fills; all others need a decoder.
extern const wchar_t* const directoryColumns;
// What the column menu offers as facts of the file: those above, and what
// derives from its decoder's answer.
extern const wchar_t* const fileColumns;
// What the menu offers as tags. Decoders add names of their own.
extern const wchar_t* const tagColumns;
// What both lists show before the user has chosen.
extern const wchar_t* const defaultColumns;

// Pixels. The table compares without regard to the case of A to Z; a name that
// it does not know is 150 wide.
[[nodiscard]] std::int32_t DefaultColumnWidth(const clString& name);
// Whether its texts, numbers mostly, end at the column's right edge. Exact.
[[nodiscard]] bool IsRightAligned(const clString& name);
// Pixels below which the user cannot drag a column: the first one holds the tick
// box and the picture of each row.
[[nodiscard]] std::int32_t LeastColumnWidth(bool first);

// Removes the names that the directory entry fills (exact compare): what is left
// needs a decoder. Empty names count as needing one.
void KeepDecoderColumns(clStringList& names);

// The columns of a list as two settings keep them: names and pixel widths, each
// with one CR between two, in display order.
struct SavedColumns {
    clString names;
    clString widths;
    // Appends a column to both.
    void Append(const clString& name, std::int32_t width);
};

// The width for column `position` (from 0) of the saved widths: 0, which stands
// for the default, where there is none or it is no number.
[[nodiscard]] std::int32_t SavedWidth(const clStringList& widths, std::int64_t position);
