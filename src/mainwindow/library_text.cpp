#include "mainwindow/shell_source.h"

clString LibraryFolderText(const clString& name, const clString& path, const clString& musicFolder,
                           const clString& publicMusicFolder) {
    if (path.CompareNoCase(musicFolder) == 0) return L"Music";
    if (path.CompareNoCase(publicMusicFolder) == 0) return L"Public Music";
    // The path of a server would be longer than what it explains.
    if (path.Find(L"\\\\") != 0) return name;
    clString text(name);
    text.Append(L" (");
    text.Append(path);
    text.Append(L')');
    return text;
}
