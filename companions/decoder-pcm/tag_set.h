// The tags of one file as they are gathered: one entry for each name.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "companions/common/tag_block.h"

namespace companion::pcm {

class TagSet {
public:
    // Adds a value behind those that the name has already, with one CR between
    // them. Blanks at both ends go, a line break inside becomes one LF, and an
    // empty value or one that the name has is left out. A value is cut at 32768
    // units and a name takes 65536 in all: files are not to be trusted, and
    // nothing that anyone reads in a list is longer.
    void Add(std::u16string_view name, std::u16string_view value);

    // Adds only when the name has no value yet.
    void AddIfNone(std::u16string_view name, std::u16string_view value);

    // The value of a name, empty when it has none.
    std::u16string_view Get(std::u16string_view name) const;

    // Appends "/total" to a number such as "Track" that has no total yet.
    void AddTotal(std::u16string_view name, std::u16string_view total);

    // Copies the entries of the names that this set does not have.
    void Merge(const TagSet& other);

    bool Empty() const { return _tags.empty(); }
    const std::vector<Tag>& Tags() const { return _tags; }

private:
    Tag* Find(std::u16string_view name);

    std::vector<Tag> _tags;
};

}  // namespace companion::pcm
