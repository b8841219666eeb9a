#include "tests/support/scratch_registry.h"

#include <gtest/gtest.h>

#include <cwchar>

namespace {

struct Root {
    HKEY key;
    const wchar_t* name;
};

const Root roots[] = {{HKEY_LOCAL_MACHINE, L"machine"},
                      {HKEY_CLASSES_ROOT, L"classes"},
                      // The last: the others are made below it.
                      {HKEY_CURRENT_USER, L"user"}};

}  // namespace

ScratchRegistry::ScratchRegistry() : base() {
    std::swprintf(base, 64, L"Software\\tq-%lu", GetCurrentProcessId());
    for (const Root& root : roots) {
        wchar_t path[96] = {};
        std::swprintf(path, 96, L"%ls\\%ls", base, root.name);
        HKEY scratch = nullptr;
        EXPECT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, path, 0, nullptr, REG_OPTION_NON_VOLATILE,
                                  KEY_ALL_ACCESS, nullptr, &scratch, nullptr),
                  ERROR_SUCCESS);
        EXPECT_EQ(RegOverridePredefKey(root.key, scratch), ERROR_SUCCESS);
        RegCloseKey(scratch);
    }
}

ScratchRegistry::~ScratchRegistry() {
    for (const Root& root : roots)
        RegOverridePredefKey(root.key, nullptr);
    EXPECT_EQ(RegDeleteTreeW(HKEY_CURRENT_USER, base), ERROR_SUCCESS);
}

bool ScratchRegistry::HasKey(HKEY root, const wchar_t* subKey) {
    HKEY key = nullptr;
    if (RegOpenKeyExW(root, subKey, 0, KEY_READ, &key) != ERROR_SUCCESS) return false;
    RegCloseKey(key);
    return true;
}

void ScratchRegistry::Set(HKEY root, const wchar_t* subKey, const wchar_t* name, DWORD type,
                          const void* data, DWORD bytes) {
    HKEY key = nullptr;
    EXPECT_EQ(RegCreateKeyExW(root, subKey, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS,
                              nullptr, &key, nullptr),
              ERROR_SUCCESS);
    EXPECT_EQ(RegSetValueExW(key, name, 0, type, static_cast<const BYTE*>(data), bytes),
              ERROR_SUCCESS);
    RegCloseKey(key);
}

void ScratchRegistry::SetText(HKEY root, const wchar_t* subKey, const wchar_t* name,
                              const wchar_t* text) {
    const auto bytes = static_cast<DWORD>((std::wcslen(text) + 1) * sizeof(wchar_t));
    Set(root, subKey, name, REG_SZ, text, bytes);
}
