#include "selection/disk_walk.h"

#include <windows.h>

#include "foundation/dir_enum.h"

namespace {

class DiskEntries : public FolderEntries {
public:
    explicit DiskEntries(const clString& folder) : found_(L"*.*", folder) {}

    bool Next(FolderEntry& entry) override {
        if (!found_.Next()) return false;
        entry.path = &found_.path;
        entry.isDirectory = (found_.record.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        entry.isHidden = (found_.record.dwFileAttributes & FILE_ATTRIBUTE_HIDDEN) != 0;
        return true;
    }

private:
    clDirEnum found_;
};

}  // namespace

std::unique_ptr<FolderEntries> DiskWalk::Open(const clString& folder) {
    return std::make_unique<DiskEntries>(folder);
}
