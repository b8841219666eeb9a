#include "companions/decoder-pcm/wave_format.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "companions/decoder-pcm/containers.h"
#include "companions/decoder-pcm/tag_keys.h"
#include "companions/decoder-pcm/text.h"

namespace companion::pcm {
namespace {

constexpr std::uint16_t tagExtensible = 0xFFFE;

// Bytes 4 to 15 of a sub-format: of the format tags, and of the two formats
// for Ambisonics that use the tags of PCM and float.
constexpr std::string_view mediaSuffix("\x00\x00\x10\x00\x80\x00\x00\xAA\x00\x38\x9B\x71", 12);
constexpr std::string_view ambisonicSuffix("\x21\x07\xD3\x11\x86\x44\xC8\xC1\xCA\x00\x00\x00", 12);

struct InfoRule {
    std::string_view id;
    std::u16string_view key;  // as AddKeyed takes it
};

constexpr InfoRule infoRules[] = {
    {"INAM", u"title"},     {"IART", u"artist"},     {"IPRD", u"album"},
    {"IALB", u"album"},     {"ITRK", u"track"},      {"IPRT", u"track"},
    {"TRCK", u"track"},     {"IFRM", u"tracktotal"}, {"ICRD", u"year"},
    {"IYER", u"year"},      {"IGNR", u"genre"},      {"ICMT", u"comment"},
    {"ICOP", u"copyright"}, {"ITCH", u"encodedby"},  {"IENC", u"encodedby"},
    {"ISFT", u"encoder"},   {"IMUS", u"composer"},   {"IAAR", u"albumartist"},
    {"IBPM", u"bpm"},       {"IPUB", u"label"},      {"IRTD", u"rating"},
    {"IDIS", u"disc"},      {"ICND", u"conductor"},  {"ICNM", u"conductor"},
};

Codec CodecOfSubFormat(const Bytes& guid) {
    const std::string_view suffix = guid.Text(4, 12);
    if (suffix == mediaSuffix && guid.U16(2) == 0) return CodecOfWaveTag(guid.U16(0));
    // Its second half of the first number is 0 too, and the rest begins anew.
    if (suffix == ambisonicSuffix) return CodecOfWaveTag(guid.U16(0));
    return Codec::unknown;
}

// Samples of one channel in a block, as the coding's own arithmetic has it:
// each channel has a header that holds the first one or two samples.
std::uint32_t AdpcmFrames(const Stream& stream) {
    const std::uint32_t header = stream.codec == Codec::msAdpcm ? 7u : 4u;
    const std::uint32_t first = stream.codec == Codec::msAdpcm ? 2u : 1u;
    const std::uint32_t headers = header * stream.channels;
    if (stream.channels == 0 || stream.channels > 256 || stream.blockBytes <= headers) return 0;
    const std::uint32_t bits = stream.codec == Codec::imaAdpcm && stream.validBits == 3 ? 3 : 4;
    return (stream.blockBytes - headers) * 8 / (bits * stream.channels) + first;
}

void TakeBlocks(const Bytes& chunk, Stream& stream) {
    const bool hasExtra = chunk.U16(16) >= 2 && chunk.Has(18, 2);
    switch (stream.codec) {
        case Codec::msAdpcm:
        case Codec::imaAdpcm:
            stream.framesPerBlock = hasExtra ? chunk.U16(18) : 0;
            if (stream.framesPerBlock == 0) stream.framesPerBlock = AdpcmFrames(stream);
            break;
        case Codec::gsm610:
            stream.framesPerBlock = hasExtra ? chunk.U16(18) : 320;
            break;
        case Codec::yamahaAdpcm:
        case Codec::g721:
        case Codec::g723:
            // A block of a byte or so, each sample of a few bits: the byte rate
            // tells the length.
            stream.framesPerBlock = 0;
            break;
        default:
            break;
    }
}

}  // namespace

bool TakeWaveFormat(const Bytes& chunk, Stream& stream) {
    constexpr std::size_t shortest = 14;
    if (chunk.Size() < shortest) return false;
    const std::uint16_t tag = chunk.U16(0);
    stream.codec = CodecOfWaveTag(tag);
    stream.channels = chunk.U16(2);
    stream.sampleRate = chunk.U32(4);
    stream.averageBytesPerSecond = chunk.U32(8);
    stream.blockBytes = chunk.U16(12);
    stream.validBits = chunk.U16(14);
    if (tag == tagExtensible && chunk.Has(24, 16)) {
        stream.codec = CodecOfSubFormat(chunk.Part(24, 16));
        const std::uint32_t valid = chunk.U16(18);
        if (IsSampleCoded(stream.codec) && stream.channels != 0) {
            // The container's bits are those of the plain field; a damaged
            // count of valid ones is not to make them more.
            const std::uint32_t place = stream.validBits;
            if (stream.blockBytes == 0) stream.blockBytes = place / 8 * stream.channels;
            if (valid != 0 && valid <= place) stream.validBits = valid;
        }
        stream.channelMask = chunk.U32(20);
    } else if (!IsSampleCoded(stream.codec)) {
        TakeBlocks(chunk, stream);
    }
    if (stream.codec == Codec::aLaw || stream.codec == Codec::muLaw) {
        stream.validBits = 8;
        stream.blockBytes = 0;
    }
    return true;
}

void AddInfoField(std::string_view id, std::u16string_view value, Findings& findings) {
    const auto rule = std::find_if(std::begin(infoRules), std::end(infoRules),
                                   [id](const InfoRule& row) { return row.id == id; });
    if (rule != std::end(infoRules)) AddKeyed(findings, findings.nativeTags, rule->key, value);
}

void TakeInfoList(const Bytes& list, Findings& findings) {
    constexpr std::size_t longestText = std::size_t{256} << 10;
    std::size_t position = 0;
    for (int i = 0; i < mostChunks && list.Has(position, 8); ++i) {
        const std::size_t size = list.U32(position + 4);
        const std::string_view text = list.Text(position + 8, std::min(size, longestText));
        NoteKind(findings, u"INFO");
        AddInfoField(list.Text(position, 4), FromUnknown(text), findings);
        position += 8 + size + size % 2;
        // Some writers leave the filling byte out.
        if (size % 2 == 1 && list.Has(position, 0) && list.U8(position - 1) != 0) --position;
    }
}

}  // namespace companion::pcm
