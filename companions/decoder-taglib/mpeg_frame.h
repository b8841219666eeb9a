// Frame headers of MPEG audio (ISO/IEC 11172-3, 2.4.2.3 and 13818-3) and of raw
// AAC (ADTS, ISO/IEC 13818-7, 6.2).
#pragma once

#include <cstdint>

#include "companions/common/byte_source.h"
#include "companions/decoder-taglib/byte_order.h"
#include "companions/decoder-taglib/stored_audio.h"

namespace companion {

struct FrameHeader {
    bool valid = false;
    bool adts = false;
    int version = 0;     // of MPEG: 1 or 2; 3 stands for "2.5"; ADTS: 2 or 4
    int layer = 0;       // 1 to 3; 0 for ADTS
    int profile = 0;     // ADTS: audio object type, 1 to 4
    int bitRate = 0;     // bits per second; of this frame alone for ADTS
    int sampleRate = 0;  // Hz
    int channels = 0;
    bool joint = false;  // channels may share their coding
    int samples = 0;     // per channel
    int bytes = 0;       // header included, never less than it
};

// As much of a frame as the parser looks at.
constexpr std::size_t frameHeaderBytes = 7;

// Reads the header at the front of `bytes`. `valid` is clear for anything that
// is no header, for reserved values and for a frame of the free bit rate.
FrameHeader ParseFrameHeader(Bytes bytes);

// How much junk in front of the first frame is put up with where a file is
// meant to hold frames.
constexpr std::uint64_t longestJunk = 256ull * 1024;

// Whether two headers can stand in the same stream.
bool SameStream(const FrameHeader& one, const FrameHeader& other);

struct FirstFrame {
    bool found = false;
    std::uint64_t position = 0;
    FrameHeader header;
};

// The first frame that begins within `window` bytes from the span's begin and
// is followed by others of its kind, or by the end of the span. A pattern that
// merely looks like a header is passed over.
FirstFrame FindFirstFrame(ByteSource& source, AudioSpan span, std::uint64_t window);

}  // namespace companion
