// What stands at the top of the tree: music, drives, videos and the network.
#include <gmock/gmock.h>
#include <windows.h>
// These need windows.h before them.
#include <dbt.h>
#include <shlobj.h>

#include <algorithm>

#include "tests/support/converter_side.h"
#include "tests/support/machine_parts.h"
#include "tests/support/wine.h"
#include "tests/ui/end_to_end/extra_drive.h"
#include "tests/ui/end_to_end/program_stage.h"

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using Names = std::vector<std::wstring>;

constexpr int documentsFolder = 5;
constexpr int musicFolder = 13;
constexpr int videoFolder = 14;
constexpr int publicMusicFolder = 53;
constexpr int publicVideoFolder = 55;

// Without a backslash at its end; empty if there is none.
std::wstring KnownFolder(int number) {
    wchar_t path[MAX_PATH] = {};
    if (FAILED(SHGetFolderPathW(nullptr, number, nullptr, 0, path))) return {};
    std::wstring folder(path);
    while (folder.ends_with(L'\\'))
        folder.pop_back();
    return FileExists(folder) ? folder : std::wstring();
}

// The roots behind the drives.
Names LastRoots() {
    Names roots;
    if (!KnownFolder(videoFolder).empty()) roots.push_back(L"Video");
    if (!KnownFolder(publicVideoFolder).empty()) roots.push_back(L"Public Video");
    roots.push_back(L"Network");
    return roots;
}

// What the tree has in front of its drives, and behind them.
Names FrontOf(const Names& roots) {
    return {roots.begin(), std::find_if(roots.begin(), roots.end(), &IsDrive)};
}
Names BehindDrives(const Names& roots) {
    return {std::find_if(roots.rbegin(), roots.rend(), &IsDrive).base(), roots.end()};
}

// The system's version as this Wine shows it to the program.
class clShownVersion {
public:
    explicit clShownVersion(const wchar_t* version) {
        RegSetKeyValueW(HKEY_CURRENT_USER, key, L"Version", REG_SZ, version,
                        static_cast<DWORD>((wcslen(version) + 1) * sizeof(wchar_t)));
    }
    clShownVersion(const clShownVersion&) = delete;
    clShownVersion& operator=(const clShownVersion&) = delete;
    ~clShownVersion() { RegDeleteTreeW(HKEY_CURRENT_USER, key); }

private:
    static constexpr const wchar_t* key = L"Software\\Wine\\AppDefaults\\Tonequarry.exe";
};

// A folder that the user does not have, with one file at most.
class clExtraFolder {
public:
    explicit clExtraFolder(std::wstring folder) : path(std::move(folder)) {
        CreateDirectoryW(path.c_str(), nullptr);
    }
    clExtraFolder(const clExtraFolder&) = delete;
    clExtraFolder& operator=(const clExtraFolder&) = delete;
    ~clExtraFolder() {
        DeleteFileW(file.c_str());
        RemoveDirectoryW(path.c_str());
    }

    const std::wstring& Path() const { return path; }
    const std::wstring& AddFile(const wchar_t* name) {
        file = path + L"\\" + name;
        WriteBytes(file, "x");
        return file;
    }

private:
    std::wstring path;
    std::wstring file;
};

class RootsTest : public testing::Test {
protected:
    void SetUp() override {
        if (!RunsUnderWine()) GTEST_SKIP() << "a real shell's library is left alone";
        stage.AddDecoder(L"one", "type=.abc|Some sound\n");
        stage.AddFile(L"songs\\a.abc", 100);
    }
    Names Roots() { return stage.Start().Tree().Texts(0); }
    std::string Songs() const { return NarrowUtf8(stage.Music() + L"songs"); }

    ProgramStage stage;
};

TEST_F(RootsTest, DrivesStandBetweenMusicAndVideo) {
    const RemoteTree tree = stage.Start().Tree();
    const Names roots = tree.Texts(0);
    EXPECT_EQ(FrontOf(roots), Names());
    EXPECT_EQ(BehindDrives(roots), LastRoots());
    Names drives(roots.begin(), roots.end() - static_cast<std::ptrdiff_t>(LastRoots().size()));
    std::erase_if(drives, [](const std::wstring& name) {
        return name.ends_with(L"(C:)") || name.ends_with(L"(Z:)") || name == L"Z:\\";
    });
    // The drives of the prefix, with the label or the name of the type.
    EXPECT_THAT(drives, ElementsAre(L"Removable Disk (A:)", L"Removable Disk (B:)", L"STICK (E:)",
                                    L"CD-ROM Drive (F:)", L"Network Drive (G:)", L"RAM Disk (H:)",
                                    L"Hard Disk (I:)", L"Archive (K:)", L"Removable Disk (L:)"));
    for (const RemoteItem root : tree.Children(0)) {
        EXPECT_TRUE(tree.HasExpander(root)) << NarrowUtf8(tree.Text(root));
        EXPECT_EQ(tree.State(root), 1) << NarrowUtf8(tree.Text(root));
        // Looked into when it is opened, and not before.
        EXPECT_EQ(tree.Child(root), 0) << NarrowUtf8(tree.Text(root));
    }
}

TEST_F(RootsTest, LibraryFoldersComeFirstInItsOrder) {
    std::string music = NarrowUtf8(KnownFolder(musicFolder));
    ASSERT_FALSE(music.empty());
    ASSERT_FALSE(KnownFolder(publicMusicFolder).empty());
    music.back() = static_cast<char>(music.back() ^ ('a' ^ 'A'));
    const clTestLibrary library("Some songs|" + Songs() + "\n!item\n-|C:\\\nNo path|-\n" + "Mine|" +
                                music + "\nFar away|\\\\server\\share\\tapes\n" + "Ours|" +
                                NarrowUtf8(KnownFolder(publicMusicFolder)) +
                                "\\\nNowhere|C:\\no such folder\\\n");
    const RemoteTree tree = stage.Start().Tree();
    EXPECT_THAT(FrontOf(tree.Texts(0)),
                ElementsAre(L"Some songs (" + stage.Music() + L"songs\\)", L"Music", L"Far away",
                            L"Public Music", L"Nowhere (C:\\no such folder\\)"));
    ClickSettled(tree.LabelPoint(tree.Root()));
    EXPECT_TRUE(
        WaitUntil([&] { return stage.Program().List().Column(L"Name") == Names{L"a.abc"}; }));
}

TEST_F(RootsTest, LibraryThatFailsGivesNoFolder) {
    for (const char* failure : {"!load\n", "!folders\n", "!count\n"}) {
        const clTestLibrary library("Some songs|" + Songs() + "\n" + failure);
        EXPECT_EQ(FrontOf(Roots()), Names()) << failure;
    }
}

TEST_F(RootsTest, FoldersOfTheSpecialKindStandThereOnOlderSystems) {
    const clTestLibrary library("Some songs|" + Songs() + "\n");
    {
        const clShownVersion version(L"vista");
        const Names roots = Roots();
        EXPECT_THAT(FrontOf(roots), ElementsAre(L"Music", L"Public Music"));
        EXPECT_EQ(BehindDrives(roots), LastRoots());
    }
    const clShownVersion version(L"winxp64");
    const Names roots = Roots();
    EXPECT_THAT(FrontOf(roots), ElementsAre(L"My Documents"));
    EXPECT_THAT(BehindDrives(roots), ElementsAre(L"Network"));
}

// A path without its backslash would be the beginning of its sibling's.
TEST_F(RootsTest, DocumentsFolderIsNotItsSiblingOfTheSameBeginning) {
    const ConverterStage converter("read\nsignal\n", stage.ProgramFolder());
    const clShownVersion version(L"winxp64");
    clExtraFolder sibling(KnownFolder(documentsFolder) + L" of the tests");
    const std::wstring file = sibling.AddFile(L"a.abc");
    RunningProgram& program = stage.Start(sibling.Path());
    const RemoteTree tree = program.Tree();
    ASSERT_EQ(tree.State(tree.Selected()), 4);
    const RemoteItem documents = tree.Find(0, L"My Documents");
    ASSERT_NE(documents, 0);
    for (const int state : {4, 5, 1}) {
        ClickSettled(tree.PicturePoint(documents));
        ASSERT_TRUE(WaitUntil([&] { return tree.State(documents) == state; }));
    }
    program.PressButton(BarButton::Convert);
    ASSERT_TRUE(converter.WaitFor(L"signalled"));
    EXPECT_EQ(converter.List(), ListBytes({file}));
}

TEST_F(RootsTest, LibraryFolderOnAVanishedDriveGoesForGood) {
    const clExtraDrive drive(stage.Music());
    const clTestLibrary library("Lent|" + NarrowUtf8(drive.Root()) +
                                "songs\nFar away|\\\\server\\share\\tapes\n");
    RunningProgram& program = stage.Start();
    const RemoteTree tree = program.Tree();
    const Names before = tree.Texts(0);
    ASSERT_THAT(FrontOf(before), ElementsAre(L"Lent (" + drive.Root() + L"songs\\)", L"Far away"));
    ASSERT_EQ(BehindDrives(before), LastRoots());

    drive.Disconnect();
    EXPECT_EQ(tree.Texts(0), before);
    Ask(program.Form(), WM_DEVICECHANGE, DBT_DEVICEREMOVECOMPLETE);
    const Names without = tree.Texts(0);
    EXPECT_THAT(FrontOf(without), ElementsAre(L"Far away"));
    EXPECT_FALSE(std::any_of(without.begin(), without.end(),
                             [&](const auto& text) { return drive.IsRootText(text); }));
    // Other news of devices change nothing.
    drive.Connect();
    Ask(program.Form(), WM_DEVICECHANGE, DBT_DEVNODES_CHANGED);
    EXPECT_EQ(tree.Texts(0), without);
    Ask(program.Form(), WM_DEVICECHANGE, DBT_DEVICEARRIVAL);
    Names with = tree.Texts(0);
    EXPECT_TRUE(drive.IsRootText(with.back())) << NarrowUtf8(with.back());
    with.pop_back();
    EXPECT_EQ(with, without);
    // The next start has it among the others.
    EXPECT_EQ(program.Close(), 0u);
    EXPECT_EQ(BehindDrives(Roots()), LastRoots());
}

// The letters of drives are compared exactly.
TEST_F(RootsTest, LibraryFolderWithASmallLetterBelongsToNoDrive) {
    std::string path = Songs();
    path[0] = 'c';
    const clTestLibrary library("Some songs|" + path + "\n");
    EXPECT_EQ(FrontOf(Roots()), Names());
}

TEST_F(RootsTest, RefreshDropsAFolderThatHasGoneAndKeepsDrivesWithoutADisc) {
    const std::wstring gone = stage.AddFolder(L"gone");
    const clTestLibrary library("Gone|" + NarrowUtf8(gone) + "\nHere|" + Songs() + "\n");
    RunningProgram& program = stage.Start();
    const RemoteTree tree = program.Tree();
    Names expected = tree.Texts(0);
    ASSERT_THAT(expected, testing::Contains(L"CD-ROM Drive (F:)"));
    ASSERT_EQ(expected.front(), L"Gone (" + gone + L")");
    expected.erase(expected.begin());
    ASSERT_TRUE(RemoveDirectoryW(gone.c_str()));
    program.PressButton(BarButton::Refresh);
    EXPECT_TRUE(WaitUntil([&] { return tree.Texts(0) == expected; }));
}

}  // namespace
