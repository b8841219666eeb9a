#include "toolkit/owned_list.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

int alive;

struct Record {
    explicit Record(int number) : value(number) { ++alive; }
    Record(const Record&) = delete;
    Record& operator=(const Record&) = delete;
    ~Record() { --alive; }

    int value;
};

}  // namespace

TEST(OwnedList, OwnsItsRecords) {
    alive = 0;
    {
        clOwnedList<Record> list;
        for (int i = 0; i < 100; ++i)
            list.Add(std::make_unique<Record>(i));
        EXPECT_EQ(alive, 100);
        EXPECT_EQ(list.Count(), 100);
        EXPECT_EQ(list.At(99)->value, 99);
        list.RemoveAt(0);
        EXPECT_EQ(alive, 99);
        EXPECT_EQ(list.At(0)->value, 1);
        list.RemoveAt(99);
        list.RemoveAt(-1);
        EXPECT_EQ(alive, 99);
    }
    EXPECT_EQ(alive, 0);
}

TEST(OwnedList, ClearLeavesAnEmptyListForUse) {
    alive = 0;
    clOwnedList<Record> list;
    list.Add(std::make_unique<Record>(1));
    list.Clear();
    EXPECT_EQ(alive, 0);
    EXPECT_EQ(list.Count(), 0);
    EXPECT_EQ(list.At(0), nullptr);
    EXPECT_EQ(list.Add(std::make_unique<Record>(2))->value, 2);
    EXPECT_EQ(list.Count(), 1);
}

TEST(OwnedList, RemembersTheRecordLastTouched) {
    clOwnedList<Record> list;
    EXPECT_EQ(list.Current(), nullptr);
    Record* first = list.Add(std::make_unique<Record>(1));
    Record* second = list.Add(std::make_unique<Record>(2));
    EXPECT_EQ(list.Current(), second);
    EXPECT_EQ(list.At(0), first);
    EXPECT_EQ(list.Current(), first);
    EXPECT_EQ(list.At(2), nullptr);
    EXPECT_EQ(list.Current(), first);
    list.RemoveAt(1);
    EXPECT_EQ(list.Current(), nullptr);
    list.At(0);
    list.Clear();
    EXPECT_EQ(list.Current(), nullptr);
}
