#include "toolkit/dpi.h"

std::int32_t ScaleByDpi(std::int32_t value, std::int32_t dpi) {
    // Multiplied as unsigned, where overflow wraps, as every size was always scaled.
    const auto product = static_cast<std::uint32_t>(value) * static_cast<std::uint32_t>(dpi);
    return static_cast<std::int32_t>(product) / 96;
}
