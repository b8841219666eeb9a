#include <gtest/gtest.h>

#include "tests/companions/opened_file.h"
#include "tests/companions/pcm_samples.h"

namespace companion_test {
namespace {

const ByteList plainFormat = Wave64Chunk("fmt ", WaveFormatBytes({}));

TEST(Wave64, GivesFormatLengthAndSize) {
    const OpenedFile file =
        OpenBytes(Wave64File({plainFormat, Wave64Chunk("data", ByteList(176400))}));
    ASSERT_TRUE(file.opened);
    EXPECT_EQ(file.format.wFormatTag, 1);
    EXPECT_EQ(file.format.nChannels, 2);
    EXPECT_EQ(file.format.nSamplesPerSec, 44100u);
    EXPECT_EQ(file.lengthMs, 1000);
    EXPECT_EQ(file.sourceBytes, 176400);
    EXPECT_EQ(file.bitRate, 1411200);
}

TEST(Wave64, FillsChunksToEightBytes) {
    const ByteList odd = Wave64Chunk("junk", ByteList(3));
    const OpenedFile file =
        OpenBytes(Wave64File({odd, plainFormat, odd, Wave64Chunk("data", ByteList(400))}));
    ASSERT_TRUE(file.opened);
    EXPECT_EQ(file.sourceBytes, 400);
}

TEST(Wave64, TakesTheFramesOfOtherCodingsFromFact) {
    WaveFields ima;
    ima.tag = 0x11;
    ima.channels = 1;
    ima.rate = 1000;
    ima.block = 512;
    ima.bits = 4;
    const OpenedFile file =
        OpenBytes(Wave64File({Wave64Chunk("fmt ", WaveFormatBytes(ima)),
                              Wave64Chunk("fact", ByteWriter().Le64(1000).Bytes()),
                              Wave64Chunk("data", ByteList(512))}));
    ASSERT_TRUE(file.opened);
    EXPECT_EQ(file.lengthMs, 1000);
}

TEST(Wave64, ReadsTheSummaryList) {
    const std::string_view id("\xBC\x94\x5F\x92\x5A\x52\xD2\x11\x86\xDC\x00\xC0\x4F\x8E\xDB\x8A",
                              16);
    const ByteList summary = ByteWriter()
                                 .Le32(2)
                                 .Text("INAM")
                                 .Le32(8)
                                 .Le16Text(u"T\u00EF\u4E16")
                                 .Le16(0)
                                 .Text("IART")
                                 .Le32(4)
                                 .Le16Text(u"A")
                                 .Le16(0)
                                 .Bytes();
    const OpenedFile file = OpenBytes(
        Wave64File({plainFormat, Wave64Chunk(id, summary), Wave64Chunk("data", ByteList(400))}));
    EXPECT_EQ(file.Tag("Title"), "T\xC3\xAF\xE4\xB8\x96");
    EXPECT_EQ(file.Tag("Artist"), "A");
}

TEST(Wave64, GivesWhatThereIsOfTruncatedAudio) {
    const ByteList whole = Wave64File({plainFormat, Wave64Chunk("data", ByteList(176400))});
    const OpenedFile file = OpenBytes(ByteList(whole.begin(), whole.end() - 88200));
    ASSERT_TRUE(file.opened);
    EXPECT_EQ(file.sourceBytes, 88200);
}

TEST(Wave64, RefusesChunksThatAreSmallerThanTheirHeader) {
    ByteWriter bad;
    bad.Raw(Wave64File({}))
        .Text(std::string_view("fmt \xF3\xAC\xD3\x11\x8C\xD1\x00\xC0\x4F\x8E\xDB\x8A", 16));
    bad.Le64(0).Raw(plainFormat).Raw(Wave64Chunk("data", ByteList(400)));
    EXPECT_FALSE(OpenBytes(bad.Bytes()).opened);
}

}  // namespace
}  // namespace companion_test
