// The one source of a decoder library itself: all of its code comes from the
// static library beside it, and the build tool wants a source all the same.
#include "companions/common/exports.h"

static_assert(sizeof(DecoderChar) == 2, "text crosses the boundary as UTF-16");
