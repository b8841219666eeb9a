#include "companions/decoder-taglib/mp4_track.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string_view>
#include <vector>

#include "companions/decoder-taglib/byte_order.h"

namespace companion {
namespace {

constexpr int deepestNesting = 16;
constexpr int mostBoxes = 100'000;
constexpr std::size_t longestEntry = 64ull * 1024;

struct Box {
    std::string type;
    std::uint64_t body = 0;  // behind the header
    std::uint64_t end = 0;
};

std::optional<Box> ReadBox(ByteSource& source, std::uint64_t position, std::uint64_t end) {
    std::array<std::uint8_t, 16> header{};
    if (end < position + 8 || source.ReadAt(position, header.data(), 8) != 8) return std::nullopt;
    Box box;
    box.type.assign(header.begin() + 4, header.begin() + 8);
    std::uint64_t bytes = BigEndian(header, 0, 4);
    std::uint64_t headerBytes = 8;
    if (bytes == 0) bytes = end - position;
    if (bytes == 1) {
        if (source.ReadAt(position, header.data(), 16) != 16) return std::nullopt;
        bytes = BigEndian64(header, 8);
        headerBytes = 16;
    }
    if (bytes < headerBytes || bytes > end - position) return std::nullopt;
    box.body = position + headerBytes;
    box.end = position + bytes;
    return box;
}

bool IsContainer(std::string_view type) {
    constexpr std::string_view containers[] = {"moov", "trak", "mdia", "minf", "stbl", "udta",
                                               "meta", "ilst", "moof", "traf", "mvex"};
    return std::find(std::begin(containers), std::end(containers), type) != std::end(containers);
}

// What is collected of one track while its boxes go by.
struct Candidate {
    bool sound = false;
    std::uint32_t timeScale = 0;
    std::uint64_t duration = 0;
    std::vector<std::uint8_t> entry;  // first sample entry
    std::uint64_t sampleBytes = 0;
};

class Mp4Walker {
public:
    explicit Mp4Walker(ByteSource& source) : _source(source) {}

    // False when the nesting is beyond reason.
    bool Run() { return Walk(0, _source.Size(), 0); }

    const Candidate* Sound() const { return _sound ? &*_sound : nullptr; }
    std::uint64_t MediaBytes() const { return _mediaBytes; }
    std::uint32_t MovieScale() const { return _movieScale; }
    std::uint64_t MovieDuration() const { return _movieDuration; }

private:
    bool Walk(std::uint64_t position, std::uint64_t end, int depth) {
        if (depth > deepestNesting) return false;
        while (position < end) {
            if (++_boxes > mostBoxes) return false;
            const std::optional<Box> box = ReadBox(_source, position, end);
            if (!box) return true;
            if (box->type == "trak") _track = Candidate{};
            if (IsContainer(box->type)) {
                if (!Walk(box->body + Skipped(*box), box->end, depth + 1)) return false;
            } else {
                Take(*box);
            }
            if (box->type == "trak" && _track.sound && !_sound) _sound = _track;
            position = box->end;
        }
        return true;
    }

    // "meta" has a version field in front of its boxes, but not in QuickTime.
    std::uint64_t Skipped(const Box& box) {
        if (box.type != "meta") return 0;
        std::array<std::uint8_t, 8> head{};
        _source.ReadAt(box.body, head.data(), head.size());
        const bool plain = HasText(head, 4, "hdlr") || HasText(head, 4, "ilst");
        return plain ? 0 : std::min<std::uint64_t>(4, box.end - box.body);
    }

    void Take(const Box& box) {
        if (box.type == "mdat") _mediaBytes += box.end - box.body;
        if (box.type == "mvhd") TakeTimes(box, _movieScale, _movieDuration);
        if (box.type == "mdhd") TakeTimes(box, _track.timeScale, _track.duration);
        if (box.type == "hdlr") TakeHandler(box);
        if (box.type == "stsd") TakeEntry(box);
        if (box.type == "stsz") TakeSizes(box);
    }

    std::vector<std::uint8_t> Load(const Box& box, std::size_t most) {
        std::vector<std::uint8_t> bytes(
            static_cast<std::size_t>(std::min<std::uint64_t>(most, box.end - box.body)));
        bytes.resize(_source.ReadAt(box.body, bytes.data(), bytes.size()));
        return bytes;
    }

    void TakeTimes(const Box& box, std::uint32_t& scale, std::uint64_t& duration) {
        const auto bytes = Load(box, 32);
        const bool wide = !bytes.empty() && bytes[0] == 1;
        if (bytes.size() < (wide ? 32u : 20u)) return;
        scale = BigEndian(bytes, wide ? 20 : 12, 4);
        duration = wide ? BigEndian64(bytes, 24) : BigEndian(bytes, 16, 4);
    }

    void TakeHandler(const Box& box) {
        const auto bytes = Load(box, 12);
        if (HasText(bytes, 8, "soun")) _track.sound = true;
    }

    void TakeEntry(const Box& box) {
        auto bytes = Load(box, longestEntry);
        if (bytes.size() < 16) return;
        const std::size_t entry = BigEndian(bytes, 8, 4);
        bytes.erase(bytes.begin(), bytes.begin() + 8);
        bytes.resize(std::min(bytes.size(), entry));
        _track.entry = std::move(bytes);
    }

    void TakeSizes(const Box& box) {
        const auto head = Load(box, 12);
        if (head.size() < 12) return;
        const std::uint32_t common = BigEndian(head, 4, 4);
        const std::uint64_t count = BigEndian(head, 8, 4);
        // A size of 1 is how uncompressed tracks count, not how large they are.
        if (common > 1) _track.sampleBytes = common * count;
        if (common == 0) _track.sampleBytes = SumTable(box, count);
    }

    std::uint64_t SumTable(const Box& box, std::uint64_t count) {
        constexpr std::size_t piece = 64ull * 1024;
        std::vector<std::uint8_t> bytes(piece);
        std::uint64_t position = box.body + 12;
        const std::uint64_t end = std::min(box.end, position + count * 4);
        std::uint64_t sum = 0;
        while (position + 4 <= end) {
            const auto wanted =
                static_cast<std::size_t>(std::min<std::uint64_t>(piece, end - position));
            const std::size_t got = _source.ReadAt(position, bytes.data(), wanted) / 4 * 4;
            if (got == 0) break;
            for (std::size_t i = 0; i < got; i += 4)
                sum += BigEndian(bytes, i, 4);
            position += got;
        }
        return sum;
    }

    ByteSource& _source;
    int _boxes = 0;
    Candidate _track;
    std::optional<Candidate> _sound;
    std::uint64_t _mediaBytes = 0;
    std::uint32_t _movieScale = 0;
    std::uint64_t _movieDuration = 0;
};

// The sample entry -----------------------------------------------------------

class BitReader {
public:
    explicit BitReader(Bytes bytes) : _bytes(bytes) {}

    // Zeros behind the end.
    std::uint32_t Take(int count) {
        std::uint32_t value = 0;
        for (; count > 0; --count, ++_position) {
            const std::size_t byte = _position / 8;
            const bool bit = byte < _bytes.size() && (_bytes[byte] >> (7 - _position % 8) & 1) != 0;
            value = value << 1 | (bit ? 1u : 0u);
        }
        return value;
    }

private:
    Bytes _bytes;
    std::size_t _position = 0;
};

int TakeObjectType(BitReader& bits) {
    const std::uint32_t type = bits.Take(5);
    return static_cast<int>(type == 31 ? 32 + bits.Take(6) : type);
}

int TakeRate(BitReader& bits) {
    constexpr int rates[16] = {96000, 88200, 64000, 48000, 44100, 32000, 24000, 22050,
                               16000, 12000, 11025, 8000,  7350,  0,     0,     0};
    const std::uint32_t index = bits.Take(4);
    return index == 15 ? static_cast<int>(bits.Take(24)) : rates[index];
}

// AudioSpecificConfig (ISO/IEC 14496-3, 1.6.2.1).
void ReadAudioConfig(Bytes config, Mp4Track& track) {
    constexpr int channels[8] = {0, 1, 2, 3, 4, 5, 6, 8};
    BitReader bits(config);
    track.aacType = TakeObjectType(bits);
    int rate = TakeRate(bits);
    const std::uint32_t layout = bits.Take(4);
    // Band replication names the rate that comes out of it as well.
    if (track.aacType == 5 || track.aacType == 29) rate = TakeRate(bits);
    if (rate != 0) track.sampleRate = rate;
    if (layout < 8 && channels[layout] != 0) track.channels = channels[layout];
    // The second channel is made out of one.
    if (track.aacType == 29 && layout == 1) track.channels = 2;
}

// The descriptors of an "esds" box, each a tag, a length of up to four bytes of
// seven bits, and its contents (ISO/IEC 14496-1, 7.2.6).
void ReadDescriptors(Bytes bytes, Mp4Track& track) {
    std::size_t at = 4;
    while (at + 2 <= bytes.size()) {
        const int tag = bytes[at++];
        std::size_t length = 0;
        for (int i = 0; i < 4 && at < bytes.size(); ++i) {
            const std::uint8_t byte = bytes[at++];
            length = length << 7 | (byte & 0x7Fu);
            if ((byte & 0x80) == 0) break;
        }
        if (tag == 3) {
            at += 3;
        } else if (tag == 4) {
            if (at < bytes.size()) track.objectType = bytes[at];
            at += 13;
        } else if (tag == 5 && at < bytes.size()) {
            const Bytes config = bytes.subspan(at, std::min(length, bytes.size() - at));
            const bool aac = track.objectType == 0x40 || track.objectType == 0x66 ||
                             track.objectType == 0x67 || track.objectType == 0x68;
            if (aac) ReadAudioConfig(config, track);
            return;
        } else {
            at += length;
        }
    }
}

void ReadAlacConfig(Bytes bytes, Mp4Track& track) {
    if (bytes.size() < 28) return;
    track.bitsPerSample = bytes[9];
    track.channels = bytes[13];
    track.sampleRate = static_cast<int>(BigEndian(bytes, 24, 4) & 0x7FFFFFFF);
}

void ReadFlacConfig(Bytes bytes, Mp4Track& track) {
    if (bytes.size() < 8 + 14) return;
    const std::uint32_t fields = BigEndian(bytes, 8 + 10, 4);
    track.sampleRate = static_cast<int>(fields >> 12);
    track.channels = static_cast<int>(fields >> 9 & 7) + 1;
    track.bitsPerSample = static_cast<int>(fields >> 4 & 31) + 1;
}

void ReadEntryBoxes(Bytes bytes, int depth, Mp4Track& track) {
    for (std::size_t at = 0; at + 8 <= bytes.size();) {
        const std::size_t length = BigEndian(bytes, at, 4);
        if (length < 8 || length > bytes.size() - at) return;
        const Bytes body = bytes.subspan(at + 8, length - 8);
        if (HasText(bytes, at + 4, "esds")) ReadDescriptors(body, track);
        if (HasText(bytes, at + 4, "alac")) ReadAlacConfig(body, track);
        if (HasText(bytes, at + 4, "dfLa")) ReadFlacConfig(body, track);
        if (HasText(bytes, at + 4, "dOps") && body.size() >= 2) track.channels = body[1];
        if (HasText(bytes, at + 4, "frma") && body.size() >= 4)
            track.format.assign(body.begin(), body.begin() + 4);
        const bool holdsBoxes = HasText(bytes, at + 4, "wave") || HasText(bytes, at + 4, "sinf");
        if (holdsBoxes && depth < 2) ReadEntryBoxes(body, depth + 1, track);
        at += length;
    }
}

bool ReadEntry(Bytes entry, Mp4Track& track) {
    if (entry.size() < 36) return false;
    track.format.assign(entry.begin() + 4, entry.begin() + 8);
    track.encrypted = track.format == "drms" || track.format == "enca";
    const std::uint32_t version = BigEndian(entry, 16, 2);
    track.channels = static_cast<int>(BigEndian(entry, 24, 2));
    track.bitsPerSample = static_cast<int>(BigEndian(entry, 26, 2));
    track.sampleRate = static_cast<int>(BigEndian(entry, 32, 2));
    // QuickTime's later versions have more fields in front of the boxes.
    const std::size_t boxes = version == 1 ? 52 : version == 2 ? 72 : 36;
    if (boxes < entry.size()) ReadEntryBoxes(entry.subspan(boxes), 0, track);
    return true;
}

std::int64_t Milliseconds(std::uint64_t duration, std::uint32_t scale) {
    const double result =
        scale == 0 ? 0.0 : static_cast<double>(duration) * 1000.0 / static_cast<double>(scale);
    // An unknown duration is written as all ones.
    return result < 1e12 ? std::llround(result) : 0;
}

}  // namespace

bool ReadMp4Track(ByteSource& source, Mp4Track& track) {
    Mp4Walker walker(source);
    if (!walker.Run() || !walker.Sound()) return false;
    const Candidate& sound = *walker.Sound();
    if (!ReadEntry(sound.entry, track)) return false;
    track.lengthMs = Milliseconds(sound.duration, sound.timeScale);
    if (track.lengthMs == 0)
        track.lengthMs = Milliseconds(walker.MovieDuration(), walker.MovieScale());
    // In a fragmented file the track itself lists no samples.
    const std::uint64_t bytes = sound.sampleBytes != 0 ? sound.sampleBytes : walker.MediaBytes();
    track.bytes = static_cast<std::int64_t>(std::min(bytes, source.Size()));
    return true;
}

}  // namespace companion
