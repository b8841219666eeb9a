#include "companions/decoder-pcm/stream.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

#include "companions/decoder-pcm/codec.h"

namespace companion::pcm {
namespace {

Stream Make(Codec codec, double rate, std::uint32_t channels, std::uint32_t bits) {
    Stream stream;
    stream.codec = codec;
    stream.sampleRate = rate;
    stream.channels = channels;
    stream.validBits = bits;
    return stream;
}

TEST(Stream, RanksQuality) {
    struct Case {
        Codec codec;
        double rate;
        std::uint32_t channels;
        std::uint32_t bits;
        std::int32_t bitRate;
        std::u16string_view quality;
    };
    const Case cases[] = {
        {Codec::pcm, 44100, 2, 16, 0, u"CD Quality (Lossless)"},
        {Codec::pcm, 44100, 2, 20, 0, u"CD Quality (Lossless)"},
        {Codec::pcm, 47999, 2, 16, 0, u"CD Quality (Lossless)"},
        {Codec::pcm, 48000, 2, 16, 0, u"DAT Quality (Lossless)"},
        {Codec::pcm, 48001, 2, 16, 0, u"DVD Quality (Lossless)"},
        {Codec::pcm, 8000, 1, 24, 0, u"DVD Quality (Lossless)"},
        {Codec::pcm, 44099, 2, 16, 0, u"Low (Lossless)"},
        {Codec::pcm, 44100, 2, 8, 0, u"Low (Lossless)"},
        {Codec::alac, 44100, 2, 0, 0, u"CD Quality (Lossless)"},
        {Codec::mpegLayer3, 44100, 2, 0, 95999, u"Low"},
        {Codec::mpegLayer3, 44100, 2, 0, 96000, u"Medium"},
        {Codec::mpegLayer3, 44100, 2, 0, 160000, u"High"},
        {Codec::mpegLayer3, 44100, 2, 0, 256000, u"Very High"},
        {Codec::mpegLayer3, 44100, 1, 0, 128000, u"Very High"},
        {Codec::mpegLayer2, 44100, 2, 0, 224000, u"Medium"},
        {Codec::aac, 44100, 2, 0, 128000, u"High"},
        {Codec::opus, 48000, 2, 0, 64000, u"Medium"},
        {Codec::aLaw, 8000, 1, 8, 64000, u"Low"},
        {Codec::mpegLayer3, 44100, 2, 0, 0, u""},
    };
    for (const Case& row : cases) {
        const Stream stream = Make(row.codec, row.rate, row.channels, row.bits);
        EXPECT_EQ(QualityText(stream, row.bitRate), row.quality)
            << row.rate << " " << row.bits << " " << row.bitRate;
    }
}

TEST(Stream, NamesLayoutsBySpeakers) {
    struct Case {
        std::uint32_t channels;
        std::uint32_t mask;
        std::u16string_view layout;
    };
    const Case cases[] = {{1, 0, u"Mono"}, {2, 0, u"Stereo"}, {3, 0, u"3.0"}, {3, 0xB, u"2.1"},
                          {4, 0, u"4.0"},  {5, 0, u"5.0"},    {6, 0, u"5.1"}, {6, 0x137, u"6.0"},
                          {7, 0, u"6.1"},  {8, 0, u"7.1"},    {9, 0, u""},    {6, 0x3, u"5.1"}};
    for (const Case& row : cases) {
        Stream stream = Make(Codec::pcm, 44100, row.channels, 16);
        stream.channelMask = row.mask;
        EXPECT_EQ(LayoutText(stream), row.layout) << row.channels << " " << row.mask;
    }
}

TEST(Stream, KeepsNumbersInBoundsForFilesOfAnySize) {
    constexpr std::uint64_t most = std::numeric_limits<std::int64_t>::max();
    for (const Codec codec : {Codec::pcm, Codec::imaAdpcm, Codec::aac, Codec::unknown}) {
        Stream stream = Make(codec, 1, 1, 8);
        stream.dataBytes = most;
        stream.declaredFrames = ~std::uint64_t{0};
        stream.blockBytes = codec == Codec::aac ? 0 : 1;
        stream.framesPerBlock = 0xFFFFFFFF;
        stream.averageBytesPerSecond = 1;
        ASSERT_TRUE(Settle(stream));
        const std::uint64_t frames = FramesOf(stream);
        EXPECT_GT(frames, 0u);
        EXPECT_GT(LengthMs(stream, frames), 0);
        EXPECT_GT(SourceBytes(stream, frames), 0);
        EXPECT_GE(BitRate(stream, frames), 0);
    }
}

TEST(Stream, BoundsTheBitRate) {
    Stream stream = Make(Codec::pcm, 1e8, 1000, 64);
    ASSERT_TRUE(Settle(stream));
    EXPECT_EQ(BitRate(stream, 0), std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(DecodedFormat(stream).averageBytesPerSecond,
              std::numeric_limits<std::uint32_t>::max());
}

// 2 GiB of 16-bit stereo at 44100 Hz and beyond the sizes of 32 bits.
TEST(Stream, CountsLongFilesExactly) {
    Stream stream = Make(Codec::pcm, 44100, 2, 16);
    stream.dataBytes = std::uint64_t{176400} * 100000;
    ASSERT_TRUE(Settle(stream));
    EXPECT_EQ(LengthMs(stream, FramesOf(stream)), 100000000);
    EXPECT_EQ(SourceBytes(stream, FramesOf(stream)), 17640000000);
}

TEST(Stream, DisbelievesFramesThatTheBytesCannotHold) {
    Stream stream = Make(Codec::aac, 44100, 2, 0);
    stream.dataBytes = 10;
    stream.declaredFrames = std::uint64_t{1} << 50;
    stream.averageBytesPerSecond = 10;
    ASSERT_TRUE(Settle(stream));
    EXPECT_EQ(FramesOf(stream), 44100u);
}

TEST(Codec, KnowsTheCodingsThatLoseNothing) {
    for (const Codec codec : {Codec::pcm, Codec::ieeeFloat, Codec::alac, Codec::flac})
        EXPECT_TRUE(TraitsOf(codec).lossless);
    for (int i = 0; i <= static_cast<int>(Codec::qdesign); ++i) {
        const Codec codec = static_cast<Codec>(i);
        const bool lossless = codec == Codec::pcm || codec == Codec::ieeeFloat;
        EXPECT_EQ(TraitsOf(codec).lossless, lossless) << i;
        EXPECT_EQ(*TraitsOf(codec).name == u'\0', codec == Codec::unknown) << i;
    }
}

TEST(Codec, ResolvesWaveTagsInsideFourLetters) {
    EXPECT_EQ(CodecOfAifcType(std::string_view("ms\0\x02", 4)).codec, Codec::msAdpcm);
    EXPECT_EQ(CodecOfAifcType(std::string_view("ms\0\x11", 4)).codec, Codec::imaAdpcm);
    EXPECT_EQ(CodecOfAifcType(std::string_view("ms\0\x55", 4)).codec, Codec::mpegLayer3);
    EXPECT_EQ(CodecOfAifcType("ms").codec, Codec::unknown);
}

}  // namespace
}  // namespace companion::pcm
