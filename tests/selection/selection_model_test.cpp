#include "selection/selection_model.h"

#include <gtest/gtest.h>

#include "tests/selection/small_tree.h"

TEST_F(SelectionModelTest, AFolderUnderNothingCyclesThrough1451) {
    EXPECT_EQ(States(), "11111");
    host.Click(rock);
    EXPECT_EQ(States(), "22441");
    ExpectLists(model, {.recursive = {"C:\\Music\\Rock\\"}});
    host.Click(rock);
    EXPECT_EQ(States(), "22511");
    ExpectLists(model, {.only = {"C:\\Music\\Rock\\"}});
    host.Click(rock);
    EXPECT_EQ(States(), "11111");
    ExpectLists(model, {});
}

TEST_F(SelectionModelTest, AFolderUnderARecursiveParentCyclesThrough4514) {
    host.Click(music);
    EXPECT_EQ(States(), "24444");
    host.Click(rock);
    EXPECT_EQ(States(), "24514");
    ExpectLists(model, {.recursive = {"C:\\Music\\"}, .only = {"C:\\Music\\Rock\\"}});
    host.Click(rock);
    EXPECT_EQ(States(), "24114");
    ExpectLists(model, {.recursive = {"C:\\Music\\"}, .excluded = {"C:\\Music\\Rock\\"}});
    host.Click(rock);
    EXPECT_EQ(States(), "24444");
    ExpectLists(model, {.recursive = {"C:\\Music\\"}});
}

TEST_F(SelectionModelTest, AParentForFilesOnlyLeavesItsChildrenToThemselves) {
    host.Click(music);
    host.Click(music);
    EXPECT_EQ(States(), "25111");
    host.Click(rock);
    EXPECT_EQ(States(), "25441");
    ExpectLists(model, {.recursive = {"C:\\Music\\Rock\\"}, .only = {"C:\\Music\\"}});
}

TEST_F(SelectionModelTest, ChildrenThatAreReadLaterInherit) {
    host.Click(live);
    const TreeNode first = host.AddOpened(live, L"C:\\Music\\Rock\\Live\\A\\");
    const TreeNode second = host.AddOpened(live, L"C:\\Music\\Rock\\Live\\B\\");
    EXPECT_EQ(host.State(first), StateRecursive);
    EXPECT_EQ(host.State(second), StateRecursive);
    lists._FoldersExcluded.Add(L"c:\\music\\rock\\live\\c\\");
    EXPECT_EQ(host.State(host.AddOpened(live, L"C:\\Music\\Rock\\Live\\C\\")), StateNone);
    EXPECT_EQ(host.State(host.AddOpened(jazz, L"C:\\Music\\Jazz\\A\\")), StateNone);
    EXPECT_EQ(host.State(host.AddOpened(0, L"D:\\")), StateNone);
    host.Click(jazz);
    host.Click(jazz);
    EXPECT_EQ(host.State(jazz), StateFolderOnly);
    EXPECT_EQ(host.State(host.AddOpened(jazz, L"C:\\Music\\Jazz\\B\\")), StateNone);
}

TEST_F(SelectionModelTest, AParentCoversItsChildUnlessThatHasAnEntryOfItsOwn) {
    EXPECT_FALSE(model.CoveredByParent(drive));
    EXPECT_FALSE(model.CoveredByParent(rock));
    host.SetState(music, StateFolderOnly);
    EXPECT_FALSE(model.CoveredByParent(rock));
    host.SetState(music, StateRecursive);
    EXPECT_TRUE(model.CoveredByParent(rock));
    lists._FoldersRecursive.Add(L"C:\\MUSIC\\rock\\");
    EXPECT_FALSE(model.CoveredByParent(rock));
    EXPECT_TRUE(model.CoveredByParent(jazz));
}

TEST_F(SelectionModelTest, AToggleForgetsAllAtAndBeneathTheFolderInEveryList) {
    const std::vector<PathList*> all = {&lists._FoldersRecursive, &lists._FoldersOnly,
                                        &lists._FoldersExcluded, &lists._FilesIncluded,
                                        &lists._FilesExcluded};
    for (PathList* list : all) {
        list->Add(L"C:\\MUSIC\\rock\\");
        list->Add(L"C:\\Music\\Rock\\Live\\x.mp3");
        list->Add(L"C:\\Music\\Rock and Roll\\");
        list->Add(L"C:\\Music\\Rock");
    }
    host.SetState(rock, StateChildSelected);
    host.Click(rock);
    for (const PathList* list : all)
        EXPECT_EQ(Entries(*list), (Texts{"C:\\Music\\Rock and Roll\\", "C:\\Music\\Rock"}));
}

TEST_F(SelectionModelTest, AClickOn2Or3ClearsAllBeneathWithoutTicking) {
    for (const SelectionState before : {StateChildSelected, StateHasFiles}) {
        host.Click(live);
        host.Show(rock, {rockOne});
        if (before == StateHasFiles) host.Flip(0);
        EXPECT_EQ(host.State(rock), before);
        host.Click(rock);
        EXPECT_EQ(States(), "11111");
        EXPECT_EQ(host.Ticks(), "-");
        ExpectLists(model, {});
    }
    EXPECT_EQ(host.questions, 0);
}

TEST_F(SelectionModelTest, AClickOn2UnderARecursiveParentCutsTheFolderOut) {
    host.Click(music);
    host.SetState(rock, StateChildSelected);
    host.Click(rock);
    EXPECT_EQ(host.State(rock), StateNone);
    ExpectLists(model, {.recursive = {"C:\\Music\\"}, .excluded = {"C:\\Music\\Rock\\"}});
}

TEST_F(SelectionModelTest, NetworkAndComputersAreRefusedAndNothingChanges) {
    lists._FilesIncluded.Add(L"{ Network }");
    for (const TreeNode node : {network, computer}) {
        host.SetState(node, StateChildSelected);
        host.Click(node);
        EXPECT_EQ(host.State(node), StateChildSelected);
    }
    EXPECT_EQ(host.refusals, 2);
    ExpectLists(model, {.filesIncluded = {"{ Network }"}});
}

TEST_F(SelectionModelTest, AShareBeneathAComputerCanBeTicked) {
    host.Click(share);
    EXPECT_EQ(host.refusals, 0);
    EXPECT_EQ(host.State(share), StateRecursive);
    EXPECT_EQ(host.State(computer), StateChildSelected);
    EXPECT_EQ(host.State(network), StateChildSelected);
    ExpectLists(model, {.recursive = {"\\\\SERVER\\share\\"}});
}

TEST_F(SelectionModelTest, AMarkerIsRecognisedInItsExactSpellingOnly) {
    const TreeNode node = host.Add(0, L"{ network }");
    host.Click(node);
    EXPECT_EQ(host.refusals, 0);
    EXPECT_EQ(host.State(node), StateRecursive);
}

TEST_F(SelectionModelTest, NoNodeIsNeitherToggledNorUpdated) {
    model.ToggleFolder(0);
    model.UpdateAncestors(0);
    EXPECT_EQ(model.ToggleBySpace(), 0);
    EXPECT_EQ(States(), "11111");
}

TEST_F(SelectionModelTest, SpaceEndsWhereAClickEnds) {
    struct Case {
        SelectionState before, parent, after;
    };
    const Case cases[] = {
        {StateNone, StateNone, StateRecursive},
        {StateNone, StateRecursive, StateRecursive},
        {StateRecursive, StateNone, StateFolderOnly},
        {StateRecursive, StateRecursive, StateFolderOnly},
        {StateFolderOnly, StateNone, StateNone},
        {StateFolderOnly, StateRecursive, StateNone},
        {StateChildSelected, StateNone, StateNone},
        {StateHasFiles, StateNone, StateNone},
    };
    for (const Case& each : cases) {
        host.SetState(music, each.parent);
        host.SetState(rock, each.before);
        host.Click(rock);
        EXPECT_EQ(host.State(rock), each.after);
        host.SetState(music, each.parent);
        host.SetState(rock, each.before);
        EXPECT_EQ(host.PressSpace(), each.after);
        EXPECT_EQ(host.State(rock), each.after);
    }
}

TEST_F(SelectionModelTest, SpaceLeavesTheStateBeforeTheControlsOwnStep) {
    host.Select(rock);
    EXPECT_EQ(model.ToggleBySpace(), StateRecursive);
    EXPECT_EQ(host.State(rock), 3);
    host.SetState(rock, StateFolderOnly);
    EXPECT_EQ(model.ToggleBySpace(), StateNone);
    EXPECT_EQ(host.State(rock), 5);
}

TEST_F(SelectionModelTest, SpaceOnTheNetworkLeavesItsState) {
    host.Select(network);
    EXPECT_EQ(host.PressSpace(), StateNone);
    EXPECT_EQ(host.State(network), StateNone);
    EXPECT_EQ(host.refusals, 1);
}

TEST_F(SelectionModelTest, ATickedFileInAnUntickedFolderShows3AndItsAncestors2) {
    host.Show(rock, {rockOne, rockTwo});
    host.Flip(0);
    EXPECT_EQ(States(), "22311");
    ExpectLists(model, {.filesIncluded = {"C:\\Music\\Rock\\1.mp3"}});
    host.Flip(0);
    EXPECT_EQ(States(), "11111");
    ExpectLists(model, {});
}

TEST_F(SelectionModelTest, TickedFilesGoBeforeATickedSubFolder) {
    host.Click(live);
    EXPECT_EQ(States(), "22241");
    host.Show(rock, {rockOne});
    host.Flip(0);
    EXPECT_EQ(States(), "22341");
    host.Flip(0);
    EXPECT_EQ(States(), "22241");
}

TEST_F(SelectionModelTest, AnAncestorThatHoldsFilesKeepsShowingThem) {
    host.Show(music, {L"C:\\Music\\0.mp3"});
    host.Flip(0);
    EXPECT_EQ(States(), "23111");
    host.Click(rock);
    EXPECT_EQ(States(), "23441");
    // Its file is gone from the list, but it is not the changed node.
    lists._FilesIncluded.Clear();
    model.UpdateAncestors(rock);
    EXPECT_EQ(States(), "23441");
    model.UpdateAncestors(music);
    EXPECT_EQ(States(), "22441");
}

TEST_F(SelectionModelTest, OnlyThreeStatesOfTheChangedNodeAreDerived) {
    lists._FilesIncluded.Add(rockOne);
    for (std::int32_t state = 1; state <= 5; ++state) {
        host.SetState(rock, state);
        model.UpdateAncestors(rock);
        EXPECT_EQ(host.State(rock), state >= 4 ? state : StateHasFiles) << state;
    }
    host.SetState(music, StateRecursive);
    host.SetState(drive, StateFolderOnly);
    model.UpdateAncestors(rock);
    EXPECT_EQ(host.State(music), StateRecursive);
    EXPECT_EQ(host.State(drive), StateFolderOnly);
}

TEST_F(SelectionModelTest, FilesDeeperDownAreNotTheFoldersOwn) {
    lists._FilesIncluded.Add(L"C:\\MUSIC\\rock\\live\\1.mp3");
    EXPECT_TRUE(model.HasTickedFile(L"C:\\Music\\Rock\\Live\\"));
    EXPECT_FALSE(model.HasTickedFile(L"C:\\Music\\Rock\\"));
    EXPECT_FALSE(model.HasTickedFile(L"C:\\Music\\Rock\\Li"));
}

TEST_F(SelectionModelTest, UntickingARowOfATickedFolderLeavesTheFolder) {
    host.Click(rock);
    host.Show(rock, {rockOne, rockTwo});
    EXPECT_EQ(host.Ticks(), "xx");
    host.Flip(1);
    EXPECT_EQ(host.State(rock), StateRecursive);
    ExpectLists(model,
                {.recursive = {"C:\\Music\\Rock\\"}, .filesExcluded = {"C:\\Music\\Rock\\2.mp3"}});
    host.Flip(1);
    ExpectLists(model, {.recursive = {"C:\\Music\\Rock\\"}});
}

TEST_F(SelectionModelTest, ClearingARunOfSiblingsGoesDownButNotUp) {
    host.Click(music);
    host.SetState(drive, StateChildSelected);
    model.ClearStates(rock);
    EXPECT_EQ(States(), "24111");
    ExpectLists(model, {.recursive = {"C:\\Music\\"}});
    EXPECT_TRUE(host.listed.empty());
}

TEST_F(SelectionModelTest, AResetAsksAndClearsEverything) {
    host.Click(share);
    host.Click(music);
    host.Click(rock);
    lists._FilesIncluded.Add(L"D:\\x.mp3");
    lists._FilesExcluded.Add(L"D:\\y.mp3");
    lists._FoldersExcluded.Add(L"D:\\z\\");
    host.answersYes = false;
    model.ResetSelections();
    EXPECT_EQ(host.questions, 1);
    EXPECT_EQ(host.State(share), StateRecursive);
    EXPECT_EQ(States(), "24514");
    EXPECT_TRUE(host.listed.empty());
    host.answersYes = true;
    model.ResetSelections();
    EXPECT_EQ(host.questions, 2);
    EXPECT_EQ(States(), "11111");
    for (const TreeNode node : {network, computer, share})
        EXPECT_EQ(host.State(node), StateNone);
    ExpectLists(model, {});
    EXPECT_EQ(host.listed, std::vector<TreeNode>{rock});
}
