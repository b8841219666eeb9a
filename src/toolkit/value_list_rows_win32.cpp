#include <memory>

#include "toolkit/coordinate.h"
#include "toolkit/dpi.h"
#include "toolkit/font.h"
#include "toolkit/value_list.h"

namespace {

constexpr COLORREF white = 0xFFFFFF;
constexpr clCornerColours bandColours = {0xFFFFFF, 0xF5EEDD, 0xFFFFFF, 0xFFFAEE};
constexpr COLORREF selectionBrush = 0xFFFAEE;
constexpr COLORREF selectionPen = 0xEBD8A8;
constexpr clCornerColours selectionColours = {0xF7F4EC, 0xF7F4EC, 0xF4EDDB, 0xF4EDDB};
constexpr clCornerColours headingColours = {0x808080, 0xFFFFFF, 0x808080, 0xFFFFFF};
constexpr COLORREF linkColour = 0xFF0000;
constexpr COLORREF hintColour = 128;
constexpr COLORREF disabledHintColour = 0xC0C0C0;

constexpr clArea wholeRow = {0, 0, anchor::end, anchor::end};
constexpr clArea insideRow = {3, 2, anchor::beforeEnd | 3, anchor::beforeEnd | 2};
constexpr clArea focusInRow = {3, 2, anchor::beforeEnd | 2, anchor::beforeEnd | 2};
constexpr std::int32_t middle = anchor::centred;
static_assert(middle == 0x90000 && (anchor::beforeEnd | 3) == 0x120003);

constexpr std::int32_t spaceBesideHeading = 4;

std::int32_t OrDefault(std::int32_t value, std::int32_t usual) {
    return value != 0 ? value : usual;
}

clTextString NameOf(const clValueRow& row, const clValueRowParams& params, std::int32_t size) {
    clTextString name;
    name.at = {row.nameX, middle};
    if (!IsSwitch(row.kind)) name.text.Assign(row.name);
    name.colour = params.nameColour;
    name.bold = params.bold;
    name.italic = params.italic;
    name.underline = params.underline;
    name.size = size;
    if (!IsSwitch(row.kind) && !row.value.IsEmpty()) name.maximumWidth = row.valueX - row.nameX;
    name.condition = value_state::nameShows;
    return name;
}

clTextGradient HeadingLine(const clValueRow& row, const clTextString& name) {
    const clScreenContext screen;
    clFont font;
    font.Create(nullptr, nullptr, name.size, name.colour, name.bold, name.italic, name.underline);
    const std::int32_t nameWidth = font.TextWidth(screen.Get(), row.name);
    clTextGradient line;
    line.area = {row.nameX + spaceBesideHeading + nameWidth, anchor::half, anchor::beforeEnd | 4,
                 anchor::half | 1};
    line.colours = headingColours;
    return line;
}

}  // namespace

std::int32_t XValueList::Scaled(std::int32_t coded) const {
    return pixelMode ? coded : ScaleCoded(coded, DisplayDpi());
}

std::int32_t XValueList::AddRow(const clValueRowParams& params) {
    if (listBox == nullptr) return -1;
    valueControl.CloseEditor();
    rows.push_back(std::make_unique<clValueRow>());
    clValueRow& row = *rows.back();
    row.kind = params.kind;
    row.name.Assign(params.name);
    row.nameX = Scaled(OrDefault(params.nameX, defaultNameX));
    row.valueX = Scaled(OrDefault(params.valueX, defaultValueX));
    row.value.Assign(params.value);
    row.readOnly = params.readOnly;
    for (std::int64_t i = 0; params.choices != nullptr && i < params.choices->Count(); ++i)
        row.choices.Add(*params.choices->At(i));
    row.buttonCaption.Assign(params.buttonCaption);
    row.buttonCallback = params.buttonCallback;
    row.changeCallback = params.changeCallback;
    row.lines = params.lines;
    row.toggleX = Scaled(OrDefault(params.toggleX, defaultNameX));
    row.valueWidth = Scaled(params.valueWidth);
    row.userData = params.userData;

    AddBackground(row);
    clTextIcon icon;
    icon.icon = params.icon;
    icon.at = {Scaled(params.iconX), middle};
    if (params.icon != nullptr) row.layout.AddIcon(icon);
    AddTexts(row, params);
    AddHints(row);
    AddSwitchIcons(row);
    clTextFrame focus;
    focus.area = focusInRow;
    focus.focus = true;
    focus.condition = value_state::focused;
    row.layout.AddFrame(focus);

    const clString text = ValueBoxString(row.name, row.value);
    Ask(LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.Chars()));
    return RowCount() - 1;
}

void XValueList::AddBackground(clValueRow& row) const {
    if (row.kind == ValueKind::Band) {
        clTextGradient band;
        band.area = wholeRow;
        band.colours = bandColours;
        row.layout.AddGradient(band);
    } else {
        row.layout.AddFill({.area = wholeRow, .colour = white});
    }
    clTextBox box;
    box.area = {1, 0, anchor::end, anchor::end};
    box.brushColour = selectionBrush;
    box.penColour = selectionPen;
    box.condition = value_state::selected;
    row.layout.AddBox(box);
    clTextGradient inside;
    inside.area = insideRow;
    inside.colours = selectionColours;
    inside.condition = value_state::selected;
    row.layout.AddGradient(inside);
}

// The name first and the value behind it: so painting finds them.
void XValueList::AddTexts(clValueRow& row, const clValueRowParams& params) const {
    const clTextString name = NameOf(row, params, OrDefault(params.nameSize, defaultNameSize));
    row.layout.AddText(name);
    if (row.kind == ValueKind::Heading) row.layout.AddGradient(HeadingLine(row, name));
    clTextString value;
    value.at = {row.valueX, middle};
    if (!IsSwitch(row.kind)) value.text.Assign(row.value);
    value.size = defaultValueSize;
    value.colour = row.kind == ValueKind::Link ? linkColour : params.valueColour;
    value.underline = row.kind == ValueKind::Link;
    value.condition = value_state::valueShows;
    row.layout.AddText(value);
}

// What tells of a button where it is not there itself.
void XValueList::AddHints(clValueRow& row) const {
    if (row.buttonCaption.IsEmpty()) return;
    clTextString hint;
    hint.at = {anchor::beforeEnd | anchor::lessSize | 4, middle};
    if (row.valueWidth != 0) hint.at.x = row.valueX + row.valueWidth + anchor::lessSize;
    hint.text.Assign(ValueButtonHint(row.buttonCaption));
    hint.size = defaultValueSize;
    hint.colour = hintColour;
    hint.condition = value_state::enabled | value_state::notSelected;
    row.layout.AddText(hint);
    hint.colour = disabledHintColour;
    hint.condition = value_state::readOnly;
    row.layout.AddText(hint);
}

void XValueList::AddSwitchIcons(clValueRow& row) const {
    if (!IsSwitch(row.kind)) return;
    const std::size_t first = static_cast<std::size_t>(
        row.kind == ValueKind::Toggle ? ToggleIcon::On : ToggleIcon::RadioOn);
    constexpr std::uint32_t conditions[] = {value_state::on, value_state::off};
    const auto add = [&](std::size_t which, std::uint32_t condition) {
        clTextIcon icon;
        icon.at = {row.toggleX, middle};
        icon.condition = condition;
        icon.external = &toggleIcons[which];
        row.layout.AddIcon(icon);
    };
    for (std::size_t i = 0; i < 2; ++i) {
        const bool hasDisabled = toggleIcons[first + 2 + i] != nullptr;
        add(first + i, conditions[i] | (hasDisabled ? value_state::enabled : 0));
    }
    for (std::size_t i = 0; i < 2; ++i) {
        if (toggleIcons[first + 2 + i] == nullptr) continue;
        add(first + 2 + i, conditions[i] | value_state::readOnly);
    }
}
