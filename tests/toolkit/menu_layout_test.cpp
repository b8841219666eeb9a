#include "toolkit/menu_layout.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

namespace {

using enum MenuPartKind;

constexpr std::uint32_t background = 0xFAFBFC;

bool Same(const clMenuPart& a, const clMenuPart& b) {
    return a.kind == b.kind && a.area.left == b.area.left && a.area.top == b.area.top &&
           a.area.right == b.area.right && a.area.bottom == b.area.bottom && a.colour == b.colour &&
           a.secondColour == b.secondColour && a.condition == b.condition;
}

void ExpectParts(const std::vector<clMenuPart>& actual, const std::vector<clMenuPart>& expected) {
    ASSERT_EQ(actual.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i)
        EXPECT_TRUE(Same(actual[i], expected[i])) << "part " << i;
}

// With images of 16 pixels the strip is 19 wide.
const std::vector<clMenuPart> common = {
    {Fill, {0, 0, 0x20000, 0x20000}, background, 0, 0},
    {GradientAcross, {2, 0, 22, 0x20000}, 0xF8F8F8, 0xE6E6E6, 0},
    {Fill, {27, 2, 0x120004, 0x120002}, 0xFFF9F3, 0, 32},
    {Box, {1, 0, 0x120001, 0x20000}, 0xFFFAEE, 0xEBD8A8, 5},
    {GradientDown, {3, 2, 0x120003, 0x120002}, 0xF7F4EC, 0xF4EDDB, 5},
    {Box, {1, 1, 21, 0x120001}, 0xEAE5DC, 0xCDBA8A, 32},
    {Line, {24, 1, 24, 0x120002}, 0xCDBA8A, 0, 32},
    {Line, {24, 1, 26, 1}, 0xCDBA8A, 0, 32},
    {Line, {24, 0x120002, 26, 0x120002}, 0xCDBA8A, 0, 32},
    {Line, {0x120002, 1, 0x120002, 0x120002}, 0xCDBA8A, 0, 32},
    {Line, {0x120002, 1, 0x120004, 1}, 0xCDBA8A, 0, 32},
    {Line, {0x120002, 0x120002, 0x120004, 0x120002}, 0xCDBA8A, 0, 32},
};

const std::vector<clMenuPart> commonWithoutStrip = {
    {Fill, {0, 0, 0x20000, 0x20000}, background, 0, 0},
    {Fill, {8, 2, 0x120004, 0x120002}, 0xFFF9F3, 0, 32},
    {Box, {1, 0, 0x120001, 0x20000}, 0xFFFAEE, 0xEBD8A8, 5},
    {GradientDown, {3, 2, 0x120003, 0x120002}, 0xF7F4EC, 0xF4EDDB, 5},
};

const std::vector<clMenuPart> checkMark = {
    {Line, {0x12000B, 0x10003, 0x120009, 0x10005}, 0, 0, 32},
    {Line, {0x12000C, 0x10003, 0x12000A, 0x10005}, 0, 0, 32},
    {Line, {0x12000A, 0x10004, 0x120006, 0x10000}, 0, 0, 32},
    {Line, {0x12000B, 0x10004, 0x120007, 0x10000}, 0, 0, 32},
};

std::vector<clMenuPart> Texts(std::int32_t x) {
    return {{Text, {x, 0x90000, 0, 0}, 0, 0, 1},
            {Text, {x, 0x90000, 0, 0}, 0, 0, 32},
            {Text, {x, 0x90000, 0, 0}, 0xC0C0C0, 0, 2}};
}

const std::vector<clMenuPart> icons = {{Icon, {3, 2, 0, 0}, 0, 0, 9},
                                       {Icon, {3, 2, 0, 0}, 0, 0, 5},
                                       {GreyIcon, {3, 2, 0, 0}, 0, 0, 2}};

std::vector<clMenuPart> Joined(std::initializer_list<std::vector<clMenuPart>> groups) {
    std::vector<clMenuPart> all;
    for (const auto& group : groups)
        all.insert(all.end(), group.begin(), group.end());
    return all;
}

}  // namespace

TEST(MenuLayout, AnItemLiesInThisOrder) {
    ExpectParts(MenuItemParts(16, background, false), Joined({common, Texts(29), checkMark}));
    ExpectParts(MenuItemParts(16, background, true), Joined({common, Texts(29), icons, checkMark}));
}

TEST(MenuLayout, WithoutImagesThereIsNoStrip) {
    ExpectParts(MenuItemParts(0, background, false),
                Joined({commonWithoutStrip, Texts(10), checkMark}));
    ExpectParts(MenuItemParts(0, background, true),
                Joined({commonWithoutStrip, Texts(10), icons, checkMark}));
}

TEST(MenuLayout, ASeparatorEndsWithItsLine) {
    ExpectParts(MenuSeparatorParts(16, background),
                Joined({common, {{Line, {29, 0x10000, 0x20000, 0x10000}, 0xC4C4C4, 0, 0}}}));
    ExpectParts(
        MenuSeparatorParts(0, background),
        Joined({commonWithoutStrip, {{Line, {10, 0x10000, 0x20000, 0x10000}, 0xC4C4C4, 0, 0}}}));
}

TEST(MenuLayout, StateFlagsAddUp) {
    const struct {
        bool selected;
        bool checked;
        bool disabled;
        std::uint32_t expected;
    } rows[] = {
        {false, false, false, 8 + 16 + 1}, {true, false, false, 4 + 16 + 1},
        {false, true, false, 8 + 32 + 1},  {true, true, false, 4 + 32 + 1},
        {false, false, true, 8 + 16 + 2},  {true, false, true, 4 + 16 + 2},
        {false, true, true, 8 + 32 + 2},   {true, true, true, 4 + 32 + 2},
    };
    for (const auto& row : rows)
        EXPECT_EQ(MenuState(row.selected, row.checked, row.disabled), row.expected);
}

TEST(MenuLayout, AnItemIsHigherThanItsImageAndItsText) {
    EXPECT_EQ(MenuItemHeight(14, 16), 18);
    EXPECT_EQ(MenuItemHeight(16, 16), 18);
    EXPECT_EQ(MenuItemHeight(17, 16), 19);
    EXPECT_EQ(MenuItemHeight(14, 0), 16);
}

TEST(GreyForm, IsTheMeanOfTheChannelsAndBrighter) {
    const struct {
        std::uint32_t pixel;
        std::uint32_t expected;
    } rows[] = {
        {0x000000, 0x000000},                          // pure black stays
        {0xFF000000, 0x000000}, {0x010000, 0x232323},  // a third, truncated
        {0x000002, 0x232323},   {0x000003, 0x242424}, {0xFF0000, 0x787878},
        {0x00FF00, 0x787878},   {0x0000FF, 0x787878}, {0x80FF0000, 0x787878},
        {0x102030, 0x434343},   {0xDBDBDB, 0xFEFEFE}, {0xDCDCDC, 0xFFFFFF},
        {0xDDDDDD, 0xFFFFFF},   {0xFFFFFF, 0xFFFFFF}, {0xFFFFFFFF, 0xFFFFFF},
    };
    for (const auto& row : rows)
        EXPECT_EQ(GreyForm(row.pixel), row.expected) << std::hex << row.pixel;
}
