#include <windows.h>

#include "decoders/decoder_registry.h"
#include "foundation/dir_enum.h"
#include "foundation/folders.h"
#include "foundation/paths.h"
#include "foundation/settings.h"

namespace {

constexpr const wchar_t* decodesName = L"" DECODER_GET_DECODES;
constexpr const wchar_t* propertyElementsName = L"" DECODER_GET_PROPERTY_ELEMENTS;

// The instance must be live.
bool Decodes(clTqDecoder& decoder, const clString& extension) {
    DecoderGetRecord element;
    for (std::uint32_t index = 0;; ++index) {
        if (!decoder.GetElement(decodesName, index, element) || element.text == nullptr) {
            return false;
        }
        if (extension.CompareNoCase(element.text) == 0) return true;
    }
}

// Step three of the search: the libraries themselves. The winner's path, or empty.
clString SearchDecoderFolder(const clString& extension, clTqDecoder& decoder,
                             DecoderCreateRecord* record) {
    clString winner;
    WalkDecoderFolder([&](const clString& library) {
        if (!TryDecoderFile(library, extension, decoder, record)) return true;
        winner.Assign(library);
        return false;
    });
    return winner;
}

// What the instance answers besides its texts is not looked at: an element is
// there as long as both texts are.
void AppendTypes(clTqDecoder& decoder, const clString& exclusionSetting, clAudioTypes& types) {
    DecoderGetRecord element;
    for (std::uint32_t index = 0; index < mostListedTypes; ++index) {
        decoder.GetElement(decodesName, index, element);
        if (element.text == nullptr || element.text2 == nullptr) return;
        const clString extension(element.text);
        if (IsIgnoredType(extension)) continue;
        types.Add(element.text, element.text2, IsExcludedType(extension, exclusionSetting));
    }
}

}  // namespace

bool FindDecoderFor(const clString& file, clTqDecoder& decoder, DecoderCreateRecord* record) {
    decoder.EndInstance();
    const clString extension = ExtensionOf(file);
    if (extension.CompareNoCase(decoder.BoundExtension()) == 0) return decoder.NewInstance(record);

    clString library = ReadSettingString(extension.Chars(), HKEY_CURRENT_USER, decoderCacheKey);
    if (library.IsEmpty() || !TryDecoderFile(library, extension, decoder, record)) {
        library.Assign(SearchDecoderFolder(extension, decoder, record));
        // A value that turned out useless stays: only a success replaces it.
        if (library.IsEmpty()) return false;
    }
    // A cache that cannot be written costs time and nothing else.
    WriteSettingString(library, extension.Chars(), HKEY_CURRENT_USER, decoderCacheKey);
    return true;
}

bool TryDecoderFile(const clString& library, const clString& extension, clTqDecoder& decoder,
                    DecoderCreateRecord* record) {
    if (decoder.LoadAs(library, extension) && decoder.NewInstance(record) &&
        Decodes(decoder, extension)) {
        return true;
    }
    decoder.Unload();
    return false;
}

void WalkDecoderFolder(const std::function<bool(const clString& library)>& visit) {
    clDirEnum entries(L"decoder\\*.dll", ModuleDirectory());
    while (entries.Next()) {
        if ((entries.record.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) continue;
        if (!visit(entries.path)) return;
    }
}

bool LoadForLists(const clString& library, clTqDecoder& decoder) {
    DecoderCreateRecord record{};
    return decoder.LoadAs(library, listQueryExtension) && decoder.NewInstance(&record);
}

void LoadAudioTypes(clAudioTypes& types) {
    const clString exclusionSetting = ReadSettingString(exclusionSettingName);
    WalkDecoderFolder([&](const clString& library) {
        clTqDecoder decoder;
        if (LoadForLists(library, decoder)) AppendTypes(decoder, exclusionSetting, types);
        return true;
    });
}

void ReadPropertyNames(clTqDecoder& decoder, clStringList& names) {
    DecoderGetRecord element;
    decoder.GetElement(propertyElementsName, 0, element);
    names.Clear();
    if (element.text == nullptr) return;
    const clString packed(element.text);
    names.SplitPacked(packed.Chars(), packed.Length() * static_cast<std::int64_t>(sizeof(wchar_t)));
}

void DescribeDecoderFolder(const std::function<void(const DecoderDescription&)>& show) {
    const clString exclusionSetting = ReadSettingString(exclusionSettingName);
    WalkDecoderFolder([&](const clString& library) {
        DecoderDescription description;
        description.path.Assign(library);
        {
            clTqDecoder decoder;
            description.created = LoadForLists(library, decoder);
            description.loaded = decoder.HoldsLibrary();
            if (description.loaded) decoder.MissingExports(description.missingExports);
            if (description.created) {
                AppendTypes(decoder, exclusionSetting, description.types);
                ReadPropertyNames(decoder, description.propertyNames);
            }
        }
        show(description);
        return true;
    });
}
