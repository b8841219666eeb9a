// The few rules on single characters and bare text that everything shares.
#pragma once

#include <cstdint>

// A to Z onto a to z; every other unit as it is.
constexpr wchar_t FoldAscii(wchar_t ch) {
    return ch >= L'A' && ch <= L'Z' ? static_cast<wchar_t>(ch + 32) : ch;
}

// a to z onto A to Z; every other unit as it is.
constexpr wchar_t UpperAscii(wchar_t ch) {
    return ch >= L'a' && ch <= L'z' ? static_cast<wchar_t>(ch - 32) : ch;
}

// Units before the terminator. The C library's function expects other units
// in builds without Windows.
constexpr std::int32_t MeasureText(const wchar_t* text) {
    std::int32_t length = 0;
    while (text[length] != 0)
        ++length;
    return length;
}
