// What a list view decides, apart from the control that it decides for.
#pragma once

#include <cstdint>
#include <optional>

#include "foundation/arrays.h"

// The zone of the check box is the 21 pixels from the left edge of column 0 on.
// Both positions in the same coordinates. A point to the left of the column
// counts as far to the right of it.
bool IsInCheckZone(std::int32_t pointerX, std::int32_t firstColumnLeft);

// State image bits of a row whose check box is clicked: from image 1, not
// ticked, to image 2, and from any other image to image 1. `state` is a row's
// state, of which the bits 0xF000 hold the image; the result has only those.
std::uint32_t ToggledCheckState(std::uint32_t state);

// What a change of a row's state means.
struct ListStateChange {
    bool selectionFlipped;
    bool selected;      // the new state
    bool checkFlipped;  // the state image is another
};
// `changedMask` tells which parts of the row changed; only a change of the state
// and nothing else means anything here.
ListStateChange LookAtStateChange(std::uint32_t changedMask, std::uint32_t oldState,
                                  std::uint32_t newState);

// A change that a header announces.
struct HeaderChange {
    bool hasItem;        // without one the other fields say nothing
    std::uint32_t mask;  // the parts of the header item that change
    std::int32_t column;
    std::int32_t width;  // pixels
};
// The least width of the column, in pixels, if the change is one of the width
// alone and goes below it; nothing if the change may pass. `minimums` has one
// entry per column; a column behind its end is free.
std::optional<std::int32_t> WidthToKeep(const HeaderChange& change, const clPtrArray& minimums);

// As much of `text` as fits with its terminator into a buffer of `bufferSize`
// characters. 0 tells nothing about the buffer: the whole text then.
clString TextForBuffer(const clString& text, std::int32_t bufferSize);

// What a key does in the in-place editor.
enum class EditorKey { Pass, Left, Right, Up, Down, Commit, Cancel };

// The selection of an edit field: positions before the first and behind the last
// selected character, equal if nothing is selected.
struct EditSelection {
    std::int32_t start;
    std::int32_t end;
};
// `virtualKey` is the platform's code, `textLength` the characters in the field.
// Inside the text with nothing selected the arrows belong to the field.
EditorKey EditorKeyMeaning(std::uint32_t virtualKey, const EditSelection& selection,
                           std::int32_t textLength);

// The next column from `from` in the direction `step` (1 or -1), below
// `columnCount`, that `canEdit(column)` accepts; -1 if there is none.
template <class CanEdit>
std::int32_t NextEditableColumn(std::int32_t from, std::int32_t step, std::int32_t columnCount,
                                CanEdit canEdit) {
    for (std::int32_t column = from + step; column >= 0 && column < columnCount; column += step) {
        if (canEdit(column)) return column;
    }
    return -1;
}
