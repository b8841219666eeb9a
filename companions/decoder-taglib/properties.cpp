#include "companions/decoder-taglib/properties.h"

#include <algorithm>
#include <limits>

#include "companions/common/quality.h"
#include "companions/common/values.h"

namespace companion {
namespace {

constexpr int mostChannels = 255;
constexpr int highestRate = 64 * 44100 * 16;  // beyond the fastest DSD in use
constexpr std::uint16_t pcmTag = 1;
constexpr std::uint16_t floatTag = 3;

std::int64_t BitRate(const AudioFacts& audio) {
    if (audio.bitRate > 0) return audio.bitRate;
    if (audio.lengthMs <= 0 || audio.bytes <= 0) return 0;
    return static_cast<std::int64_t>(static_cast<double>(audio.bytes) * 8000.0 /
                                     static_cast<double>(audio.lengthMs));
}

std::u16string ChannelLayout(const AudioFacts& audio) {
    constexpr const char16_t* fixed[] = {u"3.0", u"4.0", u"5.0", u"5.1", u"6.1", u"7.1"};
    if (audio.channels == 1) return u"Mono";
    if (audio.channels == 2) return audio.joint ? u"Joint Stereo" : u"Stereo";
    if (audio.order == ChannelOrder::Unknown || audio.channels < 3 || audio.channels > 8) return {};
    // AAC has no layout of its own for seven channels.
    if (audio.order == ChannelOrder::Aac && audio.channels == 7) return {};
    return fixed[audio.channels - 3];
}

std::u16string ModeName(BitRateMode mode) {
    switch (mode) {
        case BitRateMode::Constant:
            return u"Constant";
        case BitRateMode::Average:
            return u"Average";
        case BitRateMode::Variable:
            return u"Variable";
        case BitRateMode::Unknown:
            break;
    }
    return {};
}

}  // namespace

const char16_t* PropertyNames() {
    return u"Audio Quality\rCodec\rEncoder\rChannel Layout\rBit Rate Mode\rID Tag\r"
           u"Cover Art\rEncrypted";
}

void FillFacts(const AudioFacts& audio, FileFacts& facts) {
    const bool possible = audio.channels > 0 && audio.channels <= mostChannels &&
                          audio.sampleRate > 0 && audio.sampleRate <= highestRate;
    const int channels = possible ? audio.channels : 0;
    const int sampleRate = possible ? audio.sampleRate : 0;
    const int bits = std::clamp(audio.bitsPerSample, 1, 64);
    const int align = channels * bits / 8;
    facts.format.formatTag = audio.floatingPoint ? floatTag : pcmTag;
    facts.format.channels = static_cast<std::uint16_t>(channels);
    facts.format.samplesPerSecond = static_cast<std::uint32_t>(sampleRate);
    facts.format.blockAlign = static_cast<std::uint16_t>(align);
    facts.format.averageBytesPerSecond = static_cast<std::uint32_t>(
        std::min(std::int64_t{sampleRate} * align, std::int64_t{0xFFFFFFFF}));
    facts.format.bitsPerSample = static_cast<std::uint16_t>(bits);
    facts.lengthMs = std::max<std::int64_t>(0, audio.lengthMs);
    facts.sourceBytes = std::max<std::int64_t>(0, audio.bytes);
    facts.bitRate = static_cast<std::int32_t>(
        std::clamp<std::int64_t>(BitRate(audio), 0, std::numeric_limits<std::int32_t>::max()));
}

std::vector<Tag> DescribeProperties(const AudioFacts& audio) {
    std::vector<Tag> properties;
    const auto add = [&](const char16_t* name, std::u16string value) {
        if (!value.empty()) properties.push_back({name, std::move(value), {}});
    };
    add(u"Audio Quality", audio.lossless ? LosslessQuality(audio.bitsPerSample, audio.sampleRate)
                                         : LossyQuality(static_cast<double>(BitRate(audio)),
                                                        audio.channels, audio.qualityWeight));
    add(u"Codec", audio.codec);
    add(u"Encoder", audio.encoder);
    add(u"Channel Layout", ChannelLayout(audio));
    add(u"Bit Rate Mode", ModeName(audio.mode));
    add(u"ID Tag", JoinedValues(audio.tagKinds));
    add(u"Cover Art", audio.coverArt ? u"Yes" : u"No");
    if (audio.encrypted) add(u"Encrypted", *audio.encrypted ? u"Yes" : u"No");
    return properties;
}

}  // namespace companion
