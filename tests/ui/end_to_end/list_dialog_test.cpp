// The conversion list over the main window.
#include <gmock/gmock.h>

#include <algorithm>

#include "tests/support/converter_side.h"
#include "tests/ui/end_to_end/list_dialog.h"
#include "tests/ui/keys.h"
#include "tests/ui/pointer.h"

namespace {

using testing::ElementsAre;

TEST_F(ListDialogTest, ShowsEveryFileWithItsFolder) {
    stage.Start(stage.Music());
    const HWND dialog = Open();
    const RemoteList list = ListOf(dialog);
    EXPECT_THAT(list.Column(L"Name"), ElementsAre(L"a.abc", L"b.abc", L"c.abc"));
    EXPECT_THAT(list.Column(L"Folder"),
                ElementsAre(stage.Music(), stage.Music(), Path(L"inner\\")));
    EXPECT_THAT(list.Ticks(), ElementsAre(true, true, true));
    EXPECT_EQ(list.Titles().back(), L"Folder");
    EXPECT_FALSE(list.Cell(0, list.ColumnTitled(L"Size")).empty());
    // Some loops give a dialog its normal size after its first timer.
    EXPECT_FALSE(WaitUntil([dialog] { return IsZoomed(dialog) == FALSE; }, 700));
    EXPECT_EQ(GetWindow(dialog, GW_OWNER), stage.Program().Form());
    EXPECT_FALSE(IsWindowEnabled(stage.Program().Form()));
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
    ASSERT_NO_FATAL_FAILURE(UntickSelectedFolder(program));
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

// The reader was stopped for the gathering, and nothing is listed anew.
TEST_F(ListDialogTest, NothingSelectedLeavesTheReaderStopped) {
    stage.AddDecoder(L"one", "type=.abc|Some sound\nsleep=400\ntag=Artist|Somebody\n");
    for (int number = 0; number < 60; ++number)
        stage.AddFile(L"song" + std::to_wstring(number) + L".abc");
    RunningProgram& program = stage.Start(stage.Music());
    ASSERT_NO_FATAL_FAILURE(UntickSelectedFolder(program));
    const auto read = [&program] {
        const std::vector<std::wstring> artists = program.List().Column(L"Artist");
        return std::count(artists.begin(), artists.end(), L"Somebody");
    };
    ASSERT_TRUE(WaitUntil([&] { return read() > 0; }));
    program.PressButton(BarButton::List);
    program.AnswerBox(IDOK);
    // What was finished by then may still come into the list: one that goes on
    // finishes a file each 400 ms.
    auto shown = read();
    ULONGLONG since = GetTickCount64();
    EXPECT_TRUE(WaitUntil([&] {
        const auto now = read();
        if (now != shown) since = GetTickCount64();
        shown = now;
        return GetTickCount64() - since >= 2000;
    }));
    EXPECT_LT(shown, 62);
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

// How the dialog is left without keeping anything.
enum class WayOut { Cancel, Escape, CloseBox };

class ListDialogDiscardTest : public ListDialogTest, public testing::WithParamInterface<WayOut> {
protected:
    static void Leave(HWND dialog) {
        switch (GetParam()) {
            case WayOut::Cancel:
                return ClickControl(dialog, IDCANCEL);
            case WayOut::Escape:
                return PressKey(VK_ESCAPE);
            case WayOut::CloseBox:
                return ClickCloseBox(dialog);
        }
    }
};

TEST_P(ListDialogDiscardTest, TicksAndColumnsAreAsBefore) {
    RunningProgram& program = stage.Start(stage.Music());
    HWND dialog = Open();
    Untick(ListOf(dialog), L"a.abc");
    const int width = ListOf(dialog).ColumnWidth(0);
    DragEdge(ListOf(dialog), 0, 40);
    ASSERT_EQ(ListOf(dialog).ColumnWidth(0), width + 40);
    Leave(dialog);
    ASSERT_TRUE(Goes(dialog));
    EXPECT_EQ(stage.Text(L"zKR-FileSelector-List-Cols"), std::nullopt);
    EXPECT_EQ(stage.Text(L"zKR-FileSelector-List-ColWidths"), std::nullopt);
    EXPECT_THAT(program.List().Ticks(), ElementsAre(true, true));

    dialog = Open();
    EXPECT_THAT(ListOf(dialog).Ticks(), ElementsAre(true, true, true));
    EXPECT_EQ(ListOf(dialog).ColumnWidth(0), width);
    Leave(dialog);
    ASSERT_TRUE(Goes(dialog));
    EXPECT_EQ(Convert(), ListBytes({Path(L"a.abc"), Path(L"b.abc"), Path(L"inner\\c.abc")}));
    EXPECT_EQ(stage.Close(), 0u);
}

std::string NameOfWay(const testing::TestParamInfo<WayOut>& way) {
    switch (way.param) {
        case WayOut::Cancel:
            return "ByCancel";
        case WayOut::Escape:
            return "ByEscape";
        case WayOut::CloseBox:
            return "ByTheCloseBox";
    }
    return {};
}

INSTANTIATE_TEST_SUITE_P(EveryWayOut, ListDialogDiscardTest,
                         testing::Values(WayOut::Cancel, WayOut::Escape, WayOut::CloseBox),
                         NameOfWay);

TEST_F(ListDialogTest, OkAndConvertKeepColumnsAndWidths) {
    stage.SetText(L"zKR-FileSelector-List-Cols", L"Name\rArtist\rFolder");
    stage.SetText(L"zKR-FileSelector-List-ColWidths", L"120\r80\r200");
    RunningProgram& program = stage.Start(stage.Music());
    HWND dialog = Open();
    EXPECT_THAT(ListOf(dialog).Titles(), ElementsAre(L"Name", L"Artist", L"Folder"));
    DragEdge(ListOf(dialog), 1, 33);
    ClickControl(dialog, IDOK);
    ASSERT_TRUE(Goes(dialog));
    EXPECT_EQ(stage.Text(L"zKR-FileSelector-List-Cols"), L"Name\rArtist\rFolder");
    EXPECT_EQ(stage.Text(L"zKR-FileSelector-List-ColWidths"), L"120\r113\r200");

    dialog = Open();
    EXPECT_EQ(ListOf(dialog).ColumnWidth(1), 113);
    DragEdge(ListOf(dialog), 0, -20);
    ClickControl(dialog, convertId);
    ASSERT_TRUE(converter.WaitFor(L"signalled"));
    EXPECT_EQ(stage.Text(L"zKR-FileSelector-List-ColWidths"), L"100\r113\r200");
    EXPECT_TRUE(WaitUntil([&] { return IsWindowVisible(program.Form()) != FALSE; }));
    EXPECT_EQ(program.Close(), 0u);
    // The main window has columns of its own.
    EXPECT_EQ(stage.Text(L"zKR-FileSelector-Cols").value_or(L"").find(L"Folder"),
              std::wstring::npos);
}

TEST_F(ListDialogTest, ColumnWithoutASavedWidthHasTheOneOfItsName) {
    stage.SetText(L"zKR-FileSelector-List-Cols", L"Name\rSize\rArtist");
    stage.SetText(L"zKR-FileSelector-List-ColWidths", L"90\r0");
    stage.Start(stage.Music());
    const RemoteList list = ListOf(Open());
    EXPECT_THAT(list.Titles(), ElementsAre(L"Name", L"Size", L"Artist", L"Folder"));
    EXPECT_EQ(list.ColumnWidth(0), 90);
    EXPECT_EQ(list.ColumnWidth(1), 75);
    EXPECT_EQ(list.ColumnWidth(2), 150);
    EXPECT_EQ(list.ColumnWidth(3), 250);
}

TEST_F(ListDialogTest, NeededColumnsAreLookedForAsPiecesOfText) {
    stage.SetText(L"zKR-FileSelector-List-Cols", L"Artist\rName of the Folder");
    stage.Start(stage.Music());
    const RemoteList list = ListOf(OpenUnread());
    EXPECT_THAT(list.Titles(), ElementsAre(L"Artist", L"Name of the Folder"));
}

TEST_F(ListDialogTest, NeededColumnsAreLookedForWithTheirCase) {
    stage.SetText(L"zKR-FileSelector-List-Cols", L"name\rfolder");
    stage.Start(stage.Music());
    const RemoteList list = ListOf(OpenUnread());
    EXPECT_THAT(list.Titles(), ElementsAre(L"name", L"folder", L"Folder", L"Name"));
}

TEST_F(ListDialogTest, FileTickedAgainStaysIn) {
    stage.Start(stage.Music());
    const HWND dialog = Open();
    const RemoteList list = ListOf(dialog);
    Untick(list, L"b.abc");
    ClickSettled(list.TickPoint(list.RowOf(L"b.abc")));
    ASSERT_TRUE(WaitUntil([&] { return list.Ticks() == std::vector<bool>(3, true); }));
    ClickControl(dialog, IDOK);
    ASSERT_TRUE(Goes(dialog));
    EXPECT_EQ(Convert(), ListBytes({Path(L"a.abc"), Path(L"b.abc"), Path(L"inner\\c.abc")}));
}

TEST_F(ListDialogTest, ConvertWithNothingTickedIsRefused) {
    RunningProgram& program = stage.Start(stage.Music());
    const HWND dialog = Open();
    ChooseFromRowMenu(ListOf(dialog), 2);
    ASSERT_TRUE(WaitUntil([&] { return ListOf(dialog).Ticks() == std::vector<bool>(3, false); }));
    EXPECT_TRUE(IsWindowEnabled(GetDlgItem(dialog, IDOK)));
    ClickControl(dialog, convertId);
    EXPECT_THAT(program.AnswerBox(IDOK),
                testing::HasSubstr(L"No audio files selected for conversion"));
    EXPECT_EQ(converter.CommandLine(), L"");
    EXPECT_TRUE(WaitUntil([&] {
        return program.List().Ticks() == std::vector<bool>{false, false};
    }));
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
