// Damages files in ways that files get damaged, always the same for a seed.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "tests/companions/byte_writer.h"

namespace companion_test {

struct SeedFile {
    std::u16string name;  // with its extension
    ByteList bytes;
};

class Mutator {
public:
    explicit Mutator(std::uint32_t seed) : _state(seed) {}

    // A copy of `bytes` with one to four places changed: bits, bytes, fields of
    // two to eight bytes in either order, cuts, insertions, repetitions.
    ByteList Mutate(const ByteList& bytes);

private:
    std::uint32_t Next();
    std::size_t Below(std::size_t limit);
    std::size_t Place(const ByteList& bytes);
    void ChangeOnce(ByteList& bytes);
    void WriteField(ByteList& bytes);
    void MovePart(ByteList& bytes);

    std::uint64_t _state;
};

struct MutationReport {
    int mutants = 0;
    int opened = 0;     // how many were still read
    int malformed = 0;  // how many of those gave a tag block that is none
    std::int64_t worstMicroseconds = 0;
    std::u16string worstName;  // of the seed
    int worstMutant = 0;
};

// Opens `count` mutants of the seeds in turn through the exports, each with
// Create, Open and Destroy, from a file with the name of its seed.
MutationReport OpenMutants(const std::vector<SeedFile>& seeds, int count, std::uint32_t seed);

// One line for the log.
std::string Describe(const MutationReport& report);

}  // namespace companion_test
