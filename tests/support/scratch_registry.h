// A registry of a test's own.
#pragma once

#include <windows.h>

// From its construction to its end this process sees an empty key in the place
// of each predefined root that settings lie under: the current user's, the
// machine's and the classes' root. The user's registry is not touched but for
// one key that is deleted again.
class ScratchRegistry {
public:
    ScratchRegistry();
    ScratchRegistry(const ScratchRegistry&) = delete;
    ScratchRegistry& operator=(const ScratchRegistry&) = delete;
    ~ScratchRegistry();

    // True if the key is there. Does not create it.
    static bool HasKey(HKEY root, const wchar_t* subKey);
    // Writes past the code under test.
    static void Set(HKEY root, const wchar_t* subKey, const wchar_t* name, DWORD type,
                    const void* data, DWORD bytes);
    static void SetText(HKEY root, const wchar_t* subKey, const wchar_t* name, const wchar_t* text);

private:
    wchar_t base[64];
};
