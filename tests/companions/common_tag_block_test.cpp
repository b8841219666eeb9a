#include "companions/common/tag_block.h"

#include <gtest/gtest.h>

namespace companion {
namespace {

using ByteList = std::vector<std::uint8_t>;

TEST(PackTags, GivesNothingForNoTags) {
    EXPECT_TRUE(PackTags({}).empty());
}

TEST(PackTags, LaysOutCountSizeNameValueAndData) {
    const ByteList expected = {1,   0, 0,    0,           // count
                               15,  0, 0,    0,           // size of the entry
                               'A', 0, 0,    0,           // name
                               'b', 0, 0xAC, 0x20, 0, 0,  // value
                               7};                        // data
    EXPECT_EQ(PackTags({{u"A", u"b\u20AC", {7}}}), expected);
}

TEST(PackTags, LaysEntriesEndToEnd) {
    const ByteList expected = {2, 0, 0, 0, 8, 0, 0, 0, 0, 0, 0, 0, 8, 0, 0, 0, 0, 0, 0, 0};
    EXPECT_EQ(PackTags({{u"", u"", {}}, {u"", u"", {}}}), expected);
}

TEST(PackTags, EndsTextAtNul) {
    const std::u16string broken(u"a\0b", 3);
    EXPECT_EQ(PackTags({{broken, broken, {}}}), PackTags({{u"a", u"a", {}}}));
}

}  // namespace
}  // namespace companion
