// Random actions that fit what is on show.
#pragma once

#include "tests/selection/oracle/script.h"

namespace oracle {

// The next action for the duel as it stands. Its target exists.
Action RandomAction(Random& random, const Duel& duel);

// Plays random actions on the world until `length` of them found their target or a
// difference shows, comparing behind each. Returns the difference, or empty, and
// the actions in `script`. `watch` sees the duel after each action.
std::string PlayRandomly(const World& world, std::uint64_t seed, int length,
                         const MakeRules& makeSubject, Script& script,
                         const std::function<void(const Action&, const Duel&)>& watch = nullptr);

}  // namespace oracle
