#include "dialogs/list_summary.h"

#include "foundation/regional.h"

namespace {

// What damaged files claim wraps, and comes out right again when it is taken back.
std::int64_t Sum(std::int64_t a, std::int64_t b) {
    return static_cast<std::int64_t>(static_cast<std::uint64_t>(a) + static_cast<std::uint64_t>(b));
}

}  // namespace

void ListSummary::Add(const FileRow& row) {
    ++files;
    bytes += row.sizeBytes;
    lengthMs = Sum(lengthMs, row.lengthMs);
}

void ListSummary::Remove(const FileRow& row) {
    --files;
    bytes -= row.sizeBytes;
    const auto length = static_cast<std::uint64_t>(row.lengthMs);
    lengthMs = Sum(lengthMs, static_cast<std::int64_t>(0 - length));
}

clString SummaryText(const ListSummary& summary, bool isReading) {
    clString text(L"Converting ");
    text.Append(clString(summary.files));
    text.Append(L" Files");
    if (isReading) {
        text.Append(L", Reading Meta Data...");
        return text;
    }
    text.Append(L", Source Size: ");
    text.Append(SizeText(static_cast<std::int64_t>(summary.bytes), false));
    text.Append(L"  Length: ");
    text.Append(DurationText(static_cast<std::uint64_t>(summary.lengthMs), durationWords));
    return text;
}
