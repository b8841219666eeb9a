// The order of a list's rows, worked out apart from the list.
#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

// Compares the rows at two display indices: negative, zero or positive as the
// first goes before, beside or behind the second. The form of the platform's
// list sort callback.
using RowCompare = std::int32_t (*)(std::int64_t first, std::int64_t second, std::int64_t context);

// For each of `count` rows the place at which it belongs, from 0. Rows that
// compare equal keep their order. A comparator that contradicts itself, as on
// rows that change meanwhile, gives some order of all rows.
std::vector<std::int32_t> StableRanks(std::int32_t count, RowCompare compare, std::int64_t context);

// The ranks by row parameter: what a platform sort knows a row by.
class clRanksByParameter {
public:
    // Row i has parameters[i] and ranks[i]; both of one size.
    clRanksByParameter(const std::vector<std::int64_t>& parameters,
                       const std::vector<std::int32_t>& ranks);

    // False if two rows share a parameter, so that it names neither.
    bool AllDiffer() const { return allDiffer; }
    // Only for the parameter of a row.
    std::int32_t RankOf(std::int64_t parameter) const;

private:
    bool AllBelowCount(const std::vector<std::int64_t>& parameters) const;

    // Parameters 0 to count-1, as forms give them, need no hash.
    bool isDense;
    bool allDiffer;
    std::vector<std::int32_t> dense;
    std::unordered_map<std::int64_t, std::int32_t> sparse;
};
