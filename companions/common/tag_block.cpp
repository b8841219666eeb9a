#include "companions/common/tag_block.h"

#include <cstddef>
#include <limits>
#include <string_view>

namespace companion {
namespace {

constexpr std::size_t headerBytes = 4;  // of the block and of each entry alike

void PutU32(std::vector<std::uint8_t>& block, std::size_t position, std::uint32_t value) {
    for (std::size_t i = 0; i < headerBytes; ++i)
        block[position + i] = static_cast<std::uint8_t>(value >> (8 * i));
}

std::u16string_view UpToNul(const std::u16string& text) {
    const std::u16string_view all = text;
    return all.substr(0, all.find(u'\0'));
}

void AppendText(std::vector<std::uint8_t>& block, std::u16string_view text) {
    for (const char16_t unit : text) {
        block.push_back(static_cast<std::uint8_t>(unit & 0xFF));
        block.push_back(static_cast<std::uint8_t>(unit >> 8));
    }
    block.insert(block.end(), 2, std::uint8_t{0});
}

}  // namespace

std::vector<std::uint8_t> PackTags(const std::vector<Tag>& tags) {
    // The reader takes sizes as signed 32-bit values.
    constexpr std::size_t limit = std::numeric_limits<std::int32_t>::max();
    std::vector<std::uint8_t> block;
    if (tags.empty()) return block;
    block.resize(headerBytes);
    std::uint32_t count = 0;
    for (const Tag& tag : tags) {
        const std::u16string_view name = UpToNul(tag.name);
        const std::u16string_view value = UpToNul(tag.value);
        const std::size_t room = limit - block.size();
        if (name.size() > room / 8 || value.size() > room / 8 || tag.data.size() > room / 4) break;
        const std::size_t start = block.size();
        block.resize(start + headerBytes);
        AppendText(block, name);
        AppendText(block, value);
        block.insert(block.end(), tag.data.begin(), tag.data.end());
        PutU32(block, start, static_cast<std::uint32_t>(block.size() - start));
        ++count;
    }
    PutU32(block, 0, count);
    return block;
}

}  // namespace companion
