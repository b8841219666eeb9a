// The meaning of single ID3v2 frames.
#pragma once

#include <string_view>

#include "companions/decoder-pcm/byte_reader.h"
#include "companions/decoder-pcm/findings.h"

namespace companion::pcm {

// Takes one frame over into the findings. `id` has three characters (2.2) or
// four; `content` is free of unsynchronisation, compression and encryption.
void TakeId3v2Frame(std::string_view id, const Bytes& content, Findings& findings);

// True for a frame that TakeId3v2Frame can use; the others need not be read.
bool IsUsedId3v2Frame(std::string_view id);

// True for a picture, whose content is not looked at.
bool IsPictureFrame(std::string_view id);

}  // namespace companion::pcm
