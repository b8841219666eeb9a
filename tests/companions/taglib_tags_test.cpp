#include <gtest/gtest.h>

#include "tests/companions/taglib_support.h"

namespace companion {
namespace {

struct TagCase {
    const char* file;
    const char* name;
    const char* value;  // "-": the file has no such tag
};

constexpr const char* voices = "Quarry Choir/Limestone/06 - Two Voices.mp3";
constexpr const char* moon = "夜の庭/月光/01 - 月光.flac";

// clang-format off
constexpr TagCase cases[] = {
    // ID3v1 and ID3v2.3
    {"Quarry Choir/Limestone/01 - Blast.mp3", "Artist",  "Quarry Choir"},
    {"Quarry Choir/Limestone/01 - Blast.mp3", "Title",   "Blast"},
    {"Quarry Choir/Limestone/01 - Blast.mp3", "Album",   "Limestone"},
    {"Quarry Choir/Limestone/01 - Blast.mp3", "Track",   "1/9"},
    {"Quarry Choir/Limestone/01 - Blast.mp3", "Year",    "2007"},
    {"Quarry Choir/Limestone/01 - Blast.mp3", "Genre",   "Ambient"},
    {"Quarry Choir/Limestone/01 - Blast.mp3", "Comment", "First pit"},
    {"Quarry Choir/Limestone/01 - Blast.mp3", "Rating",  "-"},
    {"Quarry Choir/Limestone/02 - Dust.mp3",  "Tempo",   "96"},
    {"Quarry Choir/Limestone/02 - Dust.mp3",  "Composer", "A. Mason"},
    {"Quarry Choir/Limestone/03 - Rubble.mp3", "Title",  "Rubble"},
    {"Quarry Choir/Limestone/04 - Chisel.mp3", "Title",  "Chisel"},
    {"Quarry Choir/Limestone/04 - Chisel.mp3", "Track",  "4"},
    // ID3v2.4: several values, everything that there is
    {voices, "Artist",         "Quarry Choir\rГость"},
    {voices, "Album Artist",   "Quarry Choir"},
    {voices, "Track",          "6/9"},
    {voices, "Disc",           "1/2"},
    {voices, "Year",           "2007"},
    {voices, "Compilation",    "1"},
    {voices, "Label",          "Stone Records"},
    {voices, "Encoded by",     "A person"},
    {voices, "Style",          "Echo"},
    {voices, "TrueSpinResult", "passed"},
    {voices, "Comment",        "First line\nsecond line"},
    {voices, "Rating",         "8"},
    {voices, "Playcount",      "12"},
    // APEv2
    {"Quarry Choir/Limestone/07 - Old Tag.mp3", "Artist", "Quarry Choir\rStonemason"},
    {"Quarry Choir/Limestone/07 - Old Tag.mp3", "Year",   "1998"},
    {"Quarry Choir/Limestone/07 - Old Tag.mp3", "Rating", "6"},
    {"夜の庭/月光/04 - 雪.wv",  "Artist", "夜の庭"},
    {"夜の庭/月光/04 - 雪.wv",  "Track",  "4/9"},
    {"夜の庭/月光/04 - 雪.wv",  "Rating", "6"},
    {"夜の庭/月光/07 - 虹.tta", "Title",  "虹"},
    {"夜の庭/月光/08 - 星.ape", "Rating", "5"},
    {"DJ 🎵 Emoji/Ünïcödé ☀/04 - Dense.mpc", "Comment", "packed"},
    // Vorbis comments
    {moon, "Artist",       "夜の庭\rSecond Voice"},
    {moon, "Title",        "月光"},
    {moon, "Track",        "1/3"},
    {moon, "Disc",         "1/2"},
    {moon, "Year",         "2021"},
    {moon, "Rating",       "8"},
    {moon, "Compilation",  "1"},
    {moon, "Album Artist", "夜の庭"},
    {moon, "Replaygain_Track_Gain", "-3.20 dB"},
    {moon, "Replaygain_Track_Peak", "0.501"},
    {moon, "Replaygain_Album_Gain", "-"},
    {"夜の庭/月光/03 - 風.oga", "Title", "風"},
    {"DJ 🎵 Emoji/Ünïcödé ☀/01 - Sun ☀.ogg",    "Artist", "DJ 🎵 Emoji"},
    {"DJ 🎵 Emoji/Ünïcödé ☀/01 - Sun ☀.ogg",    "Rating", "8"},
    {"DJ 🎵 Emoji/Ünïcödé ☀/01 - Sun ☀.ogg",    "Tempo",  "120"},
    {"DJ 🎵 Emoji/Ünïcödé ☀/02 - Moon 🌙.opus", "Artist", "DJ 🎵 Emoji\rGuest"},
    {"DJ 🎵 Emoji/Ünïcödé ☀/02 - Moon 🌙.opus", "Replaygain_Track_Gain", "-5.00 dB"},
    {"DJ 🎵 Emoji/Ünïcödé ☀/03 - Talk.spx",     "Title",  "Talk"},
    // the others
    {"夜の庭/月光/09 - 空.dsf", "Title", "空"},
    {"Lía Ñandú/Canción de cuna/01 - Luna.m4a",     "Artist", "Lía Ñandú"},
    {"Lía Ñandú/Canción de cuna/01 - Luna.m4a",     "Track",  "1/5"},
    {"Lía Ñandú/Canción de cuna/01 - Luna.m4a",     "Year",   "2015"},
    {"Lía Ñandú/Canción de cuna/01 - Luna.m4a",     "Tempo",  "-"},
    {"Lía Ñandú/Canción de cuna/05 - Estrella.wma", "Artist", "Lía Ñandú"},
    {"Lía Ñandú/Canción de cuna/05 - Estrella.wma", "Track",  "5"},
};

constexpr TagCase properties[] = {
    {voices, "ID Tag",    "ID3v2.4"},
    {voices, "Cover Art", "Yes"},
    {voices, "Channel Layout", "Joint Stereo"},
    {moon,   "Cover Art", "No"},
    {moon,   "Encrypted", "-"},
    {"Quarry Choir/Limestone/01 - Blast.mp3", "ID Tag",  "ID3v2.3\rID3v1"},
    {"Quarry Choir/Limestone/01 - Blast.mp3", "Encoder", "LAME3.100"},
    {"Quarry Choir/Limestone/05 - Echo.mp3",  "Channel Layout", "Mono"},
    {"Quarry Choir/Limestone/07 - Old Tag.mp3", "ID Tag", "APEv2"},
    {"Lía Ñandú/Canción de cuna/01 - Luna.m4a", "Encrypted", "No"},
    {"夜の庭/月光/07 - 虹.tta", "ID Tag", "APEv2"},
};
// clang-format on

FileFacts Read(const char* file) {
    FileFacts facts;
    EXPECT_TRUE(ReadFile(SamplePath(file), facts)) << file;
    return facts;
}

TEST(TagLibTags, HaveTheNamesAndValuesOfTheColumns) {
    for (const TagCase& expected : cases) {
        EXPECT_EQ(expected.value, ValueOf(Read(expected.file).tags, expected.name))
            << expected.file << " " << expected.name;
    }
}

TEST(TagLibProperties, SayWhatIsKnownOfTheFile) {
    for (const TagCase& expected : properties) {
        EXPECT_EQ(expected.value, ValueOf(Read(expected.file).properties, expected.name))
            << expected.file << " " << expected.name;
    }
}

TEST(TagLibTags, NameEachColumnOnce) {
    for (const std::string_view file : codedSamples) {
        const FileFacts facts = Read(std::string(file).c_str());
        for (const Tag& tag : facts.tags) {
            const auto same = [&](const Tag& other) { return other.name == tag.name; };
            EXPECT_EQ(1, std::count_if(facts.tags.begin(), facts.tags.end(), same))
                << file << " " << ToUtf8(tag.name);
            EXPECT_FALSE(tag.value.empty()) << file << " " << ToUtf8(tag.name);
        }
    }
}

}  // namespace
}  // namespace companion
