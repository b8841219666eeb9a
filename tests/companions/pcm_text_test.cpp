#include "companions/decoder-pcm/text.h"

#include <gtest/gtest.h>

#include "companions/decoder-pcm/genres.h"
#include "companions/decoder-pcm/tag_set.h"

namespace companion::pcm {
namespace {

TEST(Text, ReadsUtf8AndMarksWhatIsMalformed) {
    struct Case {
        std::string_view bytes;
        std::u16string_view text;
        bool valid;
    };
    const Case cases[] = {
        {"", u"", true},
        {"abc", u"abc", true},
        {"\xC3\xA4", u"\u00E4", true},
        {"\xE2\x82\xAC", u"\u20AC", true},
        {"\xF0\x9F\x8E\xB5", u"\U0001F3B5", true},
        {"\xF4\x8F\xBF\xBF", u"\U0010FFFF", true},
        {"\xEF\xBB\xBFx", u"x", true},
        {"\xC0\x80", u"\uFFFD\uFFFD", false},            // too long a form
        {"\xE0\x80\x80", u"\uFFFD\uFFFD\uFFFD", false},  // the same
        {"\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD", false},  // a surrogate
        {"\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD", false},
        {"\xF8x", u"\uFFFDx", false},
        {"\xE2\x82", u"\uFFFD\uFFFD", false},  // cut short
        {"\xE2z", u"\uFFFDz", false},
        {"\x80", u"\uFFFD", false},
    };
    for (const Case& row : cases) {
        EXPECT_EQ(FromUtf8(row.bytes), row.text) << row.bytes;
        EXPECT_EQ(IsUtf8(row.bytes), row.valid) << row.bytes;
    }
}

TEST(Text, ReadsSingleByteEncodings) {
    EXPECT_EQ(FromLatin1("a\x80\xE4"), u"a\u0080\u00E4");
    EXPECT_EQ(FromWindows1252("a\x80\x9F\x81\xE4"), u"a\u20AC\u0178\u0081\u00E4");
    EXPECT_EQ(FromUnknown("\xC3\xA4"), u"\u00E4");
    EXPECT_EQ(FromUnknown("\xC3"), u"\u00C3");
}

TEST(Text, ReadsUtf16InEitherOrder) {
    const std::string_view little("\xFF\xFE\xAC\x20", 4);
    const std::string_view big("\xFE\xFF\x20\xAC", 4);
    const std::string_view bare("\x20\xAC\x41", 3);  // and half a unit
    for (const ByteOrder order : {ByteOrder::little, ByteOrder::big}) {
        EXPECT_EQ(FromUtf16(little, order), u"\u20AC");
        EXPECT_EQ(FromUtf16(big, order), u"\u20AC");
    }
    EXPECT_EQ(FromUtf16(bare, ByteOrder::big), u"\u20AC");
    EXPECT_EQ(FromUtf16(bare, ByteOrder::little), u"\uAC20");
}

TEST(Text, EndsAtNulInEveryEncoding) {
    const std::string_view narrow("a\0b", 3);
    const std::string_view wide("a\0\0\0b\0", 6);
    EXPECT_EQ(FromLatin1(narrow), u"a");
    EXPECT_EQ(FromWindows1252(narrow), u"a");
    EXPECT_EQ(FromUtf8(narrow), u"a");
    EXPECT_EQ(FromUnknown(narrow), u"a");
    EXPECT_EQ(FromUtf16(wide, ByteOrder::little), u"a");
}

TEST(Text, ReadsLeadingNumbers) {
    EXPECT_EQ(LeadingNumber(u" 12/3"), 12u);
    EXPECT_EQ(LeadingNumber(u"x"), 0u);
    EXPECT_EQ(LeadingNumber(u"4294967295"), 4294967295u);
    EXPECT_EQ(LeadingNumber(u"4294967296"), 0u);
    EXPECT_EQ(LeadingNumber(u"99999999999999999999999999"), 0u);
}

TEST(Genres, AreNumberedAsInId3v1) {
    EXPECT_EQ(GenreName(0), u"Blues");
    EXPECT_EQ(GenreName(79), u"Hard Rock");
    EXPECT_EQ(GenreName(80), u"Folk");
    EXPECT_EQ(GenreName(125), u"Dancehall");
    EXPECT_EQ(GenreName(147), u"Synthpop");
    EXPECT_EQ(GenreName(191), u"Psybient");
    EXPECT_EQ(GenreName(192), u"");
}

TEST(TagSet, BoundsValuesAndEntries) {
    TagSet tags;
    tags.Add(u"A", std::u16string(100000, u'x'));
    EXPECT_EQ(tags.Get(u"A").size(), 32768u);
    for (int i = 0; i < 100; ++i)
        tags.Add(u"B", std::u16string(10000, static_cast<char16_t>(u'a' + i)));
    EXPECT_LE(tags.Get(u"B").size(), 65536u);
    EXPECT_GE(tags.Get(u"B").size(), 50000u);
}

TEST(TagSet, MergesOnlyNamesThatAreMissing) {
    TagSet tags;
    tags.Add(u"A", u"1");
    TagSet other;
    other.Add(u"A", u"2");
    other.Add(u"B", u"3");
    tags.Merge(other);
    EXPECT_EQ(tags.Get(u"A"), u"1");
    EXPECT_EQ(tags.Get(u"B"), u"3");
}

TEST(TagSet, AddsATotalOnceAndOnlyToANumber) {
    TagSet tags;
    tags.AddTotal(u"Track", u"9");
    EXPECT_TRUE(tags.Empty());
    tags.Add(u"Track", u"3");
    tags.AddTotal(u"Track", u"none");
    EXPECT_EQ(tags.Get(u"Track"), u"3");
    tags.AddTotal(u"Track", u"012");
    tags.AddTotal(u"Track", u"9");
    EXPECT_EQ(tags.Get(u"Track"), u"3/12");
}

}  // namespace
}  // namespace companion::pcm
