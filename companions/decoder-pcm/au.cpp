#include <algorithm>
#include <string>
#include <string_view>

#include "companions/decoder-pcm/containers.h"
#include "companions/decoder-pcm/tag_keys.h"
#include "companions/decoder-pcm/text.h"

namespace companion::pcm {
namespace {

constexpr std::size_t headerBytes = 24;
constexpr std::size_t longestNote = 65536;
constexpr std::uint32_t unknownSize = 0xFFFFFFFF;

// The annotation is text, or, of some writers, one "key=value" to a line.
void TakeAnnotation(const std::u16string& note, Findings& findings) {
    if (Trimmed(note).empty()) return;
    NoteKind(findings, u"AU");
    constexpr int mostLines = 64;
    TagSet keyed;
    std::u16string_view rest = Trimmed(note);
    bool allKeyed = true;
    for (int i = 0; i < mostLines && allKeyed && !rest.empty(); ++i) {
        const std::size_t end = std::min(rest.find(u'\n'), rest.size());
        const std::u16string_view line = rest.substr(0, end);
        const std::size_t equals = line.find(u'=');
        allKeyed = equals != line.npos && equals != 0;
        if (allKeyed) AddKeyed(findings, keyed, line.substr(0, equals), line.substr(equals + 1));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    if (allKeyed)
        findings.nativeTags.Merge(keyed);
    else
        AddKeyed(findings, findings.nativeTags, u"comment", note);
}

}  // namespace

bool ReadAu(ByteReader& reader, Findings& findings) {
    const auto head = reader.Block(0, headerBytes);
    const std::string_view magic = Bytes(head, ByteOrder::big).Text(0, 4);
    if (head.size() != headerBytes || (magic != ".snd" && magic != "dns.")) return false;
    const Bytes bytes(head, magic == ".snd" ? ByteOrder::big : ByteOrder::little);

    const std::uint64_t start = bytes.U32(4);
    if (start < headerBytes || start > reader.Size()) return false;
    const std::uint64_t there = reader.Left(start);
    const std::uint64_t size = bytes.U32(8);
    const FourCode code = CodecOfAuEncoding(bytes.U32(12));

    Stream& stream = findings.stream;
    stream.codec = code.codec;
    stream.sampleRate = bytes.U32(16);
    stream.channels = bytes.U32(20);
    stream.dataBytes = size == unknownSize ? there : std::min(size, there);
    if (IsSampleCoded(code.codec)) {
        stream.validBits = code.bits;
    } else if (code.codec != Codec::unknown && stream.channels <= 1024) {
        // Codings of a few bits a sample; eight samples fill whole bytes.
        stream.blockBytes = code.bits * stream.channels;
        stream.framesPerBlock = 8;
    }
    const auto note = reader.Block(headerBytes, static_cast<std::size_t>(std::min<std::uint64_t>(
                                                    start - headerBytes, longestNote)));
    TakeAnnotation(FromUnknown(Bytes(note, ByteOrder::big).Text()), findings);
    return true;
}

}  // namespace companion::pcm
