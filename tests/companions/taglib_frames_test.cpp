#include <gtest/gtest.h>

#include "companions/decoder-taglib/mpeg_audio.h"
#include "tests/companions/taglib_support.h"

namespace companion {
namespace {

using Data = std::vector<std::uint8_t>;

// An MPEG-1 Layer III frame at 48 kHz, stereo, of silence: 24 ms, unpadded.
void AddFrame(Data& data, int bitRateIndex) {
    constexpr int kbps[] = {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320};
    const Data header = {0xFF, 0xFB, static_cast<std::uint8_t>(bitRateIndex << 4 | 4), 0};
    const std::size_t bytes = static_cast<std::size_t>(3 * kbps[bitRateIndex]);
    const std::size_t start = data.size();
    data.resize(start + bytes);
    std::copy(header.begin(), header.end(), data.begin() + static_cast<std::ptrdiff_t>(start));
}

MpegAudio ReadAll(const Data& data, std::size_t* reads = nullptr) {
    MemorySource source(data);
    const AudioSpan span{0, data.size()};
    const FirstFrame first = FindFirstFrame(source, span, longestJunk);
    EXPECT_TRUE(first.found);
    source.reads = 0;
    const MpegAudio audio = ReadMpegAudio(source, span, first);
    if (reads) *reads = source.reads;
    return audio;
}

struct HeaderCase {
    std::uint8_t bytes[7];
    bool valid;
    int version, layer, bitRate, sampleRate, channels, samples, length;
};

TEST(MpegFrame, HeaderFieldsAreThoseOfTheStandard) {
    constexpr HeaderCase cases[] = {
        {{0xFF, 0xFB, 0x90, 0x00}, true, 1, 3, 128000, 44100, 2, 1152, 417},
        {{0xFF, 0xFB, 0x92, 0x00}, true, 1, 3, 128000, 44100, 2, 1152, 418},
        {{0xFF, 0xFB, 0x94, 0xC0}, true, 1, 3, 128000, 48000, 1, 1152, 384},
        {{0xFF, 0xF3, 0x80, 0xC0}, true, 2, 3, 64000, 22050, 1, 576, 208},
        {{0xFF, 0xE3, 0x80, 0x00}, true, 3, 3, 64000, 11025, 2, 576, 417},
        {{0xFF, 0xFD, 0xA0, 0x00}, true, 1, 2, 192000, 44100, 2, 1152, 626},
        {{0xFF, 0xFF, 0x60, 0x00}, true, 1, 1, 192000, 44100, 2, 384, 208},
        {{0xFF, 0xFF, 0x62, 0x00}, true, 1, 1, 192000, 44100, 2, 384, 212},
        {{0xFF, 0xF1, 0x50, 0x80, 0x02, 0x1F, 0xFC}, true, 4, 0, 5512, 44100, 2, 1024, 16},
        {{0xFF, 0xFB, 0x00, 0x00}, false, 1, 3, 0, 44100, 0, 0, 0},   // free bit rate
        {{0xFF, 0xFB, 0xF0, 0x00}, false, 1, 3, 0, 44100, 0, 0, 0},   // reserved bit rate
        {{0xFF, 0xFB, 0x9C, 0x00}, false, 1, 3, 128000, 0, 0, 0, 0},  // reserved rate
        {{0xFF, 0xEB, 0x90, 0x00}, false, 0, 0, 0, 0, 0, 0, 0},       // reserved version
        {{0xFE, 0xFB, 0x90, 0x00}, false, 0, 0, 0, 0, 0, 0, 0},       // no sync
    };
    for (const HeaderCase& expected : cases) {
        const FrameHeader header = ParseFrameHeader(expected.bytes);
        SCOPED_TRACE(testing::PrintToString(expected.bytes));
        EXPECT_EQ(expected.valid, header.valid);
        EXPECT_EQ(expected.version, header.version);
        EXPECT_EQ(expected.layer, header.layer);
        EXPECT_EQ(expected.bitRate, header.bitRate);
        EXPECT_EQ(expected.sampleRate, header.sampleRate);
        if (!expected.valid) continue;
        EXPECT_EQ(expected.channels, header.channels);
        EXPECT_EQ(expected.samples, header.samples);
        EXPECT_EQ(expected.length, header.bytes);
    }
}

TEST(MpegFrame, FirstOneIsFoundBehindJunkAndFalseMarks) {
    Data data(3000, 0x11);
    const Data falseMark = {0xFF, 0xFB, 0x90, 0x00};
    std::copy(falseMark.begin(), falseMark.end(), data.begin() + 100);
    for (int i = 0; i < 10; ++i)
        AddFrame(data, 9);
    MemorySource source(data);
    const FirstFrame first = FindFirstFrame(source, {0, data.size()}, longestJunk);
    ASSERT_TRUE(first.found);
    EXPECT_EQ(3000u, first.position);
}

TEST(MpegFrame, TextInSixteenBitUnitsIsNoFrame) {
    Data data = {0xFF, 0xFE};
    for (int i = 0; i < 2000; ++i) {
        data.push_back(static_cast<std::uint8_t>('A' + i % 26));
        data.push_back(0);
    }
    MemorySource source(data);
    EXPECT_FALSE(FindFirstFrame(source, {0, data.size()}, longestJunk).found);
}

TEST(MpegAudio, WithoutAHeaderFrameAllFramesOfAShortFileCount) {
    Data data;
    for (int i = 0; i < 100; ++i)
        AddFrame(data, i < 10 ? 1 : 14);
    const MpegAudio audio = ReadAll(data);
    EXPECT_EQ(BitRateMode::Variable, audio.mode);
    EXPECT_EQ(100 * 24, audio.lengthMs);
    EXPECT_EQ(291'200, audio.bitRate);  // ten frames of 32 kbps, ninety of 320
}

TEST(MpegAudio, ConstantBitRateOfALongFileIsFoundBySamplesOfIt) {
    Data data;
    for (int i = 0; i < 20'000; ++i)
        AddFrame(data, 9);
    std::size_t reads = 0;
    const MpegAudio audio = ReadAll(data, &reads);
    EXPECT_EQ(BitRateMode::Constant, audio.mode);
    EXPECT_EQ(128'000, audio.bitRate);
    EXPECT_EQ(20'000 * 24, audio.lengthMs);
    EXPECT_LT(reads, 500u);
}

TEST(MpegAudio, VariableBitRateOfALongFileIsNotMistaken) {
    Data data;
    for (int i = 0; i < 10'000; ++i)
        AddFrame(data, i < 4000 ? 9 : 14);
    const MpegAudio audio = ReadAll(data);
    EXPECT_EQ(BitRateMode::Variable, audio.mode);
    EXPECT_EQ(10'000 * 24, audio.lengthMs);
}

TEST(MpegAudio, DamageInTheMiddleCostsOnlyWhatIsDamaged) {
    Data data;
    for (int i = 0; i < 100; ++i)
        AddFrame(data, 9);
    for (std::size_t i = 50 * 384 + 10; i < 52 * 384 + 10; ++i)
        data[i] = 0x55;
    const MpegAudio audio = ReadAll(data);
    EXPECT_NEAR(98.0 * 24, static_cast<double>(audio.lengthMs), 24.0);
}

}  // namespace
}  // namespace companion
