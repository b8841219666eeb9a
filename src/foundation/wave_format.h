// One wave format record, as Windows' multimedia headers publish it.
#pragma once

#include <cstddef>
#include <cstdint>

#include "foundation/bytes.h"

// WAVEFORMATEX, 18 bytes; `cbSize` bytes of extension follow it in memory.
#pragma pack(push, 1)
struct WaveFormatRecord {
    std::uint16_t wFormatTag;
    std::uint16_t nChannels;
    std::uint32_t nSamplesPerSec;
    std::uint32_t nAvgBytesPerSec;
    std::uint16_t nBlockAlign;
    std::uint16_t wBitsPerSample;
    std::uint16_t cbSize;
};
#pragma pack(pop)
static_assert(sizeof(WaveFormatRecord) == 18 && offsetof(WaveFormatRecord, cbSize) == 16);

inline constexpr std::uint16_t waveFormatPcm = 1;
inline constexpr std::uint16_t waveFormatIeeeFloat = 3;
inline constexpr std::uint16_t waveFormatExtensible = 0xFFFE;

class clWaveFormat {
public:
    clWaveFormat();
    clWaveFormat(const clWaveFormat&) = delete;
    clWaveFormat& operator=(const clWaveFormat&) = delete;

    // Copies `record` and the `cbSize` bytes behind it, which must be readable.
    // For integer PCM and float the block alignment and the byte rate are
    // computed anew; for every tag a 0 in either becomes 1. When the extension
    // cannot be stored the fixed part is kept without it.
    void SetFormat(const WaveFormatRecord* record);
    // The format tag, an extensible record resolved by the published
    // KSDATAFORMAT_SUBTYPE identifiers; 0xFFFE when none of them fits.
    std::uint16_t EffectiveTag() const;
    const WaveFormatRecord& Format() const { return *format; }

private:
    clByteBuffer buffer;            // a record with its extension
    WaveFormatRecord inlineRecord;  // a record without one
    WaveFormatRecord* format;       // whichever of the two is current
};
