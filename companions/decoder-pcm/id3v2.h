// Text of an ID3v2 tag, versions 2.2, 2.3 and 2.4 (the informal standards of
// id3.org), as it stands in a chunk of a WAV or AIFF file.
#pragma once

#include <cstdint>

#include "companions/decoder-pcm/byte_reader.h"
#include "companions/decoder-pcm/findings.h"

namespace companion::pcm {

// Reads the tag at `position`, of which `size` bytes may be used. What is
// damaged ends the reading; what was found until then stays. False when no tag
// starts there.
bool ReadId3v2(ByteReader& reader, std::uint64_t position, std::uint64_t size, Findings& findings);

}  // namespace companion::pcm
