#include <windows.h>

#include "decoders/units_setting.h"
#include "foundation/settings.h"

namespace {

constexpr const wchar_t* parentPath = L"Software\\Brindlefen\\Tonequarry";
constexpr const wchar_t* keyPath = L"Software\\Brindlefen\\Tonequarry\\Ref";

HKEY HandleOf(void* key) {
    return static_cast<HKEY>(key);
}

}  // namespace

void clUnitsSetting::OpenKey() {
    key = OpenSettingsKey(KEY_QUERY_VALUE, HKEY_CURRENT_USER, keyPath);
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

clUnitsWatch::clUnitsWatch() : event(CreateEventW(nullptr, FALSE, FALSE, nullptr)) {}

clUnitsWatch::~clUnitsWatch() {
    CloseKeys();
    if (event != nullptr) CloseHandle(event);
}

void clUnitsWatch::CloseKeys() {
    if (key != nullptr) RegCloseKey(HandleOf(key));
    if (parent != nullptr) RegCloseKey(HandleOf(parent));
    key = parent = nullptr;
}

// A request serves for one change and lasts as long as its key is open: the keys
// are opened anew for new ones. The key alone would not do, since under Wine
// nobody who watches a key learns that it was deleted.
bool clUnitsWatch::Watch() {
    CloseKeys();
    if (event == nullptr) return false;
    ResetEvent(event);  // the end of the old requests has signalled it
    key = OpenSettingsKey(KEY_NOTIFY, HKEY_CURRENT_USER, keyPath);
    parent = OpenSettingsKey(KEY_NOTIFY, HKEY_CURRENT_USER, parentPath);
    return key != nullptr && parent != nullptr &&
           RegNotifyChangeKeyValue(HandleOf(key), FALSE, REG_NOTIFY_CHANGE_LAST_SET, event, TRUE) ==
               ERROR_SUCCESS &&
           RegNotifyChangeKeyValue(HandleOf(parent), FALSE, REG_NOTIFY_CHANGE_NAME, event, TRUE) ==
               ERROR_SUCCESS;
}

bool clUnitsWatch::InHertz() {
    if (isKnown) return inHertz;
    // Watched first and read then: no change falls between the two.
    isKnown = Watch();
    inHertz = setting.InHertz();
    return inHertz;
}
