#include "foundation/random.h"

#include <algorithm>
#include <bit>

namespace {

constexpr std::size_t middleWord = 397;
constexpr std::uint32_t twistConstant = 0x9908B0DF;
constexpr std::uint32_t upperBit = 0x80000000;

std::uint32_t Temper(std::uint32_t word) {
    word ^= word >> 11;
    word ^= (word << 7) & 0x9D2C5680;
    word ^= (word << 15) & 0xEFC60000;
    return word ^ (word >> 18);
}

}  // namespace

void clRandom::Seed(std::uint32_t seed) {
    words[0] = seed;
    for (std::uint32_t i = 1; i < wordCount; ++i) {
        const std::uint32_t previous = words[i - 1];
        words[i] = 1812433253u * (previous ^ (previous >> 30)) + i;
    }
    index = wordCount;
}

void clRandom::Twist() {
    for (std::size_t i = 0; i < wordCount; ++i) {
        const std::uint32_t next = words[(i + 1) % wordCount];
        const std::uint32_t joined = (words[i] & upperBit) | (next & ~upperBit);
        const std::uint32_t twist = (joined & 1) != 0 ? twistConstant : 0;
        words[i] = words[(i + middleWord) % wordCount] ^ (joined >> 1) ^ twist;
    }
    index = 0;
}

std::uint32_t clRandom::Next() {
    if (index == wordCount) Twist();
    return Temper(words[index++]);
}

std::uint32_t clRandom::Random(std::uint32_t range) {
    return ScaleToRange(Next(), range);
}

std::uint32_t ScaleToRange(std::uint32_t output, std::uint32_t range) {
    if (range == 0) return output;
    // A double from 1 up to 2 whose 52-bit mantissa begins with the output.
    constexpr std::uint64_t bitsOfOne = 0x3FF0000000000000;
    const std::uint64_t bits = bitsOfOne | (static_cast<std::uint64_t>(output) << 20);
    const double fraction = std::bit_cast<double>(bits) - 1.0;
    // The fraction ends 2 to the power of -32 below 1, more than rounding can add;
    // the bound keeps a result outside the range from resting on that alone.
    const auto scaled = static_cast<std::uint64_t>(fraction * range);
    return static_cast<std::uint32_t>(std::min<std::uint64_t>(scaled, range - 1));
}

std::uint32_t SeedFromClocks(const ClockReadings& clocks) {
    std::uint32_t seed = clocks.year * clocks.year + clocks.hour * clocks.hour +
                         clocks.minute * clocks.minute + clocks.second * clocks.second +
                         clocks.millisecond * clocks.millisecond;
    if (clocks.hasCounter) {
        seed = seed * static_cast<std::uint32_t>(clocks.counter) +
               static_cast<std::uint32_t>(clocks.counter >> 32);
    }
    return seed + clocks.ticks;
}
