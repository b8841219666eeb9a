#include <windows.h>

#include "foundation/arrays.h"
#include "foundation/dir_enum.h"
#include "foundation/paths.h"

bool CreateDirectoryPath(const clString& path) {
    clString made = LongPath(path, folderLongPathLimit);
    if (made.IsEmpty()) return false;
    clStringList components;  // the innermost first
    for (;;) {
        const clString component = PopComponent(made);
        if (component.IsEmpty()) break;
        components.Add(component);
    }
    for (std::int64_t i = components.Count() - 1; i >= 0; --i) {
        made.Append(*components.At(i));
        if (!CreateDirectoryW(made.Chars(), nullptr) && GetLastError() != ERROR_ALREADY_EXISTS) {
            return false;
        }
        made.Append(L"\\");
    }
    return true;
}

bool DeletePath(const clString& path, bool isRetry) {
    if (path.IsEmpty()) return false;
    const clString text = LongPath(path, folderLongPathLimit);
    SetLastError(ERROR_SUCCESS);
    if (DeleteFileW(text.Chars())) return true;
    if (isRetry || GetLastError() != ERROR_ACCESS_DENIED) return false;
    ClearReadOnly(path);  // whether that was the cause shows in the second attempt
    return DeletePath(path, true);
}

bool ClearReadOnly(const clString& path) {
    clDirEnum file(path);
    if (!file.Next()) return false;
    const clString text = LongPath(path, folderLongPathLimit);
    const DWORD attributes = file.record.dwFileAttributes;
    return SetFileAttributesW(text.Chars(), attributes & ~DWORD{FILE_ATTRIBUTE_READONLY}) != 0;
}

bool PathExists(const clString& path) {
    if (path.IsEmpty()) return false;
    clDirEnum entry(path);
    if (entry.Next()) return true;
    // The root of a drive is no entry of any folder.
    clString root(path);
    EnsureBackslash(root);
    return GetDriveTypeW(root.Chars()) != DRIVE_NO_ROOT_DIR;
}
