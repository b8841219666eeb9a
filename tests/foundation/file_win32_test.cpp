#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "foundation/file.h"
#include "tests/foundation/long_text.h"
#include "tests/support/import_stub.h"
#include "tests/support/message_box_driver.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/text.h"

namespace {

const wchar_t readCaption[] = L"File Read Error";
const wchar_t writeCaption[] = L"File Write Error";

// The bytes of UTF-16 text in the machine's order.
template <std::size_t size>
std::string Bytes(const wchar_t (&text)[size]) {
    return std::string(reinterpret_cast<const char*>(text), (size - 1) * sizeof(wchar_t));
}

void ExpectRetryBox(const SeenBox& box, const char* caption, const std::string& text) {
    EXPECT_EQ(box.caption, caption);
    EXPECT_EQ(box.text, text);
    EXPECT_EQ(box.buttons, (std::vector<int>{IDRETRY, IDCANCEL}));
    EXPECT_TRUE(box.hasInformationIcon);
    EXPECT_FALSE(box.hasOwner);
}

// What the stubs below have been given.
std::vector<std::string> calls;
UINT boxStyle;
int boxAnswer;
int boxCount;

int WINAPI WatchedBox(HWND owner, LPCWSTR text, LPCWSTR caption, UINT style) {
    EXPECT_EQ(owner, nullptr);
    calls.push_back(Utf8(caption) + ": " + Utf8(text));
    boxStyle = style;
    ++boxCount;
    return boxAnswer;
}

clFile* closedByBox;

// Closes the file and asks for another attempt, then gives up.
int WINAPI ClosingBox(HWND, LPCWSTR, LPCWSTR, UINT) {
    closedByBox->Close();
    return ++boxCount == 1 ? IDRETRY : IDCANCEL;
}

struct CreateCall {
    DWORD access, sharing, disposition, attributes;
    LPSECURITY_ATTRIBUTES security;
    HANDLE pattern;
} created;

HANDLE WINAPI WatchedCreate(LPCWSTR path, DWORD access, DWORD sharing,
                            LPSECURITY_ATTRIBUTES security, DWORD disposition, DWORD attributes,
                            HANDLE pattern) {
    calls.push_back(Utf8(path));
    created = {access, sharing, disposition, attributes, security, pattern};
    return INVALID_HANDLE_VALUE;
}

// A device that gives a few bytes each time, or fails with an error.
DWORD deviceBytes;
DWORD deviceError;

BOOL WINAPI DeviceRead(HANDLE, LPVOID, DWORD, LPDWORD done, LPOVERLAPPED) {
    EXPECT_EQ(GetLastError(), DWORD{ERROR_SUCCESS});  // cleared before the call
    calls.emplace_back("read");
    *done = deviceBytes;
    SetLastError(deviceError);
    return deviceError == ERROR_SUCCESS;
}

BOOL WINAPI DeviceWrite(HANDLE, LPCVOID, DWORD, LPDWORD done, LPOVERLAPPED) {
    calls.emplace_back("write");
    *done = deviceBytes;
    return deviceError == ERROR_SUCCESS;
}

class File : public testing::Test {
protected:
    File() {
        calls.clear();
        boxStyle = 0;
        boxAnswer = IDCANCEL;
        boxCount = 0;
        deviceBytes = 0;
        deviceError = ERROR_SUCCESS;
    }

    void OpenToRead(const std::string& content, bool report = false) {
        file.path.Assign(scratch.AddFile(L"file", content));
        file.Open(GENERIC_READ, OPEN_EXISTING, report);
        ASSERT_TRUE(file.IsOpen());
    }

    std::vector<std::string> Lines() {
        std::vector<std::string> result;
        clString line(L"before");
        while (file.ReadLine(line))
            result.push_back(Utf8(line));
        EXPECT_TRUE(line.IsEmpty());
        return result;
    }

    ScratchFolder scratch;
    clFile file;
};

}  // namespace

TEST_F(File, StartsClosed) {
    EXPECT_EQ(file.handle, INVALID_HANDLE_VALUE);
    EXPECT_FALSE(file.reportErrors);
    EXPECT_FALSE(file.ownsHandle);
    EXPECT_EQ(file.Size(), 0u);
    EXPECT_TRUE(file.path.IsEmpty());
}

TEST_F(File, WrittenBytesAreReadBack) {
    file.path.Assign(scratch.Path(L"list"));
    file.Open(GENERIC_WRITE, CREATE_ALWAYS, true);
    ASSERT_TRUE(file.IsOpen());
    EXPECT_TRUE(file.reportErrors);
    EXPECT_TRUE(file.ownsHandle);
    EXPECT_TRUE(file.Write("12345", 5));
    EXPECT_TRUE(file.Write("", 0));
    EXPECT_EQ(file.Size(), 5u);
    file.Close();
    EXPECT_FALSE(file.IsOpen());
    EXPECT_EQ(file.Size(), 0u);
    EXPECT_EQ(FileContent(file.path), "12345");
    file.Open(GENERIC_READ, OPEN_EXISTING, false);
    EXPECT_FALSE(file.reportErrors);
    char buffer[8] = {};
    EXPECT_EQ(file.Read(buffer, 3), 3u);
    EXPECT_EQ(file.Read(buffer + 3, 5), 2u);
    EXPECT_STREQ(buffer, "12345");
}

TEST_F(File, CreateAlwaysEmptiesTheFile) {
    file.path.Assign(scratch.AddFile(L"file", "before"));
    file.Open(GENERIC_WRITE, CREATE_ALWAYS, false);
    EXPECT_EQ(file.Size(), 0u);
}

TEST_F(File, SizeHasBothHalves) {
    const ImportStub stub(
        "GetFileSize", +[](HANDLE, LPDWORD high) -> DWORD {
            *high = 2;
            return 0xFFFFFFF0;
        });
    OpenToRead("");
    EXPECT_EQ(file.Size(), 0x2FFFFFFF0u);
}

TEST_F(File, OpenAsksThePlatformForASharedOrdinaryFile) {
    const ImportStub stub("CreateFileW", WatchedCreate);
    file.path.Assign(L"Q:\\file");
    file.Open(GENERIC_READ, OPEN_EXISTING, false);
    EXPECT_EQ(calls, std::vector<std::string>{"Q:\\file"});
    EXPECT_EQ(created.access, DWORD{GENERIC_READ});
    EXPECT_EQ(created.sharing, 3u);
    EXPECT_EQ(created.disposition, 3u);
    EXPECT_EQ(created.attributes, 128u);
    EXPECT_EQ(created.security, nullptr);
    EXPECT_EQ(created.pattern, nullptr);
}

TEST_F(File, OpenUsesTheLongPathFrom260OnAndTheMessageDoesNot) {
    const ImportStub stub("CreateFileW", WatchedCreate);
    const ImportStub box("MessageBoxW", WatchedBox);
    const clString path = OfLength(L"Q:\\", 260);
    file.path.Assign(path);
    file.Open(GENERIC_READ, OPEN_EXISTING, true);
    EXPECT_EQ(calls,
              (std::vector<std::string>{"\\\\?\\" + Utf8(path),
                                        "File Read Error: Unable to open '" + Utf8(path) + "'"}));
    calls.clear();
    file.path.Assign(OfLength(L"Q:\\", 259));
    file.Open(GENERIC_READ, OPEN_EXISTING, false);
    EXPECT_EQ(calls, std::vector<std::string>{Utf8(file.path)});
}

TEST_F(File, ALongPathIsReallyOpened) {
    file.path.Assign(scratch.Path());
    file.path.Append(OfLength(L"", 250));
    ASSERT_GE(file.path.Length(), 260);
    file.Open(GENERIC_WRITE, CREATE_ALWAYS, false);
    EXPECT_TRUE(file.IsOpen());
}

TEST_F(File, WithoutReportingAFailureShowsInTheHandleOnly) {
    const ImportStub box("MessageBoxW", WatchedBox);
    file.path.Assign(scratch.Path(L"missing\\file"));
    file.Open(GENERIC_READ, OPEN_EXISTING, false);
    EXPECT_FALSE(file.IsOpen());
    char buffer[2] = {};
    EXPECT_EQ(file.Read(buffer, 2), 0u);
    EXPECT_FALSE(file.Write(buffer, 2));
    EXPECT_FALSE(file.Write(nullptr, 2));
    clString line;
    EXPECT_FALSE(file.ReadLine(line));
    EXPECT_EQ(boxCount, 0);
}

TEST_F(File, AnEmptyPathFailsWithoutACall) {
    const ImportStub stub("CreateFileW", WatchedCreate);
    file.Open(GENERIC_READ, OPEN_EXISTING, false);
    EXPECT_FALSE(file.IsOpen());
    EXPECT_TRUE(calls.empty());
    const ImportStub box("MessageBoxW", WatchedBox);
    file.Open(GENERIC_WRITE, CREATE_ALWAYS, true);
    EXPECT_EQ(calls, std::vector<std::string>{"File Write Error: Unable to open ''"});
    EXPECT_EQ(boxStyle, 69u);
}

TEST_F(File, RetryOpensOnceTheFolderIsThere) {
    file.path.Assign(scratch.Path(L"new\\file"));
    MessageBoxDriver driver(writeCaption, {IDRETRY, IDRETRY}, [&](std::size_t number) {
        if (number == 1) scratch.AddFolder(L"new");
    });
    file.Open(GENERIC_WRITE, CREATE_ALWAYS, true);
    EXPECT_TRUE(file.IsOpen());
    ASSERT_EQ(driver.Seen().size(), 2u);
    const std::string text = "Unable to open '" + Utf8(file.path) + "'";
    for (const SeenBox& box : driver.Seen())
        ExpectRetryBox(box, "File Write Error", text);
}

TEST_F(File, CancelLeavesTheFileClosed) {
    file.path.Assign(scratch.Path(L"missing\\file"));
    MessageBoxDriver driver(readCaption, {IDCANCEL});
    file.Open(GENERIC_READ, OPEN_EXISTING, true);
    EXPECT_FALSE(file.IsOpen());
    ASSERT_EQ(driver.Seen().size(), 1u);
    ExpectRetryBox(driver.Seen()[0], "File Read Error", "Unable to open '" + Utf8(file.path) + "'");
}

TEST_F(File, WritingAmongTheAccessRightsDecidesTheCaption) {
    const ImportStub box("MessageBoxW", WatchedBox);
    file.path.Assign(scratch.Path());  // a folder
    file.Open(GENERIC_READ, OPEN_EXISTING, true);
    file.Open(GENERIC_WRITE, OPEN_EXISTING, true);
    file.Open(GENERIC_READ | GENERIC_WRITE, OPEN_EXISTING, true);
    const std::string rest = ": Unable to open '" + Utf8(file.path) + "'";
    EXPECT_EQ(calls, (std::vector<std::string>{"File Read Error" + rest, "File Write Error" + rest,
                                               "File Write Error" + rest}));
}

TEST_F(File, TheEndOfTheFileIsNoErrorEvenWithReporting) {
    const ImportStub box("MessageBoxW", WatchedBox);
    OpenToRead("abc", true);
    char buffer[4] = {};
    EXPECT_EQ(file.Read(buffer, 2), 2u);
    EXPECT_EQ(file.Read(buffer, 2), 1u);
    EXPECT_EQ(file.Read(buffer, 2), 0u);
    EXPECT_EQ(boxCount, 0);
}

TEST_F(File, AFailedReadIsRepeatedWithItsBytesDropped) {
    OpenToRead("abcdef", true);
    const ImportStub device("ReadFile", DeviceRead);
    deviceBytes = 1;
    deviceError = ERROR_READ_FAULT;
    MessageBoxDriver driver(readCaption, {IDRETRY, IDRETRY}, [](std::size_t number) {
        if (number == 1) {
            deviceBytes = 4;
            deviceError = ERROR_SUCCESS;
        }
    });
    char buffer[4] = {};
    EXPECT_EQ(file.Read(buffer, 4), 4u);
    ASSERT_EQ(driver.Seen().size(), 2u);
    ExpectRetryBox(driver.Seen()[0], "File Read Error",
                   "Unable to read from '" + Utf8(file.path) + "'");
    EXPECT_EQ(calls, (std::vector<std::string>{"read", "read", "read"}));
}

TEST_F(File, ACancelledReadGivesTheBytesDone) {
    OpenToRead("abcdef", true);
    const ImportStub device("ReadFile", DeviceRead);
    const ImportStub box("MessageBoxW", WatchedBox);
    char buffer[4] = {};
    deviceBytes = 3;
    deviceError = ERROR_READ_FAULT;
    EXPECT_EQ(file.Read(buffer, 4), 3u);
    EXPECT_EQ(boxCount, 1);
    EXPECT_EQ(boxStyle, 69u);
    // These two tell of the end of the file, the box does not come.
    deviceError = ERROR_HANDLE_EOF;
    EXPECT_EQ(file.Read(buffer, 4), 3u);
    deviceError = ERROR_SUCCESS;
    EXPECT_EQ(file.Read(buffer, 4), 3u);
    EXPECT_EQ(boxCount, 1);
    file.reportErrors = false;
    deviceError = ERROR_READ_FAULT;
    EXPECT_EQ(file.Read(buffer, 4), 3u);
    EXPECT_EQ(boxCount, 1);
}

TEST_F(File, ARetryThatReadsNothingGivesNothing) {
    OpenToRead("abcdef", true);
    const ImportStub device("ReadFile", DeviceRead);
    const ImportStub box("MessageBoxW", ClosingBox);
    closedByBox = &file;
    deviceBytes = 3;
    deviceError = ERROR_READ_FAULT;
    char buffer[4] = {};
    EXPECT_EQ(file.Read(buffer, 4), 0u);
    EXPECT_EQ(boxCount, 2);
}

TEST_F(File, ReadingAClosedFileAsksWithReporting) {
    const ImportStub box("MessageBoxW", WatchedBox);
    file.path.Assign(L"Q:\\file");
    file.reportErrors = true;
    char buffer[2] = {};
    EXPECT_EQ(file.Read(buffer, 2), 0u);
    EXPECT_EQ(calls, std::vector<std::string>{"File Read Error: Unable to read from 'Q:\\file'"});
}

TEST_F(File, AFailedWriteIsRepeatedFromTheSameBuffer) {
    file.path.Assign(scratch.AddFile(L"file"));
    file.Open(GENERIC_WRITE, CREATE_ALWAYS, true);
    const ImportStub device("WriteFile", DeviceWrite);
    deviceBytes = 2;  // too few, though the call succeeds
    MessageBoxDriver driver(writeCaption, {IDRETRY, IDRETRY},
                            [](std::size_t number) { deviceBytes = number == 0 ? 3u : 4u; });
    EXPECT_TRUE(file.Write("abcd", 4));
    ASSERT_EQ(driver.Seen().size(), 2u);
    ExpectRetryBox(driver.Seen()[0], "File Write Error",
                   "Unable to write to '" + Utf8(file.path) + "'");
    EXPECT_EQ(calls, (std::vector<std::string>{"write", "write", "write"}));
}

TEST_F(File, ACancelledWriteIsFalse) {
    const ImportStub box("MessageBoxW", WatchedBox);
    OpenToRead("abc", true);  // and so may not be written to
    EXPECT_FALSE(file.Write("x", 1));
    EXPECT_EQ(calls, std::vector<std::string>{"File Write Error: Unable to write to '" +
                                              Utf8(file.path) + "'"});
    EXPECT_EQ(boxStyle, 69u);
}

TEST_F(File, WritingFromNowhereShowsItsOwnBox) {
    file.path.Assign(scratch.AddFile(L"file"));
    file.Open(GENERIC_WRITE, CREATE_ALWAYS, true);
    MessageBoxDriver driver(writeCaption, {});
    EXPECT_FALSE(file.Write(nullptr, 1));
    EXPECT_TRUE(file.Write(nullptr, 0));
    ASSERT_EQ(driver.Seen().size(), 1u);
    const SeenBox& box = driver.Seen()[0];
    EXPECT_EQ(box.text, "Error writing a NULL buffer to file");
    EXPECT_EQ(box.buttons.size(), 1u);  // OK
    EXPECT_TRUE(box.hasInformationIcon);
    EXPECT_FALSE(box.hasOwner);
    const ImportStub stub("MessageBoxW", WatchedBox);
    EXPECT_FALSE(file.Write(nullptr, 1));
    EXPECT_EQ(boxStyle, 64u);
}

TEST_F(File, OnlyAnOwnedHandleIsClosed) {
    OpenToRead("abc");
    HANDLE kept = file.handle;
    file.ownsHandle = false;
    file.Close();
    EXPECT_FALSE(file.IsOpen());
    char buffer[3] = {};
    DWORD done = 0;
    EXPECT_TRUE(ReadFile(kept, buffer, 3, &done, nullptr));
    HANDLE closed = nullptr;
    {
        clFile owner;
        owner.handle = kept;
        owner.ownsHandle = true;
        closed = owner.handle;
    }
    EXPECT_FALSE(ReadFile(closed, buffer, 0, &done, nullptr));
}

TEST_F(File, OpenDoesNotCloseAnOldHandle) {
    OpenToRead("abc");
    HANDLE old = file.handle;
    file.Open(GENERIC_READ, OPEN_EXISTING, false);
    EXPECT_NE(file.handle, old);
    char byte = 0;
    DWORD done = 0;
    EXPECT_TRUE(ReadFile(old, &byte, 1, &done, nullptr));
    CloseHandle(old);
}

TEST_F(File, LinesEndInCrLfLfOrCr) {
    const struct {
        std::string content;
        std::vector<std::string> expected;
    } rows[] = {
        {"", {}},
        {Bytes(L"one"), {"one"}},
        {Bytes(L"one\r\ntwo"), {"one", "two"}},
        {Bytes(L"one\ntwo\n"), {"one", "two"}},
        {Bytes(L"a\rb\r\n"), {"a", "b"}},
        {Bytes(L"a\r\rb"), {"a", "", "b"}},
        {Bytes(L"a\r\n\r\nb"), {"a", "", "b"}},
        {Bytes(L"a\n\nb"), {"a", "", "b"}},
        {Bytes(L"a\n\r"), {"a"}},
        // A final bare CR: the line before it counts, an empty one does not.
        {Bytes(L"a\r"), {"a"}},
        {Bytes(L"\r"), {}},
        {Bytes(L"\n"), {""}},
        {Bytes(L"\r\n"), {""}},
        {Bytes(L"\x1234\xE4"), {"\xE1\x88\xB4\xC3\xA4"}},
        // Half a character at the end is none.
        {Bytes(L"ab") + "c", {"ab"}},
        {"c", {}},
    };
    for (const auto& row : rows) {
        OpenToRead(row.content);
        EXPECT_EQ(Lines(), row.expected);
        file.Close();
    }
}

TEST_F(File, MarksAtTheStartOfALineAndNulsAreDropped) {
    const struct {
        std::string content;
        std::vector<std::string> expected;
    } rows[] = {
        {Bytes(L"\xFEFF"), {}},
        {Bytes(L"\xFEFF"
               L"a\r\n\xFEFF"
               L"b"),
         {"a", "b"}},
        {Bytes(L"\xFEFF\xFEFF"
               L"a"),
         {"a"}},
        {Bytes(L"a\xFEFF"
               L"b"),
         {"a\xEF\xBB\xBF"
          "b"}},
        {Bytes(L"\0\xFEFF"
               L"a\0b\0"),
         {"ab"}},
        {Bytes(L"\0\0"), {}},
    };
    for (const auto& row : rows) {
        OpenToRead(row.content);
        EXPECT_EQ(Lines(), row.expected);
        file.Close();
    }
}

TEST_F(File, AfterABareCrThePositionIsBehindIt) {
    OpenToRead(Bytes(L"a\rb\r\n"));
    clString line;
    ASSERT_TRUE(file.ReadLine(line));
    EXPECT_EQ(Utf8(line), "a");
    EXPECT_EQ(SetFilePointer(file.handle, 0, nullptr, FILE_CURRENT), 4u);
    ASSERT_TRUE(file.ReadLine(line));
    EXPECT_EQ(Utf8(line), "b");
    EXPECT_EQ(SetFilePointer(file.handle, 0, nullptr, FILE_CURRENT), 10u);
}

TEST_F(File, ALineLongerThanTheInlineBufferIsWhole) {
    const std::string content = Bytes(L"0123456789") + std::string(2000, 'x');
    OpenToRead(content);
    clString line;
    ASSERT_TRUE(file.ReadLine(line));
    EXPECT_EQ(line.Length(), 1010);
    EXPECT_FALSE(file.ReadLine(line));
}
