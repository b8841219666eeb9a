// What the reader finishes comes into a list bit by bit.
#include <gmock/gmock.h>

#include <algorithm>
#include <functional>

#include "decoders/file_date.h"
#include "foundation/handle.h"
#include "tests/mainwindow/file_list_form.h"
#include "tests/support/decoder_folder.h"
#include "tests/support/eventually.h"
#include "tests/support/regional_profile.h"
#include "tests/support/text.h"
#include "tests/ui/keys.h"
#include "tests/ui/pointer.h"
#include "tests/ui/pump.h"

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

namespace {

constexpr const wchar_t* gateName = L"tonequarry-test-gate";

// Of row 0, in the columns of the form, joined by "|".
std::string CellsOf(const FileListForm& form) {
    std::string cells;
    for (std::int32_t column = 0; column < form.view.ColumnCount(); ++column)
        cells += Utf8(form.view.CellText(0, column)) + '|';
    return cells;
}

// One file of a list, read and pumped; the cells that it then has.
std::string PumpedCells(const wchar_t* columns, const char* decoder,
                        clString (*textOf)(const MetaDataItem&, const clString&),
                        const wchar_t* path = L"C:\\a.abc") {
    const RegionalProfile region(englishRegion);
    clScriptedFolder decoders;
    decoders.Add("one", std::string("type=.abc|Some sound\n") + decoder);
    FileListForm form(columns);
    FileRow& row = form.AddRow(path, {L"name"});
    row.sizeBytes = 1572864;
    row.dateModified = {0, 31000000};
    row.dateCreated = {0, 30000000};
    row.dateAccessed = {0, 32000000};
    form.files.RefillMetaDataQueue();
    while (form.files.Reader().IsReading())
        Sleep(5);
    EXPECT_EQ(form.files.PumpMetaData(textOf), Result::Complete);
    return CellsOf(form);
}

}  // namespace

TEST(PumpedCell, SeveralValuesAreDividedBySemicolonsInBothLists) {
    const char* const decoder = "tag=Artist|A\\rB\n";
    EXPECT_EQ(PumpedCells(L"Name\rArtist", decoder, &TagCellText), "name|A; B|");
    EXPECT_EQ(PumpedCells(L"Name\rArtist", decoder, &FileCellText), "name|A; B|");
}

TEST(PumpedCell, ATagNamedSizeShowsInAFolderAndNotInAListOfPaths) {
    const char* const decoder = "tag=Size|huge\ntag=size|hidden\n";
    EXPECT_EQ(PumpedCells(L"Name\rSize", decoder, &TagCellText), "name|huge|");
    EXPECT_EQ(PumpedCells(L"Name\rSize", decoder, &FileCellText), "name|1,536 KB|");
}

TEST(PumpedCell, DatesOfAListOfPathsAreThoseOfTheirRows) {
    const char* const decoder = "tag=Date Modified|never\ntag=Title|T\n";
    const wchar_t* const columns = L"Name\rDate Modified\rDate Created\rDate Accessed\rTitle";
    const std::string modified = Utf8(FileDateText({0, 31000000}));
    const std::string created = Utf8(FileDateText({0, 30000000}));
    const std::string accessed = Utf8(FileDateText({0, 32000000}));
    ASSERT_NE(modified, created);
    ASSERT_NE(modified, accessed);
    EXPECT_EQ(PumpedCells(columns, decoder, &FileCellText),
              "name|" + modified + '|' + created + '|' + accessed + "|T|");
    EXPECT_EQ(PumpedCells(columns, decoder, &TagCellText), "name|never|||T|");
}

TEST(PumpedCell, AFileThatNobodyReadsHasNoSizeInAListOfPaths) {
    const wchar_t* const columns = L"Name\rSize\rDate Modified";
    EXPECT_EQ(PumpedCells(columns, "", &FileCellText, L"C:\\a.nope"), "name|||");
    EXPECT_EQ(PumpedCells(columns, "open=0\n", &FileCellText), "name|||");
}

TEST_F(PumpedList, IsCompleteWithItsLastFileAndNotBefore) {
    const clKernelHandle gate(CreateEventW(nullptr, TRUE, FALSE, gateName));
    decoders.SetScript("one",
                       "type=.abc|Some sound\ntag=Artist|Somebody\n[c.abc]\n"
                       "tag=Artist|Somebody\nwait=tonequarry-test-gate\n");
    form.files.RefillMetaDataQueue();
    EXPECT_TRUE(Eventually([&] {
        EXPECT_NE(form.files.PumpMetaData(&TagCellText), Result::Complete);
        return Artists()[1] == "Somebody";
    }));
    EXPECT_THAT(Artists(), testing::ElementsAre("Somebody", "Somebody", ""));
    SetEvent(gate.Get());
    EXPECT_TRUE(Eventually([&] { return !form.files.Reader().IsReading(); }));
    EXPECT_EQ(form.files.PumpMetaData(&TagCellText), Result::Complete);
    EXPECT_THAT(Artists(), testing::Each("Somebody"));
    EXPECT_EQ(form.files.PumpMetaData(&TagCellText), Result::Idle);
}

// A listing whose columns need no decoder asks for no reading: what was left of the
// reading before it goes when the next one asks, and writes to no row that is not its.
TEST_F(PumpedList, AQueueThatIsNotFilledAnewLeavesTheNextRowsAlone) {
    const clKernelHandle gate(CreateEventW(nullptr, TRUE, FALSE, gateName));
    decoders.SetScript("one",
                       "type=.abc|Some sound\ntag=Artist|Somebody\n[b.abc]\n"
                       "wait=tonequarry-test-gate\n");
    form.files.RefillMetaDataQueue();
    ASSERT_TRUE(Eventually([&] {
        return std::ranges::any_of(decoders.Log("one"), [](const std::string& line) {
            return line.starts_with("open") && line.find("b.abc") != std::string::npos;
        });
    }));
    SetEvent(gate.Get());
    form.files.Clear();
    for (const wchar_t* path : {L"C:\\x.abc", L"C:\\y.abc"})
        form.AddRow(path, {L"name"});
    while (form.files.PumpMetaData(&TagCellText) == Result::More) {
    }
    EXPECT_EQ(form.files.PumpMetaData(&TagCellText), Result::Idle);
    EXPECT_THAT(Artists(), testing::ElementsAre("", ""));
    Read();
    EXPECT_EQ(form.files.PumpMetaData(&TagCellText), Result::Complete);
    EXPECT_THAT(Artists(), testing::Each("Somebody"));
}

// The list is sorted when it is complete, and not while it fills.
TEST_F(PumpedList, TheFormIsToldToSortOnceTheListIsComplete) {
    const auto posted = [&](Result result) {
        PumpMessages();
        clFileList::PostRest(form.form.Window(), result);
        MSG message = {};
        std::string told;
        while (PeekMessageW(&message, form.form.Window(), clFileList::WorkMessage(),
                            clFileList::WorkMessage(), PM_REMOVE))
            told += message.wParam == clFileList::Sort ? "sort " : "go on ";
        return told;
    };
    EXPECT_EQ(posted(Result::Idle), "");
    EXPECT_EQ(posted(Result::More), "go on ");
    EXPECT_EQ(posted(Result::Complete), "sort ");
}

namespace {

// A list with many finished files, on the screen, whose form pumps it to the end.
class FullQueue : public PumpedList {
protected:
    FullQueue() {
        for (const wchar_t name : {L'd', L'e', L'f', L'g', L'h', L'i', L'j', L'k', L'l'}) {
            const wchar_t path[] = {L'C', L':', L'\\', name, L'.', L'a', L'b', L'c', 0};
            form.AddRow(path, {L"name"});
        }
        form.form.route = [this](HWND, UINT message, WPARAM wParam, LPARAM lParam,
                                 std::uint32_t*) -> LRESULT {
            if (message == clFileList::WorkMessage() && wParam == clFileList::GoOnPumping) Pump();
            if (message == clFileList::WorkMessage() && wParam == clFileList::Sort) isOver = true;
            if (seen) seen(message, lParam);
            return 0;
        };
        ShowWindow(form.form.Window(), SW_SHOW);
        EXPECT_TRUE(BringToFront(form.form.Window()));
        SetFocus(form.Control());
        PumpMessages();
        Read();
    }
    // The form goes after what is here, and with messages.
    ~FullQueue() override { form.form.route = nullptr; }
    void Pump() {
        ++goes;
        clFileList::PostRest(form.form.Window(), form.files.PumpMetaData(&SlowText));
    }
    // Several goes before the last one.
    void ExpectTakenOnTheWay(int atGo) const {
        EXPECT_GT(atGo, 0);
        EXPECT_LT(atGo, goes - 3);
        EXPECT_THAT(Artists(), testing::Each("Somebody"));
    }

    std::function<void(UINT message, LPARAM lParam)> seen;
    int goes = 0;
    bool isOver = false;
};

}  // namespace

TEST_F(FullQueue, LetsAKeyComeBetween) {
    int keyAt = 0;
    seen = [&](UINT message, LPARAM lParam) {
        if (message != WM_NOTIFY) return;
        if (reinterpret_cast<const NMHDR*>(lParam)->code == LVN_KEYDOWN) keyAt = goes;
    };
    Pump();
    HoldKey(VK_DOWN);
    ReleaseKey(VK_DOWN);
    EXPECT_TRUE(PumpUntil([&] { return isOver; }, 20000));
    ExpectTakenOnTheWay(keyAt);
}

TEST_F(FullQueue, LetsAClickComeBetween) {
    MovePointer(ScreenMiddle(form.Control()));
    PumpMessages();
    int clickAt = 0;
    seen = [&](UINT message, LPARAM lParam) {
        if (message != WM_NOTIFY) return;
        if (reinterpret_cast<const NMHDR*>(lParam)->code == NM_CLICK) clickAt = goes;
    };
    Pump();
    PressButton();
    ReleaseButton();
    EXPECT_TRUE(PumpUntil([&] { return isOver; }, 20000));
    ExpectTakenOnTheWay(clickAt);
}

TEST_F(FullQueue, IsPaintedOnTheWay) {
    int paintedAt = 0;
    seen = [&](UINT message, LPARAM) {
        if (message == WM_DRAWITEM && paintedAt == 0) paintedAt = goes;
    };
    Pump();
    EXPECT_TRUE(PumpUntil([&] { return isOver; }, 20000));
    ExpectTakenOnTheWay(paintedAt);
}

TEST_F(FullQueue, LetsOtherTimersComeBetween) {
    int timerAt = 0;
    seen = [&](UINT message, LPARAM) {
        if (message == WM_TIMER && timerAt == 0) timerAt = goes;
    };
    // Hidden, so that there is nothing to paint.
    ShowWindow(form.form.Window(), SW_HIDE);
    PumpMessages();
    SetTimer(form.form.Window(), 1, USER_TIMER_MINIMUM, nullptr);
    Pump();
    EXPECT_TRUE(PumpUntil([&] { return isOver; }, 20000));
    ExpectTakenOnTheWay(timerAt);
}

// Nothing waits: it does not wait for a timer either.
TEST_F(FullQueue, GoesOnAtOnceWhereNothingWaits) {
    ShowWindow(form.form.Window(), SW_HIDE);
    // What the display still has to tell counts as waiting.
    ASSERT_TRUE(PumpUntil([] { return GetQueueStatus(QS_INPUT | QS_PAINT | QS_TIMER) == 0; }));
    Pump();
    MSG message = {};
    while (!isOver) {
        ASSERT_TRUE(PeekMessageW(&message, form.form.Window(), clFileList::WorkMessage(),
                                 clFileList::WorkMessage(), PM_REMOVE));
        DispatchMessageW(&message);
    }
    // Two of the twelve files in each, or one where the machine was busy.
    EXPECT_GE(goes, 6);
}
