#include <windows.h>

#include <algorithm>

#include "companions/common/byte_source.h"
#include "companions/common/extended_path_win32.h"

namespace companion {
namespace {

constexpr std::size_t longPath = 248;  // what the platform takes without the prefix

class FileHandle {
public:
    explicit FileHandle(HANDLE raw) : _raw(raw) {}
    ~FileHandle() {
        if (Valid()) CloseHandle(_raw);
    }
    FileHandle(const FileHandle&) = delete;
    FileHandle& operator=(const FileHandle&) = delete;
    FileHandle(FileHandle&& other) noexcept : _raw(other._raw) {
        other._raw = INVALID_HANDLE_VALUE;
    }
    FileHandle& operator=(FileHandle&&) = delete;

    bool Valid() const { return _raw != INVALID_HANDLE_VALUE; }
    HANDLE Get() const { return _raw; }

private:
    HANDLE _raw;
};

class HandleSource final : public ByteSource {
public:
    HandleSource(FileHandle file, std::uint64_t size) : _file(std::move(file)), _size(size) {}

    // A position of the handle and a plain read: cheaper than a read that
    // brings its own offset where each call crosses to a server process.
    std::size_t ReadAt(std::uint64_t position, void* buffer, std::size_t count) override {
        if (position >= _size || !SeekTo(position)) return 0;
        const std::size_t wanted =
            static_cast<std::size_t>(std::min<std::uint64_t>(count, _size - position));
        std::size_t done = 0;
        while (done < wanted) {
            const DWORD step = static_cast<DWORD>(std::min<std::size_t>(wanted - done, 1u << 24));
            DWORD got = 0;
            BYTE* const to = static_cast<BYTE*>(buffer) + done;
            if (!::ReadFile(_file.Get(), to, step, &got, nullptr) || got == 0) {
                _position = unknown;
                return done;
            }
            done += got;
            _position += got;
        }
        return done;
    }

    std::uint64_t Size() const override { return _size; }

private:
    static constexpr std::uint64_t unknown = ~std::uint64_t{0};

    bool SeekTo(std::uint64_t position) {
        if (position == _position) return true;
        LARGE_INTEGER target;
        target.QuadPart = static_cast<LONGLONG>(position);
        const bool moved = SetFilePointerEx(_file.Get(), target, nullptr, FILE_BEGIN) != 0;
        _position = moved ? position : unknown;
        return moved;
    }

    FileHandle _file;
    std::uint64_t _size;
    std::uint64_t _position = 0;
};

std::wstring Wide(const std::u16string& path) {
    return std::wstring(path.begin(), path.end());
}

}  // namespace

std::wstring ExtendedPath(const std::wstring& path) {
    if (path.size() < longPath || path.starts_with(L"\\\\?\\") || path.starts_with(L"\\\\.\\"))
        return path;
    std::wstring full(path.size() + MAX_PATH, L'\0');
    const DWORD length =
        GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
    if (length == 0 || length >= full.size()) return path;
    full.resize(length);
    if (full.starts_with(L"\\\\")) return L"\\\\?\\UNC" + full.substr(1);
    return L"\\\\?\\" + full;
}

std::unique_ptr<ByteSource> OpenFile(const std::u16string& path) {
    if (path.empty()) return nullptr;
    const std::wstring name = ExtendedPath(Wide(path));
    FileHandle file(CreateFileW(name.c_str(), GENERIC_READ,
                                FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    // A pipe or a device could make the first read wait for ever.
    if (!file.Valid() || GetFileType(file.Get()) != FILE_TYPE_DISK) return nullptr;
    LARGE_INTEGER size;
    if (!GetFileSizeEx(file.Get(), &size) || size.QuadPart < 0) return nullptr;
    return std::make_unique<HandleSource>(std::move(file),
                                          static_cast<std::uint64_t>(size.QuadPart));
}

}  // namespace companion
