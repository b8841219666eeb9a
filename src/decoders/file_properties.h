// What the lists show of an opened file: its tags, and the properties that are
// made of the numbers which its decoder told.
//
// A derived property is an entry of the file's TagList. But for "Length",
// "Track" and "Compilation" it is added without looking for an older entry, so
// that one which the decoder delivered itself stays in front and hides it.
// None of this takes a lock.
#pragma once

#include <cstdint>

#include "decoders/file_row.h"
#include "decoders/records.h"
#include "decoders/tag_list.h"
#include "foundation/string.h"
#include "foundation/wave_format.h"

// The numbers of one opened file. Any values are safe; what does not fit 64 bits
// wraps.
struct DerivationInput {
    const clWaveFormat& format;  // as it normalises what the decoder told
    std::int32_t bitRate;        // bits per second
    std::int64_t lengthMs;
    std::int64_t sourceBytes;   // of the compressed audio
    const clString& extension;  // of the file, with its dot
    bool unitsInHertz;          // "44,100 Hz" instead of "44.1 KHz"
};

// Stores length, bit rate, rating and compression in `row` and appends the
// derived properties to `tags`, which holds what the decoder delivered. The
// path of the row is not looked at. Reads the regional settings at first use.
void DeriveProperties(const DerivationInput& input, FileRow& row, TagList& tags);

// Takes all that `record` tells, as Open left it, into `row` and `tags`: the tags
// in the place of what `tags` held (unless the record has none), the extended
// properties that no tag hides, and what DeriveProperties makes. The extension
// is that of the row's path. Nothing of the record is needed afterwards.
void TakeOpenRecord(const DecoderOpenRecord& record, FileRow& row, TagList& tags,
                    bool unitsInHertz);

// Whether the user wants sample rates in Hertz: the value "UnitsFreq" of the key
// "Software\Brindlefen\Tonequarry\Ref", read anew each time; false when it is
// missing, no REG_DWORD or 0. The key is made where it is missing. Any thread.
[[nodiscard]] bool ReadUnitsInHertz();

// Whether the sample size of the file's source says anything: the value of its
// tag "audio quality" speaks of lossless or perfect audio, or it is a wave file.
[[nodiscard]] bool IsLosslessSource(const clString& extension, const clString& audioQuality);

// "07" or "07/12" of the value of that tag; empty when its number is 0 or missing.
[[nodiscard]] clString FormatTrackNumber(const TagList& tags, const clString& tagName);

struct NumberPair {
    std::int64_t number;
    std::int64_t total;  // 0 when none is given
};

// The numbers before and behind the first "/".
[[nodiscard]] NumberPair SplitNumberPair(const clString& text);
