// Numbers out of bytes. The caller has checked that the bytes are there.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string_view>

namespace companion {

using Bytes = std::span<const std::uint8_t>;

inline std::uint32_t BigEndian(Bytes bytes, std::size_t position, std::size_t count) {
    std::uint32_t value = 0;
    for (const std::uint8_t byte : bytes.subspan(position, count))
        value = value << 8 | byte;
    return value;
}

inline std::uint64_t BigEndian64(Bytes bytes, std::size_t position) {
    return std::uint64_t{BigEndian(bytes, position, 4)} << 32 | BigEndian(bytes, position + 4, 4);
}

inline std::uint32_t LittleEndian(Bytes bytes, std::size_t position, std::size_t count) {
    std::uint32_t value = 0;
    for (std::size_t i = count; i-- > 0;)
        value = value << 8 | bytes[position + i];
    return value;
}

// Whether `text` stands at this place; false where the bytes end before.
inline bool HasText(Bytes bytes, std::size_t position, std::string_view text) {
    return position <= bytes.size() && bytes.size() - position >= text.size() &&
           std::memcmp(bytes.data() + position, text.data(), text.size()) == 0;
}

}  // namespace companion
