#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>

#include "companions/decoder-pcm/containers.h"
#include "companions/decoder-pcm/tag_keys.h"
#include "companions/decoder-pcm/text.h"

namespace companion::pcm {
namespace {

constexpr std::size_t chunkHeaderBytes = 12;
constexpr std::size_t longestInfo = std::size_t{16} << 20;
constexpr std::size_t longestInfoText = std::size_t{256} << 10;

std::size_t Bounded(std::uint64_t size, std::size_t most) {
    return static_cast<std::size_t>(std::min<std::uint64_t>(size, most));
}

struct Packets {
    bool known = false;
    std::uint64_t count = 0;
    std::uint64_t validFrames = 0;
};

class CafFile {
public:
    CafFile(ByteReader& reader, Findings& findings) : _reader(reader), _findings(findings) {}

    bool Read() {
        std::uint64_t position = 8;
        for (int i = 0; i < mostChunks && _reader.Left(position) >= chunkHeaderBytes; ++i) {
            const auto header = _reader.Block(position, chunkHeaderBytes);
            const Bytes bytes(header, ByteOrder::big);
            const std::uint64_t start = position + chunkHeaderBytes;
            const std::uint64_t declared = bytes.U64(4);
            // The last chunk may leave its size open, and a negative one is
            // too large for any file.
            const std::uint64_t size = std::min(declared, _reader.Left(start));
            TakeChunk(bytes.Text(0, 4), start, size);
            if (size != declared) break;
            position = start + size;
        }
        return _hasDescription && _hasData && Finish();
    }

private:
    void TakeChunk(std::string_view id, std::uint64_t start, std::uint64_t size) {
        if (id == "desc" && !_hasDescription) {
            TakeDescription(start, size);
        } else if (id == "data" && !_hasData) {
            constexpr std::uint64_t editCountBytes = 4;
            _hasData = true;
            _findings.stream.dataBytes = size > editCountBytes ? size - editCountBytes : 0;
        } else if (id == "pakt") {
            TakePackets(start, size);
        } else if (id == "chan") {
            TakeChannels(start, size);
        } else if (id == "info") {
            TakeInfo(start, size);
        }
    }

    void TakeDescription(std::uint64_t start, std::uint64_t size) {
        constexpr std::size_t descriptionBytes = 32;
        const auto block = _reader.Block(start, Bounded(size, descriptionBytes));
        const Bytes bytes(block, ByteOrder::big);
        if (bytes.Size() < descriptionBytes) return;
        _hasDescription = true;
        Stream& stream = _findings.stream;
        const double rate = bytes.F64(0);
        stream.sampleRate = std::isfinite(rate) ? rate : 0;
        stream.codec = CodecOfCafFormat(bytes.Text(8, 4));
        const std::uint32_t flags = bytes.U32(12);
        stream.blockBytes = bytes.U32(16);
        stream.framesPerBlock = bytes.U32(20);
        stream.channels = bytes.U32(24);
        stream.validBits = bytes.U32(28);
        constexpr std::uint32_t floatFlag = 1;
        if (stream.codec == Codec::pcm && (flags & floatFlag) != 0) stream.codec = Codec::ieeeFloat;
        if (stream.codec == Codec::alac) stream.validBits = BitsOfAlac(flags);
        if (stream.codec == Codec::aLaw || stream.codec == Codec::muLaw) stream.validBits = 8;
    }

    static std::uint32_t BitsOfAlac(std::uint32_t flags) {
        switch (flags) {
            case 2:
                return 20;
            case 3:
                return 24;
            case 4:
                return 32;
            default:
                return 16;
        }
    }

    void TakePackets(std::uint64_t start, std::uint64_t size) {
        constexpr std::size_t packetHeaderBytes = 24;
        const auto block = _reader.Block(start, Bounded(size, packetHeaderBytes));
        const Bytes bytes(block, ByteOrder::big);
        if (bytes.Size() < packetHeaderBytes) return;
        _packets = {true, bytes.U64(0), bytes.U64(8)};
    }

    void TakeChannels(std::uint64_t start, std::uint64_t size) {
        constexpr std::uint32_t tagUsesBitmap = 0x10000;
        const auto block = _reader.Block(start, Bounded(size, 12));
        const Bytes bytes(block, ByteOrder::big);
        // The bitmap has the speakers of WAVEFORMATEXTENSIBLE, bit by bit.
        if (bytes.U32(0) == tagUsesBitmap) _findings.stream.channelMask = bytes.U32(4);
    }

    void TakeInfo(std::uint64_t start, std::uint64_t size) {
        const auto block = _reader.Block(start, Bounded(size, longestInfo));
        const Bytes bytes(block, ByteOrder::big);
        std::string_view rest = bytes.Text(4);
        const std::uint32_t count = std::min<std::uint32_t>(bytes.U32(0), mostChunks);
        for (std::uint32_t i = 0; i < count && !rest.empty(); ++i) {
            const std::string_view key = TakeText(rest);
            const std::string_view value = TakeText(rest);
            NoteKind(_findings, u"CAF");
            AddKeyed(_findings, _findings.nativeTags, FromUtf8(key.substr(0, 256)),
                     FromUtf8(value.substr(0, longestInfoText)));
        }
    }

    static std::string_view TakeText(std::string_view& rest) {
        const std::size_t end = std::min(rest.find('\0'), rest.size());
        const std::string_view text = rest.substr(0, end);
        rest.remove_prefix(std::min(end + 1, rest.size()));
        return text;
    }

    bool Finish() {
        Stream& stream = _findings.stream;
        if (IsSampleCoded(stream.codec)) return true;
        constexpr std::uint64_t mostPackets = std::uint64_t{1} << 31;
        stream.variableBitRate = stream.blockBytes == 0;
        if (!_packets.known) return true;
        const bool negative = (_packets.validFrames >> 63) != 0;
        stream.declaredFrames = negative ? 0 : _packets.validFrames;
        if (stream.declaredFrames == 0 && _packets.count <= mostPackets)
            stream.declaredFrames = _packets.count * stream.framesPerBlock;
        return true;
    }

    ByteReader& _reader;
    Findings& _findings;
    Packets _packets;
    bool _hasDescription = false;
    bool _hasData = false;
};

}  // namespace

bool ReadCaf(ByteReader& reader, Findings& findings) {
    const auto head = reader.Block(0, 8);
    const Bytes bytes(head, ByteOrder::big);
    if (bytes.Text(0, 4) != "caff" || bytes.U16(4) != 1) return false;
    CafFile file(reader, findings);
    return file.Read();
}

}  // namespace companion::pcm
