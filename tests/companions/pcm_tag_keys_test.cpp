#include "companions/decoder-pcm/tag_keys.h"

#include <gtest/gtest.h>

namespace companion::pcm {
namespace {

TEST(TagKeys, TakesTheYearOutOfADate) {
    struct Case {
        std::u16string_view date;
        std::u16string_view year;
    };
    const Case cases[] = {
        {u"1987", u"1987"},       {u" 1987-06-05 ", u"1987"},       {u"87", u"87"},
        {u"19x7-01", u"19x7-01"}, {u"5 June 1987", u"5 June 1987"}, {u"", u""}};
    for (const Case& row : cases)
        EXPECT_EQ(YearOf(row.date), row.year);
}

TEST(TagKeys, ReadsRatingsOfAllScales) {
    struct Case {
        std::u16string_view text;
        int rating;  // -1 for none
    };
    const Case cases[] = {
        {u"", -1},   {u"x", -1},   {u"-1", -1},  {u".", -1},       {u"5 stars", -1}, {u"0", 0},
        {u"0.0", 0}, {u"0.75", 8}, {u"1.0", 10}, {u"1", 2},        {u"2.5", 5},      {u"5", 10},
        {u"6", 6},   {u"7.4", 7},  {u"10", 10},  {u"50", 5},       {u"80", 8},       {u"100", 10},
        {u"128", 6}, {u"196", 8},  {u"255", 10}, {u"9999999", 10}, {u"0,5", 5},      {u" 4 ", 8}};
    for (const Case& row : cases) {
        const auto rating = RatingFromText(row.text);
        EXPECT_EQ(rating ? static_cast<int>(*rating) : -1, row.rating)
            << std::string(row.text.begin(), row.text.end());
    }
}

TEST(TagKeys, IgnoresCaseBlanksAndUnderscores) {
    for (const std::u16string_view key : {u"album artist", u"ALBUM_ARTIST", u" AlbumArtist "}) {
        Findings findings;
        AddKeyed(findings, findings.nativeTags, key, u"x");
        EXPECT_EQ(findings.nativeTags.Get(u"Album Artist"), u"x");
    }
}

TEST(TagKeys, KeepsTheFirstOfWhatThereIsOnlyOne) {
    Findings findings;
    AddKeyed(findings, findings.nativeTags, u"track", u"3");
    AddKeyed(findings, findings.nativeTags, u"tracknumber", u"03");
    EXPECT_EQ(findings.nativeTags.Get(u"Track"), u"3");
}

}  // namespace
}  // namespace companion::pcm
