#include "decoders/audio_type.h"

clAudioType& clAudioTypes::At(std::int64_t index) {
    return *reinterpret_cast<clAudioType*>(types.Get(index));
}

const clAudioType& clAudioTypes::At(std::int64_t index) const {
    return *reinterpret_cast<const clAudioType*>(types.Get(index));
}

void clAudioTypes::Add(const wchar_t* extension, const wchar_t* description, bool excluded) {
    types.Add(reinterpret_cast<std::int64_t>(new clAudioType{extension, description, excluded}));
}

void clAudioTypes::Clear() {
    for (std::int64_t i = 0; i < types.Count(); ++i)
        delete &At(i);
    types.Clear();
}

bool IsIgnoredType(const clString& extension) {
    return extension.Find(L".IGNORE") != 0;
}

bool IsExcludedType(const clString& extension, const clString& exclusionSetting) {
    clString entry(extension);
    entry.Append(L';');
    return exclusionSetting.Find(entry) != 0;
}
