// Files of each container that the PCM library reads, built byte by byte.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "tests/companions/byte_writer.h"
#include "tests/companions/mutator.h"

namespace companion_test {

// A chunk as RIFF has it: identifier, size in little-endian, filled to even.
ByteList RiffChunk(std::string_view id, const ByteList& content);
// The same in big-endian, as AIFF has it.
ByteList IffChunk(std::string_view id, const ByteList& content);
// Identifier, 64-bit size in big-endian, no filling.
ByteList CafChunk(std::string_view id, const ByteList& content);
// Identifier of sixteen bytes, 64-bit size that counts the header, filled to 8.
ByteList Wave64Chunk(std::string_view id, const ByteList& content);

struct WaveFields {
    std::uint16_t tag = 1;
    std::uint16_t channels = 2;
    std::uint32_t rate = 44100;
    std::uint32_t bytesPerSecond = 0;  // 0: rate x block
    std::uint16_t block = 4;
    std::uint16_t bits = 16;
    ByteList extra;         // behind cbSize
    bool hasExtra = false;  // write cbSize and `extra`
};

// The content of a "fmt " chunk.
ByteList WaveFormatBytes(const WaveFields& fields);
// The extension of WAVEFORMATEXTENSIBLE with a format tag as its sub-format.
ByteList ExtensibleBytes(std::uint16_t validBits, std::uint32_t mask, std::uint16_t tag);

// "RIFF", the chunks in order.
ByteList RiffFile(const std::vector<ByteList>& chunks, std::string_view magic = "RIFF");
// A format, audio of `dataBytes` zeros, and further chunks behind it.
ByteList WaveFile(const WaveFields& fields, std::size_t dataBytes,
                  const std::vector<ByteList>& behind = {});
ByteList Wave64File(const std::vector<ByteList>& chunks);

// "FORM", "AIFF" or "AIFC", the chunks in order.
ByteList AiffFile(std::string_view form, const std::vector<ByteList>& chunks);
// The content of a COMM chunk; `type` is empty for AIFF.
ByteList CommonBytes(std::uint16_t channels, std::uint32_t frames, std::uint16_t bits,
                     std::uint32_t rate, std::string_view type = {});
// The content of an SSND chunk with `dataBytes` zeros.
ByteList SoundBytes(std::size_t dataBytes);

ByteList CafFile(const std::vector<ByteList>& chunks);
struct CafFields {
    double rate = 44100;
    std::string_view format = "lpcm";
    std::uint32_t flags = 0;
    std::uint32_t bytesPerPacket = 4;
    std::uint32_t framesPerPacket = 1;
    std::uint32_t channels = 2;
    std::uint32_t bits = 16;
};
ByteList CafDescription(const CafFields& fields);
// A data chunk: the edit count and `dataBytes` zeros.
ByteList CafData(std::size_t dataBytes);

// An ID3v2 tag around frames that are already built. Version 2, 3 or 4.
ByteList Id3Tag(int version, const std::vector<ByteList>& frames, std::uint8_t flags = 0);
// A frame of that version. `flags` is its last byte, where it has any.
ByteList Id3Frame(int version, std::string_view id, const ByteList& content,
                  std::uint16_t flags = 0);
// A frame of text in one of the four encodings.
ByteList Id3Text(int version, std::string_view id, std::string_view latin1Text);

// One file of each container with all kinds of tags that it may hold.
std::vector<SeedFile> RichFiles();

}  // namespace companion_test
