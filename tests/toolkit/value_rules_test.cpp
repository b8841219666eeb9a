#include "toolkit/value_rules.h"

#include <gtest/gtest.h>

#include <vector>

#include "tests/support/text.h"

namespace {

constexpr std::int32_t end = anchor::end;

TEST(ValueState, AddsUpWhatARowLooksLike) {
    struct Row {
        ValueLook look;
        ValueKind kind;
        bool isOn;
        std::uint32_t state;
    };
    const Row rows[] = {
        {{}, ValueKind::Text, false, 1 + 8 + 128 + 256 + 512},
        {{.readOnly = true}, ValueKind::Text, false, 2 + 8 + 128 + 256 + 512},
        {{.selected = true}, ValueKind::Edit, false, 1 + 4 + 128 + 256 + 512},
        {{.focused = true}, ValueKind::Edit, false, 1 + 8 + 64 + 256 + 512},
        {{.nameUnderEditor = true}, ValueKind::Edit, false, 1 + 8 + 128 + 512},
        {{.selected = true, .valueUnderEditor = true}, ValueKind::Edit, false, 1 + 4 + 128 + 256},
        {{}, ValueKind::Toggle, true, 1 + 8 + 128 + 256 + 512 + 32},
        {{}, ValueKind::Toggle, false, 1 + 8 + 128 + 256 + 512 + 16},
        {{.readOnly = true}, ValueKind::Radio, true, 2 + 8 + 128 + 256 + 512 + 32},
        {{}, ValueKind::Choice, true, 1 + 8 + 128 + 256 + 512},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(ValueState(row.look, row.kind, row.isOn), row.state) << &row - rows;
    }
}

// A condition of two bits needs both.
TEST(ValueState, AnswersTheConditionsOfALayout) {
    struct Row {
        bool readOnly;
        bool selected;
        bool isOn;
        std::vector<std::uint32_t> shown;
    };
    const Row rows[] = {
        {false, false, true, {1, 8, 9, 32, 33}},  {false, true, true, {1, 4, 32, 33}},
        {true, false, true, {2, 8, 32, 34}},      {true, true, true, {2, 4, 32, 34}},
        {false, false, false, {1, 8, 9, 16, 17}}, {true, false, false, {2, 8, 16, 18}},
    };
    for (const Row& row : rows) {
        const ValueLook look = {.readOnly = row.readOnly, .selected = row.selected};
        const std::uint32_t state = ValueState(look, ValueKind::Toggle, row.isOn);
        std::vector<std::uint32_t> shown;
        for (const std::uint32_t condition : {1U, 2U, 4U, 8U, 9U, 16U, 17U, 18U, 32U, 33U, 34U})
            if (ConditionHolds(condition, state)) shown.push_back(condition);
        EXPECT_EQ(shown, row.shown) << &row - rows;
    }
}

TEST(ValueKinds, HaveTheirNumbersAndParts) {
    for (std::uint32_t number = 0; number < 11; ++number) {
        const auto kind = static_cast<ValueKind>(number);
        EXPECT_EQ(HasEditor(kind), number >= 5 && number <= 7) << number;
        EXPECT_EQ(IsSwitch(kind), number == 8 || number == 9) << number;
    }
    EXPECT_EQ(static_cast<int>(ValueKind::Link), 2);
    EXPECT_EQ(static_cast<int>(ValueKind::Heading), 3);
    EXPECT_EQ(static_cast<int>(ValueKind::Band), 4);
    EXPECT_EQ(static_cast<int>(ValueKind::Combo), 6);
    EXPECT_EQ(static_cast<int>(ValueKind::Toggle), 8);
}

TEST(ValueSwitchRule, ReadsWhetherItIsOn) {
    struct Row {
        ValueKind kind;
        const wchar_t* value;
        bool isOn;
    };
    const Row rows[] = {
        {ValueKind::Toggle, L"1", true},   {ValueKind::Toggle, L"0", false},
        {ValueKind::Toggle, L"", false},   {ValueKind::Toggle, L"-2", true},
        {ValueKind::Toggle, L"on", false}, {ValueKind::Toggle, L"2x", true},
        {ValueKind::Radio, L"3", false},   {ValueKind::Radio, L"-3", true},
        {ValueKind::Radio, L"0", false},   {ValueKind::Radio, L"", false},
        {ValueKind::Text, L"1", false},    {ValueKind::Edit, L"-1", false},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(IsValueOn(row.kind, row.value), row.isOn) << Utf8(row.value);
    }
}

struct SwitchRow {
    ValueKind kind;
    clString value;
};

std::string AfterSwitching(bool on, std::int32_t row) {
    std::vector<SwitchRow> rows = {
        {ValueKind::Toggle, L"0"}, {ValueKind::Radio, L"7"}, {ValueKind::Radio, L"-7"},
        {ValueKind::Radio, L"8"},  {ValueKind::Text, L"-7"}, {ValueKind::Toggle, L"-7"},
        {ValueKind::Radio, L"0"},
    };
    SwitchValue(
        on, row, static_cast<std::int32_t>(rows.size()), [&rows](std::int32_t at) -> auto& {
            return rows[static_cast<std::size_t>(at)];
        });
    std::string values;
    for (const SwitchRow& each : rows)
        values += Utf8(each.value) + "|";
    return values;
}

TEST(ValueSwitchRule, ChangesTheRowAndTheChosenOneOfItsGroup) {
    struct Row {
        bool on;
        std::int32_t row;
        const char* values;
    };
    const char* const same = "0|7|-7|8|-7|-7|0|";
    const Row rows[] = {
        {true, 0, "1|7|-7|8|-7|-7|0|"},
        {false, 0, "|7|-7|8|-7|-7|0|"},
        {true, 1, "0|-7|7|8|-7|-7|0|"},
        {true, 2, same},
        {true, 3, "0|7|-7|-8|-7|-7|0|"},
        {false, 2, "0|7|7|8|-7|-7|0|"},
        {false, 1, same},
        {true, 4, same},
        {true, 5, "0|7|-7|8|-7|1|0|"},
        {true, 6, same},
        {true, 7, same},
        {true, -1, same},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(AfterSwitching(row.on, row.row), row.values) << row.on << " " << row.row;
    }
}

TEST(ValueText, ShowsTheFirstLine) {
    struct Row {
        const wchar_t* value;
        const char* shown;
    };
    const Row rows[] = {
        {L"", ""},
        {L"one", "one"},
        {L"one\r\ntwo", "one..."},
        {L"\rtwo", "..."},
        {L"one\r", "one..."},
        {L"one\ntwo", "one\ntwo"},
        {L"a\rb\rc", "a..."},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(Utf8(ValueDisplayText(row.value)), row.shown);
    }
}

TEST(ValueText, NamesARowForTheListBox) {
    EXPECT_EQ(Utf8(ValueBoxString(L"name", L"value")), "name: value");
    EXPECT_EQ(Utf8(ValueBoxString(L"name", L"")), "name");
    EXPECT_EQ(Utf8(ValueBoxString(L"", L"value")), "value");
    EXPECT_EQ(Utf8(ValueBoxString(L"", L"")), "");
    EXPECT_EQ(Utf8(ValueButtonHint(L"Pick")), "[ Pick ]");
}

TEST(ValueCompletionRule, TakesTheFirstItemThatBeginsAlike) {
    clStringList items;
    for (const wchar_t* item : {L"Apple", L"apricot", L"APPLE PIE", L"b\u00C4r"})
        items.Add(item);
    struct Row {
        const wchar_t* typed;
        const char* text;  // null for none
    };
    const Row rows[] = {
        {L"", nullptr},      {L"a", "apple"},          {L"APR", "APRicot"},
        {L"apple", "apple"}, {L"apple ", "apple PIE"}, {L"apples", nullptr},
        {L"pple", nullptr},  {L"b\u00E4", nullptr},    {L"B", "B\u00C4r"},
    };
    for (const Row& row : rows) {
        const auto completion = CompleteValue(row.typed, items);
        ASSERT_EQ(completion.has_value(), row.text != nullptr) << Utf8(row.typed);
        if (!completion) continue;
        EXPECT_EQ(Utf8(completion->text), row.text);
        EXPECT_EQ(completion->typedLength, clString(row.typed).Length());
    }
}

TEST(ValueCompletionRule, NeedsSomethingTyped) {
    clStringList items;
    items.Add(L"");
    items.Add(L"Apple");
    EXPECT_FALSE(CompleteValue(L"", items).has_value());
    EXPECT_TRUE(CompleteValue(L"a", items).has_value());
}

TEST(ValueCompletionRule, RunsForLettersDigitsAndSpace) {
    for (std::uint32_t key = 0; key < 256; ++key) {
        const bool completes =
            (key >= 0x30 && key <= 0x39) || (key >= 0x41 && key <= 0x5A) || key == 0x20;
        EXPECT_EQ(IsCompletionKey(key), completes) << key;
    }
}

TEST(ValueChoiceRule, TakesTheLastEqualOneOrTheFirst) {
    clStringList choices;
    for (const wchar_t* choice : {L"one", L"two", L"one", L"Two"})
        choices.Add(choice);
    EXPECT_EQ(ChoiceOf(L"one", choices), 2);
    EXPECT_EQ(ChoiceOf(L"two", choices), 1);
    EXPECT_EQ(ChoiceOf(L"Two", choices), 3);
    EXPECT_EQ(ChoiceOf(L"three", choices), 0);
    EXPECT_EQ(ChoiceOf(L"one", clStringList()), 0);
}

TEST(ValueCoordinate, ScalesThePixelsAndKeepsTheFlags) {
    struct Row {
        std::int32_t coded;
        std::int32_t dpi;
        std::int32_t scaled;
    };
    const Row rows[] = {
        {0, 144, 0},
        {4, 96, 4},
        {5, 144, 7},
        {150, 120, 187},
        {0x90000, 144, 0x90000},
        {0x120004, 144, 0x120006},
        {0xFFFF, 96, 0xFFFF},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(ScaleCoded(row.coded, row.dpi), row.scaled) << row.coded;
    }
}

TEST(ValueEditorPlace, FollowsTheRow) {
    struct Row {
        ValueEditorSpace space;
        clArea editor;
        clArea button;
    };
    const clArea row = {0, 42, 400, 63};
    const Row rows[] = {
        // Up to one pixel before the end of the row.
        {{row, 300, 150, 0, 21, 0, 0}, {145, 42, 399, 63}, {}},
        {{row, 300, 150, 100, 21, 0, 0}, {145, 42, 245, 63}, {}},
        {{row, 300, 150, 0, 21, 0, 50}, {145, 42, 349, 63}, {349, 42, 399, 63}},
        {{row, 300, 150, 100, 21, 1, 30}, {145, 42, 215, 63}, {215, 42, 245, 63}},
        // In the middle of a row of another height.
        {{{0, 42, 400, 73}, 300, 150, 0, 21, 0, 0}, {145, 47, 399, 68}, {}},
        {{{0, 42, 400, 52}, 300, 150, 0, 21, 0, 0}, {145, 37, 399, 58}, {}},
        // Lines, downwards and, from where they would not fit, upwards.
        {{row, 105, 150, 0, 21, 3, 0}, {145, 42, 399, 105}, {}},
        {{row, 104, 150, 0, 21, 3, 0}, {145, 0, 399, 63}, {}},
        {{row, 50, 150, 0, 21, 1, 0}, {145, 42, 399, 63}, {}},
        // Anchored to the end of the row.
        {{row, 300, end | anchor::negative | 80, 0, 21, 0, 0}, {315, 42, 399, 63}, {}},
    };
    for (const Row& each : rows) {
        const ValueEditorPlaces places = PlaceValueEditor(each.space);
        const auto number = &each - rows;
        EXPECT_EQ(places.editor.left, each.editor.left) << number;
        EXPECT_EQ(places.editor.top, each.editor.top) << number;
        EXPECT_EQ(places.editor.right, each.editor.right) << number;
        EXPECT_EQ(places.editor.bottom, each.editor.bottom) << number;
        EXPECT_EQ(places.button.left, each.button.left) << number;
        EXPECT_EQ(places.button.top, each.button.top) << number;
        EXPECT_EQ(places.button.right, each.button.right) << number;
        EXPECT_EQ(places.button.bottom, each.button.bottom) << number;
    }
}

TEST(ValueTextWidthRule, LeavesRoomForAHint) {
    EXPECT_EQ(ValueTextWidth(400, 150, 0, 0), 250);
    EXPECT_EQ(ValueTextWidth(400, 150, 90, 0), 250);  // without a hint up to the end
    EXPECT_EQ(ValueTextWidth(400, 150, 0, 40), 203);
    EXPECT_EQ(ValueTextWidth(400, 150, 90, 40), 43);
    EXPECT_EQ(ValueTextWidth(400, 400, 0, 0), 1);
    EXPECT_EQ(ValueTextWidth(100, 150, 0, 0), 1);
    EXPECT_EQ(ValueTextWidth(400, end | anchor::negative | 80, 0, 0), 80);
}

TEST(ValueSwitchZoneRule, IsTheIconWithBothEdgesOrTheRow) {
    struct Row {
        std::int32_t x;
        ValueSwitchZone zone;
        bool hit;
    };
    const Row rows[] = {
        {3, {300, 4, 16, false}, false},
        {4, {300, 4, 16, false}, true},
        {20, {300, 4, 16, false}, true},
        {21, {300, 4, 16, false}, false},
        {21, {300, 4, 16, true}, true},
        {0, {300, 4, 16, true}, true},
        {300, {300, 4, 16, true}, true},
        {301, {300, 4, 16, true}, false},
        {-1, {300, 4, 16, true}, false},
        {301, {300, 290, 16, false}, false},
        {4, {300, 4, 0, false}, true},
        {5, {300, 4, 0, false}, false},
        {284, {300, end | anchor::lessSize, 16, false}, true},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(HitsSwitch(row.x, row.zone), row.hit) << &row - rows;
    }
}

TEST(ValueRowRule, HoldsAPlaceToTheRows) {
    struct Row {
        std::int32_t y, height, top, count, row;
    };
    const Row rows[] = {
        {0, 21, 0, 5, 0},   {20, 21, 0, 5, 0}, {21, 21, 0, 5, 1},  {30, 21, 3, 5, 4},
        {300, 21, 0, 5, 4}, {0, 21, 0, 0, -1}, {-40, 21, 0, 5, 0}, {10, 0, 0, 5, -1},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(ValueRowAt(row.y, row.height, row.top, row.count), row.row) << row.y;
    }
}

TEST(ValuePageRule, MovesByAsManyRowsAsTheListShows) {
    struct Row {
        std::int32_t current, direction, height, count, target;
    };
    const Row rows[] = {
        {0, 1, 210, 50, 10},   {5, 1, 230, 50, 15}, {45, 1, 210, 50, 49},
        {49, -1, 210, 50, 39}, {4, -1, 210, 50, 0}, {-1, 1, 210, 50, 9},
        {-1, -1, 210, 50, 0},  {0, 1, 210, 0, -1},  {3, 1, 20, 50, 3},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(ValuePageTarget(row.current, row.direction, row.height, 21, row.count),
                  row.target)
            << row.current << " " << row.direction;
    }
}

TEST(ValueArrowRule, LeavesAnEditorAtItsEnds) {
    constexpr std::uint32_t up = 0x26;
    constexpr std::uint32_t down = 0x28;
    struct Row {
        std::uint32_t key;
        std::int32_t lines;
        ValueCaret caret;
        std::int32_t step;
    };
    const Row rows[] = {
        {up, 0, {true, 1, 3}, -1},   {down, 0, {true, 1, 3}, 1},  {0x25, 0, {false, 0, 1}, 0},
        {up, 3, {false, 0, 3}, -1},  {up, 3, {false, 1, 3}, 0},   {down, 3, {false, 1, 3}, 0},
        {down, 3, {false, 2, 3}, 1}, {down, 3, {true, 2, 3}, 0},  {up, 3, {true, 0, 3}, 0},
        {up, 1, {false, 0, 1}, -1},  {down, 1, {false, 0, 1}, 1}, {0x0D, 3, {false, 0, 1}, 0},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(ValueArrowStep(row.key, row.lines, row.caret), row.step) << &row - rows;
    }
}

TEST(ValueDropRule, PutsARowInFrontOfAnother) {
    struct Row {
        std::int32_t dragged, before;
        bool firstIsBand;
        std::int32_t place;
    };
    const Row rows[] = {
        {1, 4, false, 3}, {4, 1, false, 1}, {2, 2, false, 2}, {2, 3, false, 2},
        {3, 0, false, 0}, {3, 0, true, 1},  {1, 0, true, 1},  {3, 1, true, 1},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(ValueDropPlace(row.dragged, row.before, row.firstIsBand), row.place)
            << row.dragged << " before " << row.before;
    }
}

}  // namespace
