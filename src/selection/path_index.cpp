#include "selection/path_index.h"

#include <utility>

namespace {

constexpr std::size_t leastBuckets = 16;

}  // namespace

void PathIndex::Place(const Bucket& bucket) {
    std::size_t at = bucket.hash & mask_;
    while (marks_[at] != 0)
        at = (at + 1) & mask_;
    buckets_[at] = bucket;
    marks_[at] = MarkOf(bucket.hash);
}

void PathIndex::Grow() {
    const std::size_t size = buckets_.empty() ? leastBuckets : buckets_.size() * 2;
    const std::vector<Bucket> old = std::exchange(buckets_, std::vector<Bucket>(size));
    marks_.assign(size, 0);
    mask_ = size - 1;
    for (const Bucket& bucket : old) {
        if (bucket.number != none) Place(bucket);
    }
}

void PathIndex::Insert(std::uint32_t hash, std::int32_t number) {
    if ((used_ + 1) * 2 > buckets_.size()) Grow();
    Place({hash, number});
    ++used_;
}

std::size_t PathIndex::Locate(std::uint32_t hash, std::int32_t number) const {
    std::size_t at = hash & mask_;
    while (buckets_[at].number != number)
        at = (at + 1) & mask_;
    return at;
}

void PathIndex::Renumber(std::uint32_t hash, std::int32_t oldNumber, std::int32_t newNumber) {
    buckets_[Locate(hash, oldNumber)].number = newNumber;
}

void PathIndex::Erase(std::uint32_t hash, std::int32_t number) {
    std::size_t hole = Locate(hash, number);
    // What lies behind moves up as long as that brings it no nearer than its
    // hash: then no search ends too early, and no traces of erased ones pile up.
    for (std::size_t at = (hole + 1) & mask_; marks_[at] != 0; at = (at + 1) & mask_) {
        const std::size_t home = buckets_[at].hash & mask_;
        if (((at - home) & mask_) >= ((at - hole) & mask_)) {
            buckets_[hole] = buckets_[at];
            marks_[hole] = marks_[at];
            hole = at;
        }
    }
    buckets_[hole] = Bucket();
    marks_[hole] = 0;
    --used_;
}

void PathIndex::Clear() {
    buckets_ = std::vector<Bucket>();
    marks_ = std::vector<std::uint8_t>();
    mask_ = 0;
    used_ = 0;
}
