#include "decoders/file_properties.h"

#include <algorithm>

#include "foundation/paths.h"
#include "foundation/regional.h"

bool IsLosslessSource(const clString& extension, const clString& audioQuality) {
    return audioQuality.Find(L"lossless", 1, true) != 0 ||
           audioQuality.Find(L"perfect", 1, true) != 0 || extension.CompareNoCase(L".wav") == 0;
}

NumberPair SplitNumberPair(const clString& text) {
    NumberPair pair = {text.ToInt(), 0};
    const std::int32_t slash = text.FindChar(L'/');
    if (slash != 0) pair.total = text.Mid(slash + 1).ToInt();
    return pair;
}

clString FormatTrackNumber(const TagList& tags, const clString& tagName) {
    const NumberPair pair = SplitNumberPair(tags.Get(tagName));
    if (pair.number == 0) return {};
    clString text(pair.number);
    if (text.Length() == 1) text.Insert(L"0", 1);
    if (pair.total == 0) return text;
    text.Append(pair.total < 10 ? L"/0" : L"/");
    text.Append(clString(pair.total));
    return text;
}

namespace {

// Numbers of a damaged file may be anything: what they make wraps in 64 bits.
std::int64_t Times(std::int64_t a, std::int64_t b) {
    return static_cast<std::int64_t>(static_cast<std::uint64_t>(a) * static_cast<std::uint64_t>(b));
}

std::int64_t Minus(std::int64_t a, std::int64_t b) {
    return static_cast<std::int64_t>(static_cast<std::uint64_t>(a) - static_cast<std::uint64_t>(b));
}

// The smallest number by -1 has no result; it wraps onto itself.
std::int64_t DividedBy(std::int64_t a, std::int64_t b) {
    return b == -1 ? Minus(0, a) : a / b;
}

void AddLength(const FileRow& row, TagList& tags) {
    tags.Take(L"Length");
    tags.Add(L"Length", DurationText(static_cast<std::uint64_t>(row.lengthMs), durationShort));
}

void AddSampleRate(std::uint32_t samplesPerSecond, bool unitsInHertz, TagList& tags) {
    clString text;
    if (unitsInHertz) {
        text = NumberText(samplesPerSecond);
        text.Append(L" Hz");
    } else {
        text = DecimalText(samplesPerSecond / 1000.0, 1);
        text.Append(L" KHz");
    }
    tags.Add(L"Sample Rate", text);
}

void AddSampleSize(const DerivationInput& input, TagList& tags) {
    if (!IsLosslessSource(input.extension, tags.Get(L"audio quality"))) return;
    clString text(std::int32_t{input.format.Format().wBitsPerSample});
    text.Append(input.format.EffectiveTag() == waveFormatIeeeFloat ? L" bit floating point"
                                                                   : L" bit");
    tags.Add(L"Sample Size", text);
}

void AddBitRate(std::int32_t bitRate, TagList& tags) {
    clString text = NumberText(bitRate / 1000);
    text.Append(L" kbps");
    tags.Add(L"Bit Rate", text);
}

// By how much the file is smaller than its audio would be uncompressed. Less
// than 1 KiB is what a header takes, and counts as nothing.
void AddCompression(const DerivationInput& input, FileRow& row, TagList& tags) {
    const std::int64_t source = input.sourceBytes;
    const std::int64_t raw = Times(input.format.Format().nAvgBytesPerSec, input.lengthMs) / 1000;
    const std::int64_t larger = std::max(raw, source);
    const std::int64_t base = Minus(larger, source) < 1024 ? source : larger;
    row.compressionPercent = 0;  // a row may be read again
    if (base == 0 || source == 0) return;
    const std::int64_t percent = Minus(100, DividedBy(Times(source, 100), base));
    row.compressionPercent = static_cast<std::int32_t>(percent);
    clString text(percent);
    text.Append(L"%");
    tags.Add(L"Compression", text);
}

// The texts that are not empty, with " - " between them.
clString Joined(const clString& first, const clString& second, const clString& third) {
    clString text = first;
    for (const clString* part : {&second, &third}) {
        if (!text.IsEmpty() && !part->IsEmpty()) text.Append(L" - ");
        text.Append(*part);
    }
    return text;
}

// An unusable track number disappears.
clString ReplaceTrack(TagList& tags) {
    clString track = FormatTrackNumber(tags, L"Track");
    tags.Take(L"Track");
    if (!track.IsEmpty()) tags.Add(L"Track", track);
    return track;
}

// The total is that of the tag's name and not of its value: always 0, so that
// neither composite ever has a disc. Lists are to sort by album and track alone.
clString DiscOfComposites(const TagList& tags) {
    clString disc = FormatTrackNumber(tags, L"Disc");
    if (SplitNumberPair(L"Disc").total <= 1) return {};
    return disc;
}

void AddComposites(TagList& tags) {
    clString albumArtist = tags.Get(L"Album Artist");
    if (albumArtist.IsEmpty()) albumArtist = tags.Get(L"Artist");
    const clString album = tags.Get(L"Album");
    const clString track = ReplaceTrack(tags);
    const clString disc = DiscOfComposites(tags);
    tags.Add(L"Album Artist - Album - Disc - Track",
             Joined(Joined(albumArtist, album, disc), track, {}));
    tags.Add(L"Album - Disc - Track", Joined(album, disc, track));
}

}  // namespace

void DeriveProperties(const DerivationInput& input, FileRow& row, TagList& tags) {
    row.lengthMs = input.lengthMs;
    row.bitRate = input.bitRate;
    row.rating = static_cast<std::int32_t>(tags.Get(L"Rating").ToInt());
    AddLength(row, tags);
    tags.Add(L"Channels", clString(std::int32_t{input.format.Format().nChannels}));
    AddSampleRate(input.format.Format().nSamplesPerSec, input.unitsInHertz, tags);
    AddSampleSize(input, tags);
    AddBitRate(input.bitRate, tags);
    AddCompression(input, row, tags);
    AddComposites(tags);
    tags.Add(L"Compilation", tags.Take(L"Compilation").ToInt() != 0 ? L"Yes" : L"No");
    tags.Add(L"TrueSpinResult", tags.Get(L"TrueSpinResult"));
}

void TakeOpenRecord(const DecoderOpenRecord& record, FileRow& row, TagList& tags,
                    bool unitsInHertz) {
    clWaveFormat format;
    TakeWaveFormat(record, format);
    if (record.tags != nullptr && record.tagsSize != 0) {
        tags.Parse(record.tags, static_cast<std::int32_t>(record.tagsSize));
    }
    TagList properties;
    properties.UsePoolOf(tags);
    properties.Parse(record.properties, static_cast<std::int32_t>(record.propertiesSize));
    tags.Merge(properties);
    const clString extension = ExtensionOf(row.path);
    DeriveProperties(
        {format, record.bitRate, record.lengthMs, record.sourceBytes, extension, unitsInHertz}, row,
        tags);
}
