#include <algorithm>

#include "foundation/mutex.h"
#include "toolkit/tool_tip.h"
#include "toolkit/tool_tip_place.h"

namespace {

constexpr std::int64_t framedMode = 1;
constexpr clExtent plainMargin{2, 4};
constexpr clExtent framedMargin{8, 10};

// A context to measure in while the tip has no window.
class ScreenContext {
public:
    ScreenContext() : context(GetDC(nullptr)) {}
    ScreenContext(const ScreenContext&) = delete;
    ScreenContext& operator=(const ScreenContext&) = delete;
    ~ScreenContext() { ReleaseDC(nullptr, context); }

    HDC Get() const { return context; }

private:
    HDC context;
};

}  // namespace

void XToolTip::Tick(std::uint32_t now, const clPoint& pointer) {
    if (hideRequested.exchange(false)) timing.hideRequest = true;
    // A window that was closed, or went with its owner, leaves its class and name.
    if (!HasWindow()) Hide();
    switch (timing.Step(now, IsInside(pointer), HasWindow())) {
        case TipAction::Show:
            Show();
            break;
        case TipAction::Hide:
            Hide();
            break;
        case TipAction::SetAlpha:
            SetAlpha(timing.lastAlpha);
            break;
        case TipAction::None:
            break;
    }
}

bool XToolTip::IsInside(const clPoint& pointer) const {
    if (anchorWindow != nullptr && anchorParent != nullptr) {
        return WindowFromPoint({pointer.x, pointer.y}) == anchorWindow;
    }
    return HasPoint() || TipAreaHolds(SensitiveArea(), pointer);
}

clArea XToolTip::SensitiveArea() const {
    POINT corners[] = {{rectangle.left, rectangle.top}, {rectangle.right, rectangle.bottom}};
    if (rectangleWindow != nullptr) {
        ClientToScreen(rectangleWindow, &corners[0]);
        ClientToScreen(rectangleWindow, &corners[1]);
    }
    return {corners[0].x, corners[0].y, corners[1].x, corners[1].y};
}

void XToolTip::Show() {
    const DWORD style = WS_POPUP | WS_DISABLED | (mode == framedMode ? WS_DLGFRAME : 0);
    const DWORD exStyle = WS_EX_TOPMOST | WS_EX_TOOLWINDOW;
    const HWND owner = anchorWindow != nullptr ? anchorWindow : rectangleWindow;
    const RECT place = MakeRectangle();
    CreateWnd(place, style, exStyle | (timing.noFade ? 0 : WS_EX_LAYERED), owner);
    // The platform reserves the right to refuse a layered window to a class with a
    // context of its own: better a tip that does not fade than none.
    if (Window() == nullptr && !timing.noFade) CreateWnd(place, style, exStyle, owner);
    // A layered window is not seen before its first alpha, and a tip that never
    // fades is given none later.
    if (timing.showTime == tip_timing::forEver) SetAlpha(tip_timing::opaque);
    ShowWindow(Window(), SW_SHOWNA);
    SetCursor(LoadCursorW(nullptr, IDC_ARROW));
    timing.NoteShown();
    EnableWindow(Window(), TRUE);
    shownWindow = Window();
}

void XToolTip::SetAlpha(std::int32_t alpha) {
    SetLayeredWindowAttributes(Window(), 0, static_cast<BYTE>(alpha), LWA_ALPHA);
}

void XToolTip::Hide() {
    if (Window() != nullptr) DestroyWnd();
    shownWindow = nullptr;
}

RECT XToolTip::MakeRectangle() {
    POINT pointer{};
    GetCursorPos(&pointer);
    MeasureLayout();
    RECT desktop{};
    GetWindowRect(GetDesktopWindow(), &desktop);
    TipSurroundings around;
    around.pointerY = pointer.y;
    around.left = pointer.x;
    around.desktopRight = desktop.right;
    around.isPointTip = IsPointTip();
    if (around.isPointTip) {
        around.left = point.x;
        around.referenceTop = point.y;
        around.referenceBottom = point.y + 1;
    } else if (anchorWindow != nullptr) {
        RECT edges{};
        GetWindowRect(anchorWindow, &edges);
        around.referenceTop = edges.top;
        around.referenceBottom = edges.bottom;
    } else {
        const clArea area = SensitiveArea();
        around.referenceTop = area.top;
        around.referenceBottom = area.bottom;
    }
    const clPoint place = PlaceTip(around, {layout.width, layout.height});
    return {place.x, place.y, place.x + layout.width, place.y + layout.height};
}

// Leaves the size in the layout, where its anchors find it.
void XToolTip::MeasureLayout() {
    const clExtent margin = mode == framedMode ? framedMargin : plainMargin;
    const clExtent extent = RegionsExtent();
    layout.paddingX = margin.width;
    layout.paddingY = margin.height;
    layout.minimumWidth = std::max(minimumWidth, extent.width + margin.width);
    layout.minimumHeight = std::max(minimumHeight, extent.height + margin.height);
    const clExtent size = layout.Measure();
    layout.width = size.width;
    layout.height = size.height;
    layout.dirty = true;
}

clExtent XToolTip::RegionsExtent() const {
    const ScreenContext context;
    clExtent extent;
    for (std::int64_t i = 0; i < regions.Count(); ++i) {
        const clRegion& region = *regions.At(i);
        const clExtent size = region.Size(context.Get());
        const std::int32_t beyondText = region.IsIcon() ? 0 : 1;
        extent.width = std::max(extent.width, region.x + size.width + beyondText);
        extent.height = std::max(extent.height, region.y + size.height);
    }
    return extent;
}

void XToolTip::OnPaint() {
    PAINTSTRUCT paint;
    HDC const dc = BeginPaint(Window(), &paint);
    {
        const clMutexLock lock(TooltipMutex);
        layout.Paint(dc, 0, 0);
        for (std::int64_t i = 0; i < regions.Count(); ++i)
            regions.At(i)->Paint(dc);
    }
    EndPaint(Window(), &paint);
}

void XToolTip::UpdateLooks(const clPoint& pointer) {
    // What was clicked may have taken the window away.
    if (Window() == nullptr) return;
    const ScreenContext context;
    bool isChanged = false;
    for (std::int64_t i = 0; i < regions.Count(); ++i) {
        clRegion& region = *regions.At(i);
        if (!region.IsIcon()) continue;
        const std::uint32_t look = RegionLook(region.Holds(context.Get(), pointer), region.pressed);
        isChanged = isChanged || look != region.look;
        region.look = look;
    }
    if (isChanged) InvalidateRect(Window(), nullptr, FALSE);
}

void XToolTip::OnMouseMove(std::int32_t x, std::int32_t y, std::uint32_t) {
    const clMutexLock lock(TooltipMutex);
    UpdateLooks({x, y});
}

void XToolTip::OnMouseDown(std::int32_t x, std::int32_t y, std::uint32_t, std::uint32_t) {
    const clMutexLock lock(TooltipMutex);
    const ScreenContext context;
    for (std::int64_t i = 0; i < regions.Count(); ++i) {
        clRegion& region = *regions.At(i);
        if (region.Holds(context.Get(), {x, y})) region.pressed = true;
    }
    UpdateLooks({x, y});
}

void XToolTip::OnMouseUp(std::int32_t x, std::int32_t y, std::uint32_t, std::uint32_t) {
    const clMutexLock lock(TooltipMutex);
    const ScreenContext context;
    // The count is read anew each time: a callback may stop the tip.
    for (std::int64_t i = 0; i < regions.Count(); ++i) {
        const clRegion& region = *regions.At(i);
        if (!RegionFires(region.IsIcon(), region.Holds(context.Get(), {x, y}), region.look)) {
            continue;
        }
        if (region.callback != nullptr) {
            region.callback(region.argument);
        } else {
            Hide();
            timing.done = true;
        }
    }
    for (std::int64_t i = 0; i < regions.Count(); ++i)
        regions.At(i)->pressed = false;
    UpdateLooks({x, y});
}
