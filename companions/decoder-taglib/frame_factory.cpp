#include "companions/decoder-taglib/frame_factory.h"

#include <id3v2frame.h>
#include <id3v2header.h>

namespace companion {
namespace {

namespace ID3v2 = TagLib::ID3v2;

constexpr unsigned largestCompressedFrame = 16 * 1024;

// Takes its place in the tag and holds nothing.
class UnreadFrame final : public ID3v2::Frame {
public:
    // Owns `header` from here on.
    explicit UnreadFrame(Header* header) : Frame(header) {}

    TagLib::String toString() const override { return {}; }

protected:
    void parseFields(const TagLib::ByteVector&) override {}
    TagLib::ByteVector renderFields() const override { return {}; }
};

bool IsUnread(const TagLib::ByteVector& id) {
    for (const char* unread : {"APIC", "GEOB", "PRIV", "CHAP", "CTOC", "SYLT", "ETCO"}) {
        if (id == unread) return true;
    }
    return false;
}

}  // namespace

FrameFactory* FrameFactory::Instance() {
    static FrameFactory factory;
    return &factory;
}

ID3v2::Frame* FrameFactory::createFrame(const TagLib::ByteVector& data,
                                        const ID3v2::Header* tagHeader) const {
    const ID3v2::Frame::Header header(data, tagHeader->majorVersion());
    const bool plausible = header.frameSize() > 0 && header.frameSize() <= data.size();
    if (!plausible || !header.compression())
        return ID3v2::FrameFactory::createFrame(data, tagHeader);
    if (header.frameSize() > largestCompressedFrame)
        return new UnreadFrame(new ID3v2::Frame::Header(data, tagHeader->majorVersion()));
    // A compressed frame is unpacked from all that is handed over, so it is cut
    // off here; the next frame's name tells which of two size notations it is in.
    return ID3v2::FrameFactory::createFrame(data.mid(0, header.size() + header.frameSize() + 4),
                                            tagHeader);
}

ID3v2::Frame* FrameFactory::createFrame(const TagLib::ByteVector& data,
                                        ID3v2::Frame::Header* header,
                                        const ID3v2::Header* tagHeader) const {
    if (IsUnread(header->frameID())) return new UnreadFrame(header);
    return ID3v2::FrameFactory::createFrame(data, header, tagHeader);
}

}  // namespace companion
