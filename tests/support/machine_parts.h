// Parts of the platform in a test's own form, registered with the machine.
// Processes that are started while an object lives find them; only under Wine.
#pragma once

#include <string>

#include "tests/support/converter_stage.h"
#include "tests/support/scratch_folder.h"

// Values of the machine's registry that go at the end, each with its whole key.
class clMachineKey {
public:
    // `path` is the key that is removed; its last part must be the test's own.
    explicit clMachineKey(std::wstring path);
    clMachineKey(const clMachineKey&) = delete;
    clMachineKey& operator=(const clMachineKey&) = delete;
    ~clMachineKey();

    // A text in a key below; a null name stands for that key's own text.
    void SetText(const wchar_t* subKey, const wchar_t* name, const std::wstring& text) const;

private:
    std::wstring key;
};

// The Music library of these lines, for whose form see
// shell_library/shell_library.cpp. The library lies beside the test's program.
class clTestLibrary {
public:
    explicit clTestLibrary(const std::string& lines);

private:
    ScratchFolder folder;
    clEnvironmentValue file;
    clMachineKey registration;
};

// The network of these lines; see network_provider/provider.cpp.
class clTestNetwork {
public:
    explicit clTestNetwork(const std::string& lines);
    clTestNetwork(const clTestNetwork&) = delete;
    clTestNetwork& operator=(const clTestNetwork&) = delete;
    ~clTestNetwork();

private:
    ScratchFolder folder;
    clEnvironmentValue file;
    clEnvironmentValue log;
    clMachineKey provider;
};
