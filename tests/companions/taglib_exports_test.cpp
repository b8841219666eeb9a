#include <gtest/gtest.h>

#include <thread>

#include "companions/common/exports.h"
#include "tests/companions/taglib_support.h"

namespace companion {
namespace {

struct Answer {
    std::int32_t opened = 0;
    std::vector<std::uint8_t> format, tags, properties;
    std::int64_t numbers[3] = {};

    bool operator==(const Answer& other) const {
        return opened == other.opened && format == other.format && tags == other.tags &&
               properties == other.properties &&
               std::equal(std::begin(numbers), std::end(numbers), std::begin(other.numbers));
    }
};

std::vector<std::uint8_t> Copy(const void* from, std::size_t count) {
    const auto* bytes = static_cast<const std::uint8_t*>(from);
    return bytes ? std::vector<std::uint8_t>(bytes, bytes + count) : std::vector<std::uint8_t>{};
}

// As the host does it: one instance for each file, and no Close.
Answer OpenOnce(const std::u16string& path) {
    Answer answer;
    DecoderCreateRecord create{};
    const DecoderInstance instance = Create(&create);
    EXPECT_NE(0u, instance);
    DecoderOpenRecord record{};
    record.fileName = reinterpret_cast<const DecoderChar*>(path.c_str());
    record.flags = DECODER_OPEN_FLAGS;
    answer.opened = Open(instance, &record);
    answer.format = Copy(&record.waveFormat, sizeof(record.waveFormat));
    answer.tags = Copy(record.tags, record.tagsSize);
    answer.properties = Copy(record.properties, record.propertiesSize);
    answer.numbers[0] = record.bitRate;
    answer.numbers[1] = record.lengthMs;
    answer.numbers[2] = record.sourceBytes;
    Destroy(instance);
    return answer;
}

TEST(TagLibExports, ListTheTypesAndEndThem) {
    const DecoderInstance instance = Create(nullptr);
    DecoderGetRecord record{};
    std::u16string name = u"Decodes";
    const auto* decodes = reinterpret_cast<const DecoderChar*>(name.c_str());
    std::uint32_t count = 0;
    for (record.index = 0; Get(instance, decodes, &record) != 0; ++record.index) {
        EXPECT_TRUE(record.text && record.text2);
        ++count;
    }
    EXPECT_EQ(AudioTypes().size(), count);
    EXPECT_FALSE(record.text || record.text2);
    Destroy(instance);
}

TEST(TagLibExports, OneInstanceOpensFileAfterFileWithoutClose) {
    const DecoderInstance instance = Create(nullptr);
    for (int round = 0; round < 3; ++round) {
        for (const std::string_view file : codedSamples) {
            const std::u16string path = SamplePath(file);
            DecoderOpenRecord record{};
            record.fileName = reinterpret_cast<const DecoderChar*>(path.c_str());
            record.flags = DECODER_OPEN_FLAGS;
            EXPECT_EQ(1, Open(instance, &record)) << file;
        }
    }
    Destroy(instance);
}

TEST(TagLibExports, EightThreadsGetWhatOneGets) {
    constexpr int rounds = 6;
    std::vector<Answer> expected;
    for (const std::string_view file : codedSamples)
        expected.push_back(OpenOnce(SamplePath(file)));
    std::vector<int> wrong(8, 0);
    std::vector<std::thread> threads;
    for (std::size_t t = 0; t < wrong.size(); ++t) {
        threads.emplace_back([&, t] {
            for (std::size_t i = 0; i < rounds * expected.size(); ++i) {
                // Each thread starts elsewhere, so that different formats meet.
                const std::size_t which = (i + t * 5) % expected.size();
                if (!(OpenOnce(SamplePath(codedSamples[which])) == expected[which])) ++wrong[t];
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(std::vector<int>(8, 0), wrong);
    for (const Answer& answer : expected)
        EXPECT_EQ(1, answer.opened);
}

}  // namespace
}  // namespace companion
