#include "mainwindow/columns.h"

#include <gtest/gtest.h>

#include "tests/support/text.h"

namespace {

clStringList Names(const wchar_t* list) {
    clStringList names;
    names.Split(list);
    return names;
}

std::string Joined(const clStringList& names) {
    clString text;
    names.Join(text);
    return Utf8(text);
}

TEST(ColumnLists, HaveTheirNamesInTheOrderOfTheMenu) {
    EXPECT_EQ(Names(directoryColumns).Count(), 6);
    EXPECT_EQ(Names(fileColumns).Count(), 12);
    EXPECT_EQ(Names(tagColumns).Count(), 28);
    EXPECT_EQ(Names(defaultColumns).Count(), 10);
    EXPECT_EQ(Utf8(Names(fileColumns).ItemCopy(6)), "Bit Rate");
    EXPECT_EQ(Utf8(Names(tagColumns).ItemCopy(7)), "Album Artist - Album - Disc - Track");
    EXPECT_EQ(Utf8(Names(tagColumns).ItemCopy(27)), "Replaygain_Album_Peak");
    EXPECT_EQ(Utf8(Names(defaultColumns).ItemCopy(9)), "Bit Rate");
}

struct Width {
    const wchar_t* name;
    std::int32_t width;
};

TEST(DefaultColumnWidth, IsThatOfTheTableWhateverTheCase) {
    const Width rows[] = {
        {L"Name", 250},        {L"Size", 75},         {L"Length", 75},
        {L"Bit Rate", 90},     {L"Sample Rate", 110}, {L"Sample Size", 110},
        {L"Compression", 110}, {L"Channels", 90},     {L"Track", 75},
        {L"Disc", 75},         {L"Rating", 85},       {L"Folder", 250},
        {L"bit rATE", 90},     {L"Artist", 150},      {L"", 150},
        {L"Name ", 150},
    };
    for (const Width& row : rows)
        EXPECT_EQ(DefaultColumnWidth(row.name), row.width) << Utf8(row.name);
}

TEST(IsRightAligned, HoldsForNumbersInTheirExactSpelling) {
    for (const wchar_t* name : {L"Size", L"Length", L"Bit Rate", L"Channels", L"Sample Size",
                                L"Sample Rate", L"Compression"})
        EXPECT_TRUE(IsRightAligned(name)) << Utf8(name);
    for (const wchar_t* name : {L"Name", L"Track", L"Rating", L"size", L"Date Modified", L""})
        EXPECT_FALSE(IsRightAligned(name)) << Utf8(name);
}

TEST(LeastColumnWidth, LeavesRoomForTheTickInTheFirst) {
    EXPECT_EQ(LeastColumnWidth(true), 50);
    EXPECT_EQ(LeastColumnWidth(false), 5);
}

TEST(KeepDecoderColumns, StrikesOutWhatTheDirectoryTellsInItsExactSpelling) {
    clStringList names = Names(L"Name\rArtist\rSize\rname\rDate Created\rLength");
    KeepDecoderColumns(names);
    EXPECT_EQ(Joined(names), "Artist\rname\rLength");
    clStringList none = Names(directoryColumns);
    KeepDecoderColumns(none);
    EXPECT_EQ(none.Count(), 0);
}

TEST(SavedColumns, PartsNamesAndWidthsByOneCr) {
    SavedColumns saved;
    saved.Append(L"Name", 250);
    EXPECT_EQ(Utf8(saved.names), "Name");
    EXPECT_EQ(Utf8(saved.widths), "250");
    saved.Append(L"Size", 0);
    saved.Append(L"Artist", -3);
    EXPECT_EQ(Utf8(saved.names), "Name\rSize\rArtist");
    EXPECT_EQ(Utf8(saved.widths), "250\r0\r-3");
}

TEST(SavedWidth, IsNoneWhereThereIsNoNumber) {
    const clStringList widths = Names(L"250\rwide\r\r75");
    EXPECT_EQ(SavedWidth(widths, 0), 250);
    EXPECT_EQ(SavedWidth(widths, 1), 0);
    EXPECT_EQ(SavedWidth(widths, 2), 0);
    EXPECT_EQ(SavedWidth(widths, 3), 75);
    EXPECT_EQ(SavedWidth(widths, 4), 0);
}

}  // namespace
