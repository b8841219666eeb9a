// How many paths lie directly in each folder.
#pragma once

#include <cstdint>
#include <vector>

#include "foundation/string.h"
#include "selection/path_index.h"

// Counts paths by their folder part, without regard to the case of A to Z. No
// locks.
class FolderTally {
public:
    void Add(const clString& path);
    // `path` must have been added, and not removed since.
    void Remove(const clString& path);
    // Whether some path has `folder`, with its trailing backslash, as its folder part.
    bool Has(const clString& folder) const;
    void Clear();

private:
    struct Folder {
        clString text;  // as the first path spelt it
        std::uint32_t hash;
        std::int64_t paths;
    };

    std::int32_t Find(const wchar_t* text, std::int32_t length, std::uint32_t hash) const;

    std::vector<Folder> folders_;  // none without paths
    PathIndex index_;              // of folders_
};
