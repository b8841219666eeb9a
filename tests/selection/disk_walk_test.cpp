#include "selection/disk_walk.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "foundation/paths.h"
#include "selection/gather.h"
#include "tests/support/import_stub.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/text.h"

namespace {

using Texts = std::vector<std::string>;

void Hide(const clString& path) {
    ASSERT_TRUE(SetFileAttributesW(path.Chars(), FILE_ATTRIBUTE_HIDDEN)) << Utf8(path);
}

bool IsDots(const wchar_t* name) {
    return lstrcmpW(name, L".") == 0 || lstrcmpW(name, L"..") == 0;
}

// Names in the file system's own order.
Texts NamesOnDisk(const clString& folder) {
    clString pattern(folder);
    pattern.Append(L"*.*");
    Texts names;
    WIN32_FIND_DATAW record;
    const HANDLE find = FindFirstFileW(pattern.Chars(), &record);
    if (find == INVALID_HANDLE_VALUE) return names;
    do {
        if (!IsDots(record.cFileName)) names.push_back(Utf8(record.cFileName));
    } while (FindNextFileW(find, &record));
    FindClose(find);
    return names;
}

// The find sequences that the program begins and ends.
class FindCount {
public:
    FindCount() : first_("FindFirstFileW", First), close_("FindClose", Close) {
        begun = ended = 0;
        realFirst = first_.Original<decltype(FindFirstFileW)>();
        realClose = close_.Original<decltype(FindClose)>();
    }

    static inline int begun = 0;
    static inline int ended = 0;

private:
    static HANDLE WINAPI First(LPCWSTR name, LPWIN32_FIND_DATAW record) {
        const HANDLE find = realFirst(name, record);
        if (find != INVALID_HANDLE_VALUE) ++begun;
        return find;
    }
    static BOOL WINAPI Close(HANDLE find) {
        ++ended;
        return realClose(find);
    }

    static inline decltype(&FindFirstFileW) realFirst = nullptr;
    static inline decltype(&FindClose) realClose = nullptr;

    ImportStub first_;
    ImportStub close_;
};

class DiskWalkTest : public testing::Test {
protected:
    void SetUp() override { types.Add(L".mp3", L"", false); }

    // What the walk tells of a folder: "d" or "f", "h" if hidden, and the name.
    Texts Told(const clString& folder) {
        DiskWalk walk;
        const auto entries = walk.Open(folder);
        Texts told;
        FolderEntry entry;
        while (entries->Next(entry)) {
            EXPECT_EQ(entry.path->CompareNoCase(folder, folder.Length()), 0);
            told.push_back((entry.isDirectory ? std::string("d") : std::string("f")) +
                           (entry.isHidden ? "h " : " ") + Utf8(FileNameOf(*entry.path)));
        }
        return told;
    }
    Texts Gather() {
        DiskWalk walk;
        clStringList files;
        GatherFiles(lists, filter, walk, files);
        Texts found;
        for (std::int64_t i = 0; i < files.Count(); ++i)
            found.push_back(Utf8(files.At(i)->Mid(root.Length() + 1)));
        return found;
    }

    const ScratchFolder scratch;
    const clString root = scratch.Path();
    clAudioTypes types;
    AudioTypeFilter filter{types};
    SelectionLists lists;
};

}  // namespace

TEST_F(DiskWalkTest, TellsTheEntriesInTheOrderOfTheFileSystem) {
    for (const wchar_t* name : {L"z.mp3", L"a.mp3", L"m.txt", L"0.mp3", L"K.mp3", L"k2.mp3"})
        scratch.AddFile(name);
    Texts expected;
    for (const std::string& name : NamesOnDisk(root))
        expected.push_back("f " + name);
    ASSERT_EQ(expected.size(), 6u);
    EXPECT_EQ(Told(root), expected);
}

TEST_F(DiskWalkTest, TellsFoldersAndWhatIsHidden) {
    scratch.AddFolder(L"d");
    scratch.AddFolder(L"dh");
    scratch.AddFile(L"f.mp3");
    scratch.AddFile(L"fh.mp3");
    Hide(scratch.Path(L"dh"));
    Hide(scratch.Path(L"fh.mp3"));
    Texts told = Told(root);
    std::sort(told.begin(), told.end());
    EXPECT_EQ(told, (Texts{"d d", "dh dh", "f f.mp3", "fh fh.mp3"}));
}

TEST_F(DiskWalkTest, AnEmptyOrVanishedFolderHasNoEntries) {
    EXPECT_EQ(Told(root), Texts{});
    EXPECT_EQ(Told(scratch.Path(L"gone\\")), Texts{});
}

TEST_F(DiskWalkTest, ServesTwoFoldersAtOnce) {
    scratch.AddFolder(L"d");
    scratch.AddFile(L"d\\1.mp3");
    DiskWalk walk;
    const auto outer = walk.Open(root);
    FolderEntry first;
    ASSERT_TRUE(outer->Next(first));
    const auto inner = walk.Open(scratch.Path(L"d\\"));
    FolderEntry second;
    ASSERT_TRUE(inner->Next(second));
    EXPECT_TRUE(first.path->Equals(scratch.Path(L"d")));
    EXPECT_TRUE(second.path->Equals(scratch.Path(L"d\\1.mp3")));
    EXPECT_FALSE(outer->Next(first));
    EXPECT_FALSE(inner->Next(second));
}

TEST_F(DiskWalkTest, GathersHiddenFilesAndAHiddenFolderNamedLikeOne) {
    scratch.AddFile(L"h.mp3");
    scratch.AddFolder(L"x.mp3");
    scratch.AddFile(L"x.mp3\\inside.mp3");
    scratch.AddFolder(L"secret");
    scratch.AddFile(L"secret\\s.mp3");
    for (const wchar_t* name : {L"h.mp3", L"x.mp3", L"secret"})
        Hide(scratch.Path(name));
    lists._FoldersRecursive.Add(root);
    Texts found = Gather();
    std::sort(found.begin(), found.end());
    EXPECT_EQ(found, (Texts{"h.mp3", "x.mp3"}));
}

TEST_F(DiskWalkTest, AVanishedFolderAddsNothingAndTheRestIsFound) {
    scratch.AddFile(L"1.mp3");
    lists._FoldersRecursive.Add(scratch.Path(L"gone\\"));
    lists._FoldersRecursive.Add(root);
    lists._FoldersOnly.Add(scratch.Path(L"gone too\\"));
    EXPECT_EQ(Gather(), (Texts{"1.mp3"}));
}

TEST_F(DiskWalkTest, BeginsOneFindSequenceForEachFolderAndNoneForExcludedOnes) {
    for (const wchar_t* name : {L"a", L"a\\b", L"c", L"d", L"secret"})
        scratch.AddFolder(name);
    for (const wchar_t* name : {L"a\\b\\1.mp3", L"c\\2.mp3", L"d\\3.mp3"})
        scratch.AddFile(name);
    Hide(scratch.Path(L"secret"));
    lists._FoldersRecursive.Add(root);
    lists._FoldersExcluded.Add(scratch.Path(L"c\\"));
    Texts found;
    {
        const FindCount count;
        found = Gather();
        // The root, a, a\b and d.
        EXPECT_EQ(FindCount::begun, 4);
        EXPECT_EQ(FindCount::ended, 4);
    }
    std::sort(found.begin(), found.end());
    EXPECT_EQ(found, (Texts{"a\\b\\1.mp3", "d\\3.mp3"}));
}

TEST_F(DiskWalkTest, HoldsTheErrorModeForItsLifeAndLeavesNone) {
    SetErrorMode(SEM_NOOPENFILEERRORBOX);
    {
        DiskWalk walk;
        EXPECT_EQ(GetErrorMode(), static_cast<UINT>(SEM_FAILCRITICALERRORS));
    }
    EXPECT_EQ(GetErrorMode(), 0u);
}
