#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <set>
#include <thread>
#include <vector>

#include "foundation/random.h"
#include "foundation/static_order.h"

namespace {

// Draws as early as any object may that has its own number.
struct EarlyUser {
    EarlyUser() : numbers{Random(0), Random(0), Random(0)} {}
    std::uint32_t numbers[3];
};

[[gnu::init_priority(static_order::random + 1)]] const EarlyUser early;

}  // namespace

TEST(SharedRandom, ServesBeforeTheEntryFunction) {
    EXPECT_FALSE(early.numbers[0] == early.numbers[1] && early.numbers[1] == early.numbers[2]);
}

TEST(SharedRandom, IsSeededFromTheClocks) {
    // The first outputs of an unseeded generator, and of the usual seeds.
    for (const std::uint32_t seed : {0u, 1u, 5489u}) {
        clRandom random(seed);
        std::vector<std::uint32_t> outputs;
        for (int i = 0; i < 1000; ++i)
            outputs.push_back(random.Next());
        EXPECT_EQ(std::search(outputs.begin(), outputs.end(), std::begin(early.numbers),
                              std::end(early.numbers)),
                  outputs.end())
            << "seed " << seed;
    }
}

TEST(SharedRandom, KeepsToItsRange) {
    std::set<std::uint32_t> seen;
    for (int i = 0; i < 2000; ++i) {
        EXPECT_EQ(Random(1), 0u);
        EXPECT_LE(Random(9999), 9998u);
        seen.insert(Random(4));
    }
    EXPECT_EQ(seen, (std::set<std::uint32_t>{0, 1, 2, 3}));
}

// Without the critical section two threads would take the same word or run past
// the last one.
TEST(SharedRandom, ThreadsDrawFromOneSequence) {
    constexpr std::size_t threadCount = 4;
    constexpr std::size_t drawsEach = 200000;
    std::vector<std::vector<std::uint32_t>> drawn(threadCount);
    std::vector<std::thread> threads;
    for (std::vector<std::uint32_t>& mine : drawn) {
        threads.emplace_back([&mine] {
            mine.reserve(drawsEach);
            for (std::size_t i = 0; i < drawsEach; ++i)
                mine.push_back(Random(0));
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    std::vector<std::uint32_t> all;
    for (const auto& mine : drawn)
        all.insert(all.end(), mine.begin(), mine.end());
    std::sort(all.begin(), all.end());
    const auto distinct = std::distance(all.begin(), std::unique(all.begin(), all.end()));
    // 800,000 of 2^32 values: about 75 chance repetitions are to be expected.
    EXPECT_GT(distinct, static_cast<std::ptrdiff_t>(all.size()) - 200);
}
