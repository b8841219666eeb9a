// The library as the program sees it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <set>
#include <sstream>
#include <thread>

#include "companions/common/exports.h"
#include "tests/companions/opened_file.h"
#include "tests/companions/pcm_samples.h"

namespace companion_test {
namespace {

TEST(Exports, ListTheAudioTypes) {
    const TextPairs types = DecodedTypes();
    std::vector<std::string> extensions;
    for (const auto& [extension, description] : types) {
        extensions.push_back(extension);
        EXPECT_FALSE(description.empty()) << extension;
    }
    EXPECT_THAT(extensions, testing::ElementsAre(".wav", ".wave", ".bwf", ".rf64", ".w64", ".aif",
                                                 ".aiff", ".aifc", ".au", ".snd", ".caf"));
}

TEST(Exports, NameThePropertiesAndNoneThatTheProgramDerives) {
    std::istringstream names(PropertyElementNames());
    std::set<std::string> listed;
    for (std::string name; std::getline(names, name, '\r');)
        listed.insert(name);
    for (const char* derived :
         {"Channels", "Sample Rate", "Bit Rate", "Sample Size", "Compression", "Length", ""})
        EXPECT_EQ(listed.count(derived), 0u) << derived;
    for (const SeedFile& seed : RichFiles())
        for (const auto& [name, value] : OpenBytes(seed.bytes).properties)
            EXPECT_EQ(listed.count(name), 1u) << name;
}

TEST(Exports, AnswerZeroToOddInput) {
    const auto decodes = HostText(u"Decodes");
    const auto elements = HostText(u"Property Elements");
    const auto other = HostText(u"decodes");
    const DecoderInstance instance = Create(nullptr);
    ASSERT_NE(instance, 0u);
    DecoderGetRecord record = {};
    EXPECT_EQ(Get(0, decodes.c_str(), &record), 0);
    EXPECT_EQ(Get(instance, nullptr, &record), 0);
    EXPECT_EQ(Get(instance, decodes.c_str(), nullptr), 0);
    EXPECT_EQ(Get(instance, other.c_str(), &record), 0);
    record.index = 11;
    EXPECT_EQ(Get(instance, decodes.c_str(), &record), 0);
    EXPECT_EQ(record.text, nullptr);
    EXPECT_EQ(record.text2, nullptr);
    record.index = 1;
    EXPECT_EQ(Get(instance, elements.c_str(), &record), 0);
    const std::basic_string<DecoderChar> endless(40000, DecoderChar{'x'});
    EXPECT_EQ(Get(instance, endless.c_str(), &record), 0);

    DecoderOpenRecord open = {};
    EXPECT_EQ(Open(0, &open), 0);
    EXPECT_EQ(Open(instance, nullptr), 0);
    EXPECT_EQ(Open(instance, &open), 0);
    for (const std::u16string& path : {std::u16string(), std::u16string(u"no such file.wav"),
                                       std::filesystem::temp_directory_path().u16string()}) {
        const auto name = HostText(path);
        open.fileName = name.c_str();
        EXPECT_EQ(Open(instance, &open), 0) << ToUtf8(path);
    }
    open.fileName = endless.c_str();
    EXPECT_EQ(Open(instance, &open), 0);
    const std::array<DecoderChar, 2> surrogate = {static_cast<DecoderChar>(0xD800), 0};
    open.fileName = surrogate.data();
    EXPECT_EQ(Open(instance, &open), 0);
    EXPECT_EQ(open.tags, nullptr);
    EXPECT_EQ(open.sourceBytes, 0);
    Destroy(instance);
    Destroy(0);
}

TEST(Exports, AnswerZeroWhereTheLibraryOffersNothing) {
    EXPECT_EQ(Set(), 0);
    EXPECT_EQ(Close(), 0);
    EXPECT_EQ(DecodeBlock(), 0);
    EXPECT_EQ(SetPosition(), 0);
    EXPECT_EQ(DeleteATag(), 0);
}

// The second file's blocks take the place of the first one's.
TEST(Exports, OpenTwiceOnOneInstanceWithoutClose) {
    const auto title = [](const char* text) {
        return WaveFile({}, 400, {RiffChunk("id3 ", Id3Tag(3, {Id3Text(3, "TIT2", text)}))});
    };
    const TemporaryFile first(u"first.wav", title("First"));
    const TemporaryFile second(u"second.wav", title("A much longer title than the first"));
    const DecoderInstance instance = Create(nullptr);
    std::uint32_t sizes[2] = {};
    int index = 0;
    for (const TemporaryFile* file : {&first, &second}) {
        const auto name = HostText(file->Path());
        DecoderOpenRecord record = {};
        record.fileName = name.c_str();
        record.flags = DECODER_OPEN_FLAGS;
        ASSERT_NE(Open(instance, &record), 0);
        ASSERT_NE(record.tags, nullptr);
        std::int32_t count = 0;
        std::memcpy(&count, record.tags, sizeof(count));
        EXPECT_EQ(count, 1);
        sizes[index++] = record.tagsSize;
    }
    EXPECT_LT(sizes[0], sizes[1]);
    Destroy(instance);
}

TEST(Exports, OpenFilesWithNamesBeyondAscii) {
    const std::u16string names[] = {u"\u00E4\u00F6\u00FC \u00DF.wav", u"\u0416\u0443\u043A.wav",
                                    u"\u97F3\u697D.wav", u"\U0001F3B5.wav",
                                    u"e\u0301 & 'x' [1].wav"};
    for (const std::u16string& name : names) {
        const OpenedFile file = OpenBytes(WaveFile({}, 176400), name);
        EXPECT_TRUE(file.opened) << ToUtf8(name);
        EXPECT_EQ(file.lengthMs, 1000) << ToUtf8(name);
    }
}

// A chain of folders, made one by one, for a path that passes the 260 units of
// the older limit. On Windows only the extended form of a path makes those.
class DeepFolder {
public:
    explicit DeepFolder(const std::filesystem::path& base) : _plain(base), _made(base) {
#ifdef _WIN32
        _made = std::filesystem::path(L"\\\\?\\" + base.wstring());
#endif
        for (int i = 0; i < 4; ++i) {
            _plain /= std::u16string(80, static_cast<char16_t>(u'a' + i));
            _made /= std::u16string(80, static_cast<char16_t>(u'a' + i));
            std::filesystem::create_directory(_made);
            _folders.push_back(_made);
        }
    }
    ~DeepFolder() {
        std::error_code ignored;  // a test has no use for it
        std::filesystem::remove(_made / "long.wav", ignored);
        for (; !_folders.empty(); _folders.pop_back())
            std::filesystem::remove(_folders.back(), ignored);
    }
    DeepFolder(const DeepFolder&) = delete;
    DeepFolder& operator=(const DeepFolder&) = delete;

    void Write(const ByteList& bytes) const {
        std::ofstream file(_made / "long.wav", std::ios::binary);
        file.write(reinterpret_cast<const char*>(bytes.data()),
                   static_cast<std::streamsize>(bytes.size()));
    }
    std::u16string PlainPath() const {
        return (_plain / "long.wav").u16string();
    }

private:
    std::filesystem::path _plain;
    std::filesystem::path _made;
    std::vector<std::filesystem::path> _folders;
};

TEST(Exports, OpenFilesWithLongPaths) {
    const TemporaryFile anchor(u"anchor", {});
    const DeepFolder folder(std::filesystem::path(anchor.Path()).parent_path());
    folder.Write(WaveFile({}, 176400));
    ASSERT_GT(folder.PlainPath().size(), 320u);
    EXPECT_EQ(OpenPath(folder.PlainPath()).lengthMs, 1000);
#ifdef _WIN32
    // Dots and slashes are the host's to write, also where the path is long.
    std::u16string other = folder.PlainPath();
    std::replace(other.begin() + 3, other.end(), u'\\', u'/');
    EXPECT_EQ(OpenPath(other).lengthMs, 1000);
#endif
}

TEST(Exports, ReadFilesThatOthersHoldOpenForWriting) {
    const TemporaryFile file(u"held.wav", WaveFile({}, 176400));
    std::FILE* const holder =
#ifdef _WIN32
        _wfopen(std::filesystem::path(file.Path()).c_str(), L"r+b");
#else
        std::fopen(std::filesystem::path(file.Path()).c_str(), "r+b");
#endif
    ASSERT_NE(holder, nullptr);
    EXPECT_TRUE(OpenPath(file.Path()).opened);
    std::fclose(holder);
}

TEST(Exports, ServeManyInstancesAtOnce) {
    constexpr int threads = 8;
    constexpr int rounds = 40;
    const std::vector<SeedFile> seeds = RichFiles();
    std::vector<std::unique_ptr<TemporaryFile>> files;
    std::vector<OpenedFile> expected;
    for (const SeedFile& seed : seeds) {
        files.push_back(std::make_unique<TemporaryFile>(seed.name, seed.bytes));
        expected.push_back(OpenPath(files.back()->Path()));
        ASSERT_TRUE(expected.back().opened) << ToUtf8(seed.name);
    }
    std::atomic<int> differences = 0;
    std::vector<std::thread> workers;
    for (int worker = 0; worker < threads; ++worker) {
        workers.emplace_back([&, worker] {
            for (int round = 0; round < rounds; ++round) {
                const std::size_t i = static_cast<std::size_t>(worker + round) % files.size();
                const OpenedFile got = OpenPath(files[i]->Path());
                const OpenedFile& want = expected[i];
                const bool same = got.opened && got.tags == want.tags &&
                                  got.properties == want.properties &&
                                  got.lengthMs == want.lengthMs &&
                                  std::memcmp(&got.format, &want.format, sizeof(got.format)) == 0;
                if (!same) ++differences;
            }
        });
    }
    for (std::thread& worker : workers)
        worker.join();
    EXPECT_EQ(differences, 0);
}

TEST(Exports, GiveTheTagsOfEveryContainer) {
    struct Case {
        const char16_t* name;
        const char* title;
        const char* artist;
        const char* kinds;
    };
    const Case cases[] = {
        {u"rich.wav", "Title", "Artist", "INFO\rBEXT\rID3v2.3"},
        {u"ima.wav", "Title", "Artist", "INFO"},
        {u"rich.rf64", "Title", "", "ID3v2.4"},
        {u"rich.w64", "Title", "", "INFO"},
        {u"rich.aif", "Title", "Artist", "AIFF\rID3v2.2"},
        {u"ima.aifc", "Title", "", "ID3v2.4"},
        {u"rich.au", "Title", "Artist", "AU"},
        {u"rich.caf", "Title", "Artist", "CAF"},
    };
    const std::vector<SeedFile> seeds = RichFiles();
    ASSERT_EQ(seeds.size(), std::size(cases));
    for (std::size_t i = 0; i < seeds.size(); ++i) {
        ASSERT_EQ(seeds[i].name, cases[i].name);
        const OpenedFile file = OpenBytes(seeds[i].bytes);
        EXPECT_EQ(file.Tag("Title"), cases[i].title) << ToUtf8(seeds[i].name);
        EXPECT_EQ(file.Tag("Artist"), cases[i].artist) << ToUtf8(seeds[i].name);
        EXPECT_EQ(file.Property("ID Tag"), cases[i].kinds) << ToUtf8(seeds[i].name);
    }
}

}  // namespace
}  // namespace companion_test
