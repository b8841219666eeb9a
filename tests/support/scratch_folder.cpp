#include "tests/support/scratch_folder.h"

#include <gtest/gtest.h>
#include <windows.h>

namespace {

void RemoveFolder(const clString& folder) {
    clString pattern(folder);
    pattern.Append(L"*");
    WIN32_FIND_DATAW found;
    HANDLE find = FindFirstFileW(pattern.Chars(), &found);
    if (find != INVALID_HANDLE_VALUE) {
        do {
            const std::wstring name = found.cFileName;
            if (name == L"." || name == L"..") continue;
            clString entry(folder);
            entry.Append(name.c_str());
            SetFileAttributesW(entry.Chars(), FILE_ATTRIBUTE_NORMAL);
            if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
                entry.Append(L'\\');
                RemoveFolder(entry);
            } else {
                DeleteFileW(entry.Chars());
            }
        } while (FindNextFileW(find, &found));
        FindClose(find);
    }
    RemoveDirectoryW(folder.Chars());
}

}  // namespace

ScratchFolder::ScratchFolder() {
    wchar_t temp[MAX_PATH] = {};
    GetTempPathW(MAX_PATH, temp);
    CreateDirectoryW(temp, nullptr);
    static int serial = 0;
    BOOL isMade = FALSE;
    // A process of the same number may have left one behind that was in use.
    do {
        path.Format(L"%stq-%u-%d\\", temp, static_cast<unsigned>(GetCurrentProcessId()), ++serial);
        isMade = CreateDirectoryW(path.Chars(), nullptr);
    } while (!isMade && GetLastError() == ERROR_ALREADY_EXISTS);
    EXPECT_TRUE(isMade) << GetLastError();
}

ScratchFolder::~ScratchFolder() {
    // The long form, for what a test has put below its own long path.
    clString whole(L"\\\\?\\");
    whole.Append(path);
    RemoveFolder(whole);
}

clString ScratchFolder::Path(const wchar_t* name) const {
    clString result(path);
    result.Append(name);
    return result;
}

clString ScratchFolder::AddFile(const wchar_t* name, const std::string& content) const {
    clString file = Path(name);
    HANDLE handle = CreateFileW(file.Chars(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                FILE_ATTRIBUTE_NORMAL, nullptr);
    EXPECT_NE(handle, INVALID_HANDLE_VALUE) << GetLastError();
    DWORD written = 0;
    EXPECT_TRUE(
        WriteFile(handle, content.data(), static_cast<DWORD>(content.size()), &written, nullptr));
    CloseHandle(handle);
    return file;
}

clString ScratchFolder::AddFolder(const wchar_t* name) const {
    clString folder = Path(name);
    EXPECT_TRUE(CreateDirectoryW(folder.Chars(), nullptr)) << GetLastError();
    return folder;
}

std::string FileContent(const clString& path) {
    HANDLE handle = CreateFileW(path.Chars(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE) return "(missing)";
    std::string content(GetFileSize(handle, nullptr), '\0');
    DWORD read = 0;
    EXPECT_TRUE(
        ReadFile(handle, content.data(), static_cast<DWORD>(content.size()), &read, nullptr));
    CloseHandle(handle);
    return content;
}
