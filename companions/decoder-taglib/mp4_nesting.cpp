#include "companions/decoder-taglib/mp4_nesting.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

#include "companions/decoder-taglib/byte_order.h"

namespace companion {
namespace {

constexpr int deepestNesting = 24;
constexpr int mostBoxes = 100'000;
constexpr std::string_view containers[] = {"moov", "udta", "mdia", "meta", "ilst", "stbl",
                                           "minf", "moof", "traf", "trak", "stsd"};
// A "meta" that begins with one of these has no version field.
constexpr std::string_view plainMeta[] = {"hdlr", "ilst", "mhdr", "ctry", "lang"};

template <std::size_t Count>
bool IsOneOf(Bytes name, const std::string_view (&choices)[Count]) {
    return std::any_of(std::begin(choices), std::end(choices),
                       [&](std::string_view choice) { return HasText(name, 0, choice); });
}

class NestingCheck {
public:
    explicit NestingCheck(ByteSource& source) : _source(source) {}

    bool Run() {
        while (_position + 8 <= _source.Size()) {
            if (!Visit(0)) break;
        }
        return _sane;
    }

private:
    // Moves behind the box at the position. False where the walk ends.
    bool Visit(int depth) {
        if (depth > deepestNesting || ++_boxes > mostBoxes) {
            _sane = false;
            return false;
        }
        const std::uint64_t start = _position;
        std::array<std::uint8_t, 16> header{};
        const std::size_t got = _source.ReadAt(start, header.data(), header.size());
        if (got < 8) return false;
        std::uint64_t length = BigEndian(header, 0, 4);
        _position = start + 8;
        if (length == 0) length = _source.Size() - start;
        if (length == 1) {
            length = got < 16 ? 0 : BigEndian64(header, 8);
            _position = start + 16;
        }
        if (length < 8 || length > _source.Size() - start) return false;
        const Bytes name = Bytes(header).subspan(4, 4);
        if (IsOneOf(name, containers)) return VisitChildren(name, start + length, depth);
        _position = start + length;
        return true;
    }

    bool VisitChildren(Bytes name, std::uint64_t end, int depth) {
        if (HasText(name, 0, "meta")) {
            std::array<std::uint8_t, 8> first{};
            _source.ReadAt(_position, first.data(), first.size());
            if (!IsOneOf(Bytes(first).subspan(4), plainMeta)) _position += 4;
        } else if (HasText(name, 0, "stsd")) {
            _position += 8;
        }
        while (_position < end) {
            // A box that cannot be ends its level; TagLib has then gone to the
            // end of the file, which ends the levels above as well.
            if (!Visit(depth + 1)) {
                _position = _source.Size();
                return _sane;
            }
        }
        return true;
    }

    ByteSource& _source;
    std::uint64_t _position = 0;
    int _boxes = 0;
    bool _sane = true;
};

}  // namespace

bool Mp4NestingIsSane(ByteSource& source) {
    return NestingCheck(source).Run();
}

}  // namespace companion
