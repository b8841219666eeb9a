// Reading a file that is open already.
#pragma once

#include <string_view>

#include "companions/common/byte_source.h"
#include "companions/common/decoder_library.h"

namespace companion {

// As ReadFile, over any source. `extension` is in lower case with its dot.
bool ReadSource(ByteSource& file, std::u16string_view extension, FileFacts& facts);

}  // namespace companion
