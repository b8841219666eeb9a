// What a nested lock of clMutex costs on the thread that owns it, measured
// against a counter increment under a critical section in the same run, so that
// the machine's speed drops out. Ends with 1 when the ratio is above the limit.
#include <windows.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <vector>

#include "foundation/mutex.h"

namespace {

constexpr int rounds = 201;
constexpr int operationsEach = 20000;
constexpr double largestRatio = 3.0;

// Nanoseconds of one call of `operation`.
template <class Operation>
double TimeOf(Operation operation) {
    LARGE_INTEGER frequency;
    LARGE_INTEGER begin;
    LARGE_INTEGER end;
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&begin);
    for (int i = 0; i < operationsEach; ++i)
        operation();
    QueryPerformanceCounter(&end);
    const auto ticks = static_cast<double>(end.QuadPart - begin.QuadPart);
    return ticks * 1e9 / static_cast<double>(frequency.QuadPart) / operationsEach;
}

double Median(std::vector<double> values) {
    std::nth_element(values.begin(), values.begin() + rounds / 2, values.end());
    return values[rounds / 2];
}

}  // namespace

int main() {
    CRITICAL_SECTION section;
    InitializeCriticalSection(&section);
    volatile std::uint32_t counter = 0;
    clMutex mutex;
    const clMutexLock outer(mutex);
    std::vector<double> nested;
    std::vector<double> increments;
    std::vector<double> ratios;
    for (int i = 0; i < rounds; ++i) {
        nested.push_back(TimeOf([&] {
            mutex.Lock();
            mutex.Unlock();
        }));
        increments.push_back(TimeOf([&] {
            EnterCriticalSection(&section);
            counter = counter + 1;
            LeaveCriticalSection(&section);
        }));
        ratios.push_back(nested.back() / increments.back());
    }
    DeleteCriticalSection(&section);
    const double ratio = Median(ratios);
    std::printf("nested lock and unlock of a mutex: %.1f ns\n", Median(nested));
    std::printf("increment in a critical section:   %.1f ns\n", Median(increments));
    std::printf("ratio, median of %d rounds:        %.2f (at most %.1f)\n", rounds, ratio,
                largestRatio);
    return ratio <= largestRatio ? 0 : 1;
}
