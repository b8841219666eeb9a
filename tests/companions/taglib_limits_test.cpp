// Files made to lead a reader astray: each of these sent an unguarded one into
// an endless loop, down the whole stack or through all of the memory.
#include <gtest/gtest.h>
#include <zlib.h>

#include <chrono>

#include "companions/decoder-taglib/cached_source.h"
#include "companions/decoder-taglib/file_reader.h"
#include "companions/decoder-taglib/stored_audio.h"
#include "tests/companions/taglib_support.h"

namespace companion {
namespace {

using Data = std::vector<std::uint8_t>;

void Append(Data& data, std::string_view text) {
    for (const char unit : text)
        data.push_back(static_cast<std::uint8_t>(unit));
}

void Append(Data& data, const Data& more) {
    for (const std::uint8_t byte : more)
        data.push_back(byte);
}

void AppendBig(Data& data, std::uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8)
        data.push_back(static_cast<std::uint8_t>(value >> shift));
}

void AppendLittle(Data& data, std::uint32_t value) {
    for (int shift = 0; shift < 32; shift += 8)
        data.push_back(static_cast<std::uint8_t>(value >> shift));
}

void AppendSynchSafe(Data& data, std::size_t value) {
    for (int shift = 21; shift >= 0; shift -= 7)
        data.push_back(static_cast<std::uint8_t>(value >> shift & 0x7F));
}

Data Frames() {
    Data data;
    for (int i = 0; i < 20; ++i) {
        const Data header = {0xFF, 0xFB, 0x90, 0x00};
        Append(data, header);
        data.resize(data.size() + 413);
    }
    return data;
}

Data Tagged(const Data& frames, const Data& audio) {
    Data data;
    Append(data, std::string_view("ID3\4\0\0", 6));
    AppendSynchSafe(data, frames.size());
    Append(data, frames);
    Append(data, audio);
    return data;
}

struct Outcome {
    bool opened;
    FileFacts facts;
    double seconds;
};

Outcome Read(const Data& data, std::u16string_view extension) {
    MemorySource source(data);
    Outcome outcome{};
    const auto start = std::chrono::steady_clock::now();
    outcome.opened = ReadSource(source, extension, outcome.facts);
    outcome.seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    return outcome;
}

TEST(TagLibLimits, BoxesNestedWithoutEndAreRefused) {
    constexpr std::uint32_t depth = 200'000;
    Data data;
    AppendBig(data, 16);
    Append(data, "ftypM4A ");
    AppendBig(data, 0);
    for (std::uint32_t i = 0; i < depth; ++i) {
        AppendBig(data, (depth - i) * 8);
        Append(data, "moov");
    }
    const Outcome outcome = Read(data, u".m4a");
    EXPECT_FALSE(outcome.opened);
    EXPECT_LT(outcome.seconds, 5);
}

TEST(TagLibLimits, BoxesThatReachOutOfTheirBoxAreFollowedNoDeeper) {
    constexpr int pairs = 100'000;
    Data data;
    AppendBig(data, 16);
    Append(data, "ftypM4A ");
    AppendBig(data, 0);
    for (int i = 0; i < pairs; ++i) {
        AppendBig(data, 16);
        Append(data, "moov");
        AppendBig(data, 0);  // to the end of the file
        Append(data, "trak");
    }
    const Outcome outcome = Read(data, u".m4a");
    EXPECT_FALSE(outcome.opened);
    EXPECT_LT(outcome.seconds, 5);
}

TEST(TagLibLimits, ChaptersWithinChaptersAreNotFollowed) {
    constexpr int depth = 20'000;
    Data frames;
    std::vector<Data> heads;
    std::size_t inside = 0;
    for (int i = 0; i < depth; ++i) {
        Data head;
        Append(head, "CHAP");
        const std::size_t body = 2 + 16 + inside;
        AppendSynchSafe(head, body);
        Append(head, std::string_view("\0\0c\0", 4));
        head.resize(head.size() + 16);
        inside += head.size();
        heads.push_back(head);
    }
    for (auto head = heads.rbegin(); head != heads.rend(); ++head)
        Append(frames, *head);
    const Outcome outcome = Read(Tagged(frames, Frames()), u".mp3");
    EXPECT_TRUE(outcome.opened);
    EXPECT_LT(outcome.seconds, 5);
}

Data Compressed(std::size_t plainBytes) {
    const Data plain(plainBytes, 'a');
    uLongf bytes = compressBound(static_cast<uLong>(plainBytes));
    Data packed(bytes);
    EXPECT_EQ(Z_OK, compress(packed.data(), &bytes, plain.data(), static_cast<uLong>(plainBytes)));
    packed.resize(bytes);
    return packed;
}

Data CompressedTitle(std::size_t plainBytes) {
    const Data packed = Compressed(plainBytes);
    Data frame;
    Append(frame, "TIT2");
    AppendSynchSafe(frame, packed.size() + 4);
    Append(frame, std::string_view("\0\x09", 2));  // compressed, with its length in front
    AppendSynchSafe(frame, plainBytes);
    Append(frame, packed);
    return frame;
}

TEST(TagLibLimits, SmallCompressedFramesAreUnpackedAndLargeOnesAreNot) {
    const Outcome small = Read(Tagged(CompressedTitle(200), Frames()), u".mp3");
    ASSERT_TRUE(small.opened);
    EXPECT_NE("-", ValueOf(small.facts.tags, "Title"));

    const Outcome large = Read(Tagged(CompressedTitle(64 << 20), Frames()), u".mp3");
    ASSERT_TRUE(large.opened);
    EXPECT_EQ("-", ValueOf(large.facts.tags, "Title"));
}

TEST(TagLibLimits, ABlockThatEndsWhereItBeginsEndsTheFile) {
    Data data;
    Append(data, "wvpk");
    AppendLittle(data, 0xFFFFFFF8);  // with the 8 bytes in front: no step forward
    data.resize(32);
    data.resize(4096, 0x20);
    const Outcome outcome = Read(data, u".wv");
    EXPECT_FALSE(outcome.opened);
    EXPECT_LT(outcome.seconds, 10);
}

TEST(CachedSource, GivesTheBytesOfTheFileAtAnyPlaceAndSize) {
    Data data(200'000);
    for (std::size_t i = 0; i < data.size(); ++i)
        data[i] = static_cast<std::uint8_t>(i * 31 >> 3);
    MemorySource memory(data);
    CachedSource source(memory);
    for (std::size_t step = 1; step < 150'000; step = step * 3 + 7) {
        for (std::size_t at = 0; at < data.size() + 10; at += 13'331) {
            Data piece(step);
            const std::size_t got = source.ReadAt(at, piece.data(), step);
            const std::size_t left = at < data.size() ? data.size() - at : 0;
            ASSERT_EQ(std::min(step, left), got);
            ASSERT_TRUE(
                std::equal(piece.begin(), piece.begin() + static_cast<std::ptrdiff_t>(got),
                           data.begin() + static_cast<std::ptrdiff_t>(std::min(at, data.size()))));
        }
    }
    EXPECT_FALSE(source.Exhausted());
}

TEST(CachedSource, AsksTheFileOncePerPage) {
    MemorySource memory(Data(100'000, 1));
    CachedSource source(memory);
    std::uint8_t byte = 0;
    for (std::uint64_t at = 0; at < 30'000; ++at)
        source.ReadAt(at, &byte, 1);
    EXPECT_EQ(1u, memory.reads);
}

TEST(CachedSource, GivesNothingBehindItsLimit) {
    MemorySource memory(Data(1000, 1));
    CachedSource source(memory, {3, 1000});
    std::uint8_t byte = 0;
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(1u, source.ReadAt(0, &byte, 1));
    EXPECT_FALSE(source.Exhausted());
    EXPECT_EQ(0u, source.ReadAt(0, &byte, 1));
    EXPECT_TRUE(source.Exhausted());
}

TEST(StoredAudio, LeavesOutTheTagsOnBothSides) {
    Data data = Tagged(Data(50), Data(1000, 7));
    const std::size_t audio = data.size();
    // An APE tag: header, 8 bytes of items, footer.
    Data block;
    Append(block, "APETAGEX");
    AppendLittle(block, 2000);
    AppendLittle(block, 40);
    AppendLittle(block, 1);
    AppendLittle(block, 0xA0000000);
    block.resize(32 + 8);
    Append(block, "APETAGEX");
    AppendLittle(block, 2000);
    AppendLittle(block, 40);
    AppendLittle(block, 1);
    AppendLittle(block, 0x80000000);
    block.resize(32 + 8 + 32);
    Append(data, block);
    Append(data, "TAG");
    data.resize(data.size() + 125);
    MemorySource source(data);
    const AudioSpan span = FindAudioSpan(source);
    EXPECT_EQ(60u, span.begin);
    EXPECT_EQ(audio, span.end);
    EXPECT_EQ(1000u, span.Length());
}

TEST(StoredAudio, ATagLargerThanTheFileLeavesNothing) {
    Data data;
    Append(data, std::string_view("ID3\4\0\0\x7F\x7F\x7F\x7F", 10));
    data.resize(500);
    MemorySource source(data);
    EXPECT_EQ(0u, FindAudioSpan(source).Length());
}

}  // namespace
}  // namespace companion
