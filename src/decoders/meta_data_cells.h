// How a finished file's tags become the cells of its list row.
#pragma once

#include <cstdint>

#include "foundation/arrays.h"
#include "foundation/string.h"

// A value as a cell shows it: several values in it are parted by "; " in the
// place of each CR.
[[nodiscard]] clString CellText(const clString& value);

// Calls write(column, text) for each column (from 0) whose text is not empty,
// where text is that of `textOf(name)` as a cell shows it. A file without any
// tag, such as one that no decoder reads, has no cell written, whatever `textOf`
// would say. `tags` is a TagList or what was kept of one.
template <class Tags, class TextOf, class Write>
void WriteCells(const Tags& tags, const clStringList& columnNames, TextOf&& textOf, Write&& write) {
    if (tags.Count() == 0) return;
    for (std::int64_t column = 0; column < columnNames.Count(); ++column) {
        const clString text = CellText(textOf(*columnNames.At(column)));
        if (!text.IsEmpty()) write(column, text);
    }
}

// The same with the tag of each column's name: a tag that is named like a
// column of file facts overwrites that one's text too.
template <class Tags, class Write>
void WriteTagCells(const Tags& tags, const clStringList& columnNames, Write&& write) {
    WriteCells(
        tags, columnNames, [&tags](const clString& name) { return tags.Get(name); }, write);
}
