// A hand-off with a real window, paths to gather and a temporary folder of its own.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "selection/hand_off.h"
#include "tests/support/converter_side.h"
#include "tests/support/converter_stage.h"
#include "tests/support/scratch_folder.h"

inline constexpr ULONGLONG longestPollMs = 10000;

// False if the condition has not come true within the limit.
inline bool Poll(const std::function<bool()>& condition) {
    const ULONGLONG begin = GetTickCount64();
    while (!condition()) {
        if (GetTickCount64() - begin > longestPollMs) return false;
        Sleep(5);
    }
    return true;
}

inline HCURSOR SystemCursor(const wchar_t* shape) {
    return LoadCursorW(nullptr, shape);
}

// A visible window of this thread, which is the form of the hand-off.
class OwnerWindow {
public:
    OwnerWindow()
        : window_(CreateWindowExW(0, L"STATIC", L"owner", WS_OVERLAPPEDWINDOW, 120, 80, 300, 200,
                                  nullptr, nullptr, nullptr, nullptr)) {
        ShowWindow(window_, SW_SHOW);
    }
    OwnerWindow(const OwnerWindow&) = delete;
    OwnerWindow& operator=(const OwnerWindow&) = delete;
    ~OwnerWindow() { DestroyWindow(window_); }

    HWND Get() const { return window_; }
    bool IsVisible() const { return IsWindowVisible(window_) != 0; }
    std::wstring Place() const {
        RECT rect{};
        GetWindowRect(window_, &rect);
        return std::to_wstring(rect.left) + L"," + std::to_wstring(rect.top) + L"," +
               std::to_wstring(rect.right) + L"," + std::to_wstring(rect.bottom);
    }

private:
    HWND window_;
};

// A form that gathers the given paths and notes what it finds when it is asked.
class RecordingHost : public HandOffHost {
public:
    explicit RecordingHost(HWND window) : window_(window) {}

    void StopReader() override {
        calls.push_back("stop");
        cursorAtStop = GetCursor();
    }
    void Gather(clStringList& files) override {
        calls.push_back("gather");
        cursorAtGather = GetCursor();
        gatheredInto = files.Count();
        for (const std::wstring& path : paths)
            files.Add(path.c_str());
        if (afterGather) afterGather();
    }
    HWND__* Window() override { return window_; }

    std::vector<std::wstring> paths{L"C:\\music\\one.flac"};
    std::function<void()> afterGather;
    std::vector<std::string> calls;
    HCURSOR cursorAtStop = nullptr;
    HCURSOR cursorAtGather = nullptr;
    std::int64_t gatheredInto = -1;

private:
    HWND window_;
};

class HandOffRun : public testing::Test {
protected:
    HandOffRun() { SetCursor(SystemCursor(IDC_ARROW)); }

    // What every way out of the hand-off has in common.
    void ExpectWindowAsBefore() {
        EXPECT_TRUE(owner.IsVisible());
        EXPECT_EQ(owner.Place(), place);
        EXPECT_EQ(GetCursor(), SystemCursor(IDC_ARROW));
        EXPECT_TRUE(FilesIn(temp.Path()).empty());
    }

    ScratchFolder temp;
    clEnvironmentValue tempFolder{L"TMP", temp.Path().Chars()};
    OwnerWindow owner;
    const std::wstring place = owner.Place();
    RecordingHost host{owner.Get()};
};
