// Tags and extended properties: the list in memory, and the block that a decoder
// hands over (see sdk/decoder.h).
#pragma once

#include <cstdint>

#include "foundation/arrays.h"
#include "foundation/bytes.h"
#include "foundation/string.h"

// One tag. A value may hold several values with one CR between them.
struct TagEntry {
    clString name;  // may be empty
    clString value;
    clByteBuffer data;  // binary payload, mostly empty; kept, never shown
};

class TagEntryPool;

// Entries in the order in which they came, owned by the list. Names are compared
// without regard to the case of A to Z, and the first entry of a name hides
// those behind it. Indices are 0-based. No locks.
class TagList {
public:
    TagList() = default;
    TagList(const TagList&) = delete;
    TagList& operator=(const TagList&) = delete;
    ~TagList() { Clear(); }

    // Takes the memory of entries from there instead of the heap. Only while the
    // list is empty; the pool must outlive it.
    void UsePool(TagEntryPool& entryPool) { pool = &entryPool; }
    // The same with what `other` uses.
    void UsePoolOf(const TagList& other) { pool = other.pool; }

    std::int64_t Count() const { return entries.Count(); }
    // The entry itself, owned by the list: the caller checks the bounds.
    const TagEntry& At(std::int64_t index) const;

    // Appends, without looking for an older entry of that name. The result stays
    // valid until the entry is removed.
    TagEntry& Add(const clString& name, const clString& value);
    bool Has(const clString& name) const { return IndexOf(name) >= 0; }
    // Value of the first entry of that name; empty when there is none.
    clString Get(const clString& name) const;
    // The same, and removes every entry of that name.
    clString Take(const clString& name);
    // Empties the list, then reads a tag block of `size` bytes at any address.
    // Nothing outside these bytes is read, whatever they hold, and nothing of the
    // block is needed afterwards. A malformed block gives the entries up to its
    // fault: the entry at fault keeps what was read of it, a text without a
    // terminator running to the end of the block. A null block, or a size that
    // is not positive, gives an empty list.
    void Parse(const std::uint8_t* block, std::int32_t size);
    // Appends a copy of each entry of `other` whose name is not in this list by
    // then: of two such entries of one name only the first is taken.
    void Merge(const TagList& other);
    // Frees all entries.
    void Clear();

private:
    // Of the first entry of that name, or -1.
    std::int64_t IndexOf(const clString& name) const;

    void Free(TagEntry* entry);

    clPtrArray entries;  // of TagEntry*
    TagEntryPool* pool = nullptr;
};
