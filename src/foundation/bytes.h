// A resizable block of bytes.
#pragma once

#include <cstdint>

// The one container that reports a failed allocation: by the result of Resize
// and by a null `data`. No locks.
class clByteBuffer {
public:
    clByteBuffer() = default;
    clByteBuffer(const clByteBuffer&) = delete;
    clByteBuffer& operator=(const clByteBuffer&) = delete;
    ~clByteBuffer() { Free(); }

    // Makes `newSize` bytes usable; true if `data` is not null. A larger block is
    // a new one without the old contents. `zero` clears the used bytes. A
    // negative size fails like one that cannot be had. The cursors are lowered
    // to the size if they stand above it.
    bool Resize(std::int64_t newSize, bool zero);
    // Frees the block and sets all fields to 0.
    void Free();

    std::uint8_t* data = nullptr;
    std::int64_t size = 0;
    std::int64_t capacity = 0;
    std::int64_t cursorA = 0;
    std::int64_t cursorB = 0;
};
