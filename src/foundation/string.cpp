#include "foundation/string.h"

#include <algorithm>
#include <cstring>

#include "foundation/text.h"
#include "foundation/text_platform.h"

clString::clString()
    : chars(inlineChars),
      count(1),
      tag(0),
      narrowChars(nullptr),
      narrowSize(0),
      capacity(inlineCapacity) {
    inlineChars[0] = 0;
}

clString::clString(const wchar_t* text) : clString() {
    Assign(text);
}

clString::clString(const char* text) : clString() {
    *this = text;
}

clString::clString(std::int32_t value) : clString(static_cast<std::int64_t>(value)) {}

clString::clString(std::int64_t value) : clString() {
    FromSigned(value);
}

clString::clString(const clString& other) : clString() {
    Assign(other);
    tag = other.tag;
}

clString::clString(clString&& other) noexcept : clString() {
    tag = other.tag;
    if (other.chars == other.inlineChars) {
        std::memcpy(inlineChars, other.inlineChars,
                    static_cast<std::size_t>(other.count) * sizeof(wchar_t));
    } else {
        chars = other.chars;
        capacity = other.capacity;
        other.chars = other.inlineChars;
        other.capacity = inlineCapacity;
    }
    count = other.count;
    other.count = 1;
    other.chars[0] = 0;
}

clString::~clString() {
    Reset();
}

clString clString::operator=(const clString& other) {
    Assign(other);
    return *this;
}

clString clString::operator=(const wchar_t* text) {
    Assign(text);
    return *this;
}

clString clString::operator=(const char* text) {
    const std::int32_t needed = text == nullptr ? 0 : text_platform::WideFromAnsi(text, nullptr, 0);
    count = 1;
    chars[0] = 0;
    if (needed > 0) {
        Reserve(needed, 0);
        text_platform::WideFromAnsi(text, chars, needed);
        count = needed;
    }
    return *this;
}

void clString::Assign(const wchar_t* text, std::int32_t newCount) {
    if (text == nullptr) {
        text = L"";
        newCount = 1;
    }
    if (newCount <= 0) newCount = MeasureText(text) + 1;
    if (capacity < newCount) {
        wchar_t* block = new wchar_t[static_cast<std::size_t>(newCount)];
        if (chars != inlineChars) delete[] chars;
        chars = block;
        capacity = newCount;
    }
    std::memmove(chars, text, static_cast<std::size_t>(newCount - 1) * sizeof(wchar_t));
    chars[newCount - 1] = 0;
    count = newCount;
}

void clString::Assign(const clString& text) {
    if (&text != this) Assign(text.chars, text.count);
}

void clString::Reset() {
    if (chars != inlineChars) delete[] chars;
    chars = inlineChars;
    capacity = inlineCapacity;
    delete[] narrowChars;
    narrowChars = nullptr;
    narrowSize = 0;
}

void clString::Reserve(std::int32_t needed, std::int32_t slack) {
    if (capacity >= needed) return;
    const std::int32_t size = needed + slack;
    wchar_t* block = new wchar_t[static_cast<std::size_t>(size)];
    std::memcpy(block, chars, static_cast<std::size_t>(count) * sizeof(wchar_t));
    if (chars != inlineChars) delete[] chars;
    chars = block;
    capacity = size;
}

wchar_t clString::CharAt(std::int32_t pos) const {
    pos = Resolve(pos);
    return pos < 1 || pos >= count ? L'\0' : chars[pos - 1];
}

const char* clString::Narrow() {
    const std::int32_t converted = text_platform::AnsiFromWide(chars, nullptr, 0);
    const std::int64_t size = std::int64_t{converted} + 4;
    if (size != narrowSize) {
        char* block = new char[static_cast<std::size_t>(size)];
        delete[] narrowChars;
        narrowChars = block;
        narrowSize = size;
    }
    std::memset(narrowChars, 0, static_cast<std::size_t>(size));
    text_platform::AnsiFromWide(chars, narrowChars, converted);
    return narrowChars;
}

clString clString::Mid(std::int32_t first, std::int32_t last) const {
    first = Resolve(first);
    last = std::min(Resolve(last), count - 1);
    clString result;
    if (first >= 1 && first < count && last >= first) {
        result.Assign(chars + first - 1, last - first + 2);
    }
    return result;
}

clString clString::Mid(std::int32_t first) const {
    return Mid(first, count - 1);
}

clString clString::Left(std::int32_t n) const {
    return Mid(1, n);
}

clString clString::Right(std::int32_t n) const {
    // A negative count is none: the smallest could not be subtracted.
    return Mid(std::max(count - std::max(n, 0), 1), count - 1);
}

void clString::EraseRange(std::int32_t first, std::int32_t last) {
    first = Resolve(first);
    last = std::min(Resolve(last), count - 1);
    if (first < 1 || first >= count || last < first) return;
    std::memmove(chars + first - 1, chars + last,
                 static_cast<std::size_t>(count - last) * sizeof(wchar_t));
    count -= last - first + 1;
}

void clString::InsertMeasured(const wchar_t* text, std::int32_t length, std::int32_t pos,
                              std::int32_t slack) {
    if (length <= 0 || pos < 1 || pos > count) return;
    if (text >= chars && text < chars + count) {  // our own text is about to move
        const clString copy(*this);
        InsertMeasured(copy.chars + (text - chars), length, pos, slack);
        return;
    }
    Reserve(count + length, slack);
    std::memmove(chars + pos - 1 + length, chars + pos - 1,
                 static_cast<std::size_t>(count - pos + 1) * sizeof(wchar_t));
    std::memcpy(chars + pos - 1, text, static_cast<std::size_t>(length) * sizeof(wchar_t));
    count += length;
}

void clString::AppendMeasured(const wchar_t* text, std::int32_t length, std::int32_t slack) {
    InsertMeasured(text, length, count, slack);
}

void clString::Insert(const wchar_t* text, std::int32_t pos) {
    if (text != nullptr) InsertMeasured(text, MeasureText(text), Resolve(pos), 32);
}

void clString::Insert(const clString& text, std::int32_t pos) {
    InsertMeasured(text.chars, text.Length(), Resolve(pos), 32);
}

void clString::Append(const wchar_t* text) {
    if (text == nullptr) return;
    const std::int32_t length = MeasureText(text);
    AppendMeasured(text, length, (count + length) / 3);
}

void clString::Append(const clString& text) {
    AppendMeasured(text.chars, text.Length(), (count + text.Length()) / 3);
}

void clString::Append(wchar_t ch) {
    AppendMeasured(&ch, ch == 0 ? 0 : 1, (count + 1) / 3);
}

clString clString::operator+=(const wchar_t* text) {
    if (text != nullptr) AppendMeasured(text, MeasureText(text), 25);
    return *this;
}

clString clString::operator+=(const clString& text) {
    AppendMeasured(text.chars, text.Length(), 25);
    return *this;
}

clString clString::operator+=(wchar_t ch) {
    AppendMeasured(&ch, ch == 0 ? 0 : 1, 25);
    return *this;
}

void clString::Replace(const clString& what, const clString& with) {
    if (what.IsEmpty()) return;
    std::int32_t found = Find(what);
    if (found == 0) return;
    clString result;
    std::int32_t taken = 1;  // first character that is not in the result yet
    for (; found != 0; found = Find(what, taken)) {
        const std::int32_t before = found - taken;
        result.AppendMeasured(chars + taken - 1, before, (result.count + before) / 3);
        result.Append(with);
        taken = found + what.Length();
    }
    result.AppendMeasured(chars + taken - 1, count - taken, (result.count + count) / 3);
    Assign(result);
}

void clString::TrimLeft() {
    std::int32_t spaces = 0;
    while (chars[spaces] == L' ')
        ++spaces;
    if (spaces > 0) EraseRange(1, spaces);
}

void clString::TrimRight() {
    std::int32_t length = Length();
    while (length > 0 && chars[length - 1] == L' ')
        --length;
    Trim(length);
}

void clString::Trim(std::int32_t length) {
    chars[length] = 0;
    count = length + 1;
}

clString clString::Upper() const {
    clString result;
    result.Assign(*this);
    for (std::int32_t i = 0; i < result.count; ++i)
        result.chars[i] = UpperAscii(result.chars[i]);
    return result;
}

clString clString::Lower() const {
    clString result;
    result.Assign(*this);
    for (std::int32_t i = 0; i < result.count; ++i)
        result.chars[i] = FoldAscii(result.chars[i]);
    return result;
}
