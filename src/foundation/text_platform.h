// What the string asks of the platform: its ANSI code page and its formatter.
#pragma once

#include <cstdarg>
#include <cstddef>
#include <cstdint>

namespace text_platform {

// Convert NUL-terminated text and its terminator. The result is the number of
// units written or, with `capacity` 0, needed, terminator included; 0 on failure.
std::int32_t WideFromAnsi(const char* text, wchar_t* out, std::int32_t capacity);
std::int32_t AnsiFromWide(const wchar_t* text, char* out, std::int32_t capacity);

// Printf-style text into `out`, `%s` wide. At most `limit` characters are
// written; a terminator follows only if there is room left. The result is the
// length, or negative if the text is longer than `limit`.
std::int32_t FormatBounded(wchar_t* out, std::size_t limit, const wchar_t* format,
                           std::va_list arguments);

}  // namespace text_platform
