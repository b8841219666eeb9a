#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "companions/common/byte_source.h"

namespace companion {
namespace {

class DescriptorSource final : public ByteSource {
public:
    explicit DescriptorSource(int descriptor) : _descriptor(descriptor) {}
    ~DescriptorSource() override { close(_descriptor); }
    DescriptorSource(const DescriptorSource&) = delete;
    DescriptorSource& operator=(const DescriptorSource&) = delete;

    // Only a regular file is accepted: a pipe could make a read wait for ever.
    bool TakeSize() {
        struct stat facts = {};
        if (fstat(_descriptor, &facts) != 0 || !S_ISREG(facts.st_mode) || facts.st_size < 0)
            return false;
        _size = static_cast<std::uint64_t>(facts.st_size);
        return true;
    }

    std::size_t ReadAt(std::uint64_t position, void* buffer, std::size_t count) override {
        if (position >= _size) return 0;
        const std::size_t wanted =
            static_cast<std::size_t>(std::min<std::uint64_t>(count, _size - position));
        std::size_t done = 0;
        while (done < wanted) {
            const ssize_t got = pread(_descriptor, static_cast<char*>(buffer) + done, wanted - done,
                                      static_cast<off_t>(position + done));
            if (got < 0 && errno == EINTR) continue;
            if (got <= 0) break;
            done += static_cast<std::size_t>(got);
        }
        return done;
    }

    std::uint64_t Size() const override { return _size; }

private:
    int _descriptor;
    std::uint64_t _size = 0;
};

void AppendUtf8(std::string& text, char32_t point) {
    const auto put = [&text](char32_t byte) { text.push_back(static_cast<char>(byte)); };
    if (point < 0x80) {
        put(point);
        return;
    }
    if (point < 0x800) {
        put(0xC0 | (point >> 6));
    } else {
        if (point < 0x10000) {
            put(0xE0 | (point >> 12));
        } else {
            put(0xF0 | (point >> 18));
            put(0x80 | ((point >> 12) & 0x3F));
        }
        put(0x80 | ((point >> 6) & 0x3F));
    }
    put(0x80 | (point & 0x3F));
}

// A lone surrogate becomes the replacement character: no such file is found.
std::string Utf8(const std::u16string& text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t point = text[i];
        const bool pair = point >= 0xD800 && point < 0xDC00 && i + 1 < text.size() &&
                          text[i + 1] >= 0xDC00 && text[i + 1] < 0xE000;
        if (pair) {
            point = 0x10000 + ((point - 0xD800) << 10) + (text[i + 1] - 0xDC00u);
            ++i;
        } else if (point >= 0xD800 && point < 0xE000) {
            point = 0xFFFD;
        }
        AppendUtf8(result, point);
    }
    return result;
}

}  // namespace

std::unique_ptr<ByteSource> OpenFile(const std::u16string& path) {
    if (path.empty()) return nullptr;
    const int descriptor = open(Utf8(path).c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0) return nullptr;
    auto source = std::make_unique<DescriptorSource>(descriptor);
    if (!source->TakeSize()) return nullptr;
    return source;
}

}  // namespace companion
