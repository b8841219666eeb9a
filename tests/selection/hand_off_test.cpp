#include "selection/hand_off.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <vector>

#include "tests/support/text.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes Copied(const ByteRun& run) {
    Bytes bytes(run.size);
    if (run.size > 0) std::memcpy(bytes.data(), run.data, run.size);
    return bytes;
}

}  // namespace

TEST(HandOff, AnEntryIsThePathsUnitsLittleEndianWithoutTerminator) {
    const struct {
        const wchar_t* path;
        Bytes bytes;
    } cases[] = {
        {L"C:\\a", {0x43, 0, 0x3A, 0, 0x5C, 0, 0x61, 0}},
        {L"\x00FC", {0xFC, 0x00}},
        {L"\x4E2D", {0x2D, 0x4E}},
        {L"\xD83D\xDE00", {0x3D, 0xD8, 0x00, 0xDE}},
        {L"\xD800", {0x00, 0xD8}},
        {L"\"a b\"", {0x22, 0, 0x61, 0, 0x20, 0, 0x62, 0, 0x22, 0}},
        {L"", {}},
    };
    for (const auto& c : cases) {
        const clString path(c.path);
        EXPECT_EQ(Copied(ListEntryText(path)), c.bytes) << Utf8(path);
    }
}

TEST(HandOff, AnEntryOfThreeHundredUnitsGetsNoLongPathPrefix) {
    clString path(L"C:\\");
    while (path.Length() < 300)
        path.Append(L'x');
    const Bytes bytes = Copied(ListEntryText(path));
    ASSERT_EQ(bytes.size(), 600U);
    EXPECT_EQ(bytes[0], 'C');
}

TEST(HandOff, AnEntryEndsWithTheFourBytesOfCrLf) {
    EXPECT_EQ(Copied(ListEntryEnd()), (Bytes{0x0D, 0x00, 0x0A, 0x00}));
}

TEST(HandOff, TheEventIsNamedAfterTheTicksAsASignedNumber) {
    const struct {
        std::uint32_t ticks;
        const wchar_t* name;
    } cases[] = {
        {0, L"fszkr-0"},
        {123456, L"fszkr-123456"},
        {0x7FFFFFFF, L"fszkr-2147483647"},
        {0x80000000, L"fszkr--2147483648"},
        {0xFFFFFFFF, L"fszkr--1"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Utf8(HandOffEventName(c.ticks)), Utf8(c.name));
}

TEST(HandOff, TheCommandLineQuotesTheConverterTheListAndTheEvent) {
    const struct {
        const wchar_t* folder;
        const wchar_t* list;
        const wchar_t* line;
    } cases[] = {
        {L"C:\\tq\\", L"C:\\Temp\\TMP1A2B.tmp",
         L"\"C:\\tq\\Wavewright.exe\" -list_to_conv=\"C:\\Temp\\TMP1A2B.tmp\""
         L" -signal_event_got_files=\"fszkr-7\""},
        {L"C:\\Program Files\\Tone quarry\\", L"C:\\a b\\TMP1.tmp",
         L"\"C:\\Program Files\\Tone quarry\\Wavewright.exe\" -list_to_conv=\"C:\\a b\\TMP1.tmp\""
         L" -signal_event_got_files=\"fszkr-7\""},
        {L"\\\\server\\share\\", L"C:\\100%d\\TMP1.tmp",
         L"\"\\\\server\\share\\Wavewright.exe\" -list_to_conv=\"C:\\100%d\\TMP1.tmp\""
         L" -signal_event_got_files=\"fszkr-7\""},
        {L"C:\\tq\\", L"",
         L"\"C:\\tq\\Wavewright.exe\" -list_to_conv=\"\" -signal_event_got_files=\"fszkr-7\""},
    };
    for (const auto& c : cases) {
        const clString arguments = ConverterArguments(c.list, HandOffEventName(7));
        EXPECT_EQ(Utf8(ConverterCommandLine(ConverterPath(c.folder), arguments)), Utf8(c.line));
    }
}
