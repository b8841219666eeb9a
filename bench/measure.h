// What the benchmarks share: timing in turns, and judging figures by limits.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <vector>

// Of the processor, so that other programs on a busy machine count less.
inline double ProcessorSeconds() {
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

template <class Work>
double SecondsOf(Work&& work) {
    const double start = ProcessorSeconds();
    work();
    return ProcessorSeconds() - start;
}

inline double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

// Runs all variants in turn, round by round, so that what else the machine does
// falls on all of them alike. Each gives its seconds; the result is the medians.
template <class... Work>
std::vector<double> MediansOf(int rounds, Work&&... work) {
    std::vector<std::vector<double>> times(sizeof...(work));
    for (int round = 0; round <= rounds; ++round) {
        std::size_t variant = 0;
        // The first round warms up.
        const auto note = [&](double seconds) {
            if (round > 0) times[variant].push_back(seconds);
            ++variant;
        };
        (note(work()), ...);
    }
    std::vector<double> medians;
    for (const auto& each : times)
        medians.push_back(Median(each));
    return medians;
}

class Judge {
public:
    void Check(const char* what, double figure, double limit) {
        Say(what, figure, limit, "limit", figure <= limit);
    }
    void CheckAtLeast(const char* what, double figure, double least) {
        Say(what, figure, least, "at least", figure >= least);
    }
    void Require(const char* what, std::int64_t count, std::int64_t expected) {
        if (count == expected) return;
        held_ = false;
        std::printf("%s: %lld instead of %lld\n", what, static_cast<long long>(count),
                    static_cast<long long>(expected));
    }
    bool Held() const { return held_; }

private:
    void Say(const char* what, double figure, double bound, const char* sort, bool held) {
        held_ = held_ && held;
        std::printf("%-66s %6.3f (%s %.2f)%s\n", what, figure, sort, bound, held ? "" : "  MISSED");
    }

    bool held_ = true;
};
