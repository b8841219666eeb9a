#include "decoders/units_setting.h"
#include "foundation/settings.h"

namespace {

HKEY HandleOf(void* key) {
    return static_cast<HKEY>(key);
}

}  // namespace

void clUnitsSetting::OpenKey() {
    key = OpenSettingsKey(KEY_QUERY_VALUE, HKEY_CURRENT_USER,
                          L"Software\\Brindlefen\\Tonequarry\\Ref");
}

void clUnitsSetting::CloseKey() {
    if (key != nullptr) RegCloseKey(HandleOf(key));
    key = nullptr;
}

bool clUnitsSetting::Read(std::uint32_t& value) const {
    DWORD type = REG_NONE;
    DWORD length = sizeof(value);
    const LSTATUS status = RegQueryValueExW(HandleOf(key), L"UnitsFreq", nullptr, &type,
                                            reinterpret_cast<BYTE*>(&value), &length);
    if (status != ERROR_SUCCESS || type != REG_DWORD) value = 0;
    return status != ERROR_KEY_DELETED;
}

bool clUnitsSetting::InHertz() {
    std::uint32_t value = 0;
    if (key != nullptr && Read(value)) return value != 0;
    // First of all, or behind somebody who took the key away.
    CloseKey();
    OpenKey();
    return key != nullptr && Read(value) && value != 0;
}
