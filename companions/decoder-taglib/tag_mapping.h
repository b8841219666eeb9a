// From the names that TagLib gives to tags to the names of the program's columns.
#pragma once

#include <tpropertymap.h>
#include <tstring.h>

#include <optional>
#include <string>
#include <vector>

#include "companions/common/tag_block.h"

namespace companion {

// What formats keep outside of the common names.
struct SpecialTags {
    std::optional<int> rating;  // 0 to 10
    std::optional<unsigned> playCount;
    bool gainIsR128 = false;  // Opus: gains may be in the R128 form (RFC 7845, 5.2.1)
};

// One entry for each column that the file has something for, in the order of
// the columns. Several values are separated by a CR; a line break within a
// value is a LF.
std::vector<Tag> MapTags(const TagLib::PropertyMap& properties, const SpecialTags& special);

// UTF-16, as TagLib holds it.
std::u16string ToText(const TagLib::String& text);

}  // namespace companion
