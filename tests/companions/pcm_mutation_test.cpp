// Ten thousand damaged files; the sanitizers of the native build look on.
#include <gtest/gtest.h>

#include <cstdio>

#include "tests/companions/mutator.h"
#include "tests/companions/opened_file.h"
#include "tests/companions/pcm_samples.h"

namespace companion_test {
namespace {

// A real file takes microseconds; this is what a loaded machine may add.
constexpr std::int64_t longestMicroseconds = 2000000;

// In Wine each file costs several calls to its server.
#ifdef _WIN32
constexpr int mutants = 1000;
#else
constexpr int mutants = 10000;
#endif

TEST(Mutation, NoDamagedFileCrashesHangsOrGivesABrokenBlock) {
    const MutationReport report = OpenMutants(RichFiles(), mutants, 20240601);
    std::printf("%s\n", Describe(report).c_str());
    EXPECT_EQ(report.mutants, mutants);
    EXPECT_EQ(report.malformed, 0);
    EXPECT_LT(report.worstMicroseconds, longestMicroseconds);
    // Were all refused at the magic, nothing would have been tried.
    EXPECT_GT(report.opened, mutants / 3);
    EXPECT_LT(report.opened, mutants);
}

TEST(Mutator, GivesTheSameMutantsForTheSameSeed) {
    const ByteList bytes = RichFiles().front().bytes;
    Mutator first(7);
    Mutator second(7);
    Mutator other(8);
    int differing = 0;
    for (int i = 0; i < 100; ++i) {
        const ByteList mutant = first.Mutate(bytes);
        EXPECT_EQ(mutant, second.Mutate(bytes));
        if (mutant != other.Mutate(bytes)) ++differing;
    }
    EXPECT_GT(differing, 90);
}

}  // namespace
}  // namespace companion_test
