// What the gathering asks of the disk.
#pragma once

#include <memory>

#include "foundation/string.h"

// One entry of a folder. The path is the enumerator's own and valid until its
// next step.
struct FolderEntry {
    // Full path, without a trailing backslash. Begins with the text of the folder
    // as it was given to Open.
    const clString* path = nullptr;
    bool isDirectory = false;
    bool isHidden = false;
};

// One pass over a folder, in the order of the file system, without "." and "..".
class FolderEntries {
public:
    virtual ~FolderEntries() = default;
    // False at the end, and at once for a folder that cannot be read.
    virtual bool Next(FolderEntry& entry) = 0;
};

class FolderWalk {
public:
    virtual ~FolderWalk() = default;
    // `folder` ends in a backslash. Never null.
    virtual std::unique_ptr<FolderEntries> Open(const clString& folder) = 0;
};
