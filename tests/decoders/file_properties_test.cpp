#include "decoders/file_properties.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "tests/decoders/tag_lines.h"
#include "tests/support/regional_profile.h"
#include "tests/support/text.h"

namespace {

constexpr std::int64_t smallest = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();

using Tags = std::vector<std::pair<const wchar_t*, const wchar_t*>>;

// What a decoder tells of a file: two seconds of plain stereo, as far as a test
// does not say otherwise.
struct Told {
    WaveFormatRecord wave = {1, 2, 44100, 176400, 4, 16, 0};
    std::int32_t bitRate = 1411200;
    std::int64_t lengthMs = 2000;
    std::int64_t sourceBytes = 352800;
    const wchar_t* extension = L".mp3";
    bool unitsInHertz = false;
    Tags tags = {};
};

// What became of it.
struct Derived {
    FileRow row;
    TagList tags;

    // `before`: what an earlier reading left in the row.
    explicit Derived(const Told& told, std::int32_t before = 0) {
        row.compressionPercent = before;
        for (const auto& [name, value] : told.tags)
            tags.Add(name, value);
        clWaveFormat format;
        format.SetFormat(&told.wave);
        const clString extension(told.extension);
        DeriveProperties(
            {format, told.bitRate, told.lengthMs, told.sourceBytes, extension, told.unitsInHertz},
            row, tags);
    }

    std::string Get(const wchar_t* name) const { return Utf8(tags.Get(name)); }
    // All values of that name in their order, each with a "|" behind it.
    std::string All(const wchar_t* name) const {
        std::string values;
        for (std::int64_t i = 0; i < tags.Count(); ++i) {
            if (tags.At(i).name.CompareNoCase(name) == 0) values += Utf8(tags.At(i).value) + '|';
        }
        return values;
    }
};

class FileProperties : public testing::Test {
protected:
    RegionalProfile region{englishRegion};
};

// One entry of a list, by that name or another.
std::string TrackOf(const wchar_t* value) {
    TagList tags;
    tags.Add(L"Disc", L"9");
    tags.Add(L"TRACK", value);
    tags.Add(L"Track", L"99");
    return Utf8(FormatTrackNumber(tags, L"Track"));
}

}  // namespace

TEST_F(FileProperties, FollowTheDecodersEntriesInTheirOrder) {
    Told told;
    told.sourceBytes = 204000;
    told.extension = L".WAV";
    told.tags = {{L"Rating", L"8"},      {L"Artist", L"A\rB"},     {L"Album", L"L"},
                 {L"Track", L"3/12"},    {L"Disc", L"1/2"},        {L"Length", L"long"},
                 {L"Compilation", L"1"}, {L"TrueSpinResult", L"x"}};
    const Derived file(told);
    EXPECT_EQ(Lines(file.tags),
              "Rating=8\n"
              "Artist=A\rB\n"
              "Album=L\n"
              "Disc=1/2\n"
              "TrueSpinResult=x\n"
              "Length=0:02\n"
              "Channels=2\n"
              "Sample Rate=44.1 KHz\n"
              "Sample Size=16 bit\n"
              "Bit Rate=1,411 kbps\n"
              "Compression=43%\n"
              "Track=03/12\n"
              "Album Artist - Album - Disc - Track=A\rB - L - 03/12\n"
              "Album - Disc - Track=L - 03/12\n"
              "Compilation=Yes\n"
              "TrueSpinResult=x\n");
    EXPECT_EQ(file.row.lengthMs, 2000);
    EXPECT_EQ(file.row.bitRate, 1411200);
    EXPECT_EQ(file.row.compressionPercent, 43);
    EXPECT_EQ(file.row.rating, 8);
}

TEST_F(FileProperties, OfAFileWithoutTagsAreTheseAlone) {
    Told told;
    told.sourceBytes = 0;
    const Derived file(told);
    EXPECT_EQ(Lines(file.tags),
              "Length=0:02\n"
              "Channels=2\n"
              "Sample Rate=44.1 KHz\n"
              "Bit Rate=1,411 kbps\n"
              "Album Artist - Album - Disc - Track=\n"
              "Album - Disc - Track=\n"
              "Compilation=No\n"
              "TrueSpinResult=\n");
    EXPECT_EQ(file.row.compressionPercent, 0);
    EXPECT_EQ(file.row.rating, 0);
}

TEST_F(FileProperties, OfTheDecoderStayInFront) {
    const struct {
        const wchar_t* name;
        const char* values;  // with "own" delivered twice
    } rows[] = {{L"Channels", "own|own2|2|"},
                {L"Sample Rate", "own|own2|44.1 KHz|"},
                {L"Sample Size", "own|own2|16 bit|"},
                {L"Bit Rate", "own|own2|1,411 kbps|"},
                {L"Compression", "own|own2|0%|"},
                {L"Album - Disc - Track", "own|own2||"},
                {L"Album Artist - Album - Disc - Track", "own|own2||"},
                {L"TrueSpinResult", "own|own2|own|"},
                // These three alone are replaced.
                {L"Length", "0:02|"},
                {L"Track", ""},
                {L"Compilation", "No|"}};
    for (const auto& row : rows) {
        Told told;
        told.extension = L".wav";
        const clString lower = clString(row.name).Lower();
        told.tags = {{row.name, L"own"}, {lower.Chars(), L"own2"}};
        EXPECT_EQ(Derived(told).All(row.name), row.values) << Utf8(row.name);
    }
}

TEST_F(FileProperties, TheLengthIsOnAClock) {
    const struct {
        std::int64_t ms;
        const char* expected;
    } rows[] = {{0, "0:00"}, {999, "0:00"}, {65000, "1:05"}, {3665000, "1:01:05"}};
    for (const auto& row : rows) {
        Told told;
        told.lengthMs = row.ms;
        const Derived file(told);
        EXPECT_EQ(file.Get(L"Length"), row.expected);
        EXPECT_EQ(file.row.lengthMs, row.ms);
    }
}

TEST_F(FileProperties, ChannelsAreAPlainNumber) {
    const clRegionalSettings settings = {true, true, 0, false, L"-", L"+", L",", L".", L":"};
    const RegionalProfile other(settings);
    for (const int channels : {0, 1, 6, 65535}) {
        Told told;
        told.wave.nChannels = static_cast<std::uint16_t>(channels);
        EXPECT_EQ(Derived(told).Get(L"Channels"), std::to_string(channels));
    }
}

TEST_F(FileProperties, TheSampleRateIsInKilohertzOrHertz) {
    const struct {
        std::uint32_t rate;
        const char* kilohertz;
        const char* hertz;
    } rows[] = {{0, "0 KHz", "0 Hz"},
                {8000, "8 KHz", "8,000 Hz"},
                {11025, "11 KHz", "11,025 Hz"},
                {22050, "22 KHz", "22,050 Hz"},
                {44100, "44.1 KHz", "44,100 Hz"},
                {48000, "48 KHz", "48,000 Hz"},
                {2822400, "2,822.4 KHz", "2,822,400 Hz"},
                {4294967295, "4,294,967.3 KHz", "4,294,967,295 Hz"}};
    for (const auto& row : rows) {
        Told told;
        told.wave.nSamplesPerSec = row.rate;
        EXPECT_EQ(Derived(told).Get(L"Sample Rate"), row.kilohertz);
        told.unitsInHertz = true;
        EXPECT_EQ(Derived(told).Get(L"Sample Rate"), row.hertz);
    }
}

TEST_F(FileProperties, TheSampleSizeIsThatOfLosslessSources) {
    const struct {
        const wchar_t* extension;
        const wchar_t* quality;  // null: no such tag
        std::uint16_t tag;
        std::uint16_t bits;
        const char* expected;
    } rows[] = {
        {L".mp3", nullptr, 1, 16, ""},
        {L".mp3", L"High", 1, 16, ""},
        {L".mp3", L"lossless", 1, 24, "24 bit"},
        {L".ape", L"Perfect (Lossless)", 1, 16, "16 bit"},
        {L".WaV", nullptr, 3, 32, "32 bit floating point"},
        {L".wav", L"Low", 3, 64, "64 bit floating point"},
        {L".wav", nullptr, 0x55, 0, "0 bit"},
    };
    for (const auto& row : rows) {
        Told told;
        told.extension = row.extension;
        told.wave.wFormatTag = row.tag;
        told.wave.wBitsPerSample = row.bits;
        if (row.quality != nullptr) told.tags = {{L"Audio Quality", row.quality}};
        EXPECT_EQ(Derived(told).Get(L"Sample Size"), row.expected);
    }
}

TEST_F(FileProperties, TheBitRateIsInWholeThousands) {
    const struct {
        std::int32_t bitRate;
        const char* expected;
    } rows[] = {{0, "0 kbps"},
                {999, "0 kbps"},
                {1000, "1 kbps"},
                {320999, "320 kbps"},
                {-999, "0 kbps"},
                {-1500, "-1 kbps"},
                {2147483647, "2,147,483 kbps"},
                {-2147483647 - 1, "-2,147,483 kbps"}};
    for (const auto& row : rows) {
        Told told;
        told.bitRate = row.bitRate;
        const Derived file(told);
        EXPECT_EQ(file.Get(L"Bit Rate"), row.expected);
        EXPECT_EQ(file.row.bitRate, row.bitRate);
    }
}

TEST_F(FileProperties, TheCompressionIsWhatIsSavedFromOneKibibyteOn) {
    const struct {
        const char* what;
        std::uint32_t bytesPerSecond;
        std::int64_t ms;
        std::int64_t source;
        const char* text;
        std::int32_t percent;
    } rows[] = {
        {"an eighth", 8000, 10000, 10000, "88%", 88},
        {"all but a hundredth", 10000, 10000, 1000, "99%", 99},
        {"less than a percent left", 1000000, 10000, 1, "100%", 100},
        {"nothing", 8000, 10000, 80000, "0%", 0},
        {"1023 bytes", 8000, 10000, 78977, "0%", 0},
        {"1024 bytes", 8000, 10000, 78976, "2%", 2},
        {"larger than its audio", 8000, 10000, 90000, "0%", 0},
        {"no length", 8000, 0, 500, "0%", 0},
        {"no rate", 0, 10000, 500, "0%", 0},
        {"no rate counts as 1", 0, 100000000, 10, "100%", 100},
        {"a part of a byte", 1, 1999, 1, "0%", 0},
        {"no source", 8000, 10000, 0, "", 0},
        {"a negative length", 8000, -10000, 500, "0%", 0},
        {"a negative source", 8000, 10000, -40000, "150%", 150},
        {"a negative source, no base", 8000, 0, -40000, "", 0},
        // Nothing here is true; it has to be the same on every machine.
        {"a product beyond 64 bits", 4294967295, largest, 1000, "100%", 100},
        {"a product that wraps below zero", 4294967295, 2147483649, 1000, "0%", 0},
        {"the largest length and source", 4294967295, largest, largest, "100%", 100},
        {"the smallest length", 4294967295, smallest, 1000, "0%", 0},
        {"the smallest source", 1, 1, smallest, "100%", 100},
        {"a source of -1", 1, 0, -1, "0%", 0},
        {"a quotient beyond 64 bits", 1, -1000, -(std::int64_t{1} << 61), "-9223372036854775708%",
         100},
    };
    for (const auto& row : rows) {
        Told told;
        told.wave = {0x55, 2, 44100, row.bytesPerSecond, 1, 0, 0};
        told.lengthMs = row.ms;
        told.sourceBytes = row.source;
        const Derived file(told);
        EXPECT_EQ(file.Get(L"Compression"), row.text) << row.what;
        EXPECT_EQ(file.row.compressionPercent, row.percent) << row.what;
    }
}

TEST_F(FileProperties, NoCompressionOfAnEarlierReadingStays) {
    Told told;
    told.sourceBytes = 0;
    EXPECT_EQ(Derived(told, 42).row.compressionPercent, 0);
}

TEST_F(FileProperties, TheCompressionIsThatOfTheCorrectedWaveFormat) {
    Told told;
    told.wave.nAvgBytesPerSec = 1;  // 176400 in truth
    told.sourceBytes = 176400;
    EXPECT_EQ(Derived(told).Get(L"Compression"), "50%");
}

TEST_F(FileProperties, CompositesJoinWhatIsThereAndNeverTheDisc) {
    const struct {
        Tags tags;
        const char* withArtist;
        const char* withoutArtist;
    } rows[] = {
        {{}, "", ""},
        {{{L"Artist", L"A"}}, "A", ""},
        {{{L"Artist", L"A"}, {L"Album Artist", L"V"}}, "V", ""},
        {{{L"Artist", L"A"}, {L"Album Artist", L""}}, "A", ""},
        {{{L"Album", L"L"}}, "L", "L"},
        {{{L"Track", L"7"}}, "07", "07"},
        {{{L"Track", L"0/9"}, {L"Album", L"L"}}, "L", "L"},
        {{{L"Artist", L"A"}, {L"Track", L"7/9"}}, "A - 07/09", "07/09"},
        {{{L"Artist", L"A"}, {L"Album", L"L"}, {L"Disc", L"2/3"}, {L"Track", L"12"}},
         "A - L - 12",
         "L - 12"},
        {{{L"Disc", L"2/3"}}, "", ""},
    };
    for (const auto& row : rows) {
        Told told;
        told.tags = row.tags;
        const Derived file(told);
        EXPECT_EQ(file.Get(L"Album Artist - Album - Disc - Track"), row.withArtist);
        EXPECT_EQ(file.Get(L"Album - Disc - Track"), row.withoutArtist);
    }
}

TEST_F(FileProperties, TheDiscStaysAsTheDecoderGaveIt) {
    Told told;
    told.tags = {{L"Disc", L"2/3"}, {L"disc", L"x"}};
    EXPECT_EQ(Derived(told).All(L"Disc"), "2/3|x|");
}

TEST_F(FileProperties, TheTrackIsReplacedOrDisappears) {
    const struct {
        const wchar_t* value;
        const char* expected;
    } rows[] = {{L"3/12", "03/12|"}, {L"12", "12|"}, {L"2/9", "02/09|"},
                {L"0/12", ""},       {L"", ""},      {L"A1", ""}};
    for (const auto& row : rows) {
        Told told;
        told.tags = {{L"Track", row.value}, {L"TRACK", L"5"}};
        EXPECT_EQ(Derived(told).All(L"Track"), row.expected) << Utf8(row.value);
    }
}

TEST_F(FileProperties, ACompilationIsYesOrNo) {
    const struct {
        const wchar_t* value;
        const char* expected;
    } rows[] = {{L"1", "Yes|"}, {L"-1", "Yes|"}, {L" 2x", "Yes|"}, {L"0", "No|"},
                {L"", "No|"},   {L"Yes", "No|"}, {L"true", "No|"}};
    for (const auto& row : rows) {
        Told told;
        told.tags = {{L"compilation", row.value}, {L"Compilation", L"1"}};
        EXPECT_EQ(Derived(told).All(L"Compilation"), row.expected) << Utf8(row.value);
    }
}

TEST_F(FileProperties, TheRatingIsItsTagsNumber) {
    const struct {
        const wchar_t* value;
        std::int32_t expected;
    } rows[] = {{L"8", 8},   {L"", 0},        {L"good", 0},
                {L"-3", -3}, {L"100.5", 100}, {L"4294967298", 2}};
    for (const auto& row : rows) {
        Told told;
        told.tags = {{L"RATING", row.value}, {L"Rating", L"1"}};
        const Derived file(told);
        EXPECT_EQ(file.row.rating, row.expected);
        EXPECT_EQ(file.Get(L"Rating"), Utf8(row.value));
    }
}

TEST(SplitNumberPair, TakesTheNumbersOnBothSidesOfTheFirstSlash) {
    const struct {
        const wchar_t* text;
        std::int64_t number;
        std::int64_t total;
    } rows[] = {{L"", 0, 0},          {L"7", 7, 0},      {L"7/9", 7, 9},       {L" 7 / 9 ", 7, 9},
                {L"7/", 7, 0},        {L"/9", 0, 9},     {L"7/9/11", 7, 9},    {L"7//9", 7, 0},
                {L"x/9", 0, 9},       {L"7 of 9", 7, 0}, {L"-7/-9", -7, -9},   {L"+7/+9", 7, 9},
                {L"7\\9", 7, 0},      {L"07/09", 7, 9},  {L"7/9 discs", 7, 9}, {L"Disc", 0, 0},
                {L"7/   +9   ", 7, 9}};
    for (const auto& row : rows) {
        const NumberPair pair = SplitNumberPair(row.text);
        EXPECT_EQ(pair.number, row.number) << Utf8(row.text);
        EXPECT_EQ(pair.total, row.total) << Utf8(row.text);
    }
}

TEST(FormatTrackNumber, HasTwoDigitsAtLeast) {
    const struct {
        const wchar_t* value;
        const char* expected;
    } rows[] = {{L"3/12", "03/12"},
                {L"12", "12"},
                {L"2/9", "02/09"},
                {L"0/12", ""},
                {L"", ""},
                {L"7", "07"},
                {L"7/0", "07"},
                {L"7/x", "07"},
                {L"123/456", "123/456"},
                {L"12/10", "12/10"},
                {L" 1 / 2 ", "01/02"},
                {L"-7", "-7"},
                {L"7/-2", "07/0-2"}};
    for (const auto& row : rows)
        EXPECT_EQ(TrackOf(row.value), row.expected) << Utf8(row.value);
    EXPECT_EQ(Utf8(FormatTrackNumber(TagList(), L"Track")), "");
}

TEST(IsLosslessSource, AsksTheQualityThenTheExtension) {
    const struct {
        const wchar_t* extension;
        const wchar_t* quality;
        bool expected;
    } rows[] = {{L".mp3", L"", false},
                {L".mp3", L"Lossless", true},
                {L".mp3", L"is lOSSLESS now", true},
                {L".mp3", L"perfect", true},
                {L".mp3", L"imPERFECTion", true},
                {L".mp3", L"loss less", false},
                {L".mp3", L"perfec", false},
                {L".wav", L"", true},
                {L".WAV", L"Lossy", true},
                {L".wave", L"", false},
                {L"wav", L"", false},
                {L".", L"", false}};
    for (const auto& row : rows) {
        EXPECT_EQ(IsLosslessSource(row.extension, row.quality), row.expected)
            << Utf8(row.extension) << ' ' << Utf8(row.quality);
    }
}
