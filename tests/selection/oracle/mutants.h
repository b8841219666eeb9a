// Selections that are wrong on purpose, to prove that the comparison notices.
#pragma once

#include <cstddef>
#include <ostream>
#include <vector>

#include "tests/selection/oracle/script.h"

namespace oracle {

struct Mutant {
    const char* name;         // what it gets wrong
    std::size_t mostActions;  // a shrunk script needs no more than these
    MakeRules make;
};

inline void PrintTo(const Mutant& mutant, std::ostream* out) {
    *out << mutant.name;
}

const std::vector<Mutant>& AllMutants();

}  // namespace oracle
