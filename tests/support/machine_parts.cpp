#include "tests/support/machine_parts.h"

#include <windows.h>

#include <stdexcept>

#include "tests/support/converter_side.h"

namespace {

constexpr const wchar_t* libraryKey =
    L"Software\\Classes\\CLSID\\{D9B3211D-E57F-4426-AAEF-30A806ADD397}";
constexpr const wchar_t* providerKey = L"System\\CurrentControlSet\\Services\\TestNetwork";
constexpr const wchar_t* orderKey = L"System\\CurrentControlSet\\Control\\NetworkProvider\\Order";

void WriteMachineText(const std::wstring& key, const wchar_t* name, const std::wstring& text) {
    const auto bytes = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
    if (RegSetKeyValueW(HKEY_LOCAL_MACHINE, key.c_str(), name, REG_SZ, text.c_str(), bytes) !=
        ERROR_SUCCESS) {
        throw std::runtime_error("cannot write to the machine's registry");
    }
}

// A library of the tests, which must lie beside their program.
std::wstring OwnLibrary(const wchar_t* name) {
    std::wstring path = TestProgramFolder() + name;
    if (!FileExists(path)) throw std::runtime_error("missing: " + NarrowUtf8(path));
    return path;
}

}  // namespace

clMachineKey::clMachineKey(std::wstring path) : key(std::move(path)) {}

clMachineKey::~clMachineKey() {
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, key.c_str());
}

void clMachineKey::SetText(const wchar_t* subKey, const wchar_t* name,
                           const std::wstring& text) const {
    WriteMachineText(key + L"\\" + subKey, name, text);
}

clTestLibrary::clTestLibrary(const std::string& lines)
    : file(L"TEST_LIBRARY_FILE", folder.AddFile(L"library.txt", lines).Chars()),
      registration(libraryKey) {
    registration.SetText(L"InprocServer32", nullptr, OwnLibrary(L"test_shell_library.dll"));
    registration.SetText(L"InprocServer32", L"ThreadingModel", L"Apartment");
}

clTestNetwork::clTestNetwork(const std::string& lines)
    : file(L"TEST_NETWORK_FILE", folder.AddFile(L"network.txt", lines).Chars()),
      log(L"TEST_NETWORK_LOG", folder.Path(L"network.log").Chars()),
      provider(providerKey) {
    provider.SetText(L"NetworkProvider", L"Name", L"Test Network");
    provider.SetText(L"NetworkProvider", L"ProviderPath", OwnLibrary(L"test_network_provider.dll"));
    WriteMachineText(orderKey, L"ProviderOrder", L"TestNetwork");
}

clTestNetwork::~clTestNetwork() {
    RegDeleteKeyValueW(HKEY_LOCAL_MACHINE, orderKey, L"ProviderOrder");
}
