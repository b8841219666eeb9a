#include "decoders/kept_tags.h"

#include <cstring>
#include <new>

namespace {

constexpr std::size_t RoundedUp(std::size_t size) {
    return (size + alignof(std::int64_t) - 1) & ~(alignof(std::int64_t) - 1);
}

// Behind it stand name and value with their terminators.
struct EntryHead {
    std::int32_t nameLength;
    std::int32_t valueLength;
};

std::size_t TextBytes(std::int32_t length) {
    return (static_cast<std::size_t>(length) + 1) * sizeof(wchar_t);
}

std::size_t BytesOf(const EntryHead& head) {
    return RoundedUp(sizeof(EntryHead) + TextBytes(head.nameLength) + TextBytes(head.valueLength));
}

EntryHead HeadOf(const TagEntry& entry) {
    return {entry.name.Length(), entry.value.Length()};
}

void Write(std::byte* to, const TagEntry& entry) {
    const EntryHead head = HeadOf(entry);
    std::memcpy(to, &head, sizeof(head));
    to += sizeof(head);
    std::memcpy(to, entry.name.Chars(), TextBytes(head.nameLength));
    to += TextBytes(head.nameLength);
    std::memcpy(to, entry.value.Chars(), TextBytes(head.valueLength));
}

// Goes through the entries at `memory`, which is what Keep has filled or null.
class Reading {
public:
    explicit Reading(const std::byte* memory) : at_(memory) {
        if (memory == nullptr) return;
        std::memcpy(&left_, memory, sizeof(left_));
        at_ += sizeof(left_);
    }

    // False behind the last entry.
    bool Next() {
        if (left_ == 0) return false;
        --left_;
        at_ += entryBytes_;
        std::memcpy(&head_, at_, sizeof(head_));
        entryBytes_ = BytesOf(head_);
        return true;
    }

    const wchar_t* Name() const { return TextAt(sizeof(head_)); }
    clString Value() const {
        clString value;
        value.Assign(TextAt(sizeof(head_) + TextBytes(head_.nameLength)), head_.valueLength + 1);
        return value;
    }

private:
    const wchar_t* TextAt(std::size_t offset) const {
        return reinterpret_cast<const wchar_t*>(at_ + offset);
    }

    const std::byte* at_;
    std::int64_t left_ = 0;
    std::size_t entryBytes_ = 0;  // of the entry at hand
    EntryHead head_ = {};
};

}  // namespace

KeptTagsPool::~KeptTagsPool() {
    while (free_ != nullptr) {
        Block* const block = free_;
        free_ = block->next;
        Free(block);
    }
    if (filling_ != nullptr) Free(filling_);
}

KeptTagsPool::Block* KeptTagsPool::Make(std::size_t size) {
    ++blockCount_;
    return new (::operator new(sizeof(Block) + size)) Block{size, 0, 0, nullptr};
}

void KeptTagsPool::Free(Block* block) {
    --blockCount_;
    ::operator delete(block);
}

// Nothing in it is taken any more.
void KeptTagsPool::Recycle(Block* block) {
    block->used = 0;
    if (block == filling_) return;
    if (block->size != usualSize) {
        Free(block);
        return;
    }
    block->next = free_;
    free_ = block;
}

void* KeptTagsPool::Take(std::size_t size) {
    const std::size_t needed = sizeof(PieceHead) + RoundedUp(size);
    Block* block = filling_;
    if (needed > usualSize) {
        block = Make(needed);
    } else if (block == nullptr || block->size - block->used < needed) {
        block = free_ != nullptr ? free_ : Make(usualSize);
        if (block == free_) free_ = block->next;
        filling_ = block;
    }
    auto* const piece = reinterpret_cast<std::byte*>(block + 1) + block->used;
    block->used += needed;
    ++block->taken;
    ++taken_;
    const PieceHead head{block};
    std::memcpy(piece, &head, sizeof(head));
    return piece + sizeof(PieceHead);
}

void KeptTagsPool::Give(void* memory) {
    PieceHead head{};
    std::memcpy(&head, static_cast<std::byte*>(memory) - sizeof(PieceHead), sizeof(head));
    --taken_;
    if (--head.block->taken == 0) Recycle(head.block);
}

void KeptTagsPool::Trim() {
    if (taken_ > 0) return;
    while (free_ != nullptr) {
        Block* const block = free_;
        free_ = block->next;
        Free(block);
    }
}

void KeptTags::Keep(const TagList& tags) {
    Clear();
    const std::int64_t count = tags.Count();
    if (count == 0) return;
    std::size_t size = sizeof(count);
    for (std::int64_t i = 0; i < count; ++i)
        size += BytesOf(HeadOf(tags.At(i)));
    memory_ = static_cast<std::byte*>(pool_->Take(size));
    std::memcpy(memory_, &count, sizeof(count));
    std::byte* to = memory_ + sizeof(count);
    for (std::int64_t i = 0; i < count; ++i) {
        Write(to, tags.At(i));
        to += BytesOf(HeadOf(tags.At(i)));
    }
}

void KeptTags::CopyTo(TagList& tags) const {
    for (Reading reading(memory_); reading.Next();)
        tags.Add(reading.Name(), reading.Value());
}

std::int64_t KeptTags::Count() const {
    std::int64_t count = 0;
    if (memory_ != nullptr) std::memcpy(&count, memory_, sizeof(count));
    return count;
}

clString KeptTags::Get(const clString& name) const {
    for (Reading reading(memory_); reading.Next();) {
        if (name.CompareNoCase(reading.Name()) == 0) return reading.Value();
    }
    return {};
}

void KeptTags::Clear() {
    if (memory_ != nullptr) pool_->Give(memory_);
    memory_ = nullptr;
}
