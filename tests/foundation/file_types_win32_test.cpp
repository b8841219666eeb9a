#include <gtest/gtest.h>
#include <windows.h>

#include <shellapi.h>

#include <cwchar>
#include <string>

#include "foundation/folders.h"
#include "tests/support/import_stub.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/scratch_registry.h"
#include "tests/support/text.h"

namespace {

class FileTypes : public testing::Test {
protected:
    FileTypes() { FileTypeName(L"an extension that no test uses.zzzz"); }

    static void SetType(const wchar_t* extension, const wchar_t* typeClass, const wchar_t* name) {
        ScratchRegistry::SetText(HKEY_CLASSES_ROOT, extension, L"", typeClass);
        ScratchRegistry::SetText(HKEY_CLASSES_ROOT, typeClass, L"", name);
    }

    ScratchRegistry registry;
};

struct ShellCall {
    std::string path;
    DWORD attributes;
    UINT size;
    UINT flags;
} shellCall;
DWORD_PTR shellAnswer;

DWORD_PTR WINAPI WatchedInfo(LPCWSTR path, DWORD attributes, SHFILEINFOW* info, UINT size,
                             UINT flags) {
    shellCall = {Utf8(path), attributes, size, flags};
    info->iIcon = 7;
    info->hIcon = reinterpret_cast<HICON>(INT_PTR{9});
    return shellAnswer;
}

constexpr UINT index = SHGFI_SYSICONINDEX;
constexpr UINT smallIcon = SHGFI_SMALLICON;
constexpr UINT byName = SHGFI_USEFILEATTRIBUTES;

}  // namespace

TEST_F(FileTypes, TheNameIsThatOfTheExtensionsClass) {
    SetType(L".mp3", L"mp3file", L"MPEG Sound");
    EXPECT_EQ(Utf8(FileTypeName(L"C:\\folder\\song.mp3")), "MPEG Sound");
}

TEST_F(FileTypes, WithoutANameTheExtensionServes) {
    EXPECT_EQ(Utf8(FileTypeName(L"song.XYZ")), "xyz File");
    // Looking it up has left its key behind.
    EXPECT_TRUE(ScratchRegistry::HasKey(HKEY_CLASSES_ROOT, L".XYZ"));
    ScratchRegistry::SetText(HKEY_CLASSES_ROOT, L".abc", L"", L"abcfile");  // a class of no name
    EXPECT_EQ(Utf8(FileTypeName(L"song.abc")), "abc File");
    EXPECT_TRUE(ScratchRegistry::HasKey(HKEY_CLASSES_ROOT, L"abcfile"));
    EXPECT_EQ(Utf8(FileTypeName(L"song.A\xC4")), "a\xC3\x84 File");
}

TEST_F(FileTypes, WithoutAnExtensionItIsAFile) {
    for (const wchar_t* path : {L"song", L"song.", L"C:\\v1.0\\song", L""}) {
        FileTypeName(L"other.zzzz");
        EXPECT_EQ(Utf8(FileTypeName(path)), "File") << Utf8(path);
    }
    EXPECT_FALSE(ScratchRegistry::HasKey(HKEY_CLASSES_ROOT, L"."));
}

namespace {

int classReads;
decltype(RegCreateKeyExW)* platformCreate;

LSTATUS WINAPI CountingCreate(HKEY root, LPCWSTR path, DWORD reserved, LPWSTR className,
                              DWORD options, REGSAM access, const LPSECURITY_ATTRIBUTES security,
                              PHKEY key, LPDWORD existed) {
    if (root == HKEY_CLASSES_ROOT) ++classReads;
    return platformCreate(root, path, reserved, className, options, access, security, key, existed);
}

}  // namespace

TEST_F(FileTypes, TheLastExtensionIsRememberedWhateverItsCase) {
    SetType(L".mp3", L"mp3file", L"MPEG Sound");
    const ImportStub stub("RegCreateKeyExW", CountingCreate);
    platformCreate = stub.Original<decltype(RegCreateKeyExW)>();
    EXPECT_EQ(Utf8(FileTypeName(L"one.mp3")), "MPEG Sound");
    classReads = 0;
    EXPECT_EQ(Utf8(FileTypeName(L"two.MP3")), "MPEG Sound");
    EXPECT_EQ(classReads, 0);
    EXPECT_EQ(Utf8(FileTypeName(L"three.Mp3")), "MPEG Sound");
    EXPECT_EQ(classReads, 0);
    // One slot: another extension takes its place.
    EXPECT_EQ(Utf8(FileTypeName(L"four.wav")), "wav File");
    SetType(L".mp3", L"mp3file", L"Renamed");
    classReads = 0;
    EXPECT_EQ(Utf8(FileTypeName(L"five.mp3")), "Renamed");
    EXPECT_GT(classReads, 0);
}

TEST_F(FileTypes, NoExtensionIsRememberedToo) {
    EXPECT_EQ(Utf8(FileTypeName(L"song")), "File");
    // From a cache that holds ".", not from the registry, which has a name for it.
    SetType(L".", L"nothing", L"Wrong");
    EXPECT_EQ(Utf8(FileTypeName(L"other")), "File");
    EXPECT_EQ(Utf8(FileTypeName(L"song.")), "File");
}

TEST(ShellIcons, FlagsChooseSizeStateAndSource) {
    const ImportStub stub("SHGetFileInfoW", WatchedInfo);
    shellAnswer = 1;
    const struct {
        unsigned flags;
        UINT expected;
    } rows[] = {{0, index | smallIcon | byName},
                {2, index | byName},
                {4, index | smallIcon | SHGFI_OPENICON | byName},
                {8, index | smallIcon},
                {2 | 4 | 8, index | SHGFI_OPENICON},
                {1, index | smallIcon | byName}};
    for (const auto& row : rows) {
        EXPECT_EQ(ShellIconIndex(L"C:\\a.mp3", row.flags), 7);
        EXPECT_EQ(shellCall.path, "C:\\a.mp3");
        EXPECT_EQ(shellCall.flags, row.expected) << row.flags;
        EXPECT_EQ(shellCall.attributes, 0u);
        EXPECT_EQ(shellCall.size, sizeof(SHFILEINFOW));
    }
    shellAnswer = 0;
    EXPECT_EQ(ShellIconIndex(L"C:\\a.mp3", 0), -1);
}

TEST(ShellIcons, AFileIconIsSmallAndByName) {
    const ImportStub stub("SHGetFileInfoW", WatchedInfo);
    shellAnswer = 1;
    EXPECT_EQ(ShellFileIcon(L"C:\\a.mp3"), reinterpret_cast<HICON>(INT_PTR{9}));
    EXPECT_EQ(shellCall.flags, UINT{SHGFI_ICON} | byName | smallIcon);
    EXPECT_EQ(shellCall.attributes, 0u);
    shellAnswer = 0;
    EXPECT_EQ(ShellFileIcon(L"C:\\a.mp3"), nullptr);
}

TEST(ShellIcons, TheSystemListIsAskedForByTheWindowsDrive) {
    const ImportStub stub("SHGetFileInfoW", WatchedInfo);
    shellAnswer = 0x1234;
    EXPECT_EQ(SystemImageList(false), reinterpret_cast<HIMAGELIST>(INT_PTR{0x1234}));
    EXPECT_EQ(shellCall.path, Utf8(FolderPath(FOLDER_WINDOWS).Left(3)));
    EXPECT_EQ(shellCall.flags, index | smallIcon);
    SystemImageList(true);
    EXPECT_EQ(shellCall.flags, index);
    const ImportStub windows(
        "GetWindowsDirectoryW", +[](LPWSTR text, UINT) -> UINT {
            std::wcscpy(text, L"E:\\one\\two");
            return 10;
        });
    SystemImageList(true);
    EXPECT_EQ(shellCall.path, "E:\\");
}

TEST(ShellIcons, WithoutAWindowsFolderItIsDriveC) {
    const ImportStub stub("SHGetFileInfoW", WatchedInfo);
    const ImportStub windows(
        "GetWindowsDirectoryW", +[](LPWSTR, UINT) -> UINT { return 0; });
    SystemImageList(true);
    EXPECT_EQ(shellCall.path, "C:\\");
}

TEST(ShellIcons, TheShellReallyAnswers) {
    const ScratchFolder scratch;
    EXPECT_NE(SystemImageList(false), nullptr);
    EXPECT_NE(SystemImageList(true), nullptr);
    EXPECT_NE(SystemImageList(true), SystemImageList(false));
    EXPECT_GE(ShellIconIndex(L"Q:\\missing.mp3", 0), 0);
    EXPECT_EQ(ShellIconIndex(scratch.Path(L"missing.mp3"), SHELL_ICON_REAL), -1);
    EXPECT_GE(ShellIconIndex(scratch.Path(), SHELL_ICON_REAL), 0);
    HICON icon = ShellFileIcon(L"Q:\\missing.mp3");
    EXPECT_NE(icon, nullptr);
    EXPECT_TRUE(DestroyIcon(icon));
}
