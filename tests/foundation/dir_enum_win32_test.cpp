#include "foundation/dir_enum.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cwchar>
#include <string>
#include <vector>

#include "tests/foundation/long_text.h"
#include "tests/support/import_stub.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/text.h"

namespace {

using Names = std::vector<std::string>;

// Paths without the folder's, sorted: the order is the file system's.
Names Entries(clDirEnum& found, const clString& folder) {
    Names result;
    while (found.Next()) {
        EXPECT_EQ(found.path.CompareNoCase(folder, -1), 0) << Utf8(found.path);
        result.push_back(Utf8(found.path.Mid(folder.Length() + 1)));
    }
    std::ranges::sort(result);
    return result;
}

Names EntriesOf(const clString& folder, const wchar_t* pattern = L"*.*") {
    clDirEnum found(pattern, folder);
    return Entries(found, folder);
}

struct Scripted {
    const wchar_t* name;
    DWORD attributes;
};

// The scripted platform: the entries it gives, and the calls it has had.
std::vector<Scripted> script;
std::size_t scriptAt;
Names calls;

void Give(LPWIN32_FIND_DATAW record) {
    const Scripted& entry = script[scriptAt++];
    *record = {};
    record->dwFileAttributes = entry.attributes;
    std::wcscpy(record->cFileName, entry.name);
}

HANDLE WINAPI ScriptedFirst(LPCWSTR pattern, LPWIN32_FIND_DATAW record) {
    calls.push_back("first " + Utf8(pattern));
    scriptAt = 0;
    if (script.empty()) return INVALID_HANDLE_VALUE;
    Give(record);
    return GetProcessHeap();
}

BOOL WINAPI ScriptedNext(HANDLE, LPWIN32_FIND_DATAW record) {
    calls.push_back("next");
    if (scriptAt == script.size()) return FALSE;
    Give(record);
    return TRUE;
}

BOOL WINAPI ScriptedClose(HANDLE) {
    calls.push_back("close");
    return TRUE;
}

class ScriptedDirEnum : public testing::Test {
protected:
    ScriptedDirEnum()
        : first("FindFirstFileW", ScriptedFirst),
          next("FindNextFileW", ScriptedNext),
          close("FindClose", ScriptedClose) {
        script.clear();
        calls.clear();
    }

    // The pattern that the platform is asked for.
    static std::string PatternOf(clDirEnum& found) {
        calls.clear();
        EXPECT_FALSE(found.Next());
        return calls.empty() ? "(no call)" : calls.front().substr(6);
    }

    ImportStub first;
    ImportStub next;
    ImportStub close;
};

constexpr DWORD folderMark = FILE_ATTRIBUTE_DIRECTORY;

}  // namespace

TEST(DirEnum, FilesAndFoldersComeWithTheirFullPath) {
    const ScratchFolder scratch;
    scratch.AddFile(L"b.mp3");
    scratch.AddFile(L"no extension");
    scratch.AddFolder(L"folder");
    scratch.AddFile(L"folder\\inner");
    EXPECT_EQ(EntriesOf(scratch.Path()), (Names{"b.mp3", "folder", "no extension"}));
    // The directory gets its backslash.
    clString bare(scratch.Path());
    bare.EraseRange(POS_LAST, POS_LAST);
    clDirEnum found(L"*.*", bare);
    EXPECT_EQ(Entries(found, scratch.Path()), (Names{"b.mp3", "folder", "no extension"}));
}

TEST(DirEnum, DotEntriesAreLeftOutButNotNamesThatBeginWithDots) {
    const ScratchFolder scratch;
    EXPECT_EQ(EntriesOf(scratch.Path()), Names{});
    scratch.AddFolder(L"one");
    scratch.AddFolder(L"two");
    EXPECT_EQ(EntriesOf(scratch.Path()), (Names{"one", "two"}));
    scratch.AddFile(L".hidden");
    scratch.AddFile(L"..x");
    EXPECT_EQ(EntriesOf(scratch.Path()), (Names{"..x", ".hidden", "one", "two"}));
}

TEST(DirEnum, APatternMayHoldARelativePart) {
    const ScratchFolder scratch;
    scratch.AddFolder(L"decoder");
    scratch.AddFile(L"decoder\\one.dll");
    scratch.AddFile(L"decoder\\two.txt");
    clDirEnum found(L"decoder\\*.dll", scratch.Path());
    EXPECT_EQ(Entries(found, scratch.Path()), Names{"decoder\\one.dll"});
}

TEST(DirEnum, DirectoriesOnlySkipsFiles) {
    const ScratchFolder scratch;
    scratch.AddFile(L"a file");
    scratch.AddFolder(L"b folder");
    scratch.AddFile(L"c file");
    scratch.AddFolder(L"d folder");
    scratch.AddFile(L"e file");
    clDirEnum found(L"*.*", scratch.Path());
    EXPECT_FALSE(found.directoriesOnly);
    found.directoriesOnly = true;
    EXPECT_EQ(Entries(found, scratch.Path()), (Names{"b folder", "d folder"}));
}

TEST(DirEnum, OneFileOrFolderIsLookedUp) {
    const ScratchFolder scratch;
    const clString file = scratch.AddFile(L"file", "12345");
    clDirEnum found(file);
    EXPECT_FALSE(found.directoriesOnly);
    ASSERT_TRUE(found.Next());
    EXPECT_EQ(Utf8(found.path), Utf8(file));
    EXPECT_EQ(found.record.nFileSizeLow, 5u);
    EXPECT_FALSE(found.Next());
    clDirEnum folder(scratch.Path(L"\\\\"));  // backslashes at the end are no matter
    ASSERT_TRUE(folder.Next());
    EXPECT_NE(folder.record.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY, 0u);
    clDirEnum missing(scratch.Path(L"missing"));
    EXPECT_FALSE(missing.Next());
}

TEST(DirEnum, TheRecordIsThePlatforms) {
    const ScratchFolder scratch;
    const clString file = scratch.AddFile(L"file", std::string(70000, 'x'));
    SetFileAttributesW(file.Chars(), FILE_ATTRIBUTE_READONLY);
    WIN32_FILE_ATTRIBUTE_DATA expected = {};
    ASSERT_TRUE(GetFileAttributesExW(file.Chars(), GetFileExInfoStandard, &expected));
    clDirEnum found(L"*.*", scratch.Path());
    ASSERT_TRUE(found.Next());
    EXPECT_EQ(found.record.dwFileAttributes, expected.dwFileAttributes);
    EXPECT_EQ(found.record.nFileSizeLow, 70000u);
    EXPECT_EQ(found.record.nFileSizeHigh, 0u);
    EXPECT_EQ(CompareFileTime(&found.record.ftLastWriteTime, &expected.ftLastWriteTime), 0);
    EXPECT_EQ(CompareFileTime(&found.record.ftCreationTime, &expected.ftCreationTime), 0);
    EXPECT_EQ(Utf8(found.record.cFileName), "file");
    EXPECT_FALSE(found.Next());
    EXPECT_EQ(found.record.dwFileAttributes, 0u);
    EXPECT_EQ(found.record.cFileName[0], 0);
}

TEST(DirEnum, AMissingFolderLooksEmpty) {
    const ScratchFolder scratch;
    EXPECT_EQ(EntriesOf(scratch.Path(L"missing\\")), Names{});
}

TEST(DirEnum, AnEmptyDirectoryIsTheRootOfTheCurrentDrive) {
    const ScratchFolder scratch;
    // The scratch folder's drive, whose root is seldom empty.
    wchar_t before[MAX_PATH] = {};
    GetCurrentDirectoryW(MAX_PATH, before);
    ASSERT_TRUE(SetCurrentDirectoryW(scratch.Path().Chars()));
    const Names byNothing = EntriesOf(L"\\");
    clDirEnum found(L"*.*", L"");
    const Names byEmpty = Entries(found, L"\\");
    const Names byDrive = EntriesOf(scratch.Path().Left(3));
    SetCurrentDirectoryW(before);
    EXPECT_EQ(byEmpty, byDrive);
    EXPECT_EQ(byEmpty, byNothing);
    EXPECT_FALSE(byEmpty.empty());
}

TEST(DirEnum, NamesBeyondTheLimitAreFound) {
    const ScratchFolder scratch;
    const clString folder = scratch.AddFolder(OfLength(L"", 120).Chars());
    clString deep(folder);
    deep.Append(L'\\');
    deep.Append(OfLength(L"", 120));
    ASSERT_TRUE(CreateDirectoryW((clString(L"\\\\?\\") += deep).Chars(), nullptr));
    deep.Append(L'\\');
    clString file(deep);
    file.Append(L"file");
    HANDLE handle = CreateFileW((clString(L"\\\\?\\") += file).Chars(), GENERIC_WRITE, 0, nullptr,
                                CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(handle, INVALID_HANDLE_VALUE);
    CloseHandle(handle);
    // The paths keep the form that was asked for, with the prefix or without.
    clDirEnum found(L"*.*", deep);
    ASSERT_TRUE(found.Next());
    EXPECT_EQ(Utf8(found.path), Utf8(file));
}

TEST_F(ScriptedDirEnum, TheSearchIsTheDirectoryAndThePattern) {
    clDirEnum empty(L"*.*", L"");
    EXPECT_EQ(PatternOf(empty), "\\*.*");
    clDirEnum bare(L"*.*", L"C:\\Music");
    EXPECT_EQ(PatternOf(bare), "C:\\Music\\*.*");
    clDirEnum ended(L"*.*", L"C:\\Music\\");
    EXPECT_EQ(PatternOf(ended), "C:\\Music\\*.*");
    clDirEnum one(clString(L"C:\\Music\\\\"));
    EXPECT_EQ(PatternOf(one), "C:\\Music");
    clDirEnum nothing{clString()};
    EXPECT_EQ(PatternOf(nothing), "");
}

TEST_F(ScriptedDirEnum, TheSearchGetsTheLongPrefixFrom248On) {
    clDirEnum shorter(OfLength(L"Q:\\", 247));
    EXPECT_EQ(PatternOf(shorter).size(), 247u);
    clDirEnum longer(OfLength(L"Q:\\", 248));
    EXPECT_EQ(PatternOf(longer), "\\\\?\\" + Utf8(OfLength(L"Q:\\", 248)));
    clDirEnum server(OfLength(L"\\\\server\\share\\", 300));
    EXPECT_EQ(PatternOf(server), Utf8(OfLength(L"\\\\server\\share\\", 300)));
}

TEST_F(ScriptedDirEnum, EachEntryCostsOneCallAndTheHandleIsClosed) {
    script = {{L".", folderMark}, {L"..", folderMark}, {L"a", 0}, {L"b", 0}};
    {
        clDirEnum found(L"*.*", L"Q:\\");
        EXPECT_TRUE(found.Next());
        EXPECT_EQ(Utf8(found.path), "Q:\\a");
        EXPECT_TRUE(found.Next());
        EXPECT_EQ(Utf8(found.path), "Q:\\b");
        EXPECT_FALSE(found.Next());
    }
    EXPECT_EQ(calls, (Names{"first Q:\\*.*", "next", "next", "next", "next", "close"}));
}

TEST_F(ScriptedDirEnum, WithoutAHandleNothingIsClosed) {
    { const clDirEnum unused(L"*.*", L"Q:\\"); }
    {
        clDirEnum missing(L"*.*", L"Q:\\");
        EXPECT_FALSE(missing.Next());
    }
    EXPECT_EQ(calls, Names{"first Q:\\*.*"});
}

TEST_F(ScriptedDirEnum, AFailedFirstSearchLeavesTheDirectory) {
    clDirEnum found(L"*.*", L"Q:\\a");
    EXPECT_FALSE(found.Next());
    EXPECT_FALSE(found.Next());
    EXPECT_EQ(calls, (Names{"first Q:\\a\\*.*", "first Q:\\a\\"}));
}

TEST_F(ScriptedDirEnum, AnEmptyNameEndsTheEnumeration) {
    script = {{L"a", 0}, {L"", 0}, {L"b", 0}};
    clDirEnum found(L"*.*", L"Q:\\");
    EXPECT_TRUE(found.Next());
    EXPECT_FALSE(found.Next());
}

TEST_F(ScriptedDirEnum, DotEntriesAreLeftOutWhereverTheyCome) {
    script = {{L"a", 0}, {L"..", folderMark}, {L".", folderMark}, {L"...", 0}, {L".b", 0}};
    Names names;
    clDirEnum found(L"*.*", L"Q:\\");
    while (found.Next())
        names.push_back(Utf8(found.path));
    EXPECT_EQ(names, (Names{"Q:\\a", "Q:\\...", "Q:\\.b"}));
}

TEST_F(ScriptedDirEnum, DirectoriesOnlySkipsFilesFromTheFirstEntryOn) {
    script = {{L"file", 0},         {L".", folderMark}, {L"..", folderMark},      {L"f", 0},
              {L"one", folderMark}, {L"g", 0},          {L"two", folderMark | 2}, {L"h", 0}};
    Names names;
    clDirEnum found(L"*.*", L"Q:\\");
    found.directoriesOnly = true;
    while (found.Next())
        names.push_back(Utf8(found.path));
    EXPECT_EQ(names, (Names{"Q:\\one", "Q:\\two"}));
}

TEST_F(ScriptedDirEnum, APathWithoutBackslashIsItsOwnPrefix) {
    script = {{L"name", 0}};
    clDirEnum found(clString(L"name"));
    EXPECT_TRUE(found.Next());
    EXPECT_EQ(Utf8(found.path), "namename");
}
