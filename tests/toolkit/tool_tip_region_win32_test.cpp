#include "toolkit/tool_tip_region.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <memory>

#include "tests/toolkit/tip_form.h"
#include "tests/ui/pixels.h"
#include "tests/ui/pointer.h"
#include "tests/ui/pump.h"
#include "tests/ui/resource_counts.h"
#include "toolkit/tool_tip.h"
#include "toolkit/tool_tip_watcher.h"

namespace {

constexpr int iconSize = 16;
constexpr COLORREF red = RGB(200, 0, 0);
constexpr COLORREF green = RGB(0, 200, 0);
constexpr COLORREF blue = RGB(0, 0, 200);
constexpr COLORREF paper = RGB(255, 255, 255);

constexpr POINT iconAt = {10, 10};
constexpr POINT linkAt = {10, 40};
constexpr POINT onIcon = {18, 18};
constexpr POINT onLink = {14, 46};
constexpr POINT besideBoth = {60, 20};

HICON MakeIcon(COLORREF colour) {
    HDC const screen = GetDC(nullptr);
    HDC const dc = CreateCompatibleDC(screen);
    HBITMAP const picture = CreateCompatibleBitmap(screen, iconSize, iconSize);
    HGDIOBJ const previous = SelectObject(dc, picture);
    const RECT whole = {0, 0, iconSize, iconSize};
    HBRUSH const brush = CreateSolidBrush(colour);
    FillRect(dc, &whole, brush);
    DeleteObject(brush);
    SelectObject(dc, previous);
    DeleteDC(dc);
    ReleaseDC(nullptr, screen);
    HBITMAP const mask = CreateBitmap(iconSize, iconSize, 1, 1, nullptr);
    HDC const maskDc = CreateCompatibleDC(nullptr);
    HGDIOBJ const previousMask = SelectObject(maskDc, mask);
    PatBlt(maskDc, 0, 0, iconSize, iconSize, BLACKNESS);
    SelectObject(maskDc, previousMask);
    DeleteDC(maskDc);
    ICONINFO parts = {};
    parts.fIcon = TRUE;
    parts.hbmColor = picture;
    parts.hbmMask = mask;
    HICON const icon = CreateIconIndirect(&parts);
    DeleteObject(picture);
    DeleteObject(mask);
    return icon;
}

std::unique_ptr<clRegion> IconRegion() {
    auto region = std::make_unique<clRegion>();
    region->x = iconAt.x;
    region->y = iconAt.y;
    region->normalIcon = MakeIcon(red);
    region->hotIcon = MakeIcon(green);
    region->pressedIcon = MakeIcon(blue);
    return region;
}

std::unique_ptr<clRegion> LinkRegion() {
    auto region = std::make_unique<clRegion>();
    region->x = linkAt.x;
    region->y = linkAt.y;
    region->text.Assign(L"A link");
    return region;
}

// What the callbacks saw, on the tips' thread.
std::atomic<std::int64_t> lastArgument{0};
std::atomic<int> callCount{0};

void Note(std::int64_t argument) {
    lastArgument = argument;
    ++callCount;
}

void StopTip(std::int64_t tip) {
    ++callCount;
    reinterpret_cast<XToolTip*>(tip)->Stop();
}

void HideTip(std::int64_t tip) {
    reinterpret_cast<XToolTip*>(tip)->HideNow();
    ++callCount;
}

// A tip at a fixed point: the pointer may go over it.
class TipRegion : public testing::Test {
protected:
    void SetUp() override {
        lastArgument = 0;
        callCount = 0;
        form.PointAway();
    }

    void Show(std::unique_ptr<clRegion> icon, std::unique_ptr<clRegion> link) {
        clOwnedList<clRegion> regions;
        if (icon) regions.Add(std::move(icon));
        if (link) regions.Add(std::move(link));
        clText layout;
        clTextFill fill;
        fill.area = {0, 0, anchor::end, anchor::end};
        fill.colour = paper;
        layout.AddFill(fill);
        clTextString filler;  // makes the tip wider than its regions
        filler.text.Assign(L".");
        filler.at = {150, 0};
        layout.AddText(filler);
        XToolTipDescription description;
        description.point = {800, 600};
        description.layout = &layout;
        description.regions = &regions;
        description.showTime = tip_timing::forEver;
        tip.Configure(description);
        ASSERT_TRUE(tip.IsShowing());
    }

    void PointAt(POINT client) { MovePointer(ScreenPoint(tip.ShownWindow(), client.x, client.y)); }
    COLORREF Shown(POINT client) { return PixelOf(tip.ShownWindow(), client.x, client.y); }
    bool ShowsAt(POINT client, COLORREF colour) {
        return PumpUntil([&] { return Shown(client) == colour; });
    }
    static bool Called(int count) {
        return PumpUntil([count] { return callCount == count; });
    }

    TipForm form;
    XToolTip tip;
};

TEST_F(TipRegion, IconFollowsThePointer) {
    Show(IconRegion(), nullptr);
    EXPECT_TRUE(ShowsAt(onIcon, red));
    PointAt(onIcon);
    EXPECT_TRUE(ShowsAt(onIcon, green));
    // Its right and bottom edges belong to it.
    PointAt({iconAt.x + iconSize, iconAt.y + iconSize});
    PumpFor(150);
    EXPECT_EQ(Colour{Shown(onIcon)}, Colour{green});
    PointAt({iconAt.x + iconSize + 1, iconAt.y});
    EXPECT_TRUE(ShowsAt(onIcon, red));
    PointAt(onIcon);
    PressButton();
    EXPECT_TRUE(ShowsAt(onIcon, blue));
    PointAt(besideBoth);
    EXPECT_TRUE(ShowsAt(onIcon, red));
    PointAt(onIcon);
    EXPECT_TRUE(ShowsAt(onIcon, blue));
    PointAt(besideBoth);
    ReleaseButton();
    EXPECT_TRUE(ShowsAt(onIcon, red));
    PointAt(onIcon);
    EXPECT_TRUE(ShowsAt(onIcon, green));
}

TEST_F(TipRegion, ClickedIconCallsBack) {
    auto icon = IconRegion();
    icon->callback = Note;
    icon->argument = 4711;
    Show(std::move(icon), nullptr);
    Click(ScreenPoint(tip.ShownWindow(), onIcon.x, onIcon.y));
    EXPECT_TRUE(Called(1));
    EXPECT_EQ(lastArgument, 4711);
    EXPECT_TRUE(tip.IsShowing());
    EXPECT_TRUE(ShowsAt(onIcon, green));
}

TEST_F(TipRegion, IconIsNotFiredByAPressElsewhereAndALinkIs) {
    auto icon = IconRegion();
    icon->callback = Note;
    icon->argument = 1;
    auto link = LinkRegion();
    link->callback = Note;
    link->argument = 2;
    Show(std::move(icon), std::move(link));
    PointAt(besideBoth);
    PressButton();
    PumpFor(150);
    PointAt(onIcon);
    EXPECT_TRUE(ShowsAt(onIcon, green));
    ReleaseButton();
    PumpFor(200);
    EXPECT_EQ(callCount, 0);
    PointAt(besideBoth);
    PressButton();
    PumpFor(150);
    PointAt(onLink);
    ReleaseButton();
    EXPECT_TRUE(Called(1));
    EXPECT_EQ(lastArgument, 2);
    // Beside both nothing is fired.
    Click(ScreenPoint(tip.ShownWindow(), besideBoth.x, besideBoth.y));
    PumpFor(200);
    EXPECT_EQ(callCount, 1);
}

TEST_F(TipRegion, WithoutACallbackAClickTakesTheTipAway) {
    Show(nullptr, LinkRegion());
    Click(ScreenPoint(tip.ShownWindow(), onLink.x, onLink.y));
    EXPECT_TRUE(WaitUntilGone(tip));
    PumpFor(300);
    EXPECT_FALSE(tip.IsShowing());
}

TEST_F(TipRegion, CallbackMayStopTheTip) {
    auto link = LinkRegion();
    link->callback = StopTip;
    link->argument = reinterpret_cast<std::int64_t>(&tip);
    Show(IconRegion(), std::move(link));
    Click(ScreenPoint(tip.ShownWindow(), onLink.x, onLink.y));
    EXPECT_TRUE(WaitUntilGone(tip));
    EXPECT_TRUE(Called(1));
    EXPECT_TRUE(PumpUntil([] { return TipWatcher::TipCount() == 0; }));
    // The watcher can't end itself: the next stop on this thread does.
    tip.Stop();
    EXPECT_FALSE(TipWatcher::IsRunning());
}

TEST_F(TipRegion, CallbackMayHideTheTipForThisStay) {
    auto link = LinkRegion();
    link->callback = HideTip;
    link->argument = reinterpret_cast<std::int64_t>(&tip);
    Show(IconRegion(), std::move(link));
    Click(ScreenPoint(tip.ShownWindow(), onLink.x, onLink.y));
    EXPECT_TRUE(WaitUntilGone(tip));
    EXPECT_TRUE(Called(1));
    // The pointer is always where a point tip applies, and its delay is over at once.
    PumpFor(300);
    EXPECT_FALSE(tip.IsShowing());
}

// Nothing of what a tip showed before comes back.
TEST_F(TipRegion, ConfiguredWithNothingIsMarginsAlone) {
    Show(IconRegion(), LinkRegion());
    XToolTipDescription nothing;
    nothing.point = {800, 600};
    nothing.showTime = tip_timing::forEver;
    tip.Configure(nothing);
    ASSERT_TRUE(tip.IsShowing());
    const RECT shown = TipForm::RectOf(tip.ShownWindow());
    EXPECT_EQ(shown.right - shown.left, 2);
    EXPECT_EQ(shown.bottom - shown.top, 4);
}

TEST_F(TipRegion, TipHoldsItsRegions) {
    auto link = LinkRegion();
    link->x = 300;
    link->y = 90;
    Show(IconRegion(), std::move(link));
    const RECT shown = TipForm::RectOf(tip.ShownWindow());
    const Canvas canvas(1, 1);
    clRegion copy;
    copy.CopyFrom(*LinkRegion());
    const clExtent size = copy.Size(canvas.Dc());
    EXPECT_EQ(shown.right - shown.left, 300 + size.width + 1 + 2);
    EXPECT_EQ(shown.bottom - shown.top, 90 + size.height + 4);
}

TEST_F(TipRegion, CopyGetsTheDefaultsThatAreNotGiven) {
    clRegion plain;
    clRegion copy;
    copy.CopyFrom(plain);
    EXPECT_EQ(copy.size, 14);
    EXPECT_EQ(copy.colour, COLORREF{0xFF0000});
    plain.size = 20;
    plain.colour = 0x010203;
    plain.pressed = true;
    plain.look = 2;
    copy.CopyFrom(plain);
    EXPECT_EQ(copy.size, 20);
    EXPECT_EQ(copy.colour, COLORREF{0x010203});
    EXPECT_FALSE(copy.pressed);
    EXPECT_EQ(copy.look, 0u);
}

TEST_F(TipRegion, LinkIsUnderlinedInItsFont) {
    auto link = LinkRegion();
    link->bold = true;
    link->size = 20;
    link->face.Assign(L"Tahoma");
    link->text.Assign(L"One\rTwo");
    Show(nullptr, std::move(link));
    HWND const window = tip.ShownWindow();
    RECT client = {};
    GetClientRect(window, &client);
    const Canvas expected(client.right, client.bottom, paper);
    {
        clFont font;
        font.Create(expected.Dc());
        font.DrawString(150, 0, L".", true);
        font.Create(expected.Dc(), "Tahoma", 20, 0xFF0000, true, false, true);
        font.DrawString(linkAt.x, linkAt.y, L"One\rTwo", true);
    }
    int different = 0;
    ASSERT_TRUE(ShowsAt({1, 1}, paper));
    HDC const dc = GetDC(window);
    for (int y = 0; y < client.bottom; ++y) {
        for (int x = 0; x < client.right; ++x) {
            if (GetPixel(dc, x, y) != expected.At(x, y)) ++different;
        }
    }
    ReleaseDC(window, dc);
    EXPECT_EQ(different, 0);
    EXPECT_GT(expected.Count(0xFF0000), 20);
}

TEST_F(TipRegion, RegionsLeaveNothingBehind) {
    const auto makeAndDestroy = [](int count) {
        for (int i = 0; i < count; ++i) {
            XToolTip other;
            clOwnedList<clRegion> regions;
            regions.Add(IconRegion());
            regions.Add(LinkRegion());
            XToolTipDescription description;
            description.rectangle = {-10, -10, -5, -5};
            description.regions = &regions;
            other.Configure(description);
        }
    };
    makeAndDestroy(10);
    const ResourceCounts before = CountResources();
    makeAndDestroy(200);
    EXPECT_EQ(CountResources(), before);
}

}  // namespace
