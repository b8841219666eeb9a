// The network in the tree, over a provider that serves a text file.
#include <gmock/gmock.h>

#include "tests/support/converter_side.h"
#include "tests/support/machine_parts.h"
#include "tests/support/wine.h"
#include "tests/ui/end_to_end/program_stage.h"

namespace {

using testing::ElementsAre;

constexpr const char* network =
    "-|2|0|1|2|-|OFFICE\n"
    "OFFICE|2|0|2|2|-|\\\\zebra\n"
    "OFFICE|2|0|2|2|-|\\\\alpha\n"
    "\\\\zebra|2|1|3|1|-|\\\\zebra\\tapes\n"
    "\\\\alpha|2|1|3|1|-|\\\\alpha\\music\n"
    "\\\\alpha|2|1|3|1|-|\\\\alpha\\archive\n";

class NetworkTest : public testing::Test {
protected:
    void SetUp() override {
        if (!RunsUnderWine()) GTEST_SKIP() << "the network of a real machine is left alone";
        stage.AddDecoder(L"one", "type=.abc|Some sound\n");
    }
    RemoteItem NetworkRoot() const { return stage.Program().Tree().Find(0, L"Network"); }

    ProgramStage stage;
};

TEST_F(NetworkTest, OpeningTheRootShowsComputersAndShares) {
    const clTestNetwork provider(network);
    const RemoteTree tree = stage.Start().Tree();
    const RemoteItem root = NetworkRoot();
    ClickSettled(tree.ExpanderPoint(root));
    ASSERT_TRUE(WaitUntil([&] { return tree.IsExpanded(root); }));
    EXPECT_THAT(tree.Texts(root), ElementsAre(L"zebra", L"alpha"));
    const RemoteItem alpha = tree.Find(root, L"alpha");
    EXPECT_THAT(tree.Texts(alpha), ElementsAre(L"music", L"archive"));
    EXPECT_TRUE(tree.HasExpander(alpha));
    EXPECT_FALSE(tree.IsExpanded(alpha));
    for (const RemoteItem item : {root, alpha, tree.Find(alpha, L"music")})
        EXPECT_EQ(tree.State(item), 1) << NarrowUtf8(tree.Text(item));
}

TEST_F(NetworkTest, ComputerIsRefusedAndItsShareIsTicked) {
    const clTestNetwork provider(network);
    RunningProgram& program = stage.Start();
    const RemoteTree tree = program.Tree();
    const RemoteItem root = NetworkRoot();
    ClickSettled(tree.ExpanderPoint(root));
    ASSERT_TRUE(WaitUntil([&] { return tree.IsExpanded(root); }));
    const RemoteItem alpha = tree.Find(root, L"alpha");
    ClickSettled(tree.PicturePoint(alpha));
    EXPECT_THAT(program.AnswerBox(IDOK),
                testing::HasSubstr(L"Only folders within a network can be set for inclusion"));
    EXPECT_EQ(tree.State(alpha), 1);
    const RemoteItem music = tree.Find(alpha, L"music");
    ClickSettled(tree.PicturePoint(music));
    EXPECT_TRUE(WaitUntil([&] { return tree.State(music) == 4; }));
    EXPECT_EQ(tree.State(alpha), 2);
    EXPECT_EQ(tree.State(root), 2);
}

TEST_F(NetworkTest, ShareIsAStartFolder) {
    const clTestNetwork provider(network);
    const RemoteTree tree = stage.Start(L"\\\\ALPHA\\Archive").Tree();
    const RemoteItem share = tree.Selected();
    EXPECT_EQ(tree.Text(share), L"archive");
    EXPECT_EQ(tree.State(share), 4);
    EXPECT_EQ(tree.Text(tree.Parent(share)), L"alpha");
    EXPECT_EQ(tree.State(tree.Parent(share)), 2);
    EXPECT_EQ(tree.Parent(tree.Parent(share)), NetworkRoot());
}

TEST_F(NetworkTest, UnknownShareBecomesARoot) {
    const clTestNetwork provider(network);
    const RemoteTree tree = stage.Start(L"\\\\alpha\\nothing").Tree();
    EXPECT_EQ(tree.Parent(tree.Selected()), 0);
    EXPECT_EQ(tree.Texts(0).back(), L"\\\\alpha\\nothing");
    EXPECT_EQ(tree.State(tree.Selected()), 1);
}

TEST_F(NetworkTest, RefreshLeavesTheNetworkAlone) {
    const clTestNetwork provider(network);
    const std::wstring gone = stage.AddFolder(L"gone");
    const clTestLibrary library("Gone|" + NarrowUtf8(gone) + "\n");
    RunningProgram& program = stage.Start(L"\\\\zebra\\tapes");
    const RemoteTree tree = program.Tree();
    const RemoteItem root = NetworkRoot();
    ASSERT_THAT(tree.Texts(root), ElementsAre(L"zebra", L"alpha"));
    const RemoteItem tapes = tree.Selected();
    ASSERT_TRUE(RemoveDirectoryW(gone.c_str()));
    const std::size_t roots = tree.Children(0).size();
    program.PressButton(BarButton::Refresh);
    ASSERT_TRUE(WaitUntil([&] { return tree.Children(0).size() < roots; }));
    Ask(program.Form(), WM_NULL);  // answered when the refresh is through
    EXPECT_EQ(NetworkRoot(), root);
    EXPECT_THAT(tree.Texts(root), ElementsAre(L"zebra", L"alpha"));
    EXPECT_EQ(tree.State(tapes), 4);
}

TEST_F(NetworkTest, RootKeepsItsExpanderWithoutComputers) {
    const RemoteTree tree = stage.Start().Tree();
    const RemoteItem root = NetworkRoot();
    ClickSettled(tree.ExpanderPoint(root));
    ASSERT_TRUE(WaitUntil([&] { return tree.Selected() == root; }));
    EXPECT_EQ(tree.Child(root), 0);
    EXPECT_TRUE(tree.HasExpander(root));
}

}  // namespace
