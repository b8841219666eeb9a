#include <gtest/gtest.h>
#include <windows.h>

#include "decoders/file_date.h"
#include "foundation/regional.h"
#include "tests/support/import_stub.h"
#include "tests/support/text.h"

namespace {

int WINAPI ShortDates(LCID, LCTYPE, LPWSTR out, int) {
    lstrcpyW(out, L"yyyy-MM-dd");
    return 11;
}

clFileTime MomentOf(const SYSTEMTIME& time) {
    FILETIME moment = {};
    EXPECT_TRUE(SystemTimeToFileTime(&time, &moment));
    return {moment.dwLowDateTime, moment.dwHighDateTime};
}

}  // namespace

TEST(FileDate, IsTheShortDateABlankAndTheTime) {
    const ImportStub format("GetLocaleInfoW", ShortDates);
    const struct {
        SYSTEMTIME time;
        const char* expected;
    } rows[] = {{{2024, 3, 0, 5, 14, 7, 59, 999}, "2024-03-05 02:07"},
                {{1601, 1, 0, 1, 0, 0, 0, 0}, "1601-01-01 12:00"},
                {{2099, 12, 0, 31, 23, 59, 0, 0}, "2099-12-31 11:59"}};
    for (const auto& row : rows)
        EXPECT_EQ(Utf8(FileDateText(MomentOf(row.time))), row.expected);
}

// Both halves of the number, on any machine, wherever it stands.
TEST(FileDate, IsInUtc) {
    const ImportStub format("GetLocaleInfoW", ShortDates);
    // 2001-09-09 01:46:40, a thousand million seconds behind the start of 1970.
    EXPECT_EQ(Utf8(FileDateText({0x44FF8000, 0x01C138D1})), "2001-09-09 01:46");
}

TEST(FileDate, AMomentWithoutADateIsEmpty) {
    EXPECT_EQ(Utf8(FileDateText({0xFFFFFFFF, 0xFFFFFFFF})), "");
}
