// What lies around the audio of a file: the tags that formats agree upon to put
// before and behind whatever else there is.
#pragma once

#include <cstdint>

#include "companions/common/byte_source.h"

namespace companion {

// Bytes [begin, end) hold the stream; begin <= end <= the file's size.
struct AudioSpan {
    std::uint64_t begin = 0;
    std::uint64_t end = 0;

    std::uint64_t Length() const { return end - begin; }
};

// Leaves out ID3v2 tags in front (id3.org, ID3v2.4 structure, 3.1), and behind
// the audio an ID3v1 tag, an APE tag (APEv2, footer of 32 bytes) and an ID3v2
// tag with a footer, in any order that occurs.
AudioSpan FindAudioSpan(ByteSource& source);

// Bytes of the metadata blocks at the front of a FLAC stream, its four
// identifying bytes included (RFC 9639, 8); 0 when the stream has no such front.
std::uint64_t FlacMetadataBytes(ByteSource& source, AudioSpan span);

}  // namespace companion
