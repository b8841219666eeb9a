// The conversion list over the main window.
#include <gmock/gmock.h>

#include "tests/support/converter_side.h"
#include "tests/ui/end_to_end/list_dialog.h"
#include "tests/ui/keys.h"
#include "tests/ui/pointer.h"

namespace {

using testing::ElementsAre;

TEST_F(ListDialogTest, ShowsEveryFileWithItsFolder) {
    stage.Start(stage.Music());
    const HWND dialog = Open();
    EXPECT_TRUE(WaitUntil([dialog] { return IsZoomed(dialog) != FALSE; }));
    const RemoteList list = ListOf(dialog);
    EXPECT_THAT(list.Column(L"Name"), ElementsAre(L"a.abc", L"b.abc", L"c.abc"));
    EXPECT_THAT(list.Column(L"Folder"),
                ElementsAre(stage.Music(), stage.Music(), Path(L"inner\\")));
    EXPECT_THAT(list.Ticks(), ElementsAre(true, true, true));
    EXPECT_EQ(list.Titles().back(), L"Folder");
    EXPECT_FALSE(list.Cell(0, list.ColumnTitled(L"Size")).empty());
    ClickControl(dialog, IDCANCEL);
    EXPECT_TRUE(Goes(dialog));
    EXPECT_EQ(stage.Text(L"zKR-FileSelector-List-Cols"), std::nullopt);
}

TEST_F(ListDialogTest, UntickedFileIsLeftOutBehindOk) {
    RunningProgram& program = stage.Start(stage.Music());
    const HWND dialog = Open();
    Untick(ListOf(dialog), L"b.abc");
    Untick(ListOf(dialog), L"c.abc");
    ClickControl(dialog, IDOK);
    ASSERT_TRUE(Goes(dialog));
    EXPECT_TRUE(WaitUntil([&] {
        return program.List().Ticks() == std::vector<bool>{true, false};
    }));
    EXPECT_EQ(Convert(), ListBytes({Path(L"a.abc")}));
    EXPECT_TRUE(stage.Text(L"zKR-FileSelector-List-Cols").value_or(L"").ends_with(L"\rFolder"));
}

TEST_F(ListDialogTest, FileTickedByHandIsLeftOutToo) {
    RunningProgram& program = stage.Start(stage.Music());
    const RemoteTree tree = program.Tree();
    const RemoteItem music = tree.Selected();
    for (const int state : {5, 1}) {
        ClickSettled(tree.PicturePoint(music));
        ASSERT_TRUE(WaitUntil([&] { return tree.State(music) == state; }));
    }
    for (const int row : {0, 1}) {
        ClickSettled(program.List().TickPoint(row));
        ASSERT_TRUE(WaitUntil([&] { return program.List().IsTicked(row); }));
    }
    const HWND dialog = Open();
    Untick(ListOf(dialog), L"a.abc");
    ClickControl(dialog, IDOK);
    ASSERT_TRUE(Goes(dialog));
    EXPECT_EQ(Convert(), ListBytes({Path(L"b.abc")}));
}

TEST_F(ListDialogTest, ConvertButtonConvertsWhatIsTicked) {
    stage.Start(stage.Music());
    const HWND dialog = Open();
    Untick(ListOf(dialog), L"a.abc");
    ClickControl(dialog, convertId);
    ASSERT_TRUE(converter.WaitFor(L"signalled"));
    EXPECT_EQ(converter.List(), ListBytes({Path(L"b.abc"), Path(L"inner\\c.abc")}));
    EXPECT_TRUE(WaitUntil([&] { return IsWindowVisible(stage.Program().Form()) != FALSE; }));
    EXPECT_EQ(stage.Close(), 0u);
}

TEST_F(ListDialogTest, NothingSelectedIsSaid) {
    RunningProgram& program = stage.Start();
    program.PressButton(BarButton::List);
    EXPECT_THAT(program.AnswerBox(IDOK),
                testing::HasSubstr(L"No audio files selected for conversion"));
    EXPECT_EQ(program.Close(), 0u);
}

TEST_F(ListDialogTest, RowMenuActsOnEveryRow) {
    stage.Start(stage.Music());
    const HWND dialog = Open();
    const RemoteList list = ListOf(dialog);
    Untick(list, L"a.abc");
    for (const int place : {3, 2, 1}) {
        ChooseFromRowMenu(list, place);
        const std::vector<bool> expected =
            place == 3 ? std::vector<bool>{true, false, false} : std::vector<bool>(3, place == 1);
        EXPECT_TRUE(WaitUntil([&] { return list.Ticks() == expected; })) << place;
    }
}

// The dialog loop of some platforms shows the main window in its normal size once
// its queue first runs empty, which may be long behind the first press.
TEST_F(ListDialogTest, MainWindowStaysMaximisedBehindAnEarlyDialog) {
    RunningProgram& program = stage.Start(stage.Music());
    const POINT button = ScreenPoint(program.Form(), static_cast<int>(BarButton::List) + 20, 22);
    {
        // So the press is the first message that the main window finds.
        const Standstill standstill(program.Form(), 300);
        SettlePointer(button);
        Click(button);
    }
    const HWND dialog = DialogThatShows();
    Sleep(1000);  // some timers of the main window
    ClickControl(dialog, IDCANCEL);
    ASSERT_TRUE(Goes(dialog));
    EXPECT_FALSE(WaitUntil([&] { return IsZoomed(program.Form()) == FALSE; }, 500));
}

}  // namespace
