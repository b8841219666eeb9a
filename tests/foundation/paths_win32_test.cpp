#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <vector>

#include "foundation/paths.h"
#include "tests/foundation/long_text.h"
#include "tests/support/import_stub.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/text.h"

namespace {

// What the stubs below have been given, and what they answer.
std::vector<std::string> calls;
DWORD refusal;            // the last error of a refused call
std::size_t refusedFrom;  // number of the first call that is refused
DWORD writtenAttributes;

BOOL WINAPI WatchedCreate(LPCWSTR path, LPSECURITY_ATTRIBUTES security) {
    calls.push_back(Utf8(path));
    EXPECT_EQ(security, nullptr);
    SetLastError(refusal);
    return calls.size() <= refusedFrom;
}

BOOL WINAPI RefusedDelete(LPCWSTR path) {
    EXPECT_EQ(GetLastError(), DWORD{ERROR_SUCCESS});  // cleared before the call
    calls.push_back("delete " + Utf8(path));
    SetLastError(refusal);
    return FALSE;
}

BOOL WINAPI WatchedSetAttributes(LPCWSTR path, DWORD attributes) {
    calls.push_back("attributes " + Utf8(path));
    writtenAttributes = attributes;
    return FALSE;
}

UINT WINAPI WatchedDriveType(LPCWSTR path) {
    calls.push_back(Utf8(path));
    return refusal;
}

HANDLE WINAPI FoundReadOnly(LPCWSTR path, LPWIN32_FIND_DATAW record) {
    calls.push_back("find " + Utf8(path));
    *record = {};
    record->dwFileAttributes = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN;
    record->cFileName[0] = L'x';
    return GetProcessHeap();  // FindClose refuses it
}

class PathsOnDisk : public testing::Test {
protected:
    PathsOnDisk() {
        calls.clear();
        refusal = ERROR_SUCCESS;
        refusedFrom = 1000;
        writtenAttributes = 0;
    }

    static bool IsFolder(const clString& path) {
        const DWORD attributes = GetFileAttributesW(path.Chars());
        return attributes != INVALID_FILE_ATTRIBUTES &&
               (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    }

    ScratchFolder scratch;
};

}  // namespace

TEST_F(PathsOnDisk, AFolderIsMadeWithAllItsParents) {
    EXPECT_TRUE(CreateDirectoryPath(scratch.Path(L"one\\two\\three")));
    EXPECT_TRUE(IsFolder(scratch.Path(L"one\\two\\three")));
    EXPECT_TRUE(CreateDirectoryPath(scratch.Path(L"one\\two\\four\\")));
    EXPECT_TRUE(IsFolder(scratch.Path(L"one\\two\\four")));
}

TEST_F(PathsOnDisk, AnExistingTreeIsLeftAsItIs) {
    EXPECT_TRUE(CreateDirectoryPath(scratch.Path(L"one\\two")));
    const clString file = scratch.AddFile(L"one\\two\\file", "content");
    EXPECT_TRUE(CreateDirectoryPath(scratch.Path(L"one\\two")));
    EXPECT_EQ(FileContent(file), "content");
}

TEST_F(PathsOnDisk, FoldersAreMadeFromTheOutermostIn) {
    const ImportStub stub("CreateDirectoryW", WatchedCreate);
    EXPECT_TRUE(CreateDirectoryPath(L"Q:\\a\\b\\c\\"));
    EXPECT_EQ(calls, (std::vector<std::string>{"Q:\\a", "Q:\\a\\b", "Q:\\a\\b\\c"}));
}

TEST_F(PathsOnDisk, TheFirstFailureEndsTheMaking) {
    const ImportStub stub("CreateDirectoryW", WatchedCreate);
    refusal = ERROR_ACCESS_DENIED;
    refusedFrom = 1;
    EXPECT_FALSE(CreateDirectoryPath(L"Q:\\a\\b\\c"));
    EXPECT_EQ(calls, (std::vector<std::string>{"Q:\\a", "Q:\\a\\b"}));
    // What exists already is no failure.
    calls.clear();
    refusal = ERROR_ALREADY_EXISTS;
    refusedFrom = 0;
    EXPECT_TRUE(CreateDirectoryPath(L"Q:\\a\\b\\c"));
    EXPECT_EQ(calls.size(), 3u);
}

TEST_F(PathsOnDisk, WhatWasMadeBeforeAFailureStays) {
    scratch.AddFolder(L"one");
    scratch.AddFile(L"one\\file");
    EXPECT_FALSE(CreateDirectoryPath(scratch.Path(L"one\\file\\below")));
    EXPECT_TRUE(IsFolder(scratch.Path(L"one")));
    EXPECT_FALSE(CreateDirectoryPath(scratch.Path(L"two\\<>|:\\three")));
    EXPECT_TRUE(IsFolder(scratch.Path(L"two")));
}

TEST_F(PathsOnDisk, APathWithNothingToMakeIsMadeWithoutACall) {
    const ImportStub stub("CreateDirectoryW", WatchedCreate);
    refusedFrom = 0;
    for (const wchar_t* path : {L"Q:\\", L"Q:", L"name", L"\\\\server\\", L"a\\b"}) {
        EXPECT_TRUE(CreateDirectoryPath(path)) << Utf8(path);
    }
    EXPECT_FALSE(CreateDirectoryPath(L""));
    EXPECT_TRUE(calls.empty());
}

TEST_F(PathsOnDisk, FoldersOf248CharactersAreMadeByTheirLongPath) {
    const ImportStub stub("CreateDirectoryW", WatchedCreate);
    const clString path = OfLength(L"Q:\\one\\", 248);
    EXPECT_TRUE(CreateDirectoryPath(path));
    EXPECT_EQ(calls, (std::vector<std::string>{"\\\\?\\Q:\\one", "\\\\?\\" + Utf8(path)}));
    calls.clear();
    EXPECT_TRUE(CreateDirectoryPath(OfLength(L"Q:\\one\\", 247)));
    EXPECT_EQ(calls.front(), "Q:\\one");
}

TEST_F(PathsOnDisk, LongFoldersAreReallyMadeAndFound) {
    clString path = scratch.Path();
    for (int i = 0; i < 3; ++i) {
        path.Append(OfLength(L"", 120));
        path.Append(L'\\');
    }
    EXPECT_TRUE(CreateDirectoryPath(path));
    EXPECT_TRUE(PathExists(path));
    path.Append(L"file");
    EXPECT_FALSE(PathExists(path));
}

TEST_F(PathsOnDisk, AFileIsDeleted) {
    const clString file = scratch.AddFile(L"file");
    EXPECT_TRUE(DeletePath(file));
    EXPECT_FALSE(PathExists(file));
    EXPECT_FALSE(DeletePath(file));
    EXPECT_FALSE(DeletePath(scratch.Path(L"missing\\file")));
}

TEST_F(PathsOnDisk, AReadOnlyFileIsDeletedOnTheSecondAttempt) {
    const clString file = scratch.AddFile(L"file");
    SetFileAttributesW(file.Chars(), FILE_ATTRIBUTE_READONLY);
    EXPECT_FALSE(DeletePath(file, true));
    EXPECT_TRUE(PathExists(file));
    EXPECT_TRUE(DeletePath(file));
    EXPECT_FALSE(PathExists(file));
}

TEST_F(PathsOnDisk, TheAttributesAreWrittenAndTheDeletionRetriedOnce) {
    const ImportStub deletion("DeleteFileW", RefusedDelete);
    const ImportStub attributes("SetFileAttributesW", WatchedSetAttributes);
    const ImportStub finding("FindFirstFileW", FoundReadOnly);
    refusal = ERROR_ACCESS_DENIED;
    SetLastError(ERROR_GEN_FAILURE);
    EXPECT_FALSE(DeletePath(L"Q:\\x"));
    EXPECT_EQ(calls, (std::vector<std::string>{"delete Q:\\x", "find Q:\\x", "attributes Q:\\x",
                                               "delete Q:\\x"}));
    EXPECT_EQ(writtenAttributes, DWORD{FILE_ATTRIBUTE_HIDDEN});
}

TEST_F(PathsOnDisk, OnlyADeniedAccessIsRetried) {
    const ImportStub deletion("DeleteFileW", RefusedDelete);
    refusal = ERROR_SHARING_VIOLATION;
    EXPECT_FALSE(DeletePath(L"Q:\\x"));
    EXPECT_EQ(calls.size(), 1u);
    calls.clear();
    EXPECT_FALSE(DeletePath(L""));
    EXPECT_TRUE(calls.empty());
}

TEST_F(PathsOnDisk, DeletingAndAttributesUseTheLongPathFrom248On) {
    const ImportStub deletion("DeleteFileW", RefusedDelete);
    const ImportStub attributes("SetFileAttributesW", WatchedSetAttributes);
    const ImportStub finding("FindFirstFileW", FoundReadOnly);
    for (const std::int32_t length : {247, 248}) {
        const clString path = OfLength(L"Q:\\", length);
        const std::string given = (length < 248 ? "" : "\\\\?\\") + Utf8(path);
        calls.clear();
        EXPECT_FALSE(DeletePath(path));
        EXPECT_FALSE(ClearReadOnly(path));
        EXPECT_EQ(calls, (std::vector<std::string>{"delete " + given, "find " + given,
                                                   "attributes " + given}));
    }
}

TEST_F(PathsOnDisk, ClearReadOnlyLeavesTheOtherAttributes) {
    const clString file = scratch.AddFile(L"file");
    SetFileAttributesW(file.Chars(), FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN);
    EXPECT_TRUE(ClearReadOnly(file));
    const DWORD attributes = GetFileAttributesW(file.Chars());
    EXPECT_EQ(attributes & FILE_ATTRIBUTE_READONLY, 0u);
    EXPECT_NE(attributes & FILE_ATTRIBUTE_HIDDEN, 0u);
    EXPECT_FALSE(ClearReadOnly(scratch.Path(L"missing")));
}

clString RootOfAFreeLetter() {
    wchar_t root[] = L"Z:\\";
    while ((GetLogicalDrives() & (1u << (root[0] - L'A'))) != 0)
        --root[0];
    return root;
}

TEST_F(PathsOnDisk, FilesFoldersAndDriveRootsExist) {
    scratch.AddFile(L"file");
    EXPECT_TRUE(PathExists(scratch.Path(L"file")));
    EXPECT_TRUE(PathExists(scratch.Path()));
    EXPECT_TRUE(PathExists(L"C:\\"));
    EXPECT_TRUE(PathExists(L"C:"));
    EXPECT_FALSE(PathExists(scratch.Path(L"missing")));
    EXPECT_FALSE(PathExists(scratch.Path(L"missing\\file")));
    EXPECT_FALSE(PathExists(RootOfAFreeLetter()));
    EXPECT_FALSE(PathExists(L""));
}

TEST_F(PathsOnDisk, WhatIsNotFoundIsTriedAsADriveRoot) {
    const ImportStub stub("GetDriveTypeW", WatchedDriveType);
    refusal = DRIVE_CDROM;  // its answer
    EXPECT_TRUE(PathExists(L"B:"));
    refusal = DRIVE_NO_ROOT_DIR;
    EXPECT_FALSE(PathExists(L"B:"));
    refusal = DRIVE_UNKNOWN;
    EXPECT_TRUE(PathExists(L"B:\\"));
    EXPECT_EQ(calls, (std::vector<std::string>{"B:\\", "B:\\", "B:\\"}));
    calls.clear();
    EXPECT_TRUE(PathExists(scratch.Path()));
    EXPECT_FALSE(PathExists(L""));
    EXPECT_TRUE(calls.empty());
}

TEST_F(PathsOnDisk, AnExistingPathCostsOneFind) {
    const ImportStub stub("FindFirstFileW", FoundReadOnly);
    const ImportStub type("GetDriveTypeW", WatchedDriveType);
    EXPECT_TRUE(PathExists(L"Q:\\x"));
    EXPECT_EQ(calls, (std::vector<std::string>{"find Q:\\x"}));
}
