#include "foundation/file.h"

#include "foundation/paths.h"

namespace {

constexpr wchar_t readCaption[] = L"File Read Error";
constexpr wchar_t writeCaption[] = L"File Write Error";

// True for Retry.
bool AskRetry(const wchar_t* what, const clString& path, const wchar_t* caption) {
    clString text(what);
    text.Append(L" '");
    text.Append(path);
    text.Append(L"'");
    return MessageBoxW(nullptr, text.Chars(), caption, MB_RETRYCANCEL | MB_ICONINFORMATION) ==
           IDRETRY;
}

}  // namespace

clFile::~clFile() {
    Close();
}

void clFile::Open(DWORD access, DWORD disposition, bool report) {
    const wchar_t* caption = (access & GENERIC_WRITE) != 0 ? writeCaption : readCaption;
    do {
        ownsHandle = true;
        reportErrors = report;
        handle = INVALID_HANDLE_VALUE;
        const clString text = LongPath(path, fileLongPathLimit);
        if (!text.IsEmpty()) {
            handle = CreateFileW(text.Chars(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                 disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
        }
    } while (!IsOpen() && report && AskRetry(L"Unable to open", path, caption));
}

void clFile::Close() {
    if (ownsHandle && IsOpen()) CloseHandle(handle);
    handle = INVALID_HANDLE_VALUE;
}

std::uint32_t clFile::Read(void* buffer, std::uint32_t count) {
    DWORD done = 0;
    do {
        done = 0;
        if (!IsOpen()) continue;
        SetLastError(ERROR_SUCCESS);
        if (ReadFile(handle, buffer, count, &done, nullptr) && done == count) break;
        const DWORD error = GetLastError();
        if (error == ERROR_SUCCESS || error == ERROR_HANDLE_EOF) break;  // the end of the file
    } while (reportErrors && AskRetry(L"Unable to read from", path, readCaption));
    return done;
}

bool clFile::Write(const void* buffer, std::uint32_t count) {
    if (buffer == nullptr) {
        if (count != 0 && reportErrors) {
            MessageBoxW(nullptr, L"Error writing a NULL buffer to file", writeCaption,
                        MB_OK | MB_ICONINFORMATION);
        }
        return count == 0;
    }
    do {
        DWORD done = 0;
        if (IsOpen() && WriteFile(handle, buffer, count, &done, nullptr) && done == count) {
            return true;
        }
    } while (reportErrors && AskRetry(L"Unable to write to", path, writeCaption));
    return false;
}

std::uint64_t clFile::Size() const {
    if (!IsOpen()) return 0;
    DWORD high = 0;
    const DWORD low = GetFileSize(handle, &high);
    return (std::uint64_t{high} << 32) | low;
}

bool clFile::ReadLine(clString& line) {
    constexpr wchar_t byteOrderMark = 0xFEFF;
    constexpr std::uint32_t size = sizeof(wchar_t);
    line.Assign(L"");
    wchar_t ch = 0;
    while (Read(&ch, size) == size) {
        if (ch == L'\n') return true;
        if (ch == L'\r') {
            if (Read(&ch, size) != size) break;
            if (ch != L'\n' && IsOpen()) {
                SetFilePointer(handle, -LONG{size}, nullptr, FILE_CURRENT);
            }
            return true;
        }
        if (ch != byteOrderMark || !line.IsEmpty()) line.Append(ch);  // a NUL appends nothing
    }
    return !line.IsEmpty();
}
