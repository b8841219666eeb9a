#include "companions/decoder-pcm/byte_reader.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace companion::pcm {
namespace {

constexpr std::size_t windowBytes = 4096;

}  // namespace

bool Bytes::Has(std::size_t offset, std::size_t count) const {
    return offset <= _data.size() && count <= _data.size() - offset;
}

std::uint64_t Bytes::Number(std::size_t offset, std::size_t count) const {
    if (!Has(offset, count)) return 0;
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t at = _order == ByteOrder::big ? i : count - 1 - i;
        value = (value << 8) | _data[offset + at];
    }
    return value;
}

std::uint8_t Bytes::U8(std::size_t offset) const {
    return static_cast<std::uint8_t>(Number(offset, 1));
}

std::uint16_t Bytes::U16(std::size_t offset) const {
    return static_cast<std::uint16_t>(Number(offset, 2));
}

std::uint32_t Bytes::U32(std::size_t offset) const {
    return static_cast<std::uint32_t>(Number(offset, 4));
}

std::uint64_t Bytes::U64(std::size_t offset) const {
    return Number(offset, 8);
}

double Bytes::F64(std::size_t offset) const {
    return std::bit_cast<double>(U64(offset));
}

Bytes Bytes::Part(std::size_t offset, std::size_t count) const {
    const std::size_t from = std::min(offset, _data.size());
    return Bytes(_data.subspan(from, std::min(count, _data.size() - from)), _order);
}

std::string_view Bytes::Text(std::size_t offset, std::size_t count) const {
    const auto part = Part(offset, count).Raw();
    return std::string_view(reinterpret_cast<const char*>(part.data()), part.size());
}

std::uint64_t ByteReader::Left(std::uint64_t position) const {
    return position < _size ? _size - position : 0;
}

std::size_t ByteReader::Read(std::uint64_t position, void* buffer, std::size_t count) {
    if (count > windowBytes) return _source.ReadAt(position, buffer, count);
    const bool inside = position >= _start && position - _start <= _window.size() &&
                        count <= _window.size() - (position - _start);
    if (!inside) {
        _window.resize(windowBytes);
        _start = position;
        _window.resize(_source.ReadAt(position, _window.data(), windowBytes));
    }
    const std::size_t offset = static_cast<std::size_t>(position - _start);
    const std::size_t got = std::min(count, _window.size() - offset);
    if (got != 0) std::memcpy(buffer, _window.data() + offset, got);
    return got;
}

std::vector<std::uint8_t> ByteReader::Block(std::uint64_t position, std::size_t count) {
    const std::uint64_t there = std::min<std::uint64_t>(count, Left(position));
    std::vector<std::uint8_t> block(static_cast<std::size_t>(there));
    block.resize(Read(position, block.data(), block.size()));
    return block;
}

std::size_t MemorySource::ReadAt(std::uint64_t position, void* buffer, std::size_t count) {
    if (position >= _data.size()) return 0;
    const std::size_t offset = static_cast<std::size_t>(position);
    const std::size_t got = std::min(count, _data.size() - offset);
    if (got != 0) std::memcpy(buffer, _data.data() + offset, got);
    return got;
}

}  // namespace companion::pcm
