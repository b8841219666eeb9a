// The facts of a stream of MPEG audio frames, raw AAC included.
#pragma once

#include <cstdint>
#include <string>

#include "companions/common/byte_source.h"
#include "companions/decoder-taglib/mpeg_frame.h"

namespace companion {

enum class BitRateMode { Unknown, Constant, Average, Variable };

struct MpegAudio {
    FrameHeader first;
    std::int64_t lengthMs = 0;
    std::int64_t bytes = 0;    // from the first frame to the end of the span
    std::int32_t bitRate = 0;  // bits per second
    BitRateMode mode = BitRateMode::Unknown;
    std::string encoder;  // as the encoder wrote it, ASCII; empty when not said
};

// Reads the stream that begins with `first`, found by FindFirstFrame.
//
// The length comes from the Xing, Info or VBRI header of the first frame where
// there is one. Otherwise the frames are looked at: a short file's all; of a
// long one samples all over it, and when these do not all have one bit rate,
// the frames of its first 64 MiB, which then stand for the rest.
MpegAudio ReadMpegAudio(ByteSource& source, AudioSpan span, const FirstFrame& first);

}  // namespace companion
