#include <mp4file.h>

#include <optional>

#include "companions/decoder-taglib/format_readers.h"
#include "companions/decoder-taglib/mp4_nesting.h"
#include "companions/decoder-taglib/mp4_track.h"
#include "companions/decoder-taglib/rating.h"
#include "companions/decoder-taglib/reading.h"

namespace companion {
namespace {

struct Mp4Codec {
    const char* format;
    const char16_t* name;
    double weight;
    bool lossless;
};

constexpr Mp4Codec mp4Codecs[] = {
    {"alac", u"ALAC", 1.0, true},    {"fLaC", u"FLAC", 1.0, true},
    {"Opus", u"Opus", 1.5, false},   {"ac-3", u"AC-3", 0.8, false},
    {"ec-3", u"E-AC-3", 1.0, false}, {".mp3", u"MPEG Layer 3", 1.0, false},
    {"samr", u"AMR", 1.0, false},    {"sowt", u"PCM", 1.0, true},
    {"twos", u"PCM", 1.0, true},     {"lpcm", u"PCM", 1.0, true},
};

std::u16string AacName(int type) {
    switch (type) {
        case 1:
            return u"AAC Main";
        case 2:
            return u"AAC-LC";
        case 5:
            return u"HE-AAC";
        case 29:
            return u"HE-AAC v2";
        case 42:
            return u"xHE-AAC";
        default:
            return u"AAC";
    }
}

// "mp4a" stands for all that MPEG-4 registered, and a number says which.
void NameMp4a(const Mp4Track& track, AudioFacts& audio) {
    audio.qualityWeight = 1.0;
    if (track.objectType == 0x69 || track.objectType == 0x6B) {
        audio.codec = u"MPEG Layer 3";
    } else if (track.objectType == 0xA5) {
        audio.codec = u"AC-3";
    } else if (track.objectType == 0xA9) {
        audio.codec = u"DTS";
    } else {
        audio.codec = AacName(track.aacType);
        audio.qualityWeight = track.aacType == 5 || track.aacType == 29 ? 2.0 : 1.4;
        audio.order = ChannelOrder::Aac;
    }
}

void NameMp4Codec(const Mp4Track& track, AudioFacts& audio) {
    if (track.format == "mp4a") return NameMp4a(track, audio);
    for (const Mp4Codec& codec : mp4Codecs) {
        if (track.format != codec.format) continue;
        audio.codec = codec.name;
        audio.qualityWeight = codec.weight;
        if (codec.lossless) MarkLossless(audio, track.bitsPerSample, codec.name);
        return;
    }
    // Unknown: its own code says more than nothing.
    for (const char unit : track.format)
        audio.codec.push_back(unit >= 0x20 && unit < 0x7F ? static_cast<char16_t>(unit) : u'?');
}

std::optional<int> Mp4Rating(const TagLib::MP4::Tag& tag) {
    for (const char* name : {"----:com.apple.iTunes:RATING", "rate"}) {
        if (!tag.contains(name)) continue;
        const TagLib::StringList values = tag.item(name).toStringList();
        if (values.isEmpty()) continue;
        if (const auto rating = RatingFromText(values.front().to8Bit(true))) return rating;
    }
    return std::nullopt;
}

}  // namespace

bool ReadMp4(Reading& reading) {
    Mp4Track track;
    if (!Mp4NestingIsSane(reading.source) || !ReadMp4Track(reading.source, track)) return false;
    AudioFacts& audio = reading.audio;
    audio.channels = track.channels;
    audio.sampleRate = track.sampleRate;
    audio.lengthMs = track.lengthMs;
    audio.bytes = track.bytes;
    audio.encrypted = track.encrypted;
    NameMp4Codec(track, audio);
    TagLib::MP4::File file(&reading.stream, false, averageReading);
    // The facts stand by themselves: a file without readable tags is a file.
    if (!file.isValid() || !file.tag()) return true;
    if (file.hasMP4Tag()) audio.tagKinds.push_back(u"MP4");
    audio.coverArt = file.tag()->contains("covr");
    reading.special.rating = Mp4Rating(*file.tag());
    return TakeTags(file, reading);
}

}  // namespace companion
