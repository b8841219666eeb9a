#include "tests/ui/resource_counts.h"

#include <cstdint>

#include "tests/support/allocations.h"
#include "tests/support/open_handles.h"

namespace {

// Where the system does not count for us, each possible handle is asked about.
// Handles of windows, menus, icons and GDI objects are looked up there by their
// lower 16 bits alone.
constexpr std::uintptr_t smallHandles = 0x10000;

template <class Handle>
Handle HandleAt(std::uintptr_t value) {
    return reinterpret_cast<Handle>(value);
}

bool IsOwnWindow(HWND window) {
    DWORD process = 0;
    return GetWindowThreadProcessId(window, &process) != 0 && process == GetCurrentProcessId();
}

bool IsIcon(HICON icon) {
    ICONINFO parts = {};
    if (!GetIconInfo(icon, &parts)) return false;
    DeleteObject(parts.hbmMask);
    if (parts.hbmColor != nullptr) DeleteObject(parts.hbmColor);
    return true;
}

long CountUserObjects() {
    const DWORD told = GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS);
    if (told != 0) return static_cast<long>(told);
    long count = 0;
    for (std::uintptr_t i = 1; i < smallHandles; ++i) {
        if (IsOwnWindow(HandleAt<HWND>(i)) || IsMenu(HandleAt<HMENU>(i)) ||
            IsIcon(HandleAt<HICON>(i))) {
            ++count;
        }
    }
    return count;
}

long CountGdiObjects() {
    const DWORD told = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
    if (told != 0) return static_cast<long>(told);
    long count = 0;
    for (std::uintptr_t i = 1; i < smallHandles; ++i) {
        if (GetObjectType(HandleAt<HGDIOBJ>(i)) != 0) ++count;
    }
    return count;
}

}  // namespace

ResourceCounts CountResources() {
    ResourceCounts counts;
    counts.heapBlocks = static_cast<long>(LiveBlocks());
    counts.userObjects = CountUserObjects();
    counts.gdiObjects = CountGdiObjects();
    counts.kernelHandles = OpenHandles();
    return counts;
}

void PrintTo(const ResourceCounts& counts, std::ostream* out) {
    *out << counts.userObjects << " user, " << counts.gdiObjects << " GDI, " << counts.kernelHandles
         << " kernel, " << counts.heapBlocks << " heap";
}
