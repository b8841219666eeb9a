#include "companions/decoder-pcm/tag_keys.h"

#include <algorithm>
#include <iterator>

#include "companions/common/rating.h"
#include "companions/decoder-pcm/genres.h"
#include "companions/decoder-pcm/text.h"

namespace companion::pcm {
namespace {

enum class Kind { text, single, year, genre, rating, tempo, trackTotal, discTotal, encoder };

struct KeyRule {
    std::u16string_view key;  // folded, blanks as underscores
    std::u16string_view column;
    Kind kind;
};

// `text` gathers several values; the other kinds keep the first one of a file.
constexpr KeyRule keyRules[] = {
    {u"artist", u"Artist", Kind::text},
    {u"title", u"Title", Kind::text},
    {u"album", u"Album", Kind::text},
    {u"track", u"Track", Kind::single},
    {u"tracknumber", u"Track", Kind::single},
    {u"track_number", u"Track", Kind::single},
    {u"tracktotal", u"", Kind::trackTotal},
    {u"totaltracks", u"", Kind::trackTotal},
    {u"disc", u"Disc", Kind::single},
    {u"discnumber", u"Disc", Kind::single},
    {u"disc_number", u"Disc", Kind::single},
    {u"disctotal", u"", Kind::discTotal},
    {u"totaldiscs", u"", Kind::discTotal},
    {u"year", u"Year", Kind::year},
    {u"date", u"Year", Kind::year},
    {u"recorded_date", u"Year", Kind::year},
    {u"genre", u"Genre", Kind::genre},
    {u"albumartist", u"Album Artist", Kind::text},
    {u"album_artist", u"Album Artist", Kind::text},
    {u"band", u"Band", Kind::text},
    {u"ensemble", u"Band", Kind::text},
    {u"orchestra", u"Band", Kind::text},
    {u"bpm", u"Tempo", Kind::tempo},
    {u"tempo", u"Tempo", Kind::tempo},
    {u"comment", u"Comment", Kind::text},
    {u"comments", u"Comment", Kind::text},
    {u"description", u"Comment", Kind::text},
    {u"compilation", u"Compilation", Kind::single},
    {u"composer", u"Composer", Kind::text},
    {u"conductor", u"Conductor", Kind::text},
    {u"copyright", u"Copyright", Kind::text},
    {u"encodedby", u"Encoded by", Kind::text},
    {u"encoded_by", u"Encoded by", Kind::text},
    {u"encoded-by", u"Encoded by", Kind::text},
    {u"encoder", u"", Kind::encoder},
    {u"encoding_application", u"", Kind::encoder},
    {u"label", u"Label", Kind::text},
    {u"organization", u"Label", Kind::text},
    {u"publisher", u"Label", Kind::text},
    {u"lastplayed", u"Last Played", Kind::single},
    {u"last_played", u"Last Played", Kind::single},
    {u"mood", u"Mood", Kind::text},
    {u"playcount", u"Playcount", Kind::single},
    {u"play_counter", u"Playcount", Kind::single},
    {u"rating", u"Rating", Kind::rating},
    {u"style", u"Style", Kind::text},
    {u"truespinresult", u"TrueSpinResult", Kind::single},
    {u"replaygain_track_gain", u"Replaygain_Track_Gain", Kind::single},
    {u"replaygain_track_peak", u"Replaygain_Track_Peak", Kind::single},
    {u"replaygain_album_gain", u"Replaygain_Album_Gain", Kind::single},
    {u"replaygain_album_peak", u"Replaygain_Album_Peak", Kind::single},
};

std::u16string Normal(std::u16string_view key) {
    std::u16string normal = Folded(Trimmed(key));
    std::replace(normal.begin(), normal.end(), u' ', u'_');
    return normal;
}

struct Number {
    double value = 0;
    bool point = false;
};

std::optional<Number> NumberOf(std::u16string_view text) {
    text = Trimmed(text);
    constexpr std::size_t longest = 32;
    if (text.empty() || text.size() > longest) return std::nullopt;
    Number number;
    double place = 1;
    bool digits = false;
    for (const char16_t unit : text) {
        if (!number.point && (unit == u'.' || unit == u',')) {
            number.point = true;
        } else if (unit >= u'0' && unit <= u'9') {
            digits = true;
            if (number.point) place /= 10;
            number.value = number.point ? number.value + (unit - u'0') * place
                                        : number.value * 10 + (unit - u'0');
        } else {
            return std::nullopt;
        }
    }
    if (!digits) return std::nullopt;
    return number;
}

void KeepFirst(std::u16string& kept, std::u16string_view value) {
    constexpr std::size_t longest = 1024;
    if (kept.empty()) kept = Trimmed(value).substr(0, longest);
}

void AddByRule(Findings& findings, TagSet& tags, const KeyRule& rule, std::u16string_view value) {
    switch (rule.kind) {
        case Kind::text:
            tags.Add(rule.column, value);
            break;
        case Kind::single:
            tags.AddIfNone(rule.column, value);
            break;
        case Kind::year:
            tags.AddIfNone(rule.column, YearOf(value));
            break;
        case Kind::genre:
            AddGenres(tags, value);
            break;
        case Kind::tempo:
            if (LeadingNumber(value) != 0) tags.AddIfNone(rule.column, value);
            break;
        case Kind::rating:
            if (const auto rating = RatingFromText(value))
                tags.AddIfNone(rule.column, Decimal(*rating));
            break;
        case Kind::trackTotal:
            KeepFirst(findings.trackTotal, value);
            break;
        case Kind::discTotal:
            KeepFirst(findings.discTotal, value);
            break;
        case Kind::encoder:
            KeepFirst(findings.encoder, value);
            break;
    }
}

}  // namespace

void AddKeyed(Findings& findings, TagSet& tags, std::u16string_view key,
              std::u16string_view value) {
    constexpr std::size_t longestKey = 64;
    if (key.size() > longestKey) return;
    const std::u16string normal = Normal(key);
    const auto rule = std::find_if(std::begin(keyRules), std::end(keyRules),
                                   [&normal](const KeyRule& row) { return row.key == normal; });
    if (rule != std::end(keyRules)) AddByRule(findings, tags, *rule, value);
}

std::u16string_view YearOf(std::u16string_view date) {
    date = Trimmed(date);
    const auto isDigit = [](char16_t unit) { return unit >= u'0' && unit <= u'9'; };
    const std::u16string_view year = date.substr(0, 4);
    return year.size() == 4 && std::all_of(year.begin(), year.end(), isDigit) ? year : date;
}

std::optional<std::uint32_t> RatingFromText(std::u16string_view text) {
    const auto number = NumberOf(text);
    if (!number) return std::nullopt;
    return static_cast<std::uint32_t>(RatingFromNumber(number->value, number->point));
}

}  // namespace companion::pcm
