// Which decoder library reads which extension.
//
// The libraries lie in the folder "decoder" beside the program. Asking them is
// slow, so each answer is remembered in the registry. A library that does not
// load, lacks an export or makes no instance is passed over in silence by every
// operation here. A decoder belongs to the caller's thread; the operations
// themselves share nothing, so any thread may call them.
#pragma once

#include <functional>

#include "decoders/audio_type.h"
#include "decoders/decoder_host.h"

// The registry key of the cache, under the current user. A value is named by the
// extension with its dot, as it stood on the file that was met first, and holds
// the full path of the library. Nothing else is remembered: a path is believed
// as long as TryDecoderFile succeeds with it.
inline constexpr const wchar_t* decoderCacheKey =
    L"Software\\Brindlefen\\Tonequarry\\DecoderCache"
    L"64";

// The setting with the extensions that the user left out, each followed by ";".
inline constexpr const wchar_t* exclusionSettingName = L"zKR-FileSelector-Exclusion";

// Finds a decoder for `file` by its extension and makes an instance for it. True:
// `decoder` holds the right library and a fresh instance. False: no library
// claims the extension, or the one that this object is bound to made no instance.
//
// An object that is already bound to the extension is used again without a look
// at the registry or a load, so that a run of one format costs one load. Then the
// cached library is tried, then each in the folder's own order; the first one
// that claims the extension wins and is cached.
[[nodiscard]] bool FindDecoderFor(const clString& file, clTqDecoder& decoder,
                                  DecoderCreateRecord* record);

// Binds `decoder` to `library` if it decodes `extension`, without regard to the
// case of A to Z. True: bound, with a live instance. False: unloaded. The
// library's list of extensions is read to its end, whatever its length.
[[nodiscard]] bool TryDecoderFile(const clString& library, const clString& extension,
                                  clTqDecoder& decoder, DecoderCreateRecord* record);

// Calls `visit` with the full path of each library in the decoder folder, in the
// file system's order, until it answers false. Folders are left out.
void WalkDecoderFolder(const std::function<bool(const clString& library)>& visit);

// Loads `library` and makes an instance, only to ask for lists. False: it cannot
// be used; a library that did load is held all the same.
[[nodiscard]] bool LoadForLists(const clString& library, clTqDecoder& decoder);

// Appends the types that every library of the folder offers, in the order of the
// walk, with those marked that the exclusion setting names. Once, at start-up.
void LoadAudioTypes(clAudioTypes& types);

// Fills `names` with the extended properties that the instance knows. Empty when
// it tells none; "[Empty]" stands for an empty name.
void ReadPropertyNames(clTqDecoder& decoder, clStringList& names);

// What became of one library of the folder.
struct DecoderDescription {
    clString path;
    bool loaded = false;          // the platform could load it
    clStringList missingExports;  // of a library that loaded
    bool created = false;         // it made an instance; all below needs one
    clAudioTypes types;           // as LoadAudioTypes takes them
    clStringList propertyNames;
};

// Tells what LoadAudioTypes and the column menu get from each library, in the
// order of the walk, and why others give nothing. Each is loaded, asked and
// unloaded before `show` is called for it.
void DescribeDecoderFolder(const std::function<void(const DecoderDescription&)>& show);
