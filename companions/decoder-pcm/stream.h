// What a container says of its audio, and what follows from that.
#pragma once

#include <cstdint>
#include <string>

#include "companions/common/decoder_library.h"
#include "companions/decoder-pcm/codec.h"

namespace companion::pcm {

// Filled by the parser of a container, as far as its header goes.
struct Stream {
    Codec codec = Codec::unknown;
    double sampleRate = 0;  // Hz
    std::uint32_t channels = 0;
    std::uint32_t storedBits = 0;             // of a sample's place in the file, 0 if it has none
    std::uint32_t validBits = 0;              // of those, how many are used
    std::uint32_t channelMask = 0;            // speakers as in WAVEFORMATEXTENSIBLE, 0 unknown
    std::uint32_t blockBytes = 0;             // of a packet of all channels, 0 if it varies
    std::uint32_t framesPerBlock = 0;         // 0 unknown
    std::uint64_t declaredFrames = 0;         // as the header has it, 0 unknown
    std::uint64_t dataBytes = 0;              // of stored audio that the file really has
    std::uint32_t averageBytesPerSecond = 0;  // as the header has it, 0 unknown
    bool variableBitRate = false;
};

// Brings the fields into one line: block size and bits from each other, 16
// bits where the coding has none. False when the stream cannot be audio:
// without a rate or a channel, or beyond what a wave format can hold.
[[nodiscard]] bool Settle(Stream& stream);

// The rest is for settled streams.

// Samples of one channel that the file can deliver. A header is believed only
// as far as the stored bytes allow.
std::uint64_t FramesOf(const Stream& stream);

// Rounded down, so that the size of PCM never passes the stored bytes.
std::int64_t LengthMs(const Stream& stream, std::uint64_t frames);

std::int64_t SourceBytes(const Stream& stream, std::uint64_t frames);

// Bits per second, INT32_MAX at most.
std::int32_t BitRate(const Stream& stream, std::uint64_t frames);

// The format of the decoded audio: the stored one for PCM and float, 16 bits
// for what loses something, the bits of the source for what does not.
WaveFormat DecodedFormat(const Stream& stream);

// "Audio Quality".
std::u16string QualityText(const Stream& stream, std::int32_t bitRate);

// "Channel Layout": "Mono", "Stereo", "5.1" ..., empty where unknown.
std::u16string LayoutText(const Stream& stream);

}  // namespace companion::pcm
