#include "foundation/string_format.h"

#include <gtest/gtest.h>

#include <string>

#include "foundation/string.h"
#include "tests/foundation/long_text.h"
#include "tests/support/allocations.h"
#include "tests/support/text.h"

namespace {

std::string Formatted(const wchar_t* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    clString result(L"before");
    result.FormatList(format, arguments);
    va_end(arguments);
    return Utf8(result);
}

std::string Unbounded(const wchar_t* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    clString result(L"before");
    FormatUnbounded(result, format, arguments);
    va_end(arguments);
    return Utf8(result);
}

constexpr const wchar_t* noText = nullptr;

}  // namespace

TEST(StringFormat, ThePatternsOfTheSystemAreFormatted) {
    EXPECT_EQ(Formatted(L"%s%s%d.tmp", L"C:\\Temp\\", L"TMP", 4711), "C:\\Temp\\TMP4711.tmp");
    EXPECT_EQ(Formatted(L"TRDEVTQ-%d", 12), "TRDEVTQ-12");
    EXPECT_EQ(Formatted(L"%u %d %s %%", 4294967295u, -1, L"\xE4"), "4294967295 -1 \xC3\xA4 %");
    EXPECT_EQ(Formatted(L"%5d|%-5d|%05d|%x|%X|%.2f", 42, 42, 42, 255, 255, 1.5),
              "   42|42   |00042|ff|FF|1.50");
    EXPECT_EQ(Formatted(L"%c%c", L'o', L'k'), "ok");
    EXPECT_EQ(Formatted(L""), "");
    EXPECT_EQ(Formatted(L"plain"), "plain");
}

TEST(StringFormat, TheResultMayBeAnArgument) {
    clString text(L"name");
    text.Format(L"<%s>", text.Chars());
    EXPECT_EQ(Utf8(text), "<name>");
}

TEST(StringFormat, FormattingKeepsTheTag) {
    clString text(L"name");
    text.tag = 6;
    text.Format(L"%d", 1);
    EXPECT_EQ(text.tag, 6);
}

TEST(StringFormat, EverySizeIsUsedUpToItsLastCharacter) {
    // The second column is the size of the buffer that has to do, in characters.
    const struct {
        std::size_t length;
        std::size_t buffer;
    } rows[] = {{1, 1000},    {998, 1000},   {999, 1000},    {1000, 5000},
                {4999, 5000}, {5000, 25000}, {24999, 25000}, {25000, 125000}};
    for (const auto& row : rows) {
        const clString source(Repeated(L'a', static_cast<std::int32_t>(row.length)));
        clString result;
        AllocationCount count;
        result.Format(L"%s", source.Chars());
        const std::size_t largest = count.LargestBytes();
        EXPECT_EQ(Utf8(result), std::string(row.length, 'a')) << row.length;
        EXPECT_EQ(largest / sizeof(wchar_t), row.buffer) << row.length;
    }
}

TEST(StringFormat, BeyondTheLargestSizeTheSmallFormatterAnswers) {
    // Ninety million characters for the platform; the small formatter knows no
    // left alignment and no padding of text.
    clString result;
    AllocationCount count;
    result.Format(L"%-90000000s.", L"ab");
    const std::size_t largest = count.LargestBytes();
    EXPECT_EQ(Utf8(result), "ab.");
    EXPECT_EQ(largest / sizeof(wchar_t), 78125000u);
}

TEST(StringFormat, TheSmallFormatterReadsWidthPrecisionAndLetter) {
    EXPECT_EQ(Unbounded(L"plain"), "plain");
    EXPECT_EQ(Unbounded(L""), "");
    EXPECT_EQ(Unbounded(L"100%%"), "100%");
    EXPECT_EQ(Unbounded(L"%5.3%"), "%");
    // Signed.
    EXPECT_EQ(Unbounded(L"%d %i", 7, -7), "7 -7");
    EXPECT_EQ(Unbounded(L"%4d", 7), "0007");
    EXPECT_EQ(Unbounded(L"%4d", -7), "-007");
    EXPECT_EQ(Unbounded(L"%1d", -7), "-7");
    EXPECT_EQ(Unbounded(L"%2d", 12345), "12345");
    EXPECT_EQ(Unbounded(L"%d", std::int32_t{-2147483647 - 1}), "-2147483648");
    EXPECT_EQ(Unbounded(L"%3d", 0), "000");
    // Unsigned.
    EXPECT_EQ(Unbounded(L"%u", 4294967295u), "4294967295");
    EXPECT_EQ(Unbounded(L"%12u", 4294967295u), "004294967295");
    EXPECT_EQ(Unbounded(L"%x %X", 0xBEEF, 0xBEEF), "beef BEEF");
    EXPECT_EQ(Unbounded(L"%8x|%8X", 0xBEEF, 0xBEEF), "0000beef|0000BEEF");
    EXPECT_EQ(Unbounded(L"%x", 0), "0");
    EXPECT_EQ(Unbounded(L"%X", -1), "FFFFFFFF");
    // Fractions: five digits unless told, the width does not matter.
    EXPECT_EQ(Unbounded(L"%f", 1.2345678), "1.23457");
    EXPECT_EQ(Unbounded(L"%.2f", 1.2345678), "1.23");
    EXPECT_EQ(Unbounded(L"%20.2f", 1.25), "1.25");
    EXPECT_EQ(Unbounded(L"%.f", 1.6), "2");
    EXPECT_EQ(Unbounded(L"%.12f", 0.5), "0.5");
    // Text.
    EXPECT_EQ(Unbounded(L"<%s>", L"text"), "<text>");
    EXPECT_EQ(Unbounded(L"<%10.2s>", L"text"), "<text>");
    EXPECT_EQ(Unbounded(L"<%99999999999.99999999999s>", L"text"), "<text>");
    EXPECT_EQ(Unbounded(L"<%s%s>", L"", noText), "<>");
}

TEST(StringFormat, TheSmallFormatterSkipsWhatItDoesNotKnow) {
    EXPECT_EQ(Unbounded(L"%-5d", 7), "00007");
    EXPECT_EQ(Unbounded(L"%ld %hd %#x", 7, 8, 9), "7 8 9");
    EXPECT_EQ(Unbounded(L"%lld", 7), "7");
    // An unknown letter swallows what follows, up to the next known one, and
    // digits on the way still count.
    EXPECT_EQ(Unbounded(L"%q or not: %d."), "%d.");
    EXPECT_EQ(Unbounded(L"%q or 5d.", 7), "00007.");
    EXPECT_EQ(Unbounded(L"%c3x.", 7), "007.");
    EXPECT_EQ(Unbounded(L"%2-3d", 7), "00000000000000000000007");
}

TEST(StringFormat, TheSmallFormatterGivesUpOnABrokenConversion) {
    EXPECT_EQ(Unbounded(L"text %"), "");
    EXPECT_EQ(Unbounded(L"text %5"), "");
    EXPECT_EQ(Unbounded(L"text %5.2"), "");
    EXPECT_EQ(Unbounded(L"text %zzz"), "");
    EXPECT_EQ(Unbounded(L"text %1.2.3f behind", 1.0), "");
    EXPECT_EQ(Unbounded(L"%d %..d", 1, 2), "");
}
