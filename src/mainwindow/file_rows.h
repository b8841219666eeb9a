// The records of a list of files.
#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "decoders/file_row.h"

// Records lie in blocks that are larger than what a heap keeps for its next callers:
// freed one by one, a hundred thousand of them leave a heap behind in which some
// systems search long for each new one. They keep their address for as long as they
// are in the list. Indices are 0-based. No locks.
class clFileRows {
public:
    clFileRows() = default;
    clFileRows(const clFileRows&) = delete;
    clFileRows& operator=(const clFileRows&) = delete;

    // Appends; what `row` held is taken over. The result is the record in the list.
    FileRow& Add(FileRow&& row) {
        if (blocks.empty() || blocks.back().size() == rowsInBlock)
            blocks.emplace_back().reserve(rowsInBlock);
        return blocks.back().emplace_back(std::move(row));
    }
    std::int64_t Count() const {
        if (blocks.empty()) return 0;
        return static_cast<std::int64_t>((blocks.size() - 1) * rowsInBlock + blocks.back().size());
    }
    // Null outside the list. The records are no part of what is const here.
    FileRow* At(std::int64_t index) const {
        if (index < 0 || index >= Count()) return nullptr;
        const auto place = static_cast<std::size_t>(index);
        return const_cast<FileRow*>(&blocks[place / rowsInBlock][place % rowsInBlock]);
    }
    void Clear() { blocks.clear(); }

private:
    static constexpr std::size_t rowsInBlock = 2048;
    // The largest block of the heap proper, for 64-bit programs.
    static_assert(sizeof(FileRow) * rowsInBlock > std::size_t{1024} * 1024);

    std::vector<std::vector<FileRow>> blocks;  // all but the last are full
};
