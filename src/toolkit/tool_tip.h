// A tooltip that fades, with a window of its own only while it shows.
#pragma once

#include <windows.h>

#include <atomic>
#include <cstdint>

#include "toolkit/owned_list.h"
#include "toolkit/text.h"
#include "toolkit/tool_tip_region.h"
#include "toolkit/tool_tip_timing.h"
#include "toolkit/window.h"

// A plain tip of one text. It applies over `anchorWindow`; or without one around
// `point` if that is not (0, 0); or else in `rectangle`.
struct XToolTipParams {
    HWND anchorWindow = nullptr;  // a child window
    // Pixels, all four edges included: client coordinates of `rectangleWindow`, or
    // of the screen if that is null.
    clArea rectangle;
    HWND rectangleWindow = nullptr;
    clPoint point;                  // of the screen; the tip shows at once
    const wchar_t* text = nullptr;  // its lines end with CR; null is empty
    std::uint32_t showDelay = 0;    // ms; 0 is 1000
    std::uint32_t showTime = 0;     // ms; 0 is 10000, tip_timing::forEver without end
    HICON icon = nullptr;           // left of the text; not given away; null for none
    bool noFade = false;
};

// A tip of any layout.
struct XToolTipDescription {
    std::int64_t mode = 0;  // 1: larger margins and a frame
    HWND anchorWindow = nullptr;
    clArea rectangle;
    HWND rectangleWindow = nullptr;
    clPoint point;
    std::uint32_t showDelay = 0;
    std::uint32_t showTime = 0;
    bool noFade = false;
    const clText* layout = nullptr;                  // copied; null is empty
    const clOwnedList<clRegion>* regions = nullptr;  // copied; null for none
};

// One thread for all tips, the watcher, looks at the pointer every 50 ms and
// decides when a tip shows and goes. It owns the tips' windows, so painting and
// mouse operations run there. It lives from the first configured tip until the
// last one stops. A pass never blocks on the tooltip mutex, which guards all that a
// tip is; if it can't start, no tip shows and nothing is reported.
//
// The operations belong to one thread, the user interface's, unless they say
// otherwise. They wait for the watcher, which may in turn send messages to the
// forms: all waiting here lets such messages through.
class XToolTip : public XWindow {
public:
    XToolTip();
    // `Stop`.
    ~XToolTip() override;

    // Configures a plain tip.
    void AddTool(const XToolTipParams& params);

    // Stops what there was, then has the tip watched. A point tip shows at once:
    // returns when it does, or after 10 seconds without.
    void Configure(const XToolTipDescription& description);

    // Takes a visible tip away until the pointer leaves and comes back. Waits for
    // the watcher to do it, 5 seconds at most; if it didn't, leaves it a message
    // that does, since no other thread may destroy the watcher's window. Also on
    // the watcher's thread, which does not wait.
    void HideNow();

    // Takes the tip away, forgets what it was, and ends the watcher with the last
    // tip. Dispatches the thread's messages while it waits for the tooltip mutex.
    // A watcher that twice didn't take the window away in time is left to destroy
    // it by itself.
    // Also on the watcher's thread, which then lives on until a tip stops elsewhere.
    void Stop();

    // Whether the tip shows at this moment. Any thread; takes no lock.
    bool IsShowing() const;
    // The window while it shows, else null. Any thread; takes no lock.
    HWND ShownWindow() const { return shownWindow.load(); }

    void OnMouseDown(std::int32_t x, std::int32_t y, std::uint32_t message,
                     std::uint32_t keys) override;
    void OnMouseUp(std::int32_t x, std::int32_t y, std::uint32_t message,
                   std::uint32_t keys) override;
    void OnMouseMove(std::int32_t x, std::int32_t y, std::uint32_t keys) override;
    void OnPaint() override;

private:
    // Runs `Tick`.
    friend class TipWatcher;

    void TakeDescription(const XToolTipDescription& description);
    void Forget();
    // Also one that is hidden but not yet destroyed. Any thread.
    bool HasWindow() const { return IsWindow(ShownWindow()) != FALSE; }
    bool IsPointTip() const { return anchorWindow == nullptr && HasPoint(); }
    bool HasPoint() const { return point.x != 0 || point.y != 0; }

    // The watcher's, under the mutex. `now` in ms; `pointer` on the screen.
    void Tick(std::uint32_t now, const clPoint& pointer);
    bool IsInside(const clPoint& pointer) const;
    void Show();
    void Hide();
    void SetAlpha(std::int32_t alpha);
    RECT MakeRectangle();
    void MeasureLayout();
    clExtent RegionsExtent() const;
    clArea SensitiveArea() const;
    void UpdateLooks(const clPoint& pointer);

    std::int64_t mode = 0;
    clText layout;
    clOwnedList<clRegion> regions;  // which also keeps the one last looked at
    HWND anchorWindow = nullptr;    // null for a rectangle or a point tip
    HWND anchorParent = nullptr;
    clArea rectangle;
    HWND rectangleWindow = nullptr;
    clPoint point;
    std::int32_t minimumWidth = 0;
    std::int32_t minimumHeight = 0;
    TipTiming timing;
    // What HideNow leaves for the next tick, since it must not wait for the mutex.
    std::atomic<bool> hideRequested{false};
    std::atomic<HWND> shownWindow{nullptr};
};
