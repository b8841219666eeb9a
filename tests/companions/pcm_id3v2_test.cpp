#include <gtest/gtest.h>

#include "tests/companions/opened_file.h"
#include "tests/companions/pcm_samples.h"

namespace companion_test {
namespace {

OpenedFile OpenTag(const ByteList& tag) {
    return OpenBytes(WaveFile({}, 400, {RiffChunk("id3 ", tag)}));
}

OpenedFile OpenFrame(int version, std::string_view id, const ByteList& content) {
    return OpenTag(Id3Tag(version, {Id3Frame(version, id, content)}));
}

struct FrameCase {
    const char* id;
    const char* olderId;  // of version 2.2, or nullptr
    const char* text;
    const char* column;
    const char* value;
};

const FrameCase frameCases[] = {
    {"TPE1", "TP1", "Someone", "Artist", "Someone"},
    {"TIT2", "TT2", "Something", "Title", "Something"},
    {"TALB", "TAL", "Somewhere", "Album", "Somewhere"},
    {"TRCK", "TRK", "3/12", "Track", "3/12"},
    {"TPOS", "TPA", "1/2", "Disc", "1/2"},
    {"TYER", "TYE", "1987", "Year", "1987"},
    {"TDRC", nullptr, "1987-06-05T04:03", "Year", "1987"},
    {"TCON", "TCO", "Polka", "Genre", "Polka"},
    {"TCON", "TCO", "(17)", "Genre", "Rock"},
    {"TCON", "TCO", "17", "Genre", "Rock"},
    {"TCON", "TCO", "(9)(17)Own", "Genre", "Metal\rRock\rOwn"},
    {"TCON", "TCO", "(17)Rock", "Genre", "Rock"},
    {"TCON", "TCO", "(RX)(CR)", "Genre", "Remix\rCover"},
    {"TCON", "TCO", "((odd) name", "Genre", "(odd) name"},
    {"TCON", "TCO", "(255)", "Genre", "255"},
    {"TCON", "TCO", "(17", "Genre", "(17"},
    {"TPE2", "TP2", "All", "Album Artist", "All"},
    {"TPE3", "TP3", "Baton", "Conductor", "Baton"},
    {"TCOM", "TCM", "Pen", "Composer", "Pen"},
    {"TBPM", "TBP", "128", "Tempo", "128"},
    {"TBPM", "TBP", "0", "Tempo", ""},
    {"TENC", "TEN", "Coder", "Encoded by", "Coder"},
    {"TPUB", "TPB", "House", "Label", "House"},
    {"TMOO", nullptr, "Calm", "Mood", "Calm"},
    {"TCMP", "TCP", "1", "Compilation", "1"},
    {"TCOP", "TCR", "2001 me", "Copyright", "2001 me"},
    {"TOPE", "TOA", "nobody asks", "Artist", ""},
};

TEST(Id3v2, MapsTextFramesOfAllVersionsToColumns) {
    for (const FrameCase& row : frameCases) {
        for (const int version : {2, 3, 4}) {
            const char* const id = version == 2 ? row.olderId : row.id;
            if (!id) continue;
            const OpenedFile file = OpenTag(Id3Tag(version, {Id3Text(version, id, row.text)}));
            EXPECT_EQ(file.Tag(row.column), row.value) << version << " " << id << " " << row.text;
            EXPECT_EQ(file.tags.size(), *row.value != 0 ? 1u : 0u) << id << " " << row.text;
        }
    }
}

TEST(Id3v2, NamesTheEncoderAsProperty) {
    EXPECT_EQ(OpenTag(Id3Tag(3, {Id3Text(3, "TSSE", "Coder 3")})).Property("Encoder"), "Coder 3");
}

TEST(Id3v2, ReadsAllEncodings) {
    const std::string expected = "\xC3\xA4\xCE\xB2";  // a with dots, beta
    const std::pair<const char*, ByteList> cases[] = {
        {"UTF-16 little", ByteWriter().U8(1).Le16(0xFEFF).Le16(0xE4).Le16(0x3B2).Bytes()},
        {"UTF-16 big", ByteWriter().U8(1).Be16(0xFEFF).Be16(0xE4).Be16(0x3B2).Bytes()},
        {"UTF-16 without mark", ByteWriter().U8(1).Le16(0xE4).Le16(0x3B2).Bytes()},
        {"UTF-16BE", ByteWriter().U8(2).Be16(0xE4).Be16(0x3B2).Be16(0).Bytes()},
        {"UTF-8", ByteWriter().U8(3).Text(expected).Bytes()},
        {"UTF-8 with mark", ByteWriter().U8(3).Text("\xEF\xBB\xBF").Text(expected).Bytes()},
    };
    for (const auto& [name, content] : cases)
        EXPECT_EQ(OpenFrame(4, "TIT2", content).Tag("Title"), expected) << name;
    EXPECT_EQ(OpenTag(Id3Tag(4, {Id3Text(4, "TIT2", "\xE4\xDF")})).Tag("Title"),
              "\xC3\xA4\xC3\x9F");
}

TEST(Id3v2, JoinsSeveralValuesByOneCarriageReturn) {
    EXPECT_EQ(OpenFrame(4, "TPE1", ByteWriter().U8(3).Text("One").U8(0).Text("Two").Bytes())
                  .Tag("Artist"),
              "One\rTwo");
    const ByteList wide =
        ByteWriter().U8(1).Be16(0xFEFF).Be16Text(u"One").Be16(0).Be16Text(u"Two").Be16(0).Bytes();
    EXPECT_EQ(OpenFrame(4, "TPE1", wide).Tag("Artist"), "One\rTwo");
}

struct UserCase {
    const char* description;
    const char* text;
    const char* column;
    const char* value;
};

TEST(Id3v2, MapsUserTextToColumns) {
    const UserCase cases[] = {
        {"ALBUM ARTIST", "x", "Album Artist", "x"},
        {"ALBUMARTIST", "x", "Album Artist", "x"},
        {"Band", "x", "Band", "x"},
        {"ORCHESTRA", "x", "Band", "x"},
        {"STYLE", "x", "Style", "x"},
        {"MOOD", "x", "Mood", "x"},
        {"LAST_PLAYED", "x", "Last Played", "x"},
        {"PLAY_COUNTER", "9", "Playcount", "9"},
        {"RATING", "80", "Rating", "8"},
        {"replaygain_track_gain", "-6.2 dB", "Replaygain_Track_Gain", "-6.2 dB"},
        {"REPLAYGAIN_TRACK_PEAK", "0.98", "Replaygain_Track_Peak", "0.98"},
        {"REPLAYGAIN_ALBUM_GAIN", "1 dB", "Replaygain_Album_Gain", "1 dB"},
        {"REPLAYGAIN_ALBUM_PEAK", "1.0", "Replaygain_Album_Peak", "1.0"},
        {"TrueSpinResult", "OK", "TrueSpinResult", "OK"},
        {"SOMETHING ELSE", "x", "", ""},
    };
    for (const UserCase& row : cases) {
        const OpenedFile file = OpenFrame(
            3, "TXXX", ByteWriter().U8(0).Text(row.description).U8(0).Text(row.text).Bytes());
        EXPECT_EQ(file.Tag(row.column), row.value) << row.description;
        EXPECT_EQ(file.tags.size(), *row.value != 0 ? 1u : 0u) << row.description;
    }
}

TEST(Id3v2, AddsTotalsFromFieldsOfTheirOwnInAnyOrder) {
    const auto user = [](std::string_view name, std::string_view text) {
        return Id3Frame(4, "TXXX", ByteWriter().U8(3).Text(name).U8(0).Text(text).Bytes());
    };
    const OpenedFile file =
        OpenTag(Id3Tag(4, {user("TOTALTRACKS", "12"), Id3Text(4, "TRCK", "3"),
                           Id3Text(4, "TPOS", "1/2"), user("TOTALDISCS", "5")}));
    EXPECT_EQ(file.Tag("Track"), "3/12");
    EXPECT_EQ(file.Tag("Disc"), "1/2");
}

TEST(Id3v2, TakesTheCommentWithoutDescription) {
    const auto comment = [](std::string_view description, std::string_view text) {
        ByteWriter content;
        content.U8(0).Text("eng").Text(description).U8(0).Text(text);
        return Id3Frame(3, "COMM", content.Bytes());
    };
    EXPECT_EQ(
        OpenTag(Id3Tag(3, {comment("iTunNORM", " 00000A"), comment("", "Real")})).Tag("Comment"),
        "Real");
}

TEST(Id3v2, TakesRatingAndCountFromThePopularimeter) {
    struct Case {
        std::uint8_t popularity;
        const char* rating;
    };
    const Case cases[] = {{0, "0"},   {1, "2"},   {2, "1"},   {23, "2"},  {32, "3"},
                          {64, "4"},  {96, "5"},  {128, "6"}, {160, "7"}, {196, "8"},
                          {224, "9"}, {254, "9"}, {255, "10"}};
    for (const Case& row : cases) {
        const ByteList content =
            ByteWriter().Text("a@b").U8(0).U8(row.popularity).Be32(258).Bytes();
        const OpenedFile file = OpenFrame(3, "POPM", content);
        EXPECT_EQ(file.Tag("Rating"), row.rating) << int{row.popularity};
        EXPECT_EQ(file.Tag("Playcount"), "258");
    }
    EXPECT_EQ(OpenFrame(3, "PCNT", ByteWriter().Be32(5).Bytes()).Tag("Playcount"), "5");
}

TEST(Id3v2, NotesACover) {
    EXPECT_EQ(OpenFrame(3, "APIC", ByteList(20)).Property("Cover Art"), "Yes");
    EXPECT_EQ(OpenFrame(2, "PIC", ByteList(20)).Property("Cover Art"), "Yes");
}

TEST(Id3v2, FindsTextBehindALargeCover) {
    const OpenedFile file =
        OpenTag(Id3Tag(3, {Id3Frame(3, "APIC", ByteList(3 << 20)), Id3Text(3, "TIT2", "Behind")}));
    EXPECT_EQ(file.Tag("Title"), "Behind");
}

// Of a whole tag up to 2.3: a zero behind each 0xFF, sizes of the plain bytes.
TEST(Id3v2, TakesUnsynchronisationBack) {
    const ByteList plain =
        Id3Frame(3, "TIT2", ByteWriter().U8(1).Le16(0xFEFF).Le16(0xFF).Le16(0x100).Bytes());
    ByteList body;
    for (const std::uint8_t byte : plain) {
        body.push_back(byte);
        if (byte == 0xFF) body.push_back(0);
    }
    EXPECT_EQ(OpenTag(Id3Tag(3, {body, Id3Text(3, "TPE1", "Next")}, 0x80)).tags,
              (TextPairs{{"Title", "\xC3\xBF\xC4\x80"}, {"Artist", "Next"}}));
}

// Of a single frame in 2.4, which has its own flag and the size of all bytes.
TEST(Id3v2, TakesUnsynchronisationOfSingleFramesBack) {
    const ByteList content = ByteWriter().U8(1).U8(0xFF).U8(0).U8(0xFE).Le16(0x41).Bytes();
    EXPECT_EQ(OpenTag(Id3Tag(4, {Id3Frame(4, "TIT2", content, 0x02)}, 0x80)).Tag("Title"), "A");
}

TEST(Id3v2, SkipsTheFieldsThatFlagsAnnounce) {
    const ByteList text = ByteWriter().U8(0).Text("Title").Bytes();
    const auto with = [&text](std::size_t front) {
        return ByteWriter().Fill(front, 1).Raw(text).Bytes();
    };
    EXPECT_EQ(OpenTag(Id3Tag(3, {Id3Frame(3, "TIT2", with(1), 0x20)})).Tag("Title"), "Title");
    EXPECT_EQ(OpenTag(Id3Tag(4, {Id3Frame(4, "TIT2", with(1), 0x40)})).Tag("Title"), "Title");
    EXPECT_EQ(OpenTag(Id3Tag(4, {Id3Frame(4, "TIT2", with(4), 0x01)})).Tag("Title"), "Title");
    EXPECT_EQ(OpenTag(Id3Tag(4, {Id3Frame(4, "TIT2", with(5), 0x41)})).Tag("Title"), "Title");
}

TEST(Id3v2, LeavesCompressedAndEncryptedFramesOut) {
    const ByteList text = ByteWriter().U8(0).Text("Title").Bytes();
    for (const std::uint16_t flags : {std::uint16_t{0x80}, std::uint16_t{0x40}})
        EXPECT_EQ(OpenTag(Id3Tag(3, {Id3Frame(3, "TIT2", text, flags)})).Tag("Title"), "");
    for (const std::uint16_t flags : {std::uint16_t{0x08}, std::uint16_t{0x04}})
        EXPECT_EQ(OpenTag(Id3Tag(4, {Id3Frame(4, "TIT2", text, flags)})).Tag("Title"), "");
}

TEST(Id3v2, SkipsTheExtendedHeader) {
    const ByteList third = ByteWriter().Be32(6).Fill(6).Bytes();
    const ByteList fourth = ByteWriter().Safe32(6).U8(1).U8(0).Bytes();
    EXPECT_EQ(OpenTag(Id3Tag(3, {third, Id3Text(3, "TIT2", "Title")}, 0x40)).Tag("Title"), "Title");
    EXPECT_EQ(OpenTag(Id3Tag(4, {fourth, Id3Text(4, "TIT2", "Title")}, 0x40)).Tag("Title"),
              "Title");
}

TEST(Id3v2, ToleratesPlainSizesInVersion4) {
    const std::string longText(200, 'x');
    ByteWriter frame;
    frame.Text("TIT2").Be32(201).Be16(0).U8(0).Text(longText);
    const OpenedFile file = OpenTag(Id3Tag(4, {frame.Bytes(), Id3Text(4, "TPE1", "Next")}));
    EXPECT_EQ(file.Tag("Title"), longText);
    EXPECT_EQ(file.Tag("Artist"), "Next");
}

TEST(Id3v2, StopsAtPaddingAndAtDamage) {
    const ByteList title = Id3Text(3, "TIT2", "Title");
    const ByteList artist = Id3Text(3, "TPE1", "Artist");
    const ByteList tooLarge = ByteWriter().Text("TALB").Be32(0xFFFFFFFF).Be16(0).Bytes();
    const ByteList noName = ByteWriter().Text("ta b").Be32(1).Be16(0).U8(0).Bytes();
    for (const ByteList& middle : {ByteList(30), tooLarge, noName}) {
        const OpenedFile file = OpenTag(Id3Tag(3, {title, middle, artist}));
        ASSERT_TRUE(file.opened);
        EXPECT_EQ(file.tags, (TextPairs{{"Title", "Title"}}));
    }
}

TEST(Id3v2, IgnoresOtherVersions) {
    ByteList tag = Id3Tag(3, {Id3Text(3, "TIT2", "Title")});
    tag[3] = 5;
    const OpenedFile file = OpenTag(tag);
    ASSERT_TRUE(file.opened);
    EXPECT_TRUE(file.tags.empty());
    EXPECT_EQ(file.Property("ID Tag"), "");
}

}  // namespace
}  // namespace companion_test
