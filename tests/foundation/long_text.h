// Text that is too long to write out.
#pragma once

#include <cstdint>

#include "foundation/string.h"

// `length` times `ch`.
inline clString Repeated(wchar_t ch, std::int32_t length) {
    clString result;
    while (result.Length() < length)
        result.Append(ch);
    return result;
}

// `start`, filled up with letters to `length` characters.
inline clString OfLength(const wchar_t* start, std::int32_t length) {
    clString result(start);
    result.Append(Repeated(L'a', length - result.Length()));
    return result;
}
