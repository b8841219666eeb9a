#include "companions/decoder-taglib/reading.h"

#include <apefooter.h>
#include <id3v2header.h>
#include <popularimeterframe.h>
#include <tpropertymap.h>

#include "companions/decoder-taglib/rating.h"

namespace companion {

void TakeId3v1(bool present, AudioFacts& audio) {
    if (present) audio.tagKinds.push_back(u"ID3v1");
}

void TakeId3v2(const TagLib::ID3v2::Tag* tag, bool present, Reading& reading) {
    if (!present || !tag) return;
    const unsigned version = tag->header()->majorVersion();
    reading.audio.tagKinds.push_back(u"ID3v2." +
                                     std::u16string(1, static_cast<char16_t>(u'0' + version % 10)));
    const auto& frames = tag->frameListMap();
    if (frames.contains("APIC")) reading.audio.coverArt = true;
    for (const TagLib::ID3v2::Frame* frame : frames.value("POPM")) {
        const auto* popularity = dynamic_cast<const TagLib::ID3v2::PopularimeterFrame*>(frame);
        if (!popularity) continue;
        const int rating = RatingFromPopularity(popularity->rating());
        if (!reading.special.rating || *reading.special.rating == 0)
            reading.special.rating = rating;
        if (!reading.special.playCount && popularity->counter() != 0)
            reading.special.playCount = popularity->counter();
    }
}

void TakeApe(const TagLib::APE::Tag* tag, bool present, Reading& reading) {
    if (!present || !tag) return;
    const bool old = tag->footer() && tag->footer()->version() < 2000;
    reading.audio.tagKinds.push_back(old ? u"APEv1" : u"APEv2");
    const auto& items = tag->itemListMap();
    if (items.contains("COVER ART (FRONT)")) reading.audio.coverArt = true;
}

void TakeXiph(TagLib::Ogg::XiphComment* comment, Reading& reading) {
    if (!comment) return;
    reading.audio.tagKinds.push_back(u"Vorbis Comment");
    reading.audio.encoder = ToText(comment->vendorID());
    const auto& fields = comment->fieldListMap();
    if (fields.contains("ENCODER")) reading.audio.encoder = ToText(fields["ENCODER"].front());
    auto pictures = comment->pictureList();
    if (!pictures.isEmpty()) reading.audio.coverArt = true;
}

bool TakeTags(const TagLib::File& file, Reading& reading) {
    const TagLib::PropertyMap properties = file.properties();
    reading.tags = MapTags(properties, reading.special);
    if (!reading.audio.encoder.empty()) return true;
    for (const char* key : {"ENCODING", "ENCODER", "ENCODERSETTINGS"}) {
        const TagLib::StringList values = properties.value(key);
        if (!values.isEmpty()) reading.audio.encoder = ToText(values.front());
        if (!reading.audio.encoder.empty()) break;
    }
    return true;
}

void MarkLossless(AudioFacts& audio, int bits, std::u16string codec) {
    audio.lossless = true;
    audio.bitsPerSample = bits;
    audio.mode = BitRateMode::Variable;
    audio.order = ChannelOrder::Fixed;
    audio.codec = std::move(codec);
}

}  // namespace companion
