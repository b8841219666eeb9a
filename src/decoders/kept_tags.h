// The tags of finished files while they wait for the pump.
#pragma once

#include <cstddef>
#include <cstdint>

#include "decoders/tag_list.h"
#include "foundation/string.h"

// Memory for the tags of many files, which are kept and given up in about the
// same order. It comes in blocks, apart from the heap that the decoders use: what
// stays there while files are read breaks it up. A block of which everything was
// given back is used again, the last one first: the first use of a page costs more
// than all else that is done for the tags in it.
// Must outlive the tags that use it. No locks: whatever guards these guards it.
class KeptTagsPool {
public:
    KeptTagsPool() = default;
    KeptTagsPool(const KeptTagsPool&) = delete;
    KeptTagsPool& operator=(const KeptTagsPool&) = delete;
    ~KeptTagsPool();

    // `size` bytes, fit for any number. More than a block holds get one for themselves.
    void* Take(std::size_t size);
    // Takes them back.
    void Give(void* memory);
    // Frees all memory but one block of the usual size, if everything was given back.
    void Trim();

    std::int64_t BlockCount() const { return blockCount_; }

private:
    struct Block {
        std::size_t size;    // of what lies behind this
        std::size_t used;    // of that
        std::int64_t taken;  // pieces that were not given back
        Block* next;         // among those that are free
    };
    // Stands before each piece.
    struct PieceHead {
        Block* block;  // that it lies in
    };
    static_assert(sizeof(PieceHead) >= alignof(std::int64_t));
    static constexpr std::size_t usualSize = std::size_t{65536} - sizeof(Block);

    Block* Make(std::size_t size);
    void Free(Block* block);
    void Recycle(Block* block);

    Block* filling_ = nullptr;
    Block* free_ = nullptr;
    std::int64_t blockCount_ = 0;
    std::int64_t taken_ = 0;
};

// The tags of one file in one piece of memory of about the size of their texts: a
// TagList takes ten times as much, and a long list of files may wait.
class KeptTags {
public:
    KeptTags() = default;
    KeptTags(const KeptTags&) = delete;
    KeptTags& operator=(const KeptTags&) = delete;
    ~KeptTags() { Clear(); }

    // Where the memory comes from. To be called before Keep; it must outlive this.
    void UsePool(KeptTagsPool& memory) { pool_ = &memory; }

    // Copies the texts of all entries in the place of what was kept here. Payloads,
    // which nobody shows, stay behind.
    void Keep(const TagList& tags);
    // Appends a copy of each entry to `tags`, in their order.
    void CopyTo(TagList& tags) const;

    std::int64_t Count() const;
    // As TagList has it: the value of the first entry of that name.
    [[nodiscard]] clString Get(const clString& name) const;

    void Clear();

private:
    KeptTagsPool* pool_ = nullptr;
    std::byte* memory_ = nullptr;  // the number of entries, then these; null for none
};
