// What a value list decides, apart from the controls that it decides for.
#pragma once

#include <cstdint>
#include <optional>

#include "foundation/arrays.h"
#include "foundation/string.h"
#include "toolkit/coordinate.h"

// What a row is, and by what its value is edited.
enum class ValueKind : std::uint32_t {
    Text = 0,
    FixedText = 1,  // as Text; the name that shows is the one it was added with
    Link = 2,       // blue and underlined; a double click opens it
    Heading = 3,    // a line runs behind the name
    Band = 4,       // as Text, on a gradient
    Edit = 5,       // a text
    Combo = 6,      // a text with suggestions
    Choice = 7,     // one of the choices
    Toggle = 8,     // "1" is on; what reads as 0 is off
    Radio = 9,      // the number of its group; negative for the chosen one
};

// Toggle and Radio: icons stand for the value.
bool IsSwitch(ValueKind kind);
// Edit, Combo and Choice.
bool HasEditor(ValueKind kind);

// The state flags of a row, added up. A condition with several bits needs them all.
namespace value_state {

inline constexpr std::uint32_t enabled = 1;
inline constexpr std::uint32_t readOnly = 2;
inline constexpr std::uint32_t selected = 4;
inline constexpr std::uint32_t notSelected = 8;
inline constexpr std::uint32_t off = 16;
inline constexpr std::uint32_t on = 32;
inline constexpr std::uint32_t focused = 64;
inline constexpr std::uint32_t notFocused = 128;
inline constexpr std::uint32_t nameShows = 256;   // it is not being edited
inline constexpr std::uint32_t valueShows = 512;  // no editor covers it

}  // namespace value_state

struct ValueLook {
    bool readOnly = false;
    bool selected = false;
    bool focused = false;
    bool nameUnderEditor = false;
    bool valueUnderEditor = false;
};
// The flags for a row that looks like that; `isOn` only counts for a switch.
std::uint32_t ValueState(const ValueLook& look, ValueKind kind, bool isOn);

// Whether a switch with this value is on; false for all other kinds.
bool IsValueOn(ValueKind kind, const clString& value);

// Switches a row on or off. `at(row)` gives a row, whose `kind` and `value` are
// read and written, for rows from 0 to less than `count`. A radio row that is
// switched on switches off the one of its group that was. Of another kind, and
// outside the rows, nothing happens.
template <class At>
void SwitchValue(bool on, std::int32_t row, std::int32_t count, At at);

// The first line, with "..." for everything from its end on.
clString ValueDisplayText(const clString& value);
// What stands for a button with that caption on a row that does not have it now.
clString ValueButtonHint(const clString& caption);
// What a list box holds for a row; never shown.
clString ValueBoxString(const clString& name, const clString& value);

// A text with the rest of the item that completes it.
struct ValueCompletion {
    clString text;
    std::int32_t typedLength;  // characters before the appended part
};
// The first item that begins with `typed`, without regard to case, completes it.
// Nothing if there is none, or nothing was typed.
std::optional<ValueCompletion> CompleteValue(const clString& typed, const clStringList& items);
// Whether the key, a virtual one, writes something that may be completed.
bool IsCompletionKey(std::uint32_t virtualKey);
// The last choice equal to the value, or else the first.
std::int32_t ChoiceOf(const clString& value, const clStringList& choices);

// A coded coordinate (see coordinate.h) on a display of `dpi`: the number of
// pixels is scaled, the flags stay.
std::int32_t ScaleCoded(std::int32_t coded, std::int32_t dpi);

// Where the editor of a row and its button go, from what is known of the row.
// Pixels; edges in the coordinates of the list box.
struct ValueEditorSpace {
    clArea row;
    std::int32_t clientHeight = 0;  // of the list box
    std::int32_t valueX = 0;        // coded
    std::int32_t valueWidth = 0;    // 0 is up to the end of the row
    std::int32_t lineHeight = 0;    // of an editor with one line
    std::int32_t lines = 0;         // 0 and 1 are both one line
    std::int32_t buttonWidth = 0;   // 0 is no button
};
struct ValueEditorPlaces {
    clArea editor;
    clArea button;  // empty without one
};
ValueEditorPlaces PlaceValueEditor(const ValueEditorSpace& space);

// The most that a painted value may take, at least 1: in pixels, from a coded x.
// `hintWidth` is that of a button's hint that shows; 0 is none.
std::int32_t ValueTextWidth(std::int32_t rowWidth, std::int32_t valueX, std::int32_t valueWidth,
                            std::int32_t hintWidth);

// Whether a press at `x` of a row falls on its switch: both edges of the icon
// count, or the whole row where that is what takes presses.
struct ValueSwitchZone {
    std::int32_t rowWidth;
    std::int32_t iconLeft;  // coded
    std::int32_t iconWidth;
    bool wholeRow;
};
bool HitsSwitch(std::int32_t x, const ValueSwitchZone& zone);

// The row at `y` of a list that shows `topRow` first, held to the rows; -1
// without rows.
std::int32_t ValueRowAt(std::int32_t y, std::int32_t rowHeight, std::int32_t topRow,
                        std::int32_t count);
// The row a page down (`direction` 1) or up (-1), held to the rows; -1 without rows.
std::int32_t ValuePageTarget(std::int32_t current, std::int32_t direction, std::int32_t listHeight,
                             std::int32_t rowHeight, std::int32_t count);

// Where in an editor the arrows up and down were pressed.
struct ValueCaret {
    bool selection;     // something is selected
    std::int32_t line;  // from 0
    std::int32_t lineCount;
};
// The rows by which such a key moves the selection of the list: -1, 1, or 0 if
// the key, a virtual one, is the editor's. `lines` are those of the row.
std::int32_t ValueArrowStep(std::uint32_t virtualKey, std::int32_t lines, const ValueCaret& caret);

// The place of a dragged row once it is dropped in front of row `before`. Nothing
// goes in front of a first row that is a band.
std::int32_t ValueDropPlace(std::int32_t dragged, std::int32_t before, bool firstIsBand);

// The value of a radio row with the other sign.
clString NegatedValue(const clString& value);

template <class At>
void SwitchValue(bool on, std::int32_t row, std::int32_t count, At at) {
    if (row < 0 || row >= count) return;
    auto& switched = at(row);
    if (switched.kind == ValueKind::Toggle) switched.value.Assign(on ? L"1" : L"");
    if (switched.kind != ValueKind::Radio) return;
    const clString chosen =
        switched.value.ToInt() < 0 ? switched.value : NegatedValue(switched.value);
    if (!on) {
        if (switched.value.ToInt() < 0) switched.value.Assign(NegatedValue(switched.value));
        return;
    }
    for (std::int32_t i = 0; i < count; ++i) {
        auto& other = at(i);
        if (other.kind != ValueKind::Radio || other.value.ToInt() != chosen.ToInt()) continue;
        other.value.Assign(NegatedValue(other.value));
    }
    switched.value.Assign(NegatedValue(switched.value));
}
