#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <vector>

#include "foundation/regional.h"
#include "tests/support/import_stub.h"
#include "tests/support/regional_profile.h"
#include "tests/support/scratch_registry.h"
#include "tests/support/text.h"

namespace {

const wchar_t profileKey[] = L"Control Panel\\International";

// Nothing is loaded yet, and the profile is empty.
class RegionalOfTheUser : public testing::Test {
protected:
    static void Store(const wchar_t* name, const wchar_t* text) {
        ScratchRegistry::SetText(HKEY_CURRENT_USER, profileKey, name, text);
    }

    ScratchRegistry registry;
    RegionalProfile region{clRegionalSettings{}};
};

struct Value {
    const wchar_t* name;
    const wchar_t* text;
};

std::string Number(const wchar_t* digits) {
    clString text(digits);
    LocaliseNumber(text);
    return Utf8(text);
}

constexpr SYSTEMTIME Moment(WORD hour, WORD minute) {
    return {2024, 3, 2, 5, hour, minute, 59, 999};
}

// What the platform was asked, of which function.
struct Asked {
    LCID locale;
    DWORD type;  // or the flags
    std::string format;
    int capacity;
};
Asked asked;

int Answer(wchar_t* out) {
    out[0] = L'd';
    out[1] = 0;
    return 2;
}

int WINAPI WatchedLocaleInfo(LCID locale, LCTYPE type, LPWSTR out, int capacity) {
    asked = {locale, type, "", capacity};
    return Answer(out);
}

int WINAPI WatchedFormat(LCID locale, DWORD flags, const SYSTEMTIME*, LPCWSTR format, LPWSTR out,
                         int capacity) {
    asked = {locale, flags, Utf8(format), capacity};
    return Answer(out);
}

// Both leave something in the buffer, as a failure may.
int WINAPI FailingLocaleInfo(LCID, LCTYPE, LPWSTR out, int) {
    Answer(out);
    return 0;
}

int WINAPI FailingFormat(LCID, DWORD, const SYSTEMTIME*, LPCWSTR, LPWSTR out, int) {
    Answer(out);
    return 0;
}

// The user's short date format, and the one from before at the end.
class ShortDates {
public:
    explicit ShortDates(const wchar_t* format) {
        GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SSHORTDATE, saved, 80);
        EXPECT_TRUE(SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SSHORTDATE, format));
    }
    ShortDates(const ShortDates&) = delete;
    ShortDates& operator=(const ShortDates&) = delete;
    ~ShortDates() { SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SSHORTDATE, saved); }

private:
    wchar_t saved[80] = {};
};

}  // namespace

TEST_F(RegionalOfTheUser, NumbersFollowTheProfile) {
    const struct {
        const char* region;
        std::vector<Value> values;
        const char* number;    // 1234567.5
        const char* negative;  // -1234
        const char* duration;  // 1 h 2 min 3.004 s
    } rows[] = {
        {"none", {}, "1234567.5", "-1234", "01:02:03.004"},
        {"empty",
         {{L"iNegNumber", L""},
          {L"sGrouping", L""},
          {L"sNegativeSign", L""},
          {L"sPositiveSign", L""},
          {L"sThousand", L""},
          {L"sDecimal", L""},
          {L"sTime", L""}},
         "1234567.5",
         "-1234",
         "01:02:03.004"},
        {"English",
         {{L"iNegNumber", L"1"},
          {L"sGrouping", L"3;0"},
          {L"sNegativeSign", L"-"},
          {L"sThousand", L","},
          {L"sDecimal", L"."},
          {L"sTime", L":"}},
         "1,234,567.5",
         "-1,234",
         "01:02:03.004"},
        {"German",
         {{L"sGrouping", L"3;0"}, {L"sThousand", L"."}, {L"sDecimal", L","}, {L"sTime", L":"}},
         "1.234.567,5",
         "-1.234",
         "01:02:03,004"},
        {"French",
         {{L"sThousand", L"\x202F"}, {L"sDecimal", L","}},
         "1\xE2\x80\xAF"
         "234\xE2\x80\xAF"
         "567,5",
         "-1\xE2\x80\xAF"
         "234",
         "01:02:03,004"},
        {"Indian",
         {{L"sGrouping", L"3;2;0"}, {L"sThousand", L","}},
         "12,34,567.5",
         "-1,234",
         "01:02:03.004"},
        {"Finnish times", {{L"sTime", L"."}}, "1234567.5", "-1234", "01.02.03.004"},
        {"format 0",
         {{L"iNegNumber", L"0"}, {L"sThousand", L","}},
         "1,234,567.5",
         "(1,234)",
         "01:02:03.004"},
        {"format 2", {{L"iNegNumber", L"2"}}, "1234567.5", "- 1234", "01:02:03.004"},
        {"format 3", {{L"iNegNumber", L"3"}}, "1234567.5", "1234-", "01:02:03.004"},
        {"format 4", {{L"iNegNumber", L"4"}}, "1234567.5", "1234 -", "01:02:03.004"},
        {"format 5", {{L"iNegNumber", L"5"}}, "1234567.5", "-1234", "01:02:03.004"},
        {"long texts",
         {{L"sNegativeSign", L"minus six"},
          {L"sPositiveSign", L"plus six"},
          {L"sThousand", L"abcdefg"},
          {L"sDecimal", L"point six"},
          {L"sTime", L"clock six"}},
         "plus 1abcde234abcde567point5",
         "minus1abcde234",
         "01clock02clock03point004"},
    };
    for (const auto& row : rows) {
        RegDeleteTreeW(HKEY_CURRENT_USER, profileKey);
        for (const Value& value : row.values)
            Store(value.name, value.text);
        regionalSettings = {};
        EXPECT_EQ(Number(L"1234567.5"), row.number) << row.region;
        EXPECT_EQ(Number(L"-1234"), row.negative) << row.region;
        EXPECT_EQ(Utf8(DurationText(3723004, durationExact)), row.duration) << row.region;
    }
}

TEST_F(RegionalOfTheUser, OnlyTextCounts) {
    const DWORD four = 4;
    ScratchRegistry::Set(HKEY_CURRENT_USER, profileKey, L"iNegNumber", REG_DWORD, &four,
                         sizeof(four));
    ScratchRegistry::Set(HKEY_CURRENT_USER, profileKey, L"sThousand", REG_EXPAND_SZ, L"%", 4);
    ScratchRegistry::Set(HKEY_CURRENT_USER, profileKey, L"sDecimal", REG_BINARY, L",", 4);
    EXPECT_EQ(Number(L"-1234.5"), "-1%234.5");
}

TEST_F(RegionalOfTheUser, ALaterChangeIsNotSeen) {
    Store(L"sThousand", L".");
    EXPECT_EQ(Number(L"1234"), "1.234");
    Store(L"sThousand", L"'");
    LoadRegional();
    EXPECT_EQ(Number(L"1234"), "1.234");
}

// The key itself, not one in its place.
TEST(RegionalOfThePrefix, IsReadFromTheRegistry) {
    wchar_t expected[80] = {};
    DWORD bytes = sizeof(expected) - sizeof(wchar_t);
    ASSERT_EQ(RegGetValueW(HKEY_CURRENT_USER, profileKey, L"sThousand", RRF_RT_REG_SZ, nullptr,
                           expected, &bytes),
              ERROR_SUCCESS);
    const RegionalProfile region(clRegionalSettings{});
    LoadRegional();
    EXPECT_EQ(Utf8(regionalSettings.thousandSeparator), Utf8(clString(expected).Left(5)));
}

TEST(RegionalDates, TheShortDateFormatIsTheUsers) {
    for (const wchar_t* format : {L"yyyy-MM-dd", L"d.M.yy"}) {
        const ShortDates dates(format);
        EXPECT_EQ(Utf8(ShortDateFormat()), Utf8(format));
    }
}

TEST(RegionalDates, TheFormatIsAskedOfTheUsersLocale) {
    const ImportStub info("GetLocaleInfoW", WatchedLocaleInfo);
    EXPECT_EQ(Utf8(ShortDateFormat()), "d");
    EXPECT_EQ(asked.locale, 1024u);
    EXPECT_EQ(asked.type, 31u);
    EXPECT_EQ(asked.capacity, 1000);
}

TEST(RegionalDates, AFailureGivesNoFormat) {
    const ImportStub info("GetLocaleInfoW", FailingLocaleInfo);
    EXPECT_EQ(Utf8(ShortDateFormat()), "");
}

TEST(RegionalDates, ADateHasTheFormThatIsAskedFor) {
    const struct {
        const wchar_t* format;
        const char* expected;
    } rows[] = {{L"yyyy-MM-dd", "2024-03-05"},
                {L"d.M.yy", "5.3.24"},
                {L"MM/dd/yyyy", "03/05/2024"},
                {L"'on' dd", "on 05"}};
    for (const auto& row : rows)
        EXPECT_EQ(Utf8(DateText(Moment(14, 7), row.format)), row.expected);
}

TEST(RegionalDates, DatesAndTimesAreAskedOfTheUsersLocale) {
    const ImportStub date("GetDateFormatW", WatchedFormat);
    const ImportStub time("GetTimeFormatW", WatchedFormat);
    EXPECT_EQ(Utf8(DateText(Moment(14, 7), L"M/d")), "d");
    EXPECT_EQ(asked.format, "M/d");
    EXPECT_EQ(asked.locale, 1024u);
    EXPECT_EQ(asked.type, 0u);
    EXPECT_EQ(asked.capacity, 1000);
    asked = {};
    EXPECT_EQ(Utf8(TimeText(Moment(14, 7))), "d");
    EXPECT_EQ(asked.format, "hh':'mm");
    EXPECT_EQ(asked.locale, 1024u);
    EXPECT_EQ(asked.type, 0u);
    EXPECT_EQ(asked.capacity, 1000);
}

TEST(RegionalDates, WhatCannotBeFormattedIsEmpty) {
    SYSTEMTIME moment = Moment(14, 7);
    moment.wMonth = 13;
    EXPECT_EQ(Utf8(DateText(moment, L"yyyy-MM-dd")), "");
    EXPECT_EQ(Utf8(TimeText(Moment(24, 0))), "");
    EXPECT_EQ(Utf8(TimeText(Moment(1, 60))), "");
    const ImportStub date("GetDateFormatW", FailingFormat);
    const ImportStub time("GetTimeFormatW", FailingFormat);
    EXPECT_EQ(Utf8(DateText(Moment(14, 7), L"yyyy-MM-dd")), "");
    EXPECT_EQ(Utf8(TimeText(Moment(14, 7))), "");
}

TEST(RegionalDates, TimesHaveTwelveHoursWhateverTheRegion) {
    clRegionalSettings settings = englishRegion;
    settings.timeSeparator[0] = L'x';
    const RegionalProfile region(settings);
    const struct {
        WORD hour;
        WORD minute;
        const char* expected;
    } rows[] = {{0, 0, "12:00"},  {0, 59, "12:59"}, {1, 5, "01:05"},  {11, 59, "11:59"},
                {12, 0, "12:00"}, {13, 7, "01:07"}, {23, 59, "11:59"}};
    for (const auto& row : rows)
        EXPECT_EQ(Utf8(TimeText(Moment(row.hour, row.minute))), row.expected);
}
