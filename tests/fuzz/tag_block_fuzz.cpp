// Any bytes as a tag block: nothing outside them is read, and what comes out
// obeys the rules that hold for every block.
#include <cstdlib>
#include <cstring>
#include <memory>

#include "decoders/tag_list.h"
#include "foundation/text.h"

namespace {

// Ends the run with the input kept, as a crash does.
void Require(bool holds) {
    if (!holds) std::abort();
}

std::int32_t CountOf(const std::uint8_t* block) {
    std::int32_t count = 0;
    std::memcpy(&count, block, sizeof(count));
    return count;
}

std::int64_t BytesOf(const TagEntry& entry) {
    return 4 + 2 * (std::int64_t{entry.name.Length()} + 1) +
           2 * (std::int64_t{entry.value.Length()} + 1) + entry.data.size;
}

void CheckEntry(const TagEntry& entry) {
    Require(MeasureText(entry.name.Chars()) == entry.name.Length());
    Require(MeasureText(entry.value.Chars()) == entry.value.Length());
    Require(entry.data.size >= 0 && (entry.data.size == 0 || entry.data.data != nullptr));
}

void CheckList(const TagList& list, const std::uint8_t* block, std::int64_t size) {
    if (size <= 4 || CountOf(block) <= 0) {
        Require(list.Count() == 0);
        return;
    }
    Require(list.Count() <= CountOf(block));
    Require(list.Count() <= size / 4);
    std::int64_t used = 4;
    for (std::int64_t i = 0; i < list.Count(); ++i) {
        CheckEntry(list.At(i));
        // All but the last one are whole and stand one behind the other.
        if (i + 1 < list.Count()) used += BytesOf(list.At(i));
    }
    Require(used <= size);
}

// A merge into an empty list keeps one entry of each name, the first.
void CheckMerge(const TagList& list) {
    TagList merged;
    merged.Merge(list);
    Require((merged.Count() == 0) == (list.Count() == 0));
    while (merged.Count() > 0) {
        const std::int64_t before = merged.Count();
        const clString name(merged.At(0).name);
        Require(merged.Take(name).Equals(list.Get(name)));
        Require(merged.Count() == before - 1);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    // A block of its own of exactly that size: the sanitizer guards both ends.
    const std::unique_ptr<std::uint8_t[]> block(new std::uint8_t[size]);
    if (size != 0) std::memcpy(block.get(), bytes, size);
    TagList list;
    list.Parse(block.get(), static_cast<std::int32_t>(size));
    CheckList(list, block.get(), static_cast<std::int64_t>(size));
    CheckMerge(list);
    return 0;
}
