// The table from hashes to numbers that the lists of paths look things up in.
#pragma once

#include <cstdint>
#include <vector>

// Maps a hash to numbers of 0 and above, which the owner gives to whatever it
// indexes. Two things may have one hash: the owner tells them apart. No locks.
class PathIndex {
public:
    static constexpr std::int32_t none = -1;

    // The first number under `hash` that `isWanted(number)` accepts, or `none`.
    template <class IsWanted>
    std::int32_t Find(std::uint32_t hash, IsWanted&& isWanted) const {
        if (used_ == 0) return none;
        const std::uint8_t mark = MarkOf(hash);
        for (std::size_t at = hash & mask_; marks_[at] != 0; at = (at + 1) & mask_) {
            if (marks_[at] == mark && buckets_[at].hash == hash && isWanted(buckets_[at].number))
                return buckets_[at].number;
        }
        return none;
    }

    // `number` must not be there yet.
    void Insert(std::uint32_t hash, std::int32_t number);
    // The two below need the number under that hash.
    void Renumber(std::uint32_t hash, std::int32_t oldNumber, std::int32_t newNumber);
    void Erase(std::uint32_t hash, std::int32_t number);
    void Clear();

private:
    struct Bucket {
        std::uint32_t hash = 0;
        std::int32_t number = none;
    };

    // Never 0, and of bits that do not choose the bucket.
    static std::uint8_t MarkOf(std::uint32_t hash) {
        return static_cast<std::uint8_t>(hash >> 25 | 0x80);
    }
    std::size_t Locate(std::uint32_t hash, std::int32_t number) const;
    void Place(const Bucket& bucket);
    void Grow();

    // The number of buckets is a power of two and at least twice that of the used
    // ones. A bucket lies at its hash or behind it, with no free one in between.
    std::vector<Bucket> buckets_;
    // One for each bucket, 0 for a free one: a search that fails, as nearly all
    // do, stays in these few bytes, which the processor's cache keeps.
    std::vector<std::uint8_t> marks_;
    std::size_t mask_ = 0;
    std::size_t used_ = 0;
};
