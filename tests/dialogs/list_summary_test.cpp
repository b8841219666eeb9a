#include "dialogs/list_summary.h"

#include <gtest/gtest.h>

#include <limits>

#include "tests/support/regional_profile.h"
#include "tests/support/text.h"

namespace {

FileRow Row(std::uint64_t bytes, std::int64_t lengthMs) {
    FileRow row;
    row.sizeBytes = bytes;
    row.lengthMs = lengthMs;
    return row;
}

TEST(SummaryText, ShowsTotalsOnceEverythingIsRead) {
    const RegionalProfile region(englishRegion);
    EXPECT_EQ(Utf8(SummaryText({12, 1572864, 2527000}, false)),
              "Converting 12 Files, Source Size: 1.5 MB  Length: 42 minutes 7 seconds");
    EXPECT_EQ(Utf8(SummaryText({}, false)), "Converting 0 Files, Source Size: 0 bytes  Length: 0");
}

TEST(SummaryText, ShowsTheCountAloneWhileReading) {
    EXPECT_EQ(Utf8(SummaryText({12, 1572864, 2527000}, true)),
              "Converting 12 Files, Reading Meta Data...");
}

TEST(ListSummary, CountsRowsInAndOut) {
    ListSummary summary;
    const FileRow first = Row(1000, 60000);
    const FileRow second = Row(24, 1);
    summary.Add(first);
    summary.Add(second);
    EXPECT_EQ(summary.files, 2);
    EXPECT_EQ(summary.bytes, 1024U);
    EXPECT_EQ(summary.lengthMs, 60001);
    summary.Remove(first);
    EXPECT_EQ(summary.files, 1);
    EXPECT_EQ(summary.bytes, 24U);
    EXPECT_EQ(summary.lengthMs, 1);
}

TEST(ListSummary, WhatDamagedFilesClaimComesOutRightAgain) {
    ListSummary summary;
    const FileRow huge =
        Row(std::numeric_limits<std::uint64_t>::max(), std::numeric_limits<std::int64_t>::max());
    const FileRow least = Row(1, std::numeric_limits<std::int64_t>::min());
    for (const FileRow* row : {&huge, &huge, &least})
        summary.Add(*row);
    for (const FileRow* row : {&least, &huge, &huge})
        summary.Remove(*row);
    EXPECT_EQ(summary.files, 0);
    EXPECT_EQ(summary.bytes, 0U);
    EXPECT_EQ(summary.lengthMs, 0);
}

}  // namespace
