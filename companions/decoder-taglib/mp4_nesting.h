// Whether the boxes of an MPEG-4 file can be given to TagLib.
#pragma once

#include "companions/common/byte_source.h"

namespace companion {

// TagLib calls itself for each box within a box and would run out of stack
// where they are nested thousands deep. This walks the file the way TagLib
// does, sizes that leave their box behind included; false when the nesting or
// the number of boxes is beyond anything that a real file has.
bool Mp4NestingIsSane(ByteSource& source);

}  // namespace companion
