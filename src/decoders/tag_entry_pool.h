// Memory for the tags of one file after the other.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "decoders/tag_list.h"

// Hands out room for single tags, last given back first, so that a list which is
// filled and emptied with each file stays within the processor's caches.
// Must outlive the lists that use it. No locks: whatever guards the lists guards it.
class TagEntryPool {
public:
    TagEntryPool() = default;
    TagEntryPool(const TagEntryPool&) = delete;
    TagEntryPool& operator=(const TagEntryPool&) = delete;

    // Room for one tag, which the caller makes there.
    void* Take();
    // Takes that room back, the tag in it being destroyed. The memory is kept.
    void Give(void* room);

    std::int64_t BlockCount() const { return static_cast<std::int64_t>(blocks_.size()); }

private:
    static constexpr std::size_t roomsInBlock = 64;

    struct Room {
        alignas(TagEntry) std::byte bytes[sizeof(TagEntry)];
    };
    // What stands in a room that was given back.
    struct Free {
        Free* next;
    };

    std::vector<std::unique_ptr<Room[]>> blocks_;
    std::size_t usedOfLast_ = roomsInBlock;
    Free* free_ = nullptr;
};
