#include "tests/companions/pcm_samples.h"

#include <bit>
#include <string>

namespace companion_test {
namespace {

constexpr std::string_view waveSuffix("\xF3\xAC\xD3\x11\x8C\xD1\x00\xC0\x4F\x8E\xDB\x8A", 12);
constexpr std::string_view riffSuffix("\x2E\x91\xCF\x11\xA5\xD6\x28\xDB\x04\xC1\x00\x00", 12);

ByteList Joined(const std::vector<ByteList>& parts) {
    ByteWriter writer;
    for (const ByteList& part : parts)
        writer.Raw(part);
    return writer.Bytes();
}

// A sample rate as an 80-bit number: the highest bit of the mantissa is set.
ByteList ExtendedRate(std::uint32_t rate) {
    ByteWriter writer;
    const int zeros = std::countl_zero(rate);
    writer.Be16(static_cast<std::uint64_t>(16383 + 31 - zeros));
    writer.Be64(static_cast<std::uint64_t>(rate) << (zeros + 32));
    return writer.Bytes();
}

ByteList InfoList() {
    const auto field = [](std::string_view id, std::string_view text) {
        return RiffChunk(id, ByteWriter().Text(text).U8(0).Bytes());
    };
    return RiffChunk("LIST", ByteWriter()
                                 .Text("INFO")
                                 .Raw(field("INAM", "Title"))
                                 .Raw(field("IART", "Artist"))
                                 .Raw(field("ITRK", "3/12"))
                                 .Raw(field("ICMT", "M\xC3\xBCsli"))
                                 .Bytes());
}

ByteList RichTag(int version, std::uint8_t flags) {
    const bool old = version == 2;
    const ByteList user = ByteWriter()
                              .U8(1)
                              .Le16(0xFEFF)
                              .Le16Text(u"BAND")
                              .Le16(0)
                              .Le16(0xFEFF)
                              .Le16Text(u"Die B\u00E4nd")
                              .Bytes();
    return Id3Tag(version,
                  {Id3Text(version, old ? "TT2" : "TIT2", "Title"),
                   Id3Text(version, old ? "TRK" : "TRCK", "3/12"),
                   Id3Text(version, old ? "TCO" : "TCON", "(17)"),
                   Id3Frame(version, old ? "TXX" : "TXXX", user),
                   Id3Frame(version, old ? "COM" : "COMM",
                            ByteWriter().U8(3).Text("eng").U8(0).Text("Comment").Bytes()),
                   Id3Frame(version, old ? "POP" : "POPM",
                            ByteWriter().Text("me").U8(0).U8(196).Be32(7).Bytes()),
                   Id3Frame(version, old ? "PIC" : "APIC", ByteWriter().Fill(40, 0x55).Bytes())},
                  flags);
}

ByteList RichRf64() {
    const ByteList sizes = ByteWriter().Le64(0).Le64(400).Le64(100).Le32(0).Bytes();
    ByteWriter writer;
    writer.Text("RF64").Le32(0xFFFFFFFF).Text("WAVE").Raw(RiffChunk("ds64", sizes));
    writer.Raw(RiffChunk("fmt ", WaveFormatBytes({})));
    writer.Text("data").Le32(0xFFFFFFFF).Fill(400).Raw(RiffChunk("id3 ", RichTag(4, 0)));
    return writer.Bytes();
}

ByteList RichWave64() {
    const ByteList summary =
        ByteWriter().Le32(1).Text("INAM").Le32(12).Le16Text(u"Title").Le16(0).Bytes();
    const std::string_view summaryId(
        "\xBC\x94\x5F\x92\x5A\x52\xD2\x11\x86\xDC\x00\xC0\x4F\x8E\xDB\x8A", 16);
    return Wave64File({Wave64Chunk("fmt ", WaveFormatBytes({})), Wave64Chunk(summaryId, summary),
                       Wave64Chunk("data", ByteList(400))});
}

ByteList RichCaf() {
    const ByteList packets =
        ByteWriter().Be64(10).Be64(10200).Be32(20).Be32(20).Fill(10, 9).Bytes();
    const ByteList info = ByteWriter()
                              .Be32(2)
                              .Text("title")
                              .U8(0)
                              .Text("Title")
                              .U8(0)
                              .Text("artist")
                              .U8(0)
                              .Text("Artist")
                              .U8(0)
                              .Bytes();
    CafFields fields;
    fields.format = "alac";
    fields.flags = 1;
    fields.bytesPerPacket = 0;
    fields.framesPerPacket = 1024;
    return CafFile({CafDescription(fields), CafChunk("pakt", packets), CafChunk("info", info),
                    CafChunk("chan", ByteWriter().Be32(0x10000).Be32(3).Be32(0).Bytes()),
                    CafData(300)});
}

}  // namespace

ByteList RiffChunk(std::string_view id, const ByteList& content) {
    ByteWriter writer;
    writer.Text(id).Le32(content.size()).Raw(content).Fill(content.size() % 2);
    return writer.Bytes();
}

ByteList IffChunk(std::string_view id, const ByteList& content) {
    ByteWriter writer;
    writer.Text(id).Be32(content.size()).Raw(content).Fill(content.size() % 2);
    return writer.Bytes();
}

ByteList CafChunk(std::string_view id, const ByteList& content) {
    return ByteWriter().Text(id).Be64(content.size()).Raw(content).Bytes();
}

ByteList Wave64Chunk(std::string_view id, const ByteList& content) {
    ByteWriter writer;
    writer.Text(id).Text(id.size() == 4 ? waveSuffix : std::string_view());
    writer.Le64(content.size() + 24).Raw(content).Fill((8 - content.size() % 8) % 8);
    return writer.Bytes();
}

ByteList WaveFormatBytes(const WaveFields& fields) {
    ByteWriter writer;
    writer.Le16(fields.tag).Le16(fields.channels).Le32(fields.rate);
    writer.Le32(fields.bytesPerSecond != 0 ? fields.bytesPerSecond : fields.rate * fields.block);
    writer.Le16(fields.block).Le16(fields.bits);
    if (fields.hasExtra) writer.Le16(fields.extra.size()).Raw(fields.extra);
    return writer.Bytes();
}

ByteList ExtensibleBytes(std::uint16_t validBits, std::uint32_t mask, std::uint16_t tag) {
    ByteWriter writer;
    writer.Le16(validBits).Le32(mask).Le16(tag);
    writer.Text(std::string_view("\0\0\0\0\x10\0\x80\0\0\xAA\0\x38\x9B\x71", 14));
    return writer.Bytes();
}

ByteList RiffFile(const std::vector<ByteList>& chunks, std::string_view magic) {
    const ByteList body = Joined(chunks);
    return ByteWriter().Text(magic).Le32(body.size() + 4).Text("WAVE").Raw(body).Bytes();
}

ByteList WaveFile(const WaveFields& fields, std::size_t dataBytes,
                  const std::vector<ByteList>& behind) {
    std::vector<ByteList> chunks = {RiffChunk("fmt ", WaveFormatBytes(fields)),
                                    RiffChunk("data", ByteList(dataBytes))};
    chunks.insert(chunks.end(), behind.begin(), behind.end());
    return RiffFile(chunks);
}

ByteList Wave64File(const std::vector<ByteList>& chunks) {
    const ByteList body = Joined(chunks);
    ByteWriter writer;
    writer.Text("riff").Text(riffSuffix).Le64(body.size() + 40).Text("wave").Text(waveSuffix);
    return writer.Raw(body).Bytes();
}

ByteList AiffFile(std::string_view form, const std::vector<ByteList>& chunks) {
    const ByteList body = Joined(chunks);
    return ByteWriter().Text("FORM").Be32(body.size() + 4).Text(form).Raw(body).Bytes();
}

ByteList CommonBytes(std::uint16_t channels, std::uint32_t frames, std::uint16_t bits,
                     std::uint32_t rate, std::string_view type) {
    ByteWriter writer;
    writer.Be16(channels).Be32(frames).Be16(bits).Raw(ExtendedRate(rate)).Text(type);
    if (!type.empty()) writer.U8(0).U8(0);
    return writer.Bytes();
}

ByteList SoundBytes(std::size_t dataBytes) {
    return ByteWriter().Be32(0).Be32(0).Fill(dataBytes).Bytes();
}

ByteList CafFile(const std::vector<ByteList>& chunks) {
    return ByteWriter().Text("caff").Be16(1).Be16(0).Raw(Joined(chunks)).Bytes();
}

ByteList CafDescription(const CafFields& fields) {
    ByteWriter writer;
    writer.BeDouble(fields.rate).Text(fields.format).Be32(fields.flags);
    writer.Be32(fields.bytesPerPacket).Be32(fields.framesPerPacket);
    writer.Be32(fields.channels).Be32(fields.bits);
    return CafChunk("desc", writer.Bytes());
}

ByteList CafData(std::size_t dataBytes) {
    return CafChunk("data", ByteWriter().Be32(0).Fill(dataBytes).Bytes());
}

ByteList Id3Tag(int version, const std::vector<ByteList>& frames, std::uint8_t flags) {
    const ByteList body = Joined(frames);
    ByteWriter writer;
    writer.Text("ID3").U8(static_cast<std::uint64_t>(version)).U8(0).U8(flags);
    return writer.Safe32(static_cast<std::uint32_t>(body.size())).Raw(body).Bytes();
}

ByteList Id3Frame(int version, std::string_view id, const ByteList& content, std::uint16_t flags) {
    ByteWriter writer;
    writer.Text(id);
    if (version == 2) return writer.Be24(content.size()).Raw(content).Bytes();
    if (version == 3) writer.Be32(content.size());
    if (version == 4) writer.Safe32(static_cast<std::uint32_t>(content.size()));
    return writer.Be16(flags).Raw(content).Bytes();
}

ByteList Id3Text(int version, std::string_view id, std::string_view latin1Text) {
    return Id3Frame(version, id, ByteWriter().U8(0).Text(latin1Text).Bytes());
}

std::vector<SeedFile> RichFiles() {
    const ByteList bext = ByteWriter()
                              .Text("Description")
                              .Fill(245)
                              .Text("Originator")
                              .Fill(22)
                              .Fill(32)
                              .Text("2024-05-06")
                              .Fill(272)
                              .Bytes();
    WaveFields ima;
    ima.tag = 0x11;
    ima.block = 256;
    ima.bits = 4;
    ima.bytesPerSecond = 22000;
    ima.hasExtra = true;
    ima.extra = ByteWriter().Le16(249).Bytes();
    const ByteList fact = RiffChunk("fact", ByteWriter().Le32(498).Bytes());
    const auto text = [](std::string_view id, std::string_view value) {
        return IffChunk(id, ByteWriter().Text(value).Bytes());
    };
    const ByteList comments = ByteWriter().Be16(1).Be32(0).Be16(0).Be16(4).Text("Note").Bytes();
    return {
        {u"rich.wav",
         WaveFile({}, 400,
                  {InfoList(), RiffChunk("bext", bext), RiffChunk("id3 ", RichTag(3, 0x80))})},
        {u"ima.wav", WaveFile(ima, 512, {fact, InfoList()})},
        {u"rich.rf64", RichRf64()},
        {u"rich.w64", RichWave64()},
        {u"rich.aif",
         AiffFile("AIFF", {IffChunk("COMM", CommonBytes(2, 100, 16, 48000)), text("NAME", "Title"),
                           text("AUTH", "Artist"), text("ANNO", "Note"), IffChunk("COMT", comments),
                           IffChunk("SSND", SoundBytes(400)), IffChunk("ID3 ", RichTag(2, 0))})},
        {u"ima.aifc", AiffFile("AIFC", {IffChunk("COMM", CommonBytes(2, 6, 16, 44100, "ima4")),
                                        IffChunk("SSND", SoundBytes(6 * 68)),
                                        IffChunk("ID3 ", RichTag(4, 0x80))})},
        {u"rich.au", ByteWriter()
                         .Text(".snd")
                         .Be32(56)
                         .Be32(400)
                         .Be32(3)
                         .Be32(44100)
                         .Be32(2)
                         .Text("TITLE=Title\nARTIST=Artist")
                         .Fill(7)
                         .Fill(400)
                         .Bytes()},
        {u"rich.caf", RichCaf()},
    };
}

}  // namespace companion_test
