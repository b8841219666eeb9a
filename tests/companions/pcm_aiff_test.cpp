#include <gtest/gtest.h>

#include <ostream>

#include "tests/companions/opened_file.h"
#include "tests/companions/pcm_samples.h"

namespace companion_test {
namespace {

struct AiffCase {
    const char* name;
    const char* type;  // nullptr for AIFF
    std::uint16_t channels;
    std::uint32_t frames;  // as COMM counts them
    std::uint16_t bits;
    std::uint32_t rate;
    std::size_t dataBytes;
    std::uint16_t outTag;
    std::uint16_t outBits;
    std::int32_t bitRate;
    std::int64_t lengthMs;
    std::int64_t sourceBytes;
    const char* codec;
    const char* quality;
};

constexpr std::uint16_t extensible = 0xFFFE;

const AiffCase aiffCases[] = {
    {"Aiff8", nullptr, 1, 8000, 8, 8000, 8000, 1, 8, 64000, 1000, 8000, "PCM", "Low (Lossless)"},
    {"Aiff16", nullptr, 2, 44100, 16, 44100, 176400, 1, 16, 1411200, 1000, 176400, "PCM",
     "CD Quality (Lossless)"},
    {"Aiff24", nullptr, 2, 96000, 24, 96000, 576000, extensible, 24, 4608000, 1000, 576000, "PCM",
     "DVD Quality (Lossless)"},
    {"Aiff12", nullptr, 1, 44100, 12, 44100, 88200, 1, 16, 705600, 1000, 88200, "PCM",
     "Low (Lossless)"},
    {"DataShorterThanFrames", nullptr, 2, 44100, 16, 44100, 88200, 1, 16, 1411200, 500, 88200,
     "PCM", "CD Quality (Lossless)"},
    {"DataLongerThanFrames", nullptr, 2, 22050, 16, 44100, 88400, 1, 16, 1411200, 500, 88200, "PCM",
     "CD Quality (Lossless)"},
    {"NoFramesCounted", nullptr, 2, 0, 16, 44100, 176400, 1, 16, 1411200, 1000, 176400, "PCM",
     "CD Quality (Lossless)"},
    {"None", "NONE", 2, 44100, 16, 44100, 176400, 1, 16, 1411200, 1000, 176400, "PCM",
     "CD Quality (Lossless)"},
    {"Sowt", "sowt", 2, 48000, 16, 48000, 192000, 1, 16, 1536000, 1000, 192000, "PCM",
     "DAT Quality (Lossless)"},
    {"In24", "in24", 2, 44100, 16, 44100, 264600, extensible, 24, 2116800, 1000, 264600, "PCM",
     "DVD Quality (Lossless)"},
    {"In32", "in32", 1, 44100, 32, 44100, 176400, extensible, 32, 1411200, 1000, 176400, "PCM",
     "DVD Quality (Lossless)"},
    {"Raw", "raw ", 1, 8000, 8, 8000, 8000, 1, 8, 64000, 1000, 8000, "PCM", "Low (Lossless)"},
    {"Fl32", "fl32", 2, 44100, 32, 44100, 352800, 3, 32, 2822400, 1000, 352800,
     "PCM (floating point)", "DVD Quality (Lossless)"},
    {"FL32Caps", "FL32", 2, 44100, 16, 44100, 352800, 3, 32, 2822400, 1000, 352800,
     "PCM (floating point)", "DVD Quality (Lossless)"},
    {"Fl64", "fl64", 1, 44100, 64, 44100, 352800, 3, 64, 2822400, 1000, 352800,
     "PCM (floating point)", "DVD Quality (Lossless)"},
    {"Alaw", "alaw", 1, 8000, 16, 8000, 8000, 1, 16, 64000, 1000, 8000, "A-law", "Low"},
    {"Ulaw", "ulaw", 2, 44100, 16, 44100, 88200, 1, 16, 705600, 1000, 88200, "mu-law", "High"},
    {"Ima4InPackets", "ima4", 2, 1000, 16, 32000, 68000, 1, 16, 272000, 2000, 68000, "IMA 4:1",
     "Low"},
    {"Ima4InSamples", "ima4", 2, 64000, 16, 32000, 68000, 1, 16, 272000, 2000, 68000, "IMA 4:1",
     "Low"},
    {"Ima4Truncated", "ima4", 2, 1000, 16, 32000, 34000, 1, 16, 272000, 1000, 34000, "IMA 4:1",
     "Low"},
    {"Gsm", "GSM ", 1, 50, 0, 8000, 1650, 1, 16, 13200, 1000, 1650, "GSM 6.10", "Low"},
    {"UnknownType", "xxxx", 2, 44100, 16, 44100, 4000, 1, 16, 32000, 1000, 4000, "", ""},
};

void PrintTo(const AiffCase& row, std::ostream* out) {
    *out << row.name;
}

class AiffCaseTest : public testing::TestWithParam<AiffCase> {};

TEST_P(AiffCaseTest, GivesFormatLengthAndSize) {
    const AiffCase& row = GetParam();
    const ByteList common = CommonBytes(row.channels, row.frames, row.bits, row.rate,
                                        row.type ? row.type : std::string_view());
    const OpenedFile file = OpenBytes(
        AiffFile(row.type ? "AIFC" : "AIFF",
                 {IffChunk("COMM", common), IffChunk("SSND", SoundBytes(row.dataBytes))}));
    ASSERT_TRUE(file.opened);
    EXPECT_EQ(file.format.wFormatTag, row.outTag);
    EXPECT_EQ(file.format.nChannels, row.channels);
    EXPECT_EQ(file.format.nSamplesPerSec, row.rate);
    EXPECT_EQ(file.format.wBitsPerSample, row.outBits);
    EXPECT_EQ(file.bitRate, row.bitRate);
    EXPECT_EQ(file.lengthMs, row.lengthMs);
    EXPECT_EQ(file.sourceBytes, row.sourceBytes);
    EXPECT_EQ(file.Property("Codec"), row.codec);
    EXPECT_EQ(file.Property("Audio Quality"), row.quality);
}

INSTANTIATE_TEST_SUITE_P(Formats, AiffCaseTest, testing::ValuesIn(aiffCases),
                         [](const auto& row) { return std::string(row.param.name); });

ByteList TextChunk(std::string_view id, std::string_view text) {
    return IffChunk(id, ByteWriter().Text(text).Bytes());
}

OpenedFile OpenWith(const std::vector<ByteList>& chunks) {
    std::vector<ByteList> all = {IffChunk("COMM", CommonBytes(2, 100, 16, 44100)),
                                 IffChunk("SSND", SoundBytes(400))};
    all.insert(all.end(), chunks.begin(), chunks.end());
    return OpenBytes(AiffFile("AIFF", all));
}

TEST(Aiff, MapsTextChunksToColumns) {
    const OpenedFile file = OpenWith({TextChunk("NAME", "A title"), TextChunk("AUTH", "An artist"),
                                      TextChunk("(c) ", "1999 me"), TextChunk("ANNO", "One"),
                                      TextChunk("ANNO", "Tw\xF6")});
    const TextPairs expected = {{"Title", "A title"},
                                {"Artist", "An artist"},
                                {"Copyright", "1999 me"},
                                {"Comment", "One\rTw\xC3\xB6"}};
    EXPECT_EQ(file.tags, expected);
    EXPECT_EQ(file.Property("ID Tag"), "AIFF");
}

TEST(Aiff, ReadsCommentsThatBelongToNoMarker) {
    const ByteList comments = ByteWriter()
                                  .Be16(3)
                                  .Be32(0)
                                  .Be16(0)
                                  .Be16(3)
                                  .Text("abc")
                                  .U8(0)
                                  .Be32(0)
                                  .Be16(7)
                                  .Be16(2)
                                  .Text("no")
                                  .Be32(0)
                                  .Be16(0)
                                  .Be16(2)
                                  .Text("de")
                                  .Bytes();
    EXPECT_EQ(OpenWith({IffChunk("COMT", comments)}).Tag("Comment"), "abc\rde");
}

TEST(Aiff, PrefersTheId3Tag) {
    const OpenedFile file =
        OpenWith({TextChunk("NAME", "Name"), TextChunk("AUTH", "Author"),
                  IffChunk("ID3 ", Id3Tag(4, {Id3Text(4, "TIT2", "Tag title")}))});
    EXPECT_EQ(file.Tag("Title"), "Tag title");
    EXPECT_EQ(file.Tag("Artist"), "Author");
    EXPECT_EQ(file.Property("ID Tag"), "AIFF\rID3v2.4");
}

TEST(Aiff, SubtractsTheOffsetOfTheAudio) {
    const ByteList sound = ByteWriter().Be32(100).Be32(0).Fill(500).Bytes();
    const OpenedFile file = OpenBytes(AiffFile(
        "AIFF", {IffChunk("COMM", CommonBytes(2, 1000, 16, 44100)), IffChunk("SSND", sound)}));
    ASSERT_TRUE(file.opened);
    EXPECT_EQ(file.sourceBytes, 400);
}

// The rate of Apple's first machines, which is no whole number.
TEST(Aiff, CountsLengthsWithTheExactRate) {
    const ByteList common =
        ByteWriter().Be16(1).Be32(22254545).Be16(8).Be16(0x400D).Be64(0xADDD1745D145826B).Bytes();
    ByteWriter bytes;
    bytes.Text("FORM").Be32(22254600).Text("AIFF").Raw(IffChunk("COMM", common));
    bytes.Raw(IffChunk("SSND", SoundBytes(22254545)));
    const OpenedFile file = OpenBytes(bytes.Bytes());
    ASSERT_TRUE(file.opened);
    EXPECT_EQ(file.format.nSamplesPerSec, 22255u);
    EXPECT_NEAR(static_cast<double>(file.lengthMs), 1000000.0, 1.0);
}

TEST(Aiff, RefusesDamagedHeaders) {
    const ByteList sound = IffChunk("SSND", SoundBytes(400));
    const auto rate = [](std::uint16_t exponent, std::uint64_t mantissa) {
        return IffChunk(
            "COMM", ByteWriter().Be16(2).Be32(100).Be16(16).Be16(exponent).Be64(mantissa).Bytes());
    };
    const std::pair<const char*, ByteList> cases[] = {
        {"no COMM", AiffFile("AIFF", {sound})},
        {"short COMM", AiffFile("AIFF", {IffChunk("COMM", ByteList(17)), sound})},
        {"rate 0", AiffFile("AIFF", {rate(0, 0), sound})},
        {"negative rate", AiffFile("AIFF", {rate(0xC00E, 0xAC44000000000000), sound})},
        {"not a number", AiffFile("AIFF", {rate(0x7FFF, 1), sound})},
        {"endless rate", AiffFile("AIFF", {rate(0x7FFE, ~0ull), sound})},
        {"no audio", AiffFile("AIFF", {IffChunk("COMM", CommonBytes(2, 100, 16, 44100))})},
        {"other form", AiffFile("8SVX", {IffChunk("COMM", CommonBytes(2, 100, 16, 44100)), sound})},
    };
    for (const auto& [name, bytes] : cases)
        EXPECT_FALSE(OpenBytes(bytes).opened) << name;
}

}  // namespace
}  // namespace companion_test
