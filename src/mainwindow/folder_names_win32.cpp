#include "foundation/dir_enum.h"
#include "mainwindow/folder_names.h"

void ListSubfolders(const clString& folder, clStringList& paths) {
    clDirEnum entries(L"*.*", folder);
    while (entries.Next()) {
        const DWORD attributes = entries.record.dwFileAttributes;
        if ((attributes & FILE_ATTRIBUTE_DIRECTORY) == 0) continue;
        if ((attributes & FILE_ATTRIBUTE_HIDDEN) != 0) continue;
        paths.Add(entries.path);
    }
}
