// A disk in memory, small enough to be walked after every action.
#pragma once

#include <string>
#include <vector>

#include "tests/selection/oracle/plain_text.h"

namespace oracle {

// A file or a folder. Entries stand in the order in which the disk gives them.
struct DiskEntry {
    Text name;
    bool isDirectory = false;
    bool isHidden = false;
    std::vector<DiskEntry> entries;
};

// A drive or a share, with the path of its root, which ends in a backslash.
struct Volume {
    Text path;
    bool isPresent = true;
    DiskEntry root;
};

class PlainDisk {
public:
    std::vector<Volume> volumes;

    // The folder of that path, or null. Ends in a backslash or not; the case of A
    // to Z doesn't matter, but a name in the very same case goes first.
    DiskEntry* FindFolder(TextView path);
    const DiskEntry* FindFolder(TextView path) const;
};

// The folder's entry of exactly that name, or null.
DiskEntry* FindEntry(DiskEntry& folder, TextView name);

// The paths of all folders, each with its trailing backslash, roots included.
std::vector<Text> AllFolders(const PlainDisk& disk);
// The paths of all files.
std::vector<Text> AllFiles(const PlainDisk& disk);

// A line for each entry, indented.
std::string Describe(const PlainDisk& disk);

}  // namespace oracle
