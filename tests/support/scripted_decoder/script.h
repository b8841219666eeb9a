// What a scripted decoder is told to do: a text file in UTF-8, read anew for each
// instance.
//
// One setting in a line, "name=value"; "|" separates parts of a value, and the
// part "(null)" stands for a null pointer. What is not set is zero or missing.
//
//   create=0                  Create fails
//   type=.abc|Some files      an element of "Decodes"
//   series=.n|Many|1500       1500 elements: .n0 to .n1499
//   decodes-result=0          Get of "Decodes" answers 0, its texts all the same
//   destroy-sleep=500         Destroy of an instance that opened a file takes that long
//   destroy-wait=Name         Destroy of an instance that opened a file waits for the
//                             event of that name
//   pin=1                     the library stays loaded from its first Create on
//   elements=Codec|Encoder    the names for "Property Elements", joined by CR
//   elements-result=0         Get of "Property Elements" answers 0, its text all the same
//
//   [song.abc]                what follows counts for that file name alone
//   open=0                    Open fails
//   needs-file=1              Open fails when there is no such file on disk
//   echo=Name                 a tag of that name with the file's full path
//   sleep=500                 Open takes that many milliseconds
//   wait=Name                 Open waits for the event of that name
//   wave=1,2,44100,176400,4,16,22,0A0B...
//                             the wave format's fields, cbSize last but one, and
//                             the extension's bytes; the end may be left out
//   bit-rate=128000  length-ms=1000  source-bytes=16000
//   tag=Name|Value            an entry of the tag block; "\r" stands for a CR
//   property=Name|Value       the same for the second block
//   tags-hex=01000000...      the bytes of the tag block instead
//   properties-hex=...
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "sdk/decoder.h"

namespace scripted {

using Bytes = std::vector<std::uint8_t>;
using OptionalText = std::optional<std::wstring>;

struct Type {
    OptionalText extension;
    OptionalText description;
};

// What Open answers for a file.
struct FileScript {
    bool opens = true;
    bool needsFile = false;
    std::wstring echo;  // the tag's name; empty for none
    std::uint32_t sleepMs = 0;
    std::wstring waitEvent;
    DecoderWaveFormat wave = {};
    std::int32_t bitRate = 0;
    std::int64_t lengthMs = 0;
    std::int64_t sourceBytes = 0;
    // Null without any tag= or tags-hex= line.
    std::optional<Bytes> tags;
    std::optional<Bytes> properties;
};

struct Script {
    bool creates = true;
    std::int32_t decodesResult = 1;
    std::uint32_t destroySleepMs = 0;
    std::wstring destroyWaitEvent;
    bool pinned = false;
    std::vector<Type> types;
    OptionalText elements;
    std::int32_t elementsResult = 1;
    std::map<std::wstring, FileScript> files;  // the name "" stands for all others

    const FileScript& ForFile(const std::wstring& name) const;
};

// Adds an entry to a tag block, which is made where there is none.
void AppendEntry(std::optional<Bytes>& block, const std::wstring& name, const std::wstring& value);

// An empty text gives a decoder without types that creates and opens.
Script ParseScript(const std::wstring& text);

}  // namespace scripted
