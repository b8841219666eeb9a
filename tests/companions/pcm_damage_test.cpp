// Damaged, misnamed and hostile files.
#include <gtest/gtest.h>

#include <chrono>

#include "tests/companions/opened_file.h"
#include "tests/companions/pcm_samples.h"

namespace companion_test {
namespace {

TEST(Damage, RefusesWhatIsNoneOfTheContainers) {
    const std::pair<const char*, ByteList> cases[] = {
        {"empty", {}},
        {"one byte", {'R'}},
        {"magic alone", {'R', 'I', 'F', 'F'}},
        {"text", ByteWriter().Text("This is not audio at all, whatever its name says.").Bytes()},
        {"RIFF of another form",
         ByteWriter().Text("RIFF").Le32(100).Text("AVI ").Fill(100).Bytes()},
        {"MPEG", ByteWriter().U8(0xFF).U8(0xFB).Fill(500, 0x90).Bytes()},
        {"FLAC", ByteWriter().Text("fLaC").Fill(500).Bytes()},
        {"zeros", ByteList(5000)},
        {"RIFF without chunks", RiffFile({})},
        {"format without audio", RiffFile({RiffChunk("fmt ", WaveFormatBytes({}))})},
        {"audio without format", RiffFile({RiffChunk("data", ByteList(400))})},
        {"short format",
         RiffFile({RiffChunk("fmt ", ByteList(13, 1)), RiffChunk("data", ByteList(400))})},
    };
    for (const auto& [name, bytes] : cases)
        EXPECT_FALSE(OpenBytes(bytes, u"damaged.wav").opened) << name;
}

TEST(Damage, GoesByTheContentWhateverTheName) {
    const std::u16string names[] = {u"a.wav", u"a.aif", u"a.w64", u"a.au",
                                    u"a.caf", u"a",     u"a.mp3"};
    for (const SeedFile& seed : RichFiles())
        for (const std::u16string& name : names)
            EXPECT_TRUE(OpenBytes(seed.bytes, name).opened)
                << ToUtf8(seed.name) << " as " << ToUtf8(name);
}

// Each prefix of a file either opens with sane numbers or does not open.
TEST(Damage, SurvivesCutsAtEveryByte) {
    for (const SeedFile& seed : RichFiles()) {
        const TemporaryFile file(seed.name, {});
        int opened = 0;
        for (std::size_t length = 0; length <= seed.bytes.size(); ++length) {
            const auto end = seed.bytes.begin() + static_cast<std::ptrdiff_t>(length);
            file.Rewrite(ByteList(seed.bytes.begin(), end));
            const OpenedFile result = OpenPath(file.Path());
            EXPECT_TRUE(result.wellFormed) << ToUtf8(seed.name) << " at " << length;
            EXPECT_LE(result.sourceBytes, static_cast<std::int64_t>(length));
            if (result.opened) ++opened;
        }
        EXPECT_GT(opened, 0) << ToUtf8(seed.name);
    }
}

std::int64_t MillisecondsToOpen(const ByteList& bytes) {
    const TemporaryFile file(u"slow.bin", bytes);
    const auto start = std::chrono::steady_clock::now();
    OpenPath(file.Path());
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() -
                                                                 start)
        .count();
}

// Millions of the smallest pieces of each kind, which must not take a time
// that anyone notices. The bound is loose: machines under test are busy.
TEST(Damage, EndsSoonOnFilesOfCountlessPieces) {
    constexpr std::size_t megabytes = 8;
    const auto repeated = [](const ByteList& piece, std::size_t front) {
        ByteWriter writer;
        writer.Fill(front);
        while (writer.Size() < (megabytes << 20))
            writer.Raw(piece);
        return writer.Bytes();
    };
    const ByteList format = RiffChunk("fmt ", WaveFormatBytes({}));
    const ByteList emptyField = ByteWriter().Text("INAM").Le32(1).Text("x").U8(0).Bytes();
    const ByteList frame = Id3Text(3, "TPE1", "x");
    const ByteList user = ByteWriter().Text("title").U8(0).Text("x").U8(0).Bytes();
    const ByteList manyValues(megabytes << 20, 'x');
    ByteList zeroRich = ByteList(megabytes << 20);
    for (std::size_t i = 1; i < zeroRich.size(); i += 2)
        zeroRich[i] = 'a';
    const std::pair<const char*, ByteList> cases[] = {
        {"chunks of RIFF", RiffFile({format, repeated(RiffChunk("junk", {}), 0)})},
        {"fields of INFO",
         RiffFile(
             {format,
              RiffChunk("LIST", ByteWriter().Text("INFO").Raw(repeated(emptyField, 0)).Bytes())})},
        {"frames of ID3v2", RiffFile({format, RiffChunk("id3 ", Id3Tag(3, {repeated(frame, 0)}))})},
        {"one frame of many values",
         RiffFile({format, RiffChunk("id3 ", Id3Tag(4, {Id3Frame(4, "TPE1", zeroRich)}))})},
        {"one long text",
         RiffFile({format, RiffChunk("id3 ", Id3Tag(3, {Id3Frame(3, "TIT2", manyValues)}))})},
        {"an unsynchronised tag",
         RiffFile({format, RiffChunk("id3 ", Id3Tag(3, {repeated(frame, 0)}, 0x80))})},
        {"chunks of AIFF", AiffFile("AIFF", {repeated(IffChunk("junk", {}), 0)})},
        {"annotations of AIFF",
         AiffFile("AIFF", {repeated(IffChunk("ANNO", ByteWriter().Text("ab").Bytes()), 0)})},
        {"chunks of Wave64", Wave64File({repeated(Wave64Chunk("junk", {}), 0)})},
        {"chunks of CAF", CafFile({repeated(CafChunk("junk", {}), 0)})},
        {"info of CAF",
         CafFile({CafChunk("info", ByteWriter().Be32(0xFFFFFFFF).Raw(repeated(user, 0)).Bytes())})},
    };
    for (const auto& [name, bytes] : cases) {
        const std::int64_t elapsed = MillisecondsToOpen(bytes);
        EXPECT_LT(elapsed, 2000) << name;
        std::printf("%-26s %lld ms\n", name, static_cast<long long>(elapsed));
    }
}

}  // namespace
}  // namespace companion_test
