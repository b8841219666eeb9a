#include "decoders/meta_data_source.h"

#include <gmock/gmock.h>
#include <windows.h>

#include <atomic>
#include <thread>

#include "decoders/meta_data_reader.h"
#include "foundation/handle.h"
#include "foundation/mutex.h"
#include "tests/decoders/meta_data_source_stage.h"
#include "tests/support/import_stub.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

bool IsFreeForOthers(clMutex& mutex) {
    bool free = false;
    std::thread([&] {
        free = mutex.TryLock();
        if (free) mutex.Unlock();
    }).join();
    return free;
}

}  // namespace

TEST_F(MetaDataSource, IsIdleAtFirst) {
    clMetaDataSource source;
    EXPECT_FALSE(source.IsReading());
    EXPECT_EQ(source.Worker().ThreadHandle(), nullptr);
    source.StopReader();
    EXPECT_THAT(Taken(source), IsEmpty());
    EXPECT_FALSE(drained);
}

TEST_F(MetaDataSource, ReadsTheListInItsDisplayOrder) {
    AddRows({L"a.abc", L"b.abc", L"c.ABC"});
    rows.order = {2, 0, 17, 1};
    clMetaDataSource source;
    source.Refill(rows);
    EXPECT_EQ(source.Worker().GraceMs(), 20000u);
    EXPECT_THAT(TakenAtEnd(source), ElementsAre("c.ABC: c.ABC", "a.abc: a.abc", "b.abc: b.abc"));
    EXPECT_TRUE(drained);
    EXPECT_EQ(rows.At(0).lengthMs, 61000);
    EXPECT_THAT(OpenedInOrder(), ElementsAre("c.ABC", "a.abc", "b.abc"));
}

// One load for the run, one instance for each file, and all gone with the thread.
TEST_F(MetaDataSource, ReaderHasADecoderOfItsOwnThatGoesWithTheThread) {
    AddRows({L"a.abc", L"b.abc"});
    clMetaDataSource source;
    source.Refill(rows);
    EXPECT_THAT(TakenAtEnd(source).size(), 2u);
    const std::string a = "open " + Utf8(rows.At(0).path) + " 28";
    const std::string b = "open " + Utf8(rows.At(1).path) + " 28";
    EXPECT_THAT(decoders.Log("one"),
                ElementsAre("load", "create 1", "get Decodes 0", a, "destroy 1", "create 2", b,
                            "destroy 2", "unload"));
}

TEST_F(MetaDataSource, FilesThatNobodyReadsEndDoneWithoutTags) {
    Script("damaged.abc", "open=0\n");
    AddRow(L"damaged.abc");
    AddRow(L"text.nope", 0);
    AddRow(L"good.abc");
    disk.AddFile(L"text.nope", "twelve bytes");
    clMetaDataSource source;
    source.Refill(rows);
    ASSERT_TRUE(Eventually([&] { return !source.IsReading(); }));
    Lines seen;
    EXPECT_TRUE(source.TakeFinished([&](const MetaDataItem& item) {
        seen.push_back(Name(item.row->path) + (item.tags.Count() == 0 ? " empty" : " filled"));
    }));
    EXPECT_THAT(seen, ElementsAre("damaged.abc empty", "text.nope empty", "good.abc filled"));
    EXPECT_EQ(rows.At(0).lengthMs, 0);
    EXPECT_EQ(rows.At(1).sizeBytes, 12u);
}

TEST_F(MetaDataSource, ReaderEndsByItselfWhileThePumpHasStillToTake) {
    AddRows({L"a.abc"});
    clMetaDataSource source;
    source.Refill(rows);
    ASSERT_TRUE(Eventually([&] { return !source.IsReading(); }));
    EXPECT_NE(source.Worker().ThreadHandle(), nullptr);
    source.StopReader();
    EXPECT_THAT(Taken(source), ElementsAre("a.abc: a.abc"));
}

TEST_F(MetaDataSource, ReadsAtTheLowestPriorityWithoutTheMutex) {
    Script("a.abc", gated);
    AddRows({L"a.abc"});
    clMetaDataSource source;
    source.Refill(rows);
    ASSERT_TRUE(EventuallyOpened(L"a.abc"));
    EXPECT_TRUE(source.IsReading());
    EXPECT_EQ(GetThreadPriority(source.Worker().ThreadHandle()), THREAD_PRIORITY_LOWEST);
    EXPECT_TRUE(MetaDataMutex.TryLock());
    MetaDataMutex.Unlock();
    EXPECT_THAT(Taken(source), IsEmpty());
    EXPECT_FALSE(drained);
    OpenGate();
    EXPECT_TRUE(Eventually([&] { return !source.IsReading(); }));
}

TEST_F(MetaDataSource, WaitsForTheMutexWithoutALimit) {
    AddRows({L"a.abc"});
    clMetaDataSource source;
    MetaDataMutex.Lock();
    source.Refill(rows);
    Sleep(100);  // nothing happens: there is no condition to wait for
    EXPECT_TRUE(source.IsReading());
    EXPECT_EQ(Opened(L"a.abc"), 0);
    MetaDataMutex.Unlock();
    EXPECT_THAT(TakenAtEnd(source), ElementsAre("a.abc: a.abc"));
}

TEST_F(MetaDataSource, TakesResultsWithTheMutexHeld) {
    AddRows({L"a.abc"});
    clMetaDataSource source;
    source.Refill(rows);
    ASSERT_TRUE(Eventually([&] { return !source.IsReading(); }));
    source.TakeFinished([&](const MetaDataItem&) { EXPECT_FALSE(IsFreeForOthers(MetaDataMutex)); });
    EXPECT_TRUE(IsFreeForOthers(MetaDataMutex));
}

namespace {

std::atomic<int> sleepsOfZero;
std::atomic<int> sleepsOf25;
decltype(&Sleep) realSleep;

void WINAPI CountedSleep(DWORD milliseconds) {
    if (milliseconds == 0) ++sleepsOfZero;
    if (milliseconds == 25) ++sleepsOf25;
    realSleep(milliseconds);
}

}  // namespace

TEST_F(MetaDataSource, GivesUpItsSliceOnEachTenthFile) {
    for (int i = 0; i < 21; ++i)
        rows.Add(clString(i), 1);
    sleepsOfZero = 0;
    const ImportStub stub("Sleep", CountedSleep);
    realSleep = stub.Original<decltype(Sleep)>();
    clMetaDataSource source;
    source.Refill(rows);
    ASSERT_TRUE(Eventually([&] { return !source.IsReading(); }));
    EXPECT_EQ(sleepsOfZero, 3);
}

TEST_F(MetaDataSource, StopWaitsForTheFileAtHandAndLeavesTheRest) {
    Script("a.abc", gated);
    AddRows({L"a.abc", L"b.abc"});
    clMetaDataSource source;
    source.Refill(rows);
    ASSERT_TRUE(EventuallyOpened(L"a.abc"));
    std::thread opener = OpenGateAtStop(source);
    source.StopReader();
    opener.join();
    EXPECT_FALSE(source.IsReading());
    EXPECT_FALSE(source.Worker().IsSuspended());
    EXPECT_THAT(OpenedInOrder(), ElementsAre("a.abc"));
    EXPECT_THAT(Taken(source), ElementsAre("a.abc: a.abc"));
    EXPECT_FALSE(drained);
}

TEST_F(MetaDataSource, IsNoLongerInTheBackgroundWhileAStopWaits) {
    Script("a.abc", gated);
    AddRows({L"a.abc"});
    clMetaDataSource source;
    source.Refill(rows);
    ASSERT_TRUE(EventuallyOpened(L"a.abc"));
    int priority = THREAD_PRIORITY_LOWEST;
    std::thread opener([&, stop = source.Worker().StopEvent()] {
        EXPECT_EQ(WaitForSingleObject(stop, 10000), WAIT_OBJECT_0);
        priority = GetThreadPriority(source.Worker().ThreadHandle());
        OpenGate();
    });
    source.StopReader();
    opener.join();
    EXPECT_EQ(priority, THREAD_PRIORITY_NORMAL);
}

TEST_F(MetaDataSource, RefillStopsTheOldReaderAndShowsNothingOfTheOldList) {
    Script("old.abc", gated);
    RowList old;
    old.Add(disk.Path(L"old.abc"));
    old.Add(disk.Path(L"older.abc"));
    AddRows({L"a.abc", L"b.abc"});
    clMetaDataSource source;
    source.Refill(old);
    ASSERT_TRUE(EventuallyOpened(L"old.abc"));
    std::thread opener = OpenGateAtStop(source);
    source.Refill(rows);
    opener.join();
    EXPECT_EQ(old.At(0).lengthMs, 61000);  // it was read to its end
    EXPECT_THAT(TakenAtEnd(source), ElementsAre("a.abc: a.abc", "b.abc: b.abc"));
    EXPECT_THAT(OpenedInOrder(), ElementsAre("old.abc", "a.abc", "b.abc"));
}

TEST_F(MetaDataSource, AnEmptyListLeavesNothingToRead) {
    clMetaDataSource source;
    AddRows({L"a.abc"});
    source.Refill(rows);
    source.Refill(RowList());
    EXPECT_THAT(TakenAtEnd(source), IsEmpty());
    EXPECT_FALSE(drained);
}

TEST_F(MetaDataSource, RowsThatWereFreedAreNotLookedAt) {
    Script("a.abc", gated);
    AddRows({L"a.abc", L"b.abc"});
    clMetaDataSource source;
    source.Refill(rows);
    ASSERT_TRUE(EventuallyOpened(L"a.abc"));
    std::thread opener = OpenGateAtStop(source);
    source.StopReader();
    opener.join();
    source.ForgetRows();
    rows = RowList();
    std::vector<std::int64_t> indices;
    EXPECT_FALSE(source.TakeFinished([&](const MetaDataItem& item) {
        EXPECT_EQ(item.row, nullptr);
        indices.push_back(item.rowIndex);
    }));
    EXPECT_THAT(indices, ElementsAre(-1));
}

TEST_F(MetaDataSource, RereadsTheSecondOfTwoRowsOfOnePathUntilTheFirstIsTaken) {
    AddRows({L"twice.abc", L"twice.abc", L"b.abc"});
    clMetaDataSource source;
    source.Refill(rows);
    ASSERT_TRUE(Eventually([&] { return Opened(L"twice.abc") >= 5; }));
    EXPECT_EQ(Opened(L"b.abc"), 0);
    EXPECT_TRUE(source.IsReading());
    Lines taken;
    EXPECT_TRUE(Eventually([&] {
        for (const std::string& line : Taken(source))
            taken.push_back(line);
        return drained;
    }));
    EXPECT_THAT(taken, ElementsAre("twice.abc: twice.abc", "twice.abc: twice.abc", "b.abc: b.abc"));
    EXPECT_TRUE(Eventually([&] { return !source.IsReading(); }));
}

TEST_F(MetaDataSource, AFileThatChangesTheUnitsShowsThemFromTheNextOneOn) {
    ScriptAll("wave=1,2,800\n");
    Script("b.abc", "wave=1,2,800\nwait=tonequarry-test-gate\n");
    AddRows({L"a.abc", L"b.abc"});
    constexpr const wchar_t* key = L"Software\\Brindlefen\\Tonequarry\\Ref";
    RegDeleteKeyValueW(HKEY_CURRENT_USER, key, L"UnitsFreq");
    clMetaDataSource source;
    source.Refill(rows);
    ASSERT_TRUE(EventuallyOpened(L"b.abc"));
    const DWORD one = 1;
    RegSetKeyValueW(HKEY_CURRENT_USER, key, L"UnitsFreq", REG_DWORD, &one, sizeof(one));
    OpenGate();
    ASSERT_TRUE(Eventually([&] { return !source.IsReading(); }));
    Lines rates;
    source.TakeFinished(
        [&](const MetaDataItem& item) { rates.push_back(Utf8(item.tags.Get(L"Sample Rate"))); });
    RegDeleteKeyValueW(HKEY_CURRENT_USER, key, L"UnitsFreq");
    EXPECT_THAT(rates, ElementsAre("0.8 KHz", "800 Hz"));
}

// A decoder that hangs: the stop freezes the thread, and then polls for an end
// that does not come until somebody resumes the thread.
TEST_F(MetaDataSource, StopBeyondTheGraceFreezesTheReaderAndGoesOnWaiting) {
    Script("hang.abc", gated);
    AddRows({L"hang.abc", L"b.abc"});
    sleepsOf25 = 0;
    const ImportStub stub("Sleep", CountedSleep);
    realSleep = stub.Original<decltype(Sleep)>();
    clMetaDataSource source(100);
    source.Refill(rows);
    ASSERT_TRUE(EventuallyOpened(L"hang.abc"));
    std::atomic<bool> returned{false};
    std::thread stopper([&] {
        source.StopReader();
        returned = true;
    });
    EXPECT_TRUE(Eventually([&] { return sleepsOf25 >= 8; }));
    EXPECT_TRUE(source.Worker().IsSuspended());
    EXPECT_TRUE(source.IsReading());
    OpenGate();
    const int before = sleepsOf25;
    EXPECT_TRUE(Eventually([&] { return sleepsOf25 >= before + 4; }));
    EXPECT_FALSE(returned);  // frozen, the thread does not see the open gate
    source.StopReader();
    stopper.join();
    EXPECT_FALSE(source.Worker().IsSuspended());
    EXPECT_THAT(Taken(source), ElementsAre("hang.abc: hang.abc"));
    EXPECT_THAT(OpenedInOrder(), ElementsAre("hang.abc"));
}

// The thread procedure by itself, as any clWorkerThread runs it.
TEST_F(MetaDataSource, AFrozenReaderFinishesItsFileWhenItIsResumed) {
    Script("hang.abc", gated);
    AddRows({L"hang.abc", L"b.abc"});
    MetaDataQueue queue;
    queue.Refill(rows);
    clWorkerThread worker;
    worker.Start(MetaDataReader, reinterpret_cast<std::int64_t>(&queue), 100);
    ASSERT_TRUE(EventuallyOpened(L"hang.abc"));
    worker.Stop();
    EXPECT_TRUE(worker.IsSuspended());
    EXPECT_TRUE(MetaDataMutex.TryLock());  // frozen outside the lock
    MetaDataMutex.Unlock();
    EXPECT_FALSE(queue.FirstUndone()->done);
    OpenGate();
    worker.Stop();
    EXPECT_FALSE(worker.IsSuspended());
    EXPECT_TRUE(queue.FirstWithPath(rows.At(0).path)->done);
    EXPECT_EQ(queue.FirstUndone()->row, &rows.At(1));
}

TEST_F(MetaDataSource, DestructionEndsTheReader) {
    Script("a.abc", gated);
    AddRows({L"a.abc", L"b.abc"});
    std::thread opener;
    {
        clMetaDataSource source;
        source.Refill(rows);
        ASSERT_TRUE(EventuallyOpened(L"a.abc"));
        opener = OpenGateAtStop(source);
    }
    opener.join();
    EXPECT_EQ(rows.At(0).lengthMs, 61000);
    EXPECT_EQ(decoders.Log("one").back(), "unload");
    EXPECT_EQ(Opened(L"b.abc"), 0);
}
