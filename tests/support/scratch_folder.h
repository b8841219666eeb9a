// A folder of a test's own below the temporary folder.
#pragma once

#include <string>

#include "foundation/string.h"

// Empty at first; goes with all that is in it at the end, read-only files too.
class ScratchFolder {
public:
    ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder();

    // With trailing backslash.
    const clString& Path() const { return path; }
    // Full path of something in the folder; `name` may hold backslashes.
    clString Path(const wchar_t* name) const;
    // Make something in the folder and return its full path.
    clString AddFile(const wchar_t* name, const std::string& content = {}) const;
    clString AddFolder(const wchar_t* name) const;

private:
    clString path;
};

// The bytes of a file; "(missing)" when it cannot be opened.
std::string FileContent(const clString& path);
