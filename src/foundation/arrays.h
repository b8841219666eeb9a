// The growable array of 64-bit entries, and the list of owned strings on it.
#pragma once

#include <cstdint>

#include "foundation/string.h"

// Entries are pointers or plain 64-bit values; the array owns only its storage.
// Sixteen entries lie inline; the capacity then runs 48, 112, 240, 496 and so
// on, and from the 500000 cap of the step on it rises by 500000 at a time.
// Indices are 0-based. No locks.
class clPtrArray {
public:
    // Nonzero if `a` goes before `b`.
    using Less = bool (*)(std::int64_t a, std::int64_t b, std::int64_t context);

    clPtrArray();
    clPtrArray(const clPtrArray&) = delete;
    clPtrArray& operator=(const clPtrArray&) = delete;
    clPtrArray(clPtrArray&& other) noexcept;  // leaves `other` without storage
    ~clPtrArray();

    void Add(std::int64_t value);
    // An index above the count, or -1, means the end.
    void InsertAt(std::int64_t index, std::int64_t value);
    // Outside the array nothing happens. What the entry means is not freed.
    void RemoveAt(std::int64_t index);
    // Plain indexing: the caller checks the bounds.
    std::int64_t Get(std::int64_t index) const { return items[index]; }
    void Set(std::int64_t index, std::int64_t value) { items[index] = value; }
    std::int64_t Count() const { return count; }
    std::int64_t Capacity() const { return capacity; }
    // Drops all entries and the storage, the inline storage included: the next
    // entry allocates 32.
    void Clear();

    // In-place quicksort of `first` to `last` inclusive, -1 for the ends. Not
    // stable: equal entries end where its steps leave them, the same on every
    // machine. Never calls `less` for fewer than two entries.
    void Sort(Less less, std::int64_t context, std::int64_t first = -1, std::int64_t last = -1);

private:
    static constexpr std::int64_t inlineCapacity = 16;
    static constexpr std::int64_t firstGrowStep = 32;
    static constexpr std::int64_t largestGrowStep = 500000;

    void Grow();
    bool IsInline() const { return items == inlineItems; }
    void SortRange(Less less, std::int64_t context, std::int64_t first, std::int64_t last);

    std::int64_t* items;  // inlineItems, a heap block, or null after Clear
    std::int64_t count;
    std::int64_t capacity;
    std::int64_t growStep;
    std::int64_t inlineItems[inlineCapacity];
};

// An array whose entries are strings on the heap, owned by the list. A list is
// copied item by item with `Add(item, item's tag)`.
class clStringList : private clPtrArray {
public:
    clStringList() = default;
    clStringList(clStringList&&) noexcept = default;
    ~clStringList();

    using clPtrArray::Capacity;
    using clPtrArray::Count;

    void Add(const clString& text, std::int64_t tag = 0);
    void Add(const wchar_t* text, std::int64_t tag = 0);
    // An index above the count, or -1, means the end.
    void Insert(std::int64_t index, const clString& text);
    void RemoveAt(std::int64_t index);
    // Destroys every string and frees the storage.
    void Clear();

    // The string itself, owned by the list: the caller checks the bounds.
    clString* At(std::int64_t index) const;
    // A copy, or the empty string outside the list.
    clString ItemCopy(std::int64_t index) const;
    // Index of the first item equal to `text`, or -1. Walks the list.
    std::int64_t IndexOf(const clString& text, bool ignoreCase) const;

    // Sorts by text: context 0 exactly, any other without regard to the case of
    // A to Z. The order of equal items is that of clPtrArray::Sort.
    void Sort(std::int64_t context, std::int64_t first = -1, std::int64_t last = -1);
    // Sorts by any rule; the entries given to `less` are pointers to clString.
    void SortBy(Less less, std::int64_t context);

    // The items with one CR between them; empty for no items.
    void Join(clString& out) const;
    // Appends the pieces between CRs, empty ones included; nothing for empty text.
    void Split(const clString& text);
    // Clears, then cuts at each CR and the LFs right behind it. Empty lines
    // stay; text that ends with a line end gives no empty last line.
    void SplitLines(const clString& text);
    // Clears, then reads CR-separated text from outside: `byteLength` bytes that
    // need no terminator; a negative length is none. The item "[Empty]" stands
    // for an empty one; a truly empty item ends the walk.
    void SplitPacked(const void* data, std::int64_t byteLength);
};

// The comparator of clStringList::Sort, for entries that are clString pointers.
bool StringGoesBefore(std::int64_t left, std::int64_t right, std::int64_t ignoreCase);
