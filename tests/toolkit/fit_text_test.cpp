#include "toolkit/fit_text.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>

#include "tests/support/text.h"

namespace {

// Ten pixels for a character, three for a dot.
std::int32_t Width(const clString& text) {
    std::int32_t width = 0;
    for (std::int32_t i = 1; i <= text.Length(); ++i)
        width += text.CharAt(i) == L'.' ? 3 : 10;
    return width;
}

// A dot is narrower than most; some characters take no room at all.
std::int32_t WidthOf(wchar_t ch) {
    return ch == L'.' ? 1 : ch % 7;
}

// One character less each time, as one would do it by hand.
bool FitStepByStep(clString& text, std::int32_t maximumWidth, const TextMeasure& measure) {
    if (text.Length() > 3000) text.Assign(text.Left(3000));
    if (text.IsEmpty()) return false;
    bool removed = false;
    for (;;) {
        clString candidate = text;
        if (removed) candidate.Append(L"...");
        if (measure(candidate) < maximumWidth) break;
        text.Assign(text.Left(text.Length() - 1));
        removed = true;
        if (text.IsEmpty()) break;
    }
    if (!removed || text.IsEmpty()) return false;
    text.Append(L"...");
    return true;
}

clString Repeated(wchar_t ch, std::int32_t count) {
    clString text;
    for (std::int32_t i = 0; i < count; ++i)
        text.Append(ch);
    return text;
}

}  // namespace

TEST(FitText, ShortensUntilTheTextIsNarrower) {
    const struct {
        const wchar_t* text;
        std::int32_t maximum;
        const char* expected;
        bool shortened;
    } rows[] = {
        {L"", 0, "", false},
        {L"abcdef", 61, "abcdef", false},
        {L"abcdef", 60, "abcde...", true},  // as wide as the maximum
        {L"abcdef", 59, "abcd...", true},
        {L"abcdef", 50, "abcd...", true},
        {L"abcdef", 49, "abc...", true},
        {L"abcdef", 20, "a...", true},
        {L"abcdef", 19, "", false},  // not even one character
        {L"abcdef", 0, "", false},
        {L"abcdef", -1, "", false},
        {L"ab", 20, "a...", true},
        {L"a", 11, "a", false},
        {L"a", 10, "", false},
        {L"a.....", 25, "a....", true},  // a dot of its own and three more
    };
    for (const auto& row : rows) {
        clString text(row.text);
        EXPECT_EQ(FitText(text, row.maximum, Width), row.shortened) << row.maximum;
        EXPECT_EQ(Utf8(text), row.expected) << row.maximum;
    }
}

TEST(FitText, CutsAt3000Characters) {
    clString text = Repeated(L'x', 3000);
    EXPECT_FALSE(FitText(text, 1000000, Width));
    EXPECT_EQ(text.Length(), 3000);
    text = Repeated(L'x', 3001);
    // What is cut off first is no reason for dots.
    EXPECT_FALSE(FitText(text, 1000000, Width));
    EXPECT_EQ(text.Length(), 3000);
    text = Repeated(L'x', 5000);
    EXPECT_TRUE(FitText(text, 30000, Width));
    EXPECT_EQ(text.Length(), 2999 + 3);
}

TEST(FitText, MeasuresALongTextFewTimes) {
    clString text = Repeated(L'x', 3000);
    int measured = 0;
    EXPECT_TRUE(FitText(text, 100, [&measured](const clString& candidate) {
        ++measured;
        return Width(candidate);
    }));
    EXPECT_EQ(text.Length(), 9 + 3);
    EXPECT_LE(measured, 14);
}

TEST(FitText, FindsWhatTakingOneCharacterAfterTheOtherFinds) {
    std::mt19937 random(20260711);
    const wchar_t alphabet[] = L"iWm. a";
    for (int round = 0; round < 2000; ++round) {
        clString text;
        const auto length = static_cast<int>(random() % 40);
        for (int i = 0; i < length; ++i)
            text.Append(alphabet[random() % 6]);
        const TextMeasure measure = [](const clString& candidate) {
            std::int32_t width = 0;
            for (std::int32_t i = 1; i <= candidate.Length(); ++i)
                width += WidthOf(candidate.CharAt(i));
            return width;
        };
        const auto maximum = static_cast<std::int32_t>(random() % 150);
        clString expected = text;
        clString actual = text;
        EXPECT_EQ(FitText(actual, maximum, measure), FitStepByStep(expected, maximum, measure));
        EXPECT_EQ(Utf8(actual), Utf8(expected)) << Utf8(text) << " in " << maximum;
    }
}
