// A list of files as the reader's queue and pump see it: rows on display, each
// with a parameter that is the index of its FileRow in the list's row array.
#pragma once

#include <cstdint>
#include <vector>

#include "decoders/file_row.h"

// What the owner of a list tells of it. Display rows count from 0. User
// interface thread.
class ListedRows {
public:
    virtual ~ListedRows() = default;

    virtual std::int32_t Count() const = 0;
    // The item parameter of a display row: an index, or any other value.
    virtual std::int64_t ParamAt(std::int32_t displayRow) const = 0;
    // Element `param` of the row array, which owns it; null outside the array.
    virtual FileRow* RowOf(std::int64_t param) const = 0;
};

// Finds the display row of a parameter without walking the list for each one.
// Sorting, adding and deleting rows need not be reported: an answer is checked
// against the list before it is given. No locks.
class DisplayRowIndex {
public:
    // Begins a run of questions during which the display order stays as it is.
    void BeginPass() { walked_ = false; }
    // The first display row with that parameter (0 or above), or -1. Walks the
    // list at most once in a pass, and only if a row has moved since the last.
    std::int32_t Find(const ListedRows& rows, std::int64_t param);

private:
    bool IsRight(const ListedRows& rows, std::int64_t param) const;
    void Walk(const ListedRows& rows);

    std::vector<std::int32_t> displayRows_;  // by parameter; -1 for none
    bool walked_ = false;
};
