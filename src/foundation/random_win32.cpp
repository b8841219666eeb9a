#include <windows.h>

#include "foundation/random.h"
#include "foundation/static_order.h"

namespace {

std::uint32_t ClockSeed() {
    SYSTEMTIME now;
    GetSystemTime(&now);
    LARGE_INTEGER counter{};
    const bool hasCounter = QueryPerformanceCounter(&counter) != FALSE;
    return SeedFromClocks({now.wYear, now.wHour, now.wMinute, now.wSecond, now.wMilliseconds,
                           hasCounter, static_cast<std::uint64_t>(counter.QuadPart),
                           GetTickCount()});
}

class SharedGenerator {
public:
    SharedGenerator() : generator(ClockSeed()) { InitializeCriticalSection(&section); }
    SharedGenerator(const SharedGenerator&) = delete;
    SharedGenerator& operator=(const SharedGenerator&) = delete;
    ~SharedGenerator() { DeleteCriticalSection(&section); }

    std::uint32_t Draw(std::uint32_t range) {
        EnterCriticalSection(&section);
        const std::uint32_t value = generator.Random(range);
        LeaveCriticalSection(&section);
        return value;
    }

private:
    CRITICAL_SECTION section;
    clRandom generator;
};

[[gnu::init_priority(static_order::random)]] SharedGenerator shared;

}  // namespace

std::uint32_t Random(std::uint32_t range) {
    return shared.Draw(range);
}
