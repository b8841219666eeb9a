// What a message costs on its way through an XWindow and through a subclassed
// control, measured against a bare window procedure in the same run, so that the
// machine's speed drops out. Ends with 1 when a ratio is above its limit.
#include <windows.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <iterator>
#include <vector>

#include "foundation/mutex.h"
#include "toolkit/sub_class_ctrl.h"
#include "toolkit/window.h"

namespace {

constexpr int rounds = 101;
constexpr int messagesEach = 500;
constexpr UINT knownMessage = WM_MOUSEMOVE;

volatile std::uint32_t counter = 0;

LRESULT CALLBACK BareProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != knownMessage) return DefWindowProcW(window, message, wParam, lParam);
    counter = counter + 1;
    return 0;
}

// The same with the kernel's mutex around it, which no subclassed message is without.
LRESULT CALLBACK LockingProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    static const HANDLE mutex = CreateMutexW(nullptr, FALSE, nullptr);
    WaitForSingleObject(mutex, INFINITE);
    const LRESULT result = BareProcedure(window, message, wParam, lParam);
    ReleaseMutex(mutex);
    return result;
}

class CountingWindow : public XWindow {
public:
    ~CountingWindow() override { DestroyWnd(); }
    void OnMouseMove(std::int32_t, std::int32_t, std::uint32_t) override { counter = counter + 1; }
};

class CountingControl : public XSubClassCtrl {
public:
    LRESULT WndHook(HWND, UINT message, WPARAM, LPARAM, std::uint32_t* handled) override {
        if (message != knownMessage) return 0;
        counter = counter + 1;
        *handled = 1;
        return 0;
    }
};

HWND NewWindow(const wchar_t* className, WNDPROC procedure) {
    WNDCLASSEXW description = {};
    description.cbSize = sizeof(description);
    description.lpfnWndProc = procedure;
    description.hInstance = GetModuleHandleW(nullptr);
    description.lpszClassName = className;
    RegisterClassExW(&description);
    return CreateWindowExW(0, className, L"", WS_POPUP, 0, 0, 50, 50, nullptr, nullptr,
                           description.hInstance, nullptr);
}

// Nanoseconds of one message sent to `window`.
double TimeOf(HWND window) {
    LARGE_INTEGER frequency;
    LARGE_INTEGER begin;
    LARGE_INTEGER end;
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&begin);
    for (int i = 0; i < messagesEach; ++i)
        SendMessageW(window, knownMessage, 0, 0);
    QueryPerformanceCounter(&end);
    const auto ticks = static_cast<double>(end.QuadPart - begin.QuadPart);
    return ticks * 1e9 / static_cast<double>(frequency.QuadPart) / messagesEach;
}

double Median(std::vector<double> values) {
    std::nth_element(values.begin(), values.begin() + rounds / 2, values.end());
    return values[rounds / 2];
}

// One way of a message, beside what it is measured against in each round.
struct Way {
    const char* name;
    HWND window;
    HWND against;
    clMutex* heldAround;  // by the caller, or null
    double largestRatio;  // 0 for none
    std::vector<double> times;
    std::vector<double> ratios;
};

void Measure(Way& way) {
    const double base = TimeOf(way.against);
    if (way.heldAround != nullptr) way.heldAround->Lock();
    way.times.push_back(TimeOf(way.window));
    if (way.heldAround != nullptr) way.heldAround->Unlock();
    way.ratios.push_back(way.times.back() / base);
}

bool Report(const Way& way) {
    const double ratio = Median(way.ratios);
    std::printf("%-50s %7.0f ns, ratio %6.2f", way.name, Median(way.times), ratio);
    if (way.largestRatio == 0) {
        std::printf(" (the kernel's)\n");
        return true;
    }
    std::printf(" (at most %.1f)\n", way.largestRatio);
    return ratio <= way.largestRatio;
}

}  // namespace

int main() {
    const HWND bare = NewWindow(L"BareForDispatchBench", BareProcedure);
    const HWND locking = NewWindow(L"LockingForDispatchBench", LockingProcedure);
    const HWND controlled = NewWindow(L"ControlForDispatchBench", BareProcedure);
    CountingWindow window;
    window.CreateWnd({0, 0, 50, 50}, WS_POPUP, 0, nullptr);
    CountingControl control;
    control.Attach(controlled);
    Way ways[] = {
        {"bare procedure over itself", bare, bare, nullptr, 1.5, {}, {}},
        {"XWindow over the bare procedure", window.Window(), bare, nullptr, 1.5, {}, {}},
        {"control, mutex held around, over the bare procedure",
         controlled,
         bare,
         &SubclassMutex,
         2,
         {},
         {}},
        {"control over a bare procedure with a kernel mutex",
         controlled,
         locking,
         nullptr,
         1.5,
         {},
         {}},
        {"control over the bare procedure", controlled, bare, nullptr, 0, {}, {}},
    };
    const std::uint32_t before = counter;
    for (int i = 0; i < rounds; ++i) {
        for (Way& way : ways)
            Measure(way);
    }
    const auto expected = static_cast<std::uint32_t>(rounds * messagesEach * 2 * std::size(ways));
    if (counter - before != expected) {
        std::printf("%u messages arrived of %u\n", counter - before, expected);
        return 1;
    }
    bool isWithin = true;
    for (const Way& way : ways)
        isWithin = Report(way) && isWithin;
    control.Detach();
    for (const HWND made : {bare, locking, controlled})
        DestroyWindow(made);
    return isWithin ? 0 : 1;
}
