// The user's unit of sample rates, for someone who asks for it with every file.
#pragma once

#include <cstdint>

// The value "UnitsFreq" of the key "Software\Brindlefen\Tonequarry\Ref". It is
// read anew each time; only the key stays open in between, since opening one
// takes longer than reading it. Belongs to the thread that made it.
class clUnitsSetting {
public:
    clUnitsSetting() = default;
    clUnitsSetting(const clUnitsSetting&) = delete;
    clUnitsSetting& operator=(const clUnitsSetting&) = delete;
    ~clUnitsSetting() { CloseKey(); }

    // True for Hertz, false for KHz: also when the value is missing, no REG_DWORD
    // or 0. Makes the key where it is missing.
    [[nodiscard]] bool InHertz();

private:
    // The platform's answer; false when the key is not there any more.
    bool Read(std::uint32_t& value) const;
    void OpenKey();
    void CloseKey();

    void* key = nullptr;  // the platform's handle
};
