#include <gtest/gtest.h>
#include <windows.h>

#include <atomic>
#include <thread>

#include "tests/toolkit/recording_window.h"
#include "tests/ui/host_form.h"
#include "tests/ui/pump.h"
#include "tests/ui/resource_counts.h"
#include "toolkit/window.h"

namespace {

class TimedWindow : public RecordingWindow {
public:
    TimedWindow() {
        CreateWnd({0, 0, 50, 50}, WS_POPUP, 0, nullptr);
        Taken();
    }
};

TEST(AddTimer, CountsUpFrom1) {
    TimedWindow window;
    EXPECT_EQ(window.AddTimer(0), 1u);
    EXPECT_EQ(window.AddTimer(100), 2u);
    EXPECT_EQ(window.AddTimer(0xFFFFFFFF), 3u);
    window.DestroyWnd();
    EXPECT_EQ(window.AddTimer(0), 0u) << "no window";
    window.CreateWnd({0, 0, 50, 50}, WS_POPUP, 0, nullptr);
    EXPECT_EQ(window.AddTimer(0), 1u) << "the old ones are gone";
}

TEST(AddTimer, GivesNothingIfThePlatformRefuses) {
    TimedWindow window;
    DestroyWindow(window.Window());  // behind the object's back
    EXPECT_EQ(window.AddTimer(0), 0u);
    EXPECT_EQ(window.AddTimer(0), 0u);
}

TEST(AddTimer, TicksEvery250MillisecondsWhateverIsAsked) {
    TimedWindow window;
    int ticks = 0;
    window.during = [&] { ++ticks; };
    const DWORD begin = GetTickCount();
    ASSERT_EQ(window.AddTimer(10), 1u);
    ASSERT_TRUE(PumpUntil([&] { return ticks == 4; }));
    const DWORD took = GetTickCount() - begin;
    EXPECT_GE(took, 4 * 250u - 60) << "not sooner";
    EXPECT_EQ(window.Taken().front(), "OnTimer 1 0");
}

TEST(TimerMessages, ReachOnlyTimersOfTheList) {
    TimedWindow window;
    window.AddTimer(0);
    window.AddTimer(0);
    struct Row {
        WPARAM id;
        const char* line;
    };
    const Row rows[] = {
        {2, "OnTimer 2 0"}, {1, "OnTimer 1 0"}, {3, "[]"}, {0, "[]"}, {0x100000001, "[]"},
    };
    for (const Row& row : rows) {
        window.SetFlag(9);
        SendMessageW(window.Window(), WM_TIMER, row.id, 0);
        EXPECT_EQ(window.TakenLine(), row.line) << row.id;
    }
}

TEST(TimerMessages, OfAStrangeTimerStayHandled) {
    TimedWindow window;
    window.AddTimer(0);
    SendMessageW(window.Window(), WM_TIMER, 99, 0);
    EXPECT_EQ(window.Flag(), 1u);
    SendMessageW(window.Window(), WM_TIMER, 1, 0);
    EXPECT_EQ(window.Flag(), 0u) << "the base of OnTimer";
}

TEST(DestroyWnd, StopsAllTimers) {
    TimedWindow window;
    window.AddTimer(0);
    window.AddTimer(0);
    int ticks = 0;
    window.during = [&] { ++ticks; };
    window.DestroyWnd();
    window.CreateWnd({0, 0, 50, 50}, WS_POPUP, 0, nullptr);
    ticks = 0;
    PumpFor(600);
    EXPECT_EQ(ticks, 0);
    SendMessageW(window.Window(), WM_TIMER, 1, 0);
    EXPECT_EQ(ticks, 0);
}

TEST(OnTimer, MayStartTimersAndEndTheWindow) {
    TimedWindow window;
    window.AddTimer(0);
    std::uint32_t started = 0;
    window.during = [&] { started = window.AddTimer(0); };
    SendMessageW(window.Window(), WM_TIMER, 1, 0);
    EXPECT_EQ(started, 2u);
    window.during = [&] {
        window.during = nullptr;
        window.DestroyWnd();
    };
    SendMessageW(window.Window(), WM_TIMER, 2, 0);
    EXPECT_EQ(window.Window(), nullptr);
}

TEST(OnTimer, KeepsOtherThreadsFromTheTimersUntilItEnds) {
    TimedWindow window;
    window.AddTimer(0);
    std::atomic<bool> isAsking{false};
    std::atomic<bool> hasAnswer{false};
    bool answeredInside = true;
    std::thread other;
    window.during = [&] {
        other = std::thread([&] {
            isAsking = true;
            (void)window.AddTimer(0);
            hasAnswer = true;
        });
        while (!isAsking)
            Sleep(1);
        Sleep(150);  // long enough for an answer, were it not kept waiting
        answeredInside = hasAnswer;
    };
    SendMessageW(window.Window(), WM_TIMER, 1, 0);
    window.during = nullptr;
    EXPECT_TRUE(PumpUntil([&] { return hasAnswer.load(); }));
    EXPECT_FALSE(answeredInside);
    other.join();
}

// A thousand of each, and the process holds what it held before.

void MakeAndEndAWindow() {
    RecordingWindow window;
    window.CreateWnd({0, 0, 50, 50}, WS_POPUP, 0, nullptr);
    window.AddTimer(0);
    window.AddTimer(0);
    window.SetIcons(CopyIcon(LoadIconW(nullptr, IDI_INFORMATION)),
                    CopyIcon(LoadIconW(nullptr, IDI_INFORMATION)));
}

void MakeAndEndADialog() {
    HostForm form;
    ShowDialog(form,
               DialogTemplate(hiddenForm, 60, 30).Add({L"STATIC", WS_VISIBLE, 1, 1, 9, 9, 11}));
    form.AddTimer(0);
}

void ExpectNoLeak(void (*makeAndEnd)()) {
    for (int i = 0; i < 20; ++i)
        makeAndEnd();
    PumpMessages();
    const ResourceCounts before = CountResources();
    EXPECT_GT(before.userObjects + before.gdiObjects, 0) << "nothing is counted";
    for (int i = 0; i < 1000; ++i)
        makeAndEnd();
    PumpMessages();
    EXPECT_EQ(CountResources(), before);
}

TEST(WindowLeaks, AThousandWindowsLeaveNothing) {
    ExpectNoLeak(MakeAndEndAWindow);
}

TEST(WindowLeaks, AThousandDialogsLeaveNothing) {
    ExpectNoLeak(MakeAndEndADialog);
}

}  // namespace
