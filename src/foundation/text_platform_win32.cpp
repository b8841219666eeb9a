#include "foundation/text_platform.h"

#include <windows.h>

#include <cwchar>

namespace text_platform {

std::int32_t WideFromAnsi(const char* text, wchar_t* out, std::int32_t capacity) {
    return MultiByteToWideChar(CP_ACP, 0, text, -1, out, capacity);
}

std::int32_t AnsiFromWide(const wchar_t* text, char* out, std::int32_t capacity) {
    return WideCharToMultiByte(CP_ACP, 0, text, -1, out, capacity, nullptr, nullptr);
}

std::int32_t FormatBounded(wchar_t* out, std::size_t limit, const wchar_t* format,
                           std::va_list arguments) {
    // The runtime's own form: unlike the standard one its %s takes wide text.
    return _vsnwprintf(out, limit, format, arguments);
}

}  // namespace text_platform
