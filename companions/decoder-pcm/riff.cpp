#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "companions/decoder-pcm/containers.h"
#include "companions/decoder-pcm/id3v2.h"
#include "companions/decoder-pcm/tag_keys.h"
#include "companions/decoder-pcm/text.h"
#include "companions/decoder-pcm/wave_format.h"

namespace companion::pcm {
namespace {

constexpr std::uint32_t unknownSize = 0xFFFFFFFF;
constexpr std::size_t longestFormat = 4096;
constexpr std::size_t longestList = std::size_t{16} << 20;
constexpr std::size_t broadcastBytes = 602;
constexpr std::size_t mostLongSizes = 1024;

struct LongSize {
    std::string id;
    std::uint64_t size;
};

class RiffFile {
public:
    RiffFile(ByteReader& reader, Findings& findings, ByteOrder order, bool isLong)
        : _reader(reader), _findings(findings), _order(order), _long(isLong) {}

    bool Read() {
        const auto head = Take(4, 4);
        _riffSize = View(head).U32(0);
        std::uint64_t position = 12;
        for (int i = 0; i < mostChunks && _reader.Left(position) >= 8; ++i) {
            const auto header = Take(position, 8);
            const std::string id(View(header).Text(0, 4));
            if (!IsChunkId(id)) break;
            const std::uint64_t start = position + 8;
            const std::uint64_t declared = SizeOf(id, View(header).U32(4), start);
            const std::uint64_t size = std::min(declared, _reader.Left(start));
            TakeChunk(id, start, size);
            if (declared > size) break;
            position = Behind(start, size);
        }
        return _hasFormat && Finish();
    }

private:
    std::vector<std::uint8_t> Take(std::uint64_t position, std::size_t count) {
        return _reader.Block(position, count);
    }

    Bytes View(const std::vector<std::uint8_t>& block) const { return Bytes(block, _order); }

    static bool IsChunkId(std::string_view id) {
        return id.size() == 4 && std::all_of(id.begin(), id.end(),
                                             [](char unit) { return unit >= 32 && unit < 127; });
    }

    std::uint64_t SizeOf(const std::string& id, std::uint32_t size, std::uint64_t start) const {
        if (_long && size == unknownSize) {
            const auto found = std::find_if(_longSizes.begin(), _longSizes.end(),
                                            [&id](const LongSize& row) { return row.id == id; });
            if (found != _longSizes.end() && found->size != 0) return found->size;
        }
        // A program that wrote to a pipe, or died, has not come back to put
        // the size in: all that follows is audio.
        const bool unfinished =
            size == unknownSize || (size == 0 && (_riffSize == 0 || _riffSize == unknownSize));
        return id == "data" && unfinished ? _reader.Left(start) : size;
    }

    // A chunk of odd size is followed by a filling byte, which some writers
    // forget: then the next identifier begins where the filling should be.
    std::uint64_t Behind(std::uint64_t start, std::uint64_t size) {
        const std::uint64_t end = start + size;
        if (size % 2 == 0) return end;
        const auto next = Take(end, 4);
        const bool forgotten = !next.empty() && next[0] != 0 && IsChunkId(View(next).Text());
        return forgotten ? end : end + 1;
    }

    void TakeChunk(const std::string& id, std::uint64_t start, std::uint64_t size) {
        if (id == "ds64" && _long) {
            TakeLongSizes(start, size);
        } else if (id == "fmt " && !_hasFormat) {
            const auto block = Take(start, Bounded(size, longestFormat));
            _hasFormat = TakeWaveFormat(View(block), _findings.stream);
        } else if (id == "fact") {
            const auto block = Take(start, Bounded(size, 4));
            _factFrames = View(block).U32(0);
        } else if (id == "data" && !_hasData) {
            _hasData = true;
            _findings.stream.dataBytes = size;
        } else if (id == "LIST") {
            TakeList(start, size);
        } else if (id == "id3 " || id == "ID3 ") {
            ReadId3v2(_reader, start, size, _findings);
        } else if (id == "bext") {
            TakeBroadcast(start, size);
        }
    }

    static std::size_t Bounded(std::uint64_t size, std::size_t most) {
        return static_cast<std::size_t>(std::min<std::uint64_t>(size, most));
    }

    void TakeLongSizes(std::uint64_t start, std::uint64_t size) {
        const auto block = Take(start, Bounded(size, 28 + mostLongSizes * 12));
        const Bytes bytes = View(block);
        if (bytes.Size() < 24) return;
        _longSizes.push_back({"data", bytes.U64(8)});
        _longFrames = bytes.U64(16);
        const std::size_t count = std::min<std::size_t>(bytes.U32(24), mostLongSizes);
        for (std::size_t i = 0; i < count && bytes.Has(28 + i * 12, 12); ++i)
            _longSizes.push_back({std::string(bytes.Text(28 + i * 12, 4)), bytes.U64(32 + i * 12)});
    }

    void TakeList(std::uint64_t start, std::uint64_t size) {
        const auto type = Take(start, Bounded(size, 4));
        if (View(type).Text() != "INFO") return;
        const auto block = Take(start + 4, Bounded(size - 4, longestList));
        TakeInfoList(View(block), _findings);
    }

    // What a broadcaster's recorder says, in case nothing better is there.
    void TakeBroadcast(std::uint64_t start, std::uint64_t size) {
        const auto block = Take(start, Bounded(size, broadcastBytes));
        const Bytes bytes = View(block);
        if (bytes.Size() < broadcastBytes) return;
        NoteKind(_findings, u"BEXT");
        AddKeyed(_findings, _broadcastTags, u"comment", FromUnknown(bytes.Text(0, 256)));
        AddKeyed(_findings, _broadcastTags, u"encodedby", FromUnknown(bytes.Text(256, 32)));
        const std::u16string date = FromUnknown(bytes.Text(320, 10));
        if (LeadingNumber(date) != 0) AddKeyed(_findings, _broadcastTags, u"date", date);
    }

    bool Finish() {
        Stream& stream = _findings.stream;
        // The count is for codings only whose length nothing else tells.
        if (!IsSampleCoded(stream.codec))
            stream.declaredFrames = _long && (_factFrames == 0 || _factFrames == unknownSize)
                                        ? _longFrames
                                    : _factFrames == unknownSize ? 0
                                                                 : _factFrames;
        _findings.nativeTags.Merge(_broadcastTags);
        return _hasData;
    }

    ByteReader& _reader;
    Findings& _findings;
    ByteOrder _order;
    bool _long;
    std::uint32_t _riffSize = 0;
    bool _hasFormat = false;
    bool _hasData = false;
    std::uint64_t _factFrames = 0;
    std::uint64_t _longFrames = 0;
    std::vector<LongSize> _longSizes;
    TagSet _broadcastTags;
};

}  // namespace

bool ReadRiff(ByteReader& reader, Findings& findings) {
    const auto head = reader.Block(0, 12);
    const Bytes bytes(head, ByteOrder::little);
    if (bytes.Text(8, 4) != "WAVE") return false;
    const std::string_view magic = bytes.Text(0, 4);
    if (magic != "RIFF" && magic != "RIFX" && magic != "RF64" && magic != "BW64") return false;
    const ByteOrder order = magic == "RIFX" ? ByteOrder::big : ByteOrder::little;
    RiffFile file(reader, findings, order, magic == "RF64" || magic == "BW64");
    return file.Read();
}

}  // namespace companion::pcm
