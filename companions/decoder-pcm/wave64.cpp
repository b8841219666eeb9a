#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "companions/decoder-pcm/containers.h"
#include "companions/decoder-pcm/id3v2.h"
#include "companions/decoder-pcm/text.h"
#include "companions/decoder-pcm/wave_format.h"

namespace companion::pcm {
namespace {

// An identifier is four letters and twelve bytes that say what kind they are.
constexpr std::string_view outerSuffix("\x2E\x91\xCF\x11\xA5\xD6\x28\xDB\x04\xC1\x00\x00", 12);
constexpr std::string_view chunkSuffix("\xF3\xAC\xD3\x11\x8C\xD1\x00\xC0\x4F\x8E\xDB\x8A", 12);
constexpr std::string_view listSuffix("\x2F\x91\xCF\x11\xA5\xD6\x28\xDB\x04\xC1\x00\x00", 12);
constexpr std::string_view summaryList(
    "\xBC\x94\x5F\x92\x5A\x52\xD2\x11\x86\xDC\x00\xC0\x4F\x8E\xDB\x8A", 16);

constexpr std::size_t headerBytes = 24;  // identifier and size, which the size counts
constexpr std::size_t longestFormat = 4096;
constexpr std::size_t longestList = std::size_t{16} << 20;

std::size_t Bounded(std::uint64_t size, std::size_t most) {
    return static_cast<std::size_t>(std::min<std::uint64_t>(size, most));
}

// A count, then fields of a RIFF identifier, a size and text in UTF-16.
void TakeSummary(const Bytes& list, Findings& findings) {
    const std::uint32_t count = std::min<std::uint32_t>(list.U32(0), mostChunks);
    std::size_t position = 4;
    for (std::uint32_t i = 0; i < count && list.Has(position, 8); ++i) {
        const std::size_t size = list.U32(position + 4);
        const std::string_view text = list.Text(position + 8, std::min<std::size_t>(size, 65536));
        NoteKind(findings, u"INFO");
        AddInfoField(list.Text(position, 4), FromUtf16(text, ByteOrder::little), findings);
        position += 8 + size;
    }
}

struct Progress {
    bool hasFormat = false;
    bool hasData = false;
};

void TakeChunk(ByteReader& reader, std::string_view id, std::uint64_t start, std::uint64_t size,
               Findings& findings, Progress& progress) {
    const std::string_view name = id.substr(0, 4);
    const bool inner = id.substr(4) == chunkSuffix;
    if (inner && name == "fmt " && !progress.hasFormat) {
        const auto block = reader.Block(start, Bounded(size, longestFormat));
        progress.hasFormat = TakeWaveFormat(Bytes(block, ByteOrder::little), findings.stream);
    } else if (inner && name == "data" && !progress.hasData) {
        progress.hasData = true;
        findings.stream.dataBytes = size;
    } else if (inner && name == "fact") {
        const auto block = reader.Block(start, Bounded(size, 8));
        const Bytes bytes(block, ByteOrder::little);
        findings.stream.declaredFrames = size < 8 ? bytes.U32(0) : bytes.U64(0);
    } else if (id == summaryList) {
        const auto block = reader.Block(start, Bounded(size, longestList));
        TakeSummary(Bytes(block, ByteOrder::little), findings);
    } else if (name == "list" && id.substr(4) == listSuffix) {
        const auto block = reader.Block(start, Bounded(size, longestList));
        const Bytes bytes(block, ByteOrder::little);
        if (bytes.Text(0, 4) == "INFO") TakeInfoList(bytes.Part(4), findings);
    } else if (inner && (name == "id3 " || name == "ID3 ")) {
        ReadId3v2(reader, start, size, findings);
    }
}

}  // namespace

bool ReadWave64(ByteReader& reader, Findings& findings) {
    const auto head = reader.Block(0, 40);
    const std::string_view magic = Bytes(head, ByteOrder::little).Text();
    const bool ours = magic.size() == 40 && magic.substr(0, 4) == "riff" &&
                      magic.substr(4, 12) == outerSuffix && magic.substr(24, 4) == "wave" &&
                      magic.substr(28, 12) == chunkSuffix;
    if (!ours) return false;

    Progress progress;
    std::uint64_t position = 40;
    for (int i = 0; i < mostChunks && reader.Left(position) >= headerBytes; ++i) {
        const auto header = reader.Block(position, headerBytes);
        const Bytes bytes(header, ByteOrder::little);
        const std::uint64_t declared = bytes.U64(16);
        if (declared < headerBytes) break;
        const std::uint64_t start = position + headerBytes;
        const std::uint64_t size = std::min(declared - headerBytes, reader.Left(start));
        TakeChunk(reader, bytes.Text(0, 16), start, size, findings, progress);
        if (size != declared - headerBytes) break;
        position = start + size;
        position += (8 - position % 8) % 8;
    }
    Stream& stream = findings.stream;
    if (IsSampleCoded(stream.codec)) stream.declaredFrames = 0;
    return progress.hasFormat && progress.hasData;
}

}  // namespace companion::pcm
