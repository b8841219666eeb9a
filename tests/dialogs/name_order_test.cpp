#include "dialogs/name_order.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "foundation/paths.h"
#include "tests/support/text.h"

namespace {

// The paths in their order, each with a blank behind it.
std::string Ordered(const std::vector<const wchar_t*>& paths) {
    clStringList list;
    for (const wchar_t* path : paths)
        list.Add(path);
    std::string text;
    for (const std::int64_t i : OrderByName(list))
        text += Utf8(*list.At(i)) + " ";
    return text;
}

TEST(OrderByName, GoesByTheNameWithoutItsFolderAndItsCase) {
    struct Case {
        std::vector<const wchar_t*> paths;
        const char* expected;
    };
    const Case cases[] = {
        {{}, ""},
        {{L"C:\\a"}, "C:\\a "},
        {{L"C:\\a\\z", L"C:\\b\\y"}, "C:\\b\\y C:\\a\\z "},
        {{L"C:\\b", L"C:\\A", L"C:\\C"}, "C:\\A C:\\b C:\\C "},
        // Folded to small letters, an underscore goes before all of them.
        {{L"C:\\A", L"C:\\_"}, "C:\\_ C:\\A "},
        {{L"C:\\a2", L"C:\\a10", L"C:\\a"}, "C:\\a C:\\a10 C:\\a2 "},
        // Only A to Z have a case.
        {{L"C:\\\u00e4", L"C:\\\u00c4", L"C:\\z"}, "C:\\z C:\\\u00c4 C:\\\u00e4 "},
    };
    for (const Case& one : cases)
        EXPECT_EQ(Ordered(one.paths), one.expected);
}

TEST(OrderByName, KeepsEqualNamesInTheOrderOfThePaths) {
    EXPECT_EQ(Ordered({L"C:\\z\\one", L"C:\\z\\Two", L"C:\\a\\ONE", L"C:\\a\\two", L"C:\\m\\One"}),
              "C:\\z\\one C:\\a\\ONE C:\\m\\One C:\\z\\Two C:\\a\\two ");
}

// Against inserting each path behind all that do not go behind it.
TEST(OrderByName, IsThatOfAPlainInsertion) {
    clStringList list;
    for (unsigned number = 0; number < 600; ++number) {
        const unsigned mixed = number * 7919 % 613;
        clString path(L"C:\\");
        path.Append(clString(static_cast<std::int32_t>(number)));
        path.Append(mixed % 2 == 0 ? L"\\Title " : L"\\tITLE ");
        path.Append(clString(static_cast<std::int32_t>(mixed % 97)));
        list.Add(path);
    }
    std::vector<std::int64_t> expected;
    for (std::int64_t i = 0; i < list.Count(); ++i) {
        auto place = expected.end();
        while (place != expected.begin() &&
               FileNameOf(*list.At(*(place - 1))).CompareNoCase(FileNameOf(*list.At(i))) > 0)
            --place;
        expected.insert(place, i);
    }
    EXPECT_EQ(OrderByName(list), expected);
}

}  // namespace
