#include "foundation/wave_format.h"

#include <array>
#include <cstring>

namespace {

constexpr std::size_t fixedBytes = offsetof(WaveFormatRecord, cbSize);
constexpr std::uint16_t extensibleBytes = 22;
// Behind the valid bits (2) and the channel mask (4) of the extension.
constexpr std::size_t subFormatOffset = sizeof(WaveFormatRecord) + 6;

// A sub-format identifier is the tag and this suffix, as bytes in memory.
constexpr std::array<std::uint8_t, 12> mediaSuffix = {0x00, 0x00, 0x10, 0x00, 0x80, 0x00,
                                                      0x00, 0xAA, 0x00, 0x38, 0x9B, 0x71};
constexpr std::array<std::uint16_t, 6> subFormatTags = {1, 3, 6, 7, 2, 0x50};

}  // namespace

clWaveFormat::clWaveFormat() : inlineRecord(), format(&inlineRecord) {}

void clWaveFormat::SetFormat(const WaveFormatRecord* record) {
    if (record == format) return;
    const std::uint16_t extension = record->cbSize;
    buffer.Free();
    format = &inlineRecord;
    if (extension != 0 &&
        buffer.Resize(std::int64_t{sizeof(WaveFormatRecord)} + extension, false)) {
        format = reinterpret_cast<WaveFormatRecord*>(buffer.data);
        std::memcpy(buffer.data, record, sizeof(WaveFormatRecord) + extension);
    } else {
        std::memcpy(format, record, fixedBytes);
        format->cbSize = 0;
    }
    const std::uint16_t tag = EffectiveTag();
    if (tag == waveFormatPcm || tag == waveFormatIeeeFloat) {
        format->nBlockAlign = static_cast<std::uint16_t>(
            static_cast<std::uint32_t>(format->nChannels) * format->wBitsPerSample / 8);
        format->nAvgBytesPerSec = format->nBlockAlign * format->nSamplesPerSec;
    }
    if (format->nAvgBytesPerSec == 0) format->nAvgBytesPerSec = 1;
    if (format->nBlockAlign == 0) format->nBlockAlign = 1;
}

std::uint16_t clWaveFormat::EffectiveTag() const {
    if (format->wFormatTag != waveFormatExtensible || format->cbSize < extensibleBytes) {
        return format->wFormatTag;
    }
    const auto* subFormat = reinterpret_cast<const std::uint8_t*>(format) + subFormatOffset;
    if (std::memcmp(subFormat + 4, mediaSuffix.data(), mediaSuffix.size()) != 0) {
        return waveFormatExtensible;
    }
    std::uint32_t subTag = 0;
    std::memcpy(&subTag, subFormat, sizeof(subTag));
    for (const std::uint16_t tag : subFormatTags) {
        if (tag == subTag) return tag;
    }
    return waveFormatExtensible;
}
