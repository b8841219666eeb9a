// What the process holds of the platform, so that a test sees a leak.
#pragma once

#include <windows.h>

#include <ostream>

struct ResourceCounts {
    long userObjects = 0;    // windows, menus, icons and cursors
    long gdiObjects = 0;     // brushes, fonts, bitmaps, contexts and so on
    long kernelHandles = 0;  // mutexes, events, threads, files and so on
    long heapBlocks = 0;     // from operator new

    bool operator==(const ResourceCounts&) const = default;
};

// Counts what is there now; takes up to a second. Do what is to be tested a few
// times before the first count: the platform keeps things that it made once.
ResourceCounts CountResources();
void PrintTo(const ResourceCounts& counts, std::ostream* out);
