// What the rows of a list sort by, taken out of the list once for each sort.
#pragma once

#include <cstdint>
#include <vector>

#include "decoders/file_row.h"
#include "foundation/string.h"

// What a column compares: a field of the row where there is one with a natural
// order, otherwise the text of its cells. Column names are compared exactly.
enum class SortValue {
    Size,
    Length,
    BitRate,
    Rating,
    Compression,
    AudioQuality,  // text, after ranking
    DateModified,
    DateAccessed,
    DateCreated,
    Text,
};
[[nodiscard]] SortValue SortValueOf(const clString& columnName);
// Whether the value is made from a cell's text; all others need the record alone.
[[nodiscard]] bool IsTextValue(SortValue value);

// "Audio quality" with letters put in front, so that the grades rank: those that
// begin before "S", then "High", then CD, DVD, DAT and perfect sources.
[[nodiscard]] clString RankedQuality(const clString& text);

// The keys of a list in display order. Text is compared by 16-bit units without
// regard to the case of A to Z, and numbers as signed ones, dates as unsigned.
class SortKeys {
public:
    explicit SortKeys(SortValue value) : value_(value) {}

    // Appends the key of the next row. `row` null, for a row without a record: it
    // equals every other. `cellText` is read only if the value is a text.
    void Add(const FileRow* row, const clString& cellText);
    std::int64_t Count() const { return static_cast<std::int64_t>(keys_.size()); }
    // -1, 0 or 1 as the first row goes before, beside or behind the second; 0 for
    // an index (from 0) outside the keys.
    [[nodiscard]] std::int32_t Compare(std::int64_t first, std::int64_t second) const;

private:
    struct Key {
        bool known = false;
        std::int64_t number = 0;
        std::size_t text = 0;  // where its folded text begins, which ends with 0
    };

    std::int64_t NumberOf(const FileRow& row) const;
    std::int32_t CompareTexts(std::size_t first, std::size_t second) const;

    SortValue value_;
    std::vector<Key> keys_;
    std::vector<wchar_t> texts_;
};
