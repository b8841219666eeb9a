#include "decoders/records.h"

#include <algorithm>
#include <cstring>

void TakeWaveFormat(const DecoderOpenRecord& record, clWaveFormat& format) {
    // A copy, since what follows the record's 40 bytes is another field.
    DecoderWaveFormat bounded = record.waveFormat;
    bounded.cbSize = std::min<std::uint16_t>(bounded.cbSize, sizeof(bounded.extension));
    // Records side by side are storage that may be read as one with its extension.
    WaveFormatRecord withExtension[3];
    static_assert(sizeof(withExtension) >= sizeof(bounded));
    std::memcpy(withExtension, &bounded, sizeof(bounded));
    format.SetFormat(withExtension);
}
