// The divider between the tree and the list: a strip of the form's own background.
#pragma once

#include <cstdint>

inline constexpr std::int32_t splitterWidth = 4;
inline constexpr std::int32_t leastSplitterPos = 100;

// Where a press takes hold of it: client pixels, all included but the bottom.
struct SplitterZone {
    std::int32_t left = 0;
    std::int32_t right = 0;
    std::int32_t top = 0;
    std::int32_t bottom = 0;

    [[nodiscard]] bool Has(std::int32_t x, std::int32_t y) const {
        return x >= left && x <= right && y >= top && y < bottom;
    }
};

// Its position and the drag of it, in client pixels. There is no upper limit: it
// can be dragged out of the window.
class clSplitter {
public:
    // What was stored, or for 0 a third of the desktop's width; at least 100.
    void Restore(std::int32_t stored, std::int32_t desktopWidth);
    std::int32_t Position() const { return _SplitterPos; }
    bool IsDragging() const { return _SplitterDragging; }
    [[nodiscard]] SplitterZone Zone(std::int32_t bottom) const;
    // Where the list begins behind the strip, and how wide that leaves it.
    [[nodiscard]] std::int32_t ListLeft() const;
    [[nodiscard]] std::int32_t ListWidth(std::int32_t clientWidth) const;

    void Begin(std::int32_t x);
    // Follows the pointer by the way it went since the last call; the position is
    // held at its least value, but the pointer is not, so that it follows again at
    // once on the way back.
    void Drag(std::int32_t x);
    void End() { _SplitterDragging = false; }

private:
    std::int32_t _SplitterPos = leastSplitterPos;
    std::int32_t _SplitterLastX = 0;
    bool _SplitterDragging = false;
};
