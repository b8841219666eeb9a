#include "companions/decoder-taglib/cached_source.h"

#include <algorithm>
#include <cstring>

namespace companion {

bool CachedSource::Spend(std::size_t count) {
    ++_uses;
    _bytes += count;
    if (_uses > _limits.calls || _bytes > _limits.bytes) _exhausted = true;
    return !_exhausted;
}

const CachedSource::Page& CachedSource::PageAt(std::uint64_t start) {
    Page* oldest = &_pages.front();
    for (Page& page : _pages) {
        if (!page.bytes.empty() && page.start == start) {
            page.lastUse = _uses;
            return page;
        }
        if (page.lastUse < oldest->lastUse) oldest = &page;
    }
    oldest->bytes.resize(pageBytes);
    oldest->bytes.resize(_file.ReadAt(start, oldest->bytes.data(), pageBytes));
    oldest->start = start;
    oldest->lastUse = _uses;
    return *oldest;
}

std::size_t CachedSource::ReadAt(std::uint64_t position, void* buffer, std::size_t count) {
    if (position >= Size()) return 0;
    count = static_cast<std::size_t>(std::min<std::uint64_t>(count, Size() - position));
    if (count == 0 || !Spend(count)) return 0;
    // A large piece would only push out the pages and be copied twice.
    if (count > 2 * pageBytes) return _file.ReadAt(position, buffer, count);
    std::size_t done = 0;
    while (done < count) {
        const std::uint64_t at = position + done;
        const Page& page = PageAt(at - at % pageBytes);
        const std::size_t inside = static_cast<std::size_t>(at % pageBytes);
        if (inside >= page.bytes.size()) break;
        const std::size_t step = std::min(count - done, page.bytes.size() - inside);
        std::memcpy(static_cast<std::uint8_t*>(buffer) + done, page.bytes.data() + inside, step);
        done += step;
    }
    return done;
}

}  // namespace companion
