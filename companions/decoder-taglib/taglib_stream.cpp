#include "companions/decoder-taglib/taglib_stream.h"

#include <algorithm>

namespace companion {
namespace {

// No tag of a sound file is larger; a size field that says so is damaged.
constexpr std::size_t longestBlock = 64u << 20;

}  // namespace

TagLib::FileName TagLibStream::name() const {
#ifdef _WIN32
    return TagLib::FileName(L"");
#else
    return "";
#endif
}

TagLib::ByteVector TagLibStream::readBlock(std::size_t length) {
    const TagLib::offset_t left = this->length() - _position;
    if (left <= 0) return {};
    const std::size_t wanted = std::min({length, longestBlock, static_cast<std::size_t>(left)});
    TagLib::ByteVector block(static_cast<unsigned int>(wanted), '\0');
    const std::size_t got =
        _source.ReadAt(static_cast<std::uint64_t>(_position), block.data(), wanted);
    if (got < wanted) block.resize(static_cast<unsigned int>(got));
    _position += static_cast<TagLib::offset_t>(got);
    return block;
}

void TagLibStream::seek(TagLib::offset_t offset, Position from) {
    TagLib::offset_t base = 0;
    if (from == Current) base = _position;
    if (from == End) base = length();
    // Offsets come out of the file: no sum may wrap, and nothing lies before
    // the start.
    TagLib::offset_t target = 0;
    if (__builtin_add_overflow(base, offset, &target)) target = length();
    _position = std::max<TagLib::offset_t>(0, target);
}

TagLib::offset_t TagLibStream::length() {
    return static_cast<TagLib::offset_t>(_source.Size());
}

void TagLibStream::writeBlock(const TagLib::ByteVector&) {}
void TagLibStream::insert(const TagLib::ByteVector&, TagLib::offset_t, std::size_t) {}
void TagLibStream::removeBlock(TagLib::offset_t, std::size_t) {}
void TagLibStream::truncate(TagLib::offset_t) {}

}  // namespace companion
