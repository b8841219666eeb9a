// Comparing and hashing paths without regard to the case of A to Z.
#pragma once

#include <cstdint>
#include <cstring>

#include "foundation/string.h"
#include "foundation/text.h"

// True if the first `length` units of both are equal but for case.
inline bool SamePathText(const wchar_t* left, const wchar_t* right, std::int32_t length) {
    // Nearly all equal paths are equal in case too.
    if (std::memcmp(left, right, static_cast<std::size_t>(length) * sizeof(wchar_t)) == 0)
        return true;
    for (std::int32_t i = 0; i < length; ++i) {
        if (FoldAscii(left[i]) != FoldAscii(right[i])) return false;
    }
    return true;
}

inline bool SamePath(const clString& left, const clString& right) {
    return left.Length() == right.Length() &&
           SamePathText(left.Chars(), right.Chars(), left.Length());
}

// Length of the folder part of a path: up to and including its last backslash;
// all of a path without one.
inline std::int32_t FolderLength(const clString& path) {
    const std::int32_t last = path.FindLast(L'\\');
    return last == 0 ? path.Length() : last;
}

// A hash of text that grows piece by piece: the hash of a folder is made once and
// extended by the name of each entry, with the same result as over the whole path.
class PathHash {
public:
    // Adds the next `length` units of the path.
    void Extend(const wchar_t* text, std::int32_t length) {
        std::int32_t i = 0;
        // Four units a step: the chain of multiplications is a quarter as long.
        for (; i + 4 <= length; i += 4) {
            state_ = state_ * factor4 + Unit(text[i]) * factor3 + Unit(text[i + 1]) * factor2 +
                     Unit(text[i + 2]) * factor + Unit(text[i + 3]);
        }
        for (; i < length; ++i)
            state_ = state_ * factor + Unit(text[i]);
    }

    // The hash of what was added so far; every unit bears on every bit of it.
    std::uint32_t Value() const {
        std::uint64_t mixed = state_;
        mixed = (mixed ^ (mixed >> 32)) * mixer;
        mixed = (mixed ^ (mixed >> 32)) * mixer;
        return static_cast<std::uint32_t>(mixed >> 32);
    }

    static std::uint32_t Of(const wchar_t* text, std::int32_t length) {
        PathHash hash;
        hash.Extend(text, length);
        return hash.Value();
    }
    static std::uint32_t Of(const clString& path) { return Of(path.Chars(), path.Length()); }

private:
    // Odd and without pattern: paths that differ in a few digits do not meet.
    static constexpr std::uint64_t factor = 0x9E3779B97F4A7C15u;
    static constexpr std::uint64_t factor2 = factor * factor;
    static constexpr std::uint64_t factor3 = factor2 * factor;
    static constexpr std::uint64_t factor4 = factor3 * factor;
    static constexpr std::uint64_t mixer = 0xD6E8FEB86659FD93u;

    static std::uint64_t Unit(wchar_t ch) { return FoldAscii(ch); }

    std::uint64_t state_ = 0;
};
