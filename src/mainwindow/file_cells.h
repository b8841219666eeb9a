// The cells of a row that need no decoder.
#pragma once

#include "decoders/file_row.h"
#include "foundation/string.h"

// What the directory entry says in the column of that name (exact); empty for
// every other column.
[[nodiscard]] clString DirectoryCellText(const FileRow& row, const clString& columnName);

// The size in whole KB, as the column "Size" shows it.
[[nodiscard]] clString SizeCellText(const FileRow& row);
