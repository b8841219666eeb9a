// The timers of one window.
#pragma once

#include <cstdint>

#include "foundation/arrays.h"
#include "toolkit/owned_list.h"

struct clTimerRecord {
    std::uint64_t id = 0;  // as the platform gave it
    std::int64_t userValue = 0;
};

// One record for each timer, in the order of their start. Locking is the
// caller's business.
class clTimerList {
public:
    // One more than the highest id, 1 for an empty list: gaps are not filled.
    std::uint64_t NextId() const;
    // Appends a record with user value 0.
    void Add(std::uint64_t id);
    // The first record with this id, owned by the list, or null.
    clTimerRecord* Find(std::uint64_t id) const;
    std::int64_t Count() const { return records.Count(); }
    // The record at `index`, owned by the list; null outside it.
    clTimerRecord* At(std::int64_t index) const { return records.At(index); }
    // Frees all records.
    void Clear();

private:
    clOwnedList<clTimerRecord> records;
    clPtrArray tags;  // one for each record, always 0: kept in step, not used
};
