#include "mainwindow/start_path.h"

#include <gtest/gtest.h>

#include "tests/support/text.h"

namespace {

std::string Joined(const clStringList& list) {
    clString text;
    list.Join(text);
    return Utf8(text);
}

struct Argument {
    const wchar_t* argument;
    const char* paths;
};

TEST(SplitStartPath, LeadsFromTheRootToTheLeaf) {
    const Argument rows[] = {
        {L"C:\\", "C:\\"},
        {L"C:\\Music", "C:\\\rC:\\Music\\"},
        {L"C:\\Music\\Quarry Choir\\", "C:\\\rC:\\Music\\\rC:\\Music\\Quarry Choir\\"},
        {L"\\\\server\\share\\Rock",
         "\\\\server\\\r\\\\server\\share\\\r\\\\server\\share\\Rock\\"},
    };
    for (const Argument& row : rows)
        EXPECT_EQ(Joined(SplitStartPath(row.argument).paths), row.paths) << Utf8(row.argument);
}

TEST(SplitStartPath, FewerThanThreeCharactersCountAsNone) {
    EXPECT_EQ(SplitStartPath(L"C:").names.Count(), 0);
    EXPECT_EQ(SplitStartPath(L"").names.Count(), 0);
    EXPECT_GT(SplitStartPath(L"C:\\").names.Count(), 0);
}

TEST(WithoutBackslashes, IsTheNameOfAComputer) {
    EXPECT_EQ(Utf8(WithoutBackslashes(L"\\\\server\\")), "server");
    EXPECT_EQ(Utf8(WithoutBackslashes(L"C:\\")), "C:");
}

}  // namespace
