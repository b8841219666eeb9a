#include "toolkit/tool_tip.h"

#include <memory>

#include "foundation/mutex.h"
#include "toolkit/draw.h"
#include "toolkit/tool_tip_watcher.h"

namespace {

constexpr std::uint32_t pollMs = 50;
constexpr std::uint32_t longestHideMs = 5000;
constexpr std::uint32_t longestShowMs = 10000;
constexpr std::uint32_t pointTipDelayMs = 1;
constexpr int stopAttempts = 2;

constexpr clArea wholeTip{0, 0, anchor::end, anchor::end};
constexpr COLORREF topColour = 0xFFFEFE;
constexpr COLORREF bottomColour = 0xF0E5E4;
constexpr COLORREF frameColour = 0x767676;
constexpr std::int32_t textLeft = 5;
constexpr std::int32_t iconLeft = 4;
constexpr std::int32_t besideIcon = 8;

void AddIcon(clText& layout, HICON icon, bool isBesideLines) {
    clTextIcon record;
    record.icon = icon;
    record.at = {iconLeft, isBesideLines ? 1 : anchor::centred};
    layout.AddIcon(record);
}

void FillPlainLayout(clText& layout, const wchar_t* text, HICON icon) {
    clTextGradient gradient;
    gradient.area = wholeTip;
    gradient.colours = {topColour, topColour, bottomColour, bottomColour};
    layout.AddGradient(gradient);
    clTextFrame frame;
    frame.area = wholeTip;
    frame.colour = frameColour;
    layout.AddFrame(frame);
    clTextString record;
    record.text.Assign(text);
    record.at = {textLeft, anchor::centred};
    if (icon != nullptr) {
        // A text that only begins with a line end still counts as one line.
        AddIcon(layout, icon, record.text.FindChar(L'\r', 2) != 0);
        record.at.x = IconWidth(icon) + besideIcon;
    }
    layout.AddText(record);
}

// Polls until the condition holds; false if it didn't in time.
template <class Condition>
bool Await(std::uint32_t milliseconds, Condition condition) {
    const std::uint32_t begin = GetTickCount();
    while (!condition()) {
        if (GetTickCount() - begin >= milliseconds) return false;
        SleepAnswering(pollMs);
    }
    return true;
}

}  // namespace

XToolTip::XToolTip() = default;

XToolTip::~XToolTip() {
    Stop();
}

bool XToolTip::IsShowing() const {
    HWND const shown = ShownWindow();
    return shown != nullptr && IsWindowVisible(shown);
}

void XToolTip::AddTool(const XToolTipParams& params) {
    clText plain;
    FillPlainLayout(plain, params.text, params.icon);
    XToolTipDescription description;
    description.anchorWindow = params.anchorWindow;
    description.rectangle = params.rectangle;
    description.rectangleWindow = params.rectangleWindow;
    description.point = params.point;
    description.showDelay = params.showDelay;
    description.showTime = params.showTime;
    description.noFade = params.noFade;
    description.layout = &plain;
    Configure(description);
}

void XToolTip::Configure(const XToolTipDescription& description) {
    Stop();
    {
        const TipLock lock(TipLock::LetThrough::Sent);
        TakeDescription(description);
        TipWatcher::Add(this);
    }
    if (IsPointTip() && TipWatcher::IsRunning() && !TipWatcher::IsThisThread()) {
        Await(longestShowMs, [this] { return IsShowing(); });
    }
}

void XToolTip::TakeDescription(const XToolTipDescription& description) {
    minimumWidth = 0;
    minimumHeight = 0;
    mode = description.mode;
    anchorWindow = description.anchorWindow;
    anchorParent = anchorWindow != nullptr ? GetParent(anchorWindow) : nullptr;
    rectangle = description.rectangle;
    rectangleWindow = description.rectangleWindow;
    point = description.point;
    timing.showDelay = HasPoint() ? pointTipDelayMs : description.showDelay;
    timing.showTime = description.showTime;
    timing.noFade = description.noFade;
    if (description.layout != nullptr) layout.CopyFrom(*description.layout);
    // The watcher paints; this thread, or whichever stops the tip, clears.
    layout.KeepNoContexts();
    if (description.regions == nullptr) return;
    for (std::int64_t i = 0; i < description.regions->Count(); ++i) {
        auto copy = std::make_unique<clRegion>();
        copy->CopyFrom(*description.regions->At(i));
        regions.Add(std::move(copy));
    }
}

// A tip that shows is done for this stay of the pointer already: hidden, it stays
// away by itself.
void XToolTip::HideNow() {
    if (!HasWindow()) return;
    if (TipWatcher::IsThisThread()) {
        const clMutexLock lock(TooltipMutex);
        Hide();
        return;
    }
    const HWND shown = ShownWindow();
    hideRequested = true;
    if (Await(longestHideMs, [this] { return !HasWindow(); })) return;
    // The watcher is stuck, perhaps with the mutex: nothing here may wait for it.
    // Its thread alone may destroy the window; the platform's default does.
    // Null would be the queue of this thread.
    if (shown != nullptr) PostMessageW(shown, WM_CLOSE, 0, 0);
}

void XToolTip::Stop() {
    for (int attempt = 1;; ++attempt) {
        HideNow();
        const TipLock lock(TipLock::LetThrough::All);
        // It may have come up again before the mutex was had.
        if (HasWindow() && attempt < stopAttempts) continue;
        if (HasWindow()) {
            AbandonWnd();
            shownWindow = nullptr;
        }
        Hide();
        TipWatcher::Remove(this);
        break;
    }
    TipWatcher::StopIfIdle();
    const TipLock lock(TipLock::LetThrough::Sent);
    Forget();
}

void XToolTip::Forget() {
    layout.Clear();
    regions.Clear();
    mode = 0;
    anchorWindow = nullptr;
    anchorParent = nullptr;
    rectangle = {};
    rectangleWindow = nullptr;
    point = {};
    timing = {};
    hideRequested = false;
}
