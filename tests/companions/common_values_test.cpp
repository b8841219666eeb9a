#include "companions/common/values.h"

#include <gtest/gtest.h>

namespace companion {
namespace {

TEST(Values, AreJoinedByOneCarriageReturn) {
    EXPECT_EQ(JoinedValues({}), u"");
    EXPECT_EQ(JoinedValues({u"a"}), u"a");
    EXPECT_EQ(JoinedValues({u"a", u"b", u"c"}), u"a\rb\rc");
}

TEST(Values, HoldNoCarriageReturnThemselves) {
    struct Case {
        std::u16string_view text;
        std::u16string_view value;
    };
    const Case cases[] = {
        {u"", u""},         {u"a", u"a"},   {u"a\r\nb", u"a\nb"}, {u"a\rb", u"a\nb"},
        {u"a\nb", u"a\nb"}, {u"\r", u"\n"}, {u"\r\r\n", u"\n\n"}, {u"\n\r", u"\n\n"},
    };
    for (const Case& row : cases)
        EXPECT_EQ(OneValue(row.text), row.value);
}

}  // namespace
}  // namespace companion
