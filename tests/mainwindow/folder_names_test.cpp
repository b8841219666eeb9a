#include "mainwindow/folder_names.h"

#include <gtest/gtest.h>

#include "mainwindow/shell_source.h"
#include "tests/support/text.h"

namespace {

clStringList Sorted(const wchar_t* items) {
    clStringList list;
    list.Split(items);
    list.Sort(0);
    return list;
}

TEST(HasSorted, FindsExactlyThatText) {
    const clStringList list = Sorted(L"b\ra\rC\rB");
    for (const wchar_t* text : {L"a", L"b", L"B", L"C"})
        EXPECT_TRUE(HasSorted(list, text));
    for (const wchar_t* text : {L"A", L"c", L"", L"d"})
        EXPECT_FALSE(HasSorted(list, text));
    EXPECT_FALSE(HasSorted(clStringList(), L"a"));
}

TEST(IsRootOfADrive, KeepsRootsOfDrivesByTheirLetterExactly) {
    clStringList drives;
    drives.Add(L"C:\\");
    drives.Add(L"Z:\\");
    EXPECT_TRUE(IsRootOfADrive(L"C:\\Users\\me\\Music\\", drives));
    EXPECT_TRUE(IsRootOfADrive(L"Z:\\", drives));
    EXPECT_FALSE(IsRootOfADrive(L"c:\\Music\\", drives));
    EXPECT_FALSE(IsRootOfADrive(L"E:\\", drives));
}

TEST(IsRootOfADrive, AlwaysKeepsTheNetwork) {
    const clStringList none;
    EXPECT_TRUE(IsRootOfADrive(L"{ Network }", none));
    EXPECT_TRUE(IsRootOfADrive(L"\\\\server\\share\\", none));
    EXPECT_FALSE(IsRootOfADrive(L"\\server", none));
}

TEST(LibraryFolderText, NamesTheUsersOwnFolders) {
    const clString music(L"C:\\Users\\me\\Music\\");
    const clString shared(L"C:\\Users\\Public\\Music\\");
    EXPECT_EQ(Utf8(LibraryFolderText(L"My Music", L"c:\\users\\ME\\music\\", music, shared)),
              "Music");
    EXPECT_EQ(Utf8(LibraryFolderText(L"Music", shared, music, shared)), "Public Music");
}

TEST(LibraryFolderText, ShowsThePathOfOthersUnlessItIsOnAServer) {
    EXPECT_EQ(Utf8(LibraryFolderText(L"Rock", L"D:\\Rock\\", L"a", L"b")), "Rock (D:\\Rock\\)");
    EXPECT_EQ(Utf8(LibraryFolderText(L"Rock", L"\\\\server\\Rock\\", L"a", L"b")), "Rock");
}

}  // namespace
