#include "foundation/bytes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

namespace {

// Larger than any address space holds.
constexpr std::int64_t tooLarge = std::int64_t{1} << 62;

}  // namespace

TEST(ByteBuffer, StartsWithNothing) {
    const clByteBuffer buffer;
    EXPECT_EQ(buffer.data, nullptr);
    EXPECT_EQ(buffer.size, 0);
    EXPECT_EQ(buffer.capacity, 0);
    EXPECT_EQ(buffer.cursorA, 0);
    EXPECT_EQ(buffer.cursorB, 0);
}

TEST(ByteBuffer, ALargerBlockIsANewOne) {
    clByteBuffer buffer;
    EXPECT_TRUE(buffer.Resize(10, true));
    EXPECT_EQ(buffer.size, 10);
    EXPECT_EQ(buffer.capacity, 10);
    std::memset(buffer.data, 1, 10);
    EXPECT_TRUE(buffer.Resize(20, true));
    EXPECT_EQ(buffer.size, 20);
    EXPECT_EQ(buffer.capacity, 20);
    EXPECT_EQ(std::count(buffer.data, buffer.data + 20, 0), 20);
}

TEST(ByteBuffer, ABlockThatIsLargeEnoughIsKeptWithItsContents) {
    clByteBuffer buffer;
    EXPECT_TRUE(buffer.Resize(10, true));
    std::memset(buffer.data, 1, 10);
    const std::uint8_t* block = buffer.data;
    EXPECT_TRUE(buffer.Resize(4, false));
    EXPECT_EQ(buffer.size, 4);
    EXPECT_TRUE(buffer.Resize(10, false));
    EXPECT_EQ(buffer.data, block);
    EXPECT_EQ(buffer.capacity, 10);
    EXPECT_EQ(std::count(buffer.data, buffer.data + 10, 1), 10);
    EXPECT_TRUE(buffer.Resize(3, true));
    EXPECT_EQ(std::count(buffer.data, buffer.data + 10, 0), 3);
}

TEST(ByteBuffer, NoBytesTakeABlockOfOne) {
    clByteBuffer buffer;
    EXPECT_TRUE(buffer.Resize(0, true));
    EXPECT_NE(buffer.data, nullptr);
    EXPECT_EQ(buffer.size, 0);
    EXPECT_EQ(buffer.capacity, 1);
}

TEST(ByteBuffer, AFailedAllocationLeavesNothing) {
    for (const std::int64_t size : {tooLarge, std::int64_t{-1}}) {
        clByteBuffer buffer;
        EXPECT_TRUE(buffer.Resize(10, false));
        buffer.cursorA = 5;
        EXPECT_FALSE(buffer.Resize(size, true));
        EXPECT_EQ(buffer.data, nullptr);
        EXPECT_EQ(buffer.size, 0);
        EXPECT_EQ(buffer.capacity, 0);
        EXPECT_EQ(buffer.cursorA, 0);
        EXPECT_TRUE(buffer.Resize(5, true));  // and can be used again
        EXPECT_EQ(buffer.capacity, 5);
    }
}

TEST(ByteBuffer, CursorsAreLoweredToTheSize) {
    clByteBuffer buffer;
    EXPECT_TRUE(buffer.Resize(10, false));
    buffer.cursorA = 8;
    buffer.cursorB = 3;
    EXPECT_TRUE(buffer.Resize(5, false));
    EXPECT_EQ(buffer.cursorA, 5);
    EXPECT_EQ(buffer.cursorB, 3);
    EXPECT_TRUE(buffer.Resize(100, false));
    EXPECT_EQ(buffer.cursorA, 5);
    EXPECT_TRUE(buffer.Resize(2, false));
    EXPECT_EQ(buffer.cursorA, 2);
    EXPECT_EQ(buffer.cursorB, 2);
}

TEST(ByteBuffer, FreeSetsAllFieldsToZero) {
    clByteBuffer buffer;
    EXPECT_TRUE(buffer.Resize(10, false));
    buffer.cursorA = buffer.cursorB = 2;
    buffer.Free();
    EXPECT_EQ(buffer.data, nullptr);
    EXPECT_EQ(buffer.size, 0);
    EXPECT_EQ(buffer.capacity, 0);
    EXPECT_EQ(buffer.cursorA, 0);
    EXPECT_EQ(buffer.cursorB, 0);
}
