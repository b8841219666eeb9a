#include "decoders/meta_data_queue.h"

#include <algorithm>
#include <cstring>

#include "decoders/list_rows.h"

namespace {

constexpr std::size_t fewestBuckets = 64;

}  // namespace

// Four characters at a time.
std::uint64_t HashOfPath(const clString& path) {
    constexpr std::uint64_t factor = 0x9E3779B97F4A7C15u;
    constexpr std::int32_t step = sizeof(std::uint64_t) / sizeof(wchar_t);
    const wchar_t* text = path.Chars();
    std::int32_t left = path.Length();
    auto hash = static_cast<std::uint64_t>(left);
    for (; left > 0; left -= step, text += step) {
        std::uint64_t units = 0;
        std::memcpy(&units, text, sizeof(wchar_t) * static_cast<std::size_t>(std::min(left, step)));
        hash = (hash ^ units) * factor;
        hash ^= hash >> 32;
    }
    return hash;
}

void MetaDataQueue::Append(FileRow& row, std::int64_t rowIndex) {
    if (end_ / slotsInBlock - removed_ / slotsInBlock == static_cast<Position>(blocks_.size()))
        blocks_.push_back(std::make_unique<Block>());
    MetaDataItem& item = At(end_).item;
    item.tags.UsePool(pool_);
    item.row = &row;
    item.rowIndex = rowIndex;
    ++end_;
}

void MetaDataQueue::Refill(const ListedRows& rows) {
    Clear();
    const std::int32_t count = rows.Count();
    for (std::int32_t displayRow = 0; displayRow < count; ++displayRow) {
        const std::int64_t param = rows.ParamAt(displayRow);
        if (FileRow* const row = rows.RowOf(param)) Append(*row, param);
    }
}

void MetaDataQueue::Clear() {
    blocks_.clear();
    pool_.Trim();
    removed_ = undone_ = end_ = 0;
    ForgetIndex();
}

void MetaDataQueue::ForgetRows() {
    for (Position at = removed_; at < end_; ++at) {
        At(at).item.row = nullptr;
        At(at).item.rowIndex = -1;
    }
    undone_ = end_;
    ForgetIndex();
}

// From here on nothing is indexed but what comes behind the items that are there.
void MetaDataQueue::ForgetIndex() {
    buckets_.clear();
    indexed_ = end_;
}

MetaDataItem* MetaDataQueue::FirstUndone() {
    // An item that is done never becomes undone, so none is looked at twice.
    while (undone_ < end_ && At(undone_).item.done)
        ++undone_;
    return undone_ < end_ ? &At(undone_).item : nullptr;
}

void MetaDataQueue::Link(Position position) {
    Slot& slot = At(position);
    slot.nextInBucket = none;
    Bucket& bucket = BucketOf(slot.pathHash);
    (bucket.first != none ? At(bucket.last).nextInBucket : bucket.first) = position;
    bucket.last = position;
}

void MetaDataQueue::GrowIndex() {
    buckets_.assign(std::max(fewestBuckets, buckets_.size() * 2), Bucket{});
    for (Position at = removed_; at < indexed_; ++at) {
        if (At(at).item.row != nullptr) Link(at);
    }
}

void MetaDataQueue::IndexNext() {
    if (indexed_ - removed_ >= static_cast<Position>(buckets_.size())) GrowIndex();
    Slot& slot = At(indexed_);
    slot.pathHash = HashOfPath(slot.item.row->path);
    Link(indexed_);
    ++indexed_;
}

MetaDataItem* MetaDataQueue::FirstIndexed(const clString& path, std::uint64_t hash) {
    if (buckets_.empty()) return nullptr;
    for (Position at = BucketOf(hash).first; at != none; at = At(at).nextInBucket) {
        Slot& slot = At(at);
        if (slot.pathHash == hash && slot.item.row->path.Equals(path)) return &slot.item;
    }
    return nullptr;
}

MetaDataItem* MetaDataQueue::FirstWithPath(const clString& path) {
    const std::uint64_t hash = HashOfPath(path);
    if (MetaDataItem* const item = FirstIndexed(path, hash)) return item;
    // Nearly always it is the very next, which the reader is at.
    while (indexed_ < end_) {
        Slot& slot = At(indexed_);
        IndexNext();
        if (slot.pathHash == hash && slot.item.row->path.Equals(path)) return &slot.item;
    }
    return nullptr;
}

// The rows may be gone by then: nothing here looks at one.
void MetaDataQueue::RemoveHead() {
    Slot& head = At(removed_);
    // Of all items in its bucket the head of the queue is the first. One that has
    // lost its row is in none.
    if (!buckets_.empty() && removed_ < indexed_) {
        Bucket& bucket = BucketOf(head.pathHash);
        if (bucket.first == removed_) bucket.first = head.nextInBucket;
    }
    head.item.tags.Clear();
    ++removed_;
    if (removed_ % slotsInBlock == 0) blocks_.pop_front();
    undone_ = std::max(undone_, removed_);
    indexed_ = std::max(indexed_, removed_);
    if (IsEmpty()) pool_.Trim();
}
