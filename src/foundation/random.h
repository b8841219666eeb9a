// Random numbers: the Mersenne Twister MT19937 and the process-wide instance.
#pragma once

#include <cstddef>
#include <cstdint>

// The generator MT19937 published by Makoto Matsumoto and Takuji Nishimura
// ("Mersenne Twister: A 623-dimensionally equidistributed uniform pseudorandom
// number generator", 1998), with the initialisation of their 2002 version.
// Not for secrets. No locks: one object belongs to one thread at a time.
class clRandom {
public:
    explicit clRandom(std::uint32_t seed) { Seed(seed); }

    // Starts the sequence that belongs to `seed`.
    void Seed(std::uint32_t seed);
    // The next 32-bit output of the sequence.
    std::uint32_t Next();
    // The next output brought into 0 to `range - 1`; the output itself for 0.
    std::uint32_t Random(std::uint32_t range);

private:
    static constexpr std::size_t wordCount = 624;

    void Twist();

    std::uint32_t words[wordCount];
    std::size_t index;  // the next word to temper; wordCount asks for a twist
};

// Brings a 32-bit output into 0 to `range - 1`, in equal shares; `range` 0
// gives the output itself.
std::uint32_t ScaleToRange(std::uint32_t output, std::uint32_t range);

// What the clocks say at program start.
struct ClockReadings {
    std::uint32_t year;  // UTC, as are the next four
    std::uint32_t hour;
    std::uint32_t minute;
    std::uint32_t second;
    std::uint32_t millisecond;
    bool hasCounter;        // the performance counter could be read
    std::uint64_t counter;  // performance counter, all 64 bits
    std::uint32_t ticks;    // milliseconds since the system's start
};

// The seed of the process-wide instance.
std::uint32_t SeedFromClocks(const ClockReadings& clocks);

// The next number of the process-wide instance, as clRandom::Random. It is
// seeded from the clocks before the entry function runs. From any thread; takes
// the instance's critical section.
std::uint32_t Random(std::uint32_t range);
