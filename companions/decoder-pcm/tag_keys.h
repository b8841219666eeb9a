// From the keys that files use for their tags to the names of the columns.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "companions/decoder-pcm/findings.h"

namespace companion::pcm {

// Adds the value of a free-form key ("artist", "TRACKNUMBER", "Album Artist"
// ...), of which blanks and underscores count alike and case does not. Keys
// that no column shows are left out. "encoder" goes to the findings.
void AddKeyed(Findings& findings, TagSet& tags, std::u16string_view key, std::u16string_view value);

// The first four characters of a date when they are digits, else the whole.
std::u16string_view YearOf(std::u16string_view date);

// 0 to 10 from the byte of an ID3v2 popularimeter.
std::uint32_t RatingFromPopularity(std::uint8_t popularity);

// 0 to 10 from text: a fraction up to 1 with a point, up to 5 stars, up to 10,
// up to 100 percent, above that as a popularimeter. Nothing for no number.
std::optional<std::uint32_t> RatingFromText(std::u16string_view text);

}  // namespace companion::pcm
