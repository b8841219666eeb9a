// A list of paths that finds, adds and removes an entry without walking.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "foundation/string.h"
#include "selection/folder_tally.h"
#include "selection/path_index.h"
#include "selection/path_text.h"

// The text that many paths begin with, and its hash, made once for all of them.
class PathPrefix {
public:
    explicit PathPrefix(const clString& text) { Extend(text); }

    // `path` begins with the present prefix, as it stands, and becomes the prefix.
    void Extend(const clString& path) {
        hash_.Extend(path.Chars() + length_, path.Length() - length_);
        length_ = path.Length();
    }
    // The hash of a path that begins with the prefix.
    std::uint32_t HashOf(const clString& path) const {
        PathHash hash = hash_;
        hash.Extend(path.Chars() + length_, path.Length() - length_);
        return hash.Value();
    }

private:
    PathHash hash_;
    std::int32_t length_ = 0;
};

// Paths in the order of adding. An entry may occur more than once. Comparisons
// ignore the case of A to Z and nothing else. Add, Contains and Remove take the
// same time however long the list is (Remove on average). No locks.
class PathList {
public:
    // Kept makes HasEntryDirectlyIn as fast as Contains, for a little memory and
    // time at each Add; without it that operation walks the list.
    enum class FolderIndex { None, Kept };

    explicit PathList(FolderIndex folders = FolderIndex::None)
        : keepsFolders_(folders == FolderIndex::Kept) {}
    PathList(const PathList&) = delete;
    PathList& operator=(const PathList&) = delete;

    // Appends, whether or not the path is there already.
    void Add(const clString& path);
    bool Contains(const clString& path) const;
    // The same for a path that begins with the prefix.
    bool Contains(const PathPrefix& prefix, const clString& path) const {
        return !IsEmpty() && HeadOf(path, prefix.HashOf(path)) != PathIndex::none;
    }
    // Removes every entry equal to the path.
    void Remove(const clString& path);
    // Removes every entry that begins with `prefix`; an empty prefix only empty
    // entries. Walks the list.
    void RemoveBeneath(const clString& prefix);
    void Clear();

    std::int64_t Count() const { return count_; }
    bool IsEmpty() const { return count_ == 0; }
    // Gives `visit` each entry in order. It must not change this list.
    template <class Visit>
    void ForEach(Visit&& visit) const {
        for (const Slot& slot : slots_) {
            if (slot.path != nullptr) visit(static_cast<const clString&>(*slot.path));
        }
    }

    // True if the text up to and including the last backslash of some entry
    // equals `folder`; of an entry without one, the whole text.
    bool HasEntryDirectlyIn(const clString& folder) const;

private:
    struct Slot {
        std::unique_ptr<clString> path;  // null: removed, the slot awaits Compact
        std::uint32_t hash = 0;
        std::int32_t next = PathIndex::none;  // an older slot with an equal path
    };

    Slot& At(std::int32_t slot) { return slots_[static_cast<std::size_t>(slot)]; }
    const Slot& At(std::int32_t slot) const { return slots_[static_cast<std::size_t>(slot)]; }
    std::int32_t HeadOf(const clString& path, std::uint32_t hash) const;
    void Link(std::int32_t slot);
    void RemoveEqual(std::int32_t head);
    void CompactIfSparse();

    bool keepsFolders_;
    std::vector<Slot> slots_;  // in order of adding, removed ones among them
    std::int64_t count_ = 0;   // slots with a path
    PathIndex index_;          // the youngest slot of each path
    FolderTally folders_;      // of all entries, if kept
};
