#include <windows.h>
// The shell's headers need windows.h before them.
#include <initguid.h>
#include <shellapi.h>
#include <shlobj.h>
#include <shobjidl.h>

#include <utility>

#include "foundation/folders.h"
#include "foundation/paths.h"
#include "mainwindow/shell_source.h"

namespace {

constexpr CLSID shellLibraryClass = {
    0xD9B3211D, 0xE57F, 0x4426, {0xAA, 0xEF, 0x30, 0xA8, 0x06, 0xAD, 0xD3, 0x97}};
constexpr IID shellLibraryInterface = {
    0x11A66EFA, 0x382E, 0x451A, {0x92, 0x34, 0x1E, 0x0E, 0x12, 0xEF, 0x30, 0x85}};
constexpr GUID musicLibrary = {
    0x2112AB0A, 0xC86A, 0x4FFE, {0xA3, 0x68, 0x0D, 0xE9, 0x6E, 0x47, 0x01, 0x2E}};
constexpr IID shellItemArrayInterface = {
    0xB63EA76D, 0x1F85, 0x456F, {0xA1, 0x9C, 0x48, 0x15, 0x9E, 0xFA, 0x85, 0x8B}};

// Releases a COM object at the end of its scope.
template <class Interface>
class ComPointer {
public:
    ComPointer() = default;
    ComPointer(const ComPointer&) = delete;
    ComPointer& operator=(const ComPointer&) = delete;
    ~ComPointer() {
        if (object != nullptr) object->Release();
    }
    Interface* operator->() const { return object; }
    Interface** Out() { return &object; }
    void** OutVoid() { return reinterpret_cast<void**>(&object); }

private:
    Interface* object = nullptr;
};

// A name of the item, or false.
bool ReadName(IShellItem& item, SIGDN form, clString& name) {
    LPWSTR text = nullptr;
    if (FAILED(item.GetDisplayName(form, &text)) || text == nullptr) return false;
    name.Assign(text);
    CoTaskMemFree(text);
    return true;
}

bool OpenMusicLibrary(ComPointer<IShellLibrary>& library) {
    if (FAILED(CoCreateInstance(shellLibraryClass, nullptr, CLSCTX_INPROC_SERVER,
                                shellLibraryInterface, library.OutVoid()))) {
        return false;
    }
    return SUCCEEDED(library->LoadLibraryFromKnownFolder(musicLibrary, STGM_READ));
}

std::int32_t IconOfItem(LPCITEMIDLIST item, UINT flags) {
    SHFILEINFOW info = {};
    const DWORD_PTR answer =
        SHGetFileInfoW(reinterpret_cast<LPCWSTR>(item), 0, &info, sizeof info,
                       SHGFI_PIDL | SHGFI_SYSICONINDEX | SHGFI_SMALLICON | flags);
    return answer != 0 ? info.iIcon : -1;
}

}  // namespace

FolderIcons IconsOfFolder(const clString& path) {
    return {ShellIconIndex(path, SHELL_ICON_REAL),
            ShellIconIndex(path, SHELL_ICON_REAL | SHELL_ICON_OPEN)};
}

FolderIcons IconsOfNetwork() {
    LPITEMIDLIST item = nullptr;
    if (FAILED(SHGetSpecialFolderLocation(nullptr, CSIDL_NETWORK, &item))) return {};
    const FolderIcons icons = {IconOfItem(item, 0), IconOfItem(item, SHGFI_OPENICON)};
    CoTaskMemFree(item);
    return icons;
}

std::int32_t SharedFolderIcon(const clString& path) {
    static std::int32_t shared = -1;
    if (shared < 0) shared = ShellIconIndex(path, SHELL_ICON_REAL);
    return shared;
}

void WalkMusicLibrary(
    const std::function<void(const clString& name, const clString& path)>& visit) {
    ComPointer<IShellLibrary> library;
    if (!OpenMusicLibrary(library)) return;
    ComPointer<IShellItemArray> folders;
    if (FAILED(
            library->GetFolders(LFF_FORCEFILESYSTEM, shellItemArrayInterface, folders.OutVoid()))) {
        return;
    }
    DWORD count = 0;
    if (FAILED(folders->GetCount(&count))) return;
    for (DWORD i = 0; i < count; ++i) {
        ComPointer<IShellItem> item;
        if (FAILED(folders->GetItemAt(i, item.Out()))) continue;
        clString name;
        clString path;
        if (!ReadName(*item.operator->(), SIGDN_NORMALDISPLAY, name)) continue;
        if (!ReadName(*item.operator->(), SIGDN_FILESYSPATH, path)) continue;
        EnsureBackslash(path);
        visit(name, path);
    }
}

SystemVersion ReadSystemVersion() {
    // It stays what it is while the process lives.
    static const SystemVersion version = [] {
        OSVERSIONINFOEXW told = {};
        told.dwOSVersionInfoSize = sizeof told;
        GetVersionExW(reinterpret_cast<OSVERSIONINFOW*>(&told));
        return SystemVersion{told.dwMajorVersion, told.dwMinorVersion};
    }();
    return version;
}
