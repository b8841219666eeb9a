#include "foundation/dir_enum.h"

#include "foundation/paths.h"

namespace {

bool IsDotEntry(const wchar_t* name) {
    return name[0] == L'.' && (name[1] == 0 || (name[1] == L'.' && name[2] == 0));
}

}  // namespace

clDirEnum::clDirEnum(const clString& pattern, const clString& directory)
    : record(), handle(INVALID_HANDLE_VALUE), search(directory), directoriesOnly(false) {
    EnsureBackslash(search);
    search.Append(pattern);
}

clDirEnum::clDirEnum(const clString& wanted)
    : record(), handle(INVALID_HANDLE_VALUE), search(wanted), directoriesOnly(false) {
    StripBackslashes(search);
}

clDirEnum::~clDirEnum() {
    if (handle != INVALID_HANDLE_VALUE) FindClose(handle);
}

// The platform's next entry, of whatever kind.
bool clDirEnum::Advance() {
    if (handle != INVALID_HANDLE_VALUE) return FindNextFileW(handle, &record) != 0;
    handle = FindFirstFileW(LongPath(search, folderLongPathLimit).Chars(), &record);
    search.Assign(DirectoryOf(search));
    return handle != INVALID_HANDLE_VALUE;
}

bool clDirEnum::Next() {
    record = {};
    do {
        if (!Advance()) return false;
    } while ((directoriesOnly && (record.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) ||
             IsDotEntry(record.cFileName));
    if (record.cFileName[0] == 0) return false;
    path.Assign(search);
    path.Append(record.cFileName);
    return true;
}
