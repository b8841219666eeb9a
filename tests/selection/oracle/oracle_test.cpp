// The product's selection against the reference, on random trees and scripts.
//
// TONEQUARRY_ORACLE_SEED sets the first seed, TONEQUARRY_ORACLE_SCRIPTS the number
// of scripts for each shape of tree; each script has a seed of its own, one above
// the script's before it.
#include <gtest/gtest.h>

#include <array>
#include <cstdlib>

#include "tests/selection/oracle/generator.h"
#include "tests/selection/oracle/model_side.h"
#include "tests/selection/oracle/shrink.h"

namespace oracle {
namespace {

constexpr std::uint64_t firstSeed = 20'000;
constexpr int scriptsOfAShape = 60;
constexpr int actionsOfAScript = 400;
static_assert(std::size(allShapes) * scriptsOfAShape * actionsOfAScript >= 200'000);

std::uint64_t FromEnvironment(const char* name, std::uint64_t otherwise) {
    const char* text = std::getenv(name);
    return text == nullptr ? otherwise : std::strtoull(text, nullptr, 10);
}

std::unique_ptr<Rules> MakeModelSide(Stage& stage, const World& world, const PlainDisk& disk) {
    return std::make_unique<ModelSide>(stage, world, disk);
}

// What the scripts of one shape have reached.
struct Reach {
    std::array<int, static_cast<std::size_t>(Act::Count)> acts{};
    std::array<int, 6> states{};
    std::array<int, ListCount> lists{};
    int ticked = 0;
    int gathered = 0;

    void See(const Action& action, const Duel& duel) {
        ++acts[static_cast<std::size_t>(action.act)];
        const Stage& stage = duel.ReferenceStage();
        for (int node = 1; node < stage.ItemCount(); ++node) {
            ++states[static_cast<std::size_t>(stage.Item(node).state)];
        }
        for (const ListRow& row : stage.Rows())
            ticked += row.check == 2;
        if (!duel.Gathered().empty()) ++gathered;
        std::vector<Text> entries;
        for (std::size_t i = 0; i < ListCount; ++i) {
            duel.ReferenceRules().ReadList(static_cast<ListName>(i), entries);
            if (!entries.empty()) ++lists[i];
        }
    }
};

class SelectionOracleShape : public testing::TestWithParam<Shape> {};

TEST_P(SelectionOracleShape, ModelAndReferenceAgreeAfterEachAction) {
    const std::uint64_t first = FromEnvironment("TONEQUARRY_ORACLE_SEED", firstSeed);
    const std::uint64_t scripts = FromEnvironment("TONEQUARRY_ORACLE_SCRIPTS", scriptsOfAShape);
    for (std::uint64_t seed = first; seed < first + scripts; ++seed) {
        Failure failure;
        failure.world = MakeWorld(GetParam(), seed);
        failure.difference =
            PlayRandomly(failure.world, seed, actionsOfAScript, MakeModelSide, failure.script);
        if (failure.difference.empty()) continue;
        Shrink(failure, MakeModelSide);
        FAIL() << "again with TONEQUARRY_ORACLE_SEED=" << seed
               << " TONEQUARRY_ORACLE_SCRIPTS=1 and this shape\n"
               << Describe(failure);
    }
}

// Scripts that tick nothing would agree about anything.
TEST_P(SelectionOracleShape, ScriptsReachEveryStateListAndAction) {
    Reach reach;
    for (std::uint64_t seed = firstSeed; seed < firstSeed + 6; ++seed) {
        Script script;
        const World world = MakeWorld(GetParam(), seed);
        PlayRandomly(world, seed, actionsOfAScript, MakeModelSide, script,
                     [&reach](const Action& action, const Duel& duel) { reach.See(action, duel); });
    }
    for (std::size_t i = 0; i < reach.acts.size(); ++i) {
        EXPECT_GT(reach.acts[i], 0) << Describe(Action{static_cast<Act>(i), {}, {}});
    }
    for (std::size_t state = 1; state < reach.states.size(); ++state) {
        EXPECT_GT(reach.states[state], 100) << "state " << state;
    }
    for (std::size_t list = 0; list < ListCount; ++list) {
        EXPECT_GT(reach.lists[list], 100) << NameOf(static_cast<ListName>(list));
    }
    EXPECT_GT(reach.ticked, 100);
    EXPECT_GT(reach.gathered, 100);
}

INSTANTIATE_TEST_SUITE_P(Random, SelectionOracleShape, testing::ValuesIn(allShapes),
                         [](const testing::TestParamInfo<Shape>& shape) {
                             return std::string(NameOf(shape.param));
                         });

}  // namespace
}  // namespace oracle
