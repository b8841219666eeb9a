#include "selection/selection_model.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/selection/tree_host.h"
#include "tests/support/text.h"

namespace {

using Texts = std::vector<std::string>;

Texts Entries(const PathList& list) {
    Texts entries;
    list.ForEach([&](const clString& path) { entries.push_back(Utf8(path)); });
    return entries;
}

struct ExpectedLists {
    Texts recursive = {};
    Texts only = {};
    Texts excluded = {};
    Texts filesIncluded = {};
    Texts filesExcluded = {};
};

void ExpectLists(const SelectionModel& model, const ExpectedLists& expected) {
    EXPECT_EQ(Entries(model.Lists()._FoldersRecursive), expected.recursive);
    EXPECT_EQ(Entries(model.Lists()._FoldersOnly), expected.only);
    EXPECT_EQ(Entries(model.Lists()._FoldersExcluded), expected.excluded);
    EXPECT_EQ(Entries(model.Lists()._FilesIncluded), expected.filesIncluded);
    EXPECT_EQ(Entries(model.Lists()._FilesExcluded), expected.filesExcluded);
}

// C:\ holds Music, which holds Rock (with Live) and Jazz; N is the network with
// a computer and its share.
class SelectionModelTest : public testing::Test {
protected:
    TreeHost host;
    SelectionModel& model = host.model;
    SelectionLists& lists = model.Lists();
    const TreeNode drive = host.Add(0, L"C:\\");
    const TreeNode music = host.Add(drive, L"C:\\Music\\");
    const TreeNode rock = host.Add(music, L"C:\\Music\\Rock\\");
    const TreeNode live = host.Add(rock, L"C:\\Music\\Rock\\Live\\");
    const TreeNode jazz = host.Add(music, L"C:\\Music\\Jazz\\");
    const TreeNode network = host.Add(0, L"{ Network }");
    const TreeNode computer = host.Add(network, L"{ Network Computer }");
    const TreeNode share = host.Add(computer, L"\\\\SERVER\\share\\");

    // Of drive, music, rock, live and jazz.
    std::string States() const {
        std::string states;
        for (const TreeNode node : {drive, music, rock, live, jazz})
            states += std::to_string(host.State(node));
        return states;
    }
};

constexpr const wchar_t* rockOne = L"C:\\Music\\Rock\\1.mp3";
constexpr const wchar_t* rockTwo = L"C:\\Music\\Rock\\2.mp3";

}  // namespace

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
