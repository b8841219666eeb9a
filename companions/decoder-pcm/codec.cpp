#include "companions/decoder-pcm/codec.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace companion::pcm {
namespace {

struct NamedTraits {
    Codec codec;
    CodecTraits traits;
};

constexpr double waveformWeight = 0.3;  // codings of single samples, without a model of hearing

constexpr NamedTraits allTraits[] = {
    {Codec::pcm, {u"PCM", true, 1}},
    {Codec::ieeeFloat, {u"PCM (floating point)", true, 1}},
    {Codec::aLaw, {u"A-law", false, waveformWeight}},
    {Codec::muLaw, {u"mu-law", false, waveformWeight}},
    {Codec::msAdpcm, {u"Microsoft ADPCM", false, waveformWeight}},
    {Codec::imaAdpcm, {u"IMA ADPCM", false, waveformWeight}},
    {Codec::appleIma, {u"IMA 4:1", false, waveformWeight}},
    {Codec::yamahaAdpcm, {u"Yamaha ADPCM", false, waveformWeight}},
    {Codec::g721, {u"G.721 ADPCM", false, waveformWeight}},
    {Codec::g722, {u"G.722 ADPCM", false, waveformWeight}},
    {Codec::g723, {u"G.723 ADPCM", false, waveformWeight}},
    {Codec::gsm610, {u"GSM 6.10", false, 1}},
    {Codec::trueSpeech, {u"TrueSpeech", false, 1}},
    {Codec::mace, {u"MACE", false, waveformWeight}},
    {Codec::mpegLayer2, {u"MPEG Layer II", false, 0.7}},
    {Codec::mpegLayer3, {u"MPEG Layer III", false, 1}},
    {Codec::aac, {u"AAC", false, 1.4}},
    {Codec::ac3, {u"AC-3", false, 0.7}},
    {Codec::dts, {u"DTS", false, 0.3}},
    {Codec::windowsMedia, {u"Windows Media Audio", false, 1.2}},
    {Codec::vorbis, {u"Vorbis", false, 1.3}},
    {Codec::opus, {u"Opus", false, 1.5}},
    {Codec::amr, {u"AMR", false, 1}},
    {Codec::qdesign, {u"QDesign Music", false, 1}},
    {Codec::alac, {u"ALAC", true, 1}},
    {Codec::flac, {u"FLAC", true, 1}},
};

struct WaveTag {
    std::uint16_t tag;
    Codec codec;
};

constexpr WaveTag waveTags[] = {
    {0x0001, Codec::pcm},          {0x0002, Codec::msAdpcm},      {0x0003, Codec::ieeeFloat},
    {0x0006, Codec::aLaw},         {0x0007, Codec::muLaw},        {0x0008, Codec::dts},
    {0x0011, Codec::imaAdpcm},     {0x0014, Codec::g723},         {0x0020, Codec::yamahaAdpcm},
    {0x0022, Codec::trueSpeech},   {0x0031, Codec::gsm610},       {0x0040, Codec::g721},
    {0x0045, Codec::g721},         {0x0050, Codec::mpegLayer2},   {0x0055, Codec::mpegLayer3},
    {0x0064, Codec::g721},         {0x0065, Codec::g722},         {0x0092, Codec::ac3},
    {0x00FF, Codec::aac},          {0x0160, Codec::windowsMedia}, {0x0161, Codec::windowsMedia},
    {0x0162, Codec::windowsMedia}, {0x028F, Codec::g722},         {0x1600, Codec::aac},
    {0x1610, Codec::aac},          {0x2000, Codec::ac3},          {0x2001, Codec::dts},
    {0x674F, Codec::vorbis},       {0x6750, Codec::vorbis},       {0x6751, Codec::vorbis},
    {0x704F, Codec::opus},         {0xA106, Codec::aac},          {0xF1AC, Codec::flac},
};

struct NamedCode {
    std::string_view type;
    FourCode code;
};

constexpr NamedCode aifcTypes[] = {
    {"NONE", {Codec::pcm, 0, ByteOrder::big}},
    {"twos", {Codec::pcm, 0, ByteOrder::big}},
    {"sowt", {Codec::pcm, 0, ByteOrder::little}},
    {"in16", {Codec::pcm, 16, ByteOrder::big}},
    {"in24", {Codec::pcm, 24, ByteOrder::big}},
    {"in32", {Codec::pcm, 32, ByteOrder::big}},
    {"42ni", {Codec::pcm, 24, ByteOrder::little}},
    {"23ni", {Codec::pcm, 32, ByteOrder::little}},
    {"raw ", {Codec::pcm, 8, ByteOrder::big}},
    {"fl32", {Codec::ieeeFloat, 32, ByteOrder::big}},
    {"FL32", {Codec::ieeeFloat, 32, ByteOrder::big}},
    {"fl64", {Codec::ieeeFloat, 64, ByteOrder::big}},
    {"FL64", {Codec::ieeeFloat, 64, ByteOrder::big}},
    {"alaw", {Codec::aLaw, 8, ByteOrder::big}},
    {"ALAW", {Codec::aLaw, 8, ByteOrder::big}},
    {"ulaw", {Codec::muLaw, 8, ByteOrder::big}},
    {"ULAW", {Codec::muLaw, 8, ByteOrder::big}},
    {"ima4", {Codec::appleIma, 0, ByteOrder::big}},
    {"GSM ", {Codec::gsm610, 0, ByteOrder::big}},
    {"MAC3", {Codec::mace, 0, ByteOrder::big}},
    {"MAC6", {Codec::mace, 0, ByteOrder::big}},
    {"G722", {Codec::g722, 0, ByteOrder::big}},
    {"QDMC", {Codec::qdesign, 0, ByteOrder::big}},
    {"QDM2", {Codec::qdesign, 0, ByteOrder::big}},
    {".mp3", {Codec::mpegLayer3, 0, ByteOrder::big}},
};

struct CafFormat {
    std::string_view format;
    Codec codec;
};

constexpr CafFormat cafFormats[] = {
    {"lpcm", Codec::pcm},        {"alaw", Codec::aLaw},       {"ulaw", Codec::muLaw},
    {"ima4", Codec::appleIma},   {"aac ", Codec::aac},        {"aach", Codec::aac},
    {"aacp", Codec::aac},        {"aacl", Codec::aac},        {"aace", Codec::aac},
    {"aacf", Codec::aac},        {"aacg", Codec::aac},        {"alac", Codec::alac},
    {"flac", Codec::flac},       {"opus", Codec::opus},       {".mp1", Codec::mpegLayer2},
    {".mp2", Codec::mpegLayer2}, {".mp3", Codec::mpegLayer3}, {"ac-3", Codec::ac3},
    {"MAC3", Codec::mace},       {"MAC6", Codec::mace},       {"QDMC", Codec::qdesign},
    {"QDM2", Codec::qdesign},    {"samr", Codec::amr},        {"sawb", Codec::amr},
    {"agsm", Codec::gsm610},
};

}  // namespace

const CodecTraits& TraitsOf(Codec codec) {
    static constexpr CodecTraits unknown = {u"", false, 1};
    const auto found = std::find_if(std::begin(allTraits), std::end(allTraits),
                                    [codec](const NamedTraits& row) { return row.codec == codec; });
    return found == std::end(allTraits) ? unknown : found->traits;
}

bool IsSampleCoded(Codec codec) {
    return codec == Codec::pcm || codec == Codec::ieeeFloat || codec == Codec::aLaw ||
           codec == Codec::muLaw;
}

Codec CodecOfWaveTag(std::uint16_t tag) {
    const auto found = std::find_if(std::begin(waveTags), std::end(waveTags),
                                    [tag](const WaveTag& row) { return row.tag == tag; });
    return found == std::end(waveTags) ? Codec::unknown : found->codec;
}

FourCode CodecOfAifcType(std::string_view type) {
    // QuickTime puts a wave format tag behind "ms" where it took a coding over.
    if (type.size() == 4 && type.starts_with(std::string_view("ms\0", 3)))
        return {CodecOfWaveTag(static_cast<std::uint8_t>(type[3])), 0, ByteOrder::big};
    const auto found = std::find_if(std::begin(aifcTypes), std::end(aifcTypes),
                                    [type](const NamedCode& row) { return row.type == type; });
    return found == std::end(aifcTypes) ? FourCode{} : found->code;
}

Codec CodecOfCafFormat(std::string_view format) {
    const auto found =
        std::find_if(std::begin(cafFormats), std::end(cafFormats),
                     [format](const CafFormat& row) { return row.format == format; });
    return found == std::end(cafFormats) ? CodecOfAifcType(format).codec : found->codec;
}

FourCode CodecOfAuEncoding(std::uint32_t encoding) {
    switch (encoding) {
        case 1:
            return {Codec::muLaw, 8, ByteOrder::big};
        case 2:
            return {Codec::pcm, 8, ByteOrder::big};
        case 3:
            return {Codec::pcm, 16, ByteOrder::big};
        case 4:
            return {Codec::pcm, 24, ByteOrder::big};
        case 5:
            return {Codec::pcm, 32, ByteOrder::big};
        case 6:
            return {Codec::ieeeFloat, 32, ByteOrder::big};
        case 7:
            return {Codec::ieeeFloat, 64, ByteOrder::big};
        case 23:
            return {Codec::g721, 4, ByteOrder::big};
        case 24:
            return {Codec::g722, 4, ByteOrder::big};
        case 25:
            return {Codec::g723, 3, ByteOrder::big};
        case 26:
            return {Codec::g723, 5, ByteOrder::big};
        case 27:
            return {Codec::aLaw, 8, ByteOrder::big};
        default:
            return {};
    }
}

}  // namespace companion::pcm
