#include "tests/companions/byte_writer.h"

#include <bit>

namespace companion_test {

// Byte by byte: inserting ranges makes the optimiser warn of overflows that
// cannot be.
ByteWriter& ByteWriter::Text(std::string_view text) {
    for (const char unit : text)
        _bytes.push_back(static_cast<std::uint8_t>(unit));
    return *this;
}

ByteWriter& ByteWriter::Raw(const ByteList& bytes) {
    for (const std::uint8_t byte : bytes)
        _bytes.push_back(byte);
    return *this;
}

ByteWriter& ByteWriter::Fill(std::size_t count, std::uint8_t value) {
    _bytes.resize(_bytes.size() + count, value);
    return *this;
}

ByteWriter& ByteWriter::BeDouble(double value) {
    return Be64(std::bit_cast<std::uint64_t>(value));
}

ByteWriter& ByteWriter::Safe32(std::uint32_t value) {
    for (int shift = 21; shift >= 0; shift -= 7)
        U8((value >> shift) & 0x7F);
    return *this;
}

ByteWriter& ByteWriter::Le16Text(std::u16string_view text) {
    for (const char16_t unit : text)
        Le16(unit);
    return *this;
}

ByteWriter& ByteWriter::Be16Text(std::u16string_view text) {
    for (const char16_t unit : text)
        Be16(unit);
    return *this;
}

ByteWriter& ByteWriter::Little(std::uint64_t value, int count) {
    for (int i = 0; i < count; ++i)
        _bytes.push_back(static_cast<std::uint8_t>(value >> 8 * i));
    return *this;
}

ByteWriter& ByteWriter::Big(std::uint64_t value, int count) {
    for (int i = count - 1; i >= 0; --i)
        _bytes.push_back(static_cast<std::uint8_t>(value >> 8 * i));
    return *this;
}

}  // namespace companion_test
