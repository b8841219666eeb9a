#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>

#include "companions/decoder-pcm/containers.h"
#include "companions/decoder-pcm/id3v2.h"
#include "companions/decoder-pcm/tag_keys.h"
#include "companions/decoder-pcm/text.h"

namespace companion::pcm {
namespace {

constexpr std::size_t longestText = std::size_t{256} << 10;
constexpr std::uint32_t imaFrames = 64;
constexpr std::uint32_t imaBytes = 34;  // of one channel

std::size_t Bounded(std::uint64_t size, std::size_t most) {
    return static_cast<std::size_t>(std::min<std::uint64_t>(size, most));
}

// A number in the extended precision of IEEE 754, ten bytes; 0 for what no
// sample rate can be.
double ExtendedNumber(const Bytes& bytes, std::size_t offset) {
    constexpr int bias = 16383;
    constexpr int fractionBits = 63;
    const std::uint16_t head = bytes.U16(offset);
    const int exponent = (head & 0x7FFF) - bias;
    if ((head & 0x8000) != 0 || exponent < -8 || exponent > 40) return 0;
    return std::ldexp(static_cast<double>(bytes.U64(offset + 2)), exponent - fractionBits);
}

class AiffFile {
public:
    AiffFile(ByteReader& reader, Findings& findings, bool compressed)
        : _reader(reader), _findings(findings), _compressed(compressed) {}

    bool Read() {
        std::uint64_t position = 12;
        for (int i = 0; i < mostChunks && _reader.Left(position) >= 8; ++i) {
            const auto header = _reader.Block(position, 8);
            const Bytes bytes(header, ByteOrder::big);
            const std::uint64_t start = position + 8;
            const std::uint64_t size = std::min<std::uint64_t>(bytes.U32(4), _reader.Left(start));
            TakeChunk(bytes.Text(0, 4), start, size);
            if (size != bytes.U32(4)) break;
            position = start + size + size % 2;
        }
        return _hasCommon && Finish();
    }

private:
    void TakeChunk(std::string_view id, std::uint64_t start, std::uint64_t size) {
        if (id == "COMM" && !_hasCommon) {
            TakeCommon(start, size);
        } else if (id == "SSND" && !_hasSound) {
            TakeSound(start, size);
        } else if (id == "NAME") {
            TakeText(u"title", start, size);
        } else if (id == "AUTH") {
            TakeText(u"artist", start, size);
        } else if (id == "(c) ") {
            TakeText(u"copyright", start, size);
        } else if (id == "ANNO") {
            TakeText(u"comment", start, size);
        } else if (id == "COMT") {
            TakeComments(start, size);
        } else if (id == "ID3 " || id == "id3 ") {
            ReadId3v2(_reader, start, size, _findings);
        }
    }

    void TakeCommon(std::uint64_t start, std::uint64_t size) {
        constexpr std::size_t shortest = 18;
        const auto block = _reader.Block(start, Bounded(size, 512));
        const Bytes bytes(block, ByteOrder::big);
        if (bytes.Size() < shortest) return;
        _hasCommon = true;
        Stream& stream = _findings.stream;
        stream.channels = bytes.U16(0);
        stream.declaredFrames = bytes.U32(2);
        stream.validBits = bytes.U16(6);
        stream.sampleRate = ExtendedNumber(bytes, 8);
        const std::string_view type = _compressed ? bytes.Text(18, 4) : std::string_view("NONE");
        const FourCode code = CodecOfAifcType(type);
        stream.codec = code.codec;
        TakeCoding(code, type);
    }

    // Packets of the codings that put several samples into one.
    void TakeCoding(const FourCode& code, std::string_view type) {
        Stream& stream = _findings.stream;
        if (IsSampleCoded(code.codec)) {
            if (code.bits != 0) stream.validBits = code.bits;
            return;
        }
        const std::uint32_t channels = std::min<std::uint32_t>(stream.channels, 1024);
        stream.validBits = 0;
        if (code.codec == Codec::appleIma) {
            stream.blockBytes = imaBytes * channels;
            stream.framesPerBlock = imaFrames;
        } else if (code.codec == Codec::gsm610) {
            stream.blockBytes = 33;
            stream.framesPerBlock = 160;
        } else if (code.codec == Codec::mace) {
            stream.blockBytes = (type == "MAC3" ? 2 : 1) * channels;
            stream.framesPerBlock = 6;
        }
    }

    void TakeSound(std::uint64_t start, std::uint64_t size) {
        constexpr std::uint64_t ownBytes = 8;
        const auto block = _reader.Block(start, ownBytes);
        const std::uint64_t offset = Bytes(block, ByteOrder::big).U32(0);
        const std::uint64_t audio = size > ownBytes ? size - ownBytes : 0;
        _hasSound = true;
        // The offset aligns the audio to blocks; one that leaves nothing is
        // damage, and the audio then starts at once.
        _findings.stream.dataBytes = offset < audio ? audio - offset : audio;
    }

    void TakeText(std::u16string_view key, std::uint64_t start, std::uint64_t size) {
        const auto block = _reader.Block(start, Bounded(size, longestText));
        const Bytes bytes(block, ByteOrder::big);
        NoteKind(_findings, u"AIFF");
        AddKeyed(_findings, _findings.nativeTags, key, FromUnknown(bytes.Text()));
    }

    // Comments with a time and a marker, of which only those count that are
    // about the whole file.
    void TakeComments(std::uint64_t start, std::uint64_t size) {
        const auto block = _reader.Block(start, Bounded(size, longestText));
        const Bytes bytes(block, ByteOrder::big);
        const std::uint32_t count = bytes.U16(0);
        std::size_t position = 2;
        for (std::uint32_t i = 0; i < count && bytes.Has(position, 8); ++i) {
            const std::size_t length = bytes.U16(position + 6);
            if (bytes.U16(position + 4) == 0) {
                NoteKind(_findings, u"AIFF");
                AddKeyed(_findings, _findings.nativeTags, u"comment",
                         FromUnknown(bytes.Text(position + 8, length)));
            }
            position += 8 + length + length % 2;
        }
    }

    bool Finish() {
        Stream& stream = _findings.stream;
        if (stream.declaredFrames == 0) return true;
        if (!_hasSound) return false;
        if (!IsSampleCoded(stream.codec) && stream.blockBytes != 0) CountFrames();
        return true;
    }

    // Apple counts packets where others count samples. Samples end within the
    // last packet, or behind it in a file that was cut; fewer are packets.
    void CountFrames() {
        Stream& stream = _findings.stream;
        const std::uint64_t packets = stream.dataBytes / stream.blockBytes;
        const std::uint64_t before = packets == 0 ? 0 : (packets - 1) * stream.framesPerBlock;
        if (stream.declaredFrames <= packets || stream.declaredFrames <= before)
            stream.declaredFrames *= stream.framesPerBlock;
    }

    ByteReader& _reader;
    Findings& _findings;
    bool _compressed;
    bool _hasCommon = false;
    bool _hasSound = false;
};

}  // namespace

bool ReadAiff(ByteReader& reader, Findings& findings) {
    const auto head = reader.Block(0, 12);
    const std::string_view magic = Bytes(head, ByteOrder::big).Text();
    if (magic.size() != 12 || magic.substr(0, 4) != "FORM") return false;
    const std::string_view form = magic.substr(8, 4);
    if (form != "AIFF" && form != "AIFC") return false;
    AiffFile file(reader, findings, form == "AIFC");
    return file.Read();
}

}  // namespace companion::pcm
