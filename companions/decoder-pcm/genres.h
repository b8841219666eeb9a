// Genres as numbers, which ID3 brought into the world.
#pragma once

#include <cstdint>
#include <string_view>

#include "companions/decoder-pcm/tag_set.h"

namespace companion::pcm {

// The name of a genre of ID3v1 and its later extensions; empty for a number
// without one.
std::u16string_view GenreName(std::uint32_t number);

// Adds the genres of one text: names as they stand, numbers, and the form
// "(17)(RX)Refinement" of ID3v2.3. A refinement that repeats the number's name
// is one genre.
void AddGenres(TagSet& tags, std::u16string_view text);

}  // namespace companion::pcm
