#include "foundation/string.h"

#include <gtest/gtest.h>

#include "tests/support/text.h"

TEST(String, AnEmptyStringHasNoCharacters) {
    const clString empty;
    EXPECT_EQ(empty.Length(), 0);
    EXPECT_EQ(empty.CharAt(1), 0);
    EXPECT_EQ(empty.CharAt(POS_LAST), 0);
}
