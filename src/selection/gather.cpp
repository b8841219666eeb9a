#include "selection/gather.h"

#include <memory>
#include <utility>
#include <vector>

#include "foundation/paths.h"

bool AudioTypeFilter::IsWantedAudioFile(const clString& path) {
    const std::int32_t dot = ExtensionPosition(path);
    // Nothing but a dot is no extension, whatever a decoder may claim.
    if (dot == 0 || dot == path.Length()) return false;
    const wchar_t* extension = path.Chars() + dot - 1;
    if (!_LastAudioType.IsEmpty() && _LastAudioType.CompareNoCase(extension) == 0) return true;
    for (std::int64_t i = 0; i < types_.Count(); ++i) {
        const clAudioType& type = types_.At(i);
        if (type.excluded || type.extension.CompareNoCase(extension) != 0) continue;
        _LastAudioType.Assign(extension);
        return true;
    }
    return false;
}

namespace {

// One gathering: what it reads and where the files go.
class Gathering {
public:
    Gathering(const SelectionLists& lists, AudioTypeFilter& filter, FolderWalk& walk,
              clStringList& files)
        : lists_(lists), filter_(filter), walk_(walk), files_(files) {}

    void GatherRecursive(const clString& root);
    void GatherFolder(const clString& root);

private:
    // A folder on the way down that still has entries to come.
    struct Level {
        std::unique_ptr<FolderEntries> entries;
        PathPrefix folder;
    };

    Level Enter(const clString& folder, const PathPrefix& prefix) {
        return {walk_.Open(folder), prefix};
    }
    bool IsLeftOut(const PathPrefix& folder, const clString& path) const {
        return lists_._FoldersExcluded.Contains(folder, path) ||
               lists_._FoldersOnly.Contains(folder, path);
    }
    void AddFile(const PathPrefix& folder, const clString& path) {
        if (!filter_.IsWantedAudioFile(path)) return;
        if (!lists_._FilesExcluded.Contains(folder, path)) files_.Add(path);
    }

    const SelectionLists& lists_;
    AudioTypeFilter& filter_;
    FolderWalk& walk_;
    clStringList& files_;
};

bool IsEnterable(const FolderEntry& entry) {
    return entry.isDirectory && !entry.isHidden;
}

// The levels stand in a list of their own instead of on the stack: with long
// paths a tree can be many thousand folders deep.
void Gathering::GatherRecursive(const clString& root) {
    clString folder(root);
    EnsureBackslash(folder);
    std::vector<Level> levels;
    levels.push_back(Enter(folder, PathPrefix(folder)));
    FolderEntry entry;
    while (!levels.empty()) {
        Level& level = levels.back();
        if (!level.entries->Next(entry)) {
            levels.pop_back();
        } else if (IsEnterable(entry)) {
            folder.Assign(*entry.path);
            EnsureBackslash(folder);
            if (IsLeftOut(level.folder, folder)) continue;
            PathPrefix prefix = level.folder;
            prefix.Extend(folder);
            levels.push_back(Enter(folder, prefix));
        } else {
            AddFile(level.folder, *entry.path);
        }
    }
}

void Gathering::GatherFolder(const clString& root) {
    clString folder(root);
    EnsureBackslash(folder);
    const PathPrefix prefix(folder);
    const std::unique_ptr<FolderEntries> entries = walk_.Open(folder);
    FolderEntry entry;
    while (entries->Next(entry)) {
        if (!IsEnterable(entry)) AddFile(prefix, *entry.path);
    }
}

}  // namespace

void GatherFiles(const SelectionLists& lists, AudioTypeFilter& filter, FolderWalk& walk,
                 clStringList& files) {
    Gathering gathering(lists, filter, walk, files);
    lists._FoldersRecursive.ForEach(
        [&](const clString& folder) { gathering.GatherRecursive(folder); });
    lists._FoldersOnly.ForEach([&](const clString& folder) { gathering.GatherFolder(folder); });
    lists._FilesIncluded.ForEach([&](const clString& path) { files.Add(path); });
}
