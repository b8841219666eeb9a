#include <asffile.h>

#include <algorithm>
#include <array>
#include <optional>

#include "companions/decoder-taglib/byte_order.h"
#include "companions/decoder-taglib/format_readers.h"
#include "companions/decoder-taglib/rating.h"
#include "companions/decoder-taglib/reading.h"

namespace companion {
namespace {

void NameAsfCodec(const TagLib::ASF::Properties& found, AudioFacts& audio) {
    using Asf = TagLib::ASF::Properties;
    switch (found.codec()) {
        case Asf::WMA1:
            audio.codec = u"Windows Media Audio 1";
            break;
        case Asf::WMA2:
            audio.codec = u"Windows Media Audio 2";
            break;
        case Asf::WMA9Pro:
            audio.codec = u"Windows Media Audio Professional";
            break;
        case Asf::WMA9Lossless:
            MarkLossless(audio, found.bitsPerSample(), u"Windows Media Audio Lossless");
            break;
        case Asf::Unknown:
            audio.codec = ToText(found.codecName());
            break;
    }
}

std::optional<int> AsfRating(const TagLib::ASF::Tag& tag) {
    const TagLib::ASF::AttributeList values = tag.attribute("WM/SharedUserRating");
    if (values.isEmpty()) return std::nullopt;
    const TagLib::ASF::Attribute& value = values.front();
    const bool text = value.type() == TagLib::ASF::Attribute::UnicodeType;
    const unsigned number =
        text ? static_cast<unsigned>(std::max(0, value.toString().toInt())) : value.toUInt();
    return RatingFromPercent(static_cast<int>(std::min(number, 100u)));
}

// All that is no audio stands in the header object at the front, whose size
// follows its 16 identifying bytes.
std::int64_t AsfAudioBytes(ByteSource& source) {
    std::array<std::uint8_t, 24> header{};
    if (source.ReadAt(0, header.data(), header.size()) != header.size()) return 0;
    const std::uint64_t bytes =
        std::uint64_t{LittleEndian(header, 20, 4)} << 32 | LittleEndian(header, 16, 4);
    return bytes < source.Size() ? static_cast<std::int64_t>(source.Size() - bytes) : 0;
}

}  // namespace

bool ReadAsf(Reading& reading) {
    TagLib::ASF::File file(&reading.stream, true, averageReading);
    if (!TakeCommonFacts(file, reading)) return false;
    AudioFacts& audio = reading.audio;
    NameAsfCodec(*file.audioProperties(), audio);
    audio.bytes = AsfAudioBytes(reading.source);
    // What a lossless stream declares is the rate of the decoded audio.
    if (!audio.lossless) audio.bitRate = std::int64_t{file.audioProperties()->bitrate()} * 1000;
    audio.encrypted = file.audioProperties()->isEncrypted();
    audio.tagKinds.push_back(u"ASF");
    audio.coverArt = file.tag()->contains("WM/Picture");
    reading.special.rating = AsfRating(*file.tag());
    return TakeTags(file, reading);
}

}  // namespace companion
