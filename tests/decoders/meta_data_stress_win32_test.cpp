// The reader while its list is rebuilt every few milliseconds.
#include <gtest/gtest.h>
#include <windows.h>

#include <random>
#include <set>
#include <string>
#include <thread>

#include "decoders/decoder_registry.h"
#include "decoders/meta_data_source.h"
#include "foundation/handle.h"
#include "foundation/settings.h"
#include "tests/decoders/row_list.h"
#include "tests/support/decoder_folder.h"
#include "tests/support/eventually.h"
#include "tests/support/open_handles.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/text.h"

namespace {

constexpr int rebuilds = 2500;  // for each of four seeds
constexpr int warmUp = 100;     // until everything that is made once is made
constexpr int fileCount = 20;
constexpr std::int64_t lengthOfAll = 61000;
constexpr std::uint32_t shortGraceMs = 40;

constexpr const char* script =
    "type=.abc|A\necho=Title\nlength-ms=61000\nneeds-file=1\n"
    "[1.abc]\necho=Title\nlength-ms=61000\nneeds-file=1\nsleep=3\n"
    "[2.abc]\nopen=0\n"
    "[hang.abc]\necho=Title\nlength-ms=61000\nwait=tonequarry-stress-gate\n";

// One form's list and its reader, and what its rows must come to.
class StressedList {
public:
    explicit StressedList(unsigned seed) : random_(seed) {
        InitSettings();
        // Held here, the library need not be loaded anew for each reader.
        EXPECT_TRUE(LoadForLists(decoders_.Add("one", script), holder_));
        for (int i = 0; i < fileCount; ++i)
            disk_.AddFile(NameOf(i).Chars(), "x");
    }

    // As a folder is listed: the reader ends, the rows go, new ones come.
    void Rebuild() {
        source_.StopReader();
        source_.ForgetRows();
        // The head of the old queue may be taken still; it leads to no row.
        source_.TakeFinished([](const MetaDataItem& item) { EXPECT_EQ(item.row, nullptr); });
        rows_ = RowList();
        missedSince_ = missing_;
        for (auto count = random_() % 12; count != 0; --count)
            rows_.Add(PathOf(static_cast<int>(random_() % (fileCount + 2))), random_() % 2);
        taken_ = 0;
        drained_ = rows_.Count() == 0;
        source_.Refill(rows_);
    }

    // What happens while the list stands.
    void Live() {
        for (auto steps = random_() % 6; steps != 0; --steps) {
            if (random_() % 3 == 0) ChangeDisk();
            if (random_() % 2 == 0) Sleep(1);
            Pump();
        }
    }

    // The list is left alone until all of it has come.
    void Settle() {
        EXPECT_TRUE(Eventually([&] {
            Pump();
            return drained_;
        })) << taken_
            << " of " << rows_.Count();
        EXPECT_TRUE(Eventually([&] { return !source_.IsReading(); }));
    }

    // A second list whose decoder hangs past the grace of its stop, and is let go
    // while its thread is frozen.
    void Hang() {
        decoders_.ClearLog("one");
        const clKernelHandle gate(CreateEventW(nullptr, TRUE, FALSE, L"tonequarry-stress-gate"));
        RowList rows;
        rows.Add(disk_.Path(L"hang.abc"), 1);
        rows.Add(PathOf(0), 1);
        clMetaDataSource source(shortGraceMs);
        source.Refill(rows);
        const std::string opened = "open " + Utf8(disk_.Path(L"hang.abc")) + " 28";
        EXPECT_TRUE(Eventually([&] { return decoders_.Count("one", opened) == 1; }));
        std::thread stopper([&] { source.StopReader(); });
        EXPECT_TRUE(Eventually([&] { return source.Worker().IsSuspended(); }));
        SetEvent(gate.Get());
        source.StopReader();
        stopper.join();
        int seen = 0;
        source.TakeFinished([&](const MetaDataItem& item) {
            ++seen;
            EXPECT_EQ(Utf8(item.tags.Get(L"Title")), Utf8(disk_.Path(L"hang.abc")));
        });
        EXPECT_EQ(seen, 1);
    }

    void Stop() { source_.StopReader(); }
    void ShortenLog() { decoders_.ClearLog("one"); }
    long Taken() const { return allTaken_; }
    long Read() const { return allRead_; }

private:
    static clString NameOf(int number) {
        clString name;
        name.Format(L"%d.%s", number, number == 3 ? L"nope" : L"abc");
        return name;
    }
    clString PathOf(int number) const { return disk_.Path(NameOf(number).Chars()); }

    // A file vanishes or comes back.
    void ChangeDisk() {
        if (missing_.size() < 4) {
            const int number = static_cast<int>(random_() % fileCount);
            DeleteFileW(PathOf(number).Chars());
            missing_.insert(number);
            missedSince_.insert(number);
        } else {
            disk_.AddFile(NameOf(*missing_.begin()).Chars(), "x");
            missing_.erase(missing_.begin());
        }
    }

    bool WasThere(int number) const {
        return number < fileCount && missedSince_.count(number) == 0;
    }
    bool MustBeRead(int number) const { return WasThere(number) && number != 2 && number != 3; }

    void Pump() {
        drained_ =
            source_.TakeFinished([this](const MetaDataItem& item) { Check(item); }) || drained_;
        if (drained_) {
            EXPECT_EQ(taken_, rows_.Count());
        }
    }

    // The results are this row's, complete, and come in the order of the list.
    void Check(const MetaDataItem& item) {
        ASSERT_LT(taken_, rows_.Count());
        ASSERT_EQ(item.rowIndex, rows_.order[static_cast<std::size_t>(taken_)]);
        ASSERT_EQ(item.row, rows_.RowOf(item.rowIndex));
        ++taken_;
        ++allTaken_;
        const std::string path = Utf8(item.row->path);
        const int number = std::stoi(path.substr(path.find_last_of('\\') + 1));
        const std::string title = Utf8(item.tags.Get(L"Title"));
        if (title.empty()) {
            EXPECT_FALSE(MustBeRead(number)) << path;
            EXPECT_EQ(item.tags.Count(), 0);
            EXPECT_EQ(item.row->lengthMs, 0);
        } else {
            ++allRead_;
            EXPECT_EQ(title, path);
            EXPECT_EQ(Utf8(item.tags.Get(L"Length")), "1:01");
            EXPECT_EQ(item.row->lengthMs, lengthOfAll);
        }
        if (WasThere(number)) {
            EXPECT_EQ(item.row->sizeBytes, 1u);
        }
    }

    std::mt19937 random_;
    clScriptedFolder decoders_;
    clTqDecoder holder_;  // goes before the folder that its library lies in
    ScratchFolder disk_;
    RowList rows_;
    clMetaDataSource source_;
    std::set<int> missing_;      // files that are not there now
    std::set<int> missedSince_;  // or were not at any time since the list was made
    std::int32_t taken_ = 0;
    bool drained_ = false;
    long allTaken_ = 0;
    long allRead_ = 0;
};

class MetaDataStress : public testing::TestWithParam<unsigned> {};

}  // namespace

TEST_P(MetaDataStress, NoResultIsLostOrForeignAndNoHandleLeaks) {
    StressedList list(GetParam());
    int handles = 0;
    for (int i = 0; i < rebuilds && !HasFailure(); ++i) {
        list.Rebuild();
        list.Live();
        if (i % 25 == 24) list.Settle();
        if (i % 100 == 99) list.Hang();
        if (i % 100 == 99) list.ShortenLog();
        if (i == warmUp) {
            list.Stop();
            handles = OpenHandles();
        }
    }
    list.Stop();
    EXPECT_EQ(OpenHandles(), handles);
    RecordProperty("taken", std::to_string(list.Taken()));
    RecordProperty("read", std::to_string(list.Read()));
    EXPECT_GT(list.Read(), rebuilds / 5);
}

INSTANTIATE_TEST_SUITE_P(Seeds, MetaDataStress, testing::Values(1u, 2u, 3u, 4u));
