// The disk as the gathering walks it.
#pragma once

#include <memory>

#include "foundation/quiet_drives.h"
#include "selection/folder_walk.h"

// Asks the file system for each folder when it is opened, with one find sequence
// each. While the object lives, drives without a medium raise no system box; at
// its end the process's error mode is 0. User interface thread, one at a time.
class DiskWalk : public FolderWalk {
public:
    std::unique_ptr<FolderEntries> Open(const clString& folder) override;

private:
    QuietDrives quiet_;
};
