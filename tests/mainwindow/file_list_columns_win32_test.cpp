// Columns of a list of files in its control.
#include <gmock/gmock.h>

#include "mainwindow/column_menu.h"
#include "tests/mainwindow/file_list_form.h"
#include "tests/support/import_stub.h"
#include "tests/support/text.h"

using testing::ElementsAre;

namespace {

constexpr std::int32_t none = -1;

int AlignmentOf(const FileListForm& form, int column) {
    LVCOLUMNW parts = {};
    parts.mask = LVCF_FMT;
    SendMessageW(form.Control(), LVM_GETCOLUMNW, static_cast<WPARAM>(column),
                 reinterpret_cast<LPARAM>(&parts));
    return parts.fmt & LVCFMT_JUSTIFYMASK;
}

// The side of the title on which the header has the arrow's place.
bool HasPictureOnRight(const FileListForm& form, int column) {
    LVCOLUMNW parts = {};
    parts.mask = LVCF_FMT;
    SendMessageW(form.Control(), LVM_GETCOLUMNW, static_cast<WPARAM>(column),
                 reinterpret_cast<LPARAM>(&parts));
    return (parts.fmt & LVCFMT_BITMAP_ON_RIGHT) != 0;
}

// Drags a column's edge there, as the header announces it.
std::int32_t DraggedTo(const FileListForm& form, int column, int width) {
    const auto header = reinterpret_cast<HWND>(SendMessageW(form.Control(), LVM_GETHEADER, 0, 0));
    HDITEMW item = {};
    item.mask = HDI_WIDTH;
    item.cxy = width;
    SendMessageW(header, HDM_SETITEMW, static_cast<WPARAM>(column),
                 reinterpret_cast<LPARAM>(&item));
    return form.view.ColumnWidth(column);
}

// Notes when the list's names were the old ones.
class NotingHost : public ColumnMenuHost {
public:
    explicit NotingHost(const clFileList& list) : files(list) {}
    void FillNewColumn() override { calls.push_back("new, names " + Utf8(files._ColumnNames)); }
    void FillDefaultColumns() override {
        calls.push_back("default, names " + Utf8(files._ColumnNames));
    }

    std::vector<std::string> calls;

private:
    const clFileList& files;
};

void Toggle(FileListForm& form, const wchar_t* title, NotingHost& host) {
    ToggleColumn(title, form.view, form.files, host);
}

}  // namespace

TEST(FileColumns, SavedWidthsCountAndOthersAreTheDefaultOnes) {
    const FileListForm form(L"Name\rSize\rArtist\rTrack\rFolder\rname", L"77\rnone\r0\r\r33");
    EXPECT_THAT(form.Titles(), ElementsAre("Name", "Size", "Artist", "Track", "Folder", "name"));
    std::vector<std::int32_t> widths;
    for (int column = 0; column < 6; ++column)
        widths.push_back(form.view.ColumnWidth(column));
    EXPECT_THAT(widths, ElementsAre(77, 75, 150, 75, 33, 250));
    EXPECT_THAT(form.Images(), ElementsAre(none, none, none, none, none, none));
}

TEST(FileColumns, NumbersAreAlignedToTheRightWithTheArrowInside) {
    const FileListForm form(
        L"Name\rSize\rLength\rBit Rate\rChannels\rSample Size\rSample Rate\rCompression\rsize");
    for (const int left : {0, 8}) {
        EXPECT_EQ(AlignmentOf(form, left), LVCFMT_LEFT) << left;
        EXPECT_TRUE(HasPictureOnRight(form, left)) << left;
    }
    for (int right = 1; right < 8; ++right) {
        EXPECT_EQ(AlignmentOf(form, right), LVCFMT_RIGHT) << right;
        EXPECT_FALSE(HasPictureOnRight(form, right)) << right;
    }
}

TEST(FileColumns, FirstColumnKeepsFiftyPixelsAndOthersFive) {
    const FileListForm form(L"Name\rSize");
    EXPECT_EQ(DraggedTo(form, 0, 20), 50);
    EXPECT_EQ(DraggedTo(form, 0, 50), 50);
    EXPECT_EQ(DraggedTo(form, 1, 2), 5);
    EXPECT_EQ(DraggedTo(form, 1, 20), 20);
}

TEST(FileColumns, ColumnsAreSavedAsTheyAreDisplayed) {
    const FileListForm form(L"Name\rSize\rArtist", L"200\r80\r120");
    int order[] = {2, 0, 1};
    SendMessageW(form.Control(), LVM_SETCOLUMNORDERARRAY, 3, reinterpret_cast<LPARAM>(order));
    const SavedColumns saved = form.files.DisplayedColumns();
    EXPECT_EQ(Utf8(saved.names), "Artist\rName\rSize");
    EXPECT_EQ(Utf8(saved.widths), "120\r200\r80");
}

TEST(FileColumns, ChoosingAPresentColumnRemovesItAndListsNothing) {
    FileListForm form(L"Name\rSize\rArtist");
    form.AddRow(L"C:\\a.mp3", {L"a", L"b", L"c"});
    NotingHost host(form.files);
    Toggle(form, L"Size", host);
    EXPECT_THAT(form.Titles(), ElementsAre("Name", "Artist"));
    EXPECT_EQ(Utf8(form.files._ColumnNames), "Name\rArtist");
    EXPECT_EQ(Utf8(form.view.CellText(0, 1)), "c");
    EXPECT_TRUE(host.calls.empty());
    // Its least width has gone with it.
    EXPECT_EQ(DraggedTo(form, 1, 2), 5);
}

TEST(FileColumns, OtherSpellingLeavesTheNamesButNotTheControl) {
    FileListForm form(L"Name\rARTIST");
    NotingHost host(form.files);
    Toggle(form, L"Artist", host);
    EXPECT_THAT(form.Titles(), ElementsAre("Name", "ARTIST"));
    EXPECT_EQ(Utf8(form.files._ColumnNames), "Name");
}

TEST(FileColumns, OnlyColumnLeavesTheControlButStaysAmongTheNames) {
    FileListForm form(L"Name");
    NotingHost host(form.files);
    Toggle(form, L"Name", host);
    EXPECT_TRUE(form.Titles().empty());
    EXPECT_EQ(Utf8(form.files._ColumnNames), "Name");
    const SavedColumns saved = form.files.DisplayedColumns();
    EXPECT_EQ(Utf8(saved.names), "");
    EXPECT_EQ(Utf8(saved.widths), "");
}

TEST(FileColumns, NewColumnIsFilledUnderTheOldNames) {
    FileListForm form(L"Name");
    NotingHost host(form.files);
    Toggle(form, L"Bit Rate", host);
    EXPECT_THAT(form.Titles(), ElementsAre("Name", "Bit Rate"));
    EXPECT_EQ(form.view.ColumnWidth(1), 90);
    EXPECT_EQ(form.view.ColumnImage(1), none);
    EXPECT_EQ(Utf8(form.files._ColumnNames), "Name\rBit Rate");
    EXPECT_THAT(host.calls, ElementsAre("new, names Name"));
}

TEST(FileColumns, DefaultColumnsReplaceAllOthersAndSortByTheFirst) {
    FileListForm form(L"Artist\rSize", L"300\r300");
    form.files.SetColumnSortImage(1, 1);
    NotingHost host(form.files);
    RestoreDefaultColumns(form.files, host);
    EXPECT_THAT(form.Titles(),
                ElementsAre("Name", "Size", "Type", "Date Modified", "Artist", "Title", "Genre",
                            "Album Artist - Album - Disc - Track", "Length", "Bit Rate"));
    EXPECT_THAT(form.Images(),
                ElementsAre(0, none, none, none, none, none, none, none, none, none));
    EXPECT_EQ(form.view.ColumnWidth(0), 250);
    EXPECT_EQ(DraggedTo(form, 0, 20), 50);
    EXPECT_EQ(DraggedTo(form, 9, 20), 20);
    EXPECT_THAT(host.calls,
                ElementsAre("default, names Name\rSize\rType\rDate Modified\rArtist\rTitle\rGenre"
                            "\rAlbum Artist - Album - Disc - Track\rLength\rBit Rate"));
}

namespace {

decltype(&InvalidateRect) realInvalidate;
HWND watchedList;
int wholeRepaints;

BOOL WINAPI WatchRepaints(HWND window, const RECT* rect, BOOL erase) {
    if (window == watchedList && rect == nullptr && erase != FALSE) ++wholeRepaints;
    return realInvalidate(window, rect, erase);
}

}  // namespace

// Each row is painted in one go, and its cells stand elsewhere now.
TEST(FileColumns, ChoosingAColumnPaintsTheWholeListAnew) {
    FileListForm form(L"Name\rARTIST");
    NotingHost host(form.files);
    watchedList = form.Control();
    realInvalidate = &InvalidateRect;
    const ImportStub watch("InvalidateRect", &WatchRepaints);
    // One comes, it goes again, and the last one leaves the names alone.
    for (const wchar_t* title : {L"Size", L"Size", L"Artist"}) {
        wholeRepaints = 0;
        Toggle(form, title, host);
        EXPECT_EQ(wholeRepaints, 1) << Utf8(title);
    }
}
