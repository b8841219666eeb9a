#include "companions/decoder-pcm/id3v2.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "companions/decoder-pcm/id3v2_frames.h"
#include "companions/decoder-pcm/text.h"

namespace companion::pcm {
namespace {

constexpr std::size_t headerBytes = 10;
constexpr std::size_t longestTag = std::size_t{16} << 20;  // taken into memory at once
constexpr std::size_t longestFrame = std::size_t{256} << 10;
constexpr int mostFrames = 2000;

constexpr std::uint8_t tagUnsynchronised = 0x80;
constexpr std::uint8_t tagExtended = 0x40;  // compression in 2.2, which nobody ever defined

struct TagHeader {
    std::uint8_t version = 0;  // 2, 3 or 4
    std::uint8_t flags = 0;
    std::uint64_t size = 0;  // behind the header
};

struct Frame {
    std::string id;
    std::uint64_t start = 0;  // of its content
    std::uint64_t size = 0;
    std::uint64_t skip = 0;  // bytes of its own fields before the content proper
    bool unsynchronised = false;
    bool opaque = false;  // compressed or encrypted
};

// Seven bits of each byte.
std::uint32_t SafeNumber(const Bytes& bytes, std::size_t offset) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i)
        value = (value << 7) | (bytes.U8(offset + i) & 0x7Fu);
    return value;
}

std::optional<TagHeader> ReadHeader(ByteReader& reader, std::uint64_t position) {
    const auto block = reader.Block(position, headerBytes);
    const Bytes bytes(block, ByteOrder::big);
    if (bytes.Size() != headerBytes || bytes.Text(0, 3) != "ID3") return std::nullopt;
    TagHeader header;
    header.version = bytes.U8(3);
    header.flags = bytes.U8(5);
    header.size = SafeNumber(bytes, 6);
    const bool known = header.version >= 2 && header.version <= 4;
    if (!known || (header.version == 2 && (header.flags & tagExtended) != 0)) return std::nullopt;
    return header;
}

// The zero that was put behind each 0xFF is taken out again.
std::vector<std::uint8_t> Resynchronised(const std::vector<std::uint8_t>& bytes) {
    std::vector<std::uint8_t> plain;
    plain.reserve(bytes.size());
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        plain.push_back(bytes[i]);
        if (bytes[i] == 0xFF && i + 1 < bytes.size() && bytes[i + 1] == 0) ++i;
    }
    return plain;
}

bool IsFrameId(std::string_view id) {
    return !id.empty() && std::all_of(id.begin(), id.end(), [](char unit) {
        return (unit >= 'A' && unit <= 'Z') || (unit >= '0' && unit <= '9');
    });
}

// Walks the frames of one tag body, which it reads through `reader`.
class FrameWalk {
public:
    FrameWalk(ByteReader& reader, std::uint64_t start, std::uint64_t end, std::uint8_t version)
        : _reader(reader), _position(start), _end(end), _version(version) {}

    void SkipExtendedHeader() {
        const auto block = _reader.Block(_position, 4);
        const Bytes bytes(block, ByteOrder::big);
        // 2.3 does not count the size field itself, 2.4 does.
        const std::uint64_t size =
            _version == 4 ? SafeNumber(bytes, 0) : std::uint64_t{bytes.U32(0)} + 4;
        _position += std::min<std::uint64_t>(std::max<std::uint64_t>(size, 4), _end - _position);
    }

    void Run(Findings& findings) {
        for (int i = 0; i < mostFrames; ++i) {
            const auto frame = Next();
            if (!frame) return;
            if (IsPictureFrame(frame->id)) findings.coverArt = true;
            if (IsUsedId3v2Frame(frame->id) && !frame->opaque) Take(*frame, findings);
            _position = frame->start + frame->size;
        }
    }

private:
    std::optional<Frame> Next() {
        const std::size_t idBytes = _version == 2 ? 3 : 4;
        const std::size_t fieldBytes = _version == 2 ? 6 : 10;
        if (_position >= _end || _end - _position < fieldBytes) return std::nullopt;
        const auto block = _reader.Block(_position, fieldBytes);
        const Bytes bytes(block, ByteOrder::big);
        Frame frame;
        frame.id = bytes.Text(0, idBytes);
        // Padding, or damage.
        if (bytes.Size() != fieldBytes || !IsFrameId(frame.id)) return std::nullopt;
        frame.start = _position + fieldBytes;
        frame.size = SizeOf(bytes, frame.start);
        if (frame.size > _end - frame.start) return std::nullopt;
        TakeFlags(bytes, frame);
        return frame;
    }

    std::uint64_t SizeOf(const Bytes& bytes, std::uint64_t start) {
        if (_version == 2) return bytes.U32(2) & 0xFFFFFFu;  // its first byte is the last of the id
        if (_version == 3) return bytes.U32(4);
        // Some writers of 2.4 kept the plain sizes of 2.3. The one that leads
        // to another frame, or to the end, is right.
        const std::uint64_t safe = SafeNumber(bytes, 4);
        const std::uint64_t plain = bytes.U32(4);
        if (safe == plain || LeadsOn(start, safe) || !LeadsOn(start, plain)) return safe;
        return plain;
    }

    bool LeadsOn(std::uint64_t start, std::uint64_t size) {
        if (size > _end - start) return false;
        const std::uint64_t next = start + size;
        if (_end - next < 4) return true;
        const auto block = _reader.Block(next, 4);
        const Bytes bytes(block, ByteOrder::big);
        return bytes.U8(0) == 0 || IsFrameId(bytes.Text());
    }

    void TakeFlags(const Bytes& bytes, Frame& frame) const {
        const std::uint8_t flags = bytes.U8(9);
        if (_version == 3) {
            frame.opaque = (flags & 0xC0) != 0;
            frame.skip = (flags & 0x20) != 0 ? 1 : 0;
        } else if (_version == 4) {
            frame.opaque = (flags & 0x0C) != 0;
            frame.unsynchronised = (flags & 0x02) != 0;
            frame.skip = ((flags & 0x40) != 0 ? 1u : 0u) + ((flags & 0x01) != 0 ? 4u : 0u);
        }
    }

    void Take(const Frame& frame, Findings& findings) {
        if (frame.size <= frame.skip) return;
        const std::uint64_t count = std::min<std::uint64_t>(frame.size - frame.skip, longestFrame);
        auto block = _reader.Block(frame.start + frame.skip, static_cast<std::size_t>(count));
        if (frame.unsynchronised) block = Resynchronised(block);
        TakeId3v2Frame(frame.id, Bytes(block, ByteOrder::big), findings);
    }

    ByteReader& _reader;
    std::uint64_t _position;
    std::uint64_t _end;
    std::uint8_t _version;
};

void WalkFrames(ByteReader& reader, std::uint64_t start, std::uint64_t end, const TagHeader& header,
                Findings& findings) {
    FrameWalk walk(reader, start, end, header.version);
    if (header.version != 2 && (header.flags & tagExtended) != 0) walk.SkipExtendedHeader();
    walk.Run(findings);
}

}  // namespace

bool ReadId3v2(ByteReader& reader, std::uint64_t position, std::uint64_t size, Findings& findings) {
    const std::uint64_t there = std::min(size, reader.Left(position));
    if (there < headerBytes) return false;
    const auto header = ReadHeader(reader, position);
    if (!header) return false;
    NoteKind(findings, u"ID3v2." + Decimal(header->version));
    const std::uint64_t start = position + headerBytes;
    const std::uint64_t bodyBytes = std::min(header->size, there - headerBytes);
    // Up to 2.3 the whole body is unsynchronised and its sizes count the plain
    // bytes; 2.4 does it frame by frame.
    if (header->version < 4 && (header->flags & tagUnsynchronised) != 0) {
        const std::uint64_t count = std::min<std::uint64_t>(bodyBytes, longestTag);
        const auto plain = Resynchronised(reader.Block(start, static_cast<std::size_t>(count)));
        MemorySource source(plain);
        ByteReader memory(source);
        WalkFrames(memory, 0, plain.size(), *header, findings);
    } else {
        WalkFrames(reader, start, start + bodyBytes, *header, findings);
    }
    return true;
}

}  // namespace companion::pcm
