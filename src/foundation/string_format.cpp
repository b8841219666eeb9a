#include "foundation/string_format.h"

#include <memory>

#include "foundation/string.h"
#include "foundation/text_platform.h"

namespace {

constexpr std::int32_t firstSize = 1000;
constexpr std::int32_t sizeFactor = 5;
constexpr std::int32_t sizeEnd = 104857600;   // sizes stay below it
constexpr std::int32_t widthEnd = 100000000;  // more digits are not read into a number

struct Conversion {
    std::int32_t width = 0;
    std::int32_t precision = 5;
    wchar_t letter = 0;  // 0 when it is broken
};

void TakeDigit(std::int32_t& number, wchar_t digit) {
    if (number < widthEnd / 10) number = number * 10 + (digit - L'0');
}

bool IsConversion(wchar_t ch) {
    for (const wchar_t letter : {L'%', L'd', L'i', L'u', L'x', L'X', L'f', L's'}) {
        if (ch == letter) return true;
    }
    return false;
}

// `at` stands behind the percent sign, and afterwards behind the letter.
Conversion ReadConversion(const wchar_t*& at) {
    Conversion result;
    bool behindPoint = false;
    for (; *at != 0; ++at) {
        if (*at >= L'0' && *at <= L'9') {
            TakeDigit(behindPoint ? result.precision : result.width, *at);
        } else if (*at == L'.') {
            if (behindPoint) return result;
            behindPoint = true;
            result.precision = 0;
        } else if (IsConversion(*at)) {
            result.letter = *at++;
            return result;
        }
    }
    return result;
}

void AppendPadded(clString& result, const clString& digits, std::int32_t width) {
    for (std::int32_t i = digits.Length(); i < width; ++i)
        result.Append(L'0');
    result.Append(digits);
}

void AppendSigned(clString& result, std::int32_t value, std::int32_t width) {
    const std::int64_t wide = value;
    if (wide < 0) {
        result.Append(L'-');
        if (width != 0) --width;
    }
    AppendPadded(result, clString(wide < 0 ? -wide : wide), width);
}

void AppendUnsigned(clString& result, std::uint32_t value, const Conversion& conversion) {
    clString digits;
    if (conversion.letter == L'u') {
        digits.FromUnsigned(value);
    } else {
        digits.FromHexShort(value);
        if (conversion.letter == L'x') digits.Assign(digits.Lower());
    }
    AppendPadded(result, digits, conversion.width);
}

}  // namespace

void FormatUnbounded(clString& result, const wchar_t* format, std::va_list arguments) {
    result.Assign(L"");
    for (const wchar_t* at = format; *at != 0;) {
        if (*at != L'%') {
            result.Append(*at++);
            continue;
        }
        ++at;
        const Conversion conversion = ReadConversion(at);
        switch (conversion.letter) {
            case L'%':
                result.Append(L'%');
                break;
            case L'd':
            case L'i':
                AppendSigned(result, va_arg(arguments, std::int32_t), conversion.width);
                break;
            case L'u':
            case L'x':
            case L'X':
                AppendUnsigned(result, va_arg(arguments, std::uint32_t), conversion);
                break;
            case L'f': {
                clString digits;
                digits.FromDouble(va_arg(arguments, double), conversion.precision);
                result.Append(digits);
                break;
            }
            case L's':
                result.Append(va_arg(arguments, const wchar_t*));
                break;
            default:
                result.Assign(L"");
                return;
        }
    }
}

void clString::Format(const wchar_t* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    FormatList(format, arguments);
    va_end(arguments);
}

void clString::FormatList(const wchar_t* format, std::va_list arguments) {
    // The arguments may point into this object's own text, so it is set last.
    clString result;
    for (std::int32_t size = firstSize; size < sizeEnd; size *= sizeFactor) {
        const auto limit = static_cast<std::size_t>(size - 1);
        const auto buffer = std::make_unique_for_overwrite<wchar_t[]>(limit + 1);
        std::va_list copy;
        va_copy(copy, arguments);
        const std::int32_t length = text_platform::FormatBounded(buffer.get(), limit, format, copy);
        va_end(copy);
        if (length >= 0 && static_cast<std::size_t>(length) <= limit) {
            Assign(buffer.get(), length + 1);
            return;
        }
    }
    FormatUnbounded(result, format, arguments);
    Assign(result);
}
