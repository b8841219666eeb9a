// Memory for the tags of many files, apart from the heap that the decoders use.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "decoders/tag_list.h"

// Hands out room for single tags, last given back first, so that a list which is
// filled at one end and emptied at the other stays within the processor's caches.
// Tags that stay while files are read would otherwise break up the heap in which
// decoders take and give back their buffers: each file then costs a tenth more.
// Must outlive the lists that use it. No locks: whatever guards the lists guards it.
class TagEntryPool {
public:
    TagEntryPool() = default;
    TagEntryPool(const TagEntryPool&) = delete;
    TagEntryPool& operator=(const TagEntryPool&) = delete;

    // Room for one tag, which the caller makes there.
    void* Take();
    // Takes that room back, the tag in it being destroyed. The memory is kept: the
    // first use of a page costs more than all else that is done for a tag.
    void Give(void* room);
    // Frees all memory but the first block, if every room was given back.
    void Trim();

    std::int64_t BlockCount() const { return static_cast<std::int64_t>(blocks_.size()); }

private:
    static constexpr std::size_t roomsInBlock = 1024;

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
    std::int64_t taken_ = 0;
};
