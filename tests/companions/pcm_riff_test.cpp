// WAV, RIFX, RF64 and BW64: the audio itself.
#include <gtest/gtest.h>

#include <ostream>

#include "tests/companions/opened_file.h"
#include "tests/companions/pcm_samples.h"

namespace companion_test {
namespace {

struct WaveCase {
    const char* name;
    WaveFields fields;
    std::size_t dataBytes;
    std::uint32_t factFrames;  // 0: no "fact"
    std::uint16_t outTag;
    std::uint16_t outBits;
    std::int32_t bitRate;
    std::int64_t lengthMs;
    std::int64_t sourceBytes;
    const char* codec;
    const char* quality;
};

WaveFields Fields(std::uint16_t tag, std::uint16_t channels, std::uint32_t rate,
                  std::uint16_t block, std::uint16_t bits, std::uint32_t bytesPerSecond = 0) {
    WaveFields fields;
    fields.tag = tag;
    fields.channels = channels;
    fields.rate = rate;
    fields.block = block;
    fields.bits = bits;
    fields.bytesPerSecond = bytesPerSecond;
    return fields;
}

WaveFields WithExtra(WaveFields fields, ByteList extra) {
    fields.hasExtra = true;
    fields.extra = std::move(extra);
    return fields;
}

ByteList Extra16(std::uint16_t value) {
    return ByteWriter().Le16(value).Bytes();
}

constexpr std::uint16_t extensible = 0xFFFE;

const WaveCase waveCases[] = {
    {"Pcm8", Fields(1, 1, 22050, 1, 8), 22050, 0, 1, 8, 176400, 1000, 22050, "PCM",
     "Low (Lossless)"},
    {"Pcm16", Fields(1, 2, 44100, 4, 16), 176400, 0, 1, 16, 1411200, 1000, 176400, "PCM",
     "CD Quality (Lossless)"},
    {"Pcm16At48", Fields(1, 2, 48000, 4, 16), 96000, 0, 1, 16, 1536000, 500, 96000, "PCM",
     "DAT Quality (Lossless)"},
    {"Pcm16At96", Fields(1, 2, 96000, 4, 16), 96000, 0, 1, 16, 3072000, 250, 96000, "PCM",
     "DVD Quality (Lossless)"},
    {"Pcm24", Fields(1, 2, 44100, 6, 24), 264600, 0, extensible, 24, 2116800, 1000, 264600, "PCM",
     "DVD Quality (Lossless)"},
    {"Pcm24In32", Fields(1, 2, 44100, 8, 24), 352800, 0, extensible, 32, 2822400, 1000, 352800,
     "PCM", "DVD Quality (Lossless)"},
    {"Pcm32", Fields(1, 1, 8000, 4, 32), 32000, 0, extensible, 32, 256000, 1000, 32000, "PCM",
     "DVD Quality (Lossless)"},
    {"Pcm12In16", Fields(1, 1, 44100, 2, 12), 88200, 0, 1, 16, 705600, 1000, 88200, "PCM",
     "Low (Lossless)"},
    {"WrongBlock", Fields(1, 2, 44100, 3, 16), 176400, 0, 1, 16, 1411200, 1000, 176400, "PCM",
     "CD Quality (Lossless)"},
    {"HugeBlock", Fields(1, 2, 44100, 4000, 16), 176400, 0, 1, 16, 1411200, 1000, 176400, "PCM",
     "CD Quality (Lossless)"},
    {"NoBlock", Fields(1, 2, 44100, 0, 16, 1), 176400, 0, 1, 16, 1411200, 1000, 176400, "PCM",
     "CD Quality (Lossless)"},
    {"NoBits", Fields(1, 2, 44100, 4, 0), 176400, 0, 1, 16, 1411200, 1000, 176400, "PCM",
     "CD Quality (Lossless)"},
    {"FactOfPcmIsIgnored", Fields(1, 2, 44100, 4, 16), 176400, 77, 1, 16, 1411200, 1000, 176400,
     "PCM", "CD Quality (Lossless)"},
    {"PartialLastFrame", Fields(1, 2, 44100, 4, 16), 176403, 0, 1, 16, 1411200, 1000, 176400, "PCM",
     "CD Quality (Lossless)"},
    {"Float32", Fields(3, 2, 44100, 8, 32), 352800, 0, 3, 32, 2822400, 1000, 352800,
     "PCM (floating point)", "DVD Quality (Lossless)"},
    {"Float64", Fields(3, 1, 48000, 8, 64), 384000, 0, 3, 64, 3072000, 1000, 384000,
     "PCM (floating point)", "DVD Quality (Lossless)"},
    {"ALaw", Fields(6, 1, 8000, 1, 8), 8000, 8000, 1, 16, 64000, 1000, 8000, "A-law", "Low"},
    {"MuLaw", Fields(7, 2, 44100, 2, 8), 88200, 0, 1, 16, 705600, 1000, 88200, "mu-law", "High"},
    {"MsAdpcm", WithExtra(Fields(2, 2, 44100, 1024, 4, 44543), Extra16(1012)), 10240, 10000, 1, 16,
     361267, 226, 10240, "Microsoft ADPCM", "Medium"},
    {"MsAdpcmWithoutFact", WithExtra(Fields(2, 2, 44100, 1024, 4, 44543), Extra16(1012)), 10240, 0,
     1, 16, 356983, 229, 10240, "Microsoft ADPCM", "Medium"},
    {"MsAdpcmWithoutSamplesPerBlock", Fields(2, 2, 44100, 1024, 4, 44543), 10240, 0, 1, 16, 356983,
     229, 10240, "Microsoft ADPCM", "Medium"},
    {"ImaAdpcm", WithExtra(Fields(0x11, 1, 22050, 512, 4, 11100), Extra16(1017)), 5120, 0, 1, 16,
     88807, 461, 5120, "IMA ADPCM", "Low"},
    {"ImaAdpcmWithoutSamplesPerBlock", Fields(0x11, 1, 22050, 512, 4, 11100), 5120, 0, 1, 16, 88807,
     461, 5120, "IMA ADPCM", "Low"},
    {"FactTooLarge", WithExtra(Fields(0x11, 1, 22050, 512, 4, 11100), Extra16(1017)), 5120, 99999,
     1, 16, 88807, 461, 5120, "IMA ADPCM", "Low"},
    {"Gsm", WithExtra(Fields(0x31, 1, 8000, 65, 0, 1625), Extra16(320)), 6500, 0, 1, 16, 13000,
     4000, 6500, "GSM 6.10", "Low"},
    {"Mp3ByByteRate", Fields(0x55, 2, 44100, 1, 0, 16000), 32000, 0, 1, 16, 128000, 2000, 32000,
     "MPEG Layer III", "Medium"},
    {"Mp3ByFact", Fields(0x55, 2, 44100, 1, 0, 16000), 32000, 44100, 1, 16, 256000, 1000, 32000,
     "MPEG Layer III", "Very High"},
    {"UnknownByByteRate", Fields(0x7777, 2, 44100, 1, 0, 16000), 16000, 0, 1, 16, 128000, 1000,
     16000, "", ""},
    {"NoByteRateAtAll", Fields(0x7777, 2, 44100, 0, 0, 0), 16000, 0, 1, 16, 0, 0, 16000, "", ""},
};

void PrintTo(const WaveCase& row, std::ostream* out) {
    *out << row.name;
}

class WaveCaseTest : public testing::TestWithParam<WaveCase> {};

TEST_P(WaveCaseTest, GivesFormatLengthAndSize) {
    const WaveCase& row = GetParam();
    std::vector<ByteList> behind;
    if (row.factFrames != 0)
        behind.push_back(RiffChunk("fact", ByteWriter().Le32(row.factFrames).Bytes()));
    const OpenedFile file = OpenBytes(WaveFile(row.fields, row.dataBytes, behind));
    ASSERT_TRUE(file.opened);
    EXPECT_TRUE(file.wellFormed);
    EXPECT_EQ(file.format.wFormatTag, row.outTag);
    EXPECT_EQ(file.format.nChannels, row.fields.channels);
    EXPECT_EQ(file.format.nSamplesPerSec, row.fields.rate);
    EXPECT_EQ(file.format.wBitsPerSample, row.outBits);
    EXPECT_EQ(file.format.nBlockAlign, row.fields.channels * row.outBits / 8);
    EXPECT_EQ(file.format.nAvgBytesPerSec, row.fields.rate * file.format.nBlockAlign);
    EXPECT_EQ(file.bitRate, row.bitRate);
    EXPECT_EQ(file.lengthMs, row.lengthMs);
    EXPECT_EQ(file.sourceBytes, row.sourceBytes);
    EXPECT_EQ(file.Property("Codec"), row.codec);
    EXPECT_EQ(file.Property("Audio Quality"), row.quality);
}

INSTANTIATE_TEST_SUITE_P(Formats, WaveCaseTest, testing::ValuesIn(waveCases),
                         [](const auto& row) { return std::string(row.param.name); });

std::string ExtensionOf(const DecoderWaveFormat& format) {
    return std::string(reinterpret_cast<const char*>(format.extension), format.cbSize);
}

std::string Expected(const ByteList& bytes) {
    return std::string(bytes.begin(), bytes.end());
}

TEST(Riff, TakesExtensibleFormatsOver) {
    const WaveFields fields =
        WithExtra(Fields(extensible, 6, 48000, 18, 24), ExtensibleBytes(20, 0x60F, 1));
    const OpenedFile file = OpenBytes(WaveFile(fields, 18 * 4800));
    ASSERT_TRUE(file.opened);
    EXPECT_EQ(file.format.wFormatTag, extensible);
    EXPECT_EQ(file.format.wBitsPerSample, 24);
    EXPECT_EQ(ExtensionOf(file.format), Expected(ExtensibleBytes(20, 0x60F, 1)));
    EXPECT_EQ(file.lengthMs, 100);
    EXPECT_EQ(file.sourceBytes, 18 * 4800);
    EXPECT_EQ(file.Property("Channel Layout"), "5.1");
    EXPECT_EQ(file.Property("Audio Quality"), "DAT Quality (Lossless)");
}

TEST(Riff, TakesExtensibleFloat) {
    const WaveFields fields =
        WithExtra(Fields(extensible, 2, 44100, 8, 32), ExtensibleBytes(32, 3, 3));
    const OpenedFile file = OpenBytes(WaveFile(fields, 352800));
    ASSERT_TRUE(file.opened);
    EXPECT_EQ(file.format.wFormatTag, 3);
    EXPECT_EQ(file.format.cbSize, 0);
    EXPECT_EQ(file.lengthMs, 1000);
}

TEST(Riff, GivesAnExtensibleFormatWithDefaultSpeakersToManyChannels) {
    const OpenedFile file = OpenBytes(WaveFile(Fields(1, 8, 44100, 16, 16), 16 * 441));
    ASSERT_TRUE(file.opened);
    EXPECT_EQ(ExtensionOf(file.format), Expected(ExtensibleBytes(16, 0x63F, 1)));
    EXPECT_EQ(file.Property("Channel Layout"), "7.1");
    EXPECT_EQ(file.lengthMs, 10);
}

TEST(Riff, ReadsTheByteOrderOfRifx) {
    ByteWriter format;
    format.Be16(1).Be16(1).Be32(8000).Be32(16000).Be16(2).Be16(16);
    ByteWriter bytes;
    bytes.Text("RIFX").Be32(0).Text("WAVE");
    bytes.Raw(IffChunk("fmt ", format.Bytes())).Raw(IffChunk("data", ByteList(16000)));
    const OpenedFile file = OpenBytes(bytes.Bytes());
    ASSERT_TRUE(file.opened);
    EXPECT_EQ(file.lengthMs, 1000);
    EXPECT_EQ(file.format.nChannels, 1);
}

// The chunks of a long file of 400 bytes of audio with these numbers in "ds64".
ByteList LongFile(std::string_view magic, std::uint64_t dataSize, std::uint32_t inlineSize) {
    ByteWriter sizes;
    sizes.Le64(0).Le64(dataSize).Le64(100).Le32(1).Text("junk").Le64(4);
    ByteWriter bytes;
    bytes.Text(magic).Le32(0xFFFFFFFF).Text("WAVE").Raw(RiffChunk("ds64", sizes.Bytes()));
    bytes.Raw(RiffChunk("fmt ", WaveFormatBytes({})));
    bytes.Text("junk").Le32(0xFFFFFFFF).Fill(4);
    bytes.Text("data").Le32(inlineSize).Fill(400);
    return bytes
        .Raw(RiffChunk("LIST", ByteWriter()
                                   .Text("INFO")
                                   .Raw(RiffChunk("INAM", ByteWriter().Text("End").Bytes()))
                                   .Bytes()))
        .Bytes();
}

struct LongCase {
    const char* magic;
    std::uint64_t dataSize;
    std::uint32_t inlineSize;
    std::int64_t sourceBytes;
    const char* title;  // "" where the audio swallows the list behind it
};

TEST(Riff, TakesSizesOfLongFilesFromTheirTable) {
    const LongCase cases[] = {
        {"RF64", 400, 0xFFFFFFFF, 400, "End"},
        {"BW64", 400, 0xFFFFFFFF, 400, "End"},
        {"RF64", 0, 400, 400, "End"},
        {"RF64", 0, 0xFFFFFFFF, 424, ""},
        {"RF64", 1ull << 62, 0xFFFFFFFF, 424, ""},
        {"RF64", ~0ull, 0xFFFFFFFF, 424, ""},
    };
    for (const LongCase& row : cases) {
        const OpenedFile file = OpenBytes(LongFile(row.magic, row.dataSize, row.inlineSize));
        ASSERT_TRUE(file.opened) << row.magic << " " << row.dataSize;
        EXPECT_EQ(file.sourceBytes, row.sourceBytes) << row.magic << " " << row.dataSize;
        EXPECT_EQ(file.Tag("Title"), row.title) << row.magic << " " << row.dataSize;
    }
}

TEST(Riff, TakesTheRestOfTheFileWhereTheSizeWasNeverWritten) {
    for (const std::uint32_t size : {0u, 0xFFFFFFFFu}) {
        ByteWriter bytes;
        bytes.Text("RIFF").Le32(size).Text("WAVE").Raw(RiffChunk("fmt ", WaveFormatBytes({})));
        bytes.Text("data").Le32(size).Fill(176400);
        const OpenedFile file = OpenBytes(bytes.Bytes());
        ASSERT_TRUE(file.opened) << size;
        EXPECT_EQ(file.lengthMs, 1000) << size;
    }
}

TEST(Riff, AcceptsFilesWithoutAnyAudio) {
    const OpenedFile file = OpenBytes(WaveFile({}, 0));
    ASSERT_TRUE(file.opened);
    EXPECT_EQ(file.lengthMs, 0);
    EXPECT_EQ(file.sourceBytes, 0);
}

TEST(Riff, FindsTheNextChunkWithAndWithoutTheFillingByte) {
    for (const bool filled : {true, false}) {
        ByteWriter bytes;
        bytes.Text("RIFF").Le32(100).Text("WAVE");
        bytes.Text("junk").Le32(3).Fill(3, 'x').Fill(filled ? 1 : 0);
        bytes.Raw(RiffChunk("fmt ", WaveFormatBytes({}))).Raw(RiffChunk("data", ByteList(400)));
        const OpenedFile file = OpenBytes(bytes.Bytes());
        ASSERT_TRUE(file.opened) << filled;
        EXPECT_EQ(file.sourceBytes, 400) << filled;
    }
}

TEST(Riff, GivesWhatThereIsOfTruncatedAudio) {
    const ByteList whole = WaveFile({}, 176400);
    const OpenedFile file = OpenBytes(ByteList(whole.begin(), whole.end() - 88200));
    ASSERT_TRUE(file.opened);
    EXPECT_EQ(file.lengthMs, 500);
    EXPECT_EQ(file.sourceBytes, 88200);
}

TEST(Riff, RefusesFormatsThatAreNoAudio) {
    const std::pair<const char*, WaveFields> cases[] = {
        {"no channel", Fields(1, 0, 44100, 4, 16)},
        {"no rate", Fields(1, 2, 0, 4, 16)},
        {"impossible rate", Fields(1, 2, 0xFFFFFFFF, 4, 16)},
        {"impossible bits", Fields(1, 2, 44100, 0, 4000, 1)},
        {"no bits, no block", Fields(1, 2, 44100, 0, 0, 1)},
        {"too many channels", Fields(1, 60000, 44100, 4, 16)},
    };
    for (const auto& [name, fields] : cases)
        EXPECT_FALSE(OpenBytes(WaveFile(fields, 400)).opened) << name;
}

}  // namespace
}  // namespace companion_test
