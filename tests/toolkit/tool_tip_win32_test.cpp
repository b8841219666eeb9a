#include "toolkit/tool_tip.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <memory>
#include <thread>

#include "foundation/mutex.h"
#include "tests/support/import_stub.h"
#include "tests/toolkit/button_form.h"
#include "tests/toolkit/fast_clock.h"
#include "tests/toolkit/tip_form.h"
#include "tests/ui/pointer.h"
#include "tests/ui/pump.h"
#include "tests/ui/resource_counts.h"
#include "toolkit/tool_tip_watcher.h"

namespace {

// How late a busy machine may make things.
constexpr DWORD generousMs = 3000;

TEST(ToolTip, ShowsAfterItsDelayAndNotBefore) {
    TipForm form;
    XToolTip tip;
    XToolTipParams params = QuickTip(form.First());
    params.showDelay = 600;
    tip.AddTool(params);
    EXPECT_FALSE(tip.IsShowing());
    const DWORD begin = GetTickCount();
    form.PointAt(form.First());
    ASSERT_TRUE(WaitUntilShowing(tip));
    EXPECT_GT(GetTickCount() - begin, 600u - 50u);
    EXPECT_LT(GetTickCount() - begin, 600u + generousMs);
    form.PointAway();
    EXPECT_TRUE(WaitUntilGone(tip));
}

// What the program's buttons have.
TEST(ToolTip, OfAButtonShowsAfterASecond) {
    ButtonForm form({{0, L"Tip of a button"}, {}}, ButtonForm::Timer::Running);
    const DWORD begin = GetTickCount();
    form.PointAt(0);
    PumpFor(700);
    EXPECT_FALSE(form.At(0).Tip().IsShowing());
    ASSERT_TRUE(PumpUntil([&] { return form.At(0).Tip().IsShowing(); }));
    EXPECT_GT(GetTickCount() - begin, 950u);
    EXPECT_LT(GetTickCount() - begin, 1050u + generousMs);
    form.PointAt(1);
    EXPECT_TRUE(PumpUntil([&] { return !form.At(0).Tip().IsShowing(); }));
    EXPECT_FALSE(form.At(1).Tip().IsShowing());
    form.At(0).Teardown();
    EXPECT_EQ(TipWatcher::TipCount(), 0);
}

TEST(ToolTip, TakesNeitherFocusNorActivation) {
    TipForm form;
    SetFocus(form.Edit());
    XToolTip tip;
    tip.AddTool(QuickTip(form.First()));
    form.PointAt(form.First());
    ASSERT_TRUE(WaitUntilShowing(tip));
    EXPECT_EQ(GetForegroundWindow(), form.Window());
    EXPECT_EQ(GetFocus(), form.Edit());
    HWND const window = tip.ShownWindow();
    const auto style = static_cast<DWORD>(GetWindowLongW(window, GWL_STYLE));
    const auto exStyle = static_cast<DWORD>(GetWindowLongW(window, GWL_EXSTYLE));
    EXPECT_EQ(style & (WS_POPUP | WS_DLGFRAME | WS_CHILD), WS_POPUP);
    EXPECT_TRUE(PumpUntil([window] { return IsWindowEnabled(window) != FALSE; }));
    constexpr DWORD wanted = WS_EX_TOPMOST | WS_EX_TOOLWINDOW | WS_EX_LAYERED;
    EXPECT_EQ(exStyle & wanted, wanted);
    EXPECT_EQ(GetWindow(window, GW_OWNER), form.Window());
    EXPECT_NE(GetWindowThreadProcessId(window, nullptr), GetCurrentThreadId());
}

TEST(ToolTip, ShownForThreeSecondsFadesForOneAndGoes) {
    TipForm form;
    XToolTip tip;
    XToolTipParams params = QuickTip(form.First());
    params.showTime = 3000;
    tip.AddTool(params);
    form.PointAt(form.First());
    ASSERT_TRUE(WaitUntilShowing(tip));
    const DWORD shown = GetTickCount();
    HWND const window = tip.ShownWindow();
    ASSERT_TRUE(PumpUntil([window] { return AlphaOf(window) == 255; }));
    EXPECT_LT(GetTickCount() - shown, 2000u) << "opaque only when it should fade already";
    ASSERT_TRUE(PumpUntil([window] { return AlphaOf(window) < 255; }));
    EXPECT_GE(GetTickCount() - shown, 1900u);
    int last = 255;
    int changes = 0;
    while (tip.IsShowing() && GetTickCount() - shown < 20000) {
        const int alpha = AlphaOf(window);
        if (alpha >= 0 && alpha != last) {
            EXPECT_LT(alpha, last);
            last = alpha;
            ++changes;
        }
        PumpFor(5);
    }
    EXPECT_GE(changes, 4);
    EXPECT_LT(last, 128);
    EXPECT_GT(GetTickCount() - shown, 2900u);
    EXPECT_LT(GetTickCount() - shown, 3000u + generousMs);
    EXPECT_TRUE(WaitUntilGone(tip));
    EXPECT_FALSE(IsWindow(window));
}

TEST(ToolTip, ComesBackOnlyAfterThePointerHasLeft) {
    TipForm form;
    XToolTip tip;
    XToolTipParams params = QuickTip(form.First());
    params.showTime = 300;
    tip.AddTool(params);
    form.PointAt(form.First());
    ASSERT_TRUE(WaitUntilShowing(tip));
    ASSERT_TRUE(WaitUntilGone(tip));
    // A move within the anchor is no leaving.
    const POINT middle = ScreenMiddle(form.First());
    MovePointer({middle.x + 3, middle.y});
    PumpFor(600);
    EXPECT_FALSE(tip.IsShowing());
    form.PointAway();
    PumpFor(200);
    form.PointAt(form.First());
    EXPECT_TRUE(WaitUntilShowing(tip));
}

TEST(ToolTip, WithoutFadeIsNoLayeredWindowAndGoesInOneStep) {
    TipForm form;
    XToolTip tip;
    XToolTipParams params = QuickTip(form.First());
    params.showTime = 900;
    params.noFade = true;
    tip.AddTool(params);
    form.PointAt(form.First());
    ASSERT_TRUE(WaitUntilShowing(tip));
    const DWORD shown = GetTickCount();
    HWND const window = tip.ShownWindow();
    EXPECT_EQ(static_cast<DWORD>(GetWindowLongW(window, GWL_EXSTYLE)) & WS_EX_LAYERED, 0u);
    while (tip.IsShowing() && GetTickCount() - shown < 10000) {
        EXPECT_EQ(AlphaOf(window), -1);
        PumpFor(20);
    }
    EXPECT_GT(GetTickCount() - shown, 800u);
    EXPECT_FALSE(tip.IsShowing());
}

TEST(ToolTip, ForEverIsSeenAndNeverFades) {
    TipForm form;
    XToolTip tip;
    XToolTipParams params = QuickTip(form.First());
    params.showTime = tip_timing::forEver;
    tip.AddTool(params);
    form.PointAt(form.First());
    ASSERT_TRUE(WaitUntilShowing(tip));
    HWND const window = tip.ShownWindow();
    EXPECT_TRUE(PumpUntil([window] { return PixelOf(window, 0, 0) == 0x767676; }));
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(AlphaOf(window), 255);
        PumpFor(50);
    }
    EXPECT_TRUE(tip.IsShowing());
    form.PointAway();
    EXPECT_TRUE(WaitUntilGone(tip));
}

TEST(ToolTip, AnotherAnchorEndsOneTipAndStartsTheOthersDelayAfresh) {
    TipForm form;
    XToolTip first;
    XToolTip second;
    XToolTipParams params = QuickTip(form.First());
    params.showDelay = 500;
    first.AddTool(params);
    params.anchorWindow = form.Second();
    second.AddTool(params);
    form.PointAt(form.First());
    ASSERT_TRUE(WaitUntilShowing(first));
    EXPECT_FALSE(second.IsShowing());
    const DWORD begin = GetTickCount();
    form.PointAt(form.Second());
    ASSERT_TRUE(WaitUntilGone(first));
    EXPECT_FALSE(second.IsShowing());
    ASSERT_TRUE(WaitUntilShowing(second));
    EXPECT_GT(GetTickCount() - begin, 500u - 50u);
    EXPECT_FALSE(first.IsShowing());
}

TEST(ToolTip, HideNowTakesItAwayUntilThePointerLeaves) {
    TipForm form;
    XToolTip tip;
    tip.AddTool(QuickTip(form.First()));
    tip.HideNow();  // nothing shows
    form.PointAt(form.First());
    ASSERT_TRUE(WaitUntilShowing(tip));
    HWND const window = tip.ShownWindow();
    tip.HideNow();
    EXPECT_FALSE(tip.IsShowing());
    EXPECT_FALSE(IsWindow(window));
    PumpFor(500);
    EXPECT_FALSE(tip.IsShowing());
    form.PointAway();
    PumpFor(200);
    form.PointAt(form.First());
    EXPECT_TRUE(WaitUntilShowing(tip));
}

TEST(ToolTip, WatcherLivesFromTheFirstTipToTheLast) {
    TipForm form;
    EXPECT_FALSE(TipWatcher::IsRunning());
    {
        XToolTip first;
        XToolTip second;
        EXPECT_FALSE(TipWatcher::IsRunning());
        first.AddTool(QuickTip(form.First()));
        EXPECT_TRUE(TipWatcher::IsRunning());
        second.AddTool(QuickTip(form.Second()));
        second.AddTool(QuickTip(form.Second()));
        EXPECT_EQ(TipWatcher::TipCount(), 2);
        first.Stop();
        EXPECT_EQ(TipWatcher::TipCount(), 1);
        EXPECT_TRUE(TipWatcher::IsRunning());
        first.Stop();
        EXPECT_TRUE(TipWatcher::IsRunning());
    }
    EXPECT_EQ(TipWatcher::TipCount(), 0);
    EXPECT_FALSE(TipWatcher::IsRunning());
}

TEST(ToolTip, StopWhileShowingTakesTheWindowAway) {
    TipForm form;
    auto tip = std::make_unique<XToolTip>();
    tip->AddTool(QuickTip(form.First()));
    form.PointAt(form.First());
    ASSERT_TRUE(WaitUntilShowing(*tip));
    HWND const window = tip->ShownWindow();
    tip->Stop();
    EXPECT_FALSE(IsWindow(window));
    EXPECT_EQ(tip->ShownWindow(), nullptr);
    // Stopped, it has nothing left to show, and can be configured anew.
    PumpFor(300);
    EXPECT_EQ(tip->ShownWindow(), nullptr);
    form.PointAway();
    tip->AddTool(QuickTip(form.First()));
    form.PointAt(form.First());
    ASSERT_TRUE(WaitUntilShowing(*tip));
    HWND const again = tip->ShownWindow();
    tip.reset();
    EXPECT_FALSE(IsWindow(again));
}

// Holds the tooltip mutex on a thread of its own, so long or until its end.
class Holder {
public:
    explicit Holder(DWORD milliseconds, HWND sendTo = nullptr)
        : thread([this, milliseconds, sendTo] {
              TooltipMutex.Lock();
              isHeld = true;
              if (sendTo != nullptr) {
                  DWORD_PTR result = 0;
                  answered = SendMessageTimeoutW(sendTo, WM_NULL, 0, 0, SMTO_NORMAL, milliseconds,
                                                 &result) != 0;
              } else {
                  WaitForSingleObject(end, milliseconds);
              }
              TooltipMutex.Unlock();
          }) {
        while (!isHeld)
            Sleep(1);
    }
    Holder(const Holder&) = delete;
    Holder& operator=(const Holder&) = delete;
    ~Holder() {
        SetEvent(end);
        thread.join();
        CloseHandle(end);
    }

    std::atomic<bool> answered{false};

private:
    HANDLE end = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    std::atomic<bool> isHeld{false};
    std::thread thread;
};

TEST(ToolTip, StopDispatchesMessagesWhileAnotherThreadHasTheMutex) {
    ButtonForm form({}, ButtonForm::Timer::None);
    XToolTip tip;
    tip.AddTool(QuickTip(form.Edit()));
    DWORD arrived = 0;
    DWORD stopped = 0;
    {
        const Holder holder(500);
        PostMessageW(form.Window(), WM_COMMAND, 77, 0);
        const DWORD begin = GetTickCount();
        form.commands.clear();
        tip.Stop();
        stopped = GetTickCount() - begin;
        arrived = static_cast<DWORD>(form.commands.size());
    }
    EXPECT_GE(stopped, 300u);
    EXPECT_EQ(arrived, 1u);
}

TEST(ToolTip, RequestToQuitOutlivesTheDispatchingOfStop) {
    TipForm form;
    XToolTip tip;
    tip.AddTool(QuickTip(form.First()));
    {
        const Holder holder(200);
        PostQuitMessage(7);
        tip.Stop();
    }
    MSG message = {};
    ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(message.wParam, 7u);
}

// The watcher may have to send the form a message before it can go on.
TEST(ToolTip, ConfiguringAnswersAThreadThatHasTheMutexAndSendsAMessage) {
    TipForm form;
    XToolTip tip;
    tip.AddTool(QuickTip(form.First()));
    {
        Holder holder(4000, form.Window());
        const DWORD begin = GetTickCount();
        const TipLock lock(TipLock::LetThrough::Sent);
        EXPECT_LT(GetTickCount() - begin, 3000u);
        EXPECT_TRUE(holder.answered);
    }
}

TEST(ToolTip, HideNowGivesUpAfterFiveSeconds) {
    TipForm form;
    XToolTip tip;
    tip.AddTool(QuickTip(form.First()));
    form.PointAt(form.First());
    ASSERT_TRUE(WaitUntilShowing(tip));
    HWND const window = tip.ShownWindow();
    {
        const Holder holder(10000);
        {
            const FastClock clock;
            tip.HideNow();
            EXPECT_GE(clock.Passed(), 4900u);
            EXPECT_LT(clock.Passed(), 9900u);
        }
        EXPECT_TRUE(PumpUntil([window] { return !IsWindow(window); }, 1500));
    }
    PumpFor(500);
    EXPECT_FALSE(tip.IsShowing());
}

std::atomic<HCURSOR> lastCursor{nullptr};

HCURSOR WINAPI NoteCursor(HCURSOR cursor) {
    lastCursor = cursor;
    return nullptr;
}

// Under a form's wait cursor a tip would look as if it were busy.
TEST(ToolTip, ShowsUnderTheArrow) {
    TipForm form;
    lastCursor = nullptr;
    const ImportStub stub("SetCursor", &NoteCursor);
    XToolTip tip;
    XToolTipParams params = QuickTip(nullptr);
    params.point = {700, 500};
    tip.AddTool(params);
    ASSERT_TRUE(tip.IsShowing());
    EXPECT_EQ(lastCursor, LoadCursorW(nullptr, IDC_ARROW));
    tip.Stop();
}

decltype(&CreateWindowExW) realCreateWindow;

HWND WINAPI RefuseLayers(DWORD exStyle, LPCWSTR className, LPCWSTR title, DWORD style, int x, int y,
                         int width, int height, HWND parent, HMENU menu, HINSTANCE instance,
                         void* parameter) {
    if ((exStyle & WS_EX_LAYERED) != 0) return nullptr;
    return realCreateWindow(exStyle, className, title, style, x, y, width, height, parent, menu,
                            instance, parameter);
}

TEST(ToolTip, ShowsUnfadedWhereNoWindowMayBeLayered) {
    TipForm form;
    const ImportStub stub("CreateWindowExW", &RefuseLayers);
    realCreateWindow = stub.Original<decltype(CreateWindowExW)>();
    XToolTip tip;
    XToolTipParams params = QuickTip(nullptr);
    params.noFade = false;
    params.point = {700, 500};
    tip.AddTool(params);
    EXPECT_TRUE(tip.IsShowing());
    EXPECT_TRUE(IsWindowVisible(tip.ShownWindow()));
    tip.Stop();
}

TEST(ToolTip, WindowThatIsClosedFromOutsideIsForgotten) {
    TipForm form;
    XToolTip tip;
    tip.AddTool(QuickTip(form.First()));
    form.PointAt(form.First());
    ASSERT_TRUE(WaitUntilShowing(tip));
    PostMessageW(tip.ShownWindow(), WM_CLOSE, 0, 0);
    EXPECT_TRUE(WaitUntilGone(tip));
    PumpFor(300);
    EXPECT_FALSE(tip.IsShowing()) << "the pointer has not left";
}

TEST(ToolTip, OutlivesItsAnchorsForm) {
    auto form = std::make_unique<TipForm>();
    XToolTip tip;
    tip.AddTool(QuickTip(form->First()));
    form->PointAt(form->First());
    ASSERT_TRUE(WaitUntilShowing(tip));
    form.reset();
    EXPECT_TRUE(PumpUntil([&tip] { return !tip.IsShowing(); }));
    tip.Stop();
    EXPECT_FALSE(TipWatcher::IsRunning());
}

TEST(ToolTip, ThousandConfiguredTipsLeaveNothingBehind) {
    TipForm form;
    const auto makeAndDestroy = [&form](int count) {
        for (int i = 0; i < count; ++i) {
            XToolTip tip;
            tip.AddTool(QuickTip(form.First()));
        }
    };
    makeAndDestroy(20);
    const ResourceCounts before = CountResources();
    makeAndDestroy(1000);
    EXPECT_EQ(CountResources(), before);
}

// Fifty at a time: the watcher shows them all in one turn, as it takes them away
// when the pointer leaves. One of them is stopped while it shows. A thousand would
// take half a minute on a busy machine, three hundred take ten seconds.
TEST(ToolTip, ThreeHundredShownTipsLeaveNothingBehind) {
    TipForm form;
    const RECT area = form.RectOf(form.First());
    XToolTipParams params = QuickTip(nullptr);
    params.rectangle = {area.left, area.top, area.right, area.bottom};
    params.showDelay = 1;
    const auto showAndDestroy = [&](int rounds) {
        for (int round = 0; round < rounds; ++round) {
            std::array<XToolTip, 50> tips;
            for (XToolTip& tip : tips)
                tip.AddTool(params);
            form.PointAt(form.First());
            for (XToolTip& tip : tips) {
                ASSERT_TRUE(WaitUntilShowing(tip));
                UpdateWindow(tip.ShownWindow());
            }
            tips.front().Stop();
            form.PointAway();
            for (XToolTip& tip : tips)
                ASSERT_TRUE(WaitUntilGone(tip));
        }
    };
    showAndDestroy(1);
    const ResourceCounts before = CountResources();
    showAndDestroy(6);
    EXPECT_EQ(CountResources(), before);
}

}  // namespace
