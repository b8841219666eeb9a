// A list of records that it owns.
#pragma once

#include <cstdint>
#include <memory>

#include "foundation/arrays.h"

// Records keep their address for as long as they are in the list. Indices are
// 0-based. No locks.
template <class Record>
class clOwnedList {
public:
    clOwnedList() = default;
    clOwnedList(const clOwnedList&) = delete;
    clOwnedList& operator=(const clOwnedList&) = delete;
    ~clOwnedList() { Clear(); }

    // Appends; the result is the record, still owned by the list.
    Record* Add(std::unique_ptr<Record> record) {
        current = record.get();
        entries.Add(reinterpret_cast<std::int64_t>(record.release()));
        return current;
    }
    std::int64_t Count() const { return entries.Count(); }
    // Null outside the list.
    Record* At(std::int64_t index) const {
        if (index < 0 || index >= entries.Count()) return nullptr;
        current = reinterpret_cast<Record*>(entries.Get(index));
        return current;
    }
    // The record last added or looked at; null if there is none any more.
    Record* Current() const { return current; }
    // Outside the list nothing happens.
    void RemoveAt(std::int64_t index) {
        const std::unique_ptr<Record> removed(At(index));
        entries.RemoveAt(index);
        current = nullptr;
    }
    void Clear() {
        for (std::int64_t i = 0; i < entries.Count(); ++i)
            delete reinterpret_cast<Record*>(entries.Get(i));
        entries.Clear();
        current = nullptr;
    }

private:
    clPtrArray entries;
    mutable Record* current = nullptr;
};
