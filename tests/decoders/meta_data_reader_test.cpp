#include "decoders/meta_data_reader.h"

#include <gmock/gmock.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "decoders/tag_list.h"
#include "tests/decoders/row_list.h"
#include "tests/support/text.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Lines = std::vector<std::string>;

// A block of one tag.
std::vector<std::uint8_t> TagBlock(const clString& name, const clString& value) {
    std::vector<std::uint8_t> block;
    const auto put = [&block](const void* data, std::size_t size) {
        const auto* bytes = static_cast<const std::uint8_t*>(data);
        block.insert(block.end(), bytes, bytes + size);
    };
    const std::int32_t count = 1;
    const std::int32_t size = 4 + 2 * (name.Length() + 1 + value.Length() + 1);
    put(&count, sizeof(count));
    put(&size, sizeof(size));
    put(name.Chars(), static_cast<std::size_t>(name.Length() + 1) * sizeof(wchar_t));
    put(value.Chars(), static_cast<std::size_t>(value.Length() + 1) * sizeof(wchar_t));
    return block;
}

// Surroundings that write down each call, and in which a file is what the test
// says. The title of a file is its path.
class ScriptedHost : public MetaDataReaderHost {
public:
    struct File {
        bool opens = true;
        bool hasTags = true;
        std::uint64_t sizeBytes = 0;       // 0: not on the disk
        std::function<void()> duringOpen;  // called while nobody holds the lock
    };

    bool StopRequested() override {
        log.push_back("stop?");
        return stopAtQuestion != 0 && --stopAtQuestion == 0;
    }
    void Lock() override {
        EXPECT_FALSE(locked);
        locked = true;
        log.push_back("lock");
    }
    void Unlock() override {
        EXPECT_TRUE(locked);
        locked = false;
        log.push_back("unlock");
    }
    bool Open(const clString& path, DecoderOpenRecord& record) override {
        EXPECT_FALSE(locked) << "the lock was held while a file was opened";
        log.push_back("open " + Utf8(path));
        const File& file = files[Utf8(path)];
        if (file.duringOpen) file.duringOpen();
        record = {};
        if (!file.opens) return false;
        block_ = TagBlock(L"Title", path);
        if (file.hasTags) {
            record.tags = block_.data();
            record.tagsSize = static_cast<std::uint32_t>(block_.size());
        }
        record.lengthMs = 1000 * path.Length();
        record.waveFormat.nSamplesPerSec = 800;
        return true;
    }
    bool UnitsInHertz() override {
        EXPECT_TRUE(locked);
        log.push_back("units");
        return hertz;
    }
    void FillFileFacts(FileRow& row) override {
        EXPECT_TRUE(locked);
        log.push_back("find " + Utf8(row.path));
        row.sizeBytes = files[Utf8(row.path)].sizeBytes;
    }
    void GiveWay() override {
        EXPECT_FALSE(locked);
        log.push_back("give way");
    }

    // The lines that begin so.
    Lines Only(const std::string& beginning) const {
        Lines lines;
        for (const std::string& line : log) {
            if (line.rfind(beginning, 0) == 0) lines.push_back(line);
        }
        return lines;
    }

    std::map<std::string, File> files;
    int stopAtQuestion = 0;  // the question that is answered with yes; 0 for none
    bool hertz = false;
    bool locked = false;
    Lines log;

private:
    std::vector<std::uint8_t> block_;
};

class Reader : public testing::Test {
protected:
    void Fill(const std::vector<clString>& paths) {
        rows = RowList(paths);
        queue.Refill(rows);
    }
    // "path: title" of each item that is taken.
    Lines Taken() {
        Lines lines;
        drained = queue.TakeFinished([&](const MetaDataItem& item) {
            lines.push_back(Utf8(item.row->path) + ": " + Utf8(item.tags.Get(L"Title")));
        });
        return lines;
    }

    RowList rows;
    MetaDataQueue queue;
    ScriptedHost host;
    bool drained = false;
};

}  // namespace

TEST_F(Reader, TakesTheStepsOfAFileInTheirOrder) {
    Fill({L"a.abc"});
    ReadQueuedFiles(queue, host);
    EXPECT_THAT(host.log, ElementsAre("stop?", "lock", "unlock", "open a.abc", "lock", "units",
                                      "find a.abc", "unlock", "give way", "stop?"));
    EXPECT_THAT(Taken(), ElementsAre("a.abc: a.abc"));
    EXPECT_TRUE(drained);
    EXPECT_EQ(rows.At(0).lengthMs, 5000);
}

TEST_F(Reader, EndsAtOnceWhenNothingIsToDo) {
    ReadQueuedFiles(queue, host);
    EXPECT_THAT(host.log, ElementsAre("stop?", "lock", "unlock"));
}

TEST_F(Reader, AsksForAStopOnceForEachFile) {
    Fill({L"a", L"b", L"c"});
    host.stopAtQuestion = 3;
    ReadQueuedFiles(queue, host);
    EXPECT_THAT(host.Only("stop?"), ElementsAre("stop?", "stop?", "stop?"));
    EXPECT_THAT(host.Only("open"), ElementsAre("open a", "open b"));
    EXPECT_EQ(host.log.back(), "stop?");
    EXPECT_THAT(Taken(), ElementsAre("a: a", "b: b"));
    EXPECT_FALSE(drained);
}

// A file that is being read when the stop comes is brought to its end.
TEST_F(Reader, StoresTheFileThatItIsAtBeforeItStops) {
    Fill({L"a", L"b"});
    host.files["a"].duringOpen = [&] { host.stopAtQuestion = 1; };
    ReadQueuedFiles(queue, host);
    EXPECT_THAT(host.Only("open"), ElementsAre("open a"));
    EXPECT_THAT(Taken(), ElementsAre("a: a"));
}

TEST_F(Reader, ReadsInTheOrderOfTheQueueAndPassesByWhatIsDone) {
    Fill({L"c", L"a", L"b"});
    queue.FirstWithPath(L"a")->done = true;
    ReadQueuedFiles(queue, host);
    EXPECT_THAT(host.Only("open"), ElementsAre("open c", "open b"));
    EXPECT_THAT(Taken(), ElementsAre("c: c", "a: ", "b: b"));
}

TEST_F(Reader, AFileThatDoesNotOpenEndsDoneWithoutTags) {
    Fill({L"a", L"b"});
    host.files["a"] = {.opens = false, .hasTags = true, .sizeBytes = 17, .duringOpen = {}};
    ReadQueuedFiles(queue, host);
    EXPECT_EQ(queue.Count(), 2);
    queue.TakeFinished(
        [&](const MetaDataItem& item) { EXPECT_EQ(item.tags.Count() == 0, item.rowIndex == 0); });
    EXPECT_EQ(rows.At(0).lengthMs, 0);
    EXPECT_EQ(rows.At(0).sizeBytes, 17u);
    EXPECT_EQ(host.Only("units").size(), 1u);
}

TEST_F(Reader, LooksForTheFileOnDiskOnlyWhereTheSizeIsNotKnown) {
    rows.Add(L"known", 5);
    rows.Add(L"unknown");
    rows.Add(L"gone");
    queue.Refill(rows);
    host.files["known"].sizeBytes = 1;
    host.files["unknown"].sizeBytes = 2;
    ReadQueuedFiles(queue, host);
    EXPECT_THAT(host.Only("find"), ElementsAre("find unknown", "find gone"));
    EXPECT_EQ(rows.At(0).sizeBytes, 5u);
    EXPECT_EQ(rows.At(1).sizeBytes, 2u);
    EXPECT_EQ(rows.At(2).sizeBytes, 0u);
    EXPECT_THAT(Taken(), ElementsAre("known: known", "unknown: unknown", "gone: gone"));
}

TEST_F(Reader, DropsTheResultsOfAFileWhoseListWasRebuilt) {
    Fill({L"a", L"b"});
    RowList others({L"x"});
    host.files["a"].duringOpen = [&] {
        queue.Refill(others);
        rows = RowList();
    };
    ReadQueuedFiles(queue, host);
    EXPECT_THAT(host.Only("open"), ElementsAre("open a", "open x"));
    EXPECT_EQ(host.Only("units").size(), 1u);
    EXPECT_THAT(host.Only("find"), ElementsAre("find x"));
    EXPECT_THAT(Taken(), ElementsAre("x: x"));
    EXPECT_EQ(others.At(0).lengthMs, 1000);
}

TEST_F(Reader, AFileThatTheRebuiltListHasTooGetsTheResults) {
    Fill({L"a", L"b"});
    RowList others({L"x", L"a"});
    host.files["a"].duringOpen = [&] {
        queue.Refill(others);
        host.files["a"].duringOpen = nullptr;
    };
    ReadQueuedFiles(queue, host);
    EXPECT_THAT(host.Only("open"), ElementsAre("open a", "open x"));
    EXPECT_THAT(Taken(), ElementsAre("x: x", "a: a"));
}

TEST_F(Reader, FindsItsItemAgainWhenThePumpHasTakenOthers) {
    Fill({L"a", L"b", L"c"});
    host.files["b"].duringOpen = [&] { EXPECT_THAT(Taken(), ElementsAre("a: a")); };
    ReadQueuedFiles(queue, host);
    EXPECT_THAT(Taken(), ElementsAre("b: b", "c: c"));
    EXPECT_TRUE(drained);
}

// The second file's results go to the first item of that path, and so does its
// end: the second item stays undone until the pump has taken the first.
TEST_F(Reader, RereadsTheSecondOfTwoRowsOfOnePathUntilTheFirstIsTaken) {
    Fill({L"a", L"a", L"b"});
    int opened = 0;
    host.files["a"].duringOpen = [&] {
        if (++opened == 5) {
            EXPECT_THAT(Taken(), ElementsAre("a: a"));
        }
    };
    ReadQueuedFiles(queue, host);
    EXPECT_THAT(host.Only("open"),
                ElementsAre("open a", "open a", "open a", "open a", "open a", "open b"));
    EXPECT_THAT(Taken(), ElementsAre("a: a", "b: b"));
    EXPECT_EQ(rows.At(0).lengthMs, 1000);
    EXPECT_EQ(rows.At(1).lengthMs, 1000);
}

// The tags of the first reading, and the length of the last.
TEST_F(Reader, AReadingWithoutTagsLeavesThoseOfAnEarlierOne) {
    Fill({L"a", L"a"});
    int opened = 0;
    host.files["a"].duringOpen = [&] {
        host.files["a"].hasTags = ++opened != 2;
        if (opened == 3) {
            queue.TakeFinished([](const MetaDataItem& item) {
                EXPECT_EQ(Utf8(item.tags.Get(L"Title")), "a");
                EXPECT_EQ(Utf8(item.tags.Get(L"Length")), "0:01");
                TagList tags;
                item.tags.CopyTo(tags);
                std::int64_t lengths = 0;
                for (std::int64_t i = 0; i < tags.Count(); ++i)
                    lengths += tags.At(i).name.Equals(L"Length") ? 1 : 0;
                EXPECT_EQ(lengths, 1);
            });
        }
    };
    ReadQueuedFiles(queue, host);
    EXPECT_EQ(host.Only("open").size(), 3u);
    EXPECT_THAT(Taken(), ElementsAre("a: a"));
}

TEST_F(Reader, RowsWhosePathsDifferInCaseAreTwoFiles) {
    Fill({L"a", L"A"});
    ReadQueuedFiles(queue, host);
    EXPECT_THAT(host.Only("open"), ElementsAre("open a", "open A"));
    EXPECT_THAT(Taken(), ElementsAre("a: a", "A: A"));
}

TEST_F(Reader, GivesWayBehindTheFirstFileAndEachTenthAfterIt) {
    for (int i = 0; i < 25; ++i)
        rows.Add(clString(i));
    queue.Refill(rows);
    ReadQueuedFiles(queue, host);
    std::vector<int> givenWay;
    int files = 0;
    for (const std::string& line : host.log) {
        if (line.rfind("open", 0) == 0) ++files;
        if (line == "give way") givenWay.push_back(files);
    }
    EXPECT_THAT(givenWay, ElementsAre(1, 11, 21));
}

TEST_F(Reader, AsksForTheUnitsAnewForEachFile) {
    Fill({L"a", L"b"});
    host.files["a"].duringOpen = [&] { host.hertz = false; };
    host.files["b"].duringOpen = [&] { host.hertz = true; };
    ReadQueuedFiles(queue, host);
    Lines rates;
    queue.TakeFinished(
        [&](const MetaDataItem& item) { rates.push_back(Utf8(item.tags.Get(L"Sample Rate"))); });
    EXPECT_THAT(rates, ElementsAre("0.8 KHz", "800 Hz"));
}

TEST_F(Reader, ReadsNothingOfAListThatGaveUpItsRows) {
    Fill({L"a"});
    queue.ForgetRows();
    rows = RowList();
    ReadQueuedFiles(queue, host);
    EXPECT_THAT(host.Only("open"), IsEmpty());
    EXPECT_EQ(queue.Count(), 1);
}
