#include "tests/companions/opened_file.h"

#include <atomic>
#include <cstring>
#include <fstream>
#include <random>
#include <stdexcept>

#include "companions/common/exports.h"

namespace companion_test {
namespace {

// One folder for each process, since test cases run side by side.
class Folder {
public:
    Folder() {
        std::random_device random;
        const std::string name = "decoder-" + std::to_string(random()) + std::to_string(random());
        _path = std::filesystem::temp_directory_path() / name;
        std::filesystem::create_directories(_path);
    }
    ~Folder() {
        std::error_code ignored;  // nothing is left to tell it to
        std::filesystem::remove_all(_path, ignored);
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    const std::filesystem::path& Path() const { return _path; }

private:
    std::filesystem::path _path;
};

const std::filesystem::path& FolderPath() {
    static const Folder folder;
    return folder.Path();
}

std::u16string TakeText(const std::uint8_t*& at, const std::uint8_t* end, bool& wellFormed) {
    std::u16string text;
    while (end - at >= 2) {
        const unsigned unit = at[0] | (static_cast<unsigned>(at[1]) << 8);
        at += 2;
        if (unit == 0) return text;
        text.push_back(static_cast<char16_t>(unit));
    }
    wellFormed = false;
    return text;
}

std::int32_t TakeNumber(const std::uint8_t*& at) {
    std::int32_t value = 0;
    std::memcpy(&value, at, sizeof(value));
    at += sizeof(value);
    return value;
}

TextPairs ParseBlock(const std::uint8_t* block, std::uint32_t size, bool& wellFormed) {
    TextPairs pairs;
    if (!block) {
        wellFormed = wellFormed && size == 0;
        return pairs;
    }
    const std::uint8_t* at = block;
    const std::uint8_t* const end = block + size;
    if (size < 4) {
        wellFormed = false;
        return pairs;
    }
    const std::int32_t count = TakeNumber(at);
    for (std::int32_t i = 0; i < count && wellFormed; ++i) {
        const std::uint8_t* const start = at;
        const std::int32_t entry = end - at >= 4 ? TakeNumber(at) : -1;
        if (entry < 8 || entry > end - start) {
            wellFormed = false;
            return pairs;
        }
        const std::u16string name = TakeText(at, start + entry, wellFormed);
        const std::u16string value = TakeText(at, start + entry, wellFormed);
        wellFormed = wellFormed && at == start + entry;
        pairs.emplace_back(ToUtf8(name), ToUtf8(value));
    }
    wellFormed = wellFormed && at == end;
    return pairs;
}

std::string Find(const TextPairs& pairs, std::string_view name) {
    for (const auto& pair : pairs)
        if (pair.first == name) return pair.second;
    return {};
}

std::u16string FromHostText(const DecoderChar* text) {
    std::u16string result;
    for (; text && *text; ++text)
        result.push_back(static_cast<char16_t>(*text));
    return result;
}

}  // namespace

TemporaryFile::TemporaryFile(const std::u16string& name, const ByteList& bytes)
    : _path(FolderPath() / std::filesystem::path(name)) {
    Rewrite(bytes);
}

TemporaryFile::~TemporaryFile() {
    std::error_code ignored;  // a test has no use for it
    std::filesystem::remove(_path, ignored);
}

void TemporaryFile::Rewrite(const ByteList& bytes) const {
    std::ofstream file(_path, std::ios::binary | std::ios::trunc);
    file.write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file) throw std::runtime_error("cannot write " + _path.string());
}

std::string OpenedFile::Tag(std::string_view name) const {
    return Find(tags, name);
}

std::string OpenedFile::Property(std::string_view name) const {
    return Find(properties, name);
}

OpenedFile OpenPath(const std::u16string& path) {
    OpenedFile result;
    const auto name = HostText(path);
    DecoderCreateRecord create = {};
    const DecoderInstance instance = Create(&create);
    DecoderOpenRecord record = {};
    record.fileName = name.c_str();
    record.flags = DECODER_OPEN_FLAGS;
    result.opened = Open(instance, &record) != 0;
    result.format = record.waveFormat;
    result.bitRate = record.bitRate;
    result.lengthMs = record.lengthMs;
    result.sourceBytes = record.sourceBytes;
    result.tags = ParseBlock(record.tags, record.tagsSize, result.wellFormed);
    result.properties = ParseBlock(record.properties, record.propertiesSize, result.wellFormed);
    Destroy(instance);
    return result;
}

OpenedFile OpenBytes(const ByteList& bytes, const std::u16string& name) {
    const TemporaryFile file(name, bytes);
    return OpenPath(file.Path());
}

TextPairs DecodedTypes() {
    TextPairs types;
    const auto name = HostText(u"Decodes");
    const DecoderInstance instance = Create(nullptr);
    for (std::uint32_t i = 0;; ++i) {
        DecoderGetRecord record = {};
        record.index = i;
        if (Get(instance, name.c_str(), &record) == 0) break;
        types.emplace_back(ToUtf8(FromHostText(record.text)), ToUtf8(FromHostText(record.text2)));
    }
    Destroy(instance);
    return types;
}

std::string PropertyElementNames() {
    const auto name = HostText(u"Property Elements");
    const DecoderInstance instance = Create(nullptr);
    DecoderGetRecord record = {};
    const bool answered = Get(instance, name.c_str(), &record) != 0;
    const std::string names = answered ? ToUtf8(FromHostText(record.text)) : "";
    Destroy(instance);
    return names;
}

// A lone surrogate comes out as "?": no test wants one.
std::string ToUtf8(std::u16string_view text) {
    std::string result;
    const auto put = [&result](unsigned long byte) { result.push_back(static_cast<char>(byte)); };
    for (std::size_t i = 0; i < text.size(); ++i) {
        unsigned long point = text[i];
        if (point >= 0xD800 && point < 0xDC00 && i + 1 < text.size()) {
            point = 0x10000 + ((point - 0xD800) << 10) + (text[++i] - 0xDC00u);
            put(0xF0 | (point >> 18));
            put(0x80 | ((point >> 12) & 0x3F));
            put(0x80 | ((point >> 6) & 0x3F));
            put(0x80 | (point & 0x3F));
        } else if (point >= 0xD800 && point < 0xE000) {
            put('?');
        } else if (point >= 0x800) {
            put(0xE0 | (point >> 12));
            put(0x80 | ((point >> 6) & 0x3F));
            put(0x80 | (point & 0x3F));
        } else if (point >= 0x80) {
            put(0xC0 | (point >> 6));
            put(0x80 | (point & 0x3F));
        } else {
            put(point);
        }
    }
    return result;
}

std::basic_string<DecoderChar> HostText(const std::u16string& text) {
    return std::basic_string<DecoderChar>(text.begin(), text.end());
}

}  // namespace companion_test
