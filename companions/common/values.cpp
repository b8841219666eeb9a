#include "companions/common/values.h"

#include <cstddef>

namespace companion {

std::u16string JoinedValues(const std::vector<std::u16string>& values) {
    std::u16string joined;
    for (const std::u16string& value : values) {
        if (!joined.empty()) joined.push_back(u'\r');
        joined += value;
    }
    return joined;
}

std::u16string OneValue(std::u16string_view text) {
    std::u16string value;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool beforeLineFeed = i + 1 < text.size() && text[i + 1] == u'\n';
        if (text[i] != u'\r')
            value.push_back(text[i]);
        else if (!beforeLineFeed)
            value.push_back(u'\n');
    }
    return value;
}

}  // namespace companion
