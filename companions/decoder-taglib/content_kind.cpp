#include "companions/decoder-taglib/content_kind.h"

#include <array>
#include <initializer_list>
#include <string_view>

#include "companions/decoder-taglib/byte_order.h"
#include "companions/decoder-taglib/mpeg_frame.h"

namespace companion {
namespace {

using namespace std::string_view_literals;

constexpr std::size_t headBytes = 512;

struct Mark {
    std::size_t position;
    std::string_view text;
    ContentKind kind;
};

constexpr Mark marks[] = {
    {0, "fLaC"sv, ContentKind::Flac},
    {4, "ftyp"sv, ContentKind::Mp4},
    {0, "\x30\x26\xB2\x75\x8E\x66\xCF\x11\xA6\xD9\x00\xAA\x00\x62\xCE\x6C"sv, ContentKind::Asf},
    {0, "wvpk"sv, ContentKind::WavPack},
    {0, "MAC "sv, ContentKind::MonkeysAudio},
    {0, "MPCK"sv, ContentKind::Musepack},
    {0, "MP+"sv, ContentKind::Musepack},
    {0, "TTA1"sv, ContentKind::TrueAudio},
    {0, "DSD "sv, ContentKind::Dsf},
    {0, "FRM8"sv, ContentKind::Dsdiff},
};

// The first packet of an Ogg stream begins behind the page's segment table
// (RFC 3533, 6).
ContentKind OggContent(Bytes head) {
    if (head.size() < 28) return ContentKind::Unknown;
    const std::size_t packet = 27u + head[26];
    if (HasText(head, packet, "\x01vorbis")) return ContentKind::OggVorbis;
    if (HasText(head, packet, "OpusHead")) return ContentKind::OggOpus;
    if (HasText(head, packet, "Speex   ")) return ContentKind::OggSpeex;
    if (HasText(head, packet,
                "\x7F"sv
                "FLAC"sv))
        return ContentKind::OggFlac;
    // The mapping that was in use before the one above was settled.
    if (HasText(head, packet, "fLaC")) return ContentKind::OggFlac;
    return ContentKind::Unknown;
}

bool IsOneOf(std::u16string_view text, std::initializer_list<std::u16string_view> choices) {
    for (const std::u16string_view choice : choices) {
        if (text == choice) return true;
    }
    return false;
}

ContentKind FrameContent(ByteSource& source, AudioSpan span, std::u16string_view extension) {
    const bool expected = IsOneOf(extension, {u".mp3", u".mp2", u".mp1", u".aac"});
    // Junk in front of the first frame is common in such files; elsewhere a
    // frame counts only where the stream begins.
    const FirstFrame first = FindFirstFrame(source, span, expected ? longestJunk : 1);
    if (!first.found) return ContentKind::Unknown;
    return first.header.adts ? ContentKind::Adts : ContentKind::MpegAudio;
}

// Streams of version 4 to 6 have no mark. The fields in front of the version
// are zero in all that can still be decoded, and one more has one value only.
bool IsOldMusepack(Bytes head) {
    if (head.size() < 8) return false;
    const std::uint32_t fields = LittleEndian(head, 0, 4);
    const std::uint32_t version = fields >> 11 & 0x3FF;
    return version >= 4 && version <= 6 && fields >> 23 == 0 && (fields >> 22 & 1) == 0;
}

bool IsBoxed(Bytes head) {
    for (const std::string_view box : {"moov"sv, "mdat"sv, "free"sv, "skip"sv, "wide"sv}) {
        if (HasText(head, 4, box)) return true;
    }
    return false;
}

}  // namespace

ContentKind DetectContent(ByteSource& source, AudioSpan span, std::u16string_view extension) {
    std::array<std::uint8_t, headBytes> buffer{};
    const Bytes head(buffer.data(), source.ReadAt(span.begin, buffer.data(), buffer.size()));
    if (HasText(head, 0, "OggS")) return OggContent(head);
    for (const Mark& mark : marks) {
        if (HasText(head, mark.position, mark.text)) return mark.kind;
    }
    // These belong to the other library, even where they hold MPEG frames.
    for (const std::string_view foreign : {"RIFF"sv, "RF64"sv, "FORM"sv, "caff"sv, ".snd"sv}) {
        if (HasText(head, 0, foreign)) return ContentKind::Unknown;
    }
    if (IsOneOf(extension, {u".m4a", u".m4b", u".mp4"}) && IsBoxed(head)) return ContentKind::Mp4;
    if (extension == u".mpc" && IsOldMusepack(head)) return ContentKind::Musepack;
    return FrameContent(source, span, extension);
}

}  // namespace companion
