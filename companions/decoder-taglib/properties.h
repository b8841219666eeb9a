// The facts of one file as the readers collect them, and what is said of them
// in words: the extended properties.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "companions/common/decoder_library.h"
#include "companions/decoder-taglib/mpeg_audio.h"

namespace companion {

// Which order the channels of a format have, so that a count names a layout.
enum class ChannelOrder { Unknown, Fixed, Aac };

struct AudioFacts {
    int channels = 0;
    int sampleRate = 0;      // Hz
    int bitsPerSample = 16;  // of the decoded audio
    bool floatingPoint = false;
    bool lossless = false;
    double qualityWeight = 1;  // how much a bit of a lossy codec is worth beside MP3's
    std::int64_t lengthMs = 0;
    std::int64_t bytes = 0;    // of the stored audio
    std::int64_t bitRate = 0;  // bits per second; 0: from bytes and length
    BitRateMode mode = BitRateMode::Unknown;
    ChannelOrder order = ChannelOrder::Unknown;
    bool joint = false;  // stereo whose channels share their coding
    std::u16string codec;
    std::u16string encoder;
    std::vector<std::u16string> tagKinds;
    bool coverArt = false;
    std::optional<bool> encrypted;  // only where the format can be
};

// The names of all properties that DescribeProperties can give, separated by a CR.
const char16_t* PropertyNames();

// Format, rate, length and size. Every number is brought into its range;
// channels or a sample rate that cannot be are 0 afterwards.
void FillFacts(const AudioFacts& audio, FileFacts& facts);

// One entry for each property that is known.
std::vector<Tag> DescribeProperties(const AudioFacts& audio);

}  // namespace companion
