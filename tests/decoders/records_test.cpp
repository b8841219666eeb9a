#include "decoders/records.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <vector>

namespace {

// A record as a decoder sees it: bytes, each field written at its place.
class RecordBytes {
public:
    RecordBytes() : bytes(128, 0) {}

    template <class Value>
    RecordBytes& Put(std::size_t offset, Value value) {
        std::memcpy(bytes.data() + offset, &value, sizeof(value));
        return *this;
    }

    DecoderOpenRecord Record() const {
        DecoderOpenRecord record;
        std::memcpy(&record, bytes.data(), sizeof(record));
        return record;
    }

private:
    std::vector<std::uint8_t> bytes;
};

// Wave format fields at their places in an open record.
RecordBytes Wave(std::uint16_t tag, std::uint16_t channels, std::uint32_t rate,
                 std::uint32_t bytesPerSecond, std::uint16_t block, std::uint16_t bits,
                 std::uint16_t extra = 0) {
    RecordBytes bytes;
    bytes.Put(12, tag).Put(14, channels).Put(16, rate).Put(20, bytesPerSecond);
    bytes.Put(24, block).Put(26, bits).Put(28, extra);
    return bytes;
}

}  // namespace

TEST(Records, OpenRecordFieldsLieAtTheirBytes) {
    const std::uint8_t block[4] = {};
    const DecoderOpenRecord record = RecordBytes()
                                         .Put(8, std::uint32_t{28})
                                         .Put(52, std::int32_t{-320000})
                                         .Put(56, std::int64_t{0x1122334455667788})
                                         .Put(64, std::int64_t{-2})
                                         .Put(80, &block[0])
                                         .Put(88, std::uint32_t{4})
                                         .Put(92, &block[1])
                                         .Put(100, std::uint32_t{3})
                                         .Record();
    EXPECT_EQ(+record.flags, 28u);
    EXPECT_EQ(+record.bitRate, -320000);
    EXPECT_EQ(+record.lengthMs, 0x1122334455667788);
    EXPECT_EQ(+record.sourceBytes, -2);
    EXPECT_EQ(+record.tags, &block[0]);
    EXPECT_EQ(+record.tagsSize, 4u);
    // On a 4-byte boundary: natural alignment would look for it 4 bytes behind.
    EXPECT_EQ(+record.properties, &block[1]);
    EXPECT_EQ(+record.propertiesSize, 3u);
}

TEST(Records, GetRecordFieldsLieAtTheirBytes) {
    const wchar_t text[] = L"a";
    const wchar_t text2[] = L"b";
    std::uint8_t bytes[56] = {};
    const std::uint32_t index = 7;
    const wchar_t* pointers[] = {text, text2};
    std::memcpy(bytes, &index, sizeof(index));
    std::memcpy(bytes + 24, pointers, sizeof(pointers));
    DecoderGetRecord record;
    std::memcpy(&record, bytes, sizeof(record));
    EXPECT_EQ(+record.index, 7u);
    EXPECT_EQ(+record.text, text);
    EXPECT_EQ(+record.text2, text2);
}

TEST(Records, TheWaveFormatOfPcmAndFloatIsCorrectedAndOfOthersKept) {
    struct Case {
        const char* what;
        RecordBytes bytes;
        std::uint16_t block;
        std::uint32_t bytesPerSecond;
    };
    const Case cases[] = {
        {"PCM with a wrong byte rate", Wave(1, 2, 44100, 999, 4, 16), 4, 176400},
        {"PCM with a wrong block", Wave(1, 2, 44100, 176400, 77, 16), 4, 176400},
        {"float with a wrong byte rate", Wave(3, 2, 48000, 999, 1, 32), 8, 384000},
        {"compressed with the same byte rate", Wave(0x55, 2, 44100, 999, 4, 16), 4, 999},
        {"compressed with zeros", Wave(0x55, 2, 44100, 0, 0, 0), 1, 1},
    };
    for (const Case& c : cases) {
        clWaveFormat format;
        TakeWaveFormat(c.bytes.Record(), format);
        EXPECT_EQ(format.Format().nBlockAlign, c.block) << c.what;
        EXPECT_EQ(format.Format().nAvgBytesPerSec, c.bytesPerSecond) << c.what;
    }
}

TEST(Records, AnExtensibleWaveFormatIsResolvedToItsSubFormat) {
    RecordBytes bytes = Wave(0xFFFE, 2, 48000, 1, 1, 32, 22);
    const std::uint8_t floatFormat[16] = {0x03, 0x00, 0x00, 0x00, 0x00, 0x00, 0x10, 0x00,
                                          0x80, 0x00, 0x00, 0xAA, 0x00, 0x38, 0x9B, 0x71};
    for (std::size_t i = 0; i < sizeof(floatFormat); ++i)
        bytes.Put(12 + 24 + i, floatFormat[i]);
    clWaveFormat format;
    TakeWaveFormat(bytes.Record(), format);
    EXPECT_EQ(format.EffectiveTag(), 3);
    EXPECT_EQ(format.Format().nAvgBytesPerSec, 384000u);
}

// The record stands at the end of its memory, so that a read of the 65535 bytes
// that it claims would be found.
TEST(Records, AnExtensionBeyondTheRecordIsCutToTheBytesThatItHas) {
    for (const std::uint16_t claimed : {std::uint16_t{23}, std::uint16_t{65535}}) {
        const auto record = std::make_unique<DecoderOpenRecord>(
            Wave(0x55, 2, 44100, 16000, 1, 0, claimed).Put(12 + 18 + 21, std::uint8_t{9}).Record());
        clWaveFormat format;
        TakeWaveFormat(*record, format);
        EXPECT_EQ(format.Format().cbSize, 22) << claimed;
        const auto* bytes = reinterpret_cast<const std::uint8_t*>(&format.Format());
        EXPECT_EQ(bytes[18 + 21], 9) << claimed;
    }
}

TEST(Records, AnExtensionWithinTheRecordKeepsItsSize) {
    for (const std::uint16_t claimed : {std::uint16_t{0}, std::uint16_t{12}, std::uint16_t{22}}) {
        clWaveFormat format;
        TakeWaveFormat(Wave(0x55, 2, 44100, 16000, 1, 0, claimed).Record(), format);
        EXPECT_EQ(format.Format().cbSize, claimed);
    }
}
