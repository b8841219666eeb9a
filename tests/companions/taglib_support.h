// What the tests of the TagLib decoder share: the sample library and files that
// lie in memory.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "companions/common/byte_source.h"
#include "companions/common/decoder_library.h"

namespace companion {

class MemorySource final : public ByteSource {
public:
    explicit MemorySource(std::vector<std::uint8_t> bytes) : _bytes(std::move(bytes)) {}

    std::size_t ReadAt(std::uint64_t position, void* buffer, std::size_t count) override {
        ++reads;
        if (position >= _bytes.size()) return 0;
        const std::size_t from = static_cast<std::size_t>(position);
        const std::size_t got = std::min(count, _bytes.size() - from);
        if (got != 0) std::memcpy(buffer, _bytes.data() + from, got);
        return got;
    }

    std::uint64_t Size() const override { return _bytes.size(); }

    std::size_t reads = 0;

private:
    std::vector<std::uint8_t> _bytes;
};

inline std::u16string FromUtf8(std::string_view text) {
    std::u16string result;
    for (std::size_t i = 0; i < text.size();) {
        const auto first = static_cast<unsigned char>(text[i++]);
        const int more = first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : first >= 0xC0 ? 1 : 0;
        std::uint32_t code = more == 0 ? first : first & (0x3Fu >> more);
        for (int k = 0; k < more && i < text.size(); ++k)
            code = code << 6 | (static_cast<unsigned char>(text[i++]) & 0x3Fu);
        if (code >= 0x10000) {
            result.push_back(static_cast<char16_t>(0xD7C0 + (code >> 10)));
            code = 0xDC00 + (code & 0x3FF);
        }
        result.push_back(static_cast<char16_t>(code));
    }
    return result;
}

inline std::string ToUtf8(std::u16string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        std::uint32_t code = text[i];
        if (code >= 0xD800 && code < 0xDC00 && i + 1 < text.size())
            code = 0x10000 + ((code - 0xD800) << 10) + (text[++i] - 0xDC00u);
        const auto put = [&](std::uint32_t byte) { result.push_back(static_cast<char>(byte)); };
        if (code < 0x80) {
            put(code);
        } else if (code < 0x800) {
            put(0xC0 | code >> 6);
            put(0x80 | (code & 0x3F));
        } else if (code < 0x10000) {
            put(0xE0 | code >> 12);
            put(0x80 | (code >> 6 & 0x3F));
            put(0x80 | (code & 0x3F));
        } else {
            put(0xF0 | code >> 18);
            put(0x80 | (code >> 12 & 0x3F));
            put(0x80 | (code >> 6 & 0x3F));
            put(0x80 | (code & 0x3F));
        }
    }
    return result;
}

// A path of this machine as the platform under test wants it: on Windows the
// whole tree lies on drive Z.
inline std::u16string PlatformPath(std::string_view path) {
    std::u16string result = FromUtf8(path);
#ifdef _WIN32
    std::replace(result.begin(), result.end(), u'/', u'\\');
    result.insert(0, u"Z:");
#endif
    return result;
}

// A file of the library that scripts/make-sample-library.sh makes.
inline std::u16string SamplePath(std::string_view relative) {
    return PlatformPath(std::string(TEST_SAMPLE_LIBRARY "/") + std::string(relative));
}

// The first entry of that name, as UTF-8; "-" without one.
inline std::string ValueOf(const std::vector<Tag>& tags, std::string_view name) {
    for (const Tag& tag : tags) {
        if (ToUtf8(tag.name) == name) return ToUtf8(tag.value);
    }
    return "-";
}

// The whole file; empty when it cannot be opened.
inline std::vector<std::uint8_t> LoadFile(const std::u16string& path) {
    const auto file = OpenFile(path);
    if (!file) return {};
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(file->Size()));
    bytes.resize(file->ReadAt(0, bytes.data(), bytes.size()));
    return bytes;
}

// The files that this library is to read.
constexpr std::string_view codedSamples[] = {
    "Quarry Choir/Limestone/01 - Blast.mp3",
    "Quarry Choir/Limestone/02 - Dust.mp3",
    "Quarry Choir/Limestone/03 - Rubble.mp3",
    "Quarry Choir/Limestone/04 - Chisel.mp3",
    "Quarry Choir/Limestone/05 - Echo.mp3",
    "Quarry Choir/Limestone/06 - Two Voices.mp3",
    "Quarry Choir/Limestone/07 - Old Tag.mp3",
    "Quarry Choir/Limestone/08 - Layer Two.mp2",
    "Quarry Choir/Limestone/09 - Layer One.mp1",
    "Quarry Choir/Limestone/10 - Raw.aac",
    "夜の庭/月光/01 - 月光.flac",
    "夜の庭/月光/02 - 雨.flac",
    "夜の庭/月光/03 - 風.oga",
    "夜の庭/月光/04 - 雪.wv",
    "夜の庭/月光/05 - 霧.wv",
    "夜の庭/月光/06 - 霜.wv",
    "夜の庭/月光/07 - 虹.tta",
    "夜の庭/月光/08 - 星.ape",
    "夜の庭/月光/09 - 空.dsf",
    "夜の庭/月光/10 - 海.dff",
    "DJ 🎵 Emoji/Ünïcödé ☀/01 - Sun ☀.ogg",
    "DJ 🎵 Emoji/Ünïcödé ☀/02 - Moon 🌙.opus",
    "DJ 🎵 Emoji/Ünïcödé ☀/03 - Talk.spx",
    "DJ 🎵 Emoji/Ünïcödé ☀/04 - Dense.mpc",
    "Lía Ñandú/Canción de cuna/01 - Luna.m4a",
    "Lía Ñandú/Canción de cuna/02 - Sueño.m4a",
    "Lía Ñandú/Canción de cuna/03 - Capítulo.m4b",
    "Lía Ñandú/Canción de cuna/04 - Noche.mp4",
    "Lía Ñandú/Canción de cuna/05 - Estrella.wma",
    "Lía Ñandú/Canción de cuna/06 - Nube.asf",
};

}  // namespace companion
