#include "tests/support/import_stub.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>

namespace {

template <class Type>
Type* InModule(DWORD offset) {
    auto* base = reinterpret_cast<char*>(GetModuleHandleW(nullptr));
    return reinterpret_cast<Type*>(base + offset);
}

// The slot of one DLL's import table that holds the function, or null.
std::uintptr_t* SlotIn(const IMAGE_IMPORT_DESCRIPTOR& library, const char* function) {
    const auto* name = InModule<IMAGE_THUNK_DATA>(library.OriginalFirstThunk);
    auto* address = InModule<std::uintptr_t>(library.FirstThunk);
    for (; name->u1.AddressOfData != 0; ++name, ++address) {
        if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal)) continue;
        const auto offset = static_cast<DWORD>(name->u1.AddressOfData);
        if (std::strcmp(InModule<IMAGE_IMPORT_BY_NAME>(offset)->Name, function) == 0) {
            return address;
        }
    }
    return nullptr;
}

std::uintptr_t* SlotOf(const char* function) {
    const auto headerOffset = static_cast<DWORD>(InModule<IMAGE_DOS_HEADER>(0)->e_lfanew);
    const auto* headers = InModule<IMAGE_NT_HEADERS>(headerOffset);
    const auto& table = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    const auto* library = InModule<IMAGE_IMPORT_DESCRIPTOR>(table.VirtualAddress);
    for (; library->Name != 0; ++library) {
        if (auto* slot = SlotIn(*library, function)) return slot;
    }
    return nullptr;
}

}  // namespace

ImportStub::ImportStub(const char* function, std::uintptr_t replacement) : slot(SlotOf(function)) {
    if (slot == nullptr) {
        ADD_FAILURE() << "the test program does not import " << function;
        return;
    }
    original = *slot;
    Set(replacement);
}

ImportStub::~ImportStub() {
    if (slot != nullptr) Set(original);
}

void ImportStub::Set(std::uintptr_t function) const {
    DWORD protection = 0;
    VirtualProtect(slot, sizeof(*slot), PAGE_READWRITE, &protection);
    *slot = function;
    VirtualProtect(slot, sizeof(*slot), protection, &protection);
}
