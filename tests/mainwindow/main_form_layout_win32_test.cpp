// The main form's size, its divider, and the timers that drive it.
#include <gmock/gmock.h>

#include <array>
#include <atomic>
#include <mutex>
#include <vector>

#include "tests/mainwindow/main_form_stage.h"

namespace {

using testing::ElementsAre;

constexpr LONG divider = MainForm::divider;

decltype(&InvalidateRect) realInvalidate;
std::atomic<HWND> watchedForm;
std::atomic<int> wholeErasures;

BOOL WINAPI CountWholeErasures(HWND window, const RECT* rect, BOOL erase) {
    if (window == watchedForm && rect == nullptr && erase != FALSE) ++wholeErasures;
    return realInvalidate(window, rect, erase);
}

using Places = std::vector<std::array<LONG, 2>>;

// The corners of the band's buttons, in client coordinates.
Places ButtonPlaces(HWND form) {
    Places places;
    for (const wchar_t* caption : {L"Convert", L"List", L"Refresh", L"Reset", L"Filter", L"Help"}) {
        const HWND button = FindWindowExW(form, nullptr, L"Static", caption);
        EXPECT_NE(button, nullptr);
        POINT place = {0, 0};
        MapWindowPoints(button, form, &place, 1);
        places.push_back({place.x, place.y});
    }
    return places;
}

}  // namespace

TEST_F(MainForm, SizeMarksTheWholeClientAreaForErasureAndMovesNoButton) {
    const clCommandLine line;
    RunForm([](HWND form) {
        const Places before = ButtonPlaces(form);
        watchedForm = form;
        realInvalidate = &InvalidateRect;
        const ImportStub counter("InvalidateRect", &CountWholeErasures);
        for (const SIZE size : {SIZE{700, 450}, SIZE{1100, 700}}) {
            wholeErasures = 0;
            SetWindowPos(form, nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER);
            EXPECT_EQ(wholeErasures, 1) << size.cx;
            EXPECT_EQ(ButtonPlaces(form), before) << size.cx;
        }
    });
}

namespace {

HWND MouseOwner(HWND form) {
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    EXPECT_TRUE(GetGUIThreadInfo(GetWindowThreadProcessId(form, nullptr), &info));
    return info.hwndCapture;
}

// Told to the form alone: the real pointer stays away.
void Tell(HWND form, UINT message, LONG x, LONG y = 200) {
    SendMessageW(form, message, 0, MAKELPARAM(x, y));
}

}  // namespace

TEST_F(MainForm, ReleaseOfAnyButtonEndsTheDragAndReleasesTheMouse) {
    const clCommandLine line;
    MovePointerAway();
    RunForm([](HWND form) {
        LONG at = divider;
        for (const UINT release : std::vector<UINT>{WM_LBUTTONUP, WM_RBUTTONUP, WM_MBUTTONUP}) {
            SCOPED_TRACE(release);
            Tell(form, WM_LBUTTONDOWN, at + 2);
            EXPECT_EQ(MouseOwner(form), form);
            Tell(form, WM_MOUSEMOVE, at + 52);
            EXPECT_EQ(TreeWidth(form), at + 50);
            Tell(form, release, at + 52);
            EXPECT_EQ(MouseOwner(form), nullptr);
            Tell(form, WM_MOUSEMOVE, at + 152);
            EXPECT_EQ(TreeWidth(form), at + 50);
            at = TreeWidth(form);
        }
    });
}

TEST_F(MainForm, ReleaseElsewhereTakesTheDividerThere) {
    const clCommandLine line;
    MovePointerAway();
    RunForm([](HWND form) {
        Tell(form, WM_LBUTTONDOWN, divider + 2);
        Tell(form, WM_LBUTTONUP, 402);
        EXPECT_EQ(TreeWidth(form), 400);
    });
}

TEST_F(MainForm, OnlyTheFirstPressOfTheLeftButtonTakesTheDivider) {
    const clCommandLine line;
    MovePointerAway();
    RunForm([](HWND form) {
        for (const UINT press :
             std::vector<UINT>{WM_LBUTTONDBLCLK, WM_RBUTTONDOWN, WM_MBUTTONDOWN}) {
            Tell(form, press, divider + 2);
            EXPECT_EQ(MouseOwner(form), nullptr) << press;
            Tell(form, WM_MOUSEMOVE, 500);
            EXPECT_EQ(TreeWidth(form), divider) << press;
        }
    });
}

namespace {

struct StartedTimer {
    HWND window;
    UINT_PTR id;
    UINT period;
};

std::mutex timersMutex;
std::vector<StartedTimer> startedTimers;
decltype(&SetTimer) realSetTimer;

UINT_PTR WINAPI KeepTimer(HWND window, UINT_PTR id, UINT period, TIMERPROC procedure) {
    const std::lock_guard lock(timersMutex);
    startedTimers.push_back({window, id, period});
    return realSetTimer(window, id, period, procedure);
}

}  // namespace

TEST_F(MainForm, TwoTimersDriveIt) {
    const clCommandLine line;
    startedTimers.clear();
    realSetTimer = &SetTimer;
    const ImportStub stub("SetTimer", &KeepTimer);
    RunForm([](HWND form) {
        const std::lock_guard lock(timersMutex);
        std::vector<UINT> ofBar;
        std::vector<UINT> others;
        for (const StartedTimer& timer : startedTimers) {
            if (timer.window == form) (timer.id >= 7788 ? ofBar : others).push_back(timer.period);
        }
        EXPECT_THAT(ofBar, ElementsAre(50u));
        EXPECT_THAT(others, ElementsAre(250u));
    });
}
