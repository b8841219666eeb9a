// Counts what a piece of code takes from the heap.
#pragma once

#include <cstddef>

// Counts from its construction on, for all threads: keep it to one thread's
// work, and read it before any expectation, which allocates too.
class AllocationCount {
public:
    AllocationCount();
    std::size_t Blocks() const;
    // Size of the largest block since the construction, in bytes.
    std::size_t LargestBytes() const;

private:
    std::size_t first;
};

// Blocks that are taken and not given back at this moment, of the whole process.
std::size_t LiveBlocks();
