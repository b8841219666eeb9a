#include "tests/selection/oracle/plain_disk.h"

#include <cstddef>
#include <utility>

namespace oracle {
namespace {

const DiskEntry* FindChildFolder(const DiskEntry& folder, TextView name) {
    for (const DiskEntry& entry : folder.entries) {
        if (entry.isDirectory && entry.name == name) return &entry;
    }
    for (const DiskEntry& entry : folder.entries) {
        if (entry.isDirectory && SameText(entry.name, name)) return &entry;
    }
    return nullptr;
}

void Collect(const DiskEntry& folder, const Text& path, bool folders, std::vector<Text>& out) {
    if (folders) out.push_back(path);
    for (const DiskEntry& entry : folder.entries) {
        if (entry.isDirectory) {
            Collect(entry, path + entry.name + u"\\", folders, out);
        } else if (!folders) {
            out.push_back(path + entry.name);
        }
    }
}

std::vector<Text> CollectAll(const PlainDisk& disk, bool folders) {
    std::vector<Text> out;
    for (const Volume& volume : disk.volumes) {
        if (volume.isPresent) Collect(volume.root, volume.path, folders, out);
    }
    return out;
}

void DescribeEntries(const DiskEntry& folder, const std::string& indent, std::string& out) {
    for (const DiskEntry& entry : folder.entries) {
        out += indent + Utf8(entry.name);
        if (entry.isDirectory) out += "\\";
        if (entry.isHidden) out += " (hidden)";
        out += "\n";
        DescribeEntries(entry, indent + "  ", out);
    }
}

}  // namespace

const DiskEntry* PlainDisk::FindFolder(TextView path) const {
    for (const Volume& volume : volumes) {
        if (!volume.isPresent || !BeginsWith(path, volume.path)) continue;
        const DiskEntry* folder = &volume.root;
        TextView rest = path.substr(volume.path.size());
        while (folder != nullptr && !rest.empty()) {
            const std::size_t slash = rest.find(u'\\');
            folder = FindChildFolder(*folder, rest.substr(0, slash));
            rest = slash == TextView::npos ? TextView() : rest.substr(slash + 1);
        }
        return folder;
    }
    return nullptr;
}

DiskEntry* PlainDisk::FindFolder(TextView path) {
    return const_cast<DiskEntry*>(std::as_const(*this).FindFolder(path));
}

DiskEntry* FindEntry(DiskEntry& folder, TextView name) {
    for (DiskEntry& entry : folder.entries) {
        if (entry.name == name) return &entry;
    }
    return nullptr;
}

std::vector<Text> AllFolders(const PlainDisk& disk) {
    return CollectAll(disk, true);
}

std::vector<Text> AllFiles(const PlainDisk& disk) {
    return CollectAll(disk, false);
}

std::string Describe(const PlainDisk& disk) {
    std::string out;
    for (const Volume& volume : disk.volumes) {
        out += Utf8(volume.path) + (volume.isPresent ? "\n" : " (not mounted)\n");
        DescribeEntries(volume.root, "  ", out);
    }
    return out;
}

}  // namespace oracle
