#include "companions/decoder-pcm/stream.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <limits>

#include "companions/common/quality.h"
#include "companions/decoder-pcm/text.h"

namespace companion::pcm {
namespace {

constexpr std::uint32_t mostChannels = 1024;
constexpr double highestRate = 100e6;  // DSD as PCM and far beyond
constexpr std::uint64_t mostFrames = std::uint64_t{1} << 56;
constexpr std::uint64_t mostFramesPerByte = 65536;  // no coding packs more into a byte

constexpr std::uint16_t tagPcm = 1;
constexpr std::uint16_t tagFloat = 3;
constexpr std::uint16_t tagExtensible = 0xFFFE;
constexpr std::uint32_t lowFrequency = 0x8;

// Bytes 4 to 15 that all KSDATAFORMAT_SUBTYPE identifiers of format tags share.
constexpr std::array<std::uint8_t, 12> mediaSuffix = {0x00, 0x00, 0x10, 0x00, 0x80, 0x00,
                                                      0x00, 0xAA, 0x00, 0x38, 0x9B, 0x71};

std::uint32_t DefaultMask(std::uint32_t channels) {
    constexpr std::array<std::uint32_t, 9> masks = {0,    0x4,  0x3,   0x7,  0x33,
                                                    0x37, 0x3F, 0x70F, 0x63F};
    return channels < masks.size() ? masks[channels] : 0;
}

std::uint32_t MaskOf(const Stream& stream) {
    const bool fits = std::popcount(stream.channelMask) == static_cast<int>(stream.channels);
    return fits ? stream.channelMask : DefaultMask(stream.channels);
}

bool IsPlain(Codec codec) {
    return codec == Codec::pcm || codec == Codec::ieeeFloat;
}

// Bits of a sample's place in the decoded audio.
std::uint32_t DecodedBits(const Stream& stream) {
    if (IsPlain(stream.codec)) return stream.storedBits;
    if (!TraitsOf(stream.codec).lossless || stream.validBits == 0) return 16;
    return (stream.validBits + 7) / 8 * 8;
}

void Put(std::vector<std::uint8_t>& bytes, std::uint32_t value, int count) {
    for (int i = 0; i < count; ++i)
        bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
}

void SettleSampleBits(Stream& stream) {
    const std::uint32_t frameBytes = stream.blockBytes;
    const std::uint32_t least = (stream.validBits + 7) / 8;
    // The block is believed where it divides and holds the bits: 24 bits in
    // places of 32 are told by nothing else.
    constexpr std::uint32_t mostBytes = 8;
    const bool believed = frameBytes != 0 && frameBytes % stream.channels == 0 &&
                          frameBytes / stream.channels >= least &&
                          frameBytes / stream.channels <= mostBytes;
    const std::uint32_t place = believed ? frameBytes / stream.channels : least;
    stream.storedBits = place * 8;
    if (stream.validBits == 0) stream.validBits = stream.storedBits;
    stream.blockBytes = place * stream.channels;
    stream.framesPerBlock = 1;
}

// value x factor / divisor without leaving 64 bits on the way; `factor` and
// `divisor` are below 2^32 and `divisor` is not 0.
std::uint64_t Scaled(std::uint64_t value, std::uint64_t factor, std::uint64_t divisor) {
    const std::uint64_t whole = value / divisor;
    if (factor != 0 && whole > std::numeric_limits<std::uint64_t>::max() / factor / 2)
        return std::numeric_limits<std::uint64_t>::max() / 2;
    return whole * factor + value % divisor * factor / divisor;
}

std::uint32_t RoundedRate(const Stream& stream) {
    return static_cast<std::uint32_t>(std::lround(stream.sampleRate));
}

std::uint64_t Capacity(const Stream& stream) {
    if (IsSampleCoded(stream.codec)) return stream.dataBytes / stream.blockBytes;
    return Scaled(stream.dataBytes, stream.framesPerBlock, stream.blockBytes);
}

}  // namespace

bool Settle(Stream& stream) {
    if (!(stream.sampleRate >= 0.5 && stream.sampleRate <= highestRate)) return false;
    if (stream.channels == 0 || stream.channels > mostChannels) return false;
    // Beyond what a wave format says of a sample; the sums of bits would wrap too.
    if (stream.validBits > std::numeric_limits<std::uint16_t>::max()) return false;
    if (IsSampleCoded(stream.codec)) SettleSampleBits(stream);
    constexpr std::uint32_t mostBits = 64;
    if (IsPlain(stream.codec) && (stream.storedBits == 0 || stream.storedBits > mostBits))
        return false;
    const std::uint64_t block = std::uint64_t{stream.channels} * DecodedBits(stream) / 8;
    return DecodedBits(stream) <= mostBits && block <= std::numeric_limits<std::uint16_t>::max();
}

std::uint64_t FramesOf(const Stream& stream) {
    const std::uint64_t declared = stream.declaredFrames;
    if (stream.blockBytes != 0 && stream.framesPerBlock != 0) {
        const std::uint64_t capacity = std::min(Capacity(stream), mostFrames);
        // The last block is padded, and a writer may count it as a whole one.
        const std::uint64_t padded =
            IsSampleCoded(stream.codec) ? capacity : capacity + stream.framesPerBlock;
        return declared != 0 && declared <= padded ? declared : capacity;
    }
    const bool believed =
        declared != 0 && declared <= mostFrames && declared / mostFramesPerByte <= stream.dataBytes;
    if (believed) return declared;
    if (stream.averageBytesPerSecond == 0) return 0;
    return std::min(Scaled(stream.dataBytes, RoundedRate(stream), stream.averageBytesPerSecond),
                    mostFrames);
}

std::int64_t LengthMs(const Stream& stream, std::uint64_t frames) {
    const std::uint32_t rate = RoundedRate(stream);
    if (std::floor(stream.sampleRate) == stream.sampleRate && rate != 0)
        return static_cast<std::int64_t>(Scaled(frames, 1000, rate));
    const double seconds = static_cast<double>(frames) / stream.sampleRate;
    return static_cast<std::int64_t>(seconds * 1000.0);
}

std::int64_t SourceBytes(const Stream& stream, std::uint64_t frames) {
    constexpr std::uint64_t most = std::numeric_limits<std::int64_t>::max();
    const bool exact = IsSampleCoded(stream.codec);
    return static_cast<std::int64_t>(
        std::min(exact ? frames * stream.blockBytes : stream.dataBytes, most));
}

std::int32_t BitRate(const Stream& stream, std::uint64_t frames) {
    constexpr double most = std::numeric_limits<std::int32_t>::max();
    double rate = 0;
    if (IsSampleCoded(stream.codec))
        rate = std::round(stream.sampleRate) * stream.channels * stream.storedBits;
    else if (frames != 0)
        rate = 8.0 * static_cast<double>(stream.dataBytes) * stream.sampleRate /
               static_cast<double>(frames);
    else
        rate = 8.0 * stream.averageBytesPerSecond;
    return static_cast<std::int32_t>(std::min(std::floor(rate + 0.5), most));
}

WaveFormat DecodedFormat(const Stream& stream) {
    const std::uint32_t bits = DecodedBits(stream);
    const bool isFloat = stream.codec == Codec::ieeeFloat;
    WaveFormat format;
    format.channels = static_cast<std::uint16_t>(stream.channels);
    format.samplesPerSecond = std::max<std::uint32_t>(1, RoundedRate(stream));
    format.bitsPerSample = static_cast<std::uint16_t>(bits);
    format.blockAlign = static_cast<std::uint16_t>(stream.channels * (bits / 8));
    const std::uint64_t bytesPerSecond = std::uint64_t{format.samplesPerSecond} * format.blockAlign;
    format.averageBytesPerSecond = static_cast<std::uint32_t>(
        std::min<std::uint64_t>(bytesPerSecond, std::numeric_limits<std::uint32_t>::max()));
    format.formatTag = isFloat ? tagFloat : tagPcm;
    if (stream.channels <= 2 && (isFloat || bits <= 16)) return format;

    Put(format.extension, stream.validBits != 0 ? std::min(stream.validBits, bits) : bits, 2);
    Put(format.extension, MaskOf(stream), 4);
    Put(format.extension, format.formatTag, 4);
    format.extension.insert(format.extension.end(), mediaSuffix.begin(), mediaSuffix.end());
    format.formatTag = tagExtensible;
    return format;
}

std::u16string QualityText(const Stream& stream, std::int32_t bitRate) {
    const CodecTraits& traits = TraitsOf(stream.codec);
    if (!traits.lossless)
        return LossyQuality(bitRate, static_cast<int>(stream.channels), traits.weight);
    const std::uint32_t bits = stream.validBits != 0 ? stream.validBits : 16;
    return LosslessQuality(static_cast<int>(bits), static_cast<int>(RoundedRate(stream)));
}

std::u16string LayoutText(const Stream& stream) {
    if (stream.channels == 1) return u"Mono";
    if (stream.channels == 2) return u"Stereo";
    const std::uint32_t mask = MaskOf(stream);
    if (mask == 0) return {};
    const std::uint32_t low = (mask & lowFrequency) != 0 ? 1 : 0;
    return Decimal(stream.channels - low) + u"." + Decimal(low);
}

}  // namespace companion::pcm
