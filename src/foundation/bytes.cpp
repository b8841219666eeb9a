#include "foundation/bytes.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

bool clByteBuffer::Resize(std::int64_t newSize, bool zero) {
    if (capacity == 0 || capacity < newSize || newSize < 0) {
        std::free(data);
        const std::int64_t wanted = std::max<std::int64_t>(newSize, 1);
        // malloc, since a plug-in's size must be able to fail without an exception.
        data = newSize < 0
                   ? nullptr
                   : static_cast<std::uint8_t*>(std::malloc(static_cast<std::size_t>(wanted)));
        capacity = data != nullptr ? wanted : 0;
        newSize = data != nullptr ? newSize : 0;
    }
    size = newSize;
    if (zero && data != nullptr) std::memset(data, 0, static_cast<std::size_t>(size));
    cursorA = std::min(cursorA, size);
    cursorB = std::min(cursorB, size);
    return data != nullptr;
}

void clByteBuffer::Free() {
    std::free(data);
    data = nullptr;
    size = capacity = cursorA = cursorB = 0;
}
