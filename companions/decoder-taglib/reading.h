// One file while it is read: what the readers of all formats share.
#pragma once

#include <apetag.h>
#include <audioproperties.h>
#include <id3v2tag.h>
#include <tfile.h>
#include <xiphcomment.h>

#include <string>
#include <vector>

#include "companions/common/byte_source.h"
#include "companions/common/tag_block.h"
#include "companions/decoder-taglib/properties.h"
#include "companions/decoder-taglib/stored_audio.h"
#include "companions/decoder-taglib/tag_mapping.h"
#include "companions/decoder-taglib/taglib_stream.h"

namespace companion {

constexpr auto fastReading = TagLib::AudioProperties::Fast;
constexpr auto averageReading = TagLib::AudioProperties::Average;

// What one file's reader is given and fills.
struct Reading {
    ByteSource& source;
    TagLibStream stream;
    AudioSpan span;
    AudioFacts& audio;
    std::vector<Tag>& tags;
    SpecialTags special;
};

// Note that a tag is there and take from it what the common names leave out.
// Nothing happens when it is not `present`.
void TakeId3v1(bool present, AudioFacts& audio);
void TakeId3v2(const TagLib::ID3v2::Tag* tag, bool present, Reading& reading);
void TakeApe(const TagLib::APE::Tag* tag, bool present, Reading& reading);
void TakeXiph(TagLib::Ogg::XiphComment* comment, Reading& reading);

// The last step of every reader: the tags under their common names. True.
bool TakeTags(const TagLib::File& file, Reading& reading);

// A codec that gives back every sample, `bits` each; such streams vary in rate.
void MarkLossless(AudioFacts& audio, int bits, std::u16string codec);

// What all of TagLib's formats tell alike. False for a file that is none.
template <typename File>
bool TakeCommonFacts(const File& file, Reading& reading) {
    if (!file.isValid() || !file.audioProperties()) return false;
    const auto& found = *file.audioProperties();
    reading.audio.channels = found.channels();
    reading.audio.sampleRate = found.sampleRate();
    reading.audio.lengthMs = found.lengthInMilliseconds();
    reading.audio.bytes = static_cast<std::int64_t>(reading.span.Length());
    return true;
}

}  // namespace companion
