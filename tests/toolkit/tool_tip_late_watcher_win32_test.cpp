#include <gtest/gtest.h>

#include <atomic>
#include <memory>

#include "tests/toolkit/tip_form.h"
#include "tests/ui/pump.h"
#include "toolkit/tool_tip.h"

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
    const DWORD begin = GetTickCount();
    tip.HideNow();
    EXPECT_GE(GetTickCount() - begin, 4900u);
    EXPECT_LT(GetTickCount() - begin, 6500u);
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
    stalling.Stall();
    const DWORD begin = GetTickCount();
    tip->Stop();
    EXPECT_LT(GetTickCount() - begin, 12000u);
    EXPECT_TRUE(stalling.IsStalled());
    EXPECT_EQ(tip->ShownWindow(), nullptr);
    tip.reset();
    stalling.EndStall();
    EXPECT_TRUE(PumpUntil([window] { return !IsWindow(window); }));
    EXPECT_TRUE(stalling.IsShowing());
}

}  // namespace
