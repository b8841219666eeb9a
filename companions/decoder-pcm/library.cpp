// The PCM decoder library, as the exports want it.
#include <memory>

#include "companions/common/byte_source.h"
#include "companions/common/decoder_library.h"
#include "companions/decoder-pcm/containers.h"

namespace companion {
namespace {

constexpr AudioType audioTypes[] = {
    {u".wav", u"Wave Audio"},
    {u".wave", u"Wave Audio"},
    {u".bwf", u"Broadcast Wave Audio"},
    {u".rf64", u"RF64 Wave Audio"},
    {u".w64", u"Wave64 Audio"},
    {u".aif", u"AIFF Audio"},
    {u".aiff", u"AIFF Audio"},
    {u".aifc", u"Compressed AIFF Audio"},
    {u".au", u"Sun Audio"},
    {u".snd", u"Sun Audio"},
    {u".caf", u"Core Audio"},
};

}  // namespace

namespace pcm {

bool ReadContainer(ByteReader& reader, Findings& findings) {
    const auto head = reader.Block(0, 4);
    const std::string_view magic = Bytes(head, ByteOrder::big).Text();
    if (magic == "RIFF" || magic == "RIFX" || magic == "RF64" || magic == "BW64")
        return ReadRiff(reader, findings);
    if (magic == "riff") return ReadWave64(reader, findings);
    if (magic == "FORM") return ReadAiff(reader, findings);
    if (magic == ".snd" || magic == "dns.") return ReadAu(reader, findings);
    return magic == "caff" && ReadCaf(reader, findings);
}

}  // namespace pcm

std::span<const AudioType> AudioTypes() {
    return audioTypes;
}

const char16_t* PropertyElements() {
    return u"Audio Quality\rCodec\rEncoder\rChannel Layout\rBit Rate Mode\rID Tag\r"
           u"Cover Art\rCopyright";
}

void PrepareLibrary() {}

// The content alone decides: a name with the wrong ending is common, and a
// container is known by its first bytes.
bool ReadFile(const std::u16string& path, FileFacts& facts) {
    const std::unique_ptr<ByteSource> source = OpenFile(path);
    if (!source) return false;
    pcm::ByteReader reader(*source);
    pcm::Findings findings;
    return pcm::ReadContainer(reader, findings) && pcm::Conclude(findings, facts);
}

}  // namespace companion
