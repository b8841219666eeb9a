#include "foundation/drives.h"

#include <gtest/gtest.h>

#include "tests/support/text.h"

namespace {

clString Joined(const clStringList& list) {
    clString text;
    for (std::int64_t i = 0; i < list.Count(); ++i) {
        if (i != 0) text.Append(L' ');
        text.Append(*list.At(i));
    }
    return text;
}

}  // namespace

TEST(Drives, EachLowBitIsOneRootLowestFirst) {
    struct Row {
        std::uint32_t mask;
        const wchar_t* roots;
    };
    const Row rows[] = {
        {0x00000000, L""},          {0x00000001, L"A:\\"},
        {0x00000004, L"C:\\"},      {0x0200000D, L"A:\\ C:\\ D:\\ Z:\\"},
        {0xFC000000, L""},  // only 26 letters
        {0xFE000002, L"B:\\ Z:\\"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(Utf8(Joined(DriveRoots(row.mask))), Utf8(row.roots)) << row.mask;
    }
    EXPECT_EQ(DriveRoots(0x03FFFFFF).Count(), 26);
}

TEST(Drives, RootOutsideTheListIsEmpty) {
    const clStringList roots = DriveRoots(0x0000000C);
    EXPECT_EQ(Utf8(DriveRootAt(roots, 0)), "C:\\");
    EXPECT_EQ(Utf8(DriveRootAt(roots, 1)), "D:\\");
    EXPECT_EQ(Utf8(DriveRootAt(roots, 2)), "");
    EXPECT_EQ(Utf8(DriveRootAt(roots, -1)), "");
    EXPECT_EQ(Utf8(DriveRootAt(roots, -5)), "");
    EXPECT_EQ(Utf8(DriveRootAt(DriveRoots(0), 0)), "");
}

TEST(Drives, FiveTypesHaveANameAndNoOther) {
    struct Row {
        std::uint32_t type;
        const char* name;
    };
    const Row rows[] = {
        {0, ""},
        {1, ""},
        {2, "Removable Disk"},
        {3, "Hard Disk"},
        {4, "Network Drive"},
        {5, "CD-ROM Drive"},
        {6, "RAM Disk"},
        {7, ""},
        {0xFFFFFFFF, ""},
    };
    for (const Row& row : rows)
        EXPECT_EQ(Utf8(DriveTypeName(row.type)), row.name) << row.type;
}

TEST(Drives, OnlyRemovableDrivesAAndBAreOffLimits) {
    struct Row {
        const wchar_t* path;
        std::uint32_t type;
        bool offLimits;
    };
    const Row rows[] = {
        {L"A:\\", drive_type::removable, true},  {L"a:\\", drive_type::removable, true},
        {L"B:", drive_type::removable, true},    {L"b:\\music\\", drive_type::removable, true},
        {L"A:\\", drive_type::fixed, false},     {L"B:\\", drive_type::cdrom, false},
        {L"C:\\", drive_type::removable, false}, {L"E:\\", drive_type::removable, false},
        {L"@:\\", drive_type::removable, false}, {L"", drive_type::removable, false},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(IsLabelOffLimits(row.path, row.type), row.offLimits) << Utf8(row.path);
    }
}

TEST(Drives, NameIsTheLabelElseTheTypeElseTheRoot) {
    struct Row {
        const wchar_t* root;
        const wchar_t* label;
        const wchar_t* typeName;
        const char* name;
    };
    const Row rows[] = {
        {L"C:\\", L"System", L"Hard Disk", "System (C:)"},
        {L"D:\\", L"", L"Hard Disk", "Hard Disk (D:)"},
        {L"F:\\", L"", L"CD-ROM Drive", "CD-ROM Drive (F:)"},
        {L"Q:\\", L"", L"", "Q:\\"},
        {L"Q:\\", L"Odd", L"", "Odd (Q:)"},
        {L"", L"", L"", ""},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(Utf8(ComposeDriveName(row.root, row.label, row.typeName)), row.name);
    }
}
