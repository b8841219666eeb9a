#include "toolkit/row_order.h"

#include <algorithm>
#include <cstddef>

namespace {

constexpr std::int32_t noRank = -1;

// Merges the neighbours [begin, middle) and [middle, end) of `from` into `to`.
// Written out because the standard library's sorts may leave their range when
// the comparator contradicts itself.
struct Merge {
    RowCompare compare;
    std::int64_t context;

    void Run(const std::vector<std::int32_t>& from, std::vector<std::int32_t>& to,
             std::size_t begin, std::size_t middle, std::size_t end) const {
        std::size_t left = begin;
        std::size_t right = middle;
        for (std::size_t place = begin; place < end; ++place) {
            const bool takeLeft =
                left < middle && (right >= end || compare(from[left], from[right], context) <= 0);
            to[place] = takeLeft ? from[left++] : from[right++];
        }
    }
};

}  // namespace

std::vector<std::int32_t> StableRanks(std::int32_t count, RowCompare compare,
                                      std::int64_t context) {
    const auto size = static_cast<std::size_t>(std::max(count, 0));
    std::vector<std::int32_t> order(size);
    for (std::size_t i = 0; i < size; ++i)
        order[i] = static_cast<std::int32_t>(i);

    const Merge merge{compare, context};
    std::vector<std::int32_t> other(size);
    for (std::size_t run = 1; run < size; run *= 2) {
        for (std::size_t begin = 0; begin < size; begin += 2 * run) {
            const std::size_t middle = std::min(begin + run, size);
            merge.Run(order, other, begin, middle, std::min(begin + 2 * run, size));
        }
        order.swap(other);
    }

    std::vector<std::int32_t>& ranks = other;
    for (std::size_t place = 0; place < size; ++place)
        ranks[static_cast<std::size_t>(order[place])] = static_cast<std::int32_t>(place);
    return ranks;
}

clRanksByParameter::clRanksByParameter(const std::vector<std::int64_t>& parameters,
                                       const std::vector<std::int32_t>& ranks)
    : isDense(AllBelowCount(parameters)), allDiffer(true) {
    if (isDense) {
        dense.assign(parameters.size(), noRank);
    } else {
        sparse.reserve(parameters.size());
    }
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        if (isDense) {
            std::int32_t& rank = dense[static_cast<std::size_t>(parameters[i])];
            if (rank != noRank) allDiffer = false;
            rank = ranks[i];
        } else if (!sparse.emplace(parameters[i], ranks[i]).second) {
            allDiffer = false;
        }
    }
}

std::int32_t clRanksByParameter::RankOf(std::int64_t parameter) const {
    if (isDense) return dense[static_cast<std::size_t>(parameter)];
    return sparse.find(parameter)->second;
}

bool clRanksByParameter::AllBelowCount(const std::vector<std::int64_t>& parameters) const {
    const auto count = static_cast<std::int64_t>(parameters.size());
    return std::ranges::all_of(parameters,
                               [count](std::int64_t value) { return value >= 0 && value < count; });
}
