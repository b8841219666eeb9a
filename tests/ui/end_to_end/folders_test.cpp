// Folders of every kind, and what comes and goes while the program runs.
#include <gmock/gmock.h>
#include <windows.h>
// dbt.h needs windows.h before it.
#include <dbt.h>

#include "tests/support/converter_side.h"
#include "tests/ui/end_to_end/extra_drive.h"
#include "tests/ui/end_to_end/program_stage.h"
#include "tests/ui/keys.h"
#include "tests/ui/pointer.h"

namespace {

using testing::ElementsAre;

// Not each file system keeps all three; what it has of them is read back.
WIN32_FIND_DATAW EntryWithTimes(const std::wstring& path, const SYSTEMTIME& created,
                                const SYSTEMTIME& accessed, const SYSTEMTIME& modified) {
    FILETIME times[3] = {};
    const SYSTEMTIME* const moments[] = {&created, &accessed, &modified};
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(SystemTimeToFileTime(moments[i], &times[i]));
    const HANDLE file = CreateFileW(path.c_str(), FILE_WRITE_ATTRIBUTES, FILE_SHARE_READ, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
    EXPECT_TRUE(SetFileTime(file, &times[0], &times[1], &times[2]));
    CloseHandle(file);
    WIN32_FIND_DATAW entry = {};
    FindClose(FindFirstFileW(path.c_str(), &entry));
    return entry;
}

// As the user's region writes it, in UTC.
std::wstring DateOf(const FILETIME& time) {
    SYSTEMTIME moment = {};
    FileTimeToSystemTime(&time, &moment);
    wchar_t date[100] = {};
    wchar_t hour[100] = {};
    GetDateFormatW(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &moment, nullptr, date, 100);
    GetTimeFormatW(LOCALE_USER_DEFAULT, 0, &moment, L"hh':'mm", hour, 100);
    return std::wstring(date) + L" " + hour;
}

class FoldersTest : public testing::Test {
protected:
    FoldersTest() { stage.AddDecoder(L"one", "type=.abc|Some sound\n"); }
    RemoteTree Open() {
        const RemoteTree tree = stage.Start(stage.Music()).Tree();
        music = tree.Selected();
        ClickSettled(tree.ExpanderPoint(music));
        EXPECT_TRUE(WaitUntil([&] { return !tree.HasExpander(music) || tree.IsExpanded(music); }));
        return tree;
    }

    ProgramStage stage;
    RemoteItem music = 0;
};

TEST_F(FoldersTest, EmptyFolderLosesItsExpander) {
    const RemoteTree tree = Open();
    EXPECT_FALSE(tree.HasExpander(music));
    EXPECT_EQ(stage.Program().List().RowCount(), 0);
}

TEST_F(FoldersTest, OneFileIsListed) {
    stage.AddFile(L"only.abc");
    EXPECT_THAT(stage.Start(stage.Music()).List().Column(L"Name"), ElementsAre(L"only.abc"));
}

TEST_F(FoldersTest, FolderNamedLikeAudioIsNoFile) {
    stage.AddFile(L"a.abc");
    stage.AddFolder(L"inner.abc");
    const RemoteTree tree = Open();
    EXPECT_THAT(stage.Program().List().Column(L"Name"), ElementsAre(L"a.abc"));
    EXPECT_THAT(tree.Texts(music), ElementsAre(L"inner.abc"));
}

TEST_F(FoldersTest, TenThousandFilesAreListed) {
    const RemoteList list = stage.Start(TestProgramFolder() + L"large\\").List();
    EXPECT_EQ(list.RowCount(), 10000);
    EXPECT_EQ(list.Cell(0, 0), L"song0.abc");
    EXPECT_EQ(list.Cell(9999, 0), L"song9999.abc");
    EXPECT_TRUE(list.IsTicked(9999));
    EXPECT_EQ(stage.Close(), 0u);
}

TEST_F(FoldersTest, HiddenFoldersAreNotShownAndHiddenFilesAre) {
    const std::wstring hidden = stage.AddFolder(L"hidden");
    stage.AddFolder(L"shown");
    const std::wstring file = stage.AddFile(L"hidden.abc");
    ASSERT_TRUE(SetFileAttributesW(hidden.c_str(), FILE_ATTRIBUTE_HIDDEN));
    ASSERT_TRUE(SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM));
    const RemoteTree tree = Open();
    EXPECT_THAT(tree.Texts(music), ElementsAre(L"shown"));
    EXPECT_THAT(stage.Program().List().Column(L"Name"), ElementsAre(L"hidden.abc"));
    stage.Program().PressButton(BarButton::Refresh);
    Ask(stage.Program().Form(), WM_NULL);
    EXPECT_FALSE(WaitUntil([&] { return tree.Texts(music).size() != 1; }, 300));
}

TEST_F(FoldersTest, FoldersAreSortedWithoutCase) {
    for (const wchar_t* name : {L"b", L"C", L"a", L"_", L"[", L"\x00E9"})
        stage.AddFolder(name);
    const RemoteTree tree = Open();
    EXPECT_THAT(tree.Texts(music), ElementsAre(L"[", L"_", L"a", L"b", L"C", L"\x00E9"));
}

TEST_F(FoldersTest, ArrowKeysListAFolderAndDoNotOpenIt) {
    stage.AddFile(L"inner\\a.abc");
    stage.AddFolder(L"inner\\deepest");
    const RemoteTree tree = Open();
    const RemoteItem inner = tree.Find(music, L"inner");
    PressKey(VK_DOWN);
    ASSERT_TRUE(WaitUntil([&] { return tree.Selected() == inner; }));
    EXPECT_EQ(stage.Program().List().RowCount(), 1);
    EXPECT_FALSE(tree.IsExpanded(inner));
    EXPECT_EQ(tree.Child(inner), 0);
    ClickSettled(tree.LabelPoint(music));
    ClickSettled(tree.LabelPoint(inner));
    EXPECT_TRUE(WaitUntil([&] { return tree.IsExpanded(inner); }));
    EXPECT_THAT(tree.Texts(inner), ElementsAre(L"deepest"));
}

// A key is no click, wherever the pointer happens to rest.
TEST_F(FoldersTest, ArrowKeysDoNotOpenTheFolderUnderThePointer) {
    stage.AddFile(L"inner\\a.abc");
    stage.AddFolder(L"inner\\deepest");
    const RemoteTree tree = Open();
    const RemoteItem inner = tree.Find(music, L"inner");
    SettlePointer(tree.LabelPoint(inner));
    PressKey(VK_DOWN);
    ASSERT_TRUE(WaitUntil([&] { return tree.Selected() == inner; }));
    EXPECT_TRUE(WaitUntil([&] { return stage.Program().List().RowCount() == 1; }));
    EXPECT_FALSE(tree.IsExpanded(inner));
    EXPECT_EQ(tree.Child(inner), 0);
}

TEST_F(FoldersTest, ClicksOnThePictureAndOnTheIconDoNotOpenAFolder) {
    for (const wchar_t* name : {L"first\\deepest", L"second\\deepest"})
        stage.AddFolder(name);
    const RemoteTree tree = Open();
    const RemoteItem first = tree.Find(music, L"first");
    const RemoteItem second = tree.Find(music, L"second");
    ASSERT_EQ(tree.State(first), 4);
    ClickSettled(tree.PicturePoint(first));
    ASSERT_TRUE(WaitUntil([&] { return tree.State(first) == 5; }));
    EXPECT_EQ(tree.Selected(), first);
    ClickSettled(tree.IconPoint(second));
    ASSERT_TRUE(WaitUntil([&] { return tree.Selected() == second; }));
    Ask(stage.Program().Form(), WM_NULL);
    for (const RemoteItem item : {first, second}) {
        EXPECT_FALSE(tree.IsExpanded(item));
        EXPECT_EQ(tree.Child(item), 0);
    }
}

TEST_F(FoldersTest, WithoutASelectedFolderNothingIsListed) {
    stage.AddFile(L"a.abc");
    const RemoteTree tree = stage.Start(stage.Music()).Tree();
    ASSERT_EQ(stage.Program().List().RowCount(), 1);
    Ask(tree.Window(), TVM_SELECTITEM, TVGN_CARET, 0);
    EXPECT_EQ(tree.Selected(), 0);
    EXPECT_EQ(stage.Program().List().RowCount(), 0);
    EXPECT_EQ(stage.Close(), 0u);
}

TEST_F(FoldersTest, RefreshGivesAnEmptyFolderItsExpanderBack) {
    const RemoteTree tree = Open();
    ASSERT_FALSE(tree.HasExpander(music));
    stage.AddFolder(L"new");
    stage.Program().PressButton(BarButton::Refresh);
    EXPECT_TRUE(WaitUntil([&] { return tree.HasExpander(music); }));
    // It is still not opened.
    EXPECT_EQ(tree.Child(music), 0);
    ClickSettled(tree.ExpanderPoint(music));
    EXPECT_TRUE(WaitUntil([&] { return tree.IsExpanded(music); }));
    EXPECT_THAT(tree.Texts(music), ElementsAre(L"new"));
}

TEST_F(FoldersTest, NamesInManyScriptsGoToTheConverter) {
    const ConverterStage converter("read\nsignal\n", stage.ProgramFolder());
    const std::vector<std::wstring> names = {L"\x0416\x0443\x043A.abc", L"\x65E5\x672C\x8A9E.abc",
                                             L"\x05E9\x05DC\x05D5\x05DD.abc",
                                             L"\xD83C\xDFB5 tune.abc"};
    for (const std::wstring& name : names)
        stage.AddFile(name, 10);
    RunningProgram& program = stage.Start(stage.Music());
    EXPECT_THAT(program.List().Column(L"Name"), testing::UnorderedElementsAreArray(names));
    program.PressButton(BarButton::Convert);
    ASSERT_TRUE(converter.WaitFor(L"signalled"));
    Ask(program.Form(), WM_NULL);  // answered when the converter has ended
    const std::string list = converter.List().value_or("");
    for (const std::wstring& name : names)
        EXPECT_NE(list.find(ListBytes({stage.Music() + name})), std::string::npos)
            << NarrowUtf8(name);
}

TEST_F(FoldersTest, PathOfThreeHundredCharactersIsListed) {
    const ConverterStage converter("read\nsignal\n", stage.ProgramFolder());
    const std::wstring longName(120, L'n');
    const std::wstring deep = longName + L"\\" + longName + L"\\";
    const std::wstring file = stage.AddFile(deep + std::wstring(40, L'f') + L".abc", 10);
    ASSERT_GT(file.size(), 300u);
    RunningProgram& program = stage.Start(stage.Music() + deep);
    EXPECT_EQ(program.Tree().Text(program.Tree().Selected()), longName);
    EXPECT_THAT(program.List().Column(L"Name"), ElementsAre(std::wstring(40, L'f') + L".abc"));
    program.PressButton(BarButton::Convert);
    ASSERT_TRUE(converter.WaitFor(L"signalled"));
    Ask(program.Form(), WM_NULL);  // answered when the converter has ended
    EXPECT_EQ(converter.List(), ListBytes({file}));
}

TEST_F(FoldersTest, RefreshShowsNewFoldersAndDropsGoneOnes) {
    stage.AddFile(L"goes\\a.abc");
    stage.AddFolder(L"stays");
    const RemoteTree tree = Open();
    ASSERT_THAT(tree.Texts(music), ElementsAre(L"goes", L"stays"));
    ASSERT_TRUE(DeleteFileW((stage.Music() + L"goes\\a.abc").c_str()));
    ASSERT_TRUE(RemoveDirectoryW((stage.Music() + L"goes").c_str()));
    stage.AddFile(L"a new one\\b.abc");
    stage.AddFile(L"c.abc");
    stage.Program().PressButton(BarButton::Refresh);
    EXPECT_TRUE(WaitUntil([&] {
        return tree.Texts(music) == std::vector<std::wstring>{L"stays", L"a new one"};
    }));
    // Beneath a ticked folder the new one is ticked too.
    EXPECT_EQ(tree.State(tree.Find(music, L"a new one")), 4);
    EXPECT_TRUE(WaitUntil([&] { return stage.Program().List().RowCount() == 1; }));
}

TEST_F(FoldersTest, TickedFolderThatComesBackIsTickedAgain) {
    const std::wstring folder = stage.AddFolder(L"inner");
    stage.AddFolder(L"stays");
    const RemoteTree tree = Open();
    ASSERT_EQ(tree.State(tree.Find(music, L"inner")), 4);
    ASSERT_TRUE(RemoveDirectoryW(folder.c_str()));
    stage.Program().PressButton(BarButton::Refresh);
    ASSERT_TRUE(WaitUntil([&] { return tree.Find(music, L"inner") == 0; }));
    stage.AddFile(L"inner\\a.abc");
    stage.Program().PressButton(BarButton::Refresh);
    ASSERT_TRUE(WaitUntil([&] { return tree.Find(music, L"inner") != 0; }));
    const RemoteItem inner = tree.Find(music, L"inner");
    EXPECT_TRUE(WaitUntil([&] { return tree.State(inner) == 4; }));
    ClickSettled(tree.LabelPoint(inner));
    EXPECT_TRUE(
        WaitUntil([&] { return stage.Program().List().Ticks() == std::vector<bool>{true}; }));
}

TEST_F(FoldersTest, DriveComesAndGoes) {
    const RemoteTree tree = stage.Start().Tree();
    const std::vector<std::wstring> before = tree.Texts(0);
    const clExtraDrive drive(stage.Music());
    const HWND form = stage.Program().Form();
    Ask(form, WM_DEVICECHANGE, DBT_DEVICEARRIVAL);
    const std::vector<std::wstring> with = tree.Texts(0);
    drive.Disconnect();
    ASSERT_EQ(with.size(), before.size() + 1);
    EXPECT_TRUE(drive.IsRootText(with.back())) << NarrowUtf8(with.back());
    EXPECT_EQ(tree.Texts(0), with);
    Ask(form, WM_DEVICECHANGE, DBT_DEVICEREMOVECOMPLETE);
    EXPECT_EQ(tree.Texts(0), before);
}

TEST_F(FoldersTest, OpeningAFolderByItsExpanderSelectsItAndListsIt) {
    stage.AddFile(L"inner\\a.abc");
    stage.AddFolder(L"inner\\deepest");
    const RemoteTree tree = Open();
    const RemoteItem inner = tree.Find(music, L"inner");
    ASSERT_EQ(tree.Selected(), music);
    ASSERT_EQ(stage.Program().List().RowCount(), 0);
    ClickSettled(tree.ExpanderPoint(inner));
    EXPECT_TRUE(WaitUntil([&] { return tree.IsExpanded(inner); }));
    EXPECT_EQ(tree.Selected(), inner);
    EXPECT_THAT(stage.Program().List().Column(L"Name"), ElementsAre(L"a.abc"));
    EXPECT_THAT(tree.Texts(inner), ElementsAre(L"deepest"));
}

// Without a click, which would select it too.
TEST_F(FoldersTest, OpeningAFolderFromOutsideSelectsItAsWell) {
    stage.AddFile(L"inner\\a.abc");
    stage.AddFolder(L"inner\\deepest");
    const RemoteTree tree = Open();
    const RemoteItem inner = tree.Find(music, L"inner");
    Ask(tree.Window(), TVM_EXPAND, TVE_EXPAND, inner);
    EXPECT_EQ(tree.Selected(), inner);
    EXPECT_THAT(tree.Texts(inner), ElementsAre(L"deepest"));
    EXPECT_EQ(stage.Program().List().RowCount(), 1);
}

TEST_F(FoldersTest, FoldersShareOneIconAndRootsHaveTheirOwn) {
    stage.AddFolder(L"one");
    stage.AddFolder(L"two");
    const RemoteTree tree = Open();
    const RemoteTree::Images folder = tree.ImagesOf(music);
    EXPECT_EQ(folder.normal, folder.selected);
    for (const RemoteItem item : tree.Children(music)) {
        EXPECT_EQ(tree.ImagesOf(item).normal, folder.normal);
        EXPECT_EQ(tree.ImagesOf(item).selected, folder.normal);
    }
    const RemoteItem network = tree.Find(0, L"Network");
    EXPECT_NE(tree.ImagesOf(network).normal, folder.normal);
    EXPECT_NE(tree.ImagesOf(tree.Root()).normal, folder.normal);
    EXPECT_NE(tree.ImagesOf(tree.Root()).normal, tree.ImagesOf(network).normal);
}

TEST_F(FoldersTest, ColumnsOfTheDirectoryTellItsEntry) {
    stage.SetText(L"zKR-FileSelector-Cols",
                  L"Date Accessed\rType\rDate Created\rName\rSize\rDate Modified");
    const std::wstring file = stage.AddFile(L"a.abc", 1500);
    const WIN32_FIND_DATAW entry =
        EntryWithTimes(file, {2001, 2, 0, 3, 4, 5, 6, 0}, {2002, 3, 0, 4, 5, 6, 7, 0},
                       {2003, 4, 0, 5, 6, 7, 8, 0});
    ASSERT_NE(DateOf(entry.ftLastAccessTime), DateOf(entry.ftLastWriteTime));
    const RemoteList list = stage.Start(stage.Music()).List();
    ASSERT_EQ(list.RowCount(), 1);
    EXPECT_EQ(list.Cell(0, 0), DateOf(entry.ftLastAccessTime));
    EXPECT_EQ(list.Cell(0, 1), L"abc File");
    EXPECT_EQ(list.Cell(0, 2), DateOf(entry.ftCreationTime));
    EXPECT_EQ(list.Cell(0, 3), L"a.abc");
    EXPECT_EQ(list.Cell(0, 4), L"2 KB");
    EXPECT_EQ(list.Cell(0, 5), DateOf(entry.ftLastWriteTime));
}

TEST_F(FoldersTest, CollapsingAFolderSelectsIt) {
    stage.AddFile(L"inner\\a.abc");
    const RemoteTree tree = Open();
    const RemoteItem inner = tree.Find(music, L"inner");
    ClickSettled(tree.LabelPoint(inner));
    ASSERT_TRUE(WaitUntil([&] { return stage.Program().List().RowCount() == 1; }));
    ClickSettled(tree.ExpanderPoint(music));
    EXPECT_TRUE(WaitUntil([&] { return !tree.IsExpanded(music); }));
    EXPECT_EQ(tree.Selected(), music);
    EXPECT_EQ(stage.Program().List().RowCount(), 0);
}

}  // namespace
