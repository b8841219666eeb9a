#include "decoders/list_rows.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "tests/decoders/row_list.h"

namespace {

RowList Rows(int count) {
    RowList list;
    for (int i = 0; i < count; ++i)
        list.Add(L"C:\\a.abc");
    return list;
}

// What the index stands for: a walk from the top.
std::int32_t Walked(const RowList& list, std::int64_t param) {
    if (list.RowOf(param) == nullptr) return -1;
    const auto found = std::find(list.order.begin(), list.order.end(), param);
    return found == list.order.end() ? -1 : static_cast<std::int32_t>(found - list.order.begin());
}

}  // namespace

TEST(DisplayRowIndex, FindsTheFirstDisplayRowOfAParameter) {
    RowList list = Rows(5);
    list.order = {3, 99, 1, 3, -1, 0};
    DisplayRowIndex index;
    struct Case {
        std::int64_t param;
        std::int32_t row;
    };
    for (const Case& c : {Case{3, 0}, {1, 2}, {0, 5}, {2, -1}, {4, -1}, {99, -1}, {-1, -1}}) {
        index.BeginPass();
        EXPECT_EQ(index.Find(list, c.param), c.row) << c.param;
    }
}

TEST(DisplayRowIndex, FollowsWhateverHappensToTheListBetweenPasses) {
    std::mt19937 random(20240611);
    RowList list = Rows(40);
    DisplayRowIndex index;
    for (int step = 0; step < 3000; ++step) {
        switch (random() % 4) {
            case 0:
                std::shuffle(list.order.begin(), list.order.end(), random);
                break;
            case 1:
                if (!list.order.empty()) list.order.pop_back();
                break;
            case 2:
                list.Add(L"C:\\b.abc");
                break;
            default:
                break;
        }
        if (list.rows.size() > 80) {
            list.rows.resize(10);
            list.order = {9, 0, 8, 1, 7, 2, 6, 3, 5, 4};
        }
        index.BeginPass();
        for (int i = 0; i < 3; ++i) {
            const auto param = static_cast<std::int64_t>(random() % (list.rows.size() + 2));
            ASSERT_EQ(index.Find(list, param), Walked(list, param)) << "step " << step;
        }
    }
}

TEST(DisplayRowIndex, WalksOnlyWhenRowsHaveMoved) {
    RowList list = Rows(1000);
    DisplayRowIndex index;
    const auto findAll = [&] {
        list.looks = 0;
        index.BeginPass();
        for (std::int64_t param = 0; param < 1000; ++param)
            EXPECT_GE(index.Find(list, param), 0);
        return list.looks;
    };
    EXPECT_LE(findAll(), 2100);  // the first walk, and a look at each answer
    EXPECT_EQ(findAll(), 1000);
    std::reverse(list.order.begin(), list.order.end());
    EXPECT_LE(findAll(), 3000);
}

TEST(DisplayRowIndex, WalksOnceInAPassForAnyNumberOfRowsThatAreGone) {
    RowList list = Rows(1000);
    list.order.resize(500);
    DisplayRowIndex index;
    index.BeginPass();
    for (std::int64_t param = 500; param < 1000; ++param)
        EXPECT_EQ(index.Find(list, param), -1);
    EXPECT_LE(list.looks, 600);
}
