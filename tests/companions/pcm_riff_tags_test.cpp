// WAV: what stands beside the audio.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/companions/opened_file.h"
#include "tests/companions/pcm_samples.h"

namespace companion_test {
namespace {

ByteList Info(const TextPairs& fields) {
    ByteWriter list;
    list.Text("INFO");
    for (const auto& [id, text] : fields)
        list.Raw(RiffChunk(id, ByteWriter().Text(text).U8(0).Bytes()));
    return RiffChunk("LIST", list.Bytes());
}

OpenedFile OpenWith(const std::vector<ByteList>& chunks) {
    return OpenBytes(WaveFile({}, 400, chunks));
}

TEST(RiffTags, MapsInfoFieldsToColumns) {
    const OpenedFile file = OpenWith({Info({{"INAM", "A title"},
                                            {"IART", "An artist"},
                                            {"IPRD", "An album"},
                                            {"ITRK", "3"},
                                            {"IFRM", "12"},
                                            {"ICRD", "2021-05-06"},
                                            {"IGNR", "Jazz"},
                                            {"ICMT", "Nice"},
                                            {"ICOP", "(c) me"},
                                            {"ITCH", "Coder"},
                                            {"IMUS", "Composer"},
                                            {"ISFT", "Recorder 1.0"},
                                            {"IXYZ", "nobody asks"}})});
    ASSERT_TRUE(file.opened);
    const TextPairs expected = {{"Title", "A title"},    {"Artist", "An artist"},
                                {"Album", "An album"},   {"Track", "3/12"},
                                {"Year", "2021"},        {"Genre", "Jazz"},
                                {"Comment", "Nice"},     {"Copyright", "(c) me"},
                                {"Encoded by", "Coder"}, {"Composer", "Composer"}};
    EXPECT_EQ(file.tags, expected);
    EXPECT_EQ(file.Property("Encoder"), "Recorder 1.0");
    EXPECT_EQ(file.Property("ID Tag"), "INFO");
}

TEST(RiffTags, ReadsTextAsUtf8OrElseAsWindows1252) {
    const OpenedFile file =
        OpenWith({Info({{"INAM", "\xC3\xA4\xE2\x82\xAC"}, {"IART", "\x80\xE4"}})});
    EXPECT_EQ(file.Tag("Title"), "\xC3\xA4\xE2\x82\xAC");
    EXPECT_EQ(file.Tag("Artist"), "\xE2\x82\xAC\xC3\xA4");
}

TEST(RiffTags, FindsInfoBeforeTheAudioToo) {
    const OpenedFile file =
        OpenBytes(RiffFile({Info({{"INAM", "First"}}), RiffChunk("fmt ", WaveFormatBytes({})),
                            RiffChunk("data", ByteList(400))}));
    EXPECT_EQ(file.Tag("Title"), "First");
}

TEST(RiffTags, JoinsSeveralValuesByOneCarriageReturn) {
    const OpenedFile file = OpenWith({Info({{"IART", "One"}, {"IART", "Two"}, {"IART", "One"}})});
    EXPECT_EQ(file.Tag("Artist"), "One\rTwo");
}

TEST(RiffTags, KeepsNoCarriageReturnWithinAValue) {
    const OpenedFile file = OpenWith({Info({{"ICMT", "one\r\ntwo\rthree\nfour"}})});
    EXPECT_EQ(file.Tag("Comment"), "one\ntwo\nthree\nfour");
}

TEST(RiffTags, LeavesEmptyFieldsOut) {
    const OpenedFile file = OpenWith({Info({{"INAM", ""}, {"IART", "  "}})});
    EXPECT_TRUE(file.tags.empty());
}

TEST(RiffTags, ToleratesFieldsWithoutTheFillingByte) {
    ByteWriter list;
    list.Text("INFO").Text("INAM").Le32(3).Text("abc").Text("IART").Le32(2).Text("de");
    EXPECT_EQ(OpenWith({RiffChunk("LIST", list.Bytes())}).Tag("Artist"), "de");
}

TEST(RiffTags, StopsAtAFieldLargerThanItsList) {
    ByteWriter list;
    list.Text("INFO").Text("INAM").Le32(0xFFFFFFF0).Text("abc");
    const OpenedFile file = OpenWith({RiffChunk("LIST", list.Bytes())});
    ASSERT_TRUE(file.opened);
    EXPECT_EQ(file.Tag("Title"), "abc");
}

TEST(RiffTags, PrefersTheId3TagAndFillsUpFromInfo) {
    for (const char* id : {"id3 ", "ID3 "}) {
        const OpenedFile file =
            OpenWith({Info({{"INAM", "Info title"}, {"ICMT", "Info comment"}}),
                      RiffChunk(id, Id3Tag(3, {Id3Text(3, "TIT2", "Tag title")}))});
        EXPECT_EQ(file.Tag("Title"), "Tag title") << id;
        EXPECT_EQ(file.Tag("Comment"), "Info comment") << id;
        EXPECT_EQ(file.Property("ID Tag"), "INFO\rID3v2.3") << id;
    }
}

TEST(RiffTags, TakesTheBroadcastFieldsWhereNothingBetterIs) {
    const ByteList bext = ByteWriter()
                              .Text("A scene")
                              .Fill(249)
                              .Text("Studio")
                              .Fill(26)
                              .Fill(32)
                              .Text("2019-01-02")
                              .Fill(272)
                              .Bytes();
    const OpenedFile file = OpenWith({RiffChunk("bext", bext), Info({{"ICRD", "1999"}})});
    EXPECT_EQ(file.Tag("Comment"), "A scene");
    EXPECT_EQ(file.Tag("Encoded by"), "Studio");
    EXPECT_EQ(file.Tag("Year"), "1999");
    EXPECT_EQ(OpenWith({RiffChunk("bext", bext)}).Tag("Year"), "2019");
}

TEST(RiffTags, DescribesTheFile) {
    const OpenedFile file = OpenWith({});
    const TextPairs expected = {{"Audio Quality", "CD Quality (Lossless)"},
                                {"Codec", "PCM"},
                                {"Channel Layout", "Stereo"},
                                {"Bit Rate Mode", "Constant"},
                                {"Cover Art", "No"}};
    EXPECT_EQ(file.properties, expected);
    EXPECT_TRUE(file.tags.empty());
}

}  // namespace
}  // namespace companion_test
