#include "toolkit/tool_tip_timing.h"

#include <algorithm>

TipAction TipTiming::Step(std::uint32_t now, bool isInside, bool isVisible) {
    if (hideRequest) {
        hideRequest = false;
        if (isVisible) return TipAction::Hide;
    }
    if (!isInside) {
        waitStart = 0;
        done = false;
    }
    return isVisible ? StepVisible(now, isInside) : StepHidden(now, isInside);
}

TipAction TipTiming::StepVisible(std::uint32_t now, bool isInside) {
    const std::uint32_t elapsed = now - shownAt;
    if (!isInside) return TipAction::Hide;
    if (showTime != tip_timing::forEver && elapsed > showTime) {
        done = true;
        return TipAction::Hide;
    }
    if (showTime == 0 || showTime == tip_timing::forEver || noFade) return TipAction::None;
    const std::int32_t alpha = TipAlpha(elapsed, showTime);
    if (alpha == lastAlpha) return TipAction::None;
    lastAlpha = alpha;
    return TipAction::SetAlpha;
}

TipAction TipTiming::StepHidden(std::uint32_t now, bool isInside) {
    if (!isInside || done) return TipAction::None;
    if (waitStart == 0) waitStart = now;
    if (showDelay == 0) showDelay = tip_timing::defaultShowDelayMs;
    if (showTime == 0) showTime = tip_timing::defaultShowTimeMs;
    if (now - waitStart <= showDelay) return TipAction::None;
    waitStart = 0;
    shownAt = now;
    return TipAction::Show;
}

void TipTiming::NoteShown() {
    done = true;
    lastAlpha = tip_timing::noAlpha;
}

std::int32_t TipAlpha(std::uint32_t elapsed, std::uint32_t showTime) {
    const std::uint32_t fade = std::min(showTime / 3, tip_timing::longestFadeMs);
    const std::uint32_t start = showTime > fade ? showTime - fade : 0;
    // Shorter than three milliseconds, a tip has no time to fade in.
    if (elapsed < start || fade == 0) return tip_timing::opaque;
    return tip_timing::opaque - static_cast<std::int32_t>((elapsed - start) * 255 / fade);
}
