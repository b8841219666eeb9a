#include "foundation/handle.h"

#include <gtest/gtest.h>

#include <type_traits>
#include <utility>
#include <vector>

namespace {

std::vector<int> closed;

struct NumberTraits {
    using Raw = int;
    static Raw Invalid() { return -1; }
    static void Close(Raw raw) {
        closed.push_back(raw);
        SetLastError(ERROR_GEN_FAILURE);
    }
};

using NumberHandle = clHandle<NumberTraits>;

class Handle : public testing::Test {
protected:
    Handle() { closed.clear(); }
};

}  // namespace

static_assert(!std::is_copy_constructible_v<NumberHandle>);
static_assert(!std::is_copy_assignable_v<NumberHandle>);
static_assert(!std::is_convertible_v<int, NumberHandle>);
static_assert(!std::is_convertible_v<NumberHandle, int>);

TEST_F(Handle, IsClosedOnceAtTheEnd) {
    { const NumberHandle handle(5); }
    EXPECT_EQ(closed, std::vector<int>{5});
}

TEST_F(Handle, TheInvalidValueIsNeverClosed) {
    {
        const NumberHandle none;
        EXPECT_FALSE(none.IsValid());
        const NumberHandle zero(0);  // a value like any other for these traits
        EXPECT_TRUE(zero.IsValid());
    }
    EXPECT_EQ(closed, std::vector<int>{0});
}

TEST_F(Handle, AMoveGivesTheHandleAway) {
    {
        NumberHandle first(5);
        NumberHandle second(std::move(first));
        // NOLINTNEXTLINE(bugprone-use-after-move): what is left is the promise
        EXPECT_FALSE(first.IsValid());
        EXPECT_EQ(second.Get(), 5);
        NumberHandle third(7);
        third = std::move(second);
        EXPECT_EQ(closed, std::vector<int>{7});
        EXPECT_EQ(third.Get(), 5);
    }
    EXPECT_EQ(closed, (std::vector<int>{7, 5}));
}

TEST_F(Handle, ReleaseKeepsItOpenAndResetClosesIt) {
    {
        NumberHandle handle(5);
        EXPECT_EQ(handle.Release(), 5);
        handle.Reset(6);
        handle.Reset(7);
        handle.Reset();
        EXPECT_FALSE(handle.IsValid());
    }
    EXPECT_EQ(closed, (std::vector<int>{6, 7}));
}

TEST_F(Handle, ClosingKeepsTheLastError) {
    {
        const NumberHandle handle(5);
        SetLastError(ERROR_FILE_NOT_FOUND);
    }
    EXPECT_EQ(GetLastError(), DWORD{ERROR_FILE_NOT_FOUND});
}

TEST_F(Handle, TheTraitsOfThePlatformNameTheirInvalidValue) {
    EXPECT_EQ(clFileHandle().Get(), INVALID_HANDLE_VALUE);
    EXPECT_EQ(clFindHandle().Get(), INVALID_HANDLE_VALUE);
    EXPECT_EQ(clKernelHandle().Get(), nullptr);
    EXPECT_EQ(clRegistryKey().Get(), nullptr);
    HANDLE event = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    { const clKernelHandle owner(event); }
    EXPECT_EQ(WaitForSingleObject(event, 0), WAIT_FAILED);
}
