#include "toolkit/value_rules.h"

#include <algorithm>

#include "toolkit/dpi.h"

namespace {

constexpr std::int32_t pixelBits = 0xFFFF;
// The frame of an editor lies around its text.
constexpr std::int32_t editorFrame = 5;
constexpr std::int32_t spaceBesideHint = 7;

// The platform's key codes; value_list_editor_keys_win32.cpp compares them with
// its header.
constexpr std::uint32_t keySpace = 0x20;
constexpr std::uint32_t keyUp = 0x26;
constexpr std::uint32_t keyDown = 0x28;

}  // namespace

bool IsSwitch(ValueKind kind) {
    return kind == ValueKind::Toggle || kind == ValueKind::Radio;
}

bool HasEditor(ValueKind kind) {
    return kind == ValueKind::Edit || kind == ValueKind::Combo || kind == ValueKind::Choice;
}

std::uint32_t ValueState(const ValueLook& look, ValueKind kind, bool isOn) {
    std::uint32_t state = look.readOnly ? value_state::readOnly : value_state::enabled;
    state += look.selected ? value_state::selected : value_state::notSelected;
    state += look.focused ? value_state::focused : value_state::notFocused;
    if (!look.nameUnderEditor) state += value_state::nameShows;
    if (!look.valueUnderEditor) state += value_state::valueShows;
    if (IsSwitch(kind)) state += isOn ? value_state::on : value_state::off;
    return state;
}

bool IsValueOn(ValueKind kind, const clString& value) {
    if (kind == ValueKind::Toggle) return value.ToInt() != 0;
    if (kind == ValueKind::Radio) return value.ToInt() < 0;
    return false;
}

clString NegatedValue(const clString& value) {
    // Unsigned: the least number has no opposite, and stays.
    return clString(
        static_cast<std::int64_t>(std::uint64_t{0} - static_cast<std::uint64_t>(value.ToInt())));
}

clString ValueDisplayText(const clString& value) {
    const std::int32_t lineEnd = value.FindChar(L'\r');
    if (lineEnd == 0) return value;
    clString shown = value.Left(lineEnd - 1);
    shown.Append(L"...");
    return shown;
}

clString ValueButtonHint(const clString& caption) {
    clString hint(L"[ ");
    hint.Append(caption);
    hint.Append(L" ]");
    return hint;
}

clString ValueBoxString(const clString& name, const clString& value) {
    clString text = name;
    if (!name.IsEmpty() && !value.IsEmpty()) text.Append(L": ");
    text.Append(value);
    return text;
}

std::optional<ValueCompletion> CompleteValue(const clString& typed, const clStringList& items) {
    if (typed.IsEmpty()) return std::nullopt;
    for (std::int64_t i = 0; i < items.Count(); ++i) {
        const clString& item = *items.At(i);
        if (item.CompareNoCase(typed, POS_LAST) != 0) continue;
        ValueCompletion completion = {typed, typed.Length()};
        completion.text.Append(item.Mid(typed.Length() + 1));
        return completion;
    }
    return std::nullopt;
}

bool IsCompletionKey(std::uint32_t virtualKey) {
    return (virtualKey >= 'A' && virtualKey <= 'Z') || (virtualKey >= '0' && virtualKey <= '9') ||
           virtualKey == keySpace;
}

std::int32_t ChoiceOf(const clString& value, const clStringList& choices) {
    for (std::int64_t i = choices.Count() - 1; i >= 0; --i) {
        if (choices.At(i)->Equals(value)) return static_cast<std::int32_t>(i);
    }
    return 0;
}

std::int32_t ScaleCoded(std::int32_t coded, std::int32_t dpi) {
    return (coded & ~pixelBits) | (ScaleByDpi(coded & pixelBits, dpi) & pixelBits);
}

ValueEditorPlaces PlaceValueEditor(const ValueEditorSpace& space) {
    const std::int32_t rowWidth = space.row.right - space.row.left;
    const std::int32_t rowHeight = space.row.bottom - space.row.top;
    const std::int32_t left = ResolveCoordinate(space.valueX, rowWidth, 0) - editorFrame;
    const std::int32_t width = space.valueWidth != 0 ? space.valueWidth : rowWidth - left - 1;
    const std::int32_t height = space.lineHeight * std::max(space.lines, 1);
    std::int32_t top = space.row.top + (rowHeight - space.lineHeight) / 2;
    if (space.lines > 1 && top + height > space.clientHeight) top -= height - space.lineHeight;
    const std::int32_t right = left + width;
    const std::int32_t split = right - space.buttonWidth;
    ValueEditorPlaces places = {{left, top, split, top + height}, {}};
    if (space.buttonWidth != 0) places.button = {split, top, right, top + height};
    return places;
}

std::int32_t ValueTextWidth(std::int32_t rowWidth, std::int32_t valueX, std::int32_t valueWidth,
                            std::int32_t hintWidth) {
    std::int32_t width = rowWidth - ResolveCoordinate(valueX, rowWidth, 0);
    if (hintWidth != 0) {
        if (valueWidth != 0) width = valueWidth;
        width -= hintWidth + spaceBesideHint;
    }
    // 0 would stand for no limit.
    return std::max(width, 1);
}

bool HitsSwitch(std::int32_t x, const ValueSwitchZone& zone) {
    if (x < 0 || x > zone.rowWidth) return false;
    if (zone.wholeRow) return true;
    const std::int32_t left = ResolveCoordinate(zone.iconLeft, zone.rowWidth, zone.iconWidth);
    return x >= left && x <= left + zone.iconWidth;
}

std::int32_t ValueRowAt(std::int32_t y, std::int32_t rowHeight, std::int32_t topRow,
                        std::int32_t count) {
    if (count <= 0 || rowHeight <= 0) return -1;
    return std::clamp(y / rowHeight + topRow, 0, count - 1);
}

std::int32_t ValuePageTarget(std::int32_t current, std::int32_t direction, std::int32_t listHeight,
                             std::int32_t rowHeight, std::int32_t count) {
    if (count <= 0 || rowHeight <= 0) return -1;
    return std::clamp(current + direction * (listHeight / rowHeight), 0, count - 1);
}

std::int32_t ValueArrowStep(std::uint32_t virtualKey, std::int32_t lines, const ValueCaret& caret) {
    if (virtualKey != keyUp && virtualKey != keyDown) return 0;
    const bool isUp = virtualKey == keyUp;
    const std::int32_t step = isUp ? -1 : 1;
    if (lines == 0) return step;
    if (caret.selection) return 0;
    return (isUp ? caret.line <= 0 : caret.line >= caret.lineCount - 1) ? step : 0;
}

std::int32_t ValueDropPlace(std::int32_t dragged, std::int32_t before, bool firstIsBand) {
    const std::int32_t place = firstIsBand ? std::max(before, 1) : before;
    // Its own place is free again once it is taken out.
    return place > dragged ? place - 1 : place;
}
