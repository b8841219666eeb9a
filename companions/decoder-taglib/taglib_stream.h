// A file for TagLib, read through our own source.
#pragma once

#include <tiostream.h>

#include "companions/common/byte_source.h"

namespace companion {

// Reading only. TagLib's own stream wants write access and does not share the
// file with writers; it also takes each size field of a file at its word.
class TagLibStream final : public TagLib::IOStream {
public:
    // `source` must outlive this object and the TagLib file made over it.
    explicit TagLibStream(ByteSource& source) : _source(source) {}

    // Empty: what TagLib derives from a name, we derive from the content.
    TagLib::FileName name() const override;

    // At most 64 MiB, whatever was asked for.
    TagLib::ByteVector readBlock(std::size_t length) override;

    bool readOnly() const override { return true; }
    bool isOpen() const override { return true; }
    void seek(TagLib::offset_t offset, Position from) override;
    TagLib::offset_t tell() const override { return _position; }
    TagLib::offset_t length() override;

    // Never called on a file that is only read; they do nothing.
    void writeBlock(const TagLib::ByteVector& data) override;
    void insert(const TagLib::ByteVector& data, TagLib::offset_t start,
                std::size_t replace) override;
    void removeBlock(TagLib::offset_t start, std::size_t length) override;
    void truncate(TagLib::offset_t length) override;

private:
    ByteSource& _source;
    TagLib::offset_t _position = 0;
};

}  // namespace companion
