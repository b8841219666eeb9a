#include "decoders/list_rows.h"

bool DisplayRowIndex::IsRight(const ListedRows& rows, std::int64_t param) const {
    if (param >= static_cast<std::int64_t>(displayRows_.size())) return false;
    const std::int32_t row = displayRows_[static_cast<std::size_t>(param)];
    return row >= 0 && row < rows.Count() && rows.ParamAt(row) == param;
}

// From the end, so that of two rows with one parameter the first is kept.
void DisplayRowIndex::Walk(const ListedRows& rows) {
    displayRows_.clear();
    for (std::int32_t row = rows.Count() - 1; row >= 0; --row) {
        const std::int64_t param = rows.ParamAt(row);
        if (rows.RowOf(param) == nullptr) continue;
        const auto at = static_cast<std::size_t>(param);
        if (at >= displayRows_.size()) displayRows_.resize(at + 1, -1);
        displayRows_[at] = row;
    }
    walked_ = true;
}

std::int32_t DisplayRowIndex::Find(const ListedRows& rows, std::int64_t param) {
    if (param < 0) return -1;
    if (!IsRight(rows, param)) {
        if (walked_) return -1;
        Walk(rows);
        if (!IsRight(rows, param)) return -1;
    }
    return displayRows_[static_cast<std::size_t>(param)];
}
