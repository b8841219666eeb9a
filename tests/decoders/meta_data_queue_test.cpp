#include "decoders/meta_data_queue.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <list>
#include <random>
#include <string>
#include <vector>

#include "tests/decoders/row_list.h"
#include "tests/support/allocations.h"
#include "tests/support/text.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

// Takes what is finished; the row indices in order.
std::vector<std::int64_t> Taken(MetaDataQueue& queue, bool* drained = nullptr) {
    std::vector<std::int64_t> taken;
    const bool result =
        queue.TakeFinished([&](const MetaDataItem& item) { taken.push_back(item.rowIndex); });
    if (drained != nullptr) *drained = result;
    return taken;
}

std::int64_t RowIndexOf(const MetaDataItem* item) {
    return item != nullptr ? item->rowIndex : -1;
}

class Queue : public testing::Test {
protected:
    void Fill(const std::vector<clString>& paths) {
        rows = RowList(paths);
        queue.Refill(rows);
    }
    std::int64_t Undone() { return RowIndexOf(queue.FirstUndone()); }
    std::int64_t WithPath(const wchar_t* path) { return RowIndexOf(queue.FirstWithPath(path)); }
    // As the reader ends a file.
    void Finish(const wchar_t* path) { queue.FirstWithPath(path)->done = true; }

    RowList rows;
    MetaDataQueue queue;
};

}  // namespace

TEST_F(Queue, EmptyAtFirst) {
    EXPECT_TRUE(queue.IsEmpty());
    EXPECT_EQ(queue.FirstUndone(), nullptr);
    EXPECT_EQ(queue.FirstWithPath(L""), nullptr);
    bool drained = true;
    EXPECT_THAT(Taken(queue, &drained), IsEmpty());
    EXPECT_FALSE(drained);
}

TEST_F(Queue, ItemsBeginUndoneWithTheirRow) {
    Fill({L"a", L"b"});
    ASSERT_EQ(queue.Count(), 2);
    const MetaDataItem* item = queue.FirstUndone();
    ASSERT_NE(item, nullptr);
    EXPECT_EQ(item->row, &rows.At(0));
    EXPECT_EQ(item->rowIndex, 0);
    EXPECT_FALSE(item->done);
    EXPECT_EQ(item->tags.Count(), 0);
}

TEST_F(Queue, RefillTakesTheDisplayOrderAndLeavesOutParametersOfNoRow) {
    rows = RowList({L"a", L"b", L"c", L"d"});
    rows.order = {2, 77, 0, -1, 3, 4};
    queue.Refill(rows);
    EXPECT_EQ(queue.Count(), 3);
    for (const std::int64_t expected : {2, 0, 3}) {
        EXPECT_EQ(Undone(), expected);
        queue.FirstUndone()->done = true;
    }
    EXPECT_THAT(Taken(queue), ElementsAre(2, 0, 3));
}

TEST_F(Queue, RefillForgetsEverythingBefore) {
    Fill({L"a", L"b"});
    Finish(L"a");
    RowList others({L"b", L"x"});
    queue.Refill(others);
    EXPECT_EQ(WithPath(L"a"), -1);
    EXPECT_EQ(queue.FirstWithPath(L"b")->row, &others.At(0));
    EXPECT_EQ(Undone(), 0);
    queue.Refill(RowList());
    EXPECT_TRUE(queue.IsEmpty());
    EXPECT_EQ(Undone(), -1);
    EXPECT_EQ(queue.FirstWithPath(L"b"), nullptr);
}

TEST_F(Queue, FirstUndoneGoesOnInListOrder) {
    Fill({L"a", L"b", L"c"});
    Finish(L"b");
    EXPECT_EQ(Undone(), 0);
    Finish(L"a");
    EXPECT_EQ(Undone(), 2);
    Finish(L"c");
    EXPECT_EQ(Undone(), -1);
}

TEST_F(Queue, PathsAreComparedWithTheirCase) {
    Fill({L"C:\\Song.abc", L"C:\\song.abc", L"C:\\\u00C4.abc"});
    EXPECT_EQ(WithPath(L"C:\\song.abc"), 1);
    EXPECT_EQ(WithPath(L"C:\\Song.abc"), 0);
    EXPECT_EQ(WithPath(L"C:\\SONG.abc"), -1);
    EXPECT_EQ(WithPath(L"C:\\\u00E4.abc"), -1);
    EXPECT_EQ(WithPath(L"C:\\Song.ab"), -1);
    EXPECT_EQ(WithPath(L"C:\\Song.abcd"), -1);
}

TEST_F(Queue, PathsThatShareAHashAreStillTwo) {
    const wchar_t* const one = L"C:\\alpha.abc";
    const wchar_t* const other = L"C:\\bl\x8C5Dh\x8C4C.abc";
    ASSERT_EQ(HashOfPath(one), HashOfPath(other));
    ASSERT_NE(HashOfPath(one), HashOfPath(L"C:\\Alpha.abc"));
    Fill({one, other});
    for (int round = 0; round < 2; ++round) {  // behind the reader, and once it was there
        EXPECT_EQ(WithPath(other), 1);
        EXPECT_EQ(WithPath(one), 0);
    }
    Finish(other);
    EXPECT_EQ(Undone(), 0);
    Finish(one);
    EXPECT_THAT(Taken(queue), ElementsAre(0, 1));
    Fill({other});
    EXPECT_EQ(WithPath(one), -1);
    EXPECT_EQ(WithPath(other), 0);
}

TEST_F(Queue, OfEqualPathsTheFirstIsFoundUntilItIsTaken) {
    Fill({L"a", L"b", L"a", L"a"});
    EXPECT_EQ(WithPath(L"a"), 0);
    Finish(L"a");
    EXPECT_EQ(WithPath(L"a"), 0);
    EXPECT_EQ(Undone(), 1);
    Finish(L"b");
    EXPECT_EQ(Undone(), 2);
    EXPECT_THAT(Taken(queue), ElementsAre(0, 1));
    EXPECT_EQ(WithPath(L"a"), 2);
    Finish(L"a");
    EXPECT_THAT(Taken(queue), ElementsAre(2));
    EXPECT_EQ(WithPath(L"a"), 3);
}

TEST_F(Queue, APathFarAheadIsFoundAndTheReaderGoesOnAsBefore) {
    std::vector<clString> paths;
    for (int i = 0; i < 500; ++i)
        paths.emplace_back(i % 250);
    Fill(paths);
    EXPECT_EQ(WithPath(L"200"), 200);
    EXPECT_EQ(WithPath(L"none"), -1);
    for (int i = 0; i < 500; ++i) {
        ASSERT_EQ(Undone(), i);
        queue.FirstUndone()->done = true;
        ASSERT_EQ(RowIndexOf(queue.FirstWithPath(paths[static_cast<std::size_t>(i)])), i);
        if (i < 249) continue;
        ASSERT_EQ(Taken(queue).size(), i == 249 ? 250u : 1u);
    }
    EXPECT_TRUE(queue.IsEmpty());
}

TEST_F(Queue, IsFilledAgainOnceItWasDrained) {
    Fill({L"a", L"b"});
    for (int i = 0; i < 200; ++i) {
        ASSERT_EQ(queue.Count(), 2);
        Finish(L"a");
        Finish(L"b");
        ASSERT_THAT(Taken(queue), ElementsAre(0, 1));
        ASSERT_EQ(WithPath(L"a"), -1);
        queue.Append(rows.At(0), 0);
        queue.Append(rows.At(1), 1);
    }
}

TEST_F(Queue, RowsAppendedBehindForgottenOnesAreFound) {
    Fill(std::vector<clString>(100, L"a"));
    Finish(L"a");
    queue.ForgetRows();
    RowList others(std::vector<clString>{L"b", L"a"});
    queue.Append(others.At(0), 0);
    queue.Append(others.At(1), 1);
    EXPECT_EQ(queue.FirstWithPath(L"a")->row, &others.At(1));
    EXPECT_EQ(queue.FirstUndone()->row, &others.At(0));
}

TEST_F(Queue, TakingStopsAtTheFirstItemThatIsNotDone) {
    Fill({L"a", L"b", L"c"});
    Finish(L"a");
    Finish(L"c");
    bool drained = true;
    EXPECT_THAT(Taken(queue, &drained), ElementsAre(0));
    EXPECT_FALSE(drained);
    EXPECT_THAT(Taken(queue), IsEmpty());
    Finish(L"b");
    EXPECT_THAT(Taken(queue, &drained), ElementsAre(1, 2));
    EXPECT_TRUE(drained);
    EXPECT_THAT(Taken(queue, &drained), IsEmpty());
    EXPECT_FALSE(drained);
}

TEST_F(Queue, AnItemIsStillThereWhileItIsTaken) {
    Fill({L"a"});
    TagList tags;
    tags.Add(L"Title", L"T");
    queue.FirstUndone()->tags.Keep(tags);
    Finish(L"a");
    queue.TakeFinished([&](const MetaDataItem& item) {
        EXPECT_EQ(queue.Count(), 1);
        EXPECT_EQ(item.row, &rows.At(0));
        EXPECT_EQ(Utf8(item.tags.Get(L"Title")), "T");
    });
    EXPECT_TRUE(queue.IsEmpty());
}

// Two megabytes of tags, of which no more than a block stays.
TEST_F(Queue, ADrainedQueueGivesTheMemoryOfTagsBack) {
    clString comment;
    while (comment.Length() < 1000)
        comment.Append(L"la la ");
    std::size_t liveBlocks[2] = {};
    for (const bool hasTags : {false, true}) {
        Fill(std::vector<clString>(1000));
        while (MetaDataItem* const item = queue.FirstUndone()) {
            TagList tags;
            if (hasTags) tags.Add(L"Comment", comment);
            item->tags.Keep(tags);
            item->done = true;
        }
        const std::size_t whileFull = LiveBlocks();
        EXPECT_EQ(Taken(queue).size(), 1000u);
        liveBlocks[hasTags ? 1 : 0] = LiveBlocks();
        if (hasTags) {
            EXPECT_GT(whileFull, liveBlocks[1] + 25);
        }
    }
    EXPECT_LE(liveBlocks[1], liveBlocks[0] + 1);
}

TEST_F(Queue, TakingEndsBehindTheItemThatWasOneTooMany) {
    Fill({L"a", L"b", L"c"});
    for (const wchar_t* path : {L"a", L"b", L"c"})
        Finish(path);
    std::vector<std::int64_t> taken;
    const auto takeUpTo = [&](std::int64_t last) {
        return queue.TakeFinishedWhile([&](const MetaDataItem& item) {
            taken.push_back(item.rowIndex);
            return item.rowIndex != last;
        });
    };
    EXPECT_FALSE(takeUpTo(1));
    EXPECT_THAT(taken, ElementsAre(0, 1));
    EXPECT_EQ(queue.Count(), 1);
    EXPECT_TRUE(takeUpTo(2));
    EXPECT_THAT(taken, ElementsAre(0, 1, 2));
}

// The index grows in between, and with it what each place of it leads to.
TEST_F(Queue, ItemsOfALongQueueAreFoundWhileItIsTaken) {
    std::vector<clString> paths;
    for (std::int64_t number = 0; number < 300; ++number)
        paths.emplace_back(number);
    Fill(paths);
    for (std::size_t i = 0; i < paths.size(); ++i) {
        MetaDataItem* const item = queue.FirstWithPath(paths[i]);
        ASSERT_NE(item, nullptr) << i;
        EXPECT_EQ(item->rowIndex, static_cast<std::int64_t>(i));
        item->done = true;
        if (i % 3 == 2) queue.TakeFinishedWhile([](const MetaDataItem&) { return false; });
        for (const std::size_t other : {i - i / 2, (i + 100) % paths.size()}) {
            const MetaDataItem* const found = queue.FirstWithPath(paths[other]);
            const bool isTaken = other < (i + 1) / 3;
            ASSERT_EQ(found == nullptr, isTaken) << i << ' ' << other;
            if (found != nullptr) {
                EXPECT_EQ(found->rowIndex, static_cast<std::int64_t>(other));
            }
        }
    }
}

TEST_F(Queue, ForgottenRowsAreFoundByNobodyAndTheirItemsGoAsBefore) {
    Fill({L"a", L"b", L"a", L"c"});
    Finish(L"a");
    Finish(L"b");
    queue.ForgetRows();
    rows = RowList();  // what is read of a row from now on is read behind its end
    EXPECT_EQ(queue.Count(), 4);
    EXPECT_EQ(queue.FirstUndone(), nullptr);
    EXPECT_EQ(queue.FirstWithPath(L"a"), nullptr);
    EXPECT_EQ(queue.FirstWithPath(L"c"), nullptr);
    bool drained = true;
    EXPECT_THAT(Taken(queue, &drained), ElementsAre(-1, -1));
    EXPECT_FALSE(drained);
    EXPECT_EQ(queue.Count(), 2);
    Fill({L"c"});
    EXPECT_EQ(Undone(), 0);
    EXPECT_EQ(WithPath(L"c"), 0);
}

namespace {

// The same queue in its plain form: every operation walks the items.
class PlainQueue {
public:
    struct Item {
        std::int64_t rowIndex;
        const FileRow* row;
        bool done;
    };

    void Refill(const RowList& rows) {
        items_.clear();
        for (const std::int64_t param : rows.order) {
            if (rows.RowOf(param) != nullptr) items_.push_back({param, rows.RowOf(param), false});
        }
    }
    void Append(const FileRow& row, std::int64_t index) { items_.push_back({index, &row, false}); }
    Item* FirstUndone() {
        return First([](const Item& item) { return item.row != nullptr && !item.done; });
    }
    Item* FirstWithPath(const clString& path) {
        return First([&](const Item& i) { return i.row != nullptr && i.row->path.Equals(path); });
    }
    std::vector<std::int64_t> Take(bool& drained) {
        std::vector<std::int64_t> taken;
        while (!items_.empty() && items_.front().done) {
            taken.push_back(items_.front().rowIndex);
            items_.pop_front();
        }
        drained = items_.empty() && !taken.empty();
        return taken;
    }
    void ForgetRows() {
        for (Item& item : items_)
            item = {-1, nullptr, item.done};
    }
    std::int64_t Count() const { return static_cast<std::int64_t>(items_.size()); }

private:
    template <class Wanted>
    Item* First(Wanted&& isWanted) {
        const auto found = std::find_if(items_.begin(), items_.end(), isWanted);
        return found == items_.end() ? nullptr : &*found;
    }

    std::list<Item> items_;
};

std::int64_t RowIndexOf(const PlainQueue::Item* item) {
    return item != nullptr ? item->rowIndex : -1;
}

// Both queues, fed with the same random steps over few paths, so that equal ones
// are common.
class Duel {
public:
    explicit Duel(unsigned seed) : random_(seed) {}

    void Step() {
        switch (random_() % 12) {
            case 0:
                if (random_() % 8 == 0) Rebuild();
                break;
            case 1:
                if (random_() % 40 == 0) Forget();
                break;
            case 2:
            case 3:
                Append();
                break;
            case 4:
                Take();
                break;
            case 5:
                FinishFirst();
                break;
            default:
                FinishPath();
                break;
        }
        Compare();
    }

private:
    clString AnyPath() {
        clString path;
        path.Format(L"C:\\%c%d.abc", random_() % 2 == 0 ? 'a' : 'A',
                    static_cast<int>(random_() % 9));
        return path;
    }

    void Rebuild() {
        rows_ = RowList();
        for (auto count = random_() % 25; count != 0; --count)
            rows_.Add(AnyPath());
        std::shuffle(rows_.order.begin(), rows_.order.end(), random_);
        indexed_.Refill(rows_);
        plain_.Refill(rows_);
    }

    void Forget() {
        indexed_.ForgetRows();
        plain_.ForgetRows();
        rows_ = RowList();
    }

    void Append() {
        FileRow& row = rows_.Add(AnyPath());
        indexed_.Append(row, rows_.order.back());
        plain_.Append(row, rows_.order.back());
    }

    void FinishFirst() {
        MetaDataItem* const item = indexed_.FirstUndone();
        PlainQueue::Item* const plain = plain_.FirstUndone();
        ASSERT_EQ(RowIndexOf(item), RowIndexOf(plain));
        if (item != nullptr) item->done = plain->done = true;
    }

    void FinishPath() {
        const clString path = AnyPath();
        MetaDataItem* const item = indexed_.FirstWithPath(path);
        PlainQueue::Item* const plain = plain_.FirstWithPath(path);
        ASSERT_EQ(RowIndexOf(item), RowIndexOf(plain)) << Utf8(path);
        if (item != nullptr && random_() % 2 == 0) item->done = plain->done = true;
    }

    void Take() {
        bool drained = false;
        bool plainDrained = false;
        ASSERT_EQ(Taken(indexed_, &drained), plain_.Take(plainDrained));
        ASSERT_EQ(drained, plainDrained);
    }

    void Compare() {
        ASSERT_EQ(indexed_.Count(), plain_.Count());
        ASSERT_EQ(RowIndexOf(indexed_.FirstUndone()), RowIndexOf(plain_.FirstUndone()));
    }

    std::mt19937 random_;
    RowList rows_;
    MetaDataQueue indexed_;
    PlainQueue plain_;
};

}  // namespace

TEST(QueueDuel, AnswersAsAWalkOfAllItemsDoes) {
    for (unsigned seed = 1; seed <= 20; ++seed) {
        Duel duel(seed);
        for (int step = 0; step < 3000; ++step) {
            duel.Step();
            ASSERT_FALSE(testing::Test::HasFatalFailure()) << "seed " << seed << " step " << step;
        }
    }
}
