// What a decoder library supplies; `exports.cpp` puts the nine exports around it.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "companions/common/tag_block.h"

namespace companion {

// One audio type as the list query delivers it.
struct AudioType {
    const char16_t* extension;    // with its dot, lower case
    const char16_t* description;  // plain words for the filter dialog
};

// The fixed part and the extension of WAVEFORMATEXTENSIBLE, unpacked.
struct WaveFormat {
    std::uint16_t formatTag = 0;
    std::uint16_t channels = 0;
    std::uint32_t samplesPerSecond = 0;
    std::uint32_t averageBytesPerSecond = 0;
    std::uint16_t blockAlign = 0;
    std::uint16_t bitsPerSample = 0;
    std::vector<std::uint8_t> extension;  // cbSize bytes, 22 at most
};

// All that is known of one file. The format describes the decoded audio;
// sourceBytes is the size of the stored audio alone, never negative.
struct FileFacts {
    WaveFormat format;
    std::int32_t bitRate = 0;      // bits per second of the source
    std::int64_t lengthMs = 0;     // milliseconds
    std::int64_t sourceBytes = 0;  // bytes
    std::vector<Tag> tags;
    std::vector<Tag> properties;
};

// Supplied by each library -------------------------------------------------

// The types in the order of "Decodes". Static storage.
std::span<const AudioType> AudioTypes();

// The names of the extended properties, separated by one CR. Static storage.
const char16_t* PropertyElements();

// Called once per instance, before anything else; any thread.
void PrepareLibrary();

// Reads one file. False when the file cannot be read, is damaged beyond use or
// is no audio; `facts` is then not looked at. May throw: the export catches.
// Any thread, several at a time.
bool ReadFile(const std::u16string& path, FileFacts& facts);

}  // namespace companion
