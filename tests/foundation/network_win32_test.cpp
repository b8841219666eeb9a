#include <gtest/gtest.h>
#include <windows.h>
#include <winnetwk.h>

#include <algorithm>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "foundation/handle.h"
#include "foundation/network.h"
#include "foundation/string.h"
#include "tests/support/import_stub.h"
#include "tests/support/text.h"
#include "tests/support/wine.h"

// The platform's own enumeration runs here, over a provider that serves a text
// file; support/network_provider/provider.cpp tells the format of its lines.
namespace {

constexpr wchar_t orderKey[] = L"System\\CurrentControlSet\\Control\\NetworkProvider\\Order";
constexpr wchar_t providerKey[] =
    L"System\\CurrentControlSet\\Services\\TestNetwork\\NetworkProvider";

void WriteText(const wchar_t* key, const wchar_t* name, const clString& text) {
    const auto bytes = static_cast<DWORD>((text.Length() + 1) * 2);
    ASSERT_EQ(RegSetKeyValueW(HKEY_LOCAL_MACHINE, key, name, REG_SZ, text.Chars(), bytes), 0);
}

// The folder of the test programs, with trailing backslash.
clString ProgramFolder() {
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    const clString program = path;
    return program.Left(program.FindLast(L'\\'));
}

clString TemporaryFile(const wchar_t* name) {
    wchar_t folder[MAX_PATH] = {};
    GetTempPathW(MAX_PATH, folder);
    clString path = folder;
    path.Append(name);
    return path;
}

std::string TextOf(const clString& path) {
    std::ifstream file(Utf8(path));
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

std::vector<std::string> LinesOf(const clString& path) {
    std::ifstream file(Utf8(path));
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);)
        lines.push_back(line);
    return lines;
}

class NetworkOfThePlatform : public testing::Test {
protected:
    void SetUp() override {
        if (!RunsUnderWine())
            GTEST_SKIP() << "the network providers of a real machine are left alone";
        SetEnvironmentVariableW(L"TEST_NETWORK_FILE", recordsFile.Chars());
        SetEnvironmentVariableW(L"TEST_NETWORK_LOG", logFile.Chars());
        for (const clString* file : {&recordsFile, &logFile, &resultFile}) {
            DeleteFileW(file->Chars());
        }
    }

    void TearDown() override { Unregister(); }

    static void Register() {
        WriteText(orderKey, L"ProviderOrder", L"TestNetwork");
        WriteText(providerKey, L"Name", L"Test Network");
        clString path = ProgramFolder();
        path.Append(L"test_network_provider.dll");
        ASSERT_NE(GetFileAttributesW(path.Chars()), INVALID_FILE_ATTRIBUTES);
        WriteText(providerKey, L"ProviderPath", path);
    }

    static void Unregister() {
        RegDeleteKeyValueW(HKEY_LOCAL_MACHINE, orderKey, L"ProviderOrder");
        RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"System\\CurrentControlSet\\Services\\TestNetwork");
    }

    // What a fresh process finds in the network of `records`.
    std::string Walk(const std::string& records, const wchar_t* arguments = L"") {
        std::ofstream(Utf8(recordsFile)) << records;
        DeleteFileW(logFile.Chars());
        DeleteFileW(resultFile.Chars());
        Register();
        EXPECT_EQ(RunWalk(arguments), 0u);
        return TextOf(resultFile);
    }

    DWORD RunWalk(const wchar_t* arguments) {
        clString program = ProgramFolder();
        program.Append(L"network_walk.exe");
        clString line;
        line.Format(L"\"%s\" \"%s\" %s", program.Chars(), resultFile.Chars(), arguments);
        std::vector<wchar_t> command(line.Chars(), line.Chars() + line.Length() + 1);
        STARTUPINFOW startup{};
        startup.cb = sizeof(startup);
        PROCESS_INFORMATION process{};
        // Now and then, on a busy machine, Wine cannot start a process at all.
        int attempts = 3;
        while (CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                              &startup, &process) == FALSE) {
            const DWORD error = GetLastError();
            if (error != ERROR_INTERNAL_ERROR || --attempts == 0) return error;
        }
        const clKernelHandle thread(process.hThread);
        const clKernelHandle running(process.hProcess);
        WaitForSingleObject(running.Get(), 60000);
        DWORD code = STILL_ACTIVE;
        GetExitCodeProcess(running.Get(), &code);
        return code;
    }

    std::vector<std::string> Log() const { return LinesOf(logFile); }

    // The lines of the log that begin with `word`.
    std::vector<std::string> LogOf(const std::string& word) const {
        std::vector<std::string> lines = Log();
        std::erase_if(lines, [&word](const std::string& line) { return line.rfind(word, 0) != 0; });
        return lines;
    }

    clString recordsFile = TemporaryFile(L"test-network.txt");
    clString logFile = TemporaryFile(L"test-network.log");
    clString resultFile = TemporaryFile(L"test-network.result");
};

// parent|scope|type|display type|usage|local name|remote name
const char office[] =
    "-|2|0|1|2|-|OFFICE\n"
    "-|2|0|1|2|-|STUDIO\n"
    "OFFICE|2|0|2|2|-|\\\\ONE\n"
    "OFFICE|2|0|2|2|-|\\\\PRINT\n"
    "STUDIO|2|0|2|2|-|\\\\TWO\n"
    "\\\\ONE|2|1|3|1|-|\\\\ONE\\Music\n"
    "\\\\ONE|2|1|3|1|-|\\\\ONE\\Video\n"
    "\\\\ONE|2|2|3|1|-|\\\\ONE\\Laser\n"
    "\\\\PRINT|2|2|3|1|-|\\\\PRINT\\Ink\n"
    "\\\\TWO|2|1|3|1|-|\\\\TWO\\Tapes\\\n";

}  // namespace

TEST_F(NetworkOfThePlatform, WithoutAProviderThereAreNoServersAndTheObjectIsValid) {
    Unregister();
    ASSERT_EQ(RunWalk(L""), 0u);
    EXPECT_EQ(TextOf(resultFile), "");
    EXPECT_NE(GetFileAttributesW(resultFile.Chars()), INVALID_FILE_ATTRIBUTES);
}

TEST_F(NetworkOfThePlatform, ComputersAndTheirDiskSharesAreFound) {
    EXPECT_EQ(Walk(office),
              "[ONE] Music=\\\\ONE\\Music\\ Video=\\\\ONE\\Video\\\n"
              "[TWO] Tapes=\\\\TWO\\Tapes\\\n");
}

TEST_F(NetworkOfThePlatform, ComputerWithPrintersOnlyGivesNoServer) {
    EXPECT_EQ(Walk("-|2|0|2|2|-|\\\\PRINT\n"
                   "\\\\PRINT|2|2|3|1|-|\\\\PRINT\\Ink\n"),
              "");
    EXPECT_EQ(LogOf("open \\\\PRINT").size(), 1u);  // it was looked into
}

TEST_F(NetworkOfThePlatform, OnlyDomainsServersAndNetworksAreEntered) {
    EXPECT_EQ(Walk("-|2|0|0|2|-|generic\n"
                   "-|2|0|4|2|-|file\n"
                   "-|2|0|5|2|-|group\n"
                   "-|2|0|7|2|-|root\n"
                   "-|2|0|9|2|-|directory\n"
                   "-|2|0|1|2|-|domain\n"
                   "-|2|0|2|2|-|server\n"
                   "-|2|0|6|2|-|network\n"
                   "-|2|1|0|1|-|\\\\X\\generic\n"
                   "-|2|1|9|1|-|\\\\X\\directory\n"
                   "-|2|0|3|1|-|\\\\X\\any\n"),
              "");
    std::string entered;
    for (const std::string& line : LogOf("open ")) {
        entered += line.substr(5, line.find(' ', 5) - 5) + ' ';
    }
    EXPECT_EQ(entered, "- domain server network ");
}

TEST_F(NetworkOfThePlatform, ShareListedUnderTwoContainersAppearsOnce) {
    EXPECT_EQ(Walk("-|2|0|1|2|-|OFFICE\n"
                   "-|2|0|1|2|-|ALL\n"
                   "OFFICE|2|0|2|2|-|\\\\ONE\n"
                   "ALL|2|1|3|1|-|\\\\one\\MUSIC\\\n"
                   "ALL|2|1|3|1|-|\\\\ONE\\More\n"
                   "\\\\ONE|2|1|3|1|-|\\\\ONE\\Music\n"),
              "[ONE] Music=\\\\ONE\\Music\\ More=\\\\ONE\\More\\\n");
}

TEST_F(NetworkOfThePlatform, SharesOfOneComputerComeTogetherIfItsNameIsSpeltAlike) {
    EXPECT_EQ(Walk("-|2|0|1|2|-|OFFICE\n"
                   "-|2|0|1|2|-|STUDIO\n"
                   "OFFICE|2|1|3|1|-|\\\\ONE\\a\n"
                   "OFFICE|2|1|3|1|-|\\\\TWO\\b\n"
                   "STUDIO|2|1|3|1|-|\\\\ONE\\c\n"
                   "STUDIO|2|1|3|1|-|\\\\One\\d\n"),
              "[ONE] a=\\\\ONE\\a\\ c=\\\\ONE\\c\\\n"
              "[TWO] b=\\\\TWO\\b\\\n"
              "[One] d=\\\\One\\d\\\n");
}

TEST_F(NetworkOfThePlatform, MappedShareShowsItsDriveLetter) {
    EXPECT_EQ(Walk("-|2|0|2|2|-|\\\\ONE\n"
                   "\\\\ONE|2|1|3|1|M:|\\\\ONE\\Music\n"
                   "\\\\ONE|2|1|3|1||\\\\ONE\\Video\n"),
              "[ONE] M:=\\\\ONE\\Music\\ Video=\\\\ONE\\Video\\\n");
}

TEST_F(NetworkOfThePlatform, ShareWithoutARemoteNameIsSkipped) {
    EXPECT_EQ(Walk("-|2|0|2|2|-|\\\\ONE\n"
                   "\\\\ONE|2|1|3|1|M:|-\n"
                   "\\\\ONE|2|1|3|1|N:|\n"
                   "\\\\ONE|2|1|3|1|-|-\n"
                   "\\\\ONE|2|1|3|1|-|\\\\ONE\\Music\n"),
              "[ONE] Music=\\\\ONE\\Music\\\n");
}

TEST_F(NetworkOfThePlatform, ContainerThatCannotBeOpenedHasNoChildren) {
    std::string records(office);
    records += "!open|\\\\ONE|5\n";
    EXPECT_EQ(Walk(records), "[TWO] Tapes=\\\\TWO\\Tapes\\\n");
}

TEST_F(NetworkOfThePlatform, ContainerThatCannotBeReadHasNoChildrenAndIsClosed) {
    std::string records(office);
    records += "!read|OFFICE|59\n";
    EXPECT_EQ(Walk(records), "[TWO] Tapes=\\\\TWO\\Tapes\\\n");
    EXPECT_EQ(LogOf("open ").size(), LogOf("close").size());
}

TEST_F(NetworkOfThePlatform, EachContainerIsReadOnceWithOneBufferAndClosed) {
    Walk(office);
    EXPECT_EQ(LogOf("open ").size(), 6u);
    EXPECT_EQ(LogOf("close").size(), 6u);
    EXPECT_EQ(LogOf("read ").size(), 6u);
    for (const std::string& line : LogOf("read "))
        EXPECT_EQ(line, "read -1 16384");
}

TEST_F(NetworkOfThePlatform, WhatTheBufferCannotHoldIsNotFetched) {
    std::string records = "-|2|0|2|2|-|\\\\ONE\n-|2|0|2|2|-|\\\\TWO\n";
    constexpr int offered = 400;
    for (int i = 1000; i < 1000 + offered; ++i) {
        records += "\\\\ONE|2|1|3|1|-|\\\\ONE\\Share" + std::to_string(i) + "\n";
    }
    records += "\\\\TWO|2|1|3|1|-|\\\\TWO\\b\n";
    const std::string found = Walk(records);
    const auto shares = std::count(found.begin(), found.end(), '=');
    // Each takes a record of 48 bytes, its path with 32 and the provider's name with 26.
    EXPECT_EQ(shares, 16384 / (48 + 32 + 26) + 1);
    EXPECT_NE(found.find("\\\\ONE\\Share1000\\"), std::string::npos);
    EXPECT_EQ(found.find("\\\\ONE\\Share1399\\"), std::string::npos);
    EXPECT_NE(found.find("[TWO] b"), std::string::npos);
}

// Scope 2 is the whole network, usage 2 a container.
TEST_F(NetworkOfThePlatform, ContainersAreOpenedAsSuchAndNetworksAsGiven) {
    Walk(
        "-|1|0|1|1|-|domain\n"
        "-|1|0|2|0x80000000|-|server\n"
        "-|1|0|6|1|-|network\n");
    EXPECT_EQ(LogOf("open "), (std::vector<std::string>{
                                  "open - for 2 0 0 as 2 2",
                                  "open domain for 2 0 0 as 2 2",
                                  "open server for 2 0 0 as 2 2",
                                  "open network for 2 0 0 as 1 1",
                              }));
}

TEST_F(NetworkOfThePlatform, EnumerateContainerTellsWhetherItCouldBeOpened) {
    const std::string records = "box|2|1|3|1|-|\\\\ONE\\Music\n!open|locked|5\n!read|broken|59\n";
    struct Row {
        const wchar_t* arguments;  // name, scope, usage, keepScope
        const char* result;
        const char* log;
    };
    const Row rows[] = {
        {L"box 1 1 0", "opened\n[ONE] Music=\\\\ONE\\Music\\\n", "open box for 2 0 0 as 2 2"},
        {L"box 1 1 1", "opened\n[ONE] Music=\\\\ONE\\Music\\\n", "open box for 2 0 0 as 1 1"},
        {L"locked 2 2 0", "refused\n", "open locked for 2 0 0 as 2 2"},
        {L"broken 2 2 0", "opened\n", "open broken for 2 0 0 as 2 2"},
        {L"empty 2 2 0", "opened\n", "open empty for 2 0 0 as 2 2"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(Walk(records, row.arguments), row.result) << Utf8(row.arguments);
        EXPECT_EQ(LogOf("open "), std::vector<std::string>{row.log});
    }
}

namespace {

// A top level of five records whose containers are all locked.
struct ScriptedTop {
    DWORD openResult;
    bool hasHandle;
    DWORD readResult;
};

ScriptedTop top;
std::vector<std::string> networkCalls;

DWORD WINAPI OpenScripted(DWORD scope, DWORD type, DWORD usage, LPNETRESOURCEW parent,
                          LPHANDLE handle) {
    std::string call = parent == nullptr ? "top" : Utf8(parent->lpRemoteName);
    for (const DWORD value : {scope, type, usage})
        call += ' ' + std::to_string(value);
    networkCalls.push_back(call);
    if (parent != nullptr) return ERROR_ACCESS_DENIED;
    if (top.hasHandle) *handle = GetProcessHeap();
    return top.openResult;
}

DWORD WINAPI ReadScripted(HANDLE, LPDWORD count, LPVOID buffer, LPDWORD) {
    static wchar_t names[5][2] = {L"a", L"b", L"c", L"d", L"e"};
    const struct {
        DWORD usage;
        DWORD type;
    } rows[] = {{2, 0}, {2, 1}, {1, 0}, {3, 0}, {2, 0}};
    networkCalls.emplace_back("read");
    auto* records = static_cast<NETRESOURCEW*>(buffer);
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        records[i] = {};
        records[i].dwUsage = rows[i].usage;
        records[i].dwType = rows[i].type;
        records[i].lpRemoteName = names[i];
    }
    *count = std::size(rows);
    return top.readResult;
}

DWORD WINAPI CloseScripted(HANDLE) {
    networkCalls.emplace_back("close");
    return NO_ERROR;
}

}  // namespace

TEST(NetworkTopLevel, OnlyContainersOfAnyTypeAreEntered) {
    const ImportStub open("WNetOpenEnumW", OpenScripted);
    const ImportStub read("WNetEnumResourceW", ReadScripted);
    const ImportStub close("WNetCloseEnum", CloseScripted);
    const struct {
        ScriptedTop top;
        std::vector<std::string> calls;
    } rows[] = {
        {{NO_ERROR, true, NO_ERROR}, {"top 5 0 0", "read", "a 2 0 0", "e 2 0 0", "close"}},
        {{NO_ERROR, true, ERROR_NO_MORE_ITEMS}, {"top 5 0 0", "read", "close"}},
        {{ERROR_NO_NETWORK, true, NO_ERROR}, {"top 5 0 0"}},
        {{NO_ERROR, false, NO_ERROR}, {"top 5 0 0"}},
    };
    for (const auto& row : rows) {
        top = row.top;
        networkCalls.clear();
        const clNetworkNeighbourhood network;
        EXPECT_EQ(network.ServerCount(), 0);
        EXPECT_EQ(networkCalls, row.calls);
    }
}
