// A value list with rows of each kind that is edited in place.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "foundation/arrays.h"
#include "tests/toolkit/value_form.h"

// Two offsets of characters.
using Range = std::pair<int, int>;

// Rows: 0 a text, 1 a text to edit, 2 a combo, 3 a choice, 4 a text of three lines,
// 5 a text to edit with a button, 6 read-only, 7 to 9 as 1.
class EditorForm : public ValueForm {
public:
    EditorForm();

    void Select(std::int32_t row);
    // The edit field itself, within a combo too.
    HWND Field() const { return list.Editor().Control(); }
    Range Selected() const;
    void SetCaret(int start, int end) const;
    // Of an editor of this height in the row's middle.
    RECT InRowPlace(std::int32_t row, int left, int right, int height) const;

    clStringList choices;

    // What the callbacks were told; the value is that of the row at that moment.
    // Of all forms, since callbacks are plain functions; a new form and `Select`
    // empty it.
    static std::vector<std::string> told;
    static void NoteButton(XValueList& list, std::int32_t row);

private:
    static void NoteChange(XValueList& list);
};
