#include "toolkit/window_table.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <atomic>
#include <memory>
#include <random>
#include <thread>
#include <vector>

#include "foundation/mutex.h"
#include "toolkit/window.h"

namespace {

class CountingWindow : public XWindow {
public:
    explicit CountingWindow(bool makeNow = true) {
        if (makeNow) Make();
    }
    ~CountingWindow() override { DestroyWnd(); }
    void Make() { CreateWnd({0, 0, 10, 10}, WS_POPUP, 0, nullptr); }
    LRESULT PreDispatch(HWND, UINT message, WPARAM, LPARAM, std::uint32_t* handled) override {
        if (message != WM_APP) return 0;
        *handled = 1;
        return ++count;
    }
    int count = 0;
};

TEST(WindowTable, FindsEachOfManyInWhateverOrderTheyGo) {
    std::mt19937 random(20);
    std::vector<std::unique_ptr<CountingWindow>> windows;
    int made = 70;
    for (int i = 0; i < made; ++i)
        windows.push_back(std::make_unique<CountingWindow>());
    while (!windows.empty()) {
        for (const auto& window : windows)
            ASSERT_EQ(FindInWindowTable(window->Window()), window.get());
        const auto gone = static_cast<std::ptrdiff_t>(random() % windows.size());
        const HWND handle = windows[static_cast<std::size_t>(gone)]->Window();
        windows.erase(windows.begin() + gone);
        ASSERT_EQ(FindInWindowTable(handle), nullptr);
        if (made < 90) {
            windows.push_back(std::make_unique<CountingWindow>());
            ++made;
        }
    }
}

TEST(WindowTable, TheFirstOfTwoWithOneWindowCounts) {
    CountingWindow first;
    CountingWindow second(false);
    // Bound by hand to the window of the other.
    XWindow::DialogProcedure(first.Window(), WM_INITDIALOG, 0, reinterpret_cast<LPARAM>(&second));
    EXPECT_EQ(FindInWindowTable(first.Window()), &first);
    RemoveFromWindowTable(&first);
    EXPECT_EQ(FindInWindowTable(first.Window()), &second);
    AddToWindowTable(&first);
    RemoveFromWindowTable(&second);
    EXPECT_EQ(FindInWindowTable(first.Window()), &first);
}

TEST(WindowTable, HasNoNullWindow) {
    EXPECT_EQ(FindInWindowTable(nullptr), nullptr);
}

TEST(WindowTable, LookUpsNeedNoMutex) {
    CountingWindow window;
    std::atomic<bool> isTaken{false};
    std::atomic<bool> isOver{false};
    std::thread other([&] {
        const clMutexLock lock(WindowMutex);
        isTaken = true;
        while (!isOver)
            Sleep(1);
    });
    while (!isTaken)
        Sleep(1);
    EXPECT_EQ(SendMessageW(window.Window(), WM_APP, 0, 0), 1);
    isOver = true;
    other.join();
}

// Threads whose windows come and go while each asks for its own.
TEST(WindowTable, EachThreadFindsItsOwnWhileOthersChangeIt) {
    std::atomic<int> misses{0};
    std::atomic<int> ready{0};
    std::atomic<bool> isOver{false};
    CountingWindow early;  // in front of the others
    std::vector<std::thread> threads;
    for (int i = 0; i < 2; ++i) {
        threads.emplace_back([&] {
            CountingWindow window;
            ++ready;
            const HWND handle = window.Window();
            while (!isOver) {
                if (FindInWindowTable(handle) != &window) ++misses;
            }
        });
    }
    while (ready < 2)
        Sleep(1);
    CountingWindow late;
    for (int i = 0; i < 300; ++i) {
        // Each change shifts what the others look for.
        for (XWindow* window : {static_cast<XWindow*>(&early), static_cast<XWindow*>(&late)}) {
            RemoveFromWindowTable(window);
            AddToWindowTable(window);
        }
    }
    isOver = true;
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(misses, 0);
}

}  // namespace
