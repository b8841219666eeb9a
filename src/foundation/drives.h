// The drives of the machine and the text that the folder tree shows for each.
#pragma once

#include <cstdint>

#include "foundation/arrays.h"
#include "foundation/string.h"

// The platform's drive types that have a name here; 0 and 1, unknown and no
// such drive, have none.
namespace drive_type {

inline constexpr std::uint32_t removable = 2;
inline constexpr std::uint32_t fixed = 3;
inline constexpr std::uint32_t remote = 4;
inline constexpr std::uint32_t cdrom = 5;
inline constexpr std::uint32_t ramDisk = 6;

}  // namespace drive_type

// The root of each drive, "C:\" for instance, in the order of the letters.
clStringList ListDrives();
// A copy of the entry, or the empty string outside the list.
clString DriveRootAt(const clStringList& list, std::int64_t index);
// The platform's drive type of `path`, with or without its trailing backslash.
std::uint32_t DriveType(const clString& path);
// The name of that type, empty for any that has none.
clString DriveTypeName(const clString& path);
// The volume's label, or the empty string if there is none or no medium. Never
// touches the medium of a removable drive A or B. Changes the process's error
// mode for the time of the query: no other thread may depend on it meanwhile.
clString VolumeLabel(const clString& path);
// "Label (C:)", "Hard Disk (C:)", or the bare root of a drive of unknown type;
// empty outside the list. Asks the drive for its label: nothing is cached.
clString DriveDisplayName(const clStringList& list, std::int64_t index);

// The rules behind the operations above; nothing here touches a drive.

// The roots that belong to the 26 low bits of `mask`, bit 0 being A.
clStringList DriveRoots(std::uint32_t mask);
// The name of a drive type, empty for any that has none.
clString DriveTypeName(std::uint32_t type);
// True for a path on a drive of `type` whose medium must be left alone: asking
// a floppy drive for its label starts its motor, with or without a disk.
bool IsLabelOffLimits(const clString& path, std::uint32_t type);
// The text for the tree; `label` goes before `typeName`, the bare root is last.
clString ComposeDriveName(const clString& root, const clString& label, const clString& typeName);
