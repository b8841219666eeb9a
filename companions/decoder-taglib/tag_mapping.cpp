#include "companions/decoder-taglib/tag_mapping.h"

#include <charconv>
#include <initializer_list>

#include "companions/common/values.h"
#include "companions/decoder-taglib/rating.h"

namespace companion {
namespace {

using TagLib::PropertyMap;

using Keys = std::initializer_list<const char*>;

std::u16string Widen(std::string_view text) {
    return {text.begin(), text.end()};
}

std::u16string Joined(const TagLib::StringList& texts) {
    std::vector<std::u16string> values;
    for (const TagLib::String& text : texts) {
        if (auto value = OneValue(ToText(text)); !value.empty()) values.push_back(std::move(value));
    }
    return JoinedValues(values);
}

class Mapper {
public:
    explicit Mapper(const PropertyMap& properties) : _properties(properties) {}

    void Add(const char16_t* column, std::u16string value) {
        if (!value.empty()) _tags.push_back({column, std::move(value), {}});
    }

    void AddFirst(const char16_t* column, Keys keys) { Add(column, First(keys)); }

    // The values of the first key that has any.
    std::u16string First(Keys keys) const {
        for (const char* key : keys) {
            if (auto text = Joined(_properties.value(key)); !text.empty()) return text;
        }
        return {};
    }

    // "number/total", also where the file keeps the two apart.
    void AddNumber(const char16_t* column, Keys numbers, Keys totals) {
        std::u16string number = First(numbers);
        if (!number.empty() && number.find(u'/') == std::u16string::npos) {
            const std::u16string total = First(totals);
            if (!total.empty()) number += u"/" + total;
        }
        Add(column, std::move(number));
    }

    // Dates begin with the year (ISO 8601).
    void AddYear() {
        const std::u16string date = First({"DATE", "YEAR"});
        const std::u16string year = date.substr(0, std::min<std::size_t>(4, date.find(u'\r')));
        if (year != u"0" && year != u"0000") Add(u"Year", year);
    }

    // Files without a tempo are often given the tempo 0.
    void AddTempo() {
        std::u16string tempo = First({"BPM"});
        if (tempo.find_first_of(u"123456789") != std::u16string::npos)
            Add(u"Tempo", std::move(tempo));
    }

    std::vector<Tag> Take() { return std::move(_tags); }

private:
    const PropertyMap& _properties;
    std::vector<Tag> _tags;
};

std::string Narrow(const std::u16string& text) {
    std::string narrow;
    for (const char16_t unit : text) {
        if (unit == u'\r') break;
        narrow.push_back(unit < 0x80 ? static_cast<char>(unit) : '?');
    }
    return narrow.substr(std::min(narrow.find_first_not_of(' '), narrow.size()));
}

void AddRating(Mapper& mapper, const SpecialTags& special) {
    std::optional<int> rating = special.rating;
    if (!rating) {
        const std::string text = Narrow(mapper.First({"RATING"}));
        if (!text.empty()) rating = RatingFromText(text);
    }
    if (rating) mapper.Add(u"Rating", Widen(std::to_string(*rating)));
}

// The gain is in 1/256 dB and relative to a level 5 dB below the other one.
std::u16string GainFromR128(const std::u16string& text) {
    const std::string digits = Narrow(text);
    int value = 0;
    const auto parsed = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (parsed.ec != std::errc()) return {};
    char buffer[32];
    const auto end = std::to_chars(buffer, buffer + sizeof(buffer), value / 256.0 + 5.0,
                                   std::chars_format::fixed, 2);
    return Widen(std::string(buffer, end.ptr) + " dB");
}

void AddGain(Mapper& mapper, const char16_t* column, const char* key, const char* r128,
             const SpecialTags& special) {
    std::u16string gain = mapper.First({key});
    if (gain.empty() && special.gainIsR128) gain = GainFromR128(mapper.First({r128}));
    mapper.Add(column, std::move(gain));
}

void AddPlayCount(Mapper& mapper, const SpecialTags& special) {
    if (special.playCount) {
        mapper.Add(u"Playcount", Widen(std::to_string(*special.playCount)));
    } else {
        mapper.AddFirst(u"Playcount", {"PLAYCOUNT", "PLAY_COUNTER"});
    }
}

}  // namespace

std::u16string ToText(const TagLib::String& text) {
    std::u16string result;
    result.reserve(text.size());
    for (const wchar_t unit : text)
        result.push_back(static_cast<char16_t>(unit));
    return result;
}

std::vector<Tag> MapTags(const PropertyMap& properties, const SpecialTags& special) {
    Mapper mapper(properties);
    mapper.AddFirst(u"Artist", {"ARTIST"});
    mapper.AddFirst(u"Title", {"TITLE"});
    mapper.AddFirst(u"Album", {"ALBUM"});
    mapper.AddNumber(u"Track", {"TRACKNUMBER"}, {"TRACKTOTAL", "TOTALTRACKS"});
    mapper.AddYear();
    mapper.AddFirst(u"Genre", {"GENRE"});
    mapper.AddFirst(u"Album Artist", {"ALBUMARTIST", "ALBUM ARTIST"});
    mapper.AddFirst(u"Band", {"BAND", "ENSEMBLE", "ORCHESTRA"});
    mapper.AddTempo();
    mapper.AddFirst(u"Comment", {"COMMENT", "DESCRIPTION"});
    mapper.AddFirst(u"Compilation", {"COMPILATION"});
    mapper.AddFirst(u"Composer", {"COMPOSER"});
    mapper.AddFirst(u"Conductor", {"CONDUCTOR"});
    mapper.AddNumber(u"Disc", {"DISCNUMBER"}, {"DISCTOTAL", "TOTALDISCS"});
    mapper.AddFirst(u"Encoded by", {"ENCODEDBY", "ENCODED-BY"});
    mapper.AddFirst(u"Label", {"LABEL", "ORGANIZATION", "PUBLISHER"});
    mapper.AddFirst(u"Last Played", {"LASTPLAYED", "LAST_PLAYED"});
    mapper.AddFirst(u"Mood", {"MOOD"});
    AddPlayCount(mapper, special);
    AddRating(mapper, special);
    mapper.AddFirst(u"Style", {"STYLE"});
    mapper.AddFirst(u"TrueSpinResult", {"TRUESPINRESULT"});
    AddGain(mapper, u"Replaygain_Track_Gain", "REPLAYGAIN_TRACK_GAIN", "R128_TRACK_GAIN", special);
    mapper.AddFirst(u"Replaygain_Track_Peak", {"REPLAYGAIN_TRACK_PEAK"});
    AddGain(mapper, u"Replaygain_Album_Gain", "REPLAYGAIN_ALBUM_GAIN", "R128_ALBUM_GAIN", special);
    mapper.AddFirst(u"Replaygain_Album_Peak", {"REPLAYGAIN_ALBUM_PEAK"});
    return mapper.Take();
}

}  // namespace companion
