#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <string>

#include "foundation/mutex.h"
#include "tests/support/import_stub.h"
#include "tests/toolkit/fast_clock.h"
#include "tests/toolkit/tip_form.h"
#include "tests/toolkit/window_class.h"
#include "tests/ui/pump.h"
#include "toolkit/tool_tip.h"
#include "toolkit/tool_tip_watcher.h"

namespace {

// A tip that holds its thread up, without the mutex, once the pointer moves on it.
class StallingTip : public XToolTip {
public:
    StallingTip() : end(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {}
    StallingTip(const StallingTip&) = delete;
    StallingTip& operator=(const StallingTip&) = delete;
    ~StallingTip() override {
        EndStall();
        Stop();
        CloseHandle(end);
    }

    void OnMouseMove(std::int32_t, std::int32_t, std::uint32_t) override {
        isStalled = true;
        WaitForSingleObject(end, longestStallMs);
        isStalled = false;
    }

    void ShowAtPoint(const clPoint& at) {
        XToolTipParams params = QuickTip(nullptr);
        params.point = at;
        AddTool(params);
        ASSERT_TRUE(IsShowing());
    }
    void Stall() const {
        PostMessageW(ShownWindow(), WM_MOUSEMOVE, 0, 0);
        ASSERT_TRUE(PumpUntil([this] { return isStalled.load(); }));
    }
    void EndStall() const { SetEvent(end); }
    bool IsStalled() const { return isStalled; }

private:
    static constexpr DWORD longestStallMs = 20000;

    HANDLE end;
    std::atomic<bool> isStalled{false};
};

TEST(LateWatcher, HideNowLeavesALateWatcherToDestroyItsWindow) {
    const TipForm form;
    StallingTip tip;
    tip.ShowAtPoint({700, 500});
    HWND const window = tip.ShownWindow();
    tip.Stall();
    {
        const FastClock clock;
        tip.HideNow();
        EXPECT_GE(clock.Passed(), 4900u);
        EXPECT_LT(clock.Passed(), 9900u);
    }
    EXPECT_TRUE(tip.IsStalled());
    tip.EndStall();
    EXPECT_TRUE(PumpUntil([window] { return !IsWindow(window); }));
    EXPECT_TRUE(WaitUntilGone(tip));
    // The pointer is always where a point tip applies: this is still the same stay.
    PumpFor(300);
    EXPECT_FALSE(tip.IsShowing());
}

// The message outlives a hide request that nobody came to serve.
TEST(LateWatcher, StopGivesUpOnALateWatcherWhichDestroysTheWindowAfterwards) {
    const TipForm form;
    StallingTip stalling;
    stalling.ShowAtPoint({700, 500});
    auto tip = std::make_unique<XToolTip>();
    XToolTipParams params = QuickTip(nullptr);
    params.point = {700, 400};
    tip->AddTool(params);
    ASSERT_TRUE(tip->IsShowing());
    HWND const window = tip->ShownWindow();
    const std::string className = ClassOf(window);
    stalling.Stall();
    {
        const FastClock clock;
        tip->Stop();
        EXPECT_GE(clock.Passed(), 9900u) << "twice five seconds";
        EXPECT_LT(clock.Passed(), 14900u);
    }
    EXPECT_TRUE(stalling.IsStalled());
    EXPECT_EQ(tip->ShownWindow(), nullptr);
    tip.reset();
    stalling.EndStall();
    EXPECT_TRUE(PumpUntil([window] { return !IsWindow(window); }));
    EXPECT_TRUE(stalling.IsShowing());
    stalling.Stop();
    EXPECT_FALSE(IsRegistered(className));
}

TEST(LateWatcher, WaitForAPointTipEndsAfterTenSeconds) {
    const TipForm form;
    StallingTip stalling;
    stalling.ShowAtPoint({700, 500});
    stalling.Stall();
    XToolTip tip;
    XToolTipParams params = QuickTip(nullptr);
    params.point = {700, 400};
    {
        const FastClock clock;
        tip.AddTool(params);
        EXPECT_GE(clock.Passed(), 9900u);
        EXPECT_LT(clock.Passed(), 19900u);
    }
    EXPECT_TRUE(stalling.IsStalled());
    EXPECT_FALSE(tip.IsShowing());
    stalling.EndStall();
    // It is watched all the same.
    EXPECT_TRUE(WaitUntilShowing(tip));
}

// Tips wait for the mutex, but what other threads send to their windows does not.
TEST(Watcher, ServesItsWindowsWhileAnotherThreadHasTheMutex) {
    const TipForm form;
    XToolTip tip;
    XToolTipParams params = QuickTip(nullptr);
    params.point = {700, 500};
    tip.AddTool(params);
    ASSERT_TRUE(tip.IsShowing());
    const clMutexLock lock(TooltipMutex);
    // More than one turn of the watcher, so that it meets the mutex held.
    for (int i = 0; i < 5; ++i) {
        DWORD_PTR result = 0;
        EXPECT_NE(SendMessageTimeoutW(tip.ShownWindow(), WM_NULL, 0, 0, SMTO_NORMAL, 2000, &result),
                  0);
        Sleep(60);
    }
}

std::uintptr_t __cdecl NoThread(void*, unsigned, unsigned(__stdcall*)(void*), void*, unsigned,
                                unsigned*) {
    return 0;
}

TEST(Watcher, WithoutItsThreadNoTipShowsAndNobodyWaits) {
    const TipForm form;
    {
        const ImportStub stub("_beginthreadex", &NoThread);
        XToolTip tip;
        XToolTipParams params = QuickTip(nullptr);
        params.point = {700, 500};
        const DWORD begin = GetTickCount();
        tip.AddTool(params);
        EXPECT_FALSE(tip.IsShowing());
        EXPECT_FALSE(TipWatcher::IsRunning());
        tip.Stop();
        EXPECT_LT(GetTickCount() - begin, 4000u);
        EXPECT_EQ(TipWatcher::TipCount(), 0);
    }
    XToolTip tip;
    XToolTipParams params = QuickTip(nullptr);
    params.point = {700, 500};
    tip.AddTool(params);
    EXPECT_TRUE(tip.IsShowing()) << "the next one gets its thread";
}

}  // namespace
