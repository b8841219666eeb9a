#include "foundation/regional.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <limits>
#include <map>
#include <string>
#include <vector>

#include "tests/support/regional_profile.h"
#include "tests/support/text.h"

static_assert(offsetof(clRegionalSettings, loaded) == 0);
static_assert(offsetof(clRegionalSettings, leadingZero) == 1);
static_assert(offsetof(clRegionalSettings, negativeFormat) == 4);
static_assert(offsetof(clRegionalSettings, indianGrouping) == 8);
static_assert(offsetof(clRegionalSettings, negativeSign) == 10);
static_assert(offsetof(clRegionalSettings, positiveSign) == 22);
static_assert(offsetof(clRegionalSettings, thousandSeparator) == 34);
static_assert(offsetof(clRegionalSettings, decimalSeparator) == 46);
static_assert(offsetof(clRegionalSettings, timeSeparator) == 58);

namespace {

constexpr std::int64_t smallest = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();

constexpr clRegionalSettings germanRegion = {true, true, 1, false, L"-", L"", L".", L",", L":"};
constexpr clRegionalSettings frenchRegion = {true, true,      1,    false, L"-",
                                             L"",  L"\x202F", L",", L":"};
constexpr clRegionalSettings indianRegion = {true, true, 1, true, L"-", L"", L",", L".", L":"};
constexpr clRegionalSettings ungroupedRegion = {true, true, 1, false, L"-", L"", L"", L".", L":"};
constexpr clRegionalSettings wordyRegion = {true,     true,     1,        false,   L"minus",
                                            L"plus ", L"(tsd)", L"point", L"-to-!"};

std::string Localised(const wchar_t* number) {
    clString text(number);
    LocaliseNumber(text);
    return Utf8(text);
}

// What a profile holds, and what it was asked for.
std::map<std::string, clString> profile;
std::vector<std::string> asked;
const clRegionalSettings* watched = nullptr;
bool loadedAtFirst = false;

clString ReadProfile(const wchar_t* name) {
    if (asked.empty() && watched != nullptr) loadedAtFirst = watched->loaded;
    asked.push_back(Utf8(name));
    return profile[Utf8(name)];
}

clRegionalSettings Filled(const std::map<std::string, clString>& values) {
    profile = values;
    asked.clear();
    // As if it had been filled before: nothing of that may stay.
    clRegionalSettings settings = wordyRegion;
    settings.loaded = false;
    watched = &settings;
    FillRegional(settings, ReadProfile);
    watched = nullptr;
    return settings;
}

// All fields but `loaded`.
std::string Shown(const clRegionalSettings& s) {
    std::string out = s.leadingZero ? "0" : "-";
    out += ' ' + std::to_string(s.negativeFormat) + (s.indianGrouping ? " indian" : " even");
    for (const wchar_t* sign : {s.negativeSign, s.positiveSign, s.thousandSeparator,
                                s.decimalSeparator, s.timeSeparator}) {
        out += " [" + Utf8(sign) + ']';
    }
    return out;
}

}  // namespace

TEST(Regional, AProfileFillsTheFields) {
    const struct {
        const char* what;
        std::map<std::string, clString> values;
        const char* expected;
    } rows[] = {
        {"nothing", {}, "0 1 even [-] [] [] [.] [:]"},
        {"English",
         {{"iLZero", L"1"},
          {"iNegNumber", L"1"},
          {"sGrouping", L"3;0"},
          {"sNegativeSign", L"-"},
          {"sPositiveSign", L""},
          {"sThousand", L","},
          {"sDecimal", L"."},
          {"sTime", L":"}},
         "0 1 even [-] [] [,] [.] [:]"},
        {"German", {{"sThousand", L"."}, {"sDecimal", L","}}, "0 1 even [-] [] [.] [,] [:]"},
        {"French",
         {{"sThousand", L"\x202F"}, {"sDecimal", L","}},
         "0 1 even [-] [] [\xE2\x80\xAF] [,] [:]"},
        {"Indian", {{"sGrouping", L"3;2;0"}, {"sThousand", L","}}, "0 1 indian [-] [] [,] [.] [:]"},
        {"another grouping", {{"sGrouping", L"3;2"}}, "0 1 even [-] [] [] [.] [:]"},
        {"a longer grouping", {{"sGrouping", L"3;2;0;0"}}, "0 1 even [-] [] [] [.] [:]"},
        {"no leading zero", {{"iLZero", L"0"}}, "- 1 even [-] [] [] [.] [:]"},
        {"no leading zero, and more", {{"iLZero", L"01"}}, "- 1 even [-] [] [] [.] [:]"},
        {"another leading zero", {{"iLZero", L"x0"}}, "0 1 even [-] [] [] [.] [:]"},
        {"negative format 0", {{"iNegNumber", L"0"}}, "0 0 even [-] [] [] [.] [:]"},
        {"negative format 4", {{"iNegNumber", L"4"}}, "0 4 even [-] [] [] [.] [:]"},
        {"negative format 12", {{"iNegNumber", L" 12x"}}, "0 12 even [-] [] [] [.] [:]"},
        {"negative format in letters", {{"iNegNumber", L"one"}}, "0 0 even [-] [] [] [.] [:]"},
        {"negative format below", {{"iNegNumber", L"-3"}}, "0 -3 even [-] [] [] [.] [:]"},
        {"five characters",
         {{"sNegativeSign", L"minus"},
          {"sPositiveSign", L"plus!"},
          {"sThousand", L"abcde"},
          {"sDecimal", L"point"},
          {"sTime", L"hours"}},
         "0 1 even [minus] [plus!] [abcde] [point] [hours]"},
        {"six characters",
         {{"sNegativeSign", L"minus6"},
          {"sPositiveSign", L"plus!6"},
          {"sThousand", L"abcde6"},
          {"sDecimal", L"point6"},
          {"sTime", L"a very long time"}},
         "0 1 even [minus] [plus!] [abcde] [point] [a ver]"},
    };
    for (const auto& row : rows) {
        const clRegionalSettings settings = Filled(row.values);
        EXPECT_TRUE(settings.loaded) << row.what;
        EXPECT_EQ(Shown(settings), row.expected) << row.what;
    }
}

TEST(Regional, TheValuesAreReadInTheOrderOfTheFieldsOnceMarkedAsLoaded) {
    loadedAtFirst = false;
    Filled({});
    const std::vector<std::string> expected = {"iLZero",        "iNegNumber",    "sGrouping",
                                               "sNegativeSign", "sPositiveSign", "sThousand",
                                               "sDecimal",      "sTime"};
    EXPECT_EQ(asked, expected);
    EXPECT_TRUE(loadedAtFirst);
}

TEST(Regional, LoadingHappensOnce) {
    const RegionalProfile region(wordyRegion);
    LoadRegional();
    EXPECT_EQ(Shown(regionalSettings), Shown(wordyRegion));
}

TEST(Regional, FormattingLoadsByItself) {
    const struct {
        const char* what;
        void (*format)();
    } rows[] = {
        {"LocaliseNumber", [] { Localised(L"1"); }},
        {"an empty number", [] { Localised(L""); }},
        {"NumberText", [] { static_cast<void>(NumberText(1)); }},
        {"DecimalText", [] { static_cast<void>(DecimalText(1, 1)); }},
        {"SizeText", [] { static_cast<void>(SizeText(2048, false)); }},
        {"DurationText", [] { static_cast<void>(DurationText(1000, durationFull)); }},
    };
    for (const auto& row : rows) {
        const RegionalProfile region(clRegionalSettings{});
        row.format();
        EXPECT_TRUE(regionalSettings.loaded) << row.what;
        EXPECT_NE(Utf8(regionalSettings.timeSeparator), "") << row.what;
    }
}

TEST(Regional, DigitsAreGroupedAsTheRegionDoes) {
    const struct {
        const clRegionalSettings& region;
        const wchar_t* number;
        const char* expected;
    } rows[] = {
        {englishRegion, L"", ""},
        {englishRegion, L"0", "0"},
        {englishRegion, L"12", "12"},
        {englishRegion, L"999", "999"},
        {englishRegion, L"1000", "1,000"},
        {englishRegion, L"123456", "123,456"},
        {englishRegion, L"1234567", "1,234,567"},
        {englishRegion, L"1234567890123", "1,234,567,890,123"},
        {englishRegion, L"-123", "-123"},
        {englishRegion, L"-1234", "-1,234"},
        {englishRegion, L"-123456", "-123,456"},
        {englishRegion, L"-1234567", "-1,234,567"},
        {englishRegion, L"0.12345", "0.12345"},
        {englishRegion, L"1234.56789", "1,234.56789"},
        {englishRegion, L"-1234.5", "-1,234.5"},
        {englishRegion, L".5", ".5"},
        {indianRegion, L"123", "123"},
        {indianRegion, L"1234", "1,234"},
        {indianRegion, L"12345", "12,345"},
        {indianRegion, L"123456", "1,23,456"},
        {indianRegion, L"1234567", "12,34,567"},
        {indianRegion, L"-12345", "-12,345"},
        {indianRegion, L"1234567890", "1,23,45,67,890"},
        {ungroupedRegion, L"1234567.5", "1234567.5"},
        {germanRegion, L"1234567", "1.234.567"},
        {germanRegion, L"1234567.89", "1.234.567,89"},
        {germanRegion, L"-1234.5", "-1.234,5"},
        {frenchRegion, L"1234567.5",
         "1\xE2\x80\xAF"
         "234\xE2\x80\xAF"
         "567,5"},
        {wordyRegion, L"", ""},
        {wordyRegion, L"1234567.5", "plus 1(tsd)234(tsd)567point5"},
        {wordyRegion, L"-1234", "minus1(tsd)234"},
    };
    for (const auto& row : rows) {
        const RegionalProfile region(row.region);
        EXPECT_EQ(Localised(row.number), row.expected) << Utf8(row.number);
    }
}

TEST(Regional, NegativeNumbersHaveTheFormOfTheRegion) {
    const struct {
        std::int32_t format;
        const char* expected;
    } rows[] = {{0, "(1,234.5)"},         {1, "~1,234.5"},  {2, "~ 1,234.5"},
                {3, "1,234.5~"},          {4, "1,234.5 ~"}, {5, "~1,234.5"},
                {2147483647, "~1,234.5"}, {-1, "~1,234.5"}, {-2147483647 - 1, "~1,234.5"}};
    for (const auto& row : rows) {
        clRegionalSettings settings = englishRegion;
        settings.negativeFormat = row.format;
        settings.negativeSign[0] = L'~';
        settings.positiveSign[0] = L'+';
        const RegionalProfile region(settings);
        EXPECT_EQ(Localised(L"-1234.5"), row.expected) << row.format;
        EXPECT_EQ(Localised(L"1234.5"), "+1,234.5") << row.format;
    }
}

TEST(Regional, WholeNumbersAreLocalised) {
    const RegionalProfile region(englishRegion);
    const struct {
        std::int64_t value;
        const char* expected;
    } rows[] = {{0, "0"},
                {-1, "-1"},
                {1024, "1,024"},
                {largest, "9,223,372,036,854,775,807"},
                {smallest, "-9,223,372,036,854,775,808"}};
    for (const auto& row : rows)
        EXPECT_EQ(Utf8(NumberText(row.value)), row.expected);
}

TEST(Regional, DecimalNumbersHaveNoTrailingZeros) {
    const struct {
        const clRegionalSettings& region;
        double value;
        std::int32_t decimals;
        const char* expected;
    } rows[] = {{englishRegion, 2.5, 2, "2.5"},          {englishRegion, 3.0, 2, "3"},
                {englishRegion, 1.005, 2, "1"},          {englishRegion, 1234.567, 2, "1,234.57"},
                {englishRegion, -1234.5, 1, "-1,234.5"}, {germanRegion, 44.1, 1, "44,1"},
                {germanRegion, 1048.0, 1, "1.048"},      {indianRegion, 123456.7, 1, "1,23,456.7"}};
    for (const auto& row : rows) {
        const RegionalProfile region(row.region);
        EXPECT_EQ(Utf8(DecimalText(row.value, row.decimals)), row.expected) << row.value;
    }
}

TEST(Regional, SizesAreShownInPowersOf1024) {
    const RegionalProfile region(englishRegion);
    constexpr std::int64_t mb = 1048576;
    constexpr std::int64_t gb = 1024 * mb;
    constexpr std::int64_t tb = 1024 * gb;
    const struct {
        std::int64_t bytes;
        const char* expected;
        const char* inKb;
    } rows[] = {
        {0, "0 bytes", "0 KB"},
        {1, "1 byte", "0 KB"},
        {2, "2 bytes", "0 KB"},
        {10, "10 bytes", "0 KB"},
        {11, "11 bytes", "1 KB"},
        {1023, "1023 bytes", "1 KB"},
        {1024, "1 KB", "1 KB"},
        {1034, "1 KB", "1 KB"},  // 10 bytes more are less than 1%
        {1035, "2 KB", "2 KB"},
        {1536, "2 KB", "2 KB"},
        {mb - 1, "1,024 KB", "1,024 KB"},
        {mb, "1 MB", "1,024 KB"},
        {1572864, "1.5 MB", "1,536 KB"},
        {mb + 5242, "1 MB", "1,030 KB"},  // 1.004999: 0.49 and not 0.5 rounds
        {mb + 5400, "1.01 MB", "1,030 KB"},
        {gb - 1, "1,024 MB", "1,048,576 KB"},
        {gb, "1 GB", "1,048,576 KB"},
        {tb - 1, "1,024 GB", "1,073,741,824 KB"},
        {tb, "1 TB", "1,073,741,824 KB"},
        {1500 * tb, "1,500 TB", "1,610,612,736,000 KB"},
        {-1, "-1 bytes", "0 KB"},
        {-2048, "-1 KB", "-1 KB"},
        {-3 * mb, "-3 MB", "-3,071 KB"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Utf8(SizeText(row.bytes, false)), row.expected) << row.bytes;
        EXPECT_EQ(Utf8(SizeText(row.bytes, true)), row.inKb) << row.bytes;
    }
}

TEST(Regional, OnlyBytesAreShownWithoutRegionalSigns) {
    const RegionalProfile region(wordyRegion);
    EXPECT_EQ(Utf8(SizeText(1023, false)), "1023 bytes");
    EXPECT_EQ(Utf8(SizeText(1023 * 1024, false)), "plus 1(tsd)023 KB");
    EXPECT_EQ(Utf8(SizeText(1572864, false)), "plus 1point5 MB");
}

TEST(Regional, DurationsInWordsHaveTwoUnitsAtMost) {
    const RegionalProfile region(germanRegion);
    const struct {
        std::uint64_t ms;
        const char* expected;
    } rows[] = {
        {0, "0"},
        {1, "1 mili-second"},
        {2, "2 mili-seconds"},
        {999, "999 mili-seconds"},
        {1000, "1 second"},
        {1001, "1 seconds"},
        {1040, "1 seconds"},
        {1500, "1,5 seconds"},
        {2000, "2 seconds"},
        {59949, "59,9 seconds"},
        {59960, "60 seconds"},
        {60000, "1 minute"},
        {60999, "1 minute"},
        {61000, "1 minute 1 second"},
        {122999, "2 minutes 2 seconds"},
        {3600000, "1 hour"},
        {3601000, "1 hour"},
        {3660000, "1 hour 1 minute"},
        {7321000, "2 hours 2 minutes"},
        {3600000ull * 596, "596 hours"},
        {3600000ull * 1234, "1234 hours 71582 minutes"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Utf8(DurationText(row.ms, durationWords)), row.expected) << row.ms;
}

TEST(Regional, DurationsOnAClockArePaddedByTheirStyle) {
    clRegionalSettings settings = englishRegion;
    settings.timeSeparator[0] = L'|';
    settings.decimalSeparator[0] = L',';
    const RegionalProfile region(settings);
    const struct {
        std::uint64_t ms;
        const char* brief;
        const char* full;
        const char* exact;
    } rows[] = {
        {0, "0|00", "00|00|00", "00|00|00,000"},
        {7, "0|00", "00|00|00", "00|00|00,007"},
        {65000, "1|05", "00|01|05", "00|01|05,000"},
        {65089, "1|05", "00|01|05", "00|01|05,089"},
        {754321, "12|34", "00|12|34", "00|12|34,321"},
        {3599999, "59|59", "00|59|59", "00|59|59,999"},
        {3665000, "1|01|05", "01|01|05", "01|01|05,000"},
        {36610999, "10|10|10", "10|10|10", "10|10|10,999"},
        {360000000, "100|00|00", "100|00|00", "100|00|00,000"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Utf8(DurationText(row.ms, durationShort)), row.brief) << row.ms;
        EXPECT_EQ(Utf8(DurationText(row.ms, durationFull)), row.full) << row.ms;
        EXPECT_EQ(Utf8(DurationText(row.ms, durationExact)), row.exact) << row.ms;
    }
}

// The products that are taken off have 32 bits.
TEST(Regional, DurationsFrom597HoursOnAreOffByTheLostBits) {
    const RegionalProfile region(englishRegion);
    constexpr std::uint64_t hour = 3600000;
    const struct {
        std::uint64_t ms;
        const char* expected;
    } rows[] = {
        {596 * hour + 3599999, "596:59:59.999"},
        {597 * hour, "597:71582:4295014.4294967888"},
        {597 * hour + 60000, "597:71583:4295014.4294967888"},
        {1193 * hour, "1193:71582:4295014.4294967888"},
        {std::uint64_t{1} << 62,
         "1281023894007:76861433640492:4611686018427443.4611686018427388616"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Utf8(DurationText(row.ms, durationExact)), row.expected) << row.ms;
}

// What a damaged file may tell; that no sanitizer stops is what counts.
TEST(Regional, DurationsBeyondAllSenseHaveSomeText) {
    const RegionalProfile region(englishRegion);
    for (const std::uint64_t ms :
         {std::uint64_t{1} << 63, (std::uint64_t{1} << 63) - 1, ~std::uint64_t{0},
          static_cast<std::uint64_t>(-3600000), (std::uint64_t{1} << 63) + 1}) {
        for (std::int32_t style = durationWords; style <= durationExact; ++style)
            EXPECT_FALSE(DurationText(ms, style).IsEmpty()) << ms;
    }
    EXPECT_EQ(Utf8(DurationText(~std::uint64_t{0}, durationWords)), "-1 mili-seconds");
}

TEST(Regional, AnyOtherStyleOfDurationIsEmpty) {
    for (const std::int32_t style : {-1, 4, 2147483647})
        EXPECT_EQ(Utf8(DurationText(65000, style)), "") << style;
}
