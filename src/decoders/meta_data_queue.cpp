#include "decoders/meta_data_queue.h"

#include <algorithm>

#include "decoders/list_rows.h"

namespace {

// Exact, unlike the hash of the selection's lists: here case makes another path.
std::uint64_t HashOfPath(const clString& path) {
    constexpr std::uint64_t factor = 0x9E3779B97F4A7C15u;
    const wchar_t* text = path.Chars();
    std::uint64_t hash = 0;
    for (std::int32_t i = 0; i < path.Length(); ++i)
        hash = (hash ^ static_cast<std::uint16_t>(text[i])) * factor;
    return hash ^ (hash >> 32);
}

}  // namespace

void MetaDataQueue::Append(FileRow& row, std::int64_t rowIndex) {
    auto item = std::make_unique<MetaDataItem>();
    item->row = &row;
    item->rowIndex = rowIndex;
    const std::uint64_t hash = HashOfPath(row.path);
    const Position position = End();
    Position previous = none;
    Chain& chain = chains_.try_emplace(hash, Chain{position, none}).first->second;
    if (IsThere(chain.last)) {
        previous = chain.last;
        At(previous).nextOfHash = position;
    } else {
        chain.first = position;
    }
    chain.last = position;
    slots_.push_back({std::move(item), hash, previous, none});
}

void MetaDataQueue::Refill(const ListedRows& rows) {
    Clear();
    const std::int32_t count = rows.Count();
    chains_.reserve(static_cast<std::size_t>(count));
    for (std::int32_t displayRow = 0; displayRow < count; ++displayRow) {
        const std::int64_t param = rows.ParamAt(displayRow);
        if (FileRow* const row = rows.RowOf(param)) Append(*row, param);
    }
}

void MetaDataQueue::Clear() {
    slots_.clear();
    chains_.clear();
    removed_ = 0;
    undone_ = 0;
}

void MetaDataQueue::ForgetRows() {
    for (Slot& slot : slots_) {
        slot.item->row = nullptr;
        slot.item->rowIndex = -1;
    }
    chains_.clear();
    undone_ = End();
}

MetaDataQueue::Slot* MetaDataQueue::FirstUndoneSlot() {
    // An item that is done never becomes undone, so none is looked at twice.
    while (undone_ < End() && At(undone_).item->done)
        ++undone_;
    return undone_ < End() ? &At(undone_) : nullptr;
}

MetaDataItem* MetaDataQueue::FirstUndone() {
    const Slot* const slot = FirstUndoneSlot();
    return slot != nullptr ? slot->item.get() : nullptr;
}

MetaDataItem* MetaDataQueue::FirstWithPath(const clString& path) {
    // Nearly always it is the item that the reader is at, and the only one.
    const Slot* const undone = FirstUndoneSlot();
    if (undone != nullptr && !IsThere(undone->previousOfHash) &&
        undone->item->row->path.Equals(path)) {
        return undone->item.get();
    }
    const auto chain = chains_.find(HashOfPath(path));
    if (chain == chains_.end() || !IsThere(chain->second.last)) return nullptr;
    for (Position at = chain->second.first; at != none; at = At(at).nextOfHash) {
        MetaDataItem* const item = At(at).item.get();
        if (item->row->path.Equals(path)) return item;
    }
    return nullptr;
}

// The rows may be gone by then: nothing here looks at one.
void MetaDataQueue::RemoveHead() {
    const Slot& head = slots_.front();
    if (head.nextOfHash != none) {
        // Of all items in its chain the head of the queue is the first. There is
        // no chain for an item that lost its row.
        const auto chain = chains_.find(head.pathHash);
        if (chain != chains_.end() && chain->second.first == removed_)
            chain->second.first = head.nextOfHash;
    }
    slots_.pop_front();
    ++removed_;
    undone_ = std::max(undone_, removed_);
}
