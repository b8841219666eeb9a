// What decoders tell arrives in the list, and never keeps the window waiting.
#include <gmock/gmock.h>

#include <string>

#include "tests/support/converter_side.h"
#include "tests/ui/end_to_end/program_stage.h"
#include "tests/ui/keys.h"
#include "tests/ui/pointer.h"

namespace {

constexpr std::size_t clicks = 1000;

class ReadingTest : public testing::Test {
protected:
    static bool CellBecomes(const RemoteList& list, int row, const std::wstring& title,
                            const std::wstring& text) {
        return WaitUntil([&] { return list.Cell(row, list.ColumnTitled(title)) == text; }, 5000);
    }

    ProgramStage stage;
};

TEST_F(ReadingTest, TagsAndPropertiesFillTheirColumns) {
    stage.AddDecoder(L"one",
                     "type=.abc|Some sound\n"
                     "length-ms=61000\nbit-rate=128000\n"
                     "tag=Artist|One\\rTwo\ntag=Rating|7\nproperty=Codec|Tests\n");
    stage.SetText(L"zKR-FileSelector-Cols", L"Name\rArtist\rRating\rLength\rCodec\rComment");
    stage.AddFile(L"a.abc", 5000);
    const RemoteList list = stage.Start(stage.Music()).List();
    EXPECT_TRUE(CellBecomes(list, 0, L"Artist", L"One; Two")) << NarrowUtf8(list.Cell(0, 1));
    EXPECT_EQ(list.Cell(0, 2), L"7");
    EXPECT_FALSE(list.Cell(0, 3).empty());
    EXPECT_EQ(list.Cell(0, 4), L"Tests");
    EXPECT_EQ(list.Cell(0, 5), L"");
}

TEST_F(ReadingTest, FileWithoutAnAnswerKeepsBlankCells) {
    stage.AddDecoder(L"one",
                     "type=.abc|Some sound\ntag=Artist|Somebody\n"
                     "[a.abc]\nopen=0\n");
    stage.AddFile(L"a.abc", 10);
    stage.AddFile(L"b.abc", 10);
    const RemoteList list = stage.Start(stage.Music()).List();
    EXPECT_TRUE(CellBecomes(list, 1, L"Artist", L"Somebody"));
    EXPECT_EQ(list.Cell(0, list.ColumnTitled(L"Artist")), L"");
}

TEST_F(ReadingTest, ListIsCompleteBeforeTheDecoderIsThrough) {
    stage.AddDecoder(L"one", "type=.abc|Some sound\ntag=Artist|Somebody\nsleep=1500\n");
    stage.AddFile(L"a.abc", 10);
    const RemoteList list = stage.Start(stage.Music()).List();
    EXPECT_EQ(list.RowCount(), 1);
    EXPECT_EQ(list.Cell(0, 0), L"a.abc");
    EXPECT_EQ(list.Cell(0, list.ColumnTitled(L"Artist")), L"");
    EXPECT_TRUE(CellBecomes(list, 0, L"Artist", L"Somebody"));
}

TEST_F(ReadingTest, ColumnsOfTheFolderAloneNeedNoDecoder) {
    stage.AddDecoder(L"one", "type=.abc|Some sound\ntag=Artist|Somebody\n");
    stage.AddFile(L"a.abc", 10);
    const auto opened = [this] {
        return stage.DecoderLog(L"one").find("a.abc") != std::string::npos;
    };
    for (const bool alone : {true, false}) {
        stage.SetText(L"zKR-FileSelector-Cols",
                      alone ? L"Name\rSize\rType\rDate Modified\rDate Created\rDate Accessed"
                            : L"Name\rSize\rArtist");
        const RemoteList list = stage.Start(stage.Music()).List();
        EXPECT_EQ(list.Cell(0, 0), L"a.abc");
        EXPECT_EQ(WaitUntil(opened, alone ? 700 : 5000), !alone);
        EXPECT_EQ(stage.Close(), 0u);
        EXPECT_EQ(opened(), !alone);
    }
}

TEST_F(ReadingTest, ClosesWhileADecoderSleeps) {
    stage.AddDecoder(L"one", "type=.abc|Some sound\nsleep=800\n");
    for (int i = 0; i < 20; ++i)
        stage.AddFile(L"song" + std::to_wstring(i) + L".abc", 10);
    stage.Start(stage.Music());
    const ULONGLONG begin = GetTickCount64();
    EXPECT_EQ(stage.Close(), 0u);
    // It waits for the file at hand and for no other.
    EXPECT_LT(GetTickCount64() - begin, 5000u);
}

TEST_F(ReadingTest, FoldersAreSelectedAsFastAsKeysCome) {
    stage.AddDecoder(L"one", "type=.abc|Some sound\ntag=Artist|Somebody\n");
    for (int folder = 0; folder < 5; ++folder) {
        for (int file = 0; file < 4; ++file) {
            stage.AddFile(L"f" + std::to_wstring(folder) + L"\\s" + std::to_wstring(file) + L".abc",
                          10);
        }
    }
    RunningProgram& program = stage.Start(stage.Music());
    const RemoteTree tree = program.Tree();
    const RemoteItem music = tree.Selected();
    ClickSettled(tree.ExpanderPoint(music));
    ASSERT_TRUE(WaitUntil([&] { return tree.Children(music).size() == 5; }));
    const std::vector<RemoteItem> folders = tree.Children(music);
    for (std::size_t i = 0; i < 200; ++i)
        Ask(tree.Window(), TVM_SELECTITEM, TVGN_CARET, folders.at(i % 5));
    EXPECT_EQ(tree.Selected(), folders.at(199 % 5));
    EXPECT_EQ(program.List().RowCount(), 4);
    EXPECT_TRUE(CellBecomes(program.List(), 3, L"Artist", L"Somebody"));
    EXPECT_EQ(program.Close(), 0u);
}

// Presses and releases come in a stream, and the window takes its time: each click
// stops a reader.
TEST_F(ReadingTest, StreamOfClicksOnFoldersIsTaken) {
    stage.AddDecoder(L"one", "type=.abc|Some sound\ntag=Artist|Somebody\n");
    for (int folder = 0; folder < 5; ++folder) {
        for (int file = 0; file <= folder; ++file) {
            stage.AddFile(L"f" + std::to_wstring(folder) + L"\\s" + std::to_wstring(file) + L".abc",
                          10);
        }
    }
    RunningProgram& program = stage.Start(stage.Music());
    const RemoteTree tree = program.Tree();
    const RemoteItem music = tree.Selected();
    ClickSettled(tree.ExpanderPoint(music));
    ASSERT_TRUE(WaitUntil([&] { return tree.Children(music).size() == 5; }));
    const std::vector<RemoteItem> folders = tree.Children(music);
    std::vector<POINT> labels;
    for (const RemoteItem folder : folders)
        labels.push_back(tree.LabelPoint(folder));
    for (std::size_t i = 0; i < clicks; ++i) {
        SetCursorPos(labels.at(i % 5).x, labels.at(i % 5).y);
        PressButton();
        ReleaseButton();
    }
    // The key waits behind all of them, and leads where none of them does.
    PressKey(VK_HOME);
    ASSERT_TRUE(WaitUntil([&] { return tree.Selected() == tree.Root(); }, 180000));
    for (const std::size_t last : {std::size_t{1}, std::size_t{4}}) {
        ClickSettled(labels.at(last));
        EXPECT_TRUE(WaitUntil([&] { return tree.Selected() == folders.at(last); }));
        EXPECT_TRUE(
            WaitUntil([&] { return program.List().RowCount() == static_cast<int>(last) + 1; }));
    }
    EXPECT_TRUE(CellBecomes(program.List(), 4, L"Artist", L"Somebody"));
    EXPECT_EQ(program.Close(), 0u);
}

}  // namespace
