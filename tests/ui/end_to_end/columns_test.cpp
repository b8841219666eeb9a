// Columns and sorting: headers, the column menu, and what a restart finds.
#include <gmock/gmock.h>

#include "tests/support/converter_side.h"
#include "tests/ui/end_to_end/program_stage.h"
#include "tests/ui/keys.h"
#include "tests/ui/pointer.h"

namespace {

using testing::ElementsAre;
using Names = std::vector<std::wstring>;

class ColumnsTest : public testing::Test {
protected:
    ColumnsTest() {
        stage.AddDecoder(L"one",
                         "type=.abc|Some sound\n"
                         "elements=Codec|Encoder\n"
                         "length-ms=1000\n"
                         "[a.abc]\nlength-ms=5000\ntag=Artist|beta\ntag=Comment|third\n"
                         "[b.abc]\nlength-ms=90000\ntag=Artist|Alpha\ntag=Comment|first\n"
                         "[c.abc]\nlength-ms=30000\ntag=Artist|gamma\ntag=Comment|second\n");
        stage.AddFile(L"a.abc", 9000);
        stage.AddFile(L"b.abc", 20000);
        stage.AddFile(L"c.abc", 3000);
    }
    // Starts in the music folder and waits until all cells are filled.
    RemoteList OpenMusic(const std::wstring& title = L"Artist",
                         const Names& cells = {L"beta", L"Alpha", L"gamma"}) {
        const RemoteList list = stage.Start(stage.Music()).List();
        EXPECT_TRUE(CellsBecome(list, title, cells));
        return list;
    }
    static bool CellsBecome(const RemoteList& list, const std::wstring& title, const Names& cells) {
        return WaitUntil([&] { return list.Column(title) == cells; }, 5000);
    }
    static void ClickHeader(const RemoteList& list, const std::wstring& title) {
        ClickSettled(list.HeaderPoint(list.ColumnTitled(title)));
    }
    // Opens the menu on the header and presses keys in it, the last of which ends it.
    static void MenuKeys(const RemoteList& list, const std::vector<WORD>& keys) {
        ClickSettled(list.HeaderPoint(0), PointerButton::Right);
        ASSERT_TRUE(WaitUntil([] { return FindWindowW(L"#32768", nullptr) != nullptr; }));
        for (const WORD key : keys)
            PressKey(key);
        ASSERT_TRUE(WaitUntil([] { return FindWindowW(L"#32768", nullptr) == nullptr; }));
    }
    static std::vector<WORD> Downs(int count, std::vector<WORD> then) {
        std::vector<WORD> keys(static_cast<std::size_t>(count), VK_DOWN);
        keys.insert(keys.end(), then.begin(), then.end());
        return keys;
    }
    static bool TitlesBecome(const RemoteList& list, const Names& titles) {
        return WaitUntil([&] { return list.Titles() == titles; }, 5000);
    }

    ProgramStage stage;
};

// The menu has the twelve facts, the two sub-menus, and the default columns.
constexpr int tagsPlace = 13;
constexpr int propertiesPlace = 14;
constexpr int defaultPlace = 15;
constexpr int commentPlace = 12;  // among the tags

TEST_F(ColumnsTest, HeaderClicksSort) {
    stage.SetText(L"zKR-FileSelector-Cols", L"Name\rSize\rArtist\rLength");
    const RemoteList list = OpenMusic();
    ClickHeader(list, L"Size");
    EXPECT_TRUE(CellsBecome(list, L"Name", {L"c.abc", L"a.abc", L"b.abc"}));
    ClickHeader(list, L"Size");
    EXPECT_TRUE(CellsBecome(list, L"Name", {L"b.abc", L"a.abc", L"c.abc"}));
    ClickHeader(list, L"Artist");
    EXPECT_TRUE(CellsBecome(list, L"Artist", {L"Alpha", L"beta", L"gamma"}));
    ClickHeader(list, L"Length");
    EXPECT_TRUE(CellsBecome(list, L"Name", {L"a.abc", L"c.abc", L"b.abc"}));
    ClickHeader(list, L"Name");
    EXPECT_TRUE(CellsBecome(list, L"Name", {L"a.abc", L"b.abc", L"c.abc"}));
    ClickHeader(list, L"Name");
    EXPECT_TRUE(CellsBecome(list, L"Name", {L"c.abc", L"b.abc", L"a.abc"}));
}

TEST_F(ColumnsTest, ListBeginsSortedByItsFirstColumn) {
    stage.SetText(L"zKR-FileSelector-Cols", L"Artist\rName");
    const RemoteList list = OpenMusic(L"Artist", {L"Alpha", L"beta", L"gamma"});
    // It carries the arrow already, so that a click turns the order round.
    ClickHeader(list, L"Artist");
    EXPECT_TRUE(CellsBecome(list, L"Artist", {L"gamma", L"beta", L"Alpha"}));
}

TEST_F(ColumnsTest, NextStartSortsByTheFirstColumnAgain) {
    stage.SetText(L"zKR-FileSelector-Cols", L"Name\rSize\rArtist");
    const RemoteList list = OpenMusic();
    ClickHeader(list, L"Size");
    ASSERT_TRUE(CellsBecome(list, L"Name", {L"c.abc", L"a.abc", L"b.abc"}));
    ClickHeader(list, L"Size");
    ASSERT_TRUE(CellsBecome(list, L"Name", {L"b.abc", L"a.abc", L"c.abc"}));
    EXPECT_EQ(stage.Close(), 0u);
    const RemoteList again = OpenMusic();
    EXPECT_EQ(again.Column(L"Name"), (Names{L"a.abc", L"b.abc", L"c.abc"}));
    // The arrow that a click turns round.
    ClickHeader(again, L"Name");
    EXPECT_TRUE(CellsBecome(again, L"Name", {L"c.abc", L"b.abc", L"a.abc"}));
    ClickHeader(again, L"Size");
    EXPECT_TRUE(CellsBecome(again, L"Name", {L"c.abc", L"a.abc", L"b.abc"}));
}

TEST_F(ColumnsTest, FileThatNobodyCanReadComesFirstByWhatIsReadOfFiles) {
    stage.AddDecoder(L"one",
                     "type=.abc|Some sound\n"
                     "[a.abc]\nbit-rate=128000\nlength-ms=10000\nsource-bytes=882000\n"
                     "wave=1,2,44100,176400,4,16,0\ntag=Rating|7\n"
                     "[b.abc]\nopen=0\n"
                     "[c.abc]\nbit-rate=256000\nlength-ms=10000\nsource-bytes=1411200\n"
                     "wave=1,2,44100,176400,4,16,0\ntag=Rating|3\n");
    stage.SetText(L"zKR-FileSelector-Cols", L"Name\rBit Rate\rCompression\rRating");
    const RemoteList list = OpenMusic(L"Rating", {L"7", L"", L"3"});
    EXPECT_EQ(list.Column(L"Compression"), (Names{L"50%", L"", L"20%"}));
    const struct {
        const wchar_t* title;
        Names ascending;
    } columns[] = {{L"Bit Rate", {L"b.abc", L"a.abc", L"c.abc"}},
                   {L"Compression", {L"b.abc", L"c.abc", L"a.abc"}},
                   {L"Rating", {L"b.abc", L"c.abc", L"a.abc"}}};
    for (const auto& column : columns) {
        SCOPED_TRACE(NarrowUtf8(column.title));
        ClickHeader(list, column.title);
        EXPECT_TRUE(CellsBecome(list, L"Name", column.ascending));
        ClickHeader(list, column.title);
        EXPECT_TRUE(CellsBecome(list, L"Name",
                                {column.ascending[2], column.ascending[1], column.ascending[0]}));
    }
}

TEST_F(ColumnsTest, ListSortsItselfAgainWhenAllIsRead) {
    const std::wstring holdName = L"Tonequarry tests: columns are read";
    const HANDLE hold = CreateEventW(nullptr, TRUE, FALSE, holdName.c_str());
    stage.AddDecoder(L"one",
                     "type=.abc|Some sound\n"
                     "[a.abc]\nlength-ms=5000\n"
                     "[b.abc]\nlength-ms=90000\nwait=Tonequarry tests: columns are read\n"
                     "[c.abc]\nlength-ms=30000\n");
    stage.SetText(L"zKR-FileSelector-Cols", L"Name\rLength");
    const RemoteList list = stage.Start(stage.Music()).List();
    // The first one is read, the others are nothing yet.
    ASSERT_TRUE(WaitUntil([&] { return !list.Cell(list.RowOf(L"a.abc"), 1).empty(); }));
    ClickHeader(list, L"Length");
    EXPECT_TRUE(CellsBecome(list, L"Name", {L"b.abc", L"c.abc", L"a.abc"}));
    SetEvent(hold);
    EXPECT_TRUE(CellsBecome(list, L"Name", {L"a.abc", L"c.abc", L"b.abc"}));
    CloseHandle(hold);
}

TEST_F(ColumnsTest, MenuOfTheHeaderEndsAtItsLine) {
    stage.SetText(L"zKR-FileSelector-Cols", L"Name\rArtist");
    const RemoteList list = OpenMusic();
    // Fourteen horizontal units, of which four are six pixels.
    for (const auto& [y, hasColumns] : {std::pair{20, true}, std::pair{21, false}}) {
        ClickSettled(ScreenPoint(list.Window(), 60, y), PointerButton::Right);
        HWND menu = nullptr;
        ASSERT_TRUE(WaitUntil([&] { return (menu = FindWindowW(L"#32768", nullptr)) != nullptr; }));
        RECT area = {};
        GetWindowRect(menu, &area);
        // Eighteen items, or three.
        EXPECT_EQ(area.bottom - area.top > 200, hasColumns) << y;
        PressKey(VK_ESCAPE);
        ASSERT_TRUE(WaitUntil([] { return FindWindowW(L"#32768", nullptr) == nullptr; }));
    }
}

TEST_F(ColumnsTest, MenuAddsAndRemovesAColumn) {
    stage.SetText(L"zKR-FileSelector-Cols", L"Name\rArtist");
    const RemoteList list = OpenMusic();
    std::vector<WORD> addComment = Downs(tagsPlace, {VK_RIGHT});
    for (int i = 1; i < commentPlace; ++i)
        addComment.push_back(VK_DOWN);
    addComment.push_back(VK_RETURN);
    MenuKeys(list, addComment);
    EXPECT_TRUE(TitlesBecome(list, {L"Name", L"Artist", L"Comment"}));
    EXPECT_EQ(list.ColumnWidth(2), 150);
    EXPECT_TRUE(CellsBecome(list, L"Comment", {L"third", L"first", L"second"}));
    EXPECT_EQ(stage.Close(), 0u);
    EXPECT_EQ(stage.Text(L"zKR-FileSelector-Cols"), L"Name\rArtist\rComment");

    const RemoteList again = stage.Start(stage.Music()).List();
    EXPECT_TRUE(CellsBecome(again, L"Comment", {L"third", L"first", L"second"}));
    MenuKeys(again, addComment);
    EXPECT_TRUE(TitlesBecome(again, {L"Name", L"Artist"}));
    EXPECT_EQ(stage.Close(), 0u);
    EXPECT_EQ(stage.Text(L"zKR-FileSelector-Cols"), L"Name\rArtist");
}

TEST_F(ColumnsTest, EscapeInTheMenuLeavesTheColumnsAsTheyAre) {
    stage.SetText(L"zKR-FileSelector-Cols", L"Name\rArtist");
    const RemoteList list = OpenMusic();
    // With an item marked, and in a sub-menu, where the second one ends the menu. What
    // one of them added the other would take away.
    for (const std::vector<WORD>& keys :
         {Downs(2, {VK_ESCAPE}), Downs(tagsPlace, {VK_RIGHT, VK_DOWN, VK_ESCAPE, VK_ESCAPE})}) {
        MenuKeys(list, keys);
        EXPECT_FALSE(WaitUntil([&] { return list.Titles().size() != 2; }, 300));
        EXPECT_EQ(list.Titles(), (Names{L"Name", L"Artist"}));
    }
    EXPECT_EQ(stage.Close(), 0u);
    EXPECT_EQ(stage.Text(L"zKR-FileSelector-Cols"), L"Name\rArtist");
}

TEST_F(ColumnsTest, MissingColumnIsOfferedAndCanGo) {
    stage.SetText(L"zKR-FileSelector-Cols", L"Name\rArtist\rGone with its decoder");
    const RemoteList list = OpenMusic();
    EXPECT_TRUE(TitlesBecome(list, {L"Name", L"Artist", L"Gone with its decoder"}));
    // It stands behind the sub-menus.
    MenuKeys(list, Downs(defaultPlace, {VK_RETURN}));
    EXPECT_TRUE(TitlesBecome(list, {L"Name", L"Artist"}));
    EXPECT_EQ(stage.Close(), 0u);
    EXPECT_EQ(stage.Text(L"zKR-FileSelector-Cols"), L"Name\rArtist");
}

TEST_F(ColumnsTest, DefaultColumnsComeBack) {
    stage.SetText(L"zKR-FileSelector-Cols", L"Artist\rSize");
    stage.SetText(L"zKR-FileSelector-ColWidths", L"77\rno number");
    const RemoteList list = stage.Start(stage.Music()).List();
    ASSERT_TRUE(TitlesBecome(list, {L"Artist", L"Size"}));
    EXPECT_EQ(list.ColumnWidth(0), 77);
    EXPECT_EQ(list.ColumnWidth(1), 75);
    MenuKeys(list, Downs(defaultPlace, {VK_RETURN}));
    EXPECT_TRUE(WaitUntil([&] { return list.Titles().size() == 10; }));
    EXPECT_EQ(list.ColumnWidth(0), 250);
    EXPECT_TRUE(CellsBecome(list, L"Artist", {L"beta", L"Alpha", L"gamma"}));
    EXPECT_TRUE(CellsBecome(list, L"Name", {L"a.abc", L"b.abc", L"c.abc"}));
}

TEST_F(ColumnsTest, FirstDecoderColumnStaysBlankUntilTheNextListing) {
    stage.SetText(L"zKR-FileSelector-Cols", L"Name\rSize");
    const RemoteList list = stage.Start(stage.Music()).List();
    ASSERT_TRUE(CellsBecome(list, L"Name", {L"a.abc", L"b.abc", L"c.abc"}));
    MenuKeys(list, Downs(tagsPlace, {VK_RIGHT, VK_RETURN}));
    ASSERT_TRUE(TitlesBecome(list, {L"Name", L"Size", L"Artist"}));
    EXPECT_FALSE(WaitUntil([&] { return !list.Cell(0, 2).empty(); }, 1200));
    stage.Program().PressButton(BarButton::Refresh);
    EXPECT_TRUE(CellsBecome(list, L"Artist", {L"beta", L"Alpha", L"gamma"}));
}

TEST_F(ColumnsTest, ExtendedPropertyBecomesAColumn) {
    stage.SetText(L"zKR-FileSelector-Cols", L"Name\rArtist");
    const RemoteList list = OpenMusic();
    MenuKeys(list, Downs(propertiesPlace, {VK_RIGHT, VK_DOWN, VK_RETURN}));
    EXPECT_TRUE(TitlesBecome(list, {L"Name", L"Artist", L"Encoder"}));
    EXPECT_EQ(stage.Close(), 0u);
    EXPECT_EQ(stage.Text(L"zKR-FileSelector-Cols"), L"Name\rArtist\rEncoder");
}

TEST_F(ColumnsTest, RemovingTheSortedColumnSortsByTheFirst) {
    stage.SetText(L"zKR-FileSelector-Cols", L"Name\rArtist\rSize");
    const RemoteList list = OpenMusic();
    ClickHeader(list, L"Size");
    ASSERT_TRUE(CellsBecome(list, L"Name", {L"c.abc", L"a.abc", L"b.abc"}));
    MenuKeys(list, Downs(2, {VK_RETURN}));
    ASSERT_TRUE(TitlesBecome(list, {L"Name", L"Artist"}));
    EXPECT_EQ(list.Column(L"Name"), (Names{L"c.abc", L"a.abc", L"b.abc"}));
    stage.Program().PressButton(BarButton::Refresh);
    EXPECT_TRUE(CellsBecome(list, L"Name", {L"a.abc", L"b.abc", L"c.abc"}));
}

TEST_F(ColumnsTest, LastColumnGoesAndTheNextStartHasTheDefaultOnes) {
    stage.SetText(L"zKR-FileSelector-Cols", L"Name");
    const RemoteList list = stage.Start(stage.Music()).List();
    MenuKeys(list, Downs(1, {VK_RETURN}));
    ASSERT_TRUE(TitlesBecome(list, {}));
    EXPECT_EQ(stage.Close(), 0u);
    EXPECT_EQ(stage.Text(L"zKR-FileSelector-Cols"), L"");
    EXPECT_EQ(stage.Text(L"zKR-FileSelector-ColWidths"), L"");
    EXPECT_EQ(stage.Start().List().Titles().size(), 10u);
}

TEST_F(ColumnsTest, WidthsAndDraggedOrderArePersisted) {
    stage.SetText(L"zKR-FileSelector-Cols", L"Name\rSize\rArtist");
    const RemoteList list = OpenMusic();
    const POINT edge = list.HeaderEdge(1);
    MovePointer(edge);
    PressButton(PointerButton::Left);
    MovePointer({edge.x + 20, edge.y});
    MovePointer({edge.x + 40, edge.y});
    ReleaseButton(PointerButton::Left);
    ASSERT_TRUE(WaitUntil([&] { return list.ColumnWidth(1) == 115; })) << list.ColumnWidth(1);

    bool isMoved = false;
    // An echo of an earlier move may end a drag where it began: a user would drag again.
    for (int attempt = 0; attempt < 3 && !isMoved; ++attempt) {
        const POINT from = list.HeaderPoint(2);
        const POINT to = list.HeaderPoint(1);
        SettlePointer(from);
        PressButton(PointerButton::Left);
        MovePointer({from.x - 20, from.y});
        MovePointer({to.x + 10, to.y});
        MovePointer({to.x - 20, to.y});
        ReleaseButton(PointerButton::Left);
        isMoved = WaitUntil(
            [&] {
                return list.DisplayedTitles() == Names{L"Name", L"Artist", L"Size"};
            },
            3000);
    }
    ASSERT_TRUE(isMoved);
    EXPECT_EQ(list.Titles(), (Names{L"Name", L"Size", L"Artist"}));
    EXPECT_EQ(stage.Close(), 0u);
    EXPECT_EQ(stage.Text(L"zKR-FileSelector-Cols"), L"Name\rArtist\rSize");
    EXPECT_EQ(stage.Text(L"zKR-FileSelector-ColWidths"), L"250\r150\r115");
    const RemoteList again = stage.Start().List();
    EXPECT_EQ(again.Titles(), (Names{L"Name", L"Artist", L"Size"}));
    EXPECT_EQ(again.ColumnWidth(2), 115);
}

}  // namespace
