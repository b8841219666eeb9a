#include "mainwindow/status_text.h"

#include "foundation/regional.h"

namespace {

clString InBrackets(std::uint64_t bytes) {
    clString text(L" (");
    text.Append(SizeText(static_cast<std::int64_t>(bytes), false));
    text.Append(L')');
    return text;
}

}  // namespace

clString StatusText(const ListTotals& totals, const clString& folder) {
    clString text(totals.shownFiles);
    text.Append(L" Audio Files Shown");
    if (totals.shownBytes != 0) text.Append(InBrackets(totals.shownBytes));
    if (totals.tickedFiles != 0) {
        text.Append(L", ");
        text.Append(clString(totals.tickedFiles));
        text.Append(L" Files Selected");
        text.Append(InBrackets(totals.tickedBytes));
    }
    text.Append(L" in Folder: ");
    text.Append(folder);
    return text;
}
