// The oracle's own proof: selections that are wrong on purpose are caught, and
// what is printed then is short.
#include "tests/selection/oracle/shrink.h"

#include <gtest/gtest.h>

#include <optional>

#include "tests/selection/oracle/generator.h"
#include "tests/selection/oracle/mutants.h"
#include "tests/selection/oracle/reference.h"

namespace oracle {
namespace {

constexpr int actionsOfAScript = 300;
constexpr int mostScripts = 180;

std::optional<Failure> FindFailure(const MakeRules& make) {
    constexpr int shapes = static_cast<int>(std::size(allShapes));
    for (int i = 0; i < mostScripts; ++i) {
        const auto seed = static_cast<std::uint64_t>(i);
        Failure failure;
        failure.world = MakeWorld(allShapes[i % shapes], seed);
        failure.difference =
            PlayRandomly(failure.world, seed, actionsOfAScript, make, failure.script);
        if (!failure.difference.empty()) return failure;
    }
    return std::nullopt;
}

class SelectionOracleMutant : public testing::TestWithParam<Mutant> {};

TEST_P(SelectionOracleMutant, IsCaughtByAShortScript) {
    const Mutant& mutant = GetParam();
    std::optional<Failure> found = FindFailure(mutant.make);
    ASSERT_TRUE(found) << "nothing differs in " << mostScripts << " scripts";
    Shrink(*found, mutant.make);
    const Failure& failure = *found;
    EXPECT_LE(failure.script.size(), mutant.mostActions) << Describe(failure);
    EXPECT_EQ(PlayAll(failure.world, failure.script, mutant.make), failure.difference);
    for (std::size_t i = 0; i < failure.script.size(); ++i) {
        Script shorter = failure.script;
        shorter.erase(shorter.begin() + static_cast<std::ptrdiff_t>(i));
        EXPECT_EQ(PlayAll(failure.world, shorter, mutant.make), "")
            << "still fails without action " << i + 1 << "\n"
            << Describe(failure);
    }
}

INSTANTIATE_TEST_SUITE_P(Wrong, SelectionOracleMutant, testing::ValuesIn(AllMutants()),
                         [](const testing::TestParamInfo<Mutant>& mutant) {
                             return std::string(mutant.param.name);
                         });

TEST(SelectionOracle, FindsNothingBetweenTheReferenceAndItself) {
    const MakeRules another = [](Stage& stage, const World& world, const PlainDisk& disk) {
        return std::make_unique<Reference>(stage, world, disk);
    };
    for (const Shape shape : allShapes) {
        Script script;
        EXPECT_EQ(PlayRandomly(MakeWorld(shape, 7), 7, 100, another, script), "");
        EXPECT_EQ(script.size(), 100u);
    }
}

}  // namespace
}  // namespace oracle
