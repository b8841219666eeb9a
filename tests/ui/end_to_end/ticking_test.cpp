// Ticking folders and files, by mouse and by keys.
#include <gmock/gmock.h>

#include "tests/support/converter_side.h"
#include "tests/ui/end_to_end/program_stage.h"
#include "tests/ui/keys.h"
#include "tests/ui/pointer.h"

namespace {

using testing::ElementsAre;

class TickingTest : public testing::Test {
protected:
    TickingTest() {
        stage.AddDecoder(L"one", "type=.abc|Some sound\n");
        stage.AddFile(L"a.abc", 100);
        stage.AddFile(L"b.abc", 100);
        stage.AddFile(L"c.abc", 100);
        stage.AddFile(L"inner\\d.abc", 100);
        stage.AddFolder(L"inner\\deepest");
        stage.AddFolder(L"other");
    }
    // Starts in the music folder, which is unticked again, and opens it.
    void OpenMusic() {
        RunningProgram& program = stage.Start(stage.Music());
        const RemoteTree tree = program.Tree();
        music = tree.Selected();
        ASSERT_EQ(tree.State(music), 4);
        ClickSettled(tree.PicturePoint(music));
        ASSERT_TRUE(Reaches(music, 5));
        ClickSettled(tree.PicturePoint(music));
        ASSERT_TRUE(Reaches(music, 1));
        ClickSettled(tree.ExpanderPoint(music));
        ASSERT_TRUE(WaitUntil([&] { return tree.IsExpanded(music); }));
        inner = tree.Find(music, L"inner");
        ASSERT_NE(inner, 0);
    }
    bool Reaches(RemoteItem item, int state) const {
        return WaitUntil([&] { return stage.Program().Tree().State(item) == state; }, 5000);
    }
    // Nothing that is posted or painted later changes the state.
    bool Stays(RemoteItem item, int state) const {
        return !WaitUntil([&] { return stage.Program().Tree().State(item) != state; }, 300);
    }
    bool TicksBecome(const std::vector<bool>& ticks) const {
        return WaitUntil([&] { return stage.Program().List().Ticks() == ticks; }, 5000);
    }
    void ChooseRowMenu(int place) const {
        ClickSettled(stage.Program().List().RowPoint(0), PointerButton::Right);
        ASSERT_TRUE(WaitUntil([] { return FindWindowW(L"#32768", nullptr) != nullptr; }));
        for (int i = 0; i < place; ++i)
            PressKey(VK_DOWN);
        PressKey(VK_RETURN);
        ASSERT_TRUE(WaitUntil([] { return FindWindowW(L"#32768", nullptr) == nullptr; }));
    }

    ProgramStage stage;
    RemoteItem music = 0;
    RemoteItem inner = 0;
};

TEST_F(TickingTest, ClicksOnThePictureCycleThroughTheStates) {
    OpenMusic();
    const RemoteTree tree = stage.Program().Tree();
    const RemoteItem above = tree.Parent(music);
    for (const int state : {4, 5, 1}) {
        ClickSettled(tree.PicturePoint(music));
        EXPECT_TRUE(Reaches(music, state)) << tree.State(music);
        EXPECT_TRUE(Stays(music, state)) << tree.State(music);
        EXPECT_EQ(tree.State(above), state == 1 ? 1 : 2);
        EXPECT_EQ(tree.State(inner), state == 4 ? 4 : 1);
        EXPECT_TRUE(TicksBecome(std::vector<bool>(3, state != 1)));
    }
}

TEST_F(TickingTest, SpaceGoesThroughTheSameStates) {
    OpenMusic();
    const RemoteTree tree = stage.Program().Tree();
    for (const int state : {4, 5, 1, 4, 5, 1}) {
        PressKey(VK_SPACE);
        EXPECT_TRUE(Reaches(music, state)) << tree.State(music);
        EXPECT_TRUE(Stays(music, state)) << tree.State(music);
        EXPECT_TRUE(TicksBecome(std::vector<bool>(3, state != 1)));
    }
}

TEST_F(TickingTest, SpacesThatWaitInTheQueueEachMakeAStep) {
    OpenMusic();
    const RemoteTree tree = stage.Program().Tree();
    for (const int state : {5, 4, 1}) {
        for (int i = 0; i < 5; ++i)
            PostMessageW(tree.Window(), WM_KEYDOWN, VK_SPACE, 1);
        EXPECT_TRUE(Reaches(music, state)) << tree.State(music);
        EXPECT_TRUE(Stays(music, state)) << tree.State(music);
        EXPECT_TRUE(TicksBecome(std::vector<bool>(3, state != 1)));
    }
}

TEST_F(TickingTest, FastSecondClickOnThePictureIsAStepOfItsOwn) {
    OpenMusic();
    const RemoteTree tree = stage.Program().Tree();
    const POINT picture = tree.PicturePoint(music);
    for (const int state : {5, 4, 1}) {
        SettlePointer(picture);
        DoubleClick(picture);
        EXPECT_TRUE(Reaches(music, state)) << tree.State(music);
        EXPECT_TRUE(Stays(music, state)) << tree.State(music);
        EXPECT_EQ(tree.State(inner), state == 4 ? 4 : 1);
        EXPECT_TRUE(TicksBecome(std::vector<bool>(3, state != 1)));
    }
}

TEST_F(TickingTest, FolderUnderATickedOneBeginsTicked) {
    OpenMusic();
    const RemoteTree tree = stage.Program().Tree();
    ClickSettled(tree.PicturePoint(music));
    ASSERT_TRUE(Reaches(inner, 4));
    for (const int state : {5, 1, 4}) {
        ClickSettled(tree.PicturePoint(inner));
        EXPECT_TRUE(Reaches(inner, state)) << tree.State(inner);
        EXPECT_EQ(tree.State(music), 4);
    }
    // Its own folders come later, and take its state on.
    ClickSettled(tree.ExpanderPoint(inner));
    ASSERT_TRUE(WaitUntil([&] { return tree.Child(inner) != 0; }));
    EXPECT_EQ(tree.State(tree.Child(inner)), 4);
}

TEST_F(TickingTest, ClickOnAFolderWithTickedFilesClearsIt) {
    OpenMusic();
    const RemoteTree tree = stage.Program().Tree();
    const RemoteList list = stage.Program().List();
    ClickSettled(list.TickPoint(1));
    EXPECT_TRUE(TicksBecome({false, true, false}));
    EXPECT_TRUE(Reaches(music, 3));
    EXPECT_EQ(tree.State(tree.Parent(music)), 2);
    ClickSettled(tree.PicturePoint(inner));
    ASSERT_TRUE(Reaches(inner, 4));
    EXPECT_EQ(tree.State(music), 3);
    ClickSettled(tree.PicturePoint(music));
    EXPECT_TRUE(Reaches(music, 1));
    EXPECT_EQ(tree.State(inner), 1);
    EXPECT_TRUE(TicksBecome({false, false, false}));
}

TEST_F(TickingTest, UntickedRowOfATickedFolderIsKept) {
    OpenMusic();
    const RemoteTree tree = stage.Program().Tree();
    ClickSettled(tree.PicturePoint(music));
    ASSERT_TRUE(TicksBecome({true, true, true}));
    ClickSettled(stage.Program().List().TickPoint(2));
    EXPECT_TRUE(TicksBecome({true, true, false}));
    EXPECT_EQ(tree.State(music), 4);
    ClickSettled(tree.LabelPoint(inner));
    ASSERT_TRUE(TicksBecome({true}));
    ClickSettled(tree.LabelPoint(music));
    EXPECT_TRUE(TicksBecome({true, true, false}));
}

TEST_F(TickingTest, RowMenuActsOnEveryRow) {
    OpenMusic();
    ChooseRowMenu(1);
    EXPECT_TRUE(TicksBecome({true, true, true}));
    EXPECT_TRUE(Reaches(music, 3));
    ClickSettled(stage.Program().List().TickPoint(0));
    ASSERT_TRUE(TicksBecome({false, true, true}));
    ChooseRowMenu(3);
    EXPECT_TRUE(TicksBecome({true, false, false}));
    ChooseRowMenu(2);
    EXPECT_TRUE(TicksBecome({false, false, false}));
    EXPECT_TRUE(Reaches(music, 1));
}

TEST_F(TickingTest, NetworkIsRefused) {
    OpenMusic();
    RunningProgram& program = stage.Program();
    const RemoteTree tree = program.Tree();
    const RemoteItem network = tree.Find(0, L"Network");
    ASSERT_NE(network, 0);
    const POINT picture = tree.PicturePoint(network);
    ClickSettled(picture);
    EXPECT_THAT(program.AnswerBox(IDOK),
                testing::HasSubstr(L"Only folders within a network can be set for inclusion"));
    EXPECT_TRUE(Stays(network, 1));
    PressKey(VK_SPACE);
    program.AnswerBox(IDOK);
    EXPECT_TRUE(Reaches(network, 1));
    EXPECT_TRUE(Stays(network, 1));
}

TEST_F(TickingTest, ResetAsksFirst) {
    OpenMusic();
    RunningProgram& program = stage.Program();
    const RemoteTree tree = program.Tree();
    ClickSettled(tree.PicturePoint(music));
    ASSERT_TRUE(TicksBecome({true, true, true}));
    program.PressButton(BarButton::Reset);
    EXPECT_THAT(program.AnswerBox(IDNO), testing::HasSubstr(L"Clear All Selections?"));
    EXPECT_EQ(tree.State(music), 4);
    EXPECT_TRUE(TicksBecome({true, true, true}));
    program.PressButton(BarButton::Reset);
    program.AnswerBox(IDYES);
    EXPECT_TRUE(Reaches(music, 1));
    EXPECT_EQ(tree.State(inner), 1);
    EXPECT_EQ(tree.State(tree.Parent(music)), 1);
    EXPECT_TRUE(TicksBecome({false, false, false}));
}

}  // namespace
