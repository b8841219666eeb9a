#include "toolkit/row_order.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <random>
#include <vector>

namespace {

using Values = std::vector<std::int32_t>;

std::int32_t CompareValues(std::int64_t first, std::int64_t second, std::int64_t context) {
    const Values& values = *reinterpret_cast<const Values*>(context);
    const std::int32_t a = values.at(static_cast<std::size_t>(first));
    const std::int32_t b = values.at(static_cast<std::size_t>(second));
    return a < b ? -1 : a > b ? 1 : 0;
}

Values RanksOf(const Values& values) {
    return StableRanks(static_cast<std::int32_t>(values.size()), &CompareValues,
                       reinterpret_cast<std::int64_t>(&values));
}

TEST(StableRanks, TellEachRowItsPlace) {
    struct Row {
        Values values;
        Values ranks;
    };
    const Row rows[] = {
        {{}, {}},
        {{7}, {0}},
        {{2, 1}, {1, 0}},
        {{30, 10, 20}, {2, 0, 1}},
        {{5, 5, 5, 5}, {0, 1, 2, 3}},
        {{2, 1, 2, 1, 2}, {2, 0, 3, 1, 4}},
        {{6, 5, 4, 3, 2, 1, 0}, {6, 5, 4, 3, 2, 1, 0}},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(RanksOf(row.values), row.ranks);
    }
}

TEST(StableRanks, AgreeWithTheStandardStableSort) {
    std::mt19937 random(20);
    for (std::int32_t size = 0; size < 200; ++size) {
        Values values(static_cast<std::size_t>(size));
        for (std::int32_t& value : values)
            value = static_cast<std::int32_t>(random() % 20);

        Values order(values.size());
        std::iota(order.begin(), order.end(), 0);
        std::ranges::stable_sort(order, {}, [&values](std::int32_t row) {
            return values[static_cast<std::size_t>(row)];
        });
        const Values ranks = RanksOf(values);
        for (std::size_t place = 0; place < order.size(); ++place) {
            ASSERT_EQ(ranks[static_cast<std::size_t>(order[place])],
                      static_cast<std::int32_t>(place))
                << "of " << size;
        }
    }
}

TEST(StableRanks, NumberEveryRowOnceUnderAnInconsistentComparator) {
    std::mt19937 random(3);
    const auto contradictory = [](std::int64_t, std::int64_t, std::int64_t context) {
        auto& source = *reinterpret_cast<std::mt19937*>(context);
        return static_cast<std::int32_t>(source() % 3) - 1;
    };
    for (std::int32_t size = 0; size < 100; ++size) {
        Values ranks = StableRanks(size, contradictory, reinterpret_cast<std::int64_t>(&random));
        std::ranges::sort(ranks);
        for (std::int32_t i = 0; i < size; ++i)
            ASSERT_EQ(ranks[static_cast<std::size_t>(i)], i) << "of " << size;
    }
}

std::int32_t CountComparisons(std::int64_t, std::int64_t, std::int64_t context) {
    ++*reinterpret_cast<std::int64_t*>(context);
    return 1;
}

TEST(StableRanks, CompareNoMoreThanAMergeSortMust) {
    std::int64_t comparisons = 0;
    StableRanks(1024, &CountComparisons, reinterpret_cast<std::int64_t>(&comparisons));
    EXPECT_LE(comparisons, 1024 * 10);
}

TEST(StableRanks, OfNoRowsAskNothing) {
    std::int64_t comparisons = 0;
    EXPECT_TRUE(
        StableRanks(-1, &CountComparisons, reinterpret_cast<std::int64_t>(&comparisons)).empty());
    EXPECT_EQ(comparisons, 0);
}

TEST(RanksByParameter, AreFoundForDenseAndForScatteredParameters) {
    const std::vector<std::int64_t> families[] = {
        {2, 0, 1}, {0x7FFFFFFFFFFFFFFF, -5, 0}, {3, 1, 2},  // one too far for an index
    };
    const std::vector<std::int32_t> ranks = {1, 2, 0};
    for (const auto& parameters : families) {
        const clRanksByParameter byParameter(parameters, ranks);
        EXPECT_TRUE(byParameter.AllDiffer());
        for (std::size_t i = 0; i < ranks.size(); ++i)
            EXPECT_EQ(byParameter.RankOf(parameters[i]), ranks[i]) << parameters[i];
    }
}

TEST(RanksByParameter, TellThatTwoRowsShareOne) {
    EXPECT_FALSE(clRanksByParameter({0, 1, 0}, {0, 1, 2}).AllDiffer());
    EXPECT_FALSE(clRanksByParameter({70, 71, 70}, {0, 1, 2}).AllDiffer());
    EXPECT_TRUE(clRanksByParameter({}, {}).AllDiffer());
}

}  // namespace
