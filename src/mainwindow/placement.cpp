#include "mainwindow/placement.h"

namespace {

std::int32_t Sum(std::int32_t a, std::int32_t b) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}

}  // namespace

WindowPlace PlaceOfWindow(const WindowPlace& stored, const WindowPlace& desktop) {
    const bool says = stored.x != 0 || stored.y != 0 || Sum(stored.x, stored.width) != 0 ||
                      Sum(stored.y, stored.height) != 0;
    if (says) return stored;
    const std::int32_t fifthX = desktop.width / 5;
    const std::int32_t fifthY = desktop.height / 5;
    return {Sum(desktop.x, fifthX), Sum(desktop.y, fifthY), 3 * fifthX, 3 * fifthY};
}
