#include <gtest/gtest.h>

#include "tests/companions/taglib_support.h"

namespace companion {
namespace {

struct FactsCase {
    const char* file;
    int tag, channels, rate, bits;
    std::int64_t lengthMs, lengthWithin;
    std::int32_t kbps, kbpsWithin;
    const char* quality;
    const char* codec;
    const char* mode;  // "-": not said
};

// Every source is a tone or noise of 1, 2 or 3 s; encoders that work in frames
// add up to two of them. The rate of a constant bit rate is exact.
// clang-format off
constexpr FactsCase cases[] = {
    // file, format tag, channels, Hz, bits, ms +-, kbps +-, quality, codec, bit rate mode
    {"Quarry Choir/Limestone/01 - Blast.mp3",        1, 2,   44100, 16, 2038,  1,  192,   0, "High", "MPEG-1 Layer 3", "Constant"},
    {"Quarry Choir/Limestone/02 - Dust.mp3",         1, 2,   44100, 16, 3030, 30,  128,  40, "Medium", "MPEG-1 Layer 3", "Variable"},
    {"Quarry Choir/Limestone/03 - Rubble.mp3",       1, 2,   44100, 16, 3030, 30,  128,  40, "Medium", "MPEG-1 Layer 3", "Variable"},
    {"Quarry Choir/Limestone/04 - Chisel.mp3",       1, 2,   44100, 16, 2038, 30,  128,   0, "Medium", "MPEG-1 Layer 3", "Constant"},
    {"Quarry Choir/Limestone/05 - Echo.mp3",         1, 1,   22050, 16, 2064, 30,   48,   0, "Medium", "MPEG-2 Layer 3", "Constant"},
    {"Quarry Choir/Limestone/06 - Two Voices.mp3",   1, 2,   44100, 16, 2038, 30,  140,  30, "Medium", "MPEG-1 Layer 3", "Average"},
    {"Quarry Choir/Limestone/08 - Layer Two.mp2",    1, 2,   44100, 16, 2011, 30,  192,   0, "Medium", "MPEG-1 Layer 2", "Constant"},
    {"Quarry Choir/Limestone/09 - Layer One.mp1",    1, 2,   44100, 16, 2003,  1,  192,   0, "Medium", "MPEG-1 Layer 1", "Constant"},
    {"Quarry Choir/Limestone/10 - Raw.aac",          1, 2,   44100, 16, 2030, 30,  128,  10, "High", "AAC-LC", "-"},
    {"夜の庭/月光/01 - 月光.flac",                          1, 2,   44100, 16, 2000,  0,  256,  80, "CD Quality (Lossless)", "FLAC", "Variable"},
    {"夜の庭/月光/02 - 雨.flac",                           1, 2,   96000, 24, 1000,  0,  920, 200, "DVD Quality (Lossless)", "FLAC", "Variable"},
    {"夜の庭/月光/03 - 風.oga",                            1, 2,   44100, 16, 2000,  0,  380, 150, "CD Quality (Lossless)", "Ogg FLAC", "Variable"},
    {"夜の庭/月光/04 - 雪.wv",                             1, 2,   44100, 16, 2000,  0,  460, 100, "CD Quality (Lossless)", "WavPack", "Variable"},
    {"夜の庭/月光/05 - 霧.wv",                             3, 2,   44100, 32, 2000,  0,  460, 300, "DVD Quality (Lossless)", "WavPack", "Variable"},
    {"夜の庭/月光/06 - 霜.wv",                             1, 2,   44100, 16, 2000,  0,  290,  50, "Very High", "WavPack Hybrid", "Variable"},
    {"夜の庭/月光/07 - 虹.tta",                            1, 2,   44100, 16, 2000,  0,  400, 100, "CD Quality (Lossless)", "True Audio", "Variable"},
    {"夜の庭/月光/08 - 星.ape",                            1, 2,   44100, 16, 2000,  0,   20,   1, "CD Quality (Lossless)", "Monkey's Audio", "Variable"},
    {"夜の庭/月光/09 - 空.dsf",                            1, 2, 2822400,  1, 1010,  1, 5644,   0, "DVD Quality (Lossless)", "DSD", "Constant"},
    {"夜の庭/月光/10 - 海.dff",                            1, 2, 2822400,  1, 1000,  0, 5644,   0, "DVD Quality (Lossless)", "DSD", "Constant"},
    {"DJ 🎵 Emoji/Ünïcödé ☀/01 - Sun ☀.ogg",          1, 2,   44100, 16, 2000,  0,   48,  20, "Low", "Vorbis", "Variable"},
    {"DJ 🎵 Emoji/Ünïcödé ☀/02 - Moon 🌙.opus",        1, 2,   48000, 16, 2000,  1,  130,  40, "High", "Opus", "-"},
    {"DJ 🎵 Emoji/Ünïcödé ☀/03 - Talk.spx",           1, 1,   16000, 16, 2000, 40,   29,  10, "Low", "Speex", "-"},
    {"DJ 🎵 Emoji/Ünïcödé ☀/04 - Dense.mpc",          1, 2,   44100, 16, 2000,  0,  165,   2, "High", "Musepack SV8", "Variable"},
    {"Lía Ñandú/Canción de cuna/01 - Luna.m4a",      1, 2,   44100, 16, 2023, 30,  157,  20, "High", "AAC-LC", "-"},
    {"Lía Ñandú/Canción de cuna/02 - Sueño.m4a",     1, 2,   44100, 16, 2000,  0,  465, 100, "CD Quality (Lossless)", "ALAC", "Variable"},
    {"Lía Ñandú/Canción de cuna/03 - Capítulo.m4b",  1, 2,   44100, 16, 2023, 30,   64,  10, "Low", "AAC-LC", "-"},
    {"Lía Ñandú/Canción de cuna/04 - Noche.mp4",     1, 2,   44100, 16, 2023, 30,  126,  15, "High", "AAC-LC", "-"},
    {"Lía Ñandú/Canción de cuna/05 - Estrella.wma",  1, 2,   44100, 16, 2042, 50,  128,   0, "Medium", "Windows Media Audio 2", "-"},
    {"Lía Ñandú/Canción de cuna/06 - Nube.asf",      1, 2,   44100, 16, 2042, 50,   64,   0, "Low", "Windows Media Audio 1", "-"},
};
// clang-format on

void ExpectFacts(const FactsCase& expected, const FileFacts& facts) {
    EXPECT_EQ(expected.tag, facts.format.formatTag);
    EXPECT_EQ(expected.channels, facts.format.channels);
    EXPECT_EQ(expected.rate, static_cast<int>(facts.format.samplesPerSecond));
    EXPECT_EQ(expected.bits, facts.format.bitsPerSample);
    EXPECT_NEAR(static_cast<double>(expected.lengthMs), static_cast<double>(facts.lengthMs),
                static_cast<double>(expected.lengthWithin));
    EXPECT_NEAR(expected.kbps, facts.bitRate / 1000, expected.kbpsWithin);
    EXPECT_EQ(expected.quality, ValueOf(facts.properties, "Audio Quality"));
    EXPECT_EQ(expected.codec, ValueOf(facts.properties, "Codec"));
    EXPECT_EQ(expected.mode, ValueOf(facts.properties, "Bit Rate Mode"));
}

TEST(TagLibFacts, AreThoseOfTheEncodedTone) {
    for (const FactsCase& expected : cases) {
        SCOPED_TRACE(expected.file);
        FileFacts facts;
        ASSERT_TRUE(ReadFile(SamplePath(expected.file), facts));
        ExpectFacts(expected, facts);
    }
}

TEST(TagLibFacts, SizeAndRateAndLengthAgree) {
    for (const FactsCase& expected : cases) {
        SCOPED_TRACE(expected.file);
        FileFacts facts;
        ASSERT_TRUE(ReadFile(SamplePath(expected.file), facts));
        const auto file = OpenFile(SamplePath(expected.file));
        EXPECT_GT(facts.sourceBytes, 0);
        EXPECT_LE(facts.sourceBytes, static_cast<std::int64_t>(file->Size()));
        const double fromRate =
            static_cast<double>(facts.bitRate) * static_cast<double>(facts.lengthMs) / 8000;
        const auto bytes = static_cast<double>(facts.sourceBytes);
        EXPECT_NEAR(bytes, fromRate, bytes * 0.20 + 1024);
    }
}

TEST(TagLibFactsCases, CoverTheWholeLibrary) {
    // One sample differs from another in its tag alone.
    EXPECT_EQ(std::size(codedSamples), std::size(cases) + 1);
}

TEST(TagLibRefusal, WhatIsNotOfItsKinds) {
    constexpr const char* files[] = {
        "Damaged & Odd/empty.flac",
        "Damaged & Odd/silence without a header.mp3",
        "Damaged & Odd/a text named.mp3",
        "Damaged & Odd/a wave named.mp3",
        "Damaged & Odd/notes.txt",
        "Damaged & Odd/there is no such file.mp3",
        "Damaged & Odd",
        "Åse Lindqvist/Våren – uncompressed/01 - Första ljuset.wav",
        "Чайка/Ночной поезд/01 - Перрон.aiff",
    };
    for (const char* file : files) {
        FileFacts facts;
        EXPECT_FALSE(ReadFile(SamplePath(file), facts)) << file;
    }
}

TEST(TagLibContent, DecidesWhatEverTheFileIsCalled) {
    FileFacts facts;
    ASSERT_TRUE(ReadFile(SamplePath("Damaged & Odd/an MP3 named.flac"), facts));
    EXPECT_EQ("MPEG-1 Layer 3", ValueOf(facts.properties, "Codec"));
    EXPECT_EQ(96000, facts.bitRate);
}

TEST(TagLibTypes, HaveDottedExtensionsAndWords) {
    std::vector<std::u16string> seen;
    for (const AudioType& type : AudioTypes()) {
        EXPECT_EQ(u'.', type.extension[0]);
        EXPECT_GT(std::u16string(type.description).size(), 5u);
        EXPECT_EQ(0, std::count(seen.begin(), seen.end(), type.extension));
        seen.emplace_back(type.extension);
    }
    EXPECT_EQ(20u, seen.size());
}

// The names, one by one.
std::vector<std::u16string> PropertyNameList() {
    std::vector<std::u16string> names(1);
    for (const char16_t unit : std::u16string_view(PropertyElements())) {
        if (unit == u'\r') {
            names.emplace_back();
        } else {
            names.back().push_back(unit);
        }
    }
    return names;
}

TEST(TagLibPropertyNames, NeverHideADerivedProperty) {
    const auto names = PropertyNameList();
    EXPECT_EQ(8u, names.size());
    for (const std::u16string derived :
         {u"Length", u"Channels", u"Sample Rate", u"Sample Size", u"Bit Rate", u"Compression"}) {
        EXPECT_EQ(0, std::count(names.begin(), names.end(), derived)) << ToUtf8(derived);
    }
}

TEST(TagLibPropertyNames, HoldEveryPropertyThatAFileHas) {
    const auto names = PropertyNameList();
    for (const std::string_view file : codedSamples) {
        FileFacts facts;
        ASSERT_TRUE(ReadFile(SamplePath(file), facts)) << file;
        for (const Tag& property : facts.properties) {
            EXPECT_EQ(1, std::count(names.begin(), names.end(), property.name))
                << ToUtf8(property.name);
        }
    }
}

}  // namespace
}  // namespace companion
