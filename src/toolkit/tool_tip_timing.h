// When a tip shows, fades and goes, without a clock or a window.
#pragma once

#include <cstdint>

namespace tip_timing {

inline constexpr std::uint32_t defaultShowDelayMs = 1000;
inline constexpr std::uint32_t defaultShowTimeMs = 10000;
inline constexpr std::uint32_t forEver = 4294967295;  // as a show time
inline constexpr std::uint32_t longestFadeMs = 2500;
inline constexpr std::int32_t noAlpha = -1;
inline constexpr std::int32_t opaque = 255;

}  // namespace tip_timing

enum class TipAction {
    None,
    Show,
    Hide,
    SetAlpha,  // to `lastAlpha`
};

// The clock of one tip. Times are tick counts in milliseconds, which may wrap
// between two of them.
class TipTiming {
public:
    std::uint32_t showDelay = 0;  // ms; 0 stands for the default
    std::uint32_t showTime = 0;   // ms; 0 stands for the default
    bool noFade = false;
    bool hideRequest = false;     // served by the next step
    std::uint32_t waitStart = 0;  // the pointer came to rest then; 0 for none
    std::uint32_t shownAt = 0;
    // Shown for this stay of the pointer: stays away until the pointer leaves.
    bool done = false;
    std::int32_t lastAlpha = 0;

    // One look at the clock. `isInside`: the pointer is where the tip applies;
    // `isVisible`: its window shows. The caller does what is returned, and after
    // Show calls `NoteShown`.
    TipAction Step(std::uint32_t now, bool isInside, bool isVisible);

    // The tip has been shown: no second time for this stay of the pointer, and
    // the next step sets the first alpha.
    void NoteShown();

private:
    TipAction StepVisible(std::uint32_t now, bool isInside);
    TipAction StepHidden(std::uint32_t now, bool isInside);
};

// The alpha, 0 to 255, of a tip that has shown for `elapsed` of its `showTime`:
// opaque until the last third, which takes 2500 ms at most, then falling.
// `elapsed` is at most `showTime`.
std::int32_t TipAlpha(std::uint32_t elapsed, std::uint32_t showTime);
