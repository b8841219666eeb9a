#include <gtest/gtest.h>

#include <limits>
#include <ostream>

#include "tests/companions/opened_file.h"
#include "tests/companions/pcm_samples.h"

namespace companion_test {
namespace {

struct CafCase {
    const char* name;
    CafFields fields;
    std::int64_t validFrames;  // -1: no "pakt"
    std::size_t dataBytes;
    std::uint16_t outTag;
    std::uint16_t outBits;
    std::int32_t bitRate;
    std::int64_t lengthMs;
    std::int64_t sourceBytes;
    const char* codec;
    const char* quality;
    const char* mode;
};

constexpr std::uint16_t extensible = 0xFFFE;

CafFields Fields(std::string_view format, std::uint32_t flags, std::uint32_t packetBytes,
                 std::uint32_t packetFrames, std::uint32_t channels, std::uint32_t bits) {
    return {44100, format, flags, packetBytes, packetFrames, channels, bits};
}

const CafCase cafCases[] = {
    {"Big16", Fields("lpcm", 0, 4, 1, 2, 16), -1, 176400, 1, 16, 1411200, 1000, 176400, "PCM",
     "CD Quality (Lossless)", "Constant"},
    {"Little24", Fields("lpcm", 2, 6, 1, 2, 24), -1, 264600, extensible, 24, 2116800, 1000, 264600,
     "PCM", "DVD Quality (Lossless)", "Constant"},
    {"Float32", Fields("lpcm", 1, 8, 1, 2, 32), -1, 352800, 3, 32, 2822400, 1000, 352800,
     "PCM (floating point)", "DVD Quality (Lossless)", "Constant"},
    {"LittleFloat64", Fields("lpcm", 3, 8, 1, 1, 64), -1, 352800, 3, 64, 2822400, 1000, 352800,
     "PCM (floating point)", "DVD Quality (Lossless)", "Constant"},
    {"Alac16", Fields("alac", 1, 0, 4096, 2, 0), 44100, 100000, 1, 16, 800000, 1000, 100000, "ALAC",
     "CD Quality (Lossless)", "Variable"},
    {"Alac24", Fields("alac", 3, 0, 4096, 2, 0), 44100, 100000, extensible, 24, 800000, 1000,
     100000, "ALAC", "DVD Quality (Lossless)", "Variable"},
    {"Alac20", Fields("alac", 2, 0, 4096, 2, 0), 44100, 100000, extensible, 24, 800000, 1000,
     100000, "ALAC", "CD Quality (Lossless)", "Variable"},
    {"Aac", Fields("aac ", 0, 0, 1024, 2, 0), 88200, 32000, 1, 16, 128000, 2000, 32000, "AAC",
     "High", "Variable"},
    {"Ima4", Fields("ima4", 0, 68, 64, 2, 0), -1, 68 * 6890, 1, 16, 374850, 9999, 68 * 6890,
     "IMA 4:1", "Medium", "Constant"},
    {"Ulaw", Fields("ulaw", 0, 2, 1, 2, 8), -1, 88200, 1, 16, 705600, 1000, 88200, "mu-law", "High",
     "Constant"},
};

void PrintTo(const CafCase& row, std::ostream* out) {
    *out << row.name;
}

class CafCaseTest : public testing::TestWithParam<CafCase> {};

ByteList Packets(std::int64_t count, std::int64_t frames) {
    return CafChunk("pakt", ByteWriter()
                                .Be64(static_cast<std::uint64_t>(count))
                                .Be64(static_cast<std::uint64_t>(frames))
                                .Be32(0)
                                .Be32(0)
                                .Bytes());
}

TEST_P(CafCaseTest, GivesFormatLengthAndSize) {
    const CafCase& row = GetParam();
    std::vector<ByteList> chunks = {CafDescription(row.fields), CafData(row.dataBytes)};
    if (row.validFrames >= 0) chunks.push_back(Packets(1, row.validFrames));
    const OpenedFile file = OpenBytes(CafFile(chunks));
    ASSERT_TRUE(file.opened);
    EXPECT_EQ(file.format.wFormatTag, row.outTag);
    EXPECT_EQ(file.format.nChannels, row.fields.channels);
    EXPECT_EQ(file.format.nSamplesPerSec, 44100u);
    EXPECT_EQ(file.format.wBitsPerSample, row.outBits);
    EXPECT_EQ(file.bitRate, row.bitRate);
    EXPECT_EQ(file.lengthMs, row.lengthMs);
    EXPECT_EQ(file.sourceBytes, row.sourceBytes);
    EXPECT_EQ(file.Property("Codec"), row.codec);
    EXPECT_EQ(file.Property("Audio Quality"), row.quality);
    EXPECT_EQ(file.Property("Bit Rate Mode"), row.mode);
}

INSTANTIATE_TEST_SUITE_P(Formats, CafCaseTest, testing::ValuesIn(cafCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(Caf, CountsPacketsWhereNoFramesAreGiven) {
    const OpenedFile file = OpenBytes(CafFile(
        {CafDescription(Fields("aac ", 0, 0, 1024, 2, 0)), Packets(100, 0), CafData(30000)}));
    ASSERT_TRUE(file.opened);
    EXPECT_EQ(file.lengthMs, 102400 * 1000ll / 44100);
}

TEST(Caf, TakesAudioOfOpenSizeToTheEnd) {
    ByteWriter bytes;
    bytes.Raw(CafFile({CafDescription({})})).Text("data").Be64(~0ull).Be32(0).Fill(176400);
    const OpenedFile file = OpenBytes(bytes.Bytes());
    ASSERT_TRUE(file.opened);
    EXPECT_EQ(file.lengthMs, 1000);
}

TEST(Caf, MapsInfoToColumns) {
    const TextPairs fields = {{"artist", "M\xC3\xBCller"},         {"track number", "4/9"},
                              {"recorded date", "2001-02-03"},     {"tempo", "120"},
                              {"encoding application", "Coder 2"}, {"subject", "nobody asks"}};
    ByteWriter info;
    info.Be32(fields.size());
    for (const auto& [key, value] : fields)
        info.Text(key).U8(0).Text(value).U8(0);
    const OpenedFile file =
        OpenBytes(CafFile({CafDescription({}), CafChunk("info", info.Bytes()), CafData(400)}));
    const TextPairs expected = {
        {"Artist", "M\xC3\xBCller"}, {"Track", "4/9"}, {"Year", "2001"}, {"Tempo", "120"}};
    EXPECT_EQ(file.tags, expected);
    EXPECT_EQ(file.Property("Encoder"), "Coder 2");
    EXPECT_EQ(file.Property("ID Tag"), "CAF");
}

TEST(Caf, ReadsTheSpeakersOfABitmap) {
    const CafFields six = Fields("lpcm", 0, 12, 1, 6, 16);
    const ByteList bitmap = ByteWriter().Be32(0x10000).Be32(0x3F).Be32(0).Bytes();
    const OpenedFile file =
        OpenBytes(CafFile({CafDescription(six), CafChunk("chan", bitmap), CafData(1200)}));
    EXPECT_EQ(file.Property("Channel Layout"), "5.1");
}

TEST(Caf, RefusesDamagedHeaders) {
    const auto withRate = [](double rate) {
        CafFields fields;
        fields.rate = rate;
        return CafFile({CafDescription(fields), CafData(400)});
    };
    const std::pair<const char*, ByteList> cases[] = {
        {"no description", CafFile({CafData(400)})},
        {"short description", CafFile({CafChunk("desc", ByteList(31)), CafData(400)})},
        {"no data", CafFile({CafDescription({})})},
        {"rate 0", withRate(0)},
        {"negative rate", withRate(-44100)},
        {"not a number", withRate(std::numeric_limits<double>::quiet_NaN())},
        {"endless rate", withRate(std::numeric_limits<double>::infinity())},
        {"denormal rate", withRate(std::numeric_limits<double>::denorm_min())},
        {"no channel", CafFile({CafDescription(Fields("lpcm", 0, 4, 1, 0, 16)), CafData(400)})},
        {"bits that wrap",
         CafFile({CafDescription(Fields("lpcm", 0, 4, 1, 2, 0xFFFFFFFF)), CafData(400)})},
        {"bits of a lossless coding that wrap",
         CafFile({CafDescription(Fields("flac", 0, 0, 4096, 2, 0xFFFFFFFC)), CafData(400)})},
        {"other version", ByteWriter()
                              .Text("caff")
                              .Be16(2)
                              .Be16(0)
                              .Raw(CafDescription({}))
                              .Raw(CafData(400))
                              .Bytes()},
    };
    for (const auto& [name, bytes] : cases)
        EXPECT_FALSE(OpenBytes(bytes).opened) << name;
}

}  // namespace
}  // namespace companion_test
