// Comparing and searching.
#include <cstring>

#include "foundation/string.h"
#include "foundation/text.h"

bool clString::Equals(const wchar_t* text) const {
    if (text == nullptr) return false;
    std::int32_t i = 0;
    while (chars[i] != 0 && chars[i] == text[i])
        ++i;
    return chars[i] == text[i];
}

bool clString::Equals(const clString& text) const {
    return count == text.count &&
           std::memcmp(chars, text.chars, static_cast<std::size_t>(count) * sizeof(wchar_t)) == 0;
}

std::int32_t clString::CompareNoCase(const wchar_t* text, std::int32_t limit) const {
    if (text == nullptr) return 1;
    if (limit < 0) limit = MeasureText(text);
    for (std::int32_t i = 0; limit == 0 || i < limit; ++i) {
        const wchar_t left = FoldAscii(chars[i]);
        const wchar_t right = FoldAscii(text[i]);
        if (left != right) return left > right ? 1 : -1;
        if (left == 0) return 0;
    }
    return 0;
}

std::int32_t clString::CompareNoCase(const clString& text, std::int32_t limit) const {
    return CompareNoCase(text.chars, limit < 0 ? text.Length() : limit);
}

namespace {

bool MatchesAt(const wchar_t* text, const wchar_t* needle, bool ignoreCase) {
    // The haystack's terminator differs from every unit of the needle.
    for (; *needle != 0; ++text, ++needle) {
        if (ignoreCase ? UpperAscii(*text) != UpperAscii(*needle) : *text != *needle) return false;
    }
    return true;
}

}  // namespace

std::int32_t clString::Find(const wchar_t* needle, std::int32_t start, bool ignoreCase) const {
    start = Resolve(start);
    if (needle == nullptr || start < 1 || start >= count) return 0;
    for (std::int32_t pos = start; pos < count; ++pos) {
        if (MatchesAt(chars + pos - 1, needle, ignoreCase)) return pos;
    }
    return 0;
}

std::int32_t clString::Find(const clString& needle, std::int32_t start, bool ignoreCase) const {
    return Find(needle.chars, start, ignoreCase);
}

std::int32_t clString::FindChar(wchar_t ch, std::int32_t start) const {
    const wchar_t needle[2] = {ch, 0};
    return Find(needle, start);
}

std::int32_t clString::FindLast(wchar_t ch) const {
    for (std::int32_t pos = count - 1; pos >= 1; --pos) {
        if (chars[pos - 1] == ch) return pos;
    }
    return 0;
}
