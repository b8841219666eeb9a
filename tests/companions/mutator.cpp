#include "tests/companions/mutator.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <sstream>

#include "tests/companions/opened_file.h"

namespace companion_test {
namespace {

// Around the limits at which sizes and signs go wrong.
constexpr std::array<std::uint64_t, 14> fieldValues = {0,
                                                       1,
                                                       2,
                                                       0x7F,
                                                       0xFF,
                                                       0x7FFF,
                                                       0xFFFF,
                                                       0x8000,
                                                       0x7FFFFFFF,
                                                       0x80000000,
                                                       0xFFFFFFFE,
                                                       0xFFFFFFFF,
                                                       0x7FFFFFFFFFFFFFFF,
                                                       ~0ull};

}  // namespace

// SplitMix64: its results do not depend on the library, as those of the
// standard distributions do.
std::uint32_t Mutator::Next() {
    _state += 0x9E3779B97F4A7C15;
    std::uint64_t mixed = _state;
    mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9;
    mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EB;
    return static_cast<std::uint32_t>((mixed ^ (mixed >> 31)) >> 16);
}

std::size_t Mutator::Below(std::size_t limit) {
    return limit == 0 ? 0 : Next() % limit;
}

// Half of the places are near the start, where the headers are.
std::size_t Mutator::Place(const ByteList& bytes) {
    constexpr std::size_t headerBytes = 256;
    const bool early = Below(2) == 0;
    return Below(early ? std::min(bytes.size(), headerBytes) : bytes.size());
}

void Mutator::WriteField(ByteList& bytes) {
    constexpr std::array<std::size_t, 3> widths = {2, 4, 8};
    const std::size_t width = widths[Below(widths.size())];
    const std::uint64_t value = Below(3) == 0 ? Next() : fieldValues[Below(fieldValues.size())];
    const bool big = Below(2) == 0;
    const std::size_t place = Place(bytes);
    for (std::size_t i = 0; i < width && place + i < bytes.size(); ++i) {
        const std::size_t shift = 8 * (big ? width - 1 - i : i);
        bytes[place + i] = static_cast<std::uint8_t>(value >> shift);
    }
}

void Mutator::MovePart(ByteList& bytes) {
    const std::size_t from = Place(bytes);
    const std::size_t count = std::min(bytes.size() - from, Below(64) + 1);
    const ByteList part(bytes.begin() + static_cast<std::ptrdiff_t>(from),
                        bytes.begin() + static_cast<std::ptrdiff_t>(from + count));
    const std::size_t kind = Below(3);
    const auto at = bytes.begin() + static_cast<std::ptrdiff_t>(from);
    if (kind == 0) {
        bytes.erase(at, at + static_cast<std::ptrdiff_t>(count));
    } else if (kind == 1) {
        bytes.insert(at, count, static_cast<std::uint8_t>(Next()));
    } else {
        const std::size_t to = Below(bytes.size() + 1);
        bytes.insert(bytes.begin() + static_cast<std::ptrdiff_t>(to), part.begin(), part.end());
    }
}

void Mutator::ChangeOnce(ByteList& bytes) {
    if (bytes.empty()) return;
    switch (Below(8)) {
        case 0:
            bytes[Place(bytes)] ^= static_cast<std::uint8_t>(1u << Below(8));
            break;
        case 1:
        case 2:
            bytes[Place(bytes)] = static_cast<std::uint8_t>(Next());
            break;
        case 3:
            bytes.resize(Place(bytes));
            break;
        case 4:
            MovePart(bytes);
            break;
        default:
            WriteField(bytes);
            break;
    }
}

ByteList Mutator::Mutate(const ByteList& bytes) {
    ByteList mutant = bytes;
    const std::size_t changes = Below(4) + 1;
    for (std::size_t i = 0; i < changes; ++i)
        ChangeOnce(mutant);
    return mutant;
}

MutationReport OpenMutants(const std::vector<SeedFile>& seeds, int count, std::uint32_t seed) {
    using Clock = std::chrono::steady_clock;
    MutationReport report;
    Mutator mutator(seed);
    for (; report.mutants < count && !seeds.empty(); ++report.mutants) {
        const SeedFile& from = seeds[static_cast<std::size_t>(report.mutants) % seeds.size()];
        const TemporaryFile file(from.name, mutator.Mutate(from.bytes));
        const auto start = Clock::now();
        const OpenedFile result = OpenPath(file.Path());
        const std::int64_t elapsed =
            std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - start).count();
        if (result.opened) ++report.opened;
        const bool sane = result.wellFormed && result.sourceBytes >= 0 && result.lengthMs >= 0 &&
                          result.bitRate >= 0;
        if (!sane) ++report.malformed;
        if (elapsed > report.worstMicroseconds) {
            report.worstMicroseconds = elapsed;
            report.worstName = from.name;
            report.worstMutant = report.mutants;
        }
    }
    return report;
}

std::string Describe(const MutationReport& report) {
    std::ostringstream line;
    line << report.mutants << " mutants, " << report.opened << " still opened, worst time "
         << static_cast<double>(report.worstMicroseconds) / 1000.0 << " ms (mutant "
         << report.worstMutant << " of " << ToUtf8(report.worstName) << ")";
    return line.str();
}

}  // namespace companion_test
