#include "foundation/network.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/text.h"

namespace {

struct Found {
    const wchar_t* local;
    const wchar_t* remote;
};

clNetworkNeighbourhood::Walk WalkOf(std::vector<Found> shares) {
    return [shares](clNetworkNeighbourhood& result) {
        for (const Found& share : shares)
            result.AddShare(share.local, share.remote);
    };
}

// One line for each server: its name, then "name=path" for each share.
std::string Described(const clNetworkNeighbourhood& network) {
    std::string text;
    for (std::int64_t i = 0; i < network.ServerCount(); ++i) {
        const clNetworkServer& server = *network.ServerAt(i);
        EXPECT_EQ(server.shareNames.Count(), server.sharePaths.Count());
        text += "[" + Utf8(server.name) + "]";
        for (std::int64_t k = 0; k < server.shareNames.Count(); ++k) {
            text += " " + Utf8(*server.shareNames.At(k)) + "=" + Utf8(*server.sharePaths.At(k));
        }
        text += "\n";
    }
    return text;
}

std::string Grouped(std::vector<Found> shares) {
    return Described(clNetworkNeighbourhood(WalkOf(std::move(shares))));
}

}  // namespace

TEST(Network, RecordsAreEnteredTakenOrSkippedByDisplayTypeAndType) {
    struct Row {
        std::uint32_t displayType;
        std::uint32_t type;
        NetworkStep step;
    };
    constexpr std::uint32_t any = 0;
    constexpr std::uint32_t disk = 1;
    constexpr std::uint32_t printer = 2;
    const Row rows[] = {
        {0, disk, NetworkStep::Skip},                 // generic
        {1, any, NetworkStep::Enter},                 // domain
        {1, disk, NetworkStep::Enter},                //
        {2, any, NetworkStep::Enter},                 // server
        {2, printer, NetworkStep::Enter},             //
        {3, disk, NetworkStep::TakeShare},            // share
        {3, printer, NetworkStep::Skip},              //
        {3, any, NetworkStep::Skip},                  //
        {4, disk, NetworkStep::Skip},                 // file
        {5, any, NetworkStep::Skip},                  // group
        {6, any, NetworkStep::EnterAsGiven},          // network
        {6, disk, NetworkStep::EnterAsGiven},         //
        {7, any, NetworkStep::Skip},                  // the root above all networks
        {0xFFFFFFFF, 0xFFFFFFFF, NetworkStep::Skip},  //
    };
    for (const Row& row : rows) {
        EXPECT_EQ(StepForRecord(row.displayType, row.type), row.step)
            << row.displayType << ", " << row.type;
    }
}

TEST(Network, ComputerNameIsTheFirstPartOfThePath) {
    struct Row {
        const wchar_t* path;
        const char* name;
    };
    const Row rows[] = {
        {L"\\\\SRV\\Music\\", "SRV"},
        {L"\\\\SRV\\", "SRV"},
        {L"\\\\SRV", "SRV"},
        {L"\\SRV\\Music\\", "SRV"},
        {L"SRV\\Music\\", "SRV"},
        {L"\\\\SRV\\a\\b\\", "SRV"},
        {L"\\\\\\SRV\\Music\\", ""},  // only two are taken off
        {L"\\", ""},
        {L"", ""},
    };
    for (const Row& row : rows)
        EXPECT_EQ(Utf8(ComputerName(row.path)), row.name);
}

TEST(Network, ShareNameStandsBehindTheLastBackslash) {
    struct Row {
        const wchar_t* found;
        const char* name;
    };
    const Row rows[] = {
        {L"SRV\\Music", "Music"}, {L"SRV\\a\\b", "b"}, {L"Z:", "Z:"}, {L"Z:\\", ""},
        {L"SRV", "SRV"},          {L"", ""},
    };
    for (const Row& row : rows)
        EXPECT_EQ(Utf8(ShareName(row.found)), row.name);
}

TEST(Network, SharesAreGroupedByComputer) {
    struct Row {
        const char* what;
        std::vector<Found> shares;
        const char* expected;
    };
    const Row rows[] = {
        {"nothing found", {}, ""},
        {"a path with and without its backslash",
         {{L"", L"\\\\SRV\\Music"}, {L"", L"\\\\SRV\\Video\\"}},
         "[SRV] Music=\\\\SRV\\Music\\ Video=\\\\SRV\\Video\\\n"},
        {"a path in two containers",
         {{L"", L"\\\\SRV\\Music"}, {L"", L"\\\\SRV\\Music"}},
         "[SRV] Music=\\\\SRV\\Music\\\n"},
        {"a path in two containers, spelt otherwise",
         {{L"", L"\\\\SRV\\Music"}, {L"Z:", L"\\\\srv\\MUSIC\\"}},
         "[SRV] Music=\\\\SRV\\Music\\\n"},
        {"only A to Z fold",
         {{L"", L"\\\\SRV\\M\u00fcsic"}, {L"", L"\\\\SRV\\M\u00dcsic"}},
         "[SRV] M\u00fcsic=\\\\SRV\\M\u00fcsic\\ M\u00dcsic=\\\\SRV\\M\u00dcsic\\\n"},
        {"one computer between which another comes",
         {{L"", L"\\\\ONE\\a"}, {L"", L"\\\\TWO\\b"}, {L"", L"\\\\ONE\\c"}},
         "[ONE] a=\\\\ONE\\a\\ c=\\\\ONE\\c\\\n[TWO] b=\\\\TWO\\b\\\n"},
        {"names that differ in case",
         {{L"", L"\\\\SRV\\a"}, {L"", L"\\\\Srv\\b"}},
         "[SRV] a=\\\\SRV\\a\\\n[Srv] b=\\\\Srv\\b\\\n"},
        {"a mapped share", {{L"Z:", L"\\\\SRV\\Music"}}, "[SRV] Z:=\\\\SRV\\Music\\\n"},
        {"a mapped share with a backslash",
         {{L"Z:\\", L"\\\\SRV\\Music"}},
         "[SRV] =\\\\SRV\\Music\\\n"},
        {"no path",
         {{L"Z:", L""}, {nullptr, nullptr}, {nullptr, L"\\\\SRV\\a"}},
         "[SRV] a=\\\\SRV\\a\\\n"},
        {"a computer and no share", {{L"", L"\\\\SRV"}}, "[SRV] SRV=\\\\SRV\\\n"},
        {"a lone backslash", {{L"", L"\\"}}, "[] =\\\n"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(Grouped(row.shares), row.expected) << row.what;
}

TEST(Network, FoundNamesKeepTheComputerOrTheDriveLetter) {
    const clNetworkNeighbourhood network(
        WalkOf({{L"", L"\\\\SRV\\Music"}, {L"Z:", L"\\\\SRV\\b"}}));
    ASSERT_EQ(network.FoundNames().Count(), 2);
    ASSERT_EQ(network.FoundPaths().Count(), 2);
    EXPECT_EQ(Utf8(*network.FoundNames().At(0)), "SRV\\Music");
    EXPECT_EQ(Utf8(*network.FoundPaths().At(0)), "\\\\SRV\\Music\\");
    EXPECT_EQ(Utf8(*network.FoundNames().At(1)), "Z:");
    EXPECT_EQ(Utf8(*network.FoundPaths().At(1)), "\\\\SRV\\b\\");
}

TEST(Network, EachServerHasOneEmptyKey) {
    const clNetworkNeighbourhood network(
        WalkOf({{L"", L"\\\\ONE\\a"}, {L"", L"\\\\TWO\\b"}, {L"", L"\\\\ONE\\c"}}));
    ASSERT_EQ(network.Keys().Count(), 2);
    EXPECT_EQ(Utf8(*network.Keys().At(0)), "");
    EXPECT_EQ(Utf8(*network.Keys().At(1)), "");
}
