// The one owner of platform handles.
#pragma once

#include <windows.h>

#include <utility>

// Owns one handle and closes it at its end. `Traits` names the handle type, the
// value that stands for none, and how to close it:
//   struct Traits { using Raw; static Raw Invalid(); static void Close(Raw); };
// Closing keeps the thread's last error. Move-only, and nothing converts by
// itself: `Get` is the way to the handle.
template <class Traits>
class clHandle {
public:
    using Raw = typename Traits::Raw;

    clHandle() = default;
    explicit clHandle(Raw handle) : raw(handle) {}
    clHandle(const clHandle&) = delete;
    clHandle& operator=(const clHandle&) = delete;
    clHandle(clHandle&& other) noexcept : raw(other.Release()) {}
    clHandle& operator=(clHandle&& other) noexcept {
        if (this != &other) Reset(other.Release());
        return *this;
    }
    ~clHandle() { Reset(); }

    // The handle, still owned here.
    Raw Get() const { return raw; }
    bool IsValid() const { return raw != Traits::Invalid(); }
    // Gives the handle away.
    [[nodiscard]] Raw Release() { return std::exchange(raw, Traits::Invalid()); }
    // Closes what is held and owns `handle` instead.
    void Reset(Raw handle = Traits::Invalid()) {
        if (IsValid()) {
            const DWORD error = GetLastError();
            Traits::Close(raw);
            SetLastError(error);
        }
        raw = handle;
    }

private:
    Raw raw = Traits::Invalid();
};

// Files, from CreateFileW.
struct clFileTraits {
    using Raw = HANDLE;
    static Raw Invalid() { return INVALID_HANDLE_VALUE; }
    static void Close(Raw raw) { CloseHandle(raw); }
};

// Events, mutexes, threads and processes, which use null for none.
struct clKernelTraits {
    using Raw = HANDLE;
    static Raw Invalid() { return nullptr; }
    static void Close(Raw raw) { CloseHandle(raw); }
};

// Enumerations of folders, from FindFirstFileW.
struct clFindTraits {
    using Raw = HANDLE;
    static Raw Invalid() { return INVALID_HANDLE_VALUE; }
    static void Close(Raw raw) { FindClose(raw); }
};

struct clRegistryKeyTraits {
    using Raw = HKEY;
    static Raw Invalid() { return nullptr; }
    static void Close(Raw raw) { RegCloseKey(raw); }
};

using clFileHandle = clHandle<clFileTraits>;
using clKernelHandle = clHandle<clKernelTraits>;
using clFindHandle = clHandle<clFindTraits>;
using clRegistryKey = clHandle<clRegistryKeyTraits>;
