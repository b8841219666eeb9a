#include "tests/support/converter_side.h"

#include <windows.h>

namespace {

std::wstring PlatformPath(const std::wstring& path) {
    return path.size() < 248 || path.starts_with(L"\\\\") ? path : L"\\\\?\\" + path;
}

HANDLE OpenForReading(const std::wstring& path) {
    return CreateFileW(PlatformPath(path).c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                       nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
}

}  // namespace

std::wstring ConverterOption(const std::wstring& commandLine, const std::wstring& name) {
    const std::wstring opening = L" -" + name + L"=\"";
    const auto start = commandLine.find(opening);
    if (start == std::wstring::npos) return {};
    const auto first = start + opening.size();
    const auto quote = commandLine.find(L'"', first);
    return quote == std::wstring::npos ? std::wstring() : commandLine.substr(first, quote - first);
}

std::optional<std::string> ReadBytes(const std::wstring& path) {
    const HANDLE file = OpenForReading(path);
    if (file == INVALID_HANDLE_VALUE) return std::nullopt;
    std::string bytes;
    char block[65536];
    DWORD got = 0;
    while (ReadFile(file, block, sizeof(block), &got, nullptr) && got > 0)
        bytes.append(block, got);
    CloseHandle(file);
    return bytes;
}

bool WriteBytes(const std::wstring& path, std::string_view bytes) {
    const HANDLE file = CreateFileW(PlatformPath(path).c_str(), GENERIC_WRITE, FILE_SHARE_READ,
                                    nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    DWORD written = 0;
    const bool done =
        WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) != 0 &&
        written == bytes.size();
    CloseHandle(file);
    return done;
}

bool FileExists(const std::wstring& path) {
    return GetFileAttributesW(PlatformPath(path).c_str()) != INVALID_FILE_ATTRIBUTES;
}

std::string NarrowUtf8(std::wstring_view text) {
    const int length = static_cast<int>(text.size());
    const int size =
        WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), length, bytes.data(), size, nullptr, nullptr);
    return bytes;
}

std::wstring WideUtf8(std::string_view text) {
    const int length = static_cast<int>(text.size());
    const int size = MultiByteToWideChar(CP_UTF8, 0, text.data(), length, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(size), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), length, wide.data(), size);
    return wide;
}

std::wstring EnvironmentText(const wchar_t* name) {
    const DWORD size = GetEnvironmentVariableW(name, nullptr, 0);
    if (size == 0) return {};
    std::wstring text(size, L'\0');
    text.resize(GetEnvironmentVariableW(name, text.data(), size));
    return text;
}

EventState LookAtEvent(const std::wstring& name) {
    const HANDLE event = OpenEventW(SYNCHRONIZE, FALSE, name.c_str());
    if (event == nullptr) return EventState::Missing;
    const bool signalled = WaitForSingleObject(event, 0) == WAIT_OBJECT_0;
    CloseHandle(event);
    return signalled ? EventState::Signalled : EventState::Unsignalled;
}

bool SignalEvent(const std::wstring& name) {
    const HANDLE event = OpenEventW(EVENT_MODIFY_STATE, FALSE, name.c_str());
    if (event == nullptr) return false;
    SetEvent(event);
    CloseHandle(event);
    return true;
}
