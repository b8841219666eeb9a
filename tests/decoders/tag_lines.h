// A tag list in expectations.
#pragma once

#include <string>

#include "decoders/tag_list.h"
#include "tests/support/text.h"

// "name=value" of each entry, each with an LF.
inline std::string Lines(const TagList& tags) {
    std::string lines;
    for (std::int64_t i = 0; i < tags.Count(); ++i)
        lines += Utf8(tags.At(i).name) + '=' + Utf8(tags.At(i).value) + '\n';
    return lines;
}
