// The properties of a file as its decoder's open record tells them.
#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <random>
#include <utility>
#include <vector>

#include "decoders/file_properties.h"
#include "tests/decoders/tag_lines.h"
#include "tests/support/regional_profile.h"
#include "tests/support/text.h"

namespace {

constexpr std::int64_t smallest = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();

using Tags = std::vector<std::pair<const wchar_t*, const wchar_t*>>;

class OpenRecord : public testing::Test {
protected:
    RegionalProfile region{englishRegion};
};

void Put(std::vector<std::uint8_t>& bytes, const void* data, std::size_t size) {
    const auto* from = static_cast<const std::uint8_t*>(data);
    bytes.insert(bytes.end(), from, from + size);
}

// The tags as a decoder packs them.
std::vector<std::uint8_t> Packed(const Tags& tags) {
    std::vector<std::uint8_t> bytes;
    const auto count = static_cast<std::int32_t>(tags.size());
    Put(bytes, &count, sizeof(count));
    for (const auto& [name, value] : tags) {
        const std::int32_t nameBytes = 2 * (clString(name).Length() + 1);
        const std::int32_t valueBytes = 2 * (clString(value).Length() + 1);
        const std::int32_t entryBytes = 4 + nameBytes + valueBytes;
        Put(bytes, &entryBytes, sizeof(entryBytes));
        Put(bytes, name, static_cast<std::size_t>(nameBytes));
        Put(bytes, value, static_cast<std::size_t>(valueBytes));
    }
    return bytes;
}

DecoderOpenRecord Record(const std::vector<std::uint8_t>& tags,
                         const std::vector<std::uint8_t>& properties) {
    DecoderOpenRecord record = {};
    record.waveFormat = {0x55, 1, 22050, 6000, 1, 0, 0, {}};
    record.bitRate = 48999;
    record.lengthMs = 61000;
    record.sourceBytes = 366000;
    record.tags = tags.data();
    record.tagsSize = static_cast<std::uint32_t>(tags.size());
    record.properties = properties.data();
    record.propertiesSize = static_cast<std::uint32_t>(properties.size());
    return record;
}

}  // namespace

TEST_F(OpenRecord, TagsHidePropertiesOfTheirName) {
    const auto tags = Packed({{L"Artist", L"A"}, {L"codec", L"of the tags"}});
    const auto properties = Packed({{L"Codec", L"MPEG"}, {L"Encoder", L"E"}});
    FileRow row;
    row.path = L"C:\\Music\\a.mp3";
    TagList list;
    list.Add(L"Artist", L"of the file before");
    TakeOpenRecord(Record(tags, properties), row, list, true);
    EXPECT_EQ(Lines(list),
              "Artist=A\n"
              "codec=of the tags\n"
              "Encoder=E\n"
              "Length=1:01\n"
              "Channels=1\n"
              "Sample Rate=22,050 Hz\n"
              "Bit Rate=48 kbps\n"
              "Compression=0%\n"
              "Album Artist - Album - Disc - Track=A\n"
              "Album - Disc - Track=\n"
              "Compilation=No\n"
              "TrueSpinResult=\n");
    EXPECT_EQ(row.lengthMs, 61000);
    EXPECT_EQ(row.bitRate, 48999);
}

TEST_F(OpenRecord, APropertyIsAsGoodAsATag) {
    const auto properties =
        Packed({{L"Audio Quality", L"Lossless"}, {L"Rating", L"7"}, {L"Track", L"4"}});
    FileRow row;
    TagList list;
    TakeOpenRecord(Record({}, properties), row, list, false);
    EXPECT_EQ(Utf8(list.Get(L"Sample Size")), "0 bit");
    EXPECT_EQ(Utf8(list.Get(L"Track")), "04");
    EXPECT_EQ(row.rating, 7);
}

TEST_F(OpenRecord, MissingBlocksAreNotRead) {
    const auto tags = Packed({{L"Artist", L"A"}});
    for (int missing = 0; missing < 2; ++missing) {
        DecoderOpenRecord record = Record(tags, tags);
        if (missing == 0) {
            record.tags = nullptr;
            record.properties = nullptr;
        } else {
            record.tagsSize = 0;
            record.propertiesSize = 0;
        }
        FileRow row;
        TagList list;
        list.Add(L"Artist", L"before");
        TakeOpenRecord(record, row, list, false);
        // Only a block takes the place of what is there.
        EXPECT_EQ(Utf8(list.At(0).value), "before");
        EXPECT_EQ(Utf8(list.At(1).name), "Length");
    }
}

TEST_F(OpenRecord, ABlockBeyondAllSizesIsNone) {
    const auto tags = Packed({{L"Artist", L"A"}});
    DecoderOpenRecord record = Record(tags, tags);
    record.tagsSize = 0x80000000;
    record.propertiesSize = 0xFFFFFFFF;
    FileRow row;
    TagList list;
    TakeOpenRecord(record, row, list, false);
    EXPECT_EQ(Utf8(list.At(0).name), "Length");
}

TEST_F(OpenRecord, TheExtensionIsThatOfThePath) {
    const struct {
        const wchar_t* path;
        const char* sampleSize;
    } rows[] = {{L"C:\\Music\\a.wav", "0 bit"},
                {L"\\\\server\\share\\a.b.WAV", "0 bit"},
                {L"C:\\Music.wav\\a", ""},
                {L"C:\\Music.wav\\a.mp3", ""},
                {L"C:\\Music\\wav", ""}};
    for (const auto& row : rows) {
        FileRow file;
        file.path = row.path;
        TagList list;
        TakeOpenRecord(Record({}, {}), file, list, false);
        EXPECT_EQ(Utf8(list.Get(L"Sample Size")), row.sampleSize) << Utf8(row.path);
    }
}

TEST_F(OpenRecord, AnExtensibleFloatIsNamedAsSuch) {
    DecoderOpenRecord record = Record({}, {});
    record.waveFormat = {
        0xFFFE, 2, 48000, 0, 0, 32, 22, {32,   0,    0,    0,    0,    0,    0x03, 0x00,
                                         0x00, 0x00, 0x00, 0x00, 0x10, 0x00, 0x80, 0x00,
                                         0x00, 0xAA, 0x00, 0x38, 0x9B, 0x71}};
    record.lengthMs = 1000;
    record.sourceBytes = 192000;
    FileRow row;
    row.path = L"a.wav";
    TagList list;
    TakeOpenRecord(record, row, list, false);
    EXPECT_EQ(Utf8(list.Get(L"Sample Size")), "32 bit floating point");
    // Of 384000 bytes a second, as the record should have told.
    EXPECT_EQ(Utf8(list.Get(L"Compression")), "50%");
    record.waveFormat.extension[6] = 1;
    TagList ofIntegers;
    TakeOpenRecord(record, row, ofIntegers, false);
    EXPECT_EQ(Utf8(ofIntegers.Get(L"Sample Size")), "32 bit");
}

// Whatever a decoder makes of a damaged file: no arithmetic that has no result,
// and the derived entries stand at the end in their order.
TEST_F(OpenRecord, OfRandomRecordsStandInTheirOrder) {
    std::mt19937_64 random(20240305);
    const std::int64_t edges[] = {
        0,           1,       -1,        1000,          1023,           1024,
        352800,      largest, smallest,  largest / 100, smallest / 100, 4294967296,
        -4294967296, 3600000, 2149200000};
    const auto any = [&]() -> std::int64_t {
        const std::uint64_t bits = random();
        if ((bits & 1) != 0) return edges[(bits >> 1) % std::size(edges)];
        return static_cast<std::int64_t>(random() >> (bits >> 1) % 64);
    };
    for (int run = 0; run < 20000; ++run) {
        std::uint8_t bytes[sizeof(DecoderOpenRecord)];
        for (std::uint8_t& byte : bytes)
            byte = static_cast<std::uint8_t>(random());
        DecoderOpenRecord record;
        std::memcpy(&record, bytes, sizeof(record));
        record.lengthMs = any();
        record.sourceBytes = any();
        record.bitRate = static_cast<std::int32_t>(any());
        if (run % 2 == 0) record.waveFormat.wFormatTag = static_cast<std::uint16_t>(run % 4);
        std::uint8_t block[64];
        for (std::uint8_t& byte : block)
            byte = static_cast<std::uint8_t>(random() % 4 == 0 ? random() : 0);
        block[0] = 2;
        block[4] = static_cast<std::uint8_t>(random() % 64);
        record.tags = block;
        record.tagsSize = static_cast<std::uint32_t>(random() % sizeof(block));
        record.properties = nullptr;
        FileRow row;
        TagList tags;
        TakeOpenRecord(record, row, tags, run % 3 == 0);
        const std::int64_t count = tags.Count();
        ASSERT_GE(count, 8);
        EXPECT_EQ(Utf8(tags.At(count - 1).name), "TrueSpinResult");
        EXPECT_EQ(Utf8(tags.At(count - 2).name), "Compilation");
        EXPECT_EQ(Utf8(tags.At(count - 3).name), "Album - Disc - Track");
        EXPECT_EQ(row.lengthMs, record.lengthMs);
        const bool compressed = !tags.Get(L"Compression").IsEmpty();
        EXPECT_TRUE(compressed || row.compressionPercent == 0);
    }
}
