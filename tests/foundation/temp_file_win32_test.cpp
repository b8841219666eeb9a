#include <gtest/gtest.h>
#include <windows.h>

#include <cwchar>
#include <string>

#include "foundation/folders.h"
#include "foundation/paths.h"
#include "tests/support/import_stub.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/text.h"

namespace {

UINT WINAPI NoName(LPCWSTR, LPCWSTR prefix, UINT unique, LPWSTR) {
    EXPECT_EQ(Utf8(prefix), "TMP");
    EXPECT_EQ(unique, 0u);
    return 0;
}

// Lets the temporary folder be another one.
class TempFolder {
public:
    explicit TempFolder(const clString& folder) {
        GetEnvironmentVariableW(L"TMP", before, MAX_PATH);
        SetEnvironmentVariableW(L"TMP", folder.Chars());
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    ~TempFolder() { SetEnvironmentVariableW(L"TMP", before); }

private:
    wchar_t before[MAX_PATH] = {};
};

// True for FOLDER, "TMP", a number below 9999 and ".tmp".
bool IsNumbered(const clString& path, const clString& folder) {
    const clString name = path.Mid(folder.Length() + 1);
    const clString number = name.Mid(4, name.Length() - 4);
    clString expected(folder);
    expected.Append(L"TMP");
    clString digits;
    digits.FromUnsigned(static_cast<std::uint64_t>(number.ToInt()));
    expected.Append(digits);
    expected.Append(L".tmp");
    return number.ToInt() < 9999 && path.Equals(expected);
}

}  // namespace

TEST(TempFile, IsAnEmptyFileThatGoesWithItsObject) {
    const ScratchFolder scratch;
    const TempFolder folder(scratch.Path());
    clString path;
    {
        clTempFile file;
        EXPECT_TRUE(file.IsEmpty());
        file.Create();
        path.Assign(file);
        EXPECT_EQ(Utf8(DirectoryOf(path)), Utf8(scratch.Path()));
        EXPECT_EQ(FileNameOf(path).CompareNoCase(L"TMP", -1), 0) << Utf8(path);
        EXPECT_EQ(ExtensionOf(path).CompareNoCase(L".tmp"), 0) << Utf8(path);
        EXPECT_EQ(FileContent(path), "");
    }
    EXPECT_FALSE(PathExists(path));
}

TEST(TempFile, ASecondCreateDeletesTheFirstFile) {
    const ScratchFolder scratch;
    const TempFolder folder(scratch.Path());
    clTempFile file;
    file.Create();
    const clString first(file);
    SetFileAttributesW(first.Chars(), FILE_ATTRIBUTE_READONLY);
    clTempFile other;
    other.Create();  // so that the first name is not simply given again
    file.Create();
    EXPECT_FALSE(first.Equals(other));
    EXPECT_TRUE(PathExists(file));
    EXPECT_TRUE(PathExists(other));
    EXPECT_TRUE(file.Equals(first) || !PathExists(first));
}

TEST(TempFile, DeletesWhatItHoldsBeforeItLooksForAName) {
    const ScratchFolder scratch;
    const TempFolder folder(scratch.Path());
    const clString held = scratch.AddFile(L"held", "content");
    clTempFile file;
    file.Assign(held);
    file.Create();
    EXPECT_FALSE(PathExists(held));
    EXPECT_FALSE(file.Equals(held));
}

TEST(TempFile, WithoutANameFromThePlatformItIsNumbered) {
    const ScratchFolder scratch;
    const TempFolder folder(scratch.Path());
    const ImportStub stub("GetTempFileNameW", NoName);
    clTempFile file;
    file.Create();
    EXPECT_TRUE(IsNumbered(file, scratch.Path())) << Utf8(file);
    EXPECT_EQ(FileContent(file), "");
}

TEST(TempFile, AMissingFolderIsMade) {
    const ScratchFolder scratch;
    const clString missing = scratch.Path(L"one\\two\\");
    const TempFolder folder(missing);
    clTempFile file;
    file.Create();
    EXPECT_TRUE(IsNumbered(file, missing)) << Utf8(file);
    EXPECT_EQ(FileContent(file), "");
}

TEST(TempFile, WhenNothingCanBeMadeThePathIsThereAllTheSame) {
    const ScratchFolder scratch;
    scratch.AddFile(L"file");
    const clString impossible = scratch.Path(L"file\\below\\");
    const TempFolder folder(impossible);
    clTempFile file;
    file.Create();
    EXPECT_TRUE(IsNumbered(file, impossible)) << Utf8(file);
    EXPECT_EQ(FileContent(file), "(missing)");
}

TEST(TempFile, WhatTheNameHeldBeforeIsGone) {
    const ScratchFolder scratch;
    const clString existing = scratch.AddFile(L"existing", "content");
    static const wchar_t* name;
    name = existing.Chars();
    const ImportStub stub(
        "GetTempFileNameW", +[](LPCWSTR, LPCWSTR, UINT, LPWSTR text) -> UINT {
            std::wcscpy(text, name);
            return 1;
        });
    {
        clTempFile file;
        file.Create();
        EXPECT_TRUE(file.Equals(existing));
        EXPECT_EQ(FileContent(existing), "");
    }
    EXPECT_FALSE(PathExists(existing));
}

TEST(TempFile, AnObjectWithoutAPathDeletesNothing) {
    static int deletions;
    deletions = 0;
    const ImportStub stub(
        "DeleteFileW", +[](LPCWSTR) -> BOOL {
            ++deletions;
            return TRUE;
        });
    { const clTempFile file; }
    EXPECT_EQ(deletions, 0);
    {
        clTempFile file;
        file.Assign(L"Q:\\x");
    }
    EXPECT_EQ(deletions, 1);
}
