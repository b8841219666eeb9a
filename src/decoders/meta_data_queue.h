// The files of one list that its reader works through, and what it has found.
#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <memory>
#include <vector>

#include "decoders/file_row.h"
#include "decoders/kept_tags.h"
#include "foundation/string.h"

class ListedRows;

// One file of the queue, which owns it.
struct MetaDataItem {
    FileRow* row = nullptr;      // the row array's; null once the list gave up its rows
    std::int64_t rowIndex = -1;  // of `row` in that array; -1 without one
    bool done = false;           // the reader has finished with the file, with whatever outcome
    KeptTags tags;               // tags, extended properties and derived properties
};

// By which a queue looks for paths. Exact, unlike the hash of the selection's
// lists: here case makes another path.
[[nodiscard]] std::uint64_t HashOfPath(const clString& path);

// Items in list order at the time when they were appended; the pump removes from
// the head. A path may occur more than once. Each operation but Clear and
// ForgetRows takes the same time however long the queue is, the search for a path
// that the reader has not come to yet on an average of all searches. The meta-data
// mutex guards it from the start of a reader to its end; it takes no lock itself.
class MetaDataQueue {
public:
    MetaDataQueue() = default;
    MetaDataQueue(const MetaDataQueue&) = delete;
    MetaDataQueue& operator=(const MetaDataQueue&) = delete;

    std::int64_t Count() const { return end_ - removed_; }
    bool IsEmpty() const { return end_ == removed_; }

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
        return TakeFinishedWhile([&](const MetaDataItem& item) {
            take(item);
            return true;
        });
    }
    // The same, but it ends early, behind the removal, once take answers false.
    template <class Take>
    bool TakeFinishedWhile(Take&& take) {
        while (!IsEmpty() && At(removed_).item.done) {
            const bool goesOn = take(static_cast<const MetaDataItem&>(At(removed_).item));
            RemoveHead();
            if (IsEmpty()) return true;
            if (!goesOn) return false;
        }
        return false;
    }

private:
    // Positions count from the first item that was ever appended, so that the
    // removal of the head moves none of the others.
    using Position = std::int64_t;
    static constexpr Position none = -1;

    static constexpr Position slotsInBlock = 64;

    struct Slot {
        MetaDataItem item;
        std::uint64_t pathHash = 0;    // once it is indexed
        Position nextInBucket = none;  // the next behind it that is indexed there
    };
    // Made and freed as one.
    struct Block {
        std::array<Slot, slotsInBlock> slots;
    };
    // The indexed items whose hashes lead here, in the order of the queue.
    struct Bucket {
        Position first = none;
        Position last = none;
    };

    Slot& At(Position position) {
        const Position block = position / slotsInBlock - removed_ / slotsInBlock;
        return blocks_[static_cast<std::size_t>(block)]
            ->slots[static_cast<std::size_t>(position % slotsInBlock)];
    }
    Bucket& BucketOf(std::uint64_t hash) { return buckets_[hash & (buckets_.size() - 1)]; }
    void ForgetIndex();
    void IndexNext();
    void Link(Position position);
    void GrowIndex();
    MetaDataItem* FirstIndexed(const clString& path, std::uint64_t hash);
    void RemoveHead();

    KeptTagsPool pool_;  // of the tags of all items
    std::deque<std::unique_ptr<Block>> blocks_;
    Position removed_ = 0;  // of the item at the head
    Position undone_ = 0;   // all before it are done
    Position end_ = 0;      // behind the last
    // Items come into the index as the reader comes to them and leave it with the
    // queue. So it has no more of them than wait for the pump, and no path is
    // looked at before its file is due.
    std::vector<Bucket> buckets_;  // their number is a power of two, or 0
    Position indexed_ = 0;         // all before it that are still there have been indexed
};
