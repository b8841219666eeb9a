// The order in which the process-wide objects are made before the entry function.
#pragma once

// The objects stand in several source files, among which the language settles
// no order; [[gnu::init_priority(...)]] with these does, lowest first.
// Everything without a number comes behind them, and goes before them at exit.
namespace static_order {

inline constexpr int mutexes = 1001;
inline constexpr int tooltipThread = 1002;
inline constexpr int random = 1003;

}  // namespace static_order
