#include <vector>

#include "decoders/decoder_registry.h"
#include "foundation/folders.h"
#include "foundation/handle.h"
#include "foundation/settings.h"
#include "tools/inspect/commands_win32.h"

namespace {

void PrintTypes(const clAudioTypes& types, Output& out) {
    for (std::int64_t i = 0; i < types.Count(); ++i) {
        const clAudioType& type = types.At(i);
        out.Print(L"  type      ");
        out.Print(type.extension);
        out.Print(L"  ");
        out.Print(type.description);
        out.PrintLine(type.excluded ? L"  (left out by the filter)" : L"");
    }
}

clString JoinedByCommas(const clStringList& list) {
    clString text;
    list.Join(text);
    text.Replace(L"\r", L", ");
    return text;
}

void PrintRefusal(const DecoderDescription& decoder, Output& out) {
    if (!decoder.loaded) {
        out.PrintLine(L"  refused   it cannot be loaded");
    } else if (decoder.missingExports.Count() > 0) {
        out.Print(L"  refused   it does not export ");
        out.PrintLine(JoinedByCommas(decoder.missingExports));
    } else {
        out.PrintLine(L"  refused   it makes no instance");
    }
}

void PrintDecoder(const DecoderDescription& decoder, Output& out) {
    out.PrintLine(decoder.path);
    if (!decoder.created) {
        PrintRefusal(decoder, out);
        return;
    }
    PrintTypes(decoder.types, out);
    if (decoder.propertyNames.Count() > 0) {
        out.Print(L"  property  ");
        out.PrintLine(JoinedByCommas(decoder.propertyNames));
    }
}

// Opened directly: looking at the cache must not make it.
clRegistryKey OpenCache() {
    HKEY key = nullptr;
    if (RegOpenKeyExW(SettingsRoot(), decoderCacheKey, 0, KEY_QUERY_VALUE, &key) != ERROR_SUCCESS) {
        return {};
    }
    return clRegistryKey(key);
}

// Returns the number of values.
int PrintCache(Output& out) {
    const clRegistryKey key = OpenCache();
    if (!key.IsValid()) return 0;
    DWORD longestName = 0;
    RegQueryInfoKeyW(key.Get(), nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                     &longestName, nullptr, nullptr, nullptr);
    std::vector<wchar_t> name(longestName + 1);
    int count = 0;
    for (;;) {
        DWORD length = static_cast<DWORD>(name.size());
        if (RegEnumValueW(key.Get(), static_cast<DWORD>(count), name.data(), &length, nullptr,
                          nullptr, nullptr, nullptr) != ERROR_SUCCESS) {
            return count;
        }
        out.Print(L"  ");
        out.Print(name.data());
        out.Print(L"  ");
        out.PrintLine(ReadSettingString(name.data(), SettingsRoot(), decoderCacheKey));
        ++count;
    }
}

}  // namespace

int RunDecoders(Output& out) {
    bool found = false;
    bool usable = false;
    DescribeDecoderFolder([&](const DecoderDescription& decoder) {
        PrintDecoder(decoder, out);
        found = true;
        usable = usable || decoder.created;
    });
    if (!found) {
        out.Print(L"no library in ");
        out.Print(ModuleDirectory());
        out.PrintLine(L"decoder");
    }
    out.PrintLine(L"remembered extensions");
    if (PrintCache(out) == 0) out.PrintLine(L"  none");
    return usable ? exitDone : exitNothing;
}
