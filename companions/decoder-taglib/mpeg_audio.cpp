#include "companions/decoder-taglib/mpeg_audio.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <vector>

namespace companion {
namespace {

constexpr std::uint64_t shortFile = 1u << 20;
constexpr std::uint64_t longestWalk = 64u << 20;
constexpr int probes = 16;
constexpr int framesPerProbe = 8;
constexpr std::uint64_t resyncWindow = 64ull * 1024;

// What the header frame of an encoder says. The layout is the one that the
// Xing reference code and the LAME project published.
struct VbrHeader {
    std::uint64_t frames = 0;
    std::uint64_t bytes = 0;
    BitRateMode mode = BitRateMode::Unknown;
    std::string encoder;
};

std::size_t Find(Bytes bytes, std::string_view text) {
    const auto found = std::search(bytes.begin(), bytes.end(), text.begin(), text.end());
    return found == bytes.end() ? bytes.size() : static_cast<std::size_t>(found - bytes.begin());
}

std::string PrintableText(Bytes bytes) {
    std::string text;
    for (const std::uint8_t byte : bytes) {
        if (byte < 0x20 || byte > 0x7E) break;
        text.push_back(static_cast<char>(byte));
    }
    while (!text.empty() && text.back() == ' ')
        text.pop_back();
    return text;
}

// Behind the Xing fields: nine characters of encoder, then the method in the
// low half of the next byte.
void ReadEncoderTag(Bytes bytes, VbrHeader& header) {
    if (bytes.size() < 10) return;
    header.encoder = PrintableText(bytes.first(9));
    if (header.encoder.empty()) return;
    const int method = bytes[9] & 0x0F;
    if (method == 1 || method == 8) header.mode = BitRateMode::Constant;
    if (method == 2 || method == 9) header.mode = BitRateMode::Average;
    if (method >= 3 && method <= 6) header.mode = BitRateMode::Variable;
}

VbrHeader ParseXing(Bytes frame, std::size_t at) {
    VbrHeader header;
    if (frame.size() - at < 8) return header;
    header.mode = HasText(frame, at, "Info") ? BitRateMode::Constant : BitRateMode::Variable;
    const std::uint32_t flags = BigEndian(frame, at + 4, 4);
    std::size_t position = at + 8;
    const auto next = [&](bool present, std::size_t bytes) -> std::uint32_t {
        if (!present || position + bytes > frame.size()) return 0;
        const std::uint32_t value = BigEndian(frame, position, std::min<std::size_t>(bytes, 4));
        position += bytes;
        return value;
    };
    header.frames = next((flags & 1) != 0, 4);
    header.bytes = next((flags & 2) != 0, 4);
    next((flags & 4) != 0, 100);
    next((flags & 8) != 0, 4);
    ReadEncoderTag(frame.subspan(position), header);
    return header;
}

VbrHeader ReadVbrHeader(ByteSource& source, const FirstFrame& first) {
    if (first.header.adts) return {};
    std::vector<std::uint8_t> buffer(static_cast<std::size_t>(first.header.bytes));
    buffer.resize(source.ReadAt(first.position, buffer.data(), buffer.size()));
    const Bytes frame(buffer);
    for (const std::string_view mark : {"Xing", "Info"}) {
        if (const std::size_t at = Find(frame, mark); at < frame.size())
            return ParseXing(frame, at);
    }
    VbrHeader header;
    if (const std::size_t at = Find(frame, "VBRI"); at + 18 <= frame.size()) {
        header.bytes = BigEndian(frame, at + 10, 4);
        header.frames = BigEndian(frame, at + 14, 4);
        header.mode = BitRateMode::Variable;
    }
    return header;
}

// What a walk over frames adds up.
struct Walk {
    std::uint64_t frames = 0;
    std::uint64_t samples = 0;
    std::uint64_t bytes = 0;
    bool sameBitRate = true;
};

class FrameWalker {
public:
    FrameWalker(ByteSource& source, AudioSpan span, const FrameHeader& first)
        : _source(source), _span(span), _first(first) {}

    // Adds frames from `position` on until `stop`, the end or `mostFrames`.
    void Run(std::uint64_t position, std::uint64_t stop, std::uint64_t mostFrames, Walk& walk) {
        for (std::uint64_t i = 0; i < mostFrames && position < stop; ++i) {
            FrameHeader header = HeaderAt(position);
            if (!header.valid || !SameStream(_first, header)) {
                const FirstFrame next = FindFirstFrame(
                    _source, {std::min(position + 1, _span.end), _span.end}, resyncWindow);
                if (!next.found || !SameStream(_first, next.header)) return;
                position = next.position;
                header = next.header;
            }
            ++walk.frames;
            walk.samples += static_cast<std::uint64_t>(header.samples);
            walk.bytes += static_cast<std::uint64_t>(header.bytes);
            walk.sameBitRate = walk.sameBitRate && header.bitRate == _first.bitRate;
            position += static_cast<std::uint64_t>(header.bytes);
        }
    }

private:
    // The frames are read through in big pieces: one call for each would cost
    // more than all the rest.
    FrameHeader HeaderAt(std::uint64_t position) {
        const bool inside =
            position >= _start && position + frameHeaderBytes <= _start + _buffer.size();
        if (!inside) {
            _start = position;
            _buffer.resize(static_cast<std::size_t>(
                std::min<std::uint64_t>(128ull * 1024, _span.end - position)));
            _buffer.resize(_source.ReadAt(position, _buffer.data(), _buffer.size()));
        }
        return ParseFrameHeader(
            Bytes(_buffer).subspan(static_cast<std::size_t>(position - _start)));
    }

    ByteSource& _source;
    AudioSpan _span;
    FrameHeader _first;
    std::vector<std::uint8_t> _buffer;
    std::uint64_t _start = 0;
};

// Whether frames from all over the stream have the first one's bit rate.
bool ProbesAgree(ByteSource& source, AudioSpan audio, const FrameHeader& first) {
    Walk walk;
    for (std::uint64_t i = 0; i < probes; ++i) {
        const std::uint64_t at = audio.begin + audio.Length() / probes * i;
        const FirstFrame frame = FindFirstFrame(source, {at, audio.end}, 8192);
        if (!frame.found || !SameStream(first, frame.header)) continue;
        FrameWalker(source, audio, first).Run(frame.position, audio.end, framesPerProbe, walk);
    }
    return walk.sameBitRate;
}

std::int64_t Milliseconds(double samples, int sampleRate) {
    return std::llround(samples * 1000.0 / sampleRate);
}

std::int32_t AverageBitRate(std::uint64_t bytes, double samples, int sampleRate) {
    const double rate = static_cast<double>(bytes) * 8.0 * sampleRate / samples;
    return rate < 2e9 ? static_cast<std::int32_t>(std::lround(rate)) : 0;
}

void MeasureByWalking(ByteSource& source, AudioSpan audio, MpegAudio& result) {
    const FrameHeader& first = result.first;
    const std::uint64_t stop = audio.begin + std::min(audio.Length(), longestWalk);
    Walk walk;
    FrameWalker(source, audio, first).Run(audio.begin, stop, ~std::uint64_t{0}, walk);
    if (walk.samples == 0 || walk.bytes == 0) return;
    double samples = static_cast<double>(walk.samples);
    if (stop < audio.end)
        samples *= static_cast<double>(audio.Length()) / static_cast<double>(walk.bytes);
    result.lengthMs = Milliseconds(samples, first.sampleRate);
    result.bitRate =
        AverageBitRate(walk.bytes, static_cast<double>(walk.samples), first.sampleRate);
    // Frames of AAC differ in size at a constant bit rate as well.
    if (first.adts) return;
    result.mode = walk.sameBitRate ? BitRateMode::Constant : BitRateMode::Variable;
    if (walk.sameBitRate) result.bitRate = first.bitRate;
}

// The header frame itself holds no audio and may have a bit rate of its own.
std::int32_t SecondFrameBitRate(ByteSource& source, AudioSpan span, const FirstFrame& first) {
    const std::uint64_t second = first.position + static_cast<std::uint64_t>(first.header.bytes);
    const FirstFrame next = FindFirstFrame(source, {std::min(second, span.end), span.end}, 1);
    return next.found ? next.header.bitRate : first.header.bitRate;
}

}  // namespace

MpegAudio ReadMpegAudio(ByteSource& source, AudioSpan span, const FirstFrame& first) {
    MpegAudio result;
    result.first = first.header;
    const AudioSpan audio{first.position, span.end};
    result.bytes = static_cast<std::int64_t>(audio.Length());
    const VbrHeader vbr = ReadVbrHeader(source, first);
    result.encoder = vbr.encoder;
    if (vbr.frames != 0) {
        const double samples =
            static_cast<double>(vbr.frames) * static_cast<double>(first.header.samples);
        const std::uint64_t bytes = vbr.bytes != 0 ? vbr.bytes : audio.Length();
        result.lengthMs = Milliseconds(samples, first.header.sampleRate);
        result.mode = vbr.mode;
        result.bitRate = vbr.mode == BitRateMode::Constant
                             ? SecondFrameBitRate(source, span, first)
                             : AverageBitRate(bytes, samples, first.header.sampleRate);
        return result;
    }
    const bool constant = !first.header.adts && audio.Length() > shortFile &&
                          ProbesAgree(source, audio, first.header);
    if (!constant) {
        MeasureByWalking(source, audio, result);
        return result;
    }
    result.mode = BitRateMode::Constant;
    result.bitRate = first.header.bitRate;
    result.lengthMs = static_cast<std::int64_t>(audio.Length()) * 8000 / result.bitRate;
    return result;
}

}  // namespace companion
