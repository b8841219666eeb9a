// The registry: this program's settings and what it reads of other keys.
//
// Every call opens and closes its key; nothing is kept in memory. Nothing is
// reported to the user: what cannot be read is 0 or empty. Any thread, once
// InitSettings has run.
//
// `root` is a predefined key, null for the current user's. `subKey` is a whole
// path below the root, in place of the path of the settings key: null means the
// settings key, and an empty one is no key at all. Opening creates a key that
// is missing, even for reading, where the user may do that.
#pragma once

#include <windows.h>

#include <cstdint>

#include "foundation/string.h"

// Sets the two values below. The entry function's first act behind CoInitialize;
// before it, every call without `subKey` fails.
void InitSettings();
// "Software\Brindlefen\Tonequarry", and the predefined key that it lies under.
const clString& SettingsKeyPath();
HKEY SettingsRoot();

// An open key, which the caller closes (see clRegistryKey), or null.
[[nodiscard]] HKEY OpenSettingsKey(REGSAM access, HKEY root = nullptr,
                                   const wchar_t* subKey = nullptr);
// Reads a value of at most `size` bytes into `block`. An expected REG_SZ takes a
// REG_EXPAND_SZ too, as it stands. When there is no such value, or it is longer
// or of another type, all of the block is cleared. `failed`, unless null, tells.
void ReadSettingValue(void* block, std::uint32_t size, DWORD expectedType, const wchar_t* name,
                      HKEY root = nullptr, const wchar_t* subKey = nullptr, bool* failed = nullptr);
// Writes `length` bytes. For REG_SZ they include the terminator.
bool WriteSettingValue(const void* data, std::uint32_t length, DWORD type, const wchar_t* name,
                       HKEY root = nullptr, const wchar_t* subKey = nullptr);
// 0 also for a value that is missing or no REG_DWORD.
std::uint32_t ReadSettingDword(const wchar_t* name, HKEY root = nullptr,
                               const wchar_t* subKey = nullptr);
// Always to the settings key.
bool WriteSettingDword(std::uint32_t value, const wchar_t* name);
// Text, with percent signs unexpanded; empty also for a value that is missing or
// no text. The empty name is the key's default value.
clString ReadSettingString(const wchar_t* name, HKEY root = nullptr,
                           const wchar_t* subKey = nullptr);
// Writes `text` and its terminator as REG_SZ.
bool WriteSettingString(const clString& text, const wchar_t* name, HKEY root = nullptr,
                        const wchar_t* subKey = nullptr);
