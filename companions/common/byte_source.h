// A file opened for reading by its UTF-16 path, wherever the library runs.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace companion {

// Positions and sizes are bytes from the start of the file. One thread.
class ByteSource {
public:
    virtual ~ByteSource() = default;

    // Up to `count` bytes from `position`; the number of bytes read, 0 at or
    // behind the end and on an error.
    virtual std::size_t ReadAt(std::uint64_t position, void* buffer, std::size_t count) = 0;

    virtual std::uint64_t Size() const = 0;
};

// Opens for reading and shares the file with readers, writers and deletion.
// Paths of 248 characters and more get the extended prefix where the platform
// needs it. Null when the file cannot be opened.
std::unique_ptr<ByteSource> OpenFile(const std::u16string& path);

}  // namespace companion
