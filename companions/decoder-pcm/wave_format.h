// The format and text fields that RIFF and Wave64 have in common.
#pragma once

#include <string_view>

#include "companions/decoder-pcm/byte_reader.h"
#include "companions/decoder-pcm/findings.h"

namespace companion::pcm {

// Takes the content of a "fmt " chunk: WAVEFORMAT, PCMWAVEFORMAT, WAVEFORMATEX
// or WAVEFORMATEXTENSIBLE. False when it is shorter than the first of these.
[[nodiscard]] bool TakeWaveFormat(const Bytes& chunk, Stream& stream);

// Adds one field of a LIST of type INFO; ids that no column shows are left out.
void AddInfoField(std::string_view id, std::u16string_view value, Findings& findings);

// Takes the sub-chunks of a LIST of type INFO, in whatever encoding they are.
void TakeInfoList(const Bytes& list, Findings& findings);

}  // namespace companion::pcm
