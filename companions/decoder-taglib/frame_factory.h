// Which ID3v2 frames are read.
#pragma once

#include <id3v2framefactory.h>

namespace companion {

// Leaves unread what no column shows and a damaged or hostile file can make
// dear: pictures and objects (size), chapters (frames within frames within
// frames, down to the end of the stack) and large compressed frames, which can
// grow a thousandfold. A frame left unread keeps its name in the tag.
class FrameFactory final : public TagLib::ID3v2::FrameFactory {
public:
    // The one object, for any number of threads.
    static FrameFactory* Instance();

    using TagLib::ID3v2::FrameFactory::createFrame;
    TagLib::ID3v2::Frame* createFrame(const TagLib::ByteVector& data,
                                      const TagLib::ID3v2::Header* tagHeader) const override;

protected:
    TagLib::ID3v2::Frame* createFrame(const TagLib::ByteVector& data,
                                      TagLib::ID3v2::Frame::Header* header,
                                      const TagLib::ID3v2::Header* tagHeader) const override;

private:
    FrameFactory() = default;
};

}  // namespace companion
