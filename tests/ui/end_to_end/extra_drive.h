// A drive of the tests' own.
#pragma once

#include <windows.h>

#include <string>

// Whether that is what the tree shows of a drive.
inline bool IsDrive(const std::wstring& root) {
    return root.ends_with(L":)") || root.ends_with(L":\\");
}

// A drive letter that leads to a folder. Where the folder goes the drive stays, and
// is not ready.
class clExtraDrive {
public:
    explicit clExtraDrive(const std::wstring& folder) : target(L"\\??\\" + folder) {
        while ((GetLogicalDrives() & (1u << (letter[0] - L'A'))) != 0)
            ++letter[0];
        Connect();
    }
    clExtraDrive(const clExtraDrive&) = delete;
    clExtraDrive& operator=(const clExtraDrive&) = delete;
    ~clExtraDrive() { Disconnect(); }

    void Connect() const { DefineDosDeviceW(DDD_RAW_TARGET_PATH, letter, target.c_str()); }
    void Disconnect() const { DefineDosDeviceW(DDD_REMOVE_DEFINITION, letter, nullptr); }
    std::wstring Root() const { return std::wstring(letter) + L"\\"; }
    bool IsRootText(const std::wstring& text) const {
        return text.find(letter) != std::wstring::npos && IsDrive(text);
    }

private:
    wchar_t letter[3] = L"J:";
    std::wstring target;
};
