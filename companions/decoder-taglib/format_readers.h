// One reader for each format: facts and tags of a file whose format is known.
#pragma once

#include <vector>

#include "companions/common/byte_source.h"
#include "companions/common/tag_block.h"
#include "companions/decoder-taglib/content_kind.h"
#include "companions/decoder-taglib/properties.h"

namespace companion {

// False when the file is not what it seemed to be or is damaged beyond use;
// what was filled in so far then means nothing.
bool ReadFormat(ContentKind kind, ByteSource& source, AudioSpan span, AudioFacts& audio,
                std::vector<Tag>& tags);

struct Reading;

// Those of them that have a source file of their own.
bool ReadMp4(Reading& reading);
bool ReadAsf(Reading& reading);

}  // namespace companion
