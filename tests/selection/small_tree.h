// A small tree with its selection, as the tests of the model need it.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "selection/selection_model.h"
#include "tests/selection/tree_host.h"
#include "tests/support/text.h"

using Texts = std::vector<std::string>;

inline Texts Entries(const PathList& list) {
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

inline void ExpectLists(const SelectionModel& model, const ExpectedLists& expected) {
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

inline constexpr const wchar_t* rockOne = L"C:\\Music\\Rock\\1.mp3";
inline constexpr const wchar_t* rockTwo = L"C:\\Music\\Rock\\2.mp3";
