#include <gtest/gtest.h>

#include <ostream>

#include "tests/companions/opened_file.h"
#include "tests/companions/pcm_samples.h"

namespace companion_test {
namespace {

struct AuCase {
    const char* name;
    std::uint32_t encoding;
    std::uint32_t channels;
    std::uint32_t size;  // as the header has it
    std::size_t dataBytes;
    std::uint16_t outBits;
    std::int32_t bitRate;
    std::int64_t lengthMs;
    std::int64_t sourceBytes;
    const char* codec;
};

constexpr std::uint32_t unknown = 0xFFFFFFFF;

// All at 8000 Hz.
const AuCase auCases[] = {
    {"MuLaw", 1, 1, 8000, 8000, 16, 64000, 1000, 8000, "mu-law"},
    {"Linear8", 2, 1, 8000, 8000, 8, 64000, 1000, 8000, "PCM"},
    {"Linear16", 3, 2, 32000, 32000, 16, 256000, 1000, 32000, "PCM"},
    {"Linear24", 4, 1, 24000, 24000, 24, 192000, 1000, 24000, "PCM"},
    {"Linear32", 5, 1, 32000, 32000, 32, 256000, 1000, 32000, "PCM"},
    {"Float", 6, 1, 32000, 32000, 32, 256000, 1000, 32000, "PCM (floating point)"},
    {"Double", 7, 1, 64000, 64000, 64, 512000, 1000, 64000, "PCM (floating point)"},
    {"ALaw", 27, 1, 8000, 8000, 16, 64000, 1000, 8000, "A-law"},
    {"G721", 23, 1, 4000, 4000, 16, 32000, 1000, 4000, "G.721 ADPCM"},
    {"G723At3Bits", 25, 1, 3000, 3000, 16, 24000, 1000, 3000, "G.723 ADPCM"},
    {"G723At5Bits", 26, 1, 5000, 5000, 16, 40000, 1000, 5000, "G.723 ADPCM"},
    {"SizeUnknown", 3, 2, unknown, 32000, 16, 256000, 1000, 32000, "PCM"},
    {"Truncated", 3, 2, 64000, 32000, 16, 256000, 1000, 32000, "PCM"},
    {"MoreBehind", 3, 2, 16000, 32000, 16, 256000, 500, 16000, "PCM"},
};

ByteList AuFile(std::uint32_t encoding, std::uint32_t channels, std::uint32_t size,
                std::size_t dataBytes, std::string_view note = std::string_view("\0\0\0\0", 4)) {
    ByteWriter writer;
    writer.Text(".snd").Be32(24 + note.size()).Be32(size).Be32(encoding).Be32(8000).Be32(channels);
    return writer.Text(note).Fill(dataBytes).Bytes();
}

void PrintTo(const AuCase& row, std::ostream* out) {
    *out << row.name;
}

class AuCaseTest : public testing::TestWithParam<AuCase> {};

TEST_P(AuCaseTest, GivesFormatLengthAndSize) {
    const AuCase& row = GetParam();
    const OpenedFile file = OpenBytes(AuFile(row.encoding, row.channels, row.size, row.dataBytes));
    ASSERT_TRUE(file.opened);
    EXPECT_EQ(file.format.nChannels, row.channels);
    EXPECT_EQ(file.format.nSamplesPerSec, 8000u);
    EXPECT_EQ(file.format.wBitsPerSample, row.outBits);
    EXPECT_EQ(file.bitRate, row.bitRate);
    EXPECT_EQ(file.lengthMs, row.lengthMs);
    EXPECT_EQ(file.sourceBytes, row.sourceBytes);
    EXPECT_EQ(file.Property("Codec"), row.codec);
}

INSTANTIATE_TEST_SUITE_P(Encodings, AuCaseTest, testing::ValuesIn(auCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(Au, ReadsTheOtherByteOrder) {
    ByteWriter writer;
    writer.Text("dns.").Le32(24).Le32(16000).Le32(3).Le32(8000).Le32(1).Fill(16000);
    const OpenedFile file = OpenBytes(writer.Bytes());
    ASSERT_TRUE(file.opened);
    EXPECT_EQ(file.lengthMs, 1000);
}

TEST(Au, TakesTheAnnotationAsComment) {
    const OpenedFile file = OpenBytes(AuFile(3, 1, 400, 400, std::string_view("A note\0\0", 8)));
    const TextPairs expected = {{"Comment", "A note"}};
    EXPECT_EQ(file.tags, expected);
}

TEST(Au, TakesAnAnnotationOfKeysApart) {
    const OpenedFile file = OpenBytes(AuFile(3, 1, 400, 400, "title=One=Two\nARTIST=Me\nx=y\n"));
    const TextPairs expected = {{"Title", "One=Two"}, {"Artist", "Me"}};
    EXPECT_EQ(file.tags, expected);
}

TEST(Au, RefusesDamagedHeaders) {
    ByteList bytes = AuFile(3, 1, 400, 400);
    EXPECT_TRUE(OpenBytes(bytes).opened);
    for (const std::uint8_t start : {std::uint8_t{0}, std::uint8_t{23}}) {
        bytes[7] = start;  // audio inside the header
        EXPECT_FALSE(OpenBytes(bytes).opened) << int{start};
    }
    bytes[4] = 0xFF;  // audio behind the file
    EXPECT_FALSE(OpenBytes(bytes).opened);
    EXPECT_FALSE(OpenBytes(ByteList(bytes.begin(), bytes.begin() + 20)).opened);
}

}  // namespace
}  // namespace companion_test
