// TagLib's own test files, with the damaged ones that once broke it, and
// thousands of files damaged at random.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>

#include "tests/companions/mutator.h"
#include "tests/companions/taglib_support.h"

namespace companion {
namespace {

// What the host relies on, whatever the file.
void ExpectSaneFacts(const FileFacts& facts, const std::string& what) {
    ASSERT_GT(facts.format.channels, 0) << what;
    ASSERT_GT(facts.format.samplesPerSecond, 0u) << what;
    ASSERT_GT(facts.format.bitsPerSample, 0) << what;
    ASSERT_GE(facts.bitRate, 0) << what;
    ASSERT_GE(facts.lengthMs, 0) << what;
    ASSERT_GE(facts.sourceBytes, 0) << what;
    ASSERT_LE(facts.format.extension.size(), 22u) << what;
}

std::vector<std::filesystem::path> CorpusFiles() {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(
             std::filesystem::path(PlatformPath(TAGLIB_TEST_DATA)))) {
        if (entry.is_regular_file()) files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

TEST(TagLibCorpus, EveryFileIsReadOrRefused) {
    if (std::string_view(TAGLIB_TEST_DATA).empty())
        GTEST_SKIP() << "an installed TagLib is in use; TAGLIB_TEST_DATA names no folder";
    int opened = 0;
    int refused = 0;
    for (const auto& file : CorpusFiles()) {
        FileFacts facts;
        if (!ReadFile(file.u16string(), facts)) {
            ++refused;
            continue;
        }
        ++opened;
        ExpectSaneFacts(facts, file.string());
    }
    RecordProperty("opened", opened);
    RecordProperty("refused", refused);
    // 43 of them are modules, WAV and AIFF files, tags without audio, or
    // damaged in their headers.
    EXPECT_EQ(64, opened);
    EXPECT_EQ(43, refused);
}

// The front holds all headers; a short seed makes each change likelier to
// matter and each try cheaper.
std::vector<companion_test::SeedFile> Seeds() {
    constexpr std::size_t most = 24 * 1024;
    std::vector<companion_test::SeedFile> seeds;
    const auto add = [&](const std::u16string& path) {
        std::vector<std::uint8_t> bytes = LoadFile(path);
        if (bytes.size() > most) bytes.resize(most);
        const std::size_t name = path.find_last_of(u"/\\") + 1;
        if (!bytes.empty()) seeds.push_back({path.substr(name), std::move(bytes)});
    };
    for (const std::string_view file : codedSamples)
        add(SamplePath(file));
    if (!std::string_view(TAGLIB_TEST_DATA).empty()) {
        for (const auto& file : CorpusFiles())
            add(file.u16string());
    }
    return seeds;
}

TEST(TagLibMutants, NeverBreakTheReader) {
#ifdef _WIN32
    // The sanitizers are in the native build; here each file costs far more.
    constexpr int mutants = 1'000;
#else
    constexpr int mutants = 10'000;
#endif
    const auto seeds = Seeds();
    ASSERT_GE(seeds.size(), std::size(codedSamples));
    const companion_test::MutationReport report =
        companion_test::OpenMutants(seeds, mutants, 20'240'229);
    std::printf("%s\n", companion_test::Describe(report).c_str());
    EXPECT_EQ(mutants, report.mutants);
    EXPECT_EQ(0, report.malformed);
    EXPECT_LT(report.worstMicroseconds, 10'000'000);
    // Were all of them refused at the door, nothing would have been tried.
    EXPECT_GT(report.opened, mutants / 4);
    EXPECT_LT(report.opened, mutants);
}

}  // namespace
}  // namespace companion
