#include "companions/decoder-pcm/id3v2_frames.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>

#include "companions/common/rating.h"
#include "companions/decoder-pcm/tag_keys.h"
#include "companions/decoder-pcm/text.h"

namespace companion::pcm {
namespace {

constexpr int mostValues = 256;

struct TextFrame {
    std::string_view id;
    std::string_view olderId;  // of version 2.2
    std::u16string_view key;   // as AddKeyed takes it
};

// TPE2 is the "band" by the letter, and the artist of the album for all who
// write it.
constexpr TextFrame textFrames[] = {
    {"TPE1", "TP1", u"artist"},      {"TIT2", "TT2", u"title"},     {"TALB", "TAL", u"album"},
    {"TRCK", "TRK", u"track"},       {"TPOS", "TPA", u"disc"},      {"TDRC", "TYE", u"year"},
    {"TYER", "", u"year"},           {"TCON", "TCO", u"genre"},     {"TPE2", "TP2", u"albumartist"},
    {"TPE3", "TP3", u"conductor"},   {"TCOM", "TCM", u"composer"},  {"TBPM", "TBP", u"bpm"},
    {"TENC", "TEN", u"encodedby"},   {"TPUB", "TPB", u"label"},     {"TMOO", "", u"mood"},
    {"TCMP", "TCP", u"compilation"}, {"TCOP", "TCR", u"copyright"}, {"TSSE", "TSS", u"encoder"},
};

const TextFrame* FindTextFrame(std::string_view id) {
    const auto found =
        std::find_if(std::begin(textFrames), std::end(textFrames),
                     [id](const TextFrame& row) { return row.id == id || row.olderId == id; });
    return found == std::end(textFrames) ? nullptr : found;
}

bool IsWide(std::uint8_t encoding) {
    return encoding == 1 || encoding == 2;
}

// Where the first text of `text` ends, and how many bytes its end takes.
std::pair<std::size_t, std::size_t> FindEnd(std::string_view text, std::uint8_t encoding) {
    if (!IsWide(encoding)) {
        const std::size_t end = std::min(text.find('\0'), text.size());
        return {end, 1};
    }
    std::size_t end = 0;
    while (end + 1 < text.size() && (text[end] != '\0' || text[end + 1] != '\0'))
        end += 2;
    return {std::min(end, text.size()), 2};
}

// Takes the first text off `rest`. The byte order of a mark holds for the
// texts behind it, some of which come without one.
std::u16string TakeText(std::string_view& rest, std::uint8_t encoding, ByteOrder& order) {
    const auto [length, terminator] = FindEnd(rest, encoding);
    const std::string_view text = rest.substr(0, length);
    rest.remove_prefix(std::min(length + terminator, rest.size()));
    switch (encoding) {
        case 0:
            return FromLatin1(text);
        case 1:
            if (text.starts_with("\xFE\xFF")) order = ByteOrder::big;
            if (text.starts_with("\xFF\xFE")) order = ByteOrder::little;
            return FromUtf16(text, order);
        case 2:
            return FromUtf16(text, ByteOrder::big);
        default:
            return FromUtf8(text);
    }
}

// The values of a text frame, joined as AddKeyed wants them.
void AddValues(std::u16string_view key, std::string_view rest, std::uint8_t encoding,
               ByteOrder order, Findings& findings) {
    for (int i = 0; i < mostValues && !rest.empty(); ++i)
        AddKeyed(findings, findings.richTags, key, TakeText(rest, encoding, order));
}

void TakeUserText(const Bytes& content, Findings& findings) {
    std::string_view rest = content.Text(1);
    ByteOrder order = ByteOrder::little;
    const std::u16string description = TakeText(rest, content.U8(0), order);
    AddValues(description, rest, content.U8(0), order, findings);
}

// A comment with a description is some program's note to itself, but for the
// few descriptions that people give.
void TakeComment(const Bytes& content, Findings& findings) {
    std::string_view rest = content.Text(4);
    ByteOrder order = ByteOrder::little;
    const std::u16string description = Folded(TakeText(rest, content.U8(0), order));
    if (description.empty() || description == u"comment" || description == u"description")
        AddValues(u"comment", rest, content.U8(0), order, findings);
}

// A counter of four or more bytes, big-endian; 0 for none.
std::uint64_t CounterOf(std::string_view bytes) {
    constexpr std::size_t longest = 8;
    if (bytes.size() > longest) bytes.remove_prefix(bytes.size() - longest);
    std::uint64_t counter = 0;
    for (const char byte : bytes)
        counter = (counter << 8) | static_cast<std::uint8_t>(byte);
    return counter;
}

void AddCounter(std::string_view bytes, Findings& findings) {
    const std::uint64_t counter = CounterOf(bytes);
    if (counter != 0) findings.richTags.AddIfNone(u"Playcount", Decimal(counter));
}

void TakePopularity(const Bytes& content, Findings& findings) {
    const std::string_view text = content.Text();
    const std::size_t end = text.find('\0');
    if (end == text.npos || end + 1 >= text.size()) return;
    const int rating = RatingFromPopularity(content.U8(end + 1));
    findings.richTags.AddIfNone(u"Rating", Decimal(static_cast<std::uint64_t>(rating)));
    AddCounter(text.substr(end + 2), findings);
}

}  // namespace

bool IsPictureFrame(std::string_view id) {
    return id == "APIC" || id == "PIC";
}

bool IsUsedId3v2Frame(std::string_view id) {
    constexpr std::string_view others[] = {"TXXX", "TXX", "COMM", "COM",
                                           "POPM", "POP", "PCNT", "CNT"};
    return FindTextFrame(id) != nullptr ||
           std::find(std::begin(others), std::end(others), id) != std::end(others);
}

void TakeId3v2Frame(std::string_view id, const Bytes& content, Findings& findings) {
    if (content.Size() == 0) return;
    if (const TextFrame* const frame = FindTextFrame(id)) {
        AddValues(frame->key, content.Text(1), content.U8(0), ByteOrder::little, findings);
    } else if (id == "TXXX" || id == "TXX") {
        TakeUserText(content, findings);
    } else if (id == "COMM" || id == "COM") {
        TakeComment(content, findings);
    } else if (id == "POPM" || id == "POP") {
        TakePopularity(content, findings);
    } else if (id == "PCNT" || id == "CNT") {
        AddCounter(content.Text(), findings);
    }
}

}  // namespace companion::pcm
