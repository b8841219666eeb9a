#include "mainwindow/splitter.h"

#include <algorithm>

namespace {

constexpr std::int32_t zoneTop = 56;

// Sums of what a message or the registry tells: they wrap rather than overflow.
std::int32_t Sum(std::int32_t a, std::int32_t b) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}

}  // namespace

void clSplitter::Restore(std::int32_t stored, std::int32_t desktopWidth) {
    _SplitterPos = std::max(stored != 0 ? stored : desktopWidth / 3, leastSplitterPos);
}

SplitterZone clSplitter::Zone(std::int32_t bottom) const {
    return {_SplitterPos, ListLeft(), zoneTop, bottom};
}

std::int32_t clSplitter::ListLeft() const {
    return Sum(_SplitterPos, splitterWidth);
}

std::int32_t clSplitter::ListWidth(std::int32_t clientWidth) const {
    return Sum(clientWidth, Sum(~ListLeft(), 1));
}

void clSplitter::Begin(std::int32_t x) {
    _SplitterDragging = true;
    _SplitterLastX = x;
}

void clSplitter::Drag(std::int32_t x) {
    _SplitterPos = std::max(Sum(_SplitterPos, Sum(x, -_SplitterLastX)), leastSplitterPos);
    _SplitterLastX = x;
}
