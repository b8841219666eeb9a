// Where things are, and what the shell calls them.
//
// Failures end in a fallback or an empty result; none is shown. Any thread,
// unless said otherwise.
#pragma once

#include <windows.h>

#include <commctrl.h>  // needs the former

#include <cstdint>

#include "foundation/string.h"

// Folders of this program's own numbering; every other number is the shell's
// (CSIDL).
inline constexpr std::int32_t FOLDER_PROGRAM_FILES = 0x5000;
inline constexpr std::int32_t FOLDER_WINDOWS = 0x5001;
inline constexpr std::int32_t FOLDER_SYSTEM = 0x5002;
inline constexpr std::int32_t FOLDER_TEMP = 0x5003;
// Program files of the machine's native width.
inline constexpr std::int32_t FOLDER_PROGRAM_FILES_NATIVE = 0x5004;

// The shell's numbers in use.
inline constexpr std::int32_t SHELL_DOCUMENTS = 5;
inline constexpr std::int32_t SHELL_MUSIC = 13;
inline constexpr std::int32_t SHELL_VIDEO = 14;
inline constexpr std::int32_t SHELL_APPLICATION_DATA = 26;
inline constexpr std::int32_t SHELL_SHARED_DOCUMENTS = 46;
inline constexpr std::int32_t SHELL_SHARED_MUSIC = 53;
inline constexpr std::int32_t SHELL_SHARED_VIDEO = 55;

// The folder with a trailing backslash, or `fallback` with one when it cannot be
// found; null stands for "C:\Error". An empty fallback gives the empty string,
// but for the music, video and their shared folders a backslash and a name,
// which is no real path. The folder need not exist.
clString FolderPath(std::int32_t id, const wchar_t* fallback = nullptr);
// The shell's path, with or without a trailing backslash, or the empty string.
clString ShellFolder(std::int32_t csidl);
// Full path of the program's own file; the platform cuts it at 1000 characters.
clString ModulePath();
// The program's folder, with trailing backslash.
clString ModuleDirectory();
// What stands behind the program's name in the command line, trimmed. A command
// line of nothing but an unquoted name comes back as that name.
clString CommandLineArguments();
// Opens a document through the shell, in its own folder; true on success.
bool ShellOpen(const clString& path);

// What the shell calls files of this kind; for an unknown extension the
// extension in lower case and " File", without one "File". Only the text counts,
// the file need not exist. The last answer is kept: window thread only.
clString FileTypeName(const clString& path);

// The shell's list of icons; null on failure. The shell's own: not to be destroyed.
HIMAGELIST SystemImageList(bool large);

// Flags of ShellIconIndex.
inline constexpr unsigned SHELL_ICON_LARGE = 2;
inline constexpr unsigned SHELL_ICON_OPEN = 4;
// Look at the file itself; without it the name decides and no file need exist.
inline constexpr unsigned SHELL_ICON_REAL = 8;
// Index into the system image list, or -1.
int ShellIconIndex(const clString& path, unsigned flags);
// A small icon for the name, which the caller destroys, or null.
HICON ShellFileIcon(const clString& path);

// The folder for temporary files, with trailing backslash. It need not exist.
clString TempDirectory();

// The path of a temporary file. The file is deleted with the object.
class clTempFile : public clString {
public:
    clTempFile() = default;
    clTempFile(const clTempFile&) = delete;
    clTempFile& operator=(const clTempFile&) = delete;
    ~clTempFile();

    // Makes a new empty file and holds its path; a file held before is deleted.
    // When no file can be made the path is there all the same.
    void Create();
};
