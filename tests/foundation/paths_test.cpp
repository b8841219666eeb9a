#include "foundation/paths.h"

#include <gtest/gtest.h>

#include <vector>

#include "tests/foundation/long_text.h"
#include "tests/support/allocations.h"
#include "tests/support/text.h"

namespace {

struct TextRow {
    const wchar_t* path;
    const char* expected;
};

constexpr char longPrefix[] = "\\\\?\\";

}  // namespace

TEST(Paths, ExtensionOfIsAPointWhenThereIsNone) {
    const TextRow rows[] = {{L"C:\\a\\song.flac", ".flac"},
                            {L"song.tar.gz", ".gz"},
                            {L"song", "."},
                            {L"song.", "."},
                            {L"C:\\v1.0\\song", "."},
                            {L"C:\\v1.0\\song.mp3", ".mp3"},
                            {L"C:\\v1.0\\", "."},
                            {L".hidden", ".hidden"},
                            {L"C:\\a\\.hidden", ".hidden"},
                            {L"a.\\b", "."},
                            {L"..", "."},
                            {L"", "."}};
    for (const auto& row : rows) {
        const clString path(row.path);
        EXPECT_EQ(Utf8(ExtensionOf(path)), row.expected) << Utf8(path);
        const std::int32_t dot = ExtensionPosition(path);
        EXPECT_EQ(dot == 0 ? "." : Utf8(path.Mid(dot)), row.expected) << Utf8(path);
    }
    EXPECT_EQ(ExtensionPosition(L"C:\\a\\song.flac"), 10);
    EXPECT_EQ(ExtensionPosition(L"song."), 5);
    EXPECT_EQ(ExtensionPosition(L"C:\\v1.0\\song"), 0);
}

TEST(Paths, FileNameOfStandsBehindTheLastBackslash) {
    const TextRow rows[] = {{L"C:\\a\\song.flac", "song.flac"},
                            {L"song.flac", "song.flac"},
                            {L"C:\\a\\", ""},
                            {L"C:song", "C:song"},
                            {L"a/b", "a/b"},
                            {L"\\", ""},
                            {L"", ""}};
    for (const auto& row : rows)
        EXPECT_EQ(Utf8(FileNameOf(row.path)), row.expected);
}

TEST(Paths, FileNameOfKeepsTheTagOfAPathWithoutBackslash) {
    clString path(L"song.flac");
    path.tag = 8;
    EXPECT_EQ(FileNameOf(path).tag, 8);
    path.Assign(L"C:\\song.flac");
    EXPECT_EQ(FileNameOf(path).tag, 0);
}

TEST(Paths, BaseNameOfHasNoExtension) {
    const TextRow rows[] = {{L"C:\\v1.0\\song.tar.gz", "song.tar"},
                            {L"C:\\v1.0\\song", "song"},
                            {L"C:\\v1.0\\", ""},
                            {L".hidden", ""},
                            {L"song", "song"}};
    for (const auto& row : rows)
        EXPECT_EQ(Utf8(BaseNameOf(row.path)), row.expected);
}

TEST(Paths, StripExtensionPaysNoAttentionToBackslashes) {
    const TextRow rows[] = {
        {L"song.mp3", "song"}, {L"song.", "song"}, {L"song", "song"},
        {L".mp3", ""},         {L"", ""},          {L"C:\\v1.0\\song", "C:\\v1"}};
    for (const auto& row : rows)
        EXPECT_EQ(Utf8(StripExtension(row.path)), row.expected);
}

TEST(Paths, DirectoryOfEndsInABackslash) {
    const TextRow rows[] = {{L"C:\\a\\song.flac", "C:\\a\\"},
                            {L"C:\\a\\", "C:\\a\\"},
                            {L"C:\\song", "C:\\"},
                            {L"song", "song"},
                            {L"", ""},
                            {L"\\\\server\\x", "\\\\server\\"}};
    for (const auto& row : rows)
        EXPECT_EQ(Utf8(DirectoryOf(row.path)), row.expected);
}

TEST(Paths, EnsureBackslashAppendsAtMostOne) {
    const TextRow rows[] = {{L"", "\\"}, {L"C:", "C:\\"}, {L"C:\\", "C:\\"}, {L"a\\\\", "a\\\\"}};
    for (const auto& row : rows) {
        clString path(row.path);
        EnsureBackslash(path);
        EXPECT_EQ(Utf8(path), row.expected);
    }
}

TEST(Paths, StripBackslashesTakesAllAtTheEnd) {
    const TextRow rows[] = {{L"", ""},         {L"\\", ""},
                            {L"\\\\\\", ""},   {L"a\\b\\\\", "a\\b"},
                            {L"a\\b", "a\\b"}, {L"C:\\", "C:"}};
    for (const auto& row : rows) {
        clString path(row.path);
        StripBackslashes(path);
        EXPECT_EQ(Utf8(path), row.expected);
        EXPECT_EQ(path.Length(), static_cast<std::int32_t>(std::string(row.expected).size()));
    }
}

TEST(Paths, QuotePutsQuotesRoundQuotes) {
    const TextRow rows[] = {{L"a b", "\"a b\""}, {L"\"a\"", "\"\"a\"\""}, {L"", "\"\""}};
    for (const auto& row : rows) {
        clString path(row.path);
        Quote(path);
        EXPECT_EQ(Utf8(path), row.expected);
    }
}

TEST(Paths, LongPathPrefixesFromTheLimitOn) {
    for (const std::int32_t limit : {fileLongPathLimit, folderLongPathLimit}) {
        const clString shorter = OfLength(L"C:\\", limit - 1);
        EXPECT_EQ(Utf8(LongPath(shorter, limit)), Utf8(shorter));
        for (const std::int32_t length : {limit, limit + 1, 1000}) {
            const clString path = OfLength(L"C:\\", length);
            EXPECT_EQ(Utf8(LongPath(path, limit)), longPrefix + Utf8(path));
        }
    }
    EXPECT_EQ(fileLongPathLimit, 260);
    EXPECT_EQ(folderLongPathLimit, 248);
}

TEST(Paths, LongPathLeavesServerPathsAndPrefixesAlone) {
    for (const wchar_t* start : {L"\\\\server\\share\\", L"\\\\?\\C:\\", L"\\\\"}) {
        const clString path = OfLength(start, 300);
        EXPECT_EQ(Utf8(LongPath(path, 260)), Utf8(path));
    }
    // Nothing is normalised: one backslash, a relative path and ".." get it too.
    for (const wchar_t* start : {L"\\", L"folder\\", L"..\\", L"C:/"}) {
        const clString path = OfLength(start, 300);
        EXPECT_EQ(Utf8(LongPath(path, 260)), longPrefix + Utf8(path));
    }
}

TEST(Paths, RootLengthIsThePositionBehindTheRoot) {
    const struct {
        const wchar_t* path;
        std::int32_t expected;
    } rows[] = {{L"C:\\folder", 4},
                {L"C:\\", 4},
                {L"C:", 1},
                {L"\\\\server\\share\\folder", 10},
                {L"\\\\server\\", 10},
                {L"\\\\server", 1},
                {L"\\\\?\\C:\\folder", 8},
                {L"\\\\?\\C:\\", 8},
                {L"\\\\?\\C:", 1},
                {L"\\\\?\\UNC\\server\\share", 9},
                {L"\\\\?\\", 1},
                // The first two positions are never looked at, nor the first
                // six behind the long prefix.
                {L"\\\\\\", 4},
                {L"\\\\?\\a\\b", 1},
                {L"\\\\?\\ab\\b", 8},
                {L"abc\\name", 5},
                {L"ab\\name", 4},
                {L"a\\name", 1},
                {L"\\name\\x", 7},
                {L"name", 1},
                {L"ab", 1},
                {L"", 1}};
    for (const auto& row : rows)
        EXPECT_EQ(RootLength(row.path), row.expected) << Utf8(row.path);
}

TEST(Paths, PopComponentTakesTheLastOneAndKeepsTheBackslash) {
    const struct {
        const wchar_t* path;
        const char* component;
        const char* rest;
    } rows[] = {{L"C:\\a\\b", "b", "C:\\a\\"},
                {L"C:\\a\\b\\", "b", "C:\\a\\"},
                {L"C:\\a\\b\\\\\\", "b", "C:\\a\\"},
                {L"C:\\a", "a", "C:\\"},
                {L"C:\\", "", "C:\\"},
                {L"C:", "", "C:"},
                {L"", "", ""},
                {L"name", "", "name"},
                {L"a\\b\\c", "c", "a\\b\\"},
                {L"abc\\name", "name", "abc\\"},
                {L"\\\\server\\share\\folder", "folder", "\\\\server\\share\\"},
                {L"\\\\server\\share\\", "share", "\\\\server\\"},
                {L"\\\\server\\", "", "\\\\server\\"},
                {L"\\\\?\\C:\\a", "a", "\\\\?\\C:\\"},
                {L"\\\\?\\C:\\", "", "\\\\?\\C:\\"},
                // Only backslashes behind the drive: they are gone all the same.
                {L"C:\\\\", "", "C:"}};
    for (const auto& row : rows) {
        clString path(row.path);
        EXPECT_EQ(Utf8(PopComponent(path)), row.component) << Utf8(row.path);
        EXPECT_EQ(Utf8(path), row.rest) << Utf8(row.path);
    }
}

TEST(Paths, PoppingEndsAtTheRoot) {
    clString path(L"C:\\one\\two\\three\\");
    std::vector<std::string> components;
    for (;;) {
        const clString component = PopComponent(path);
        if (component.IsEmpty()) break;
        components.push_back(Utf8(component));
    }
    EXPECT_EQ(components, (std::vector<std::string>{"three", "two", "one"}));
    EXPECT_EQ(Utf8(path), "C:\\");
}

TEST(Paths, TheTextRulesTakeNoHeapForUsualPaths) {
    const clString path(L"C:\\Music\\Some Folder\\Some Song.flac");
    clString folder(L"C:\\Music\\Some Folder");
    AllocationCount count;
    const clString extension = ExtensionOf(path);
    const clString name = BaseNameOf(path);
    const clString directory = DirectoryOf(path);
    const clString text = LongPath(path, 260);
    EnsureBackslash(folder);
    const clString component = PopComponent(folder);
    EXPECT_EQ(count.Blocks(), 0u);
    EXPECT_EQ(Utf8(component), "Some Folder");
}
