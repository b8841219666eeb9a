#include <cstring>
#include <memory>

#include "foundation/handle.h"
#include "foundation/settings.h"

namespace {

clString settingsKeyPath;
HKEY settingsRoot = nullptr;

}  // namespace

void InitSettings() {
    settingsKeyPath.Assign(L"Software\\Brindlefen\\Tonequarry");
    settingsRoot = HKEY_CURRENT_USER;
}

const clString& SettingsKeyPath() {
    return settingsKeyPath;
}

HKEY SettingsRoot() {
    return settingsRoot;
}

HKEY OpenSettingsKey(REGSAM access, HKEY root, const wchar_t* subKey) {
    const wchar_t* path = subKey != nullptr ? subKey : settingsKeyPath.Chars();
    if (*path == 0) return nullptr;  // the platform would open the root itself
    wchar_t noClass[] = L"";
    HKEY key = nullptr;
    const LSTATUS status = RegCreateKeyExW(root != nullptr ? root : settingsRoot, path, 0, noClass,
                                           REG_OPTION_NON_VOLATILE, access, nullptr, &key, nullptr);
    return status == ERROR_SUCCESS ? key : nullptr;
}

void ReadSettingValue(void* block, std::uint32_t size, DWORD expectedType, const wchar_t* name,
                      HKEY root, const wchar_t* subKey, bool* failed) {
    bool isBad = true;
    const clRegistryKey key(OpenSettingsKey(KEY_QUERY_VALUE, root, subKey));
    if (key.IsValid()) {
        DWORD type = REG_NONE;
        DWORD length = size;
        isBad = RegQueryValueExW(key.Get(), name, nullptr, &type, static_cast<BYTE*>(block),
                                 &length) != ERROR_SUCCESS;
        const bool isText = expectedType == REG_SZ && type == REG_EXPAND_SZ;
        if (type != expectedType && !isText) isBad = true;
    }
    if (isBad) std::memset(block, 0, size);
    if (failed != nullptr) *failed = isBad;
}

bool WriteSettingValue(const void* data, std::uint32_t length, DWORD type, const wchar_t* name,
                       HKEY root, const wchar_t* subKey) {
    const clRegistryKey key(OpenSettingsKey(KEY_WRITE, root, subKey));
    return key.IsValid() && RegSetValueExW(key.Get(), name, 0, type, static_cast<const BYTE*>(data),
                                           length) == ERROR_SUCCESS;
}

std::uint32_t ReadSettingDword(const wchar_t* name, HKEY root, const wchar_t* subKey) {
    const clRegistryKey key(OpenSettingsKey(KEY_QUERY_VALUE, root, subKey));
    if (!key.IsValid()) return 0;
    std::uint32_t value = 0;
    DWORD type = REG_NONE;
    DWORD length = sizeof(value);
    const LSTATUS status =
        RegQueryValueExW(key.Get(), name, nullptr, &type, reinterpret_cast<BYTE*>(&value), &length);
    return status == ERROR_SUCCESS && type == REG_DWORD ? value : 0;
}

bool WriteSettingDword(std::uint32_t value, const wchar_t* name) {
    return WriteSettingValue(&value, sizeof(value), REG_DWORD, name);
}

namespace {

// Bytes of a stored value, 0 if it is missing.
DWORD StoredSize(const wchar_t* name, HKEY root, const wchar_t* subKey) {
    const clRegistryKey key(OpenSettingsKey(KEY_QUERY_VALUE, root, subKey));
    DWORD size = 0;
    if (!key.IsValid() ||
        RegQueryValueExW(key.Get(), name, nullptr, nullptr, nullptr, &size) != ERROR_SUCCESS) {
        return 0;
    }
    return size;
}

}  // namespace

clString ReadSettingString(const wchar_t* name, HKEY root, const wchar_t* subKey) {
    const DWORD size = StoredSize(name, root, subKey);
    if (size == 0) return {};
    // Zeroed and longer by a terminator, which a stored text may lack.
    const std::size_t units = (std::size_t{size} + 1) / sizeof(wchar_t) + 1;
    const auto block = std::make_unique<wchar_t[]>(units);
    bool failed = true;
    ReadSettingValue(block.get(), size, REG_SZ, name, root, subKey, &failed);
    return failed ? clString() : clString(block.get());
}

bool WriteSettingString(const clString& text, const wchar_t* name, HKEY root,
                        const wchar_t* subKey) {
    const auto bytes = (static_cast<std::uint32_t>(text.Length()) + 1) * sizeof(wchar_t);
    return WriteSettingValue(text.Chars(), static_cast<std::uint32_t>(bytes), REG_SZ, name, root,
                             subKey);
}
