// The codings that the containers name, and what each of them means.
#pragma once

#include <cstdint>
#include <string_view>

#include "companions/decoder-pcm/byte_reader.h"

namespace companion::pcm {

enum class Codec {
    unknown,
    pcm,
    ieeeFloat,
    aLaw,
    muLaw,
    msAdpcm,
    imaAdpcm,
    appleIma,
    yamahaAdpcm,
    g721,
    g722,
    g723,
    gsm610,
    trueSpeech,
    mace,
    mpegLayer2,
    mpegLayer3,
    aac,
    ac3,
    dts,
    windowsMedia,
    vorbis,
    opus,
    amr,
    qdesign,
    alac,
    flac,
};

struct CodecTraits {
    const char16_t* name;
    bool lossless;
    // How many kbps of an MP3 one kbps of this coding is worth. The codings of
    // telephony and of early computers need several times the bits.
    double weight;
};

const CodecTraits& TraitsOf(Codec codec);

// True where each sample has a place of its own, so that the size of the audio
// is frames x channels x bytes of a sample.
bool IsSampleCoded(Codec codec);

// A format tag of WAVEFORMATEX, as published in Microsoft's mmreg.h.
Codec CodecOfWaveTag(std::uint16_t tag);

// What a compression type of AIFF-C or a format of CAF stands for. `bits` and
// `order` are 0 and big where the type does not settle them.
struct FourCode {
    Codec codec = Codec::unknown;
    std::uint32_t bits = 0;
    ByteOrder order = ByteOrder::big;
};

// A compression type of AIFF-C: Apple's "AIFF-C" and "QuickTime File Format".
FourCode CodecOfAifcType(std::string_view type);

// A format identifier of CAF, as Apple's Core Audio Format document lists them.
Codec CodecOfCafFormat(std::string_view format);

// An encoding of Sun's .au header.
FourCode CodecOfAuEncoding(std::uint32_t encoding);

}  // namespace companion::pcm
