// The counterpart for builds without Windows: code page 1252, and a formatter
// over the C library's narrow one, since its wide functions expect 32-bit units.
#include "foundation/text_platform.h"

#include <array>
#include <cstdio>
#include <string>

namespace text_platform {

namespace {

// Windows-1252 from 0x80 to 0x9F; the five unassigned codes stand for themselves.
constexpr std::array<wchar_t, 32> upperControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

wchar_t WideOf(unsigned char byte) {
    return byte >= 0x80 && byte < 0xA0 ? upperControls[byte - 0x80u] : static_cast<wchar_t>(byte);
}

char AnsiOf(wchar_t ch) {
    if (ch < 0x80 || (ch >= 0xA0 && ch < 0x100)) return static_cast<char>(ch);
    for (std::size_t i = 0; i < upperControls.size(); ++i) {
        if (upperControls[i] == ch) return static_cast<char>(0x80 + i);
    }
    return '?';
}

// Collects what fits and counts what would have been written.
class Output {
public:
    Output(wchar_t* out, std::size_t limit) : out_(out), limit_(limit) {}
    void Put(wchar_t ch) {
        if (length_ < limit_) out_[length_] = ch;
        ++length_;
    }
    void Fill(wchar_t ch, int count) {
        // What cannot fit is not written in part: nobody looks at it.
        if (count > 0 && static_cast<std::size_t>(count) > limit_) length_ = limit_ + 1;
        for (int i = 0; i < count && length_ <= limit_; ++i)
            Put(ch);
    }
    std::int32_t Finish() {
        if (length_ > limit_) return -1;
        if (length_ < limit_) out_[length_] = 0;
        return static_cast<std::int32_t>(length_);
    }

private:
    wchar_t* out_;
    std::size_t limit_;
    std::size_t length_ = 0;
};

struct Conversion {
    std::string format = "%";  // what the narrow formatter gets
    int width = 0;
    bool left = false;
    int precision = -1;
    bool wide64 = false;
    wchar_t letter = 0;
};

Conversion ReadConversion(const wchar_t*& at) {
    Conversion result;
    bool behindPoint = false;
    for (; *at != 0; ++at) {
        const wchar_t ch = *at;
        if (ch >= L'0' && ch <= L'9') {
            int& number = behindPoint ? result.precision : result.width;
            number = number * 10 + (ch - L'0');
        } else if (ch == L'.') {
            behindPoint = true;
            result.precision = 0;
        } else if (ch == L'-') {
            result.left = true;
        } else if (ch == L'l') {
            result.wide64 = result.format.ends_with('l');
        } else if (ch != L'+' && ch != L' ' && ch != L'#') {
            result.letter = ch;
            ++at;
            break;
        }
        result.format += static_cast<char>(ch);
    }
    result.format += static_cast<char>(result.letter);
    return result;
}

void PutPadded(Output& output, const wchar_t* text, const Conversion& conversion) {
    int length = 0;
    while (text[length] != 0 && (conversion.precision < 0 || length < conversion.precision)) {
        ++length;
    }
    const int padding = conversion.width - length;
    if (!conversion.left) output.Fill(L' ', padding);
    for (int i = 0; i < length; ++i)
        output.Put(text[i]);
    if (conversion.left) output.Fill(L' ', padding);
}

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
template <typename Value>
void PutNumber(Output& output, const Conversion& conversion, Value value) {
    std::string text(
        static_cast<std::size_t>(std::snprintf(nullptr, 0, conversion.format.c_str(), value)),
        '\0');
    std::snprintf(text.data(), text.size() + 1, conversion.format.c_str(), value);
    for (const char ch : text)
        output.Put(static_cast<wchar_t>(ch));
}
#pragma GCC diagnostic pop

}  // namespace

std::int32_t WideFromAnsi(const char* text, wchar_t* out, std::int32_t capacity) {
    std::int32_t needed = 0;
    do {
        if (capacity > 0 && needed == capacity) return 0;
        if (capacity > 0) out[needed] = WideOf(static_cast<unsigned char>(text[needed]));
    } while (text[needed++] != 0);
    return needed;
}

std::int32_t AnsiFromWide(const wchar_t* text, char* out, std::int32_t capacity) {
    std::int32_t needed = 0;
    do {
        if (capacity > 0 && needed == capacity) return 0;
        if (capacity > 0) out[needed] = AnsiOf(text[needed]);
    } while (text[needed++] != 0);
    return needed;
}

std::int32_t FormatBounded(wchar_t* out, std::size_t limit, const wchar_t* format,
                           std::va_list arguments) {
    Output output(out, limit);
    for (const wchar_t* at = format; *at != 0;) {
        if (*at != L'%') {
            output.Put(*at++);
            continue;
        }
        ++at;
        const Conversion conversion = ReadConversion(at);
        switch (conversion.letter) {
            case L'%':
                output.Put(L'%');
                break;
            case L's': {
                const wchar_t* text = va_arg(arguments, const wchar_t*);
                PutPadded(output, text != nullptr ? text : L"(null)", conversion);
                break;
            }
            case L'c':
                output.Put(static_cast<wchar_t>(va_arg(arguments, int)));
                break;
            case L'd':
            case L'i':
            case L'u':
            case L'x':
            case L'X':
                if (conversion.wide64) {
                    PutNumber(output, conversion, va_arg(arguments, long long));
                } else {
                    PutNumber(output, conversion, va_arg(arguments, int));
                }
                break;
            case L'f':
                PutNumber(output, conversion, va_arg(arguments, double));
                break;
            default:
                return -1;
        }
    }
    return output.Finish();
}

}  // namespace text_platform
