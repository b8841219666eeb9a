#include <windows.h>

#include <atomic>

#include "toolkit/dpi.h"

namespace {

constexpr std::int32_t notRead = -1;
// Atomic, since the tooltips' thread scales too; both would store the same value.
std::atomic<std::int32_t> displayDpi{notRead};

}  // namespace

std::int32_t DisplayDpi() {
    std::int32_t dpi = displayDpi.load(std::memory_order_relaxed);
    if (dpi == notRead) {
        const HDC screen = GetDC(nullptr);
        dpi = GetDeviceCaps(screen, LOGPIXELSX);
        ReleaseDC(nullptr, screen);
        displayDpi.store(dpi, std::memory_order_relaxed);
    }
    return dpi;
}

std::int32_t ScaleForDpi(std::int32_t value) {
    return ScaleByDpi(value, DisplayDpi());
}
