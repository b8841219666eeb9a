#include "mainwindow/sort_keys.h"

namespace {

struct NamedValue {
    const wchar_t* name;
    SortValue value;
};

constexpr NamedValue namedValues[] = {
    {L"Size", SortValue::Size},
    {L"Length", SortValue::Length},
    {L"Bit Rate", SortValue::BitRate},
    {L"Rating", SortValue::Rating},
    {L"Compression", SortValue::Compression},
    {L"Audio Quality", SortValue::AudioQuality},
    {L"Date Modified", SortValue::DateModified},
    {L"Date Accessed", SortValue::DateAccessed},
    {L"Date Created", SortValue::DateCreated},
};

struct QualityRank {
    const wchar_t* beginning;
    const wchar_t* letter;
};

// In this order, each on what the one before has left.
constexpr QualityRank qualityRanks[] = {
    {L"High", L"S"}, {L"CD ", L"x"}, {L"DVD ", L"x"}, {L"DAT ", L"x"}, {L"Perfect", L"x"},
};

// A date is an unsigned count: with its highest bit turned it sorts as a signed one.
std::int64_t NumberOfDate(const clFileTime& time) {
    const std::uint64_t count = (static_cast<std::uint64_t>(time.high) << 32) | time.low;
    return static_cast<std::int64_t>(count ^ (std::uint64_t{1} << 63));
}

std::int32_t Sign(bool less, bool greater) {
    return less ? -1 : greater ? 1 : 0;
}

}  // namespace

SortValue SortValueOf(const clString& columnName) {
    for (const NamedValue& entry : namedValues) {
        if (columnName.Equals(entry.name)) return entry.value;
    }
    return SortValue::Text;
}

bool IsTextValue(SortValue value) {
    return value == SortValue::Text || value == SortValue::AudioQuality;
}

clString RankedQuality(const clString& text) {
    clString ranked(text);
    for (const QualityRank& rank : qualityRanks) {
        if (ranked.CompareNoCase(rank.beginning, POS_LAST) == 0) ranked.Insert(rank.letter, 1);
    }
    return ranked;
}

void SortKeys::Add(const FileRow* row, const clString& cellText) {
    Key key;
    key.known = row != nullptr;
    if (IsTextValue(value_)) {
        key.text = texts_.size();
        const clString folded =
            (value_ == SortValue::AudioQuality ? RankedQuality(cellText) : cellText).Lower();
        texts_.insert(texts_.end(), folded.Chars(), folded.Chars() + folded.Length() + 1);
    } else if (row != nullptr) {
        key.number = NumberOf(*row);
    }
    keys_.push_back(key);
}

std::int64_t SortKeys::NumberOf(const FileRow& row) const {
    switch (value_) {
        case SortValue::Size:
            return static_cast<std::int64_t>(row.sizeBytes);
        case SortValue::Length:
            return row.lengthMs;
        case SortValue::BitRate:
            return row.bitRate;
        case SortValue::Rating:
            return row.rating;
        case SortValue::Compression:
            return row.compressionPercent;
        case SortValue::DateModified:
            return NumberOfDate(row.dateModified);
        case SortValue::DateAccessed:
            return NumberOfDate(row.dateAccessed);
        case SortValue::DateCreated:
            return NumberOfDate(row.dateCreated);
        case SortValue::AudioQuality:
        case SortValue::Text:
            break;
    }
    return 0;
}

std::int32_t SortKeys::CompareTexts(std::size_t first, std::size_t second) const {
    const wchar_t* a = texts_.data() + first;
    const wchar_t* b = texts_.data() + second;
    while (*a == *b && *a != 0) {
        ++a;
        ++b;
    }
    return Sign(*a<*b, *a> * b);
}

std::int32_t SortKeys::Compare(std::int64_t first, std::int64_t second) const {
    if (first < 0 || second < 0 || first >= Count() || second >= Count()) return 0;
    const Key& a = keys_[static_cast<std::size_t>(first)];
    const Key& b = keys_[static_cast<std::size_t>(second)];
    if (!a.known || !b.known) return 0;
    if (IsTextValue(value_)) return CompareTexts(a.text, b.text);
    return Sign(a.number<b.number, a.number> b.number);
}
