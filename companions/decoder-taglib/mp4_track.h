// The first sound track of an MPEG-4 file (ISO/IEC 14496-12 and 14496-14; the
// older layout that QuickTime writes is understood as well).
#pragma once

#include <cstdint>
#include <string>

#include "companions/common/byte_source.h"

namespace companion {

struct Mp4Track {
    std::string format;  // four-character code, as in "mp4a"; of what is inside when encrypted
    int objectType = 0;  // "mp4a": MPEG-4 registration, 0x40 for AAC; 0 when not said
    int aacType = 0;     // AAC: audio object type, 2 for AAC-LC, 5 for HE-AAC
    int channels = 0;
    int sampleRate = 0;     // Hz
    int bitsPerSample = 0;  // as the file says; means nothing for lossy formats
    std::int64_t lengthMs = 0;
    std::int64_t bytes = 0;  // of the track's samples
    bool encrypted = false;
};

// False when the file has no sound track or its boxes are nested or numbered
// beyond reason.
bool ReadMp4Track(ByteSource& source, Mp4Track& track);

}  // namespace companion
