#include "decoders/tag_entry_pool.h"

#include <new>

void* TagEntryPool::Take() {
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
    free_ = new (room) Free{free_};
}
