#include "decoders/meta_data_cells.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "decoders/kept_tags.h"
#include "decoders/tag_list.h"
#include "tests/support/text.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Cells = std::vector<std::string>;

clStringList Names(const wchar_t* joined) {
    clStringList names;
    names.Split(joined);
    return names;
}

// "column=text" of each cell that is written.
Cells Written(const TagList& tags, const wchar_t* columns) {
    Cells cells;
    WriteTagCells(tags, Names(columns), [&](std::int64_t column, const clString& text) {
        cells.push_back(std::to_string(column) + "=" + Utf8(text));
    });
    return cells;
}

}  // namespace

TEST(MetaDataCells, ValuesOfOneTagArePartedBySemicolons) {
    struct Case {
        const wchar_t* value;
        const char* text;
    };
    const Case cases[] = {
        {L"", ""},           {L"A", "A"},
        {L"A\rB", "A; B"},   {L"A\r\rB", "A; ; B"},
        {L"\rA\r", "; A; "}, {L"A\nB; C", "A\nB; C"},
        {L"\r", "; "},
    };
    for (const Case& c : cases)
        EXPECT_EQ(Utf8(CellText(c.value)), c.text);
}

TEST(MetaDataCells, EachColumnTakesTheFirstTagOfItsName) {
    TagList tags;
    tags.Add(L"artist", L"A\rB");
    tags.Add(L"Artist", L"hidden");
    tags.Add(L"Length", L"3:07");
    EXPECT_THAT(Written(tags, L"Name\rArtist\rLength\rARTIST"),
                ElementsAre("1=A; B", "2=3:07", "3=A; B"));
}

TEST(MetaDataCells, AnEmptyTagLeavesTheCellAsItIs) {
    TagList tags;
    tags.Add(L"Title", L"");
    tags.Add(L"Title", L"behind");
    EXPECT_THAT(Written(tags, L"Title\rGenre"), IsEmpty());
}

TEST(MetaDataCells, ATagNamedLikeAFileColumnOverwritesIt) {
    TagList tags;
    tags.Add(L"Size", L"enormous");
    EXPECT_THAT(Written(tags, L"Name\rSize"), ElementsAre("1=enormous"));
}

TEST(MetaDataCells, TagsThatWereKeptGiveTheSameCells) {
    TagList tags;
    tags.Add(L"artist", L"A\rB");
    tags.Add(L"Artist", L"hidden");
    KeptTagsPool pool;
    KeptTags kept;
    kept.UsePool(pool);
    kept.Keep(tags);
    Cells cells;
    WriteTagCells(kept, Names(L"Size\rArtist"), [&](std::int64_t column, const clString& text) {
        cells.push_back(std::to_string(column) + "=" + Utf8(text));
    });
    EXPECT_THAT(cells, ElementsAre("1=A; B"));
}

TEST(MetaDataCells, AFileWithoutAnyTagHasNoCellWritten) {
    const TagList none;
    int asked = 0;
    WriteCells(
        none, Names(L"Name\rSize"),
        [&](const clString&) {
            ++asked;
            return clString(L"17 KB");
        },
        [](std::int64_t, const clString&) { ADD_FAILURE() << "a cell was written"; });
    EXPECT_EQ(asked, 0);
}

TEST(MetaDataCells, AFormMayMakeTheTextOfSomeColumnsItself) {
    TagList tags;
    tags.Add(L"Size", L"enormous");
    tags.Add(L"Title", L"T");
    Cells cells;
    WriteCells(
        tags, Names(L"Size\rTitle\rGenre"),
        [&](const clString& name) {
            return name.Equals(L"Size") ? clString(L"1\r2") : tags.Get(name);
        },
        [&](std::int64_t column, const clString& text) {
            cells.push_back(std::to_string(column) + "=" + Utf8(text));
        });
    EXPECT_THAT(cells, ElementsAre("0=1; 2", "1=T"));
}
