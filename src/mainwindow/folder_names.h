// Folders and roots by name, as the tree looks for them.
#pragma once

#include "foundation/arrays.h"
#include "foundation/string.h"

// Appends the full paths, without a trailing backslash, of the folders directly in
// `folder` that are not hidden, in the file system's order. A folder that cannot
// be read has none.
void ListSubfolders(const clString& folder, clStringList& paths);

// Whether a root of the tree stays: the network and server paths always do, any
// other if the first character of its path is that of a drive's root, exactly.
[[nodiscard]] bool IsRootOfADrive(const clString& path, const clStringList& driveRoots);

// Whether exactly this text is in a list that was sorted with regard to case.
[[nodiscard]] bool HasSorted(const clStringList& list, const clString& text);
