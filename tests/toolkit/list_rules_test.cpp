#include "toolkit/list_rules.h"

#include <gtest/gtest.h>

#include <vector>

#include "tests/support/text.h"

namespace {

TEST(ListCheckZone, IsTwentyOnePixelsFromTheLeftOfColumnZero) {
    struct Row {
        std::int32_t pointer;
        std::int32_t left;
        bool inside;
    };
    const Row rows[] = {
        {0, 0, true},     {20, 0, true},     {21, 0, false},          {-1, 0, false},
        {99, 100, false}, {100, 100, true},  {120, 100, true},        {121, 100, false},
        {-30, -40, true}, {-50, -40, false}, {0x7FFFFFFF, -1, false}, {-1, 0x7FFFFFFF, false},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(IsInCheckZone(row.pointer, row.left), row.inside)
            << row.pointer << " of " << row.left;
    }
}

TEST(ListCheckState, TogglesBetweenTheFirstTwoImages) {
    struct Row {
        std::uint32_t state;
        std::uint32_t toggled;
    };
    const Row rows[] = {
        {0x1000, 0x2000}, {0x2000, 0x1000}, {0x0000, 0x1000},
        {0x3000, 0x1000}, {0x1003, 0x2000},  // what is not the image does not count
        {0x2002, 0x1000},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(ToggledCheckState(row.state), row.toggled) << row.state;
    }
}

TEST(ListStateChange, TellsWhatFlipped) {
    struct Row {
        std::uint32_t mask;
        std::uint32_t before;
        std::uint32_t after;
        bool selectionFlipped;
        bool selected;
        bool checkFlipped;
    };
    const Row rows[] = {
        {8, 0x1000, 0x1002, true, true, false},
        {8, 0x1003, 0x1001, true, false, false},
        {8, 0x1002, 0x2002, false, true, true},
        {8, 0x2000, 0x1000, false, false, true},
        {8, 0x0000, 0x1000, false, false, true},  // a new row
        {8, 0x1000, 0x2002, true, true, true},
        {8, 0x1000, 0x1001, false, false, false},  // the focus alone
        {8, 0x1000, 0x5000, false, false, false},  // a bit beyond the check box
        {9, 0x1000, 0x2002, false, false, false},  // not the state alone
        {1, 0x1000, 0x2002, false, false, false},
    };
    for (const Row& row : rows) {
        const ListStateChange change = LookAtStateChange(row.mask, row.before, row.after);
        const auto what = testing::Message()
                          << row.mask << ": " << row.before << " to " << row.after;
        EXPECT_EQ(change.selectionFlipped, row.selectionFlipped) << what;
        EXPECT_EQ(change.checkFlipped, row.checkFlipped) << what;
        if (row.selectionFlipped) {
            EXPECT_EQ(change.selected, row.selected) << what;
        }
    }
}

TEST(ListMinimumWidth, RefusesOnlyAPlainWidthBelowTheColumnsMinimum) {
    clPtrArray minimums;
    minimums.Add(50);
    minimums.Add(5);

    struct Row {
        HeaderChange change;
        std::int32_t keep;  // -1: the change passes
    };
    const Row rows[] = {
        {{true, 1, 0, 49}, 50},  {{true, 1, 0, 50}, -1},    {{true, 1, 0, 51}, -1},
        {{true, 1, 0, -20}, 50}, {{true, 1, 1, 4}, 5},      {{true, 1, 1, 5}, -1},
        {{true, 1, 2, 0}, -1},                               // no entry: free
        {{true, 1, -1, 0}, -1},  {{true, 0x25, 0, 10}, -1},  // more than the width
        {{true, 0, 0, 10}, -1},  {{false, 1, 0, 10}, -1},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(WidthToKeep(row.change, minimums).value_or(-1), row.keep)
            << row.change.column << " to " << row.change.width << ", mask " << row.change.mask;
    }
}

TEST(ListInfoTip, IsCutToTheBuffer) {
    struct Row {
        const wchar_t* text;
        std::int32_t size;
        const char* expected;
    };
    const Row rows[] = {
        {L"abcdef", 7, "abcdef"},
        {L"abcdef", 6, "abcde"},
        {L"abcdef", 2, "a"},
        {L"abcdef", 1, ""},
        {L"abcdef", 0, "abcdef"},
        {L"abcdef", 100, "abcdef"},
        {L"", 1, ""},
        {L"abcdef", -3, ""},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(Utf8(TextForBuffer(row.text, row.size)), row.expected) << row.size;
    }
}

constexpr std::uint32_t returnKey = 0x0D;
constexpr std::uint32_t escape = 0x1B;
constexpr std::uint32_t left = 0x25;
constexpr std::uint32_t up = 0x26;
constexpr std::uint32_t right = 0x27;
constexpr std::uint32_t down = 0x28;

TEST(ListEditorKey, ArrowsLeaveTheFieldFromItsEndOrFromASelection) {
    struct Row {
        std::uint32_t key;
        EditSelection selection;
        EditorKey meaning;
    };
    const Row rows[] = {
        {right, {5, 5}, EditorKey::Right},
        {left, {5, 5}, EditorKey::Left},
        {up, {5, 5}, EditorKey::Up},
        {down, {5, 5}, EditorKey::Down},
        {right, {2, 2}, EditorKey::Pass},
        {left, {0, 0}, EditorKey::Pass},
        {up, {2, 2}, EditorKey::Pass},
        {down, {4, 4}, EditorKey::Pass},
        {right, {0, 5}, EditorKey::Right},
        {left, {1, 3}, EditorKey::Left},
        {up, {0, 2}, EditorKey::Up},
        {down, {2, 5}, EditorKey::Down},
        {returnKey, {2, 2}, EditorKey::Commit},
        {returnKey, {5, 5}, EditorKey::Commit},
        {escape, {2, 2}, EditorKey::Cancel},
        {escape, {0, 5}, EditorKey::Cancel},
        {'A', {5, 5}, EditorKey::Pass},
        {0x24, {0, 5}, EditorKey::Pass},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(EditorKeyMeaning(row.key, row.selection, 5), row.meaning)
            << row.key << " at " << row.selection.start << " to " << row.selection.end;
    }
}

TEST(ListEditorKey, AnEmptyFieldIsAtItsEnd) {
    EXPECT_EQ(EditorKeyMeaning(left, {0, 0}, 0), EditorKey::Left);
    EXPECT_EQ(EditorKeyMeaning(right, {0, 0}, 0), EditorKey::Right);
}

TEST(ListNextColumn, IsTheNextThatMayBeEdited) {
    struct Row {
        std::vector<bool> editable;
        std::int32_t from;
        std::int32_t step;
        std::int32_t expected;
    };
    const Row rows[] = {
        {{true, true, true}, 0, 1, 1},
        {{true, false, true}, 0, 1, 2},
        {{true, false, false}, 0, 1, -1},
        {{true, true, true}, 2, 1, -1},
        {{true, true, true}, 2, -1, 1},
        {{true, false, true}, 2, -1, 0},
        {{false, false, true}, 2, -1, -1},
        {{true, true, true}, 0, -1, -1},
        {{}, 0, 1, -1},
    };
    for (const Row& row : rows) {
        const auto canEdit = [&row](std::int32_t column) {
            return static_cast<bool>(row.editable[static_cast<std::size_t>(column)]);
        };
        EXPECT_EQ(NextEditableColumn(row.from, row.step,
                                     static_cast<std::int32_t>(row.editable.size()), canEdit),
                  row.expected)
            << row.from << " by " << row.step;
    }
}

}  // namespace
