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

// The same for someone who can look at an event for less than the reading costs:
// the value is read when it may have changed. Belongs to the thread that made it.
class clUnitsWatch {
public:
    clUnitsWatch();
    clUnitsWatch(const clUnitsWatch&) = delete;
    clUnitsWatch& operator=(const clUnitsWatch&) = delete;
    ~clUnitsWatch();

    // Signalled once the value, or the key that it lies in, has changed since the
    // last reading; resets itself. Null if the platform refuses it. Owned here.
    void* ChangeEvent() const { return event; }
    // To be called when the event was signalled: the next answer is read anew.
    void Forget() { isKnown = false; }
    // As clUnitsSetting has it. Where changes cannot be watched each is read.
    [[nodiscard]] bool InHertz();

private:
    bool Watch();
    void CloseKeys();

    clUnitsSetting setting;
    void* event;
    void* key = nullptr;     // of the value
    void* parent = nullptr;  // tells when the key is taken away or made
    bool isKnown = false;
    bool inHertz = false;
};
