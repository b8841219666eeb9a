#include "companions/decoder-taglib/mpeg_frame.h"

#include <algorithm>
#include <array>
#include <vector>

namespace companion {
namespace {

// kbit/s by bit rate index; 0 stands for free and for reserved.
using BitRates = std::array<int, 16>;
constexpr BitRates bitRates1[3] = {
    {0, 32, 64, 96, 128, 160, 192, 224, 256, 288, 320, 352, 384, 416, 448, 0},
    {0, 32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384, 0},
    {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 0},
};
constexpr BitRates bitRates2[3] = {
    {0, 32, 48, 56, 64, 80, 96, 112, 128, 144, 160, 176, 192, 224, 256, 0},
    {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160, 0},
    {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160, 0},
};
constexpr int sampleRates[3][4] = {
    {44100, 48000, 32000, 0}, {22050, 24000, 16000, 0}, {11025, 12000, 8000, 0}};
constexpr int adtsRates[16] = {96000, 88200, 64000, 48000, 44100, 32000, 24000, 22050,
                               16000, 12000, 11025, 8000,  7350,  0,     0,     0};
constexpr int adtsChannels[8] = {2, 1, 2, 3, 4, 5, 6, 8};

// How many frames in a row make sure of the first one.
constexpr int chainLength = 4;
constexpr std::size_t searchBytes = 64ull * 1024;

FrameHeader ParseAdts(Bytes bytes) {
    FrameHeader header;
    if (bytes.size() < frameHeaderBytes) return header;
    header.adts = true;
    header.version = (bytes[1] & 0x08) != 0 ? 2 : 4;
    header.profile = (bytes[2] >> 6) + 1;
    header.sampleRate = adtsRates[bytes[2] >> 2 & 0x0F];
    // 0 means that the stream itself says; two is by far the most likely.
    header.channels = adtsChannels[(bytes[2] << 2 & 0x04) | bytes[3] >> 6];
    header.samples = 1024 * ((bytes[6] & 0x03) + 1);
    header.bytes = (bytes[3] & 0x03) << 11 | bytes[4] << 3 | bytes[5] >> 5;
    header.valid = header.sampleRate != 0 && header.bytes >= static_cast<int>(frameHeaderBytes);
    if (header.valid) {
        header.bitRate =
            static_cast<int>(std::int64_t{header.bytes} * 8 * header.sampleRate / header.samples);
    }
    return header;
}

int MpegFrameBytes(const FrameHeader& header, bool padded) {
    const int padding = padded ? 1 : 0;
    // Layer I counts in slots of four bytes, each rounded down before padding.
    if (header.layer == 1) return (12 * header.bitRate / header.sampleRate + padding) * 4;
    return header.samples / 8 * header.bitRate / header.sampleRate + padding;
}

FrameHeader ParseMpeg(Bytes bytes, int versionBits, int layer) {
    FrameHeader header;
    header.version = versionBits == 3 ? 1 : versionBits == 2 ? 2 : 3;
    header.layer = layer;
    const auto row = static_cast<std::size_t>(layer - 1);
    const std::size_t index = bytes[2] >> 4;
    header.bitRate = 1000 * (header.version == 1 ? bitRates1 : bitRates2)[row][index];
    header.sampleRate = sampleRates[header.version - 1][bytes[2] >> 2 & 0x03];
    if (header.bitRate == 0 || header.sampleRate == 0) return header;
    const int mode = bytes[3] >> 6;
    header.channels = mode == 3 ? 1 : 2;
    header.joint = mode == 1;
    header.samples = layer == 1 ? 384 : layer == 3 && header.version != 1 ? 576 : 1152;
    header.bytes = MpegFrameBytes(header, (bytes[2] & 0x02) != 0);
    header.valid = header.bytes >= 4;
    return header;
}

FrameHeader ReadHeader(ByteSource& source, AudioSpan span, std::uint64_t position) {
    if (position >= span.end) return {};
    std::array<std::uint8_t, frameHeaderBytes> bytes{};
    const std::size_t wanted =
        static_cast<std::size_t>(std::min<std::uint64_t>(bytes.size(), span.end - position));
    return ParseFrameHeader(Bytes(bytes.data(), source.ReadAt(position, bytes.data(), wanted)));
}

bool StartsChain(ByteSource& source, AudioSpan span, std::uint64_t position,
                 const FrameHeader& first) {
    std::uint64_t next = position + static_cast<std::uint64_t>(first.bytes);
    for (int i = 1; i < chainLength; ++i) {
        // A file of a frame or two is complete when they end with it.
        if (next == span.end) return true;
        const FrameHeader header = ReadHeader(source, span, next);
        if (!header.valid || !SameStream(first, header)) return false;
        next += static_cast<std::uint64_t>(header.bytes);
        // The last frame of a file is often cut short.
        if (next > span.end) return i >= 2;
    }
    return true;
}

}  // namespace

FrameHeader ParseFrameHeader(Bytes bytes) {
    if (bytes.size() < 4 || bytes[0] != 0xFF || (bytes[1] & 0xE0) != 0xE0) return {};
    const int versionBits = bytes[1] >> 3 & 0x03;
    const int layerBits = bytes[1] >> 1 & 0x03;
    if (versionBits == 1) return {};
    if (layerBits != 0) return ParseMpeg(bytes, versionBits, 4 - layerBits);
    return versionBits >= 2 ? ParseAdts(bytes) : FrameHeader{};
}

bool SameStream(const FrameHeader& one, const FrameHeader& other) {
    return one.adts == other.adts && one.version == other.version && one.layer == other.layer &&
           one.sampleRate == other.sampleRate;
}

FirstFrame FindFirstFrame(ByteSource& source, AudioSpan span, std::uint64_t window) {
    const std::uint64_t searchEnd = span.begin + std::min(window, span.Length());
    std::vector<std::uint8_t> buffer(searchBytes + frameHeaderBytes);
    for (std::uint64_t at = span.begin; at < searchEnd; at += searchBytes) {
        const std::size_t wanted =
            static_cast<std::size_t>(std::min<std::uint64_t>(buffer.size(), span.end - at));
        const Bytes bytes(buffer.data(), source.ReadAt(at, buffer.data(), wanted));
        const std::size_t starts = static_cast<std::size_t>(
            std::min<std::uint64_t>({searchBytes, bytes.size(), searchEnd - at}));
        for (std::size_t i = 0; i < starts; ++i) {
            if (bytes[i] != 0xFF) continue;
            const FrameHeader header = ParseFrameHeader(bytes.subspan(i));
            if (header.valid && StartsChain(source, span, at + i, header))
                return {true, at + i, header};
        }
    }
    return {};
}

}  // namespace companion
