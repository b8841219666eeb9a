// The rows of the filter.
#pragma once

#include <cstdint>

#include "decoders/audio_type.h"
#include "foundation/arrays.h"
#include "foundation/string.h"

// The types' labels, "Free Lossless Audio Codec   (.flac)", in the order of their
// text without regard to the case of A to Z; the tag of each is its type's index.
void FilterLabels(const clAudioTypes& types, clStringList& labels);
