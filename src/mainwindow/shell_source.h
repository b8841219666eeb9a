// What the tree asks of the shell: icons of folders, and the Music library.
#pragma once

#include <cstdint>
#include <functional>

#include "foundation/string.h"

// Indices into the system's small image list; -1 for none.
struct FolderIcons {
    std::int32_t normal = -1;
    std::int32_t open = -1;
};
// Of a folder that exists.
[[nodiscard]] FolderIcons IconsOfFolder(const clString& path);
// Of the network neighbourhood.
[[nodiscard]] FolderIcons IconsOfNetwork();
// One icon for all folders beneath a root: the first answer of the shell is kept
// for the life of the process, a failure is tried again with the next path.
[[nodiscard]] std::int32_t SharedFolderIcon(const clString& path);

// Calls `visit` with the shell's name and the path, which ends in a backslash, of
// each folder of the Music library, in its order. Without the library, as on
// systems that have none, nothing is called. COM must be initialised.
void WalkMusicLibrary(const std::function<void(const clString& name, const clString& path)>& visit);

// What a library folder is called in the tree.
[[nodiscard]] clString LibraryFolderText(const clString& name, const clString& path,
                                         const clString& musicFolder,
                                         const clString& publicMusicFolder);

// The system's version, 6 and 1 for instance, as it tells this program.
struct SystemVersion {
    std::uint32_t major = 0;
    std::uint32_t minor = 0;
};
[[nodiscard]] SystemVersion ReadSystemVersion();
