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

// 0 to 10 from text (see common/rating.h), with a point or a comma. Nothing for
// what is no number.
std::optional<std::uint32_t> RatingFromText(std::u16string_view text);

}  // namespace companion::pcm
