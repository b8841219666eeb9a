// The table of audio types: what the decoders offer, and what the user left out.
#pragma once

#include <cstdint>

#include "foundation/arrays.h"

// One type as a decoder names it. Two decoders that claim one extension make
// two types; nothing removes duplicates.
struct clAudioType {
    clString extension;     // with its dot, in the decoder's own spelling
    clString description;   // for people, as the filter shows it
    bool excluded = false;  // the user has filtered this type out
};

// The types in the order of the walk that found them, owned by the table. A type
// keeps its index and its address until Clear. Indices are 0-based. No locks.
class clAudioTypes {
public:
    clAudioTypes() = default;
    clAudioTypes(const clAudioTypes&) = delete;
    clAudioTypes& operator=(const clAudioTypes&) = delete;
    ~clAudioTypes() { Clear(); }

    std::int64_t Count() const { return types.Count(); }
    // The type itself, owned by the table: the caller checks the bounds.
    clAudioType& At(std::int64_t index);
    const clAudioType& At(std::int64_t index) const;
    // Appends, without looking for an older type of that extension. Null text
    // is the empty text.
    void Add(const wchar_t* extension, const wchar_t* description, bool excluded);
    // Destroys every type.
    void Clear();

private:
    clPtrArray types;  // of clAudioType*
};

// The elements of one decoder that are asked for when the table is filled; a
// skipped element counts too. The search for a file's decoder has no such bound.
inline constexpr std::uint32_t mostListedTypes = 1000;

// Whether a decoder marks this element as one to keep from the user: ".IGNORE"
// stands anywhere in its extension text, in capitals.
bool IsIgnoredType(const clString& extension);

// Whether the exclusion setting names this extension: the extension followed by
// ";" stands anywhere in it, in the same case. So "a.mp3;" also excludes ".mp3".
bool IsExcludedType(const clString& extension, const clString& exclusionSetting);
