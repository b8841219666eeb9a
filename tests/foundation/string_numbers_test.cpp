#include <gtest/gtest.h>

#include <limits>

#include "foundation/string.h"
#include "tests/support/text.h"

namespace {

constexpr std::int64_t smallest = std::numeric_limits<std::int64_t>::min();

std::string FromDouble(double value, std::int32_t decimals) {
    clString text(L"before");
    text.FromDouble(value, decimals);
    return Utf8(text);
}

}  // namespace

TEST(StringNumbers, SignedValuesBecomeDecimalText) {
    const struct {
        std::int64_t value;
        const char* expected;
    } rows[] = {{0, "0"},
                {7, "7"},
                {-10, "-10"},
                {smallest, "-9223372036854775808"},
                {smallest + 1, "-9223372036854775807"},
                {std::numeric_limits<std::int64_t>::max(), "9223372036854775807"}};
    for (const auto& row : rows)
        EXPECT_EQ(Utf8(clString(row.value)), row.expected);
}

TEST(StringNumbers, UnsignedValuesBecomeDecimalText) {
    clString text(L"before");
    text.FromUnsigned(0);
    EXPECT_EQ(Utf8(text), "0");
    text.FromUnsigned(18446744073709551615u);
    EXPECT_EQ(Utf8(text), "18446744073709551615");
    text.FromUnsigned(10);
    EXPECT_EQ(Utf8(text), "10");
}

TEST(StringNumbers, HexadecimalTextHasSixteenDigitsOrAsFewAsNeeded) {
    const struct {
        std::uint64_t value;
        const char* full;
        const char* brief;
    } rows[] = {{0, "0000000000000000", "0"},
                {0xA, "000000000000000A", "A"},
                {0xDEADBEEF01, "000000DEADBEEF01", "DEADBEEF01"},
                {0xFFFFFFFFFFFFFFFF, "FFFFFFFFFFFFFFFF", "FFFFFFFFFFFFFFFF"}};
    for (const auto& row : rows) {
        clString text;
        text.FromHex(row.value);
        EXPECT_EQ(Utf8(text), row.full);
        text.FromHexShort(row.value);
        EXPECT_EQ(Utf8(text), row.brief);
    }
}

TEST(StringNumbers, TextIsReadUpToTheFirstOtherCharacter) {
    const struct {
        const wchar_t* text;
        std::int64_t expected;
    } rows[] = {{L"  -12x", -12},
                {L"+7", 7},
                {L"x7", 0},
                {L"1-2", 1},
                {L"--5", 0},
                {L"-+5", 0},
                {L"- 5", 0},
                {L"", 0},
                {L"   ", 0},
                {L"-", 0},
                {L"\t5", 0},
                {L"0012", 12},
                {L"3.9", 3},
                {L"9223372036854775807", 9223372036854775807},
                // The arithmetic wraps in 64 bits.
                {L"9223372036854775808", smallest},
                {L"-9223372036854775808", smallest},
                {L"18446744073709551617", 1},
                {L"-18446744073709551617", -1}};
    for (const auto& row : rows)
        EXPECT_EQ(clString(row.text).ToInt(), row.expected) << Utf8(row.text);
}

TEST(StringNumbers, ReadingANumberLeavesTheTextAlone) {
    const clString text(L"  5");
    EXPECT_EQ(text.ToInt(), 5);
    EXPECT_EQ(Utf8(text), "  5");
}

TEST(StringNumbers, FractionsRoundHalvesDownAndDropTrailingZeros) {
    const struct {
        double value;
        std::int32_t decimals;
        const char* expected;
    } rows[] = {
        {0.0, 2, "0"},
        {0.0, 0, "0"},
        {-0.5, 1, "-0.5"},
        {0.999, 2, "1"},
        {-0.001, 2, "-0"},
        {-0.0, 2, "0"},
        {1.005, 2, "1"},
        {2.50, 2, "2.5"},
        {3.0, 2, "3"},
        {-3.0, 2, "-3"},
        // The point shields the zeros of whole numbers.
        {1000.0, 0, "1000"},
        {1000.0, 2, "1000"},
        {100.0, 3, "100"},
        {0.25, 1, "0.2"},
        {0.75, 1, "0.7"},
        {0.26, 1, "0.3"},
        {0.04, 1, "0"},
        {0.5, 0, "0"},
        {0.6, 0, "1"},
        {1.5, 0, "1"},
        {2.5, 0, "2"},
        {1.6, 0, "2"},
        {9.99, 1, "10"},
        {123.456, 2, "123.46"},
        {-1234.5, 1, "-1234.5"},
        {44.1, 3, "44.1"},
        {0.001, 3, "0.001"},
        {0.00001, 2, "0"},
        {1e18, 0, "1000000000000000000"},
        // Beyond 64 bits the digits are those of 2 to the power of 63.
        {1e300, 0, "9223372036854775808"},
        {1e300, 2, "92233720368547758.08"},
        // With as many decimals as digits the point comes first, with more there is none.
        {1e300, 19, ".9223372036854775808"},
        {1e300, 20, "9223372036854775808"},
        {-1e300, 0, "-9223372036854775808"},
        {std::numeric_limits<double>::infinity(), 0, "9223372036854775808"},
        {std::numeric_limits<double>::quiet_NaN(), 0, "9223372036854775808"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(FromDouble(row.value, row.decimals), row.expected)
            << row.value << ' ' << row.decimals;
    }
}

TEST(StringNumbers, WithoutAPointTheZerosOfWholeNumbersGo) {
    // A negative count of decimals puts no point in, and nothing shields the zeros.
    EXPECT_EQ(FromDouble(1200.0, -1), "12");
    EXPECT_EQ(FromDouble(0.0, -1), "");
}
