// All that the parser of a container finds, before it becomes the facts of a
// decoder library.
#pragma once

#include <string>
#include <vector>

#include "companions/common/decoder_library.h"
#include "companions/decoder-pcm/stream.h"
#include "companions/decoder-pcm/tag_set.h"

namespace companion::pcm {

struct Findings {
    Stream stream;
    TagSet richTags;            // of an ID3v2 chunk: they win
    TagSet nativeTags;          // of the container's own fields
    std::u16string trackTotal;  // from a field of its own, which may come first
    std::u16string discTotal;
    std::u16string encoder;                // the program that wrote the file
    std::vector<std::u16string> tagKinds;  // "ID3v2.3", "INFO" ..., in file order
    bool coverArt = false;
};

// Notes a kind of tag once.
void NoteKind(Findings& findings, const std::u16string& kind);

// Everything the host asks for. False when the stream is no audio.
[[nodiscard]] bool Conclude(Findings& findings, FileFacts& facts);

}  // namespace companion::pcm
