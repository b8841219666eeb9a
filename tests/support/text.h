// Text in expectations: as UTF-8, so that a failure can be read.
#pragma once

#include <ostream>
#include <string>

#include "foundation/string.h"

// UTF-8 of UTF-16 text; a lone surrogate becomes U+FFFD. Null gives "(null)".
std::string Utf8(const wchar_t* text);

inline std::string Utf8(const clString& text) {
    return Utf8(text.Chars());
}

inline void PrintTo(const clString& text, std::ostream* out) {
    *out << '"' << Utf8(text) << '"';
}
