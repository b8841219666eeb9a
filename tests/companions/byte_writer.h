// Builds the bytes of a test file, field by field.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace companion_test {

using ByteList = std::vector<std::uint8_t>;

class ByteWriter {
public:
    ByteWriter& Text(std::string_view text);
    ByteWriter& Raw(const ByteList& bytes);
    ByteWriter& Fill(std::size_t count, std::uint8_t value = 0);
    ByteWriter& U8(std::uint64_t value) { return Little(value, 1); }
    ByteWriter& Le16(std::uint64_t value) { return Little(value, 2); }
    ByteWriter& Le32(std::uint64_t value) { return Little(value, 4); }
    ByteWriter& Le64(std::uint64_t value) { return Little(value, 8); }
    ByteWriter& Be16(std::uint64_t value) { return Big(value, 2); }
    ByteWriter& Be24(std::uint64_t value) { return Big(value, 3); }
    ByteWriter& Be32(std::uint64_t value) { return Big(value, 4); }
    ByteWriter& Be64(std::uint64_t value) { return Big(value, 8); }
    ByteWriter& BeDouble(double value);
    // Four times seven bits, as ID3v2 has its sizes.
    ByteWriter& Safe32(std::uint32_t value);
    ByteWriter& Le16Text(std::u16string_view text);
    ByteWriter& Be16Text(std::u16string_view text);

    std::size_t Size() const { return _bytes.size(); }
    const ByteList& Bytes() const { return _bytes; }

private:
    ByteWriter& Little(std::uint64_t value, int count);
    ByteWriter& Big(std::uint64_t value, int count);

    ByteList _bytes;
};

}  // namespace companion_test
