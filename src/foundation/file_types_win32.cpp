// Type names and icons of files, as the shell has them.
#include <windows.h>

#include <shellapi.h>

#include "foundation/folders.h"
#include "foundation/paths.h"
#include "foundation/settings.h"

namespace {

// One slot pays, since files of one type stand together in most folders.
clString cachedExtension;
clString cachedTypeName;

clString RegisteredTypeName(const clString& extension) {
    const clString typeClass = ReadSettingString(L"", HKEY_CLASSES_ROOT, extension.Chars());
    if (typeClass.IsEmpty()) return {};
    return ReadSettingString(L"", HKEY_CLASSES_ROOT, typeClass.Chars());
}

clString PlainTypeName(const clString& extension) {
    if (extension.Length() <= 1) return L"File";
    clString name = extension.Mid(2).Lower();
    name.Append(L" File");
    return name;
}

}  // namespace

clString FileTypeName(const clString& path) {
    const clString extension = ExtensionOf(path);
    if (extension.CompareNoCase(cachedExtension) == 0) return cachedTypeName;
    clString name;
    if (extension.Length() > 1) name.Assign(RegisteredTypeName(extension));
    if (name.IsEmpty()) name.Assign(PlainTypeName(extension));
    cachedExtension.Assign(extension);
    cachedTypeName.Assign(name);
    return name;
}

HIMAGELIST SystemImageList(bool large) {
    clString root = FolderPath(FOLDER_WINDOWS, L"");
    while (!PopComponent(root).IsEmpty()) {
    }
    if (root.IsEmpty()) root.Assign(L"C:\\");
    SHFILEINFOW info = {};
    const UINT flags = SHGFI_SYSICONINDEX | (large ? 0U : UINT{SHGFI_SMALLICON});
    return reinterpret_cast<HIMAGELIST>(
        SHGetFileInfoW(root.Chars(), 0, &info, sizeof(info), flags));
}

int ShellIconIndex(const clString& path, unsigned flags) {
    UINT shellFlags = SHGFI_SYSICONINDEX;
    if ((flags & SHELL_ICON_LARGE) == 0) shellFlags |= SHGFI_SMALLICON;
    if ((flags & SHELL_ICON_OPEN) != 0) shellFlags |= SHGFI_OPENICON;
    if ((flags & SHELL_ICON_REAL) == 0) shellFlags |= SHGFI_USEFILEATTRIBUTES;
    SHFILEINFOW info = {};
    // A failure leaves an index too, that of the first icon.
    if (SHGetFileInfoW(path.Chars(), 0, &info, sizeof(info), shellFlags) == 0) return -1;
    return info.iIcon;
}

HICON ShellFileIcon(const clString& path) {
    SHFILEINFOW info = {};
    constexpr UINT flags = SHGFI_ICON | SHGFI_USEFILEATTRIBUTES | SHGFI_SMALLICON;
    if (SHGetFileInfoW(path.Chars(), 0, &info, sizeof(info), flags) == 0) return nullptr;
    return info.hIcon;
}
