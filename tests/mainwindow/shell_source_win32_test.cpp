#include "mainwindow/shell_source.h"

#include <gtest/gtest.h>
#include <windows.h>
// These need windows.h before them.
#include <objbase.h>
#include <shellapi.h>

#include "tests/support/scratch_folder.h"
#include "tests/support/text.h"

namespace {

std::int32_t ShellsIcon(const clString& path, UINT flags) {
    SHFILEINFOW info = {};
    const auto answer = SHGetFileInfoW(path.Chars(), 0, &info, sizeof info,
                                       SHGFI_SYSICONINDEX | SHGFI_SMALLICON | flags);
    return answer != 0 ? info.iIcon : -1;
}

}  // namespace

TEST(ShellSource, FolderHasItsIconClosedAndOpen) {
    const ScratchFolder folder;
    const FolderIcons icons = IconsOfFolder(folder.Path());
    EXPECT_EQ(icons.normal, ShellsIcon(folder.Path(), 0));
    EXPECT_EQ(icons.open, ShellsIcon(folder.Path(), SHGFI_OPENICON));
    EXPECT_NE(icons.normal, -1);
    EXPECT_NE(icons.normal, icons.open);
}

TEST(ShellSource, FolderThatIsNotThereHasNoIcon) {
    const FolderIcons icons = IconsOfFolder(L"C:\\no such folder\\");
    EXPECT_EQ(icons.normal, -1);
    EXPECT_EQ(icons.open, -1);
}

TEST(ShellSource, NetworkHasAnIcon) {
    const FolderIcons icons = IconsOfNetwork();
    EXPECT_NE(icons.normal, -1);
    EXPECT_NE(icons.open, -1);
}

// One test, since the icon is kept for the life of the process.
TEST(ShellSource, SharedIconIsTheFirstThatIsFound) {
    const ScratchFolder folder;
    EXPECT_EQ(SharedFolderIcon(L"C:\\no such folder\\"), -1);
    EXPECT_EQ(SharedFolderIcon(folder.Path()), ShellsIcon(folder.Path(), 0));
    EXPECT_NE(ShellsIcon(L"C:\\", 0), ShellsIcon(folder.Path(), 0));
    EXPECT_EQ(SharedFolderIcon(L"C:\\"), ShellsIcon(folder.Path(), 0));
}

TEST(ShellSource, VersionIsThatOfTheSystem) {
    OSVERSIONINFOW version = {};
    version.dwOSVersionInfoSize = sizeof version;
    GetVersionExW(&version);
    EXPECT_EQ(ReadSystemVersion().major, version.dwMajorVersion);
    EXPECT_EQ(ReadSystemVersion().minor, version.dwMinorVersion);
}
