// Makes a failing script short.
#pragma once

#include "tests/selection/oracle/script.h"

namespace oracle {

struct Failure {
    World world;
    Script script;
    std::string difference;
};

// Leaves out actions, first in chunks, then one by one and by twos and threes, then
// entries of the disk and roots, as long as the subject still differs from the
// reference in some way. In the end no single action can be left out. `failure`
// fails when it comes in.
void Shrink(Failure& failure, const MakeRules& makeSubject);

// The tree, the script and the difference, to be read.
std::string Describe(const Failure& failure);

}  // namespace oracle
