// What the rows of a list have to do with the selection.
#include <gtest/gtest.h>

#include "tests/selection/small_tree.h"

TEST_F(SelectionModelTest, AnExclusionBeatsAnInclusionAndBothBeatTheFolder) {
    struct Case {
        SelectionState folder;
        bool included, excluded, ticked;
    };
    const Case cases[] = {
        {StateNone, false, false, false},      {StateChildSelected, false, false, false},
        {StateHasFiles, false, false, false},  {StateRecursive, false, false, true},
        {StateFolderOnly, false, false, true}, {StateNone, true, false, true},
        {StateHasFiles, true, false, true},    {StateRecursive, false, true, false},
        {StateFolderOnly, false, true, false}, {StateNone, true, true, false},
        {StateRecursive, true, true, false},   {StateNone, false, true, false},
    };
    host.Show(rock, {rockOne});
    for (const Case& each : cases) {
        lists._FilesIncluded.Clear();
        lists._FilesExcluded.Clear();
        if (each.included) lists._FilesIncluded.Add(L"c:\\music\\rock\\1.MP3");
        if (each.excluded) lists._FilesExcluded.Add(L"c:\\music\\rock\\1.MP3");
        host.SetState(rock, each.folder);
        EXPECT_EQ(model.RowTicked(0), each.ticked) << each.folder << each.included << each.excluded;
    }
}

TEST_F(SelectionModelTest, WithoutASelectedFolderOnlyInclusionsTick) {
    host.Show(0, {rockOne, rockTwo});
    lists._FilesIncluded.Add(rockTwo);
    EXPECT_FALSE(model.RowTicked(0));
    EXPECT_TRUE(model.RowTicked(1));
}

TEST_F(SelectionModelTest, ATickThatSaysTheSameAsTheFolderLeavesNoTrace) {
    host.Show(rock, {rockOne});
    lists._FilesIncluded.Add(rockOne);
    lists._FilesExcluded.Add(rockOne);
    model.RowTickChanged(0, false);
    ExpectLists(model, {});
    host.SetState(rock, StateFolderOnly);
    lists._FilesIncluded.Add(rockOne);
    model.RowTickChanged(0, true);
    ExpectLists(model, {});
}

TEST_F(SelectionModelTest, AFileTickedTwiceStandsOnceAtTheEnd) {
    host.Show(rock, {rockOne, rockTwo});
    model.RowTickChanged(0, true);
    model.RowTickChanged(1, true);
    model.RowTickChanged(0, true);
    ExpectLists(model, {.filesIncluded = {"C:\\Music\\Rock\\2.mp3", "C:\\Music\\Rock\\1.mp3"}});
}

TEST_F(SelectionModelTest, AFileIsForgottenByItsWholePath) {
    for (PathList* list : {&lists._FilesIncluded, &lists._FilesExcluded}) {
        list->Add(L"C:\\a.mp3");
        list->Add(L"c:\\A.MP3");
        list->Add(L"C:\\a.mp3x");
        list->Add(L"C:\\a.mp");
    }
    model.ForgetFile(L"C:\\a.mp3");
    ExpectLists(model, {.filesIncluded = {"C:\\a.mp3x", "C:\\a.mp"},
                        .filesExcluded = {"C:\\a.mp3x", "C:\\a.mp"}});
}

TEST_F(SelectionModelTest, ATogglesRowsFollowItsFolder) {
    for (const bool reports : {true, false}) {
        host.reportsFlips = reports;
        host.Show(rock, {rockOne, rockTwo});
        model.ToggleFolder(rock);
        EXPECT_EQ(host.Ticks(), "xx");
        host.SetRowCheckState(0, ::RowUnticked);
        model.RowTickChanged(0, false);
        model.ToggleFolder(rock);
        EXPECT_EQ(host.Ticks(), "xx");
        ExpectLists(model, {.only = {"C:\\Music\\Rock\\"}});
        model.ToggleFolder(rock);
        EXPECT_EQ(host.Ticks(), "--");
        ExpectLists(model, {});
    }
}

TEST_F(SelectionModelTest, RowCommandsActOnAllRowsAndThenOnTheAncestors) {
    for (const bool reports : {true, false}) {
        host.reportsFlips = reports;
        host.Show(rock, {rockOne, rockTwo});
        model.RunRowCommand(RowCommand::CheckAll);
        EXPECT_EQ(host.Ticks(), "xx");
        EXPECT_EQ(States(), "22311");
        ExpectLists(model, {.filesIncluded = {"C:\\Music\\Rock\\1.mp3", "C:\\Music\\Rock\\2.mp3"}});
        host.SetRowCheckState(0, ::RowUnticked);
        model.RowTickChanged(0, false);
        model.RunRowCommand(RowCommand::InvertSelection);
        EXPECT_EQ(host.Ticks(), "x-");
        ExpectLists(model, {.filesIncluded = {"C:\\Music\\Rock\\1.mp3"}});
        model.RunRowCommand(RowCommand::UncheckAll);
        EXPECT_EQ(host.Ticks(), "--");
        EXPECT_EQ(States(), "11111");
        ExpectLists(model, {});
    }
}

TEST_F(SelectionModelTest, InvertingATickedFolderExcludesAllItsFiles) {
    host.Click(rock);
    host.Show(rock, {rockOne, rockTwo});
    model.RunRowCommand(RowCommand::InvertSelection);
    EXPECT_EQ(host.State(rock), StateRecursive);
    ExpectLists(model, {.recursive = {"C:\\Music\\Rock\\"},
                        .filesExcluded = {"C:\\Music\\Rock\\1.mp3", "C:\\Music\\Rock\\2.mp3"}});
}

TEST_F(SelectionModelTest, TheMenuWithoutAChoiceStillUpdatesTheAncestors) {
    host.Show(rock, {});
    lists._FilesIncluded.Add(rockOne);
    model.UpdateSelectedAncestors();
    EXPECT_EQ(States(), "22311");
}

TEST_F(SelectionModelTest, AFlipUpdatesTheAncestorsAtOnce) {
    host.reportsFlips = false;
    host.Show(rock, {rockOne});
    host.Flip(0);
    EXPECT_EQ(States(), "11111");
    model.OnRowChecked(0, true);
    EXPECT_EQ(States(), "22311");
    // Also after a command that held such updates back.
    model.RunRowCommand(RowCommand::CheckAll);
    model.OnRowChecked(0, false);
    EXPECT_EQ(States(), "11111");
}

TEST_F(SelectionModelTest, ManyFlipsLookAtTheSiblingsOnce) {
    constexpr std::int64_t siblings = 1000;
    for (std::int64_t i = 0; i < siblings; ++i)
        host.Add(drive, L"C:\\Other\\");
    const TreeNode last = host.Add(drive, L"C:\\Last\\");
    host.Show(last, {});
    for (int i = 0; i < 100; ++i)
        host.AddRow((clString(L"C:\\Last\\") += clString(i)).Chars());
    host.stateReads = 0;
    model.RunRowCommand(RowCommand::CheckAll);
    EXPECT_EQ(host.State(drive), StateChildSelected);
    EXPECT_LT(host.stateReads, 3 * siblings);
    // The toggle unticks them all.
    host.stateReads = 0;
    model.ToggleFolder(last);
    EXPECT_EQ(host.State(drive), StateNone);
    EXPECT_LT(host.stateReads, 3 * siblings);
}

TEST_F(SelectionModelTest, ARunOfFlipsIsAnnouncedToTheHost) {
    host.Show(rock, {rockOne});
    host.Click(rock);
    EXPECT_EQ(host.Ticks(), "x");
    EXPECT_EQ(host.rowFlipRuns, 1);
    model.RunRowCommand(RowCommand::UncheckAll);
    EXPECT_EQ(host.Ticks(), "-");
    EXPECT_EQ(host.rowFlipRuns, 2);
    host.PressSpace();
    EXPECT_EQ(host.Ticks(), "x");
    EXPECT_EQ(host.rowFlipRuns, 3);
    EXPECT_EQ(host.singleFlips, 0);
    EXPECT_EQ(host.openRowFlips, 0);
}

// The host holds its list meanwhile: with a box before the user it would hold it
// until that is answered.
TEST_F(SelectionModelTest, NothingIsToldToTheUserWithinARunOfFlips) {
    host.Click(network);
    host.PressSpace();
    model.ResetSelections();
    EXPECT_EQ(host.refusals, 2);
    EXPECT_EQ(host.questions, 1);
    EXPECT_EQ(host.toldWithinRowFlips, 0);
}
