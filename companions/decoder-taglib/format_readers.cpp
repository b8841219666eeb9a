#include "companions/decoder-taglib/format_readers.h"

#include <apefile.h>
#include <dsdifffile.h>
#include <dsffile.h>
#include <flacfile.h>
#include <mpcfile.h>
#include <mpegfile.h>
#include <oggflacfile.h>
#include <opusfile.h>
#include <speexfile.h>
#include <trueaudiofile.h>
#include <vorbisfile.h>
#include <wavpackfile.h>

#include <array>

#include "companions/decoder-taglib/byte_order.h"
#include "companions/decoder-taglib/frame_factory.h"
#include "companions/decoder-taglib/reading.h"

namespace companion {
namespace {

// MPEG audio -------------------------------------------------------------

std::u16string Digits(int value) {
    const std::string digits = std::to_string(value);
    return {digits.begin(), digits.end()};
}

std::u16string MpegCodec(const FrameHeader& header) {
    if (header.adts) {
        constexpr const char16_t* profiles[] = {u"AAC Main", u"AAC-LC", u"AAC SSR", u"AAC LTP"};
        return profiles[header.profile - 1];
    }
    const std::u16string version = header.version == 3 ? u"2.5" : Digits(header.version);
    return u"MPEG-" + version + u" Layer " + Digits(header.layer);
}

double MpegWeight(const FrameHeader& header) {
    if (header.adts) return 1.4;
    return header.layer == 3 ? 1.0 : 0.7;
}

bool ReadMpeg(Reading& reading) {
    const FirstFrame first = FindFirstFrame(reading.source, reading.span, longestJunk);
    if (!first.found) return false;
    const MpegAudio found = ReadMpegAudio(reading.source, reading.span, first);
    AudioFacts& audio = reading.audio;
    audio.channels = first.header.channels;
    audio.sampleRate = first.header.sampleRate;
    audio.joint = first.header.joint;
    audio.order = first.header.adts ? ChannelOrder::Aac : ChannelOrder::Unknown;
    audio.lengthMs = found.lengthMs;
    audio.bytes = found.bytes;
    audio.bitRate = found.bitRate;
    audio.mode = found.mode;
    audio.qualityWeight = MpegWeight(first.header);
    audio.codec = MpegCodec(first.header);
    audio.encoder.assign(found.encoder.begin(), found.encoder.end());
    TagLib::MPEG::File file(&reading.stream, false, fastReading, FrameFactory::Instance());
    TakeId3v2(file.ID3v2Tag(), file.hasID3v2Tag(), reading);
    TakeId3v1(file.hasID3v1Tag(), audio);
    TakeApe(file.APETag(), file.hasAPETag(), reading);
    return TakeTags(file, reading);
}

// FLAC and Ogg -----------------------------------------------------------

bool ReadFlac(Reading& reading) {
    TagLib::FLAC::File file(&reading.stream, true, averageReading, FrameFactory::Instance());
    if (!TakeCommonFacts(file, reading)) return false;
    MarkLossless(reading.audio, file.audioProperties()->bitsPerSample(), u"FLAC");
    reading.audio.bytes -=
        static_cast<std::int64_t>(FlacMetadataBytes(reading.source, reading.span));
    if (file.hasXiphComment()) TakeXiph(file.xiphComment(), reading);
    if (!file.pictureList().isEmpty()) reading.audio.coverArt = true;
    TakeId3v2(file.ID3v2Tag(), file.hasID3v2Tag(), reading);
    TakeId3v1(file.hasID3v1Tag(), reading.audio);
    return TakeTags(file, reading);
}

// The second packet of each Ogg mapping holds the comments, pictures included.
template <typename File>
bool TakeOgg(File& file, Reading& reading) {
    if (!TakeCommonFacts(file, reading)) return false;
    reading.audio.bytes -= file.packet(1).size();
    TakeXiph(file.tag(), reading);
    return TakeTags(file, reading);
}

bool ReadOggFlac(Reading& reading) {
    TagLib::Ogg::FLAC::File file(&reading.stream, true, averageReading);
    if (!file.isValid() || !file.audioProperties()) return false;
    MarkLossless(reading.audio, file.audioProperties()->bitsPerSample(), u"Ogg FLAC");
    return TakeOgg(file, reading);
}

bool ReadOggLossy(Reading& reading, ContentKind kind) {
    AudioFacts& audio = reading.audio;
    audio.order = ChannelOrder::Fixed;
    if (kind == ContentKind::OggVorbis) {
        TagLib::Ogg::Vorbis::File file(&reading.stream, true, averageReading);
        audio.codec = u"Vorbis";
        audio.qualityWeight = 1.3;
        audio.mode = BitRateMode::Variable;
        return TakeOgg(file, reading);
    }
    if (kind == ContentKind::OggOpus) {
        TagLib::Ogg::Opus::File file(&reading.stream, true, averageReading);
        audio.codec = u"Opus";
        audio.qualityWeight = 1.5;
        reading.special.gainIsR128 = true;
        return TakeOgg(file, reading);
    }
    TagLib::Ogg::Speex::File file(&reading.stream, true, averageReading);
    audio.codec = u"Speex";
    return TakeOgg(file, reading);
}

// The others -------------------------------------------------------------

// Flags of a block header, as the WavPack project publishes them.
constexpr std::uint32_t wavPackFloat = 1u << 7;
constexpr std::uint32_t wavPackDsd = 1u << 31;

std::uint32_t WavPackFlags(ByteSource& source, AudioSpan span) {
    std::array<std::uint8_t, 28> header{};
    if (source.ReadAt(span.begin, header.data(), header.size()) != header.size()) return 0;
    return LittleEndian(header, 24, 4);
}

bool ReadWavPack(Reading& reading) {
    TagLib::WavPack::File file(&reading.stream, true, averageReading);
    if (!TakeCommonFacts(file, reading)) return false;
    AudioFacts& audio = reading.audio;
    const std::uint32_t flags = WavPackFlags(reading.source, reading.span);
    const bool lossless = file.audioProperties()->isLossless();
    MarkLossless(audio, file.audioProperties()->bitsPerSample(),
                 lossless ? u"WavPack" : u"WavPack Hybrid");
    audio.lossless = lossless;
    audio.floatingPoint = (flags & wavPackFloat) != 0;
    if ((flags & wavPackDsd) != 0) {
        // Such a file counts bytes of eight samples of one bit.
        audio.sampleRate = audio.sampleRate > 100'000'000 ? 0 : audio.sampleRate * 8;
        audio.bitsPerSample = 1;
        audio.codec = u"WavPack DSD";
    }
    TakeApe(file.APETag(), file.hasAPETag(), reading);
    TakeId3v1(file.hasID3v1Tag(), audio);
    return TakeTags(file, reading);
}

bool ReadMonkeysAudio(Reading& reading) {
    TagLib::APE::File file(&reading.stream, true, averageReading);
    if (!TakeCommonFacts(file, reading)) return false;
    MarkLossless(reading.audio, file.audioProperties()->bitsPerSample(), u"Monkey's Audio");
    reading.audio.order = ChannelOrder::Unknown;
    TakeApe(file.APETag(), file.hasAPETag(), reading);
    TakeId3v1(file.hasID3v1Tag(), reading.audio);
    return TakeTags(file, reading);
}

bool ReadMusepack(Reading& reading) {
    TagLib::MPC::File file(&reading.stream, true, averageReading);
    if (!TakeCommonFacts(file, reading)) return false;
    AudioFacts& audio = reading.audio;
    audio.codec = u"Musepack SV" + Digits(file.audioProperties()->mpcVersion());
    audio.qualityWeight = 1.3;
    audio.mode = BitRateMode::Variable;
    TakeApe(file.APETag(), file.hasAPETag(), reading);
    TakeId3v1(file.hasID3v1Tag(), audio);
    return TakeTags(file, reading);
}

bool ReadTrueAudio(Reading& reading) {
    TagLib::TrueAudio::File file(&reading.stream, true, averageReading, FrameFactory::Instance());
    if (!TakeCommonFacts(file, reading)) return false;
    MarkLossless(reading.audio, file.audioProperties()->bitsPerSample(), u"True Audio");
    reading.audio.order = ChannelOrder::Unknown;
    TakeId3v2(file.ID3v2Tag(), file.hasID3v2Tag(), reading);
    TakeId3v1(file.hasID3v1Tag(), reading.audio);
    // Some writers put an APE tag behind such a file, and TagLib looks for one
    // only in the format that it comes from.
    TagLib::APE::File tagged(&reading.stream, false);
    if (!tagged.hasAPETag() || file.hasID3v2Tag()) return TakeTags(file, reading);
    TakeApe(tagged.APETag(), true, reading);
    return TakeTags(tagged, reading);
}

// One bit per sample: the audio's size follows from the number of samples, but
// for a compressed stream, where only its share of the file is known.
void FillDsd(std::int64_t samples, int kbps, Reading& reading) {
    AudioFacts& audio = reading.audio;
    MarkLossless(audio, 1, u"DSD");
    audio.order = ChannelOrder::Unknown;
    const std::int64_t whole = reading.audio.bytes;
    const double plain = static_cast<double>(samples) * audio.channels / 8;
    if (plain >= 0 && plain <= static_cast<double>(whole)) {
        audio.bytes = static_cast<std::int64_t>(plain);
        audio.bitRate = std::int64_t{audio.sampleRate} * audio.channels;
        audio.mode = BitRateMode::Constant;
    } else {
        audio.bitRate = std::int64_t{kbps} * 1000;
        audio.codec = u"DST";
    }
}

bool ReadDsf(Reading& reading) {
    TagLib::DSF::File file(&reading.stream, true, averageReading, FrameFactory::Instance());
    if (!TakeCommonFacts(file, reading)) return false;
    FillDsd(file.audioProperties()->sampleCount(), 0, reading);
    TakeId3v2(file.tag(), file.tag() && !file.tag()->isEmpty(), reading);
    return TakeTags(file, reading);
}

bool ReadDsdiff(Reading& reading) {
    TagLib::DSDIFF::File file(&reading.stream, true, averageReading, FrameFactory::Instance());
    if (!TakeCommonFacts(file, reading)) return false;
    FillDsd(file.audioProperties()->sampleCount(), file.audioProperties()->bitrate(), reading);
    TakeId3v2(file.ID3v2Tag(), file.hasID3v2Tag(), reading);
    return TakeTags(file, reading);
}

}  // namespace

bool ReadFormat(ContentKind kind, ByteSource& source, AudioSpan span, AudioFacts& audio,
                std::vector<Tag>& tags) {
    Reading reading{source, TagLibStream(source), span, audio, tags, {}};
    switch (kind) {
        case ContentKind::MpegAudio:
        case ContentKind::Adts:
            return ReadMpeg(reading);
        case ContentKind::Flac:
            return ReadFlac(reading);
        case ContentKind::OggFlac:
            return ReadOggFlac(reading);
        case ContentKind::OggVorbis:
        case ContentKind::OggOpus:
        case ContentKind::OggSpeex:
            return ReadOggLossy(reading, kind);
        case ContentKind::Mp4:
            return ReadMp4(reading);
        case ContentKind::Asf:
            return ReadAsf(reading);
        case ContentKind::WavPack:
            return ReadWavPack(reading);
        case ContentKind::MonkeysAudio:
            return ReadMonkeysAudio(reading);
        case ContentKind::Musepack:
            return ReadMusepack(reading);
        case ContentKind::TrueAudio:
            return ReadTrueAudio(reading);
        case ContentKind::Dsf:
            return ReadDsf(reading);
        case ContentKind::Dsdiff:
            return ReadDsdiff(reading);
        case ContentKind::Unknown:
            break;
    }
    return false;
}

}  // namespace companion
