#include "decoders/tag_list.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <unordered_map>
#include <vector>

#include "decoders/tag_entry_pool.h"
#include "foundation/text.h"

namespace {

TagEntry* EntryOf(std::int64_t value) {
    return reinterpret_cast<TagEntry*>(value);
}

// A position in the bytes of a tag block. No read goes beyond their end. Values
// lie at any address, so they are copied out.
class TagBlockCursor {
public:
    TagBlockCursor(const std::uint8_t* bytes, std::int32_t byteCount)
        : block(bytes), size(byteCount) {}

    std::int64_t Left() const { return size - offset; }

    // Four bytes must be left.
    std::int32_t TakeInt() {
        std::int32_t value = 0;
        std::memcpy(&value, block + offset, sizeof(value));
        offset += std::int64_t{sizeof(value)};
        return value;
    }

    // Takes the units up to a terminator or to the last whole unit of the block.
    // The result is the bytes that the text occupies, terminator included: more
    // than were left if it has none.
    std::int64_t TakeText(clString& text) {
        const std::int64_t length = UnitsBeforeTerminator();
        const std::int64_t bytes = length * unitBytes;
        units.resize(static_cast<std::size_t>(length) + 1);
        if (length > 0) std::memcpy(units.data(), block + offset, static_cast<std::size_t>(bytes));
        text.Assign(units.data(), static_cast<std::int32_t>(length) + 1);
        // Beyond the end where no terminator was there: that is how the caller learns.
        offset += bytes + unitBytes;
        return bytes + unitBytes;
    }

    // At least `count` bytes must be left. Where no memory can be had for them the
    // payload stays empty.
    void TakeData(clByteBuffer& data, std::int64_t count) {
        if (data.Resize(count, false)) {
            std::memcpy(data.data, block + offset, static_cast<std::size_t>(count));
        }
        offset += count;
    }

private:
    static constexpr std::int64_t unitBytes = sizeof(wchar_t);

    std::int64_t UnitsBeforeTerminator() const {
        const std::int64_t whole = Left() / unitBytes;
        for (std::int64_t i = 0; i < whole; ++i) {
            wchar_t unit = 0;
            std::memcpy(&unit, block + offset + i * unitBytes, sizeof(unit));
            if (unit == 0) return i;
        }
        return std::max<std::int64_t>(whole, 0);
    }

    const std::uint8_t* block;
    std::int64_t size;
    std::int64_t offset = 0;
    std::vector<wchar_t> units;
};

// Reads one entry into `list`. False: the walk ends with it.
bool ReadEntry(TagBlockCursor& cursor, TagList& list) {
    // The block may end here, whatever its count promised.
    if (cursor.Left() < std::int64_t{sizeof(std::int32_t)}) return false;
    // In 64 bits, where no size that a block can name wraps.
    const std::int64_t inBlock = cursor.Left();
    const std::int64_t entrySize = cursor.TakeInt();
    if (entrySize < 0 || entrySize > inBlock) return false;

    TagEntry& entry = list.Add(clString(), clString());
    std::int64_t remaining = entrySize - std::int64_t{sizeof(std::int32_t)};
    remaining -= cursor.TakeText(entry.name);
    if (remaining < 1) return false;
    remaining -= cursor.TakeText(entry.value);
    if (remaining < 0) return false;
    if (remaining > 0) cursor.TakeData(entry.data, remaining);
    return true;
}

// Which names a growing list has. A block of a million bytes may hold as many as
// would take a walk of the list for each half a minute, with the meta-data mutex
// held: a long list is indexed. For a short one the walk takes less.
class NameIndex {
public:
    explicit NameIndex(const TagList& named) : list(named) {}
    bool Has(const clString& name) {
        if (list.Count() <= longestWalk) return list.Has(name);
        for (; known < list.Count(); ++known)
            places.emplace(HashOf(list.At(known).name), known);
        const auto [first, last] = places.equal_range(HashOf(name));
        return std::any_of(first, last, [&](const auto& place) {
            return list.At(place.second).name.CompareNoCase(name) == 0;
        });
    }

private:
    static std::uint64_t HashOf(const clString& name) {
        std::uint64_t hash = 0xCBF29CE484222325u;  // FNV-1a
        for (std::int32_t i = 0; i < name.Length(); ++i)
            hash = (hash ^ FoldAscii(name.Chars()[i])) * 0x100000001B3u;
        return hash;
    }

    static constexpr std::int64_t longestWalk = 64;

    const TagList& list;
    std::int64_t known = 0;
    std::unordered_multimap<std::uint64_t, std::int64_t> places;
};

}  // namespace

const TagEntry& TagList::At(std::int64_t index) const {
    return *EntryOf(entries.Get(index));
}

TagEntry& TagList::Add(const clString& name, const clString& value) {
    auto* entry = pool != nullptr ? new (pool->Take()) TagEntry{name, value, {}}
                                  : new TagEntry{name, value, {}};
    entries.Add(reinterpret_cast<std::int64_t>(entry));
    return *entry;
}

clString TagList::Get(const clString& name) const {
    const std::int64_t index = IndexOf(name);
    return index >= 0 ? At(index).value : clString();
}

clString TagList::Take(const clString& name) {
    clString value = Get(name);
    // Freed behind the last comparison, since `name` may be that of one of them.
    TagList removed;
    removed.pool = pool;
    for (std::int64_t i = Count() - 1; i >= 0; --i) {
        if (At(i).name.CompareNoCase(name) != 0) continue;
        removed.entries.Add(entries.Get(i));
        entries.RemoveAt(i);
    }
    return value;
}

void TagList::Parse(const std::uint8_t* block, std::int32_t size) {
    Clear();
    // The count alone is no list: something has to stand behind it.
    if (block == nullptr || size <= std::int32_t{sizeof(std::int32_t)}) return;
    TagBlockCursor cursor(block, size);
    const std::int32_t count = cursor.TakeInt();
    for (std::int32_t i = 0; i < count; ++i) {
        if (!ReadEntry(cursor, *this)) return;
    }
}

void TagList::Merge(const TagList& other) {
    NameIndex names(*this);
    for (std::int64_t i = 0; i < other.Count(); ++i) {
        const TagEntry& source = other.At(i);
        if (names.Has(source.name)) continue;
        clByteBuffer& data = Add(source.name, source.value).data;
        if (source.data.size > 0 && data.Resize(source.data.size, false)) {
            std::memcpy(data.data, source.data.data, static_cast<std::size_t>(data.size));
        }
    }
}

void TagList::Clear() {
    for (std::int64_t i = 0; i < Count(); ++i)
        Free(EntryOf(entries.Get(i)));
    entries.Clear();
}

void TagList::Free(TagEntry* entry) {
    if (pool == nullptr) {
        delete entry;
        return;
    }
    entry->~TagEntry();
    pool->Give(entry);
}

std::int64_t TagList::IndexOf(const clString& name) const {
    for (std::int64_t i = 0; i < Count(); ++i) {
        if (At(i).name.CompareNoCase(name) == 0) return i;
    }
    return -1;
}
