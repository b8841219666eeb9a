#include "selection/path_list.h"

#include <utility>

namespace {

// Below this many slots removed ones cost nothing worth the moving.
constexpr std::size_t leastSlotsToCompact = 64;

}  // namespace

std::int32_t PathList::HeadOf(const clString& path, std::uint32_t hash) const {
    return index_.Find(hash, [&](std::int32_t slot) { return SamePath(*At(slot).path, path); });
}

// Makes the slot the youngest of its path.
void PathList::Link(std::int32_t slot) {
    Slot& added = At(slot);
    added.next = HeadOf(*added.path, added.hash);
    if (added.next == PathIndex::none) {
        index_.Insert(added.hash, slot);
    } else {
        index_.Renumber(added.hash, added.next, slot);
    }
}

void PathList::Add(const clString& path) {
    slots_.push_back({std::make_unique<clString>(path), PathHash::Of(path), PathIndex::none});
    Link(static_cast<std::int32_t>(slots_.size() - 1));
    ++count_;
    if (keepsFolders_) folders_.Add(path);
}

bool PathList::Contains(const clString& path) const {
    return !IsEmpty() && HeadOf(path, PathHash::Of(path)) != PathIndex::none;
}

void PathList::RemoveEqual(std::int32_t head) {
    index_.Erase(At(head).hash, head);
    for (std::int32_t slot = head; slot != PathIndex::none; slot = At(slot).next) {
        if (keepsFolders_) folders_.Remove(*At(slot).path);
        At(slot).path.reset();
        --count_;
    }
}

void PathList::Remove(const clString& path) {
    const std::int32_t head = IsEmpty() ? PathIndex::none : HeadOf(path, PathHash::Of(path));
    if (head == PathIndex::none) return;
    RemoveEqual(head);
    CompactIfSparse();
}

void PathList::RemoveBeneath(const clString& prefix) {
    for (const Slot& slot : slots_) {
        if (slot.path == nullptr || slot.path->CompareNoCase(prefix, prefix.Length()) != 0)
            continue;
        RemoveEqual(HeadOf(*slot.path, slot.hash));
    }
    CompactIfSparse();
}

// Moves the entries together once most slots are empty, so that each removal
// pays for a few moves only, wherever in the list it was.
void PathList::CompactIfSparse() {
    const std::size_t live = static_cast<std::size_t>(count_);
    if (slots_.size() < leastSlotsToCompact || live * 2 > slots_.size()) return;
    std::vector<Slot> old = std::exchange(slots_, {});
    slots_.reserve(live + live / 2);
    index_.Clear();
    for (Slot& slot : old) {
        if (slot.path == nullptr) continue;
        slots_.push_back({std::move(slot.path), slot.hash, PathIndex::none});
        Link(static_cast<std::int32_t>(slots_.size() - 1));
    }
}

void PathList::Clear() {
    slots_.clear();
    slots_.shrink_to_fit();
    index_.Clear();
    folders_.Clear();
    count_ = 0;
}

bool PathList::HasEntryDirectlyIn(const clString& folder) const {
    if (keepsFolders_) return folders_.Has(folder);
    bool found = false;
    ForEach([&](const clString& path) {
        const std::int32_t length = FolderLength(path);
        found = found ||
                (length == folder.Length() && SamePathText(path.Chars(), folder.Chars(), length));
    });
    return found;
}
