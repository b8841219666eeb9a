// The enumeration that every scan of a folder goes through.
#pragma once

#include <windows.h>

#include "foundation/string.h"

// Used once: construct, call `Next` until it answers false, destroy. Entries
// come in the file system's order, "." and ".." left out; wildcards are the
// platform's. A folder that cannot be read looks like an empty one. One object
// belongs to the thread that made it.
class clDirEnum {
public:
    // What in `directory` matches `pattern`, which may hold a relative part, as
    // "decoder\*.dll" does. The directory gets its backslash if it lacks one, so
    // an empty one is the root of the current drive.
    clDirEnum(const clString& pattern, const clString& directory);
    // The one file or folder `path`, with or without trailing backslashes.
    explicit clDirEnum(const clString& path);
    clDirEnum(const clDirEnum&) = delete;
    clDirEnum& operator=(const clDirEnum&) = delete;
    ~clDirEnum();

    // Moves to the next entry and fills `path` and `record`; false at the end.
    [[nodiscard]] bool Next();

    clString path;  // full path of the current entry
    // The current entry as the platform tells it: attributes, times, size and
    // names need no further call.
    WIN32_FIND_DATAW record;

private:
    bool Advance();

    HANDLE handle;    // invalid until the first Next
    clString search;  // then the directory prefix, with its backslash

public:
    bool directoriesOnly;  // skip what is no folder; set before the first Next
};
