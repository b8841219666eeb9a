#include "foundation/drives.h"

#include <windows.h>

#include "foundation/paths.h"

static_assert(drive_type::removable == DRIVE_REMOVABLE);
static_assert(drive_type::fixed == DRIVE_FIXED);
static_assert(drive_type::remote == DRIVE_REMOTE);
static_assert(drive_type::cdrom == DRIVE_CDROM);
static_assert(drive_type::ramDisk == DRIVE_RAMDISK);

namespace {

// Not QuietDrives, which leaves 0 behind: asked in between, the mode stays the caller's.
// A drive without a medium then fails instead of bringing up a system box.
class QuietQuestion {
public:
    QuietQuestion() : before(SetErrorMode(SEM_FAILCRITICALERRORS)) {}
    QuietQuestion(const QuietQuestion&) = delete;
    QuietQuestion& operator=(const QuietQuestion&) = delete;
    ~QuietQuestion() { SetErrorMode(before); }

private:
    UINT before;
};

clString WithBackslash(const clString& path) {
    clString root = path;
    EnsureBackslash(root);
    return root;
}

}  // namespace

clStringList ListDrives() {
    return DriveRoots(GetLogicalDrives());
}

std::uint32_t DriveType(const clString& path) {
    return GetDriveTypeW(WithBackslash(path).Chars());
}

clString DriveTypeName(const clString& path) {
    return DriveTypeName(DriveType(path));
}

clString VolumeLabel(const clString& path) {
    if (IsLabelOffLimits(path, DriveType(path))) return L"";
    const clString root = WithBackslash(path);
    wchar_t label[260] = {};
    const QuietQuestion quiet;
    const BOOL found =
        GetVolumeInformationW(root.Chars(), label, 260, nullptr, nullptr, nullptr, nullptr, 0);
    return found ? clString(label) : clString();
}

clString DriveDisplayName(const clStringList& list, std::int64_t index) {
    const clString root = DriveRootAt(list, index);
    // An empty root would stand for the current drive.
    if (root.IsEmpty()) return root;
    const clString label = VolumeLabel(root);
    return ComposeDriveName(root, label, label.IsEmpty() ? DriveTypeName(root) : clString());
}
