// The nine exports of a decoder library, as sdk/decoder.h describes them.
// Each library compiles `exports.cpp` once and so has them under these names.
#pragma once

#include <cstdint>

#include "sdk/decoder.h"

#ifdef _WIN32
#define COMPANION_EXPORT __declspec(dllexport)
#else
#define COMPANION_EXPORT
#endif

extern "C" {

// A new instance, or 0 without memory. `record` may be null. Any thread.
COMPANION_EXPORT DecoderInstance Create(DecoderCreateRecord* record);

// Ends an instance; its texts and blocks end with it. 0 is ignored.
COMPANION_EXPORT void Destroy(DecoderInstance instance);

// Answers 1 for an element that exists, else 0 with both texts null. The texts
// are static and outlive the instance.
COMPANION_EXPORT std::int32_t Get(DecoderInstance instance, const DecoderChar* name,
                                  DecoderGetRecord* record);

// Answers 1 and fills the record, or 0 and leaves it as it was. Each call ends
// the blocks of the one before.
COMPANION_EXPORT std::int32_t Open(DecoderInstance instance, DecoderOpenRecord* record);

// Not offered by these libraries, which read facts and decode nothing: 0.
COMPANION_EXPORT std::int64_t Set();
COMPANION_EXPORT std::int64_t Close();
COMPANION_EXPORT std::int64_t DecodeBlock();
COMPANION_EXPORT std::int64_t SetPosition();
COMPANION_EXPORT std::int64_t DeleteATag();
}
