// A file with a few pages of it in memory and a limit on the work done with it.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "companions/common/byte_source.h"

namespace companion {

// Tag readers ask for a few bytes at a time, here and there; each call to the
// system is dear, so whole pages are fetched and the last few kept.
//
// A damaged file can send a reader round and round, or through all of a huge
// file. Behind the limits of calls and bytes every read gives nothing, which
// any reader takes for the end of the file. One thread.
class CachedSource final : public ByteSource {
public:
    struct Limits {
        std::uint64_t calls = 150'000;
        std::uint64_t bytes = 1ull << 30;
    };

    // `file` must outlive this object.
    explicit CachedSource(ByteSource& file) : CachedSource(file, Limits{}) {}
    CachedSource(ByteSource& file, Limits limits) : _file(file), _limits(limits) {}

    std::size_t ReadAt(std::uint64_t position, void* buffer, std::size_t count) override;
    std::uint64_t Size() const override { return _file.Size(); }

    // True once a limit has been met: what was read since then is not the file.
    bool Exhausted() const { return _exhausted; }

private:
    static constexpr std::size_t pageBytes = 32ull * 1024;

    struct Page {
        std::uint64_t start = 0;
        std::uint64_t lastUse = 0;
        std::vector<std::uint8_t> bytes;
    };

    const Page& PageAt(std::uint64_t start);
    bool Spend(std::size_t count);

    ByteSource& _file;
    Limits _limits;
    std::array<Page, 6> _pages;
    std::uint64_t _uses = 0;
    std::uint64_t _bytes = 0;
    bool _exhausted = false;
};

}  // namespace companion
