// The system's only string type: UTF-16 text with a small inline buffer.
#pragma once

#include <cstdarg>
#include <cstdint>

static_assert(sizeof(wchar_t) == 2, "text has 16-bit units: build natively with -fshort-wchar");

// As a position it stands for the last character; as a count or limit it tells
// the operation to measure the text.
inline constexpr std::int32_t POS_LAST = -12345;

// A plain value. Positions are 1-based: the first character stands at 1, valid
// positions run to Length(), 0 means that nothing was found. The stored count
// includes the terminator. Case folding touches A to Z and nothing else.
// Characters are 16-bit units; surrogate pairs are not looked at.
// Out-of-range positions give an empty string, 0 or no change, never an error.
// No locks: one object belongs to one thread at a time.
class clString {
public:
    clString();
    clString(const wchar_t* text);  // null gives the empty string
    // From the active ANSI code page. Null gives the empty string.
    clString(const char* text);
    explicit clString(std::int32_t value);
    explicit clString(std::int64_t value);
    clString(const clString& other);  // the tag comes along
    // Takes a heap block over and leaves `other` empty. The tag comes along.
    clString(clString&& other) noexcept;
    ~clString();

    // The same text; the tag of this object stays. The result is a copy with
    // this object's tag: `Assign` is the form without that copy.
    clString operator=(const clString& other);
    clString operator=(const wchar_t* text);
    clString operator=(const char* text);

    // Takes `text`. `count` is the stored count, terminator included; 0 or
    // POS_LAST measures the text. Null gives the empty string. A block that is
    // too small is replaced by one of exactly `count` characters.
    void Assign(const wchar_t* text, std::int32_t count = 0);
    void Assign(const clString& text);

    // Frees the heap blocks and points at the inline buffer again. The count
    // and the text are left as they are: only for use before `Assign` or the end.
    void Reset();

    // Makes room for `needed` characters, terminator included; when the text
    // has to move, the new block holds `needed + slack`. The text is kept.
    void Reserve(std::int32_t needed, std::int32_t slack);

    // The text, valid until the next change.
    const wchar_t* Chars() const { return chars; }
    std::int32_t Length() const { return count - 1; }
    bool IsEmpty() const { return count == 1; }
    // Characters that fit without a new block, terminator included; 128 while inline.
    std::int32_t Capacity() const { return capacity; }
    // The character at `pos`; 0 outside the text.
    wchar_t CharAt(std::int32_t pos) const;
    // The text in the active ANSI code page, valid until the next call or the end.
    // Changes the object: not from two threads, even on text that is only read.
    const char* Narrow();

    // Exact comparison. Null is equal to nothing, not even to the empty string.
    bool Equals(const wchar_t* text) const;
    bool Equals(const clString& text) const;
    // 1, 0 or -1 by unsigned 16-bit values after folding A to Z; null gives 1.
    // `limit` 0 compares all; above 0 only that many characters; -1 or POS_LAST
    // takes the length of `text`, so 0 then means "begins with text" (an empty
    // `text` compares all).
    std::int32_t CompareNoCase(const wchar_t* text, std::int32_t limit = 0) const;
    std::int32_t CompareNoCase(const clString& text, std::int32_t limit = 0) const;

    // Position of the first match at or behind `start`, or 0. An empty needle
    // matches at `start`; a start outside the text finds nothing.
    std::int32_t Find(const wchar_t* needle, std::int32_t start = 1, bool ignoreCase = false) const;
    std::int32_t Find(const clString& needle, std::int32_t start = 1,
                      bool ignoreCase = false) const;
    std::int32_t FindChar(wchar_t ch, std::int32_t start = 1) const;
    // Position of the last `ch`, or 0.
    std::int32_t FindLast(wchar_t ch) const;

    // The characters `first` to `last` inclusive, `last` clamped to the end; tag 0.
    clString Mid(std::int32_t first, std::int32_t last) const;
    clString Mid(std::int32_t first) const;
    clString Left(std::int32_t n) const;
    clString Right(std::int32_t n) const;

    // Removes `first` to `last` inclusive.
    void EraseRange(std::int32_t first, std::int32_t last);
    // Inserts before `pos`, which may be one behind the last character.
    void Insert(const wchar_t* text, std::int32_t pos);
    void Insert(const clString& text, std::int32_t pos);
    void Append(const wchar_t* text);
    void Append(const clString& text);
    void Append(wchar_t ch);  // 0 appends nothing
    // Append; the result is a copy with this object's tag.
    clString operator+=(const wchar_t* text);
    clString operator+=(const clString& text);
    clString operator+=(wchar_t ch);
    // Replaces every occurrence, left to right; replaced text is not searched again.
    void Replace(const clString& what, const clString& with);
    // Remove spaces (code 32 only) from that end.
    void TrimLeft();
    void TrimRight();
    // New strings in which only a to z, or A to Z, are changed; tag 0.
    clString Upper() const;
    clString Lower() const;

    // Leading spaces, one sign, then decimal digits up to the first other
    // character; wraps in 64 bits. No digits give 0.
    std::int64_t ToInt() const;
    // Exactly 16 upper-case hexadecimal digits.
    void FromHex(std::uint64_t value);
    // The same without leading zeros, at least one digit.
    void FromHexShort(std::uint64_t value);
    void FromUnsigned(std::uint64_t value);
    // Decimal text with at most `decimals` digits behind a "."; exact halves
    // round down, trailing zeros are not written, the sign is kept even when
    // the digits round to 0. Beyond the signed 64-bit range of the scaled value
    // the digits are those of 2 to the power of 63.
    void FromDouble(double value, std::int32_t decimals);
    // Printf-style text, `%s` and `%c` wide. Above 78,124,999 characters the
    // system's own small formatter answers (see string_format.h).
    void Format(const wchar_t* format, ...);
    void FormatList(const wchar_t* format, std::va_list arguments);

private:
    static constexpr std::int32_t inlineCapacity = 128;

    std::int32_t Resolve(std::int32_t pos) const { return pos == POS_LAST ? count - 1 : pos; }
    void FromSigned(std::int64_t value);
    void InsertMeasured(const wchar_t* text, std::int32_t length, std::int32_t pos,
                        std::int32_t slack);
    void AppendMeasured(const wchar_t* text, std::int32_t length, std::int32_t slack);
    void Trim(std::int32_t length);

    wchar_t* chars;      // inlineChars, or a heap block of this object
    std::int32_t count;  // characters and terminator

public:
    // Rides along with copies and with the copies that the operators return;
    // assigning text leaves it alone. Nothing here interprets it.
    std::int64_t tag;

private:
    wchar_t inlineChars[inlineCapacity];
    char* narrowChars;
    std::int64_t narrowSize;
    std::int32_t capacity;
};
