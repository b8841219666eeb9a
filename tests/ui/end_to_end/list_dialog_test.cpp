// The conversion list over the main window.
#include <gmock/gmock.h>

#include "tests/support/converter_side.h"
#include "tests/ui/end_to_end/program_stage.h"
#include "tests/ui/keys.h"
#include "tests/ui/pointer.h"

namespace {

using testing::ElementsAre;
using Names = std::vector<std::wstring>;

constexpr const wchar_t* dialogTitle = L"Tonequarry Batch Converter: Audio Files Converting";
constexpr int convertId = 3;

class ListDialogTest : public testing::Test {
protected:
    ListDialogTest() {
        stage.AddDecoder(L"one", "type=.abc|Some sound\nlength-ms=1000\ntag=Artist|Somebody\n");
        for (const wchar_t* name : {L"a.abc", L"b.abc", L"inner\\c.abc"})
            stage.AddFile(name, 3000);
        stage.AddFolder(L"empty");
    }
    HWND Open() {
        stage.Program().PressButton(BarButton::List);
        const HWND dialog = stage.Program().Dialog(dialogTitle);
        const RemoteList list = ListOf(dialog);
        EXPECT_TRUE(WaitUntil([&] {
            return list.RowCount() > 0 &&
                   list.Cell(list.RowCount() - 1, list.ColumnTitled(L"Artist")) == L"Somebody";
        }));
        return dialog;
    }
    static RemoteList ListOf(HWND dialog) { return RemoteList(GetDlgItem(dialog, 1002)); }
    static bool Goes(HWND dialog) {
        return WaitUntil([dialog] { return IsWindow(dialog) == FALSE; });
    }
    static void Untick(const RemoteList& list, const std::wstring& name) {
        const int row = list.RowOf(name);
        ASSERT_GE(row, 0);
        ClickSettled(list.TickPoint(row));
        ASSERT_TRUE(WaitUntil([&] { return !list.IsTicked(row); }));
    }
    void ClickControl(HWND dialog, int id) const {
        ClickSettled(ScreenMiddle(GetDlgItem(dialog, id)));
    }
    std::wstring Path(const wchar_t* name) const { return stage.Music() + name; }
    // Presses Convert in the main window and waits for the converter's end.
    std::optional<std::string> Convert() const {
        stage.Program().PressButton(BarButton::Convert);
        EXPECT_TRUE(converter.WaitFor(L"signalled"));
        Ask(stage.Program().Form(), WM_NULL);
        return converter.List();
    }

    ProgramStage stage;
    // The program tells it where its script is, so that it is there first.
    ConverterStage converter{"read\nsignal\n", stage.ProgramFolder()};
};

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
        ClickSettled(list.RowPoint(0), PointerButton::Right);
        ASSERT_TRUE(WaitUntil([] { return FindWindowW(L"#32768", nullptr) != nullptr; }));
        for (int i = 0; i < place; ++i)
            PressKey(VK_DOWN);
        PressKey(VK_RETURN);
        const std::vector<bool> expected =
            place == 3 ? std::vector<bool>{true, false, false} : std::vector<bool>(3, place == 1);
        EXPECT_TRUE(WaitUntil([&] { return list.Ticks() == expected; })) << place;
    }
}

}  // namespace
