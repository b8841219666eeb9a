// Text of audio files, from the encodings in which they hold it, to UTF-16.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "companions/decoder-pcm/byte_reader.h"

namespace companion::pcm {

// Everything up to the first NUL, where each of these ends.
std::u16string FromLatin1(std::string_view bytes);
std::u16string FromWindows1252(std::string_view bytes);
// A malformed sequence becomes U+FFFD, one for each byte that leads nowhere.
std::u16string FromUtf8(std::string_view bytes);
// A byte order mark overrides `order` and is left out; an odd last byte too.
std::u16string FromUtf16(std::string_view bytes, ByteOrder order);
// For fields that say nothing of their encoding: UTF-8 when the bytes are
// valid as that, else Windows-1252.
std::u16string FromUnknown(std::string_view bytes);

bool IsUtf8(std::string_view bytes);

// Without the blanks and controls at both ends.
std::u16string_view Trimmed(std::u16string_view text);

// A to Z made small; everything else as it is.
std::u16string Folded(std::u16string_view text);

// A decimal number, as UTF-16.
std::u16string Decimal(std::uint64_t value);

// The leading digits behind blanks; 0 without any, and when it passes 32 bits.
std::uint32_t LeadingNumber(std::u16string_view text);

}  // namespace companion::pcm
