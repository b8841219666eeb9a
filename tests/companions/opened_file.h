// Opens test files the way the program does: through the exports of whichever
// decoder library is linked in.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "sdk/decoder.h"
#include "tests/companions/byte_writer.h"

namespace companion_test {

// A file in a folder of this process, gone with the object. Two objects alive
// at a time need two names.
class TemporaryFile {
public:
    TemporaryFile(const std::u16string& name, const ByteList& bytes);
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    void Rewrite(const ByteList& bytes) const;
    std::u16string Path() const { return _path.u16string(); }

private:
    std::filesystem::path _path;
};

using TextPairs = std::vector<std::pair<std::string, std::string>>;  // name, value; UTF-8

struct OpenedFile {
    bool opened = false;
    alignas(8) DecoderWaveFormat format = {};  // a packed record; checks refer to its fields
    std::int32_t bitRate = 0;
    std::int64_t lengthMs = 0;
    std::int64_t sourceBytes = 0;
    TextPairs tags;
    TextPairs properties;
    bool wellFormed = true;  // both blocks are to the byte as the format has them

    // The value of a name; "" when it is not there.
    std::string Tag(std::string_view name) const;
    std::string Property(std::string_view name) const;
};

// Create, Open, Destroy.
OpenedFile OpenPath(const std::u16string& path);
// The same for a file of these bytes.
OpenedFile OpenBytes(const ByteList& bytes, const std::u16string& name = u"file.bin");

// The elements of "Decodes" as pairs of extension and description, and the
// text of "Property Elements"; UTF-8.
TextPairs DecodedTypes();
std::string PropertyElementNames();

std::string ToUtf8(std::u16string_view text);

// What the host's type of text is here.
std::basic_string<DecoderChar> HostText(const std::u16string& text);

}  // namespace companion_test
