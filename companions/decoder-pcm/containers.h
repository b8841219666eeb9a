// The containers. Each parser looks at the magic at the start of the file and
// answers false when it is another's, or when the header is damaged so far
// that no audio can be had. Any thread, each with a reader of its own.
#pragma once

#include "companions/decoder-pcm/byte_reader.h"
#include "companions/decoder-pcm/findings.h"

namespace companion::pcm {

// RIFF, RIFX, RF64 and BW64 of form WAVE: Microsoft's "Multimedia Programming
// Interface and Data Specifications", EBU Tech 3306 and ITU-R BS.2088.
[[nodiscard]] bool ReadRiff(ByteReader& reader, Findings& findings);

// Sony's Wave64, whose chunks have GUIDs and 64-bit sizes.
[[nodiscard]] bool ReadWave64(ByteReader& reader, Findings& findings);

// Apple's AIFF and AIFF-C.
[[nodiscard]] bool ReadAiff(ByteReader& reader, Findings& findings);

// Sun's audio file, in either byte order.
[[nodiscard]] bool ReadAu(ByteReader& reader, Findings& findings);

// Apple's Core Audio Format.
[[nodiscard]] bool ReadCaf(ByteReader& reader, Findings& findings);

// No file that is not made to do harm has more chunks.
constexpr int mostChunks = 10000;

// Takes whichever of the above the content is.
[[nodiscard]] bool ReadContainer(ByteReader& reader, Findings& findings);

}  // namespace companion::pcm
