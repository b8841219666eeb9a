#include <gtest/gtest.h>
#include <windows.h>

#include <atomic>
#include <string>
#include <thread>

#include "tests/toolkit/recording_window.h"
#include "tests/toolkit/window_class.h"
#include "tests/ui/pump.h"
#include "toolkit/window_table.h"

namespace {

constexpr RECT somewhere = {100, 120, 301, 223};

// A window that a thread of its own makes, and destroys when it is let.
class OwnersWindow {
public:
    OwnersWindow()
        : owner([this] {
              window.CreateWnd(somewhere, WS_POPUP, 0, nullptr);
              window.Taken();
              made = window.Window();
              while (!mayEnd)
                  Sleep(1);
              isGone = PumpUntil([this] { return !IsWindow(made); });
          }) {
        while (made == nullptr)
            Sleep(1);
    }
    OwnersWindow(const OwnersWindow&) = delete;
    OwnersWindow& operator=(const OwnersWindow&) = delete;
    ~OwnersWindow() { Join(); }

    HWND Made() const { return made; }
    // Lets the thread dispatch messages; true if that put an end to the window.
    bool Join() {
        mayEnd = true;
        if (owner.joinable()) owner.join();
        return isGone;
    }

    RecordingWindow window;

private:
    std::atomic<HWND> made{nullptr};
    std::atomic<bool> mayEnd{false};
    bool isGone = false;
    std::thread owner;
};

TEST(AbandonWnd, LeavesTheWindowToItsThread) {
    OwnersWindow left;
    left.window.AbandonWnd();
    EXPECT_EQ(left.window.Window(), nullptr);
    EXPECT_EQ(FindInWindowTable(left.Made()), nullptr);
    EXPECT_TRUE(IsWindow(left.Made())) << "it waits for its thread";
    EXPECT_TRUE(left.Join());
    EXPECT_TRUE(left.window.Taken().empty());
    left.window.AbandonWnd();
}

// The platform gives no class back that has a window, and the thread that
// destroys the window knows nothing of its class.
TEST(AbandonWnd, ClassGoesWithTheNextWindowThatIsDestroyed) {
    OwnersWindow left;
    const std::string name = ClassOf(left.Made());
    left.window.AbandonWnd();
    RecordingWindow other;
    other.CreateWnd(somewhere, WS_POPUP, 0, nullptr);
    const std::string otherName = ClassOf(other.Window());
    other.DestroyWnd();
    EXPECT_TRUE(IsRegistered(name)) << "its window is still there";
    EXPECT_FALSE(IsRegistered(otherName));
    EXPECT_TRUE(left.Join());
    EXPECT_TRUE(IsRegistered(name));
    other.CreateWnd(somewhere, WS_POPUP, 0, nullptr);
    other.DestroyWnd();
    EXPECT_FALSE(IsRegistered(name));
}

}  // namespace
