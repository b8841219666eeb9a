#include "foundation/command_line.h"

#include <gtest/gtest.h>

#include "tests/support/text.h"

TEST(CommandLine, ArgumentsStandBehindTheProgramsName) {
    const struct {
        const wchar_t* commandLine;
        const char* expected;
    } rows[] = {{L"\"C:\\Program Files\\app.exe\" C:\\Music", "C:\\Music"},
                {L"\"C:\\app.exe\"", ""},
                {L"\"C:\\app.exe\"   ", ""},
                {L"\"C:\\app.exe\"  \"D:\\My Music\"  ", "\"D:\\My Music\""},
                {L"app.exe C:\\My Music", "C:\\My Music"},
                {L"app.exe ", ""},
                // No terminator: the name itself comes back.
                {L"app.exe", "app.exe"},
                {L"\"C:\\app.exe", "\"C:\\app.exe"},
                {L"\"", "\""},
                {L"", ""},
                // Only spaces are trimmed, and the first character is never the end.
                {L"app.exe \tC:\\Music\t ", "\tC:\\Music\t"},
                {L" app.exe C:\\Music", "C:\\Music"}};
    for (const auto& row : rows) {
        EXPECT_EQ(Utf8(ArgumentsOf(row.commandLine)), row.expected) << Utf8(row.commandLine);
    }
}

TEST(CommandLine, QuotesAroundTheModulePathGo) {
    const struct {
        const wchar_t* path;
        const char* expected;
    } rows[] = {{L"C:\\app.exe", "C:\\app.exe"},
                {L"\"C:\\app.exe\"", "C:\\app.exe"},
                {L"\"C:\\app.exe\" -x", "C:\\app.exe"},
                {L"\"C:\\app.exe", "C:\\app.exe"},
                {L"C:\\a\"b.exe", "C:\\a\"b.exe"},
                {L"\"\"", ""},
                {L"", ""}};
    for (const auto& row : rows) {
        EXPECT_EQ(Utf8(UnquotedModulePath(row.path)), row.expected) << Utf8(row.path);
    }
}
