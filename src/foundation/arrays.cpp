#include "foundation/arrays.h"

#include <algorithm>
#include <cstring>

clPtrArray::clPtrArray()
    : items(inlineItems), count(0), capacity(inlineCapacity), growStep(firstGrowStep) {}

clPtrArray::clPtrArray(clPtrArray&& other) noexcept
    : items(other.items), count(other.count), capacity(other.capacity), growStep(other.growStep) {
    if (other.IsInline()) {
        std::copy_n(other.inlineItems, other.count, inlineItems);
        items = inlineItems;
    }
    other.items = nullptr;
    other.count = 0;
    other.capacity = 0;
    other.growStep = firstGrowStep;
}

clPtrArray::~clPtrArray() {
    Clear();
}

void clPtrArray::Clear() {
    if (!IsInline()) delete[] items;
    items = nullptr;
    count = 0;
    capacity = 0;
    growStep = firstGrowStep;
}

void clPtrArray::Grow() {
    capacity += growStep;
    growStep = std::min(growStep * 2, largestGrowStep);
    auto* block = new std::int64_t[static_cast<std::size_t>(capacity)];
    if (items != nullptr) std::copy_n(items, count, block);
    if (!IsInline()) delete[] items;
    items = block;
}

void clPtrArray::Add(std::int64_t value) {
    if (count == capacity) Grow();
    items[count++] = value;
}

void clPtrArray::InsertAt(std::int64_t index, std::int64_t value) {
    if (index < 0 || index > count) index = count;
    if (count == capacity) Grow();
    std::copy_backward(items + index, items + count, items + count + 1);
    items[index] = value;
    ++count;
}

void clPtrArray::RemoveAt(std::int64_t index) {
    if (index < 0 || index >= count) return;
    std::copy(items + index + 1, items + count, items + index);
    --count;
}

void clPtrArray::Sort(Less less, std::int64_t context, std::int64_t first, std::int64_t last) {
    if (first == -1) first = 0;
    if (last == -1) last = count - 1;
    if (count == 0 || last <= first || first >= count || last >= count || first < 0) return;
    SortRange(less, context, first, last);
}

// These exact steps settle where equal entries end, so they are not replaced by
// a library sort.
void clPtrArray::SortRange(Less less, std::int64_t context, std::int64_t first, std::int64_t last) {
    while (first < last) {
        const std::int64_t pivot = items[(first + last) / 2];
        std::int64_t i = first;
        std::int64_t j = last;
        do {
            while (less(items[i], pivot, context) && i < last)
                ++i;
            while (less(pivot, items[j], context) && j > first)
                --j;
            if (i > j) break;
            std::swap(items[i], items[j]);
            ++i;
            --j;
        } while (i <= j);
        if (first < j) SortRange(less, context, first, j);
        if (i >= last) return;
        first = i;
    }
}
