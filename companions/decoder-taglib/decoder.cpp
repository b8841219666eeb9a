#include <textidentificationframe.h>
#include <tpropertymap.h>

#include <memory>
#include <mutex>

#include "companions/common/byte_source.h"
#include "companions/common/decoder_library.h"
#include "companions/decoder-taglib/cached_source.h"
#include "companions/decoder-taglib/content_kind.h"
#include "companions/decoder-taglib/file_reader.h"
#include "companions/decoder-taglib/format_readers.h"
#include "companions/decoder-taglib/frame_factory.h"
#include "companions/decoder-taglib/properties.h"

namespace companion {
namespace {

constexpr AudioType audioTypes[] = {
    {u".mp3", u"MP3 Audio"},
    {u".mp2", u"MPEG Layer 2 Audio"},
    {u".mp1", u"MPEG Layer 1 Audio"},
    {u".aac", u"AAC Audio"},
    {u".flac", u"Free Lossless Audio"},
    {u".oga", u"Ogg Audio"},
    {u".ogg", u"Ogg Vorbis Audio"},
    {u".opus", u"Opus Audio"},
    {u".spx", u"Speex Audio"},
    {u".m4a", u"MPEG-4 Audio"},
    {u".m4b", u"MPEG-4 Audio Book"},
    {u".mp4", u"MPEG-4 Audio or Video"},
    {u".wv", u"WavPack Audio"},
    {u".wma", u"Windows Media Audio"},
    {u".asf", u"Windows Media Stream"},
    {u".ape", u"Monkey's Audio"},
    {u".mpc", u"Musepack Audio"},
    {u".tta", u"True Audio"},
    {u".dsf", u"DSD Stream Audio"},
    {u".dff", u"DSD Interchange Audio"},
};

// Lower case for A to Z, with the dot; empty for a name without one.
std::u16string ExtensionOf(const std::u16string& path) {
    const std::size_t name = path.find_last_of(u"\\/") + 1;  // npos + 1 is 0
    const std::size_t dot = path.find_last_of(u'.');
    if (dot == std::u16string::npos || dot < name) return {};
    std::u16string extension = path.substr(dot);
    for (char16_t& unit : extension) {
        if (unit >= u'A' && unit <= u'Z') unit = static_cast<char16_t>(unit - u'A' + u'a');
    }
    return extension;
}

}  // namespace

std::span<const AudioType> AudioTypes() {
    return audioTypes;
}

const char16_t* PropertyElements() {
    return PropertyNames();
}

void PrepareLibrary() {
    static std::once_flag prepared;
    std::call_once(prepared, [] {
        // TagLib fills one table of roles at its first use without a lock, and
        // reads it for each file that names its musicians.
        TagLib::PropertyMap roles;
        roles.insert("ARRANGER", TagLib::StringList("-"));
        const std::unique_ptr<TagLib::ID3v2::Frame> frame(
            TagLib::ID3v2::TextIdentificationFrame::createTIPLFrame(roles));
        FrameFactory::Instance();
    });
}

bool ReadFile(const std::u16string& path, FileFacts& facts) {
    const std::unique_ptr<ByteSource> file = OpenFile(path);
    return file && ReadSource(*file, ExtensionOf(path), facts);
}

bool ReadSource(ByteSource& file, std::u16string_view extension, FileFacts& facts) {
    CachedSource source(file);
    const AudioSpan span = FindAudioSpan(source);
    const ContentKind kind = DetectContent(source, span, extension);
    AudioFacts audio;
    if (!ReadFormat(kind, source, span, audio, facts.tags) || source.Exhausted()) return false;
    FillFacts(audio, facts);
    facts.properties = DescribeProperties(audio);
    return facts.format.channels != 0 && facts.format.samplesPerSecond != 0;
}

}  // namespace companion
