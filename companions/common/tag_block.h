// Tags as a decoder hands them over: a list of entries, and its packed form.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace companion {

struct Tag {
    std::u16string name;
    std::u16string value;            // several values are separated by one CR
    std::vector<std::uint8_t> data;  // binary payload, mostly empty
};

// The packed block of sdk/decoder.h. Empty for no tags, so that the caller
// hands over a null pointer. A NUL inside a name or value ends it there. What
// would not fit into the 31 bits of a size is left out, with all behind it.
std::vector<std::uint8_t> PackTags(const std::vector<Tag>& tags);

}  // namespace companion
