#include "companions/decoder-taglib/stored_audio.h"

#include <array>

#include "companions/decoder-taglib/byte_order.h"

namespace companion {
namespace {

constexpr std::uint64_t id3v1Bytes = 128;
constexpr std::uint64_t id3v2HeaderBytes = 10;
constexpr std::uint64_t apeFooterBytes = 32;
// More tags than this in a row are not a file that anyone wrote.
constexpr int mostTags = 16;

template <std::size_t Count>
std::array<std::uint8_t, Count> ReadPiece(ByteSource& source, std::uint64_t position) {
    std::array<std::uint8_t, Count> piece{};
    if (source.ReadAt(position, piece.data(), Count) != Count) piece.fill(0);
    return piece;
}

// Four bytes of seven bits each; such sizes never look like audio.
std::uint64_t SynchSafe(Bytes bytes, std::size_t position) {
    std::uint64_t value = 0;
    for (const std::uint8_t byte : bytes.subspan(position, 4))
        value = value << 7 | (byte & 0x7Fu);
    return value;
}

std::uint64_t LeadingTag(ByteSource& source, std::uint64_t position) {
    const auto header = ReadPiece<id3v2HeaderBytes>(source, position);
    if (!HasText(header, 0, "ID3")) return 0;
    const bool hasFooter = (header[5] & 0x10) != 0;
    return id3v2HeaderBytes + SynchSafe(header, 6) + (hasFooter ? id3v2HeaderBytes : 0);
}

std::uint64_t TrailingApeTag(ByteSource& source, std::uint64_t end) {
    if (end < apeFooterBytes) return 0;
    const auto footer = ReadPiece<apeFooterBytes>(source, end - apeFooterBytes);
    if (!HasText(footer, 0, "APETAGEX")) return 0;
    const bool hasHeader = (footer[23] & 0x80) != 0;
    const std::uint64_t bytes = LittleEndian(footer, 12, 4);
    return bytes < apeFooterBytes ? 0 : bytes + (hasHeader ? apeFooterBytes : 0);
}

std::uint64_t TrailingId3v2(ByteSource& source, std::uint64_t end) {
    if (end < id3v2HeaderBytes) return 0;
    const auto footer = ReadPiece<id3v2HeaderBytes>(source, end - id3v2HeaderBytes);
    return HasText(footer, 0, "3DI") ? SynchSafe(footer, 6) + 2 * id3v2HeaderBytes : 0;
}

std::uint64_t TrailingTag(ByteSource& source, std::uint64_t end) {
    if (end >= id3v1Bytes && HasText(ReadPiece<3>(source, end - id3v1Bytes), 0, "TAG"))
        return id3v1Bytes;
    if (const std::uint64_t ape = TrailingApeTag(source, end)) return ape;
    return TrailingId3v2(source, end);
}

}  // namespace

AudioSpan FindAudioSpan(ByteSource& source) {
    AudioSpan span{0, source.Size()};
    for (int i = 0; i < mostTags; ++i) {
        const std::uint64_t tag = LeadingTag(source, span.begin);
        if (tag == 0) break;
        if (tag > span.Length()) return {span.end, span.end};
        span.begin += tag;
    }
    for (int i = 0; i < mostTags; ++i) {
        const std::uint64_t tag = TrailingTag(source, span.end);
        if (tag == 0 || tag > span.Length()) break;
        span.end -= tag;
    }
    return span;
}

std::uint64_t FlacMetadataBytes(ByteSource& source, AudioSpan span) {
    if (!HasText(ReadPiece<4>(source, span.begin), 0, "fLaC")) return 0;
    std::uint64_t bytes = 4;
    // The last block is marked; a stream that never marks one ends the walk at
    // its end.
    for (bool last = false; !last && bytes + 4 <= span.Length();) {
        const auto header = ReadPiece<4>(source, span.begin + bytes);
        last = (header[0] & 0x80) != 0;
        bytes += 4 + BigEndian(header, 1, 3);
    }
    return bytes <= span.Length() ? bytes : 0;
}

}  // namespace companion
