// The records that cross the boundary to a decoder, as the program uses them:
// their layout pinned, and the wave format taken out of one.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "foundation/wave_format.h"
#include "sdk/decoder.h"

static_assert(std::is_same_v<DecoderChar, wchar_t>, "decoder text is the program's own text");

static_assert(sizeof(DecoderCreateRecord) == 24 && offsetof(DecoderCreateRecord, reserved) == 0);

static_assert(sizeof(DecoderGetRecord) == 56);
static_assert(offsetof(DecoderGetRecord, index) == 0);
static_assert(offsetof(DecoderGetRecord, reservedIn) == 4);
static_assert(offsetof(DecoderGetRecord, text) == 24);
static_assert(offsetof(DecoderGetRecord, text2) == 32);
static_assert(offsetof(DecoderGetRecord, reservedOut) == 40);

static_assert(sizeof(DecoderWaveFormat) == 40);
static_assert(offsetof(DecoderWaveFormat, wFormatTag) == offsetof(WaveFormatRecord, wFormatTag));
static_assert(offsetof(DecoderWaveFormat, nChannels) == offsetof(WaveFormatRecord, nChannels));
static_assert(offsetof(DecoderWaveFormat, nSamplesPerSec) ==
              offsetof(WaveFormatRecord, nSamplesPerSec));
static_assert(offsetof(DecoderWaveFormat, nAvgBytesPerSec) ==
              offsetof(WaveFormatRecord, nAvgBytesPerSec));
static_assert(offsetof(DecoderWaveFormat, nBlockAlign) == offsetof(WaveFormatRecord, nBlockAlign));
static_assert(offsetof(DecoderWaveFormat, wBitsPerSample) ==
              offsetof(WaveFormatRecord, wBitsPerSample));
static_assert(offsetof(DecoderWaveFormat, cbSize) == offsetof(WaveFormatRecord, cbSize));
static_assert(offsetof(DecoderWaveFormat, extension) == sizeof(WaveFormatRecord));

static_assert(sizeof(DecoderOpenRecord) == 128);
static_assert(offsetof(DecoderOpenRecord, fileName) == 0);
static_assert(offsetof(DecoderOpenRecord, flags) == 8);
static_assert(offsetof(DecoderOpenRecord, waveFormat) == 12);
static_assert(offsetof(DecoderOpenRecord, bitRate) == 52);
static_assert(offsetof(DecoderOpenRecord, lengthMs) == 56);
static_assert(offsetof(DecoderOpenRecord, sourceBytes) == 64);
static_assert(offsetof(DecoderOpenRecord, reservedA) == 72);
static_assert(offsetof(DecoderOpenRecord, tags) == 80);
static_assert(offsetof(DecoderOpenRecord, tagsSize) == 88);
static_assert(offsetof(DecoderOpenRecord, properties) == 92);
static_assert(offsetof(DecoderOpenRecord, propertiesSize) == 100);
static_assert(offsetof(DecoderOpenRecord, reservedB) == 104);
static_assert(DECODER_OPEN_FLAGS == 28);

// Takes the record's wave format into `format`, which normalises it. A `cbSize`
// beyond the extension bytes that the record has counts as all of them.
void TakeWaveFormat(const DecoderOpenRecord& record, clWaveFormat& format);
