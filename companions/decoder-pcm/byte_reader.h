// Reading a file in small pieces, and numbers out of bytes, without ever
// leaving the bounds of either.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "companions/common/byte_source.h"

namespace companion::pcm {

enum class ByteOrder { little, big };

// A view of bytes that belong to someone else. A read that would leave it
// gives 0, so a short block reads as if zeros followed.
class Bytes {
public:
    Bytes() = default;
    Bytes(std::span<const std::uint8_t> data, ByteOrder order) : _data(data), _order(order) {}

    std::size_t Size() const { return _data.size(); }
    bool Has(std::size_t offset, std::size_t count) const;
    std::uint8_t U8(std::size_t offset) const;
    std::uint16_t U16(std::size_t offset) const;
    std::uint32_t U32(std::size_t offset) const;
    std::uint64_t U64(std::size_t offset) const;
    double F64(std::size_t offset) const;

    // The part of the view from `offset` on, `count` bytes at most.
    Bytes Part(std::size_t offset, std::size_t count = SIZE_MAX) const;
    // The same as narrow text, NULs and all.
    std::string_view Text(std::size_t offset = 0, std::size_t count = SIZE_MAX) const;
    std::span<const std::uint8_t> Raw() const { return _data; }

private:
    std::uint64_t Number(std::size_t offset, std::size_t count) const;

    std::span<const std::uint8_t> _data;
    ByteOrder _order = ByteOrder::little;
};

// Reads through a window, since headers come in pieces of a few bytes and each
// read of a file costs a call to the system. One thread.
class ByteReader {
public:
    // `source` must outlive the reader.
    explicit ByteReader(ByteSource& source) : _source(source), _size(source.Size()) {}

    std::uint64_t Size() const { return _size; }
    // Bytes from `position` to the end of the file; 0 behind it.
    std::uint64_t Left(std::uint64_t position) const;
    // Copies up to `count` bytes; the number copied.
    std::size_t Read(std::uint64_t position, void* buffer, std::size_t count);
    // Up to `count` bytes, never more than the file has from there.
    std::vector<std::uint8_t> Block(std::uint64_t position, std::size_t count);

private:
    ByteSource& _source;
    std::uint64_t _size;
    std::uint64_t _start = 0;
    std::vector<std::uint8_t> _window;
};

// A source over bytes in memory, which must outlive it.
class MemorySource final : public ByteSource {
public:
    explicit MemorySource(std::span<const std::uint8_t> data) : _data(data) {}
    std::size_t ReadAt(std::uint64_t position, void* buffer, std::size_t count) override;
    std::uint64_t Size() const override { return _data.size(); }

private:
    std::span<const std::uint8_t> _data;
};

}  // namespace companion::pcm
