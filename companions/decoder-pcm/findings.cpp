#include "companions/decoder-pcm/findings.h"

#include <algorithm>

#include "companions/common/values.h"
#include "companions/decoder-pcm/text.h"

namespace companion::pcm {
namespace {

void AddProperty(std::vector<Tag>& properties, const char16_t* name, std::u16string value) {
    if (!value.empty()) properties.push_back({name, std::move(value), {}});
}

}  // namespace

void NoteKind(Findings& findings, const std::u16string& kind) {
    auto& kinds = findings.tagKinds;
    if (std::find(kinds.begin(), kinds.end(), kind) == kinds.end()) kinds.push_back(kind);
}

bool Conclude(Findings& findings, FileFacts& facts) {
    Stream& stream = findings.stream;
    if (!Settle(stream)) return false;
    const std::uint64_t frames = FramesOf(stream);
    facts.format = DecodedFormat(stream);
    facts.lengthMs = LengthMs(stream, frames);
    facts.sourceBytes = SourceBytes(stream, frames);
    facts.bitRate = BitRate(stream, frames);

    TagSet tags = findings.richTags;
    tags.Merge(findings.nativeTags);
    tags.AddTotal(u"Track", findings.trackTotal);
    tags.AddTotal(u"Disc", findings.discTotal);
    facts.tags = tags.Tags();

    const bool known = stream.codec != Codec::unknown;
    auto& properties = facts.properties;
    properties.clear();
    AddProperty(properties, u"Audio Quality", known ? QualityText(stream, facts.bitRate) : u"");
    AddProperty(properties, u"Codec", TraitsOf(stream.codec).name);
    AddProperty(properties, u"Encoder", std::u16string(Trimmed(findings.encoder)));
    AddProperty(properties, u"Channel Layout", LayoutText(stream));
    if (known)
        AddProperty(properties, u"Bit Rate Mode",
                    stream.variableBitRate ? u"Variable" : u"Constant");
    AddProperty(properties, u"ID Tag", JoinedValues(findings.tagKinds));
    AddProperty(properties, u"Cover Art", findings.coverArt ? u"Yes" : u"No");
    return true;
}

}  // namespace companion::pcm
