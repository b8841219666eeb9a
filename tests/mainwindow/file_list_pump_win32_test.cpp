// What the reader finishes comes into a list bit by bit.
#include <gmock/gmock.h>

#include <algorithm>

#include "tests/mainwindow/file_list_form.h"
#include "tests/support/decoder_folder.h"
#include "tests/support/text.h"

using Result = clFileList::PumpResult;

namespace {

constexpr DWORD slowMs = 40;

clString SlowText(const MetaDataItem& item, const clString& columnName) {
    Sleep(slowMs);
    return TagCellText(item, columnName);
}

class PumpedList : public testing::Test {
protected:
    PumpedList() {
        decoders.Add("one", "type=.abc|Some sound\ntag=Artist|Somebody\n");
        for (const wchar_t* path : {L"C:\\a.abc", L"C:\\b.abc", L"C:\\c.abc"})
            form.AddRow(path, {L"name"});
    }
    // To the end, with no pump beside it.
    void Read() {
        form.files.RefillMetaDataQueue();
        while (form.files.Reader().IsReading())
            Sleep(5);
    }
    std::vector<std::string> Artists() const {
        std::vector<std::string> artists;
        for (std::int32_t row = 0; row < form.view.RowCount(); ++row)
            artists.push_back(Utf8(form.view.CellText(row, 1)));
        return artists;
    }

    clScriptedFolder decoders;
    FileListForm form{L"Name\rArtist"};
};

}  // namespace

TEST_F(PumpedList, SlowTextsComeInSeveralGoesAndEndWithTheLastRow) {
    Read();
    EXPECT_EQ(form.files.PumpMetaData(&SlowText), Result::More);
    const std::vector<std::string> artists = Artists();
    const auto written = std::ranges::count(artists, "Somebody");
    EXPECT_GE(written, 1);
    EXPECT_LT(written, 3);
    Result result = Result::More;
    for (int goes = 0; goes < 3 && result == Result::More; ++goes)
        result = form.files.PumpMetaData(&SlowText);
    EXPECT_EQ(result, Result::Complete);
    EXPECT_THAT(Artists(), testing::Each("Somebody"));
    EXPECT_EQ(form.files.PumpMetaData(&SlowText), Result::Idle);
}

TEST_F(PumpedList, QuickTextsComeInOneGo) {
    Read();
    EXPECT_EQ(form.files.PumpMetaData(&TagCellText), Result::Complete);
    EXPECT_THAT(Artists(), testing::Each("Somebody"));
}

TEST_F(PumpedList, WaitsForAFileThatIsNotFinished) {
    EXPECT_EQ(form.files.PumpMetaData(&TagCellText), Result::Idle);
}
