#include "foundation/wave_format.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <memory>

namespace {

constexpr std::array<std::uint8_t, 16> mediaGuid = {0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x10, 0x00,
                                                    0x80, 0x00, 0x00, 0xAA, 0x00, 0x38, 0x9B, 0x71};

WaveFormatRecord Record(std::uint16_t tag, std::uint16_t channels, std::uint16_t bits,
                        std::uint32_t rate) {
    WaveFormatRecord record = {};
    record.wFormatTag = tag;
    record.nChannels = channels;
    record.wBitsPerSample = bits;
    record.nSamplesPerSec = rate;
    return record;
}

// A record with `extension` bytes behind it, exactly as long as it has to be.
struct Extended {
    explicit Extended(const WaveFormatRecord& fixed, std::uint16_t extension)
        : bytes(std::make_unique<std::uint8_t[]>(sizeof(fixed) + extension)) {
        std::memcpy(bytes.get(), &fixed, sizeof(fixed));
        Get()->cbSize = extension;
    }
    WaveFormatRecord* Get() const { return reinterpret_cast<WaveFormatRecord*>(bytes.get()); }
    std::uint8_t* Extension() const { return bytes.get() + sizeof(WaveFormatRecord); }

    std::unique_ptr<std::uint8_t[]> bytes;
};

Extended Extensible(std::uint32_t subTag, std::uint16_t extension = 22) {
    Extended record(Record(0xFFFE, 2, 24, 48000), extension);
    std::memcpy(record.Extension() + 6, mediaGuid.data(), mediaGuid.size());
    std::memcpy(record.Extension() + 6, &subTag, sizeof(subTag));
    return record;
}

}  // namespace

TEST(WaveFormat, StartsWithAnEmptyRecord) {
    const clWaveFormat format;
    EXPECT_EQ(format.EffectiveTag(), 0);
    EXPECT_EQ(format.Format().cbSize, 0);
}

TEST(WaveFormat, PcmAndFloatGetTheirAlignmentAndRateComputed) {
    const struct {
        std::uint16_t tag;
        std::uint16_t channels;
        std::uint16_t bits;
        std::uint32_t rate;
        std::uint16_t align;
        std::uint32_t bytesPerSecond;
    } rows[] = {{1, 2, 16, 44100, 4, 176400}, {1, 1, 8, 8000, 1, 8000},
                {1, 3, 12, 1000, 4, 4000},                              // 4.5 bytes are cut to 4
                {3, 2, 32, 48000, 8, 384000}, {1, 0, 16, 44100, 1, 1},  // nothing is raised to 1
                {1, 1, 4, 44100, 1, 1},       {1, 2, 16, 0, 4, 1}};
    for (const auto& row : rows) {
        WaveFormatRecord record = Record(row.tag, row.channels, row.bits, row.rate);
        record.nBlockAlign = 99;
        record.nAvgBytesPerSec = 99;
        clWaveFormat format;
        format.SetFormat(&record);
        EXPECT_EQ(format.Format().nBlockAlign, row.align);
        EXPECT_EQ(format.Format().nAvgBytesPerSec, row.bytesPerSecond);
        EXPECT_EQ(format.Format().nSamplesPerSec, row.rate);
        EXPECT_EQ(format.Format().wFormatTag, row.tag);
        EXPECT_EQ(format.Format().wBitsPerSample, row.bits);
    }
}

TEST(WaveFormat, OtherTagsKeepTheirNumbersButForZeros) {
    WaveFormatRecord record = Record(0x55, 2, 0, 44100);
    record.nAvgBytesPerSec = 16000;
    record.nBlockAlign = 0;
    clWaveFormat format;
    format.SetFormat(&record);
    EXPECT_EQ(format.EffectiveTag(), 0x55);
    EXPECT_EQ(format.Format().nBlockAlign, 1);
    EXPECT_EQ(format.Format().nAvgBytesPerSec, 16000u);
    record.nBlockAlign = 7;
    record.nAvgBytesPerSec = 0;
    format.SetFormat(&record);
    EXPECT_EQ(format.Format().nBlockAlign, 7);
    EXPECT_EQ(format.Format().nAvgBytesPerSec, 1u);
}

TEST(WaveFormat, ExtensionBytesComeAlong) {
    Extended record(Record(0x55, 2, 0, 44100), 12);
    for (std::uint8_t i = 0; i < 12; ++i)
        record.Extension()[i] = static_cast<std::uint8_t>(i + 1);
    clWaveFormat format;
    format.SetFormat(record.Get());
    EXPECT_EQ(format.Format().cbSize, 12);
    const auto* stored = reinterpret_cast<const std::uint8_t*>(&format.Format());
    EXPECT_EQ(std::memcmp(stored + sizeof(WaveFormatRecord), record.Extension(), 12), 0);
    // And a record without them takes their place.
    const WaveFormatRecord plain = Record(1, 1, 16, 8000);
    format.SetFormat(&plain);
    EXPECT_EQ(format.Format().cbSize, 0);
    EXPECT_EQ(format.Format().nBlockAlign, 2);
}

TEST(WaveFormat, TheCurrentRecordIsLeftAlone) {
    const Extended record = Extensible(1);
    clWaveFormat format;
    format.SetFormat(record.Get());
    const WaveFormatRecord* current = &format.Format();
    format.SetFormat(current);
    EXPECT_EQ(&format.Format(), current);
    EXPECT_EQ(format.Format().nBlockAlign, 6);
    EXPECT_EQ(format.EffectiveTag(), 1);
}

TEST(WaveFormat, AnExtensibleRecordIsResolvedByItsSubFormat) {
    const struct {
        std::uint32_t subTag;
        std::uint16_t expected;
    } rows[] = {{1, 1},       {3, 3},         {6, 6},      {7, 7},           {2, 2},
                {0x50, 0x50}, {0x55, 0xFFFE}, {0, 0xFFFE}, {0x10001, 0xFFFE}};
    for (const auto& row : rows) {
        const Extended record = Extensible(row.subTag);
        clWaveFormat format;
        format.SetFormat(record.Get());
        EXPECT_EQ(format.EffectiveTag(), row.expected) << row.subTag;
        EXPECT_EQ(format.Format().wFormatTag, 0xFFFE);
        // Integer and float samples are recomputed here too.
        const bool isComputed = row.subTag == 1 || row.subTag == 3;
        EXPECT_EQ(format.Format().nBlockAlign, isComputed ? 6 : 1);
        EXPECT_EQ(format.Format().nAvgBytesPerSec, isComputed ? 288000u : 1u);
    }
}

TEST(WaveFormat, AnExtensibleRecordWithoutItsSubFormatStaysAsItIs) {
    clWaveFormat format;
    const Extended tooShort(Record(0xFFFE, 2, 16, 44100), 21);
    format.SetFormat(tooShort.Get());
    EXPECT_EQ(format.EffectiveTag(), 0xFFFE);
    const WaveFormatRecord bare = Record(0xFFFE, 2, 16, 44100);
    format.SetFormat(&bare);
    EXPECT_EQ(format.EffectiveTag(), 0xFFFE);
    const Extended otherSuffix = Extensible(1);
    otherSuffix.Extension()[21] ^= 1;
    format.SetFormat(otherSuffix.Get());
    EXPECT_EQ(format.EffectiveTag(), 0xFFFE);
    const Extended longer = Extensible(3, 30);
    format.SetFormat(longer.Get());
    EXPECT_EQ(format.EffectiveTag(), 3);
}
