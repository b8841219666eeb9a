// Which format a file is in, by what it holds.
#pragma once

#include <string_view>

#include "companions/common/byte_source.h"
#include "companions/decoder-taglib/stored_audio.h"

namespace companion {

enum class ContentKind {
    Unknown,
    MpegAudio,  // layers I to III
    Adts,       // raw AAC with frame headers
    Flac,
    OggFlac,
    OggVorbis,
    OggOpus,
    OggSpeex,
    Mp4,
    Asf,
    WavPack,
    MonkeysAudio,
    Musepack,
    TrueAudio,
    Dsf,
    Dsdiff,
};

// The content decides, whatever the file is called. `extension` (lower case,
// with its dot) only helps where a format has no mark of its own: it says how
// far a first MPEG frame is looked for, and lets the two kinds of old files
// through that begin without a mark (.mpc, .m4a).
ContentKind DetectContent(ByteSource& source, AudioSpan span, std::u16string_view extension);

}  // namespace companion
