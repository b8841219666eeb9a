#include "companions/decoder-pcm/text.h"

#include <array>
#include <limits>

namespace companion::pcm {
namespace {

constexpr char16_t replacement = 0xFFFD;

// Windows-1252 from 0x80 to 0x9F; the five positions it leaves open keep the
// control of the same number, as the platform's own conversion does.
constexpr std::array<char16_t, 32> windowsControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

std::string_view UpToNul(std::string_view bytes) {
    return bytes.substr(0, bytes.find('\0'));
}

std::uint8_t ByteAt(std::string_view bytes, std::size_t index) {
    return static_cast<std::uint8_t>(bytes[index]);
}

// The code point at `index`, or 0xFFFFFFFF when the bytes there are none.
// `length` is the number of bytes taken, 1 for a malformed sequence.
char32_t TakeUtf8(std::string_view bytes, std::size_t index, std::size_t& length) {
    constexpr char32_t malformed = 0xFFFFFFFF;
    constexpr std::array<char32_t, 5> smallest = {0, 0, 0x80, 0x800, 0x10000};
    const std::uint8_t lead = ByteAt(bytes, index);
    length = 1;
    if (lead < 0x80) return lead;
    const std::size_t count = lead >= 0xF0 ? 4u : lead >= 0xE0 ? 3u : 2u;
    if (lead < 0xC2 || lead > 0xF4 || bytes.size() - index < count) return malformed;
    char32_t point = lead & (0x7Fu >> count);
    for (std::size_t i = 1; i < count; ++i) {
        const std::uint8_t next = ByteAt(bytes, index + i);
        if ((next & 0xC0) != 0x80) return malformed;
        point = (point << 6) | (next & 0x3Fu);
    }
    const bool surrogate = point >= 0xD800 && point < 0xE000;
    if (point < smallest[count] || point > 0x10FFFF || surrogate) return malformed;
    length = count;
    return point;
}

void AppendPoint(std::u16string& text, char32_t point) {
    if (point < 0x10000) {
        text.push_back(static_cast<char16_t>(point));
        return;
    }
    point -= 0x10000;
    text.push_back(static_cast<char16_t>(0xD800 + (point >> 10)));
    text.push_back(static_cast<char16_t>(0xDC00 + (point & 0x3FF)));
}

}  // namespace

std::u16string FromLatin1(std::string_view bytes) {
    std::u16string text;
    for (const char byte : UpToNul(bytes))
        text.push_back(static_cast<char16_t>(static_cast<std::uint8_t>(byte)));
    return text;
}

std::u16string FromWindows1252(std::string_view bytes) {
    std::u16string text = FromLatin1(bytes);
    for (char16_t& unit : text)
        if (unit >= 0x80 && unit < 0xA0) unit = windowsControls[unit - 0x80u];
    return text;
}

std::u16string FromUtf8(std::string_view bytes) {
    bytes = UpToNul(bytes);
    if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
    std::u16string text;
    for (std::size_t i = 0, length = 0; i < bytes.size(); i += length) {
        const char32_t point = TakeUtf8(bytes, i, length);
        AppendPoint(text, point == 0xFFFFFFFF ? replacement : point);
    }
    return text;
}

std::u16string FromUtf16(std::string_view bytes, ByteOrder order) {
    std::u16string text;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const unsigned first = ByteAt(bytes, i);
        const unsigned second = ByteAt(bytes, i + 1);
        if (i == 0 && first == 0xFF && second == 0xFE) {
            order = ByteOrder::little;
        } else if (i == 0 && first == 0xFE && second == 0xFF) {
            order = ByteOrder::big;
        } else {
            const unsigned unit =
                order == ByteOrder::big ? (first << 8) | second : (second << 8) | first;
            if (unit == 0) break;
            text.push_back(static_cast<char16_t>(unit));
        }
    }
    return text;
}

std::u16string FromUnknown(std::string_view bytes) {
    bytes = UpToNul(bytes);
    return IsUtf8(bytes) ? FromUtf8(bytes) : FromWindows1252(bytes);
}

bool IsUtf8(std::string_view bytes) {
    for (std::size_t i = 0, length = 0; i < bytes.size(); i += length)
        if (TakeUtf8(bytes, i, length) == 0xFFFFFFFF) return false;
    return true;
}

std::u16string_view Trimmed(std::u16string_view text) {
    while (!text.empty() && text.front() <= u' ')
        text.remove_prefix(1);
    while (!text.empty() && text.back() <= u' ')
        text.remove_suffix(1);
    return text;
}

std::u16string Folded(std::u16string_view text) {
    std::u16string folded(text);
    for (char16_t& unit : folded)
        if (unit >= u'A' && unit <= u'Z') unit = static_cast<char16_t>(unit + 32);
    return folded;
}

std::u16string Decimal(std::uint64_t value) {
    const std::string digits = std::to_string(value);
    return std::u16string(digits.begin(), digits.end());
}

std::uint32_t LeadingNumber(std::u16string_view text) {
    text = Trimmed(text);
    std::uint64_t number = 0;
    for (const char16_t unit : text) {
        if (unit < u'0' || unit > u'9') break;
        number = number * 10 + (unit - u'0');
        if (number > std::numeric_limits<std::uint32_t>::max()) return 0;
    }
    return static_cast<std::uint32_t>(number);
}

}  // namespace companion::pcm
