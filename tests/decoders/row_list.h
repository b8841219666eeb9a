// A list of files in memory: a row array, and rows on display in any order.
#pragma once

#include <memory>
#include <vector>

#include "decoders/list_rows.h"

class RowList : public ListedRows {
public:
    RowList() = default;
    explicit RowList(const std::vector<clString>& paths) {
        for (const clString& path : paths)
            Add(path);
    }

    // Adds a row of this path at the end of the array and of the display.
    FileRow& Add(const clString& path, std::uint64_t sizeBytes = 0) {
        order.push_back(static_cast<std::int64_t>(rows.size()));
        rows.push_back(std::make_unique<FileRow>());
        rows.back()->path.Assign(path);
        rows.back()->sizeBytes = sizeBytes;
        return *rows.back();
    }
    FileRow& At(std::int64_t index) { return *rows[static_cast<std::size_t>(index)]; }

    std::int32_t Count() const override { return static_cast<std::int32_t>(order.size()); }
    std::int64_t ParamAt(std::int32_t displayRow) const override {
        ++looks;
        return order[static_cast<std::size_t>(displayRow)];
    }
    FileRow* RowOf(std::int64_t param) const override {
        const bool isIndex = param >= 0 && param < static_cast<std::int64_t>(rows.size());
        return isIndex ? rows[static_cast<std::size_t>(param)].get() : nullptr;
    }

    std::vector<std::unique_ptr<FileRow>> rows;
    std::vector<std::int64_t> order;  // the item parameters of the display rows
    mutable long looks = 0;           // calls of ParamAt
};
