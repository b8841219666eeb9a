// A number in the registry, read past the code under test.
#pragma once

#include <windows.h>

#include <optional>

// The REG_DWORD value `name` of HKEY_CURRENT_USER\`key`; none if it cannot be read or
// has another type. Any thread.
inline std::optional<DWORD> RegistryNumber(const wchar_t* key, const wchar_t* name) {
    DWORD value = 0;
    DWORD size = sizeof value;
    if (RegGetValueW(HKEY_CURRENT_USER, key, name, RRF_RT_REG_DWORD, nullptr, &value, &size) !=
        ERROR_SUCCESS) {
        return std::nullopt;
    }
    return value;
}
