#include "decoders/tag_entry_pool.h"

#include <new>

void* TagEntryPool::Take() {
    ++taken_;
    if (free_ != nullptr) {
        Free* const room = free_;
        free_ = room->next;
        return room;
    }
    if (usedOfLast_ == roomsInBlock) {
        blocks_.push_back(std::make_unique_for_overwrite<Room[]>(roomsInBlock));
        usedOfLast_ = 0;
    }
    return &blocks_.back()[usedOfLast_++];
}

void TagEntryPool::Give(void* room) {
    --taken_;
    free_ = new (room) Free{free_};
}

void TagEntryPool::Trim() {
    if (taken_ > 0 || blocks_.empty()) return;
    blocks_.resize(1);
    usedOfLast_ = 0;
    free_ = nullptr;
}
