#include <algorithm>
#include <cstring>
#include <memory>

#include "foundation/arrays.h"

namespace {

constexpr wchar_t carriageReturn = 13;
constexpr wchar_t lineFeed = 10;

clString* StringOf(std::int64_t entry) {
    return reinterpret_cast<clString*>(entry);
}

std::int64_t EntryOf(const clString& text, std::int64_t tag) {
    auto* item = new clString;
    item->Assign(text);
    item->tag = tag;
    return reinterpret_cast<std::int64_t>(item);
}

}  // namespace

clStringList::~clStringList() {
    Clear();
}

void clStringList::Add(const clString& text, std::int64_t tag) {
    clPtrArray::Add(EntryOf(text, tag));
}

void clStringList::Add(const wchar_t* text, std::int64_t tag) {
    clPtrArray::Add(EntryOf(clString(text), tag));
}

void clStringList::Insert(std::int64_t index, const clString& text) {
    InsertAt(index, EntryOf(text, 0));
}

void clStringList::RemoveAt(std::int64_t index) {
    if (index < 0 || index >= Count()) return;
    delete At(index);
    clPtrArray::RemoveAt(index);
}

void clStringList::Clear() {
    for (std::int64_t i = 0; i < Count(); ++i)
        delete At(i);
    clPtrArray::Clear();
}

clString* clStringList::At(std::int64_t index) const {
    return StringOf(Get(index));
}

clString clStringList::ItemCopy(std::int64_t index) const {
    if (index < 0 || index >= Count() || At(index) == nullptr) return {};
    return *At(index);
}

std::int64_t clStringList::IndexOf(const clString& text, bool ignoreCase) const {
    for (std::int64_t i = 0; i < Count(); ++i) {
        const clString* item = At(i);
        if (item == nullptr) continue;
        if (ignoreCase ? item->CompareNoCase(text) == 0 : item->Equals(text)) return i;
    }
    return -1;
}

bool StringGoesBefore(std::int64_t left, std::int64_t right, std::int64_t ignoreCase) {
    const clString* a = StringOf(left);
    const clString* b = StringOf(right);
    if (b == nullptr) return false;
    if (a == nullptr) return true;
    if (ignoreCase != 0) return a->CompareNoCase(*b) == -1;
    const wchar_t* x = a->Chars();
    const wchar_t* y = b->Chars();
    for (; *x != 0 && *x == *y; ++x)
        ++y;
    return *x < *y;  // a prefix meets the other's terminator last and goes first
}

void clStringList::Sort(std::int64_t context, std::int64_t first, std::int64_t last) {
    clPtrArray::Sort(StringGoesBefore, context, first, last);
}

void clStringList::SortBy(Less less, std::int64_t context) {
    clPtrArray::Sort(less, context);
}

void clStringList::Join(clString& out) const {
    clString joined;
    for (std::int64_t i = 0; i < Count(); ++i) {
        if (i > 0) joined.Append(carriageReturn);
        if (At(i) != nullptr) joined.Append(*At(i));
    }
    out.Assign(joined);
}

namespace {

// The piece from `first` up to the separator at `end`, both 1-based.
clString Piece(const clString& text, std::int32_t first, std::int32_t end) {
    return end > first ? text.Mid(first, end - 1) : clString();
}

}  // namespace

void clStringList::Split(const clString& text) {
    if (text.IsEmpty()) return;
    std::int32_t first = 1;
    while (const std::int32_t end = text.FindChar(carriageReturn, first)) {
        Add(Piece(text, first, end));
        first = end + 1;
    }
    Add(Piece(text, first, text.Length() + 1));
}

void clStringList::SplitLines(const clString& text) {
    // The text may be one of our own items.
    const clString source(text);  // NOLINT(performance-unnecessary-copy-initialization)
    Clear();
    std::int32_t first = 1;
    while (const std::int32_t end = source.FindChar(carriageReturn, first)) {
        Add(Piece(source, first, end));
        first = end + 1;
        while (source.CharAt(first) == lineFeed)
            ++first;
    }
    if (first <= source.Length()) Add(source.Mid(first));
}

void clStringList::SplitPacked(const void* data, std::int64_t byteLength) {
    const auto bytes = static_cast<std::size_t>(std::max<std::int64_t>(byteLength, 0));
    // Room for at least one whole terminator behind an odd last byte.
    const std::size_t units = (bytes + 4 + 1) / sizeof(wchar_t);
    const auto block = std::make_unique<wchar_t[]>(units);
    if (bytes > 0) std::memcpy(block.get(), data, bytes);
    Clear();
    for (wchar_t* at = block.get(); *at != 0; ++at) {
        if (*at == carriageReturn) *at = 0;
    }
    std::size_t at = 0;
    while (block[at] != 0 && at * sizeof(wchar_t) < bytes) {
        const clString item(block.get() + at);
        at += static_cast<std::size_t>(item.Length()) + 1;
        Add(item.Equals(L"[Empty]") ? clString() : item);
    }
}
