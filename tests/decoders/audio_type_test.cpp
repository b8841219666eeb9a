#include "decoders/audio_type.h"

#include <gtest/gtest.h>

#include "tests/support/text.h"

TEST(AudioTypes, KeepTheOrderInWhichTheyCameAndRemoveNoDuplicates) {
    clAudioTypes types;
    EXPECT_EQ(types.Count(), 0);
    types.Add(L".mp3", L"First", false);
    types.Add(L".flac", L"Second", true);
    types.Add(L".mp3", L"Third", false);
    ASSERT_EQ(types.Count(), 3);
    EXPECT_EQ(Utf8(types.At(0).extension), ".mp3");
    EXPECT_EQ(Utf8(types.At(0).description), "First");
    EXPECT_FALSE(types.At(0).excluded);
    EXPECT_EQ(Utf8(types.At(1).extension), ".flac");
    EXPECT_TRUE(types.At(1).excluded);
    EXPECT_EQ(Utf8(types.At(2).description), "Third");
}

TEST(AudioTypes, AreChangedInPlace) {
    clAudioTypes types;
    types.Add(L".mp3", L"First", false);
    types.At(0).excluded = true;
    EXPECT_TRUE(types.At(0).excluded);
}

TEST(AudioTypes, AreFilledAgainAfterClear) {
    clAudioTypes types;
    for (int i = 0; i < 40; ++i)
        types.Add(L".a", L"A", false);
    EXPECT_EQ(types.Count(), 40);
    types.Clear();
    EXPECT_EQ(types.Count(), 0);
    types.Add(L".b", L"B", false);
    ASSERT_EQ(types.Count(), 1);
    EXPECT_EQ(Utf8(types.At(0).extension), ".b");
}

TEST(AudioTypes, TakeNullTextAsEmpty) {
    clAudioTypes types;
    types.Add(nullptr, nullptr, false);
    EXPECT_TRUE(types.At(0).extension.IsEmpty());
    EXPECT_TRUE(types.At(0).description.IsEmpty());
}

TEST(AudioTypes, IgnoredOnesBearTheWordInCapitalsAnywhere) {
    struct Case {
        const wchar_t* text;
        bool ignored;
    };
    const Case cases[] = {
        {L".IGNORE", true},   {L".mp3.IGNORE", true}, {L".IGNORE.mp3", true},
        {L"x.IGNOREy", true}, {L".ignore", false},    {L".Ignore", false},
        {L"IGNORE", false},   {L".mp3", false},       {L"", false},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(IsIgnoredType(c.text), c.ignored) << Utf8(c.text);
    }
}

TEST(AudioTypes, AreExcludedWhenTheSettingHoldsThemWithTheirSeparator) {
    struct Case {
        const wchar_t* extension;
        const wchar_t* setting;
        bool excluded;
    };
    const Case cases[] = {
        {L".mp3", L".mp3;", true},
        {L".mp3", L".wav;.mp3;.flac;", true},
        {L".flac", L".wav;.mp3;.flac;", true},
        // Without its separator an entry counts for nothing.
        {L".mp3", L".mp3", false},
        {L".mp", L".mp3;", false},
        // Exact case, while everything else folds A to Z.
        {L".mp3", L".MP3;", false},
        {L".MP3", L".MP3;", true},
        // Anywhere, also as the end of a longer entry.
        {L".gz", L".tar.gz;", true},
        {L"", L".mp3;", true},
        {L".mp3", L"", false},
        {L"", L"", false},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(IsExcludedType(c.extension, c.setting), c.excluded)
            << Utf8(c.extension) << " in " << Utf8(c.setting);
    }
}
