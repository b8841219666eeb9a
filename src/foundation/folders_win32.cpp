#include <windows.h>

#include <shellapi.h>
#include <shlobj.h>

#include "foundation/command_line.h"
#include "foundation/folders.h"
#include "foundation/paths.h"
#include "foundation/settings.h"

namespace {

constexpr UINT pathLimit = MAX_PATH;
constexpr DWORD modulePathLimit = 1000;

clString ProgramFiles(const wchar_t* name) {
    return ReadSettingString(name, HKEY_LOCAL_MACHINE,
                             L"SOFTWARE\\Microsoft\\Windows\\CurrentVersion");
}

// Runs a call that fills a path buffer and answers its length; a longer text is
// answered by the length needed, with the buffer left alone.
template <class Call>
clString PathFrom(Call call) {
    wchar_t text[pathLimit] = {};
    const UINT length = call(text);
    return length == 0 || length >= pathLimit ? clString() : clString(text);
}

clString WindowsFolder() {
    return PathFrom([](wchar_t* text) { return GetWindowsDirectoryW(text, pathLimit); });
}

clString SystemFolder() {
    return PathFrom([](wchar_t* text) { return GetSystemDirectoryW(text, pathLimit); });
}

clString PlatformTempFolder() {
    return PathFrom([](wchar_t* text) { return GetTempPathW(pathLimit, text); });
}

clString Below(clString parent, const wchar_t* name) {
    EnsureBackslash(parent);
    parent.Append(name);
    return parent;
}

// Where systems without these shell folders keep them. An empty parent stays
// empty, so what comes out is then no real path.
clString RebuiltShellFolder(std::int32_t id) {
    switch (id) {
        case SHELL_APPLICATION_DATA: {
            clString documents = ShellFolder(SHELL_DOCUMENTS);
            if (documents.IsEmpty()) return {};
            PopComponent(documents);
            return Below(documents, L"Application Data\\");
        }
        case SHELL_MUSIC:
            return Below(ShellFolder(SHELL_DOCUMENTS), L"My Music\\");
        case SHELL_VIDEO:
            return Below(ShellFolder(SHELL_DOCUMENTS), L"My Video\\");
        case SHELL_SHARED_MUSIC:
            return Below(ShellFolder(SHELL_SHARED_DOCUMENTS), L"My Music\\");
        case SHELL_SHARED_VIDEO:
            return Below(ShellFolder(SHELL_SHARED_DOCUMENTS), L"My Video\\");
        default:
            return {};
    }
}

// The folder as its source has it, or the empty string.
clString FoundFolder(std::int32_t id) {
    switch (id) {
        case FOLDER_PROGRAM_FILES:
            return ProgramFiles(L"ProgramFilesDir");
        case FOLDER_WINDOWS:
            return WindowsFolder();
        case FOLDER_SYSTEM:
            return SystemFolder();
        case FOLDER_TEMP:
            return PlatformTempFolder();
        case FOLDER_PROGRAM_FILES_NATIVE: {
            clString native = ProgramFiles(L"ProgramW6432Dir");
            return native.IsEmpty() ? ProgramFiles(L"ProgramFilesDir") : native;
        }
        default: {
            clString shell = ShellFolder(id);
            return shell.IsEmpty() ? RebuiltShellFolder(id) : shell;
        }
    }
}

}  // namespace

clString FolderPath(std::int32_t id, const wchar_t* fallback) {
    clString result = FoundFolder(id);
    if (result.IsEmpty()) result.Assign(fallback != nullptr ? fallback : L"C:\\Error");
    EnsureBackslash(result);
    if (result.Equals(L"\\")) result.Assign(L"");
    return result;
}

clString ShellFolder(std::int32_t csidl) {
    clString result;
    ITEMIDLIST* items = nullptr;
    if (FAILED(SHGetSpecialFolderLocation(nullptr, csidl, &items))) return result;
    wchar_t text[pathLimit] = {};
    if (SHGetPathFromIDListW(items, text)) result.Assign(text);
    IMalloc* allocator = nullptr;
    if (SUCCEEDED(SHGetMalloc(&allocator))) {
        allocator->Free(items);
        allocator->Release();
    }
    return result;
}

clString ModulePath() {
    wchar_t text[modulePathLimit + 1] = {};  // a path that is cut may lack its terminator
    GetModuleFileNameW(nullptr, text, modulePathLimit);
    return UnquotedModulePath(text);
}

clString ModuleDirectory() {
    return DirectoryOf(ModulePath());
}

clString CommandLineArguments() {
    return ArgumentsOf(GetCommandLineW());
}

bool ShellOpen(const clString& path) {
    const clString folder = DirectoryOf(path);
    const HINSTANCE result =
        ShellExecuteW(nullptr, nullptr, path.Chars(), nullptr, folder.Chars(), SW_SHOWDEFAULT);
    return reinterpret_cast<INT_PTR>(result) > 32;  // up to 32 it is an error code
}

clString TempDirectory() {
    clString result = PlatformTempFolder();
    if (result.IsEmpty()) result.Assign(L"C:\\Temp");
    EnsureBackslash(result);
    return result;
}
