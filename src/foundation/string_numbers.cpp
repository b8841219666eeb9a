// Numbers to text and back.
#include <cstdint>
#include <limits>

#include "foundation/string.h"

void clString::FromSigned(std::int64_t value) {
    if (value == std::numeric_limits<std::int64_t>::min()) {
        Assign(L"-9223372036854775808");  // its absolute value has no signed form
        return;
    }
    FromUnsigned(static_cast<std::uint64_t>(value < 0 ? -value : value));
    if (value < 0) Insert(L"-", 1);
}

void clString::FromUnsigned(std::uint64_t value) {
    wchar_t digits[21];
    wchar_t* at = digits + 20;
    *at = 0;
    do {
        *--at = static_cast<wchar_t>(L'0' + value % 10);
        value /= 10;
    } while (value != 0);
    Assign(at);
}

void clString::FromHex(std::uint64_t value) {
    wchar_t digits[17];
    for (int i = 15; i >= 0; --i, value >>= 4) {
        digits[i] = L"0123456789ABCDEF"[value & 15];
    }
    digits[16] = 0;
    Assign(digits);
}

void clString::FromHexShort(std::uint64_t value) {
    FromHex(value);
    std::int32_t zeros = 0;
    while (zeros < 15 && chars[zeros] == L'0')
        ++zeros;
    if (zeros > 0) EraseRange(1, zeros);
}

std::int64_t clString::ToInt() const {
    const wchar_t* at = chars;
    while (*at == L' ')
        ++at;
    const bool negative = *at == L'-';
    if (*at == L'-' || *at == L'+') ++at;
    std::uint64_t value = 0;  // unsigned, so that too many digits wrap
    for (; *at >= L'0' && *at <= L'9'; ++at) {
        value = value * 10 + static_cast<std::uint64_t>(*at - L'0');
    }
    return static_cast<std::int64_t>(negative ? 0 - value : value);
}

namespace {

// Truncates; what has no signed 64-bit value becomes 2^63, as the processor has it.
std::uint64_t Truncated(double value) {
    constexpr double limit = 9223372036854775808.0;
    if (!(value < limit)) return std::uint64_t{1} << 63;
    return static_cast<std::uint64_t>(static_cast<std::int64_t>(value));
}

}  // namespace

void clString::FromDouble(double value, std::int32_t decimals) {
    const bool negative = value < 0;
    if (negative) value = -value;
    double scale = 1.0;
    for (std::int32_t i = 0; i < decimals; ++i)
        scale *= 10.0;
    const bool raised = value < 1.0;  // keeps the leading zero in the digits
    if (raised) value += 1.0;
    // 0.49 and not 0.5: exact halves round down.
    FromUnsigned(Truncated(scale * value + 0.49));
    const std::int32_t point = count - decimals;
    if (point > 0 && point <= count) Insert(L".", point);
    if (raised) --chars[0];
    if (negative) Insert(L"-", 1);
    std::int32_t length = Length();
    while (length > 0 && chars[length - 1] == L'0')
        --length;
    if (length > 0 && chars[length - 1] == L'.') --length;
    Trim(length);
}
