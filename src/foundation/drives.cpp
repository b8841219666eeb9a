#include "foundation/drives.h"

clString DriveRootAt(const clStringList& list, std::int64_t index) {
    return list.ItemCopy(index);
}

clStringList DriveRoots(std::uint32_t mask) {
    clStringList roots;
    char root[] = "A:\\";
    for (; root[0] <= 'Z'; ++root[0], mask >>= 1) {
        if ((mask & 1) != 0) roots.Add(clString(root));
    }
    return roots;
}

clString DriveTypeName(std::uint32_t type) {
    switch (type) {
        case drive_type::removable:
            return L"Removable Disk";
        case drive_type::fixed:
            return L"Hard Disk";
        case drive_type::remote:
            return L"Network Drive";
        case drive_type::cdrom:
            return L"CD-ROM Drive";
        case drive_type::ramDisk:
            return L"RAM Disk";
        default:
            return L"";
    }
}

bool IsLabelOffLimits(const clString& path, std::uint32_t type) {
    const clString letter = path.Left(1).Upper();
    return type == drive_type::removable && (letter.Equals(L"A") || letter.Equals(L"B"));
}

clString ComposeDriveName(const clString& root, const clString& label, const clString& typeName) {
    clString name = label.IsEmpty() ? typeName : label;
    if (name.IsEmpty()) return root;
    name.Append(L" (");
    name.Append(root.Left(2));
    name.Append(L")");
    return name;
}
