// Several values in one text, with a CR between them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace companion {

std::u16string JoinedValues(const std::vector<std::u16string>& values);

// A text that can stand as one value: CR LF and a lone CR become LF.
std::u16string OneValue(std::u16string_view text);

}  // namespace companion
