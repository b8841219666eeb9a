// The files of one list that its reader works through, and what it has found.
#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <unordered_map>

#include "decoders/file_row.h"
#include "decoders/tag_list.h"
#include "foundation/string.h"

class ListedRows;

// One file of the queue, which owns it.
struct MetaDataItem {
    FileRow* row = nullptr;      // the row array's; null once the list gave up its rows
    std::int64_t rowIndex = -1;  // of `row` in that array; -1 without one
    bool done = false;           // the reader has finished with the file, with whatever outcome
    TagList tags;                // tags, extended properties and derived properties
};

// Items in list order at the time when they were appended; the pump removes from
// the head. A path may occur more than once. Each operation but Clear and
// ForgetRows takes the same time however long the queue is. The meta-data mutex
// guards it from the start of a reader to its end; it takes no lock itself.
class MetaDataQueue {
public:
    MetaDataQueue() = default;
    MetaDataQueue(const MetaDataQueue&) = delete;
    MetaDataQueue& operator=(const MetaDataQueue&) = delete;

    std::int64_t Count() const { return static_cast<std::int64_t>(slots_.size()); }
    bool IsEmpty() const { return slots_.empty(); }

    // Appends an item that is not done. The row stays the caller's, and its path
    // must not change while it is here. `rowIndex`: its place in the row array.
    void Append(FileRow& row, std::int64_t rowIndex);
    // Empties the queue, then appends each display row, in their order, whose
    // parameter leads to a row.
    void Refill(const ListedRows& rows);
    void Clear();
    // To be called before the rows are freed, with no reader at work. The items
    // stay, without rows: the reader and the search by path find none of them,
    // the pump takes away those at the head that are done. Walks the queue.
    void ForgetRows();

    // The first item that is not done, or null. It stays valid until it is taken
    // by the pump, or until Clear.
    MetaDataItem* FirstUndone();
    // The first item whose row has exactly this path, case included, or null.
    MetaDataItem* FirstWithPath(const clString& path);

    // Calls take(item) for each item that is done, from the head up to the first
    // that is not; each is removed behind its call. True if this emptied the
    // queue; false also for a queue that was empty before.
    template <class Take>
    bool TakeFinished(Take&& take) {
        while (!IsEmpty() && slots_.front().item->done) {
            take(static_cast<const MetaDataItem&>(*slots_.front().item));
            RemoveHead();
            if (IsEmpty()) return true;
        }
        return false;
    }

private:
    // Positions count from the first item that was ever appended, so that the
    // removal of the head moves none of the others.
    using Position = std::int64_t;
    static constexpr Position none = -1;

    struct Slot {
        std::unique_ptr<MetaDataItem> item;
        std::uint64_t pathHash;
        // The items before and behind this one whose paths have the same hash. The
        // one before may have been removed since.
        Position previousOfHash;
        Position nextOfHash;
    };
    // Those of one hash. None is left if even the last has been removed.
    struct Chain {
        Position first;
        Position last;
    };

    Slot& At(Position position) { return slots_[static_cast<std::size_t>(position - removed_)]; }
    Position End() const { return removed_ + Count(); }
    bool IsThere(Position position) const { return position >= removed_; }
    Slot* FirstUndoneSlot();
    void RemoveHead();

    std::deque<Slot> slots_;
    std::unordered_map<std::uint64_t, Chain> chains_;  // by hash of the path
    Position removed_ = 0;                             // of the item at the head
    Position undone_ = 0;                              // all before it are done
};
