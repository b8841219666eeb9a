#include "selection/gather.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "foundation/paths.h"
#include "tests/support/text.h"

namespace {

using Texts = std::vector<std::string>;

enum class Kind { File, HiddenFile, Folder, HiddenFolder };

struct MemoryEntry {
    const wchar_t* name;
    Kind kind = Kind::File;
};

class MemoryEntries : public FolderEntries {
public:
    MemoryEntries(clString folder, const std::vector<MemoryEntry>& entries)
        : folder_(std::move(folder)), entries_(entries) {}

    bool Next(FolderEntry& entry) override {
        if (next_ == entries_.size()) return false;
        const MemoryEntry& found = entries_[next_++];
        path_.Assign(folder_);
        path_.Append(found.name);
        entry.path = &path_;
        entry.isDirectory = found.kind == Kind::Folder || found.kind == Kind::HiddenFolder;
        entry.isHidden = found.kind == Kind::HiddenFile || found.kind == Kind::HiddenFolder;
        return true;
    }

private:
    clString folder_;
    clString path_;
    const std::vector<MemoryEntry>& entries_;
    std::size_t next_ = 0;
};

// Folders by their exact path; any other cannot be read.
class MemoryWalk : public FolderWalk {
public:
    std::unique_ptr<FolderEntries> Open(const clString& folder) override {
        opened.push_back(Utf8(folder));
        const auto found = folders.find(Utf8(folder));
        return std::make_unique<MemoryEntries>(folder,
                                               found == folders.end() ? none_ : found->second);
    }

    std::map<std::string, std::vector<MemoryEntry>> folders;
    Texts opened;

private:
    const std::vector<MemoryEntry> none_ = {};
};

class GatherTest : public testing::Test {
protected:
    void SetUp() override {
        types.Add(L".mp3", L"MPEG", false);
        types.Add(L".FLAC", L"Lossless", false);
        types.Add(L".wma", L"Windows Media", true);
        walk.folders["C:\\M\\"] = {{L"z.mp3"},     {L"Rock", Kind::Folder},
                                   {L"a.flac"},    {L"Jazz", Kind::Folder},
                                   {L"cover.jpg"}, {L"b.mp3"}};
        walk.folders["C:\\M\\Rock\\"] = {{L"Live", Kind::Folder}, {L"1.mp3"}};
        walk.folders["C:\\M\\Rock\\Live\\"] = {{L"2.mp3"}};
        walk.folders["C:\\M\\Jazz\\"] = {{L"3.mp3"}, {L"Old", Kind::Folder}};
        walk.folders["C:\\M\\Jazz\\Old\\"] = {{L"4.mp3"}};
    }
    Texts Gather() {
        clStringList files;
        GatherFiles(lists, filter, walk, files);
        Texts found;
        for (std::int64_t i = 0; i < files.Count(); ++i)
            found.push_back(Utf8(*files.At(i)));
        return found;
    }
    bool IsWanted(const wchar_t* path) { return filter.IsWantedAudioFile(path); }

    clAudioTypes types;
    AudioTypeFilter filter{types};
    SelectionLists lists;
    MemoryWalk walk;
};

}  // namespace

TEST_F(GatherTest, TheExtensionDecidesWithoutRegardToCase) {
    struct Case {
        const wchar_t* path;
        bool wanted;
    };
    const Case cases[] = {
        {L"C:\\a.mp3", true},      {L"C:\\a.MP3", true},
        {L"C:\\a.flac", true},     {L"C:\\a.b.mp3", true},
        {L"C:\\.mp3", true},       {L"C:\\a.wma", false},
        {L"C:\\a.mp3.txt", false}, {L"C:\\a.mp", false},
        {L"C:\\a.mp33", false},    {L"C:\\mp3", false},
        {L"C:\\x.mp3\\a", false},  {L"C:\\a.", false},
        {L"C:\\a.mp3.", false},    {L"", false},
        {L"C:\\a", false},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(IsWanted(each.path), each.wanted) << Utf8(each.path);
        filter.ForgetLastAudioType();
        EXPECT_EQ(IsWanted(each.path), each.wanted) << Utf8(each.path);
    }
}

TEST_F(GatherTest, NoTypeMatchesABareDot) {
    types.Add(L".", L"", false);
    types.Add(L"", L"", false);
    EXPECT_FALSE(IsWanted(L"C:\\a."));
    EXPECT_FALSE(IsWanted(L"C:\\a"));
    EXPECT_FALSE(IsWanted(L"C:\\x.mp3\\a"));
}

TEST_F(GatherTest, OnlyTheCaseOfAToZIsIgnored) {
    types.Add(L".\u00e4", L"", false);
    EXPECT_TRUE(IsWanted(L"C:\\a.\u00e4"));
    EXPECT_FALSE(IsWanted(L"C:\\a.\u00c4"));
}

TEST_F(GatherTest, ASecondTypeOfTheSameExtensionMayStillBeWanted) {
    types.Add(L".WMA", L"Another decoder", false);
    EXPECT_TRUE(IsWanted(L"C:\\a.wma"));
}

TEST_F(GatherTest, TheLastTypeIsRememberedUntilItIsForgotten) {
    EXPECT_TRUE(IsWanted(L"C:\\a.Mp3"));
    types.At(0).excluded = true;
    EXPECT_TRUE(IsWanted(L"C:\\b.mP3"));
    filter.ForgetLastAudioType();
    EXPECT_FALSE(IsWanted(L"C:\\b.mP3"));
    EXPECT_FALSE(IsWanted(L"C:\\b"));
}

TEST_F(GatherTest, ARefusedFileLeavesTheRememberedType) {
    EXPECT_TRUE(IsWanted(L"C:\\a.mp3"));
    types.At(0).excluded = true;
    EXPECT_FALSE(IsWanted(L"C:\\a.txt"));
    EXPECT_TRUE(IsWanted(L"C:\\a.mp3"));
    EXPECT_TRUE(IsWanted(L"C:\\a.flac"));
    EXPECT_FALSE(IsWanted(L"C:\\a.mp3"));
}

TEST_F(GatherTest, WithoutDecodersNothingIsFound) {
    types.Clear();
    lists._FoldersRecursive.Add(L"C:\\M\\");
    EXPECT_EQ(Gather(), Texts{});
}

TEST_F(GatherTest, ASubFoldersFilesStandAtItsPlaceAmongTheEntries) {
    lists._FoldersRecursive.Add(L"C:\\M\\");
    EXPECT_EQ(Gather(), (Texts{"C:\\M\\z.mp3", "C:\\M\\Rock\\Live\\2.mp3", "C:\\M\\Rock\\1.mp3",
                               "C:\\M\\a.flac", "C:\\M\\Jazz\\3.mp3", "C:\\M\\Jazz\\Old\\4.mp3",
                               "C:\\M\\b.mp3"}));
}

TEST_F(GatherTest, RecursiveFoldersGoFirstThenSingleFoldersThenFiles) {
    lists._FilesIncluded.Add(L"D:\\y.mp3");
    lists._FilesIncluded.Add(L"D:\\x.mp3");
    lists._FoldersOnly.Add(L"C:\\M\\Jazz\\Old\\");
    lists._FoldersOnly.Add(L"C:\\M\\");
    lists._FoldersRecursive.Add(L"C:\\M\\Rock\\");
    EXPECT_EQ(Gather(),
              (Texts{"C:\\M\\Rock\\Live\\2.mp3", "C:\\M\\Rock\\1.mp3", "C:\\M\\Jazz\\Old\\4.mp3",
                     "C:\\M\\z.mp3", "C:\\M\\a.flac", "C:\\M\\b.mp3", "D:\\y.mp3", "D:\\x.mp3"}));
}

TEST_F(GatherTest, AppendsToWhatIsThere) {
    lists._FilesIncluded.Add(L"D:\\x.mp3");
    clStringList files;
    files.Add(L"first");
    GatherFiles(lists, filter, walk, files);
    ASSERT_EQ(files.Count(), 2);
    EXPECT_TRUE(files.At(0)->Equals(L"first"));
}

TEST_F(GatherTest, ASubFolderForItsFilesOnlyAppearsOnceBehindTheRecursiveWalk) {
    lists._FoldersRecursive.Add(L"C:\\M\\");
    lists._FoldersOnly.Add(L"c:\\m\\rock\\");
    walk.folders["c:\\m\\rock\\"] = {{L"Live", Kind::Folder}, {L"1.mp3"}};
    EXPECT_EQ(Gather(), (Texts{"C:\\M\\z.mp3", "C:\\M\\a.flac", "C:\\M\\Jazz\\3.mp3",
                               "C:\\M\\Jazz\\Old\\4.mp3", "C:\\M\\b.mp3", "c:\\m\\rock\\1.mp3"}));
}

TEST_F(GatherTest, AnExcludedSubFolderAddsNothingAndIsNotOpened) {
    lists._FoldersRecursive.Add(L"C:\\M\\");
    lists._FoldersExcluded.Add(L"C:\\m\\ROCK\\");
    lists._FoldersExcluded.Add(L"C:\\M\\Jazz\\Old\\");
    EXPECT_EQ(Gather(),
              (Texts{"C:\\M\\z.mp3", "C:\\M\\a.flac", "C:\\M\\Jazz\\3.mp3", "C:\\M\\b.mp3"}));
    EXPECT_EQ(walk.opened, (Texts{"C:\\M\\", "C:\\M\\Jazz\\"}));
}

TEST_F(GatherTest, AnExcludedFolderThatIsTickedItselfIsWalked) {
    lists._FoldersRecursive.Add(L"C:\\M\\Jazz\\");
    lists._FoldersExcluded.Add(L"C:\\M\\Jazz\\");
    EXPECT_EQ(Gather(), (Texts{"C:\\M\\Jazz\\3.mp3", "C:\\M\\Jazz\\Old\\4.mp3"}));
}

TEST_F(GatherTest, UntickedFilesAreLeftOutOfBothKindsOfFolders) {
    lists._FoldersRecursive.Add(L"C:\\M\\Rock\\");
    lists._FoldersOnly.Add(L"C:\\M\\");
    lists._FilesExcluded.Add(L"c:\\m\\rock\\LIVE\\2.MP3");
    lists._FilesExcluded.Add(L"C:\\M\\a.flac");
    EXPECT_EQ(Gather(), (Texts{"C:\\M\\Rock\\1.mp3", "C:\\M\\z.mp3", "C:\\M\\b.mp3"}));
}

TEST_F(GatherTest, FilesTickedByHandAreNotTested) {
    lists._FilesIncluded.Add(L"C:\\gone.mp3");
    lists._FilesIncluded.Add(L"C:\\a.wma");
    lists._FilesIncluded.Add(L"C:\\readme");
    lists._FilesExcluded.Add(L"C:\\gone.mp3");
    types.At(0).excluded = true;
    EXPECT_EQ(Gather(), (Texts{"C:\\gone.mp3", "C:\\a.wma", "C:\\readme"}));
    EXPECT_TRUE(walk.opened.empty());
}

TEST_F(GatherTest, HiddenFilesAreGatheredAndHiddenFoldersAreNotEntered) {
    walk.folders["C:\\H\\"] = {{L"h.mp3", Kind::HiddenFile}, {L"Secret", Kind::HiddenFolder}};
    walk.folders["C:\\H\\Secret\\"] = {{L"s.mp3"}};
    lists._FoldersRecursive.Add(L"C:\\H\\");
    lists._FoldersOnly.Add(L"C:\\H\\");
    EXPECT_EQ(Gather(), (Texts{"C:\\H\\h.mp3", "C:\\H\\h.mp3"}));
    EXPECT_EQ(walk.opened, (Texts{"C:\\H\\", "C:\\H\\"}));
}

TEST_F(GatherTest, AHiddenFolderNamedLikeAFileIsTakenForOne) {
    walk.folders["C:\\H\\"] = {
        {L"x.mp3", Kind::HiddenFolder}, {L"y.mp3", Kind::HiddenFolder}, {L"z.mp3", Kind::Folder}};
    walk.folders["C:\\H\\x.mp3\\"] = {{L"inside.mp3"}};
    lists._FilesExcluded.Add(L"C:\\H\\y.mp3");
    // The look-up of a folder does not concern what passes as a file.
    lists._FoldersExcluded.Add(L"C:\\H\\x.mp3\\");
    lists._FoldersRecursive.Add(L"C:\\H\\");
    EXPECT_EQ(Gather(), (Texts{"C:\\H\\x.mp3"}));
    lists._FoldersRecursive.Clear();
    lists._FoldersOnly.Add(L"C:\\H\\");
    EXPECT_EQ(Gather(), (Texts{"C:\\H\\x.mp3"}));
}

TEST_F(GatherTest, AFolderReachedTwiceIsListedTwice) {
    lists._FoldersRecursive.Add(L"C:\\M\\Jazz\\");
    lists._FoldersRecursive.Add(L"C:\\M\\Jazz\\Old\\");
    EXPECT_EQ(Gather(),
              (Texts{"C:\\M\\Jazz\\3.mp3", "C:\\M\\Jazz\\Old\\4.mp3", "C:\\M\\Jazz\\Old\\4.mp3"}));
}

TEST_F(GatherTest, AFolderThatCannotBeReadAddsNothing) {
    lists._FoldersRecursive.Add(L"C:\\Gone\\");
    lists._FoldersRecursive.Add(L"C:\\M\\Rock\\Live\\");
    lists._FoldersOnly.Add(L"C:\\Gone\\");
    EXPECT_EQ(Gather(), (Texts{"C:\\M\\Rock\\Live\\2.mp3"}));
}

TEST_F(GatherTest, AnEntryWithoutItsBackslashIsOpenedWithOne) {
    lists._FoldersRecursive.Add(L"C:\\M\\Rock");
    lists._FoldersOnly.Add(L"C:\\M\\Jazz");
    EXPECT_EQ(Gather(),
              (Texts{"C:\\M\\Rock\\Live\\2.mp3", "C:\\M\\Rock\\1.mp3", "C:\\M\\Jazz\\3.mp3"}));
}

namespace {

// Each folder holds one folder "d" down to a depth, and the deepest a file.
class DeepWalk : public FolderWalk {
public:
    static constexpr int depth = 16000;
    static const std::vector<MemoryEntry> down;
    static const std::vector<MemoryEntry> bottom;

    std::unique_ptr<FolderEntries> Open(const clString& folder) override {
        return std::make_unique<MemoryEntries>(folder, ++opened < depth ? down : bottom);
    }
    int opened = 0;
};

const std::vector<MemoryEntry> DeepWalk::down = {{L"d", Kind::Folder}};
const std::vector<MemoryEntry> DeepWalk::bottom = {{L"x.mp3"}};

}  // namespace

TEST_F(GatherTest, TheDeepestPathsOfTheFileSystemDoNotExhaustTheStack) {
    DeepWalk deep;
    lists._FoldersRecursive.Add(L"C:\\");
    clStringList files;
    GatherFiles(lists, filter, deep, files);
    ASSERT_EQ(files.Count(), 1);
    EXPECT_EQ(files.At(0)->Length(), 3 + 2 * (DeepWalk::depth - 1) + 5);
}

namespace {

clString NumberedName(const wchar_t* stem, int number, const wchar_t* ending) {
    clString name(stem);
    name.Append(clString(number));
    name.Append(ending);
    return name;
}

}  // namespace

// Each file and folder asks the exception lists: the answers come from an index,
// and are those of a walk over the whole lists.
TEST_F(GatherTest, ThousandsOfExceptionsLeaveOutExactlyThemselves) {
    constexpr int folders = 60;
    constexpr int files = 30;
    std::vector<clString> names;
    names.reserve(folders + files);
    for (int i = 0; i < folders; ++i)
        names.push_back(NumberedName(L"Album ", i, L""));
    for (int i = 0; i < files; ++i)
        names.push_back(NumberedName(L"Track ", i, L".mp3"));
    std::vector<MemoryEntry> album;
    for (int i = 0; i < files; ++i)
        album.push_back({names[static_cast<std::size_t>(folders + i)].Chars()});
    Texts expected;
    for (int i = 0; i < folders; ++i) {
        const clString& name = names[static_cast<std::size_t>(i)];
        walk.folders["C:\\All\\"].push_back({name.Chars(), Kind::Folder});
        clString folder(L"C:\\All\\");
        folder.Append(name);
        folder.Append(L'\\');
        walk.folders[Utf8(folder)] = album;
        if (i % 7 == 3) lists._FoldersExcluded.Add(folder.Upper());
        for (int j = 0; j < files; ++j) {
            clString path(folder);
            path.Append(names[static_cast<std::size_t>(folders + j)]);
            if ((i + j) % 3 == 0) lists._FilesExcluded.Add(path.Lower());
            if ((i + j) % 3 != 0 && i % 7 != 3) expected.push_back(Utf8(path));
        }
    }
    lists._FoldersRecursive.Add(L"C:\\All\\");
    EXPECT_EQ(Gather(), expected);
}
