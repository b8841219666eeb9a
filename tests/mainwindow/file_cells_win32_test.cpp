#include "mainwindow/file_cells.h"

#include <gtest/gtest.h>

#include "decoders/file_date.h"
#include "foundation/regional.h"
#include "tests/support/text.h"

namespace {

FileRow SomeRow() {
    FileRow row;
    row.path.Assign(L"C:\\Music\\Quarry Choir\\01 - Stone.abc");
    row.sizeBytes = 1040;
    row.typeName.Assign(L"Some sound");
    // A day apart each, so that none is taken for another.
    row.dateModified = {0, 0x01C138D1};
    row.dateCreated = {0, 0x01C2A000};
    row.dateAccessed = {0, 0x01C3A000};
    return row;
}

std::string Cell(const FileRow& row, const wchar_t* column) {
    return Utf8(DirectoryCellText(row, column));
}

}  // namespace

TEST(DirectoryCellText, TellsWhatTheEntrySays) {
    const FileRow row = SomeRow();
    EXPECT_EQ(Cell(row, L"Name"), "01 - Stone.abc");
    EXPECT_EQ(Cell(row, L"Size"), Utf8(SizeText(1040, true)));
    EXPECT_EQ(Cell(row, L"Size"), "2 KB");
    EXPECT_EQ(Cell(row, L"Type"), "Some sound");
    EXPECT_EQ(Cell(row, L"Date Modified"), Utf8(FileDateText(row.dateModified)));
    EXPECT_EQ(Cell(row, L"Date Created"), Utf8(FileDateText(row.dateCreated)));
    EXPECT_EQ(Cell(row, L"Date Accessed"), Utf8(FileDateText(row.dateAccessed)));
    EXPECT_NE(Cell(row, L"Date Created"), Cell(row, L"Date Accessed"));
    EXPECT_NE(Cell(row, L"Date Created"), Cell(row, L"Date Modified"));
}

TEST(DirectoryCellText, LeavesAllOtherColumnsToADecoder) {
    for (const wchar_t* column :
         {L"Artist", L"Length", L"Bit Rate", L"Folder", L"name", L"", L"Nam"})
        EXPECT_EQ(Cell(SomeRow(), column), "") << Utf8(column);
}

TEST(DirectoryCellText, OfAMomentWithoutADateIsEmpty) {
    FileRow row = SomeRow();
    row.dateModified = {0xFFFFFFFF, 0xFFFFFFFF};
    EXPECT_EQ(Cell(row, L"Date Modified"), "");
}

TEST(SizeCellText, IsInWholeKilobytes) {
    FileRow row;
    EXPECT_EQ(Utf8(SizeCellText(row)), "0 KB");
    row.sizeBytes = 1;
    EXPECT_EQ(Utf8(SizeCellText(row)), "0 KB");
    row.sizeBytes = 1024;
    EXPECT_EQ(Utf8(SizeCellText(row)), "1 KB");
}
