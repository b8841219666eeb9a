// The conversion list over files of a test's own, seen from within its own loop.
#include <gmock/gmock.h>

#include <map>

#include "dialogs/list_summary.h"
#include "foundation/folders.h"
#include "foundation/settings.h"
#include "mainwindow/setting_names.h"
#include "resources/ids.h"
#include "tests/dialogs/dialog_loop.h"
#include "tests/dialogs/open_list.h"
#include "tests/dialogs/row_watch.h"
#include "tests/support/decoder_folder.h"
#include "tests/support/import_stub.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/scratch_registry.h"
#include "tests/support/text.h"
#include "tests/ui/pump.h"

using testing::ElementsAre;

namespace {

constexpr std::int64_t lengthMs = 61000;
constexpr const wchar_t* oneFile =
    L"Converting 1 Files, Source Size: 10 bytes  Length: 1 minute 1 second";
constexpr int artistCommand = 10012;  // the first of the tags

class ListForm : public testing::Test {
protected:
    ListForm() {
        InitSettings();
        decoders.Add("one",
                     "type=.abc|Some sound\nneeds-file=1\nlength-ms=61000\n"
                     "tag=Artist|Somebody\n");
        decoders.Add("two", "type=.broken|Broken sound\nopen=0\n");
    }
    void Add(const wchar_t* name, std::size_t bytes) {
        const clString path = folder.AddFile(name, std::string(bytes, 'x'));
        sizes[Utf8(name)] = bytes;
        files.Add(path);
    }
    // What the line has to say of these rows, counted by the control's own ticks.
    clString Recounted(const ShownList& shown) const {
        ListSummary summary;
        for (int row = 0; row < shown.RowCount(); ++row) {
            if (!shown.IsTicked(row)) continue;
            FileRow record;
            record.sizeBytes = sizes.at(shown.Cell(row, 0));
            record.lengthMs = lengthMs;
            summary.Add(record);
        }
        return SummaryText(summary, false);
    }
    static std::vector<bool> Ticks(const ShownList& shown) {
        std::vector<bool> ticks;
        for (int row = 0; row < shown.RowCount(); ++row)
            ticks.push_back(shown.IsTicked(row));
        return ticks;
    }

    ScratchRegistry registry;
    clScriptedFolder decoders;
    ScratchFolder folder;
    clStringList files;
    std::map<std::string, std::size_t> sizes;  // by name
};

TEST_F(ListForm, LineIsThatOfARecountBehindEachRowOfACommand) {
    for (int number = 0; number < 7; ++number) {
        const std::wstring name = L"file " + std::to_wstring(number) + L".abc";
        Add(name.c_str(), std::size_t{1000} << number);
    }
    RunList(files, L"Name\rFolder", [this](const ShownList& shown) {
        ASSERT_TRUE(PumpUntil([&] { return shown.Tells(Recounted(shown)); }));
        for (const int command : {ID_UNCHECK_ALL, ID_INVERT_SELECTION, ID_CHECK_ALL}) {
            for (const int row : {1, 4})
                shown.SetTicked(row, command != ID_CHECK_ALL);
            int looks = 0;
            {
                const RowWatch watch(shown.Dialog(), [&] {
                    ++looks;
                    EXPECT_TRUE(shown.Tells(Recounted(shown))) << command << ' ' << looks;
                });
                shown.ChooseForRows(command);
            }
            // One for each row that the command turned.
            EXPECT_EQ(looks, command == ID_UNCHECK_ALL        ? 7
                             : command == ID_INVERT_SELECTION ? 7
                                                              : 2)
                << command;
        }
    });
}

// Each mark would have the control look the row up on the screen.
TEST_F(ListForm, CommandMarksTheWholeListAtItsEndAndNoRowByItself) {
    constexpr int rows = 300;
    for (int number = 0; number < rows; ++number)
        files.Add((L"C:\\none\\song " + std::to_wstring(number) + L".abc").c_str());
    RunList(files, L"Name\rFolder", [&](const ShownList& shown) {
        // The line above the list reaches to its header.
        RECT first = {};
        ListView_GetItemRect(shown.List(), 0, &first, LVIR_BOUNDS);
        for (const int command : {ID_UNCHECK_ALL, ID_CHECK_ALL, ID_INVERT_SELECTION}) {
            SCOPED_TRACE(command);
            ExpectOneMark(shown, command, rows, first.top);
        }
    });
}

TEST_F(ListForm, InvertTurnsEachRowByItself) {
    for (const wchar_t* name : {L"a.abc", L"b.abc", L"c.abc"})
        Add(name, 10);
    RunList(files, L"Name\rFolder", [](const ShownList& shown) {
        shown.SetTicked(1, false);
        shown.ChooseForRows(ID_INVERT_SELECTION);
        EXPECT_THAT(Ticks(shown), ElementsAre(false, true, false));
    });
}

TEST_F(ListForm, FilesWithoutADecoderOrGoneKeepTheirRows) {
    Add(L"a.abc", 786432);
    Add(L"b.broken", 786432);
    Add(L"c.none", 786432);
    Add(L"d.abc", 786432);
    DeleteFileW(folder.Path(L"d.abc").Chars());
    RunList(files, L"Name\rSize\rArtist\rFolder", [](const ShownList& shown) {
        // What lies there counts with its size, whoever can read it.
        ASSERT_TRUE(PumpUntil([&] {
            return shown.Tells(
                L"Converting 4 Files, Source Size: 2.25 MB  Length: 1 minute 1 second");
        }));
        ASSERT_EQ(shown.RowCount(), 4);
        EXPECT_EQ(shown.Cell(0, 1), "768 KB");
        EXPECT_EQ(shown.Cell(0, 2), "Somebody");
        for (const int row : {1, 2, 3}) {
            EXPECT_EQ(shown.Cell(row, 1), "") << row;
            EXPECT_EQ(shown.Cell(row, 2), "") << row;
            EXPECT_TRUE(shown.IsTicked(row)) << row;
        }
    });
}

LSTATUS WINAPI RefuseToWrite(HKEY, LPCWSTR, DWORD, DWORD, const BYTE*, DWORD) {
    return ERROR_ACCESS_DENIED;
}

TEST_F(ListForm, OkKeepsTheTicksThoughTheColumnsCannotBeKept) {
    Add(L"a.abc", 10);
    Add(L"b.abc", 10);
    const ListOutcome outcome = RunList(files, L"Name\rFolder", [](const ShownList& shown) {
        shown.SetTicked(0, false);
        const ImportStub stub("RegSetValueExW", &RefuseToWrite);
        shown.Press(IDOK);
    });
    EXPECT_THAT(outcome.excluded, ElementsAre(Utf8(folder.Path(L"a.abc"))));
    EXPECT_FALSE(outcome.converts);
    EXPECT_TRUE(ReadSettingString(setting::listColumns).IsEmpty());
}

TEST_F(ListForm, TicksAndColumnsAreKeptByOkAndConvertAlone) {
    const struct {
        UINT message;
        WPARAM id;
        bool keeps;
        bool converts;
    } ways[] = {{WM_COMMAND, IDCANCEL, false, false},
                {WM_CLOSE, 0, false, false},
                {WM_COMMAND, IDOK, true, false},
                {WM_COMMAND, IDC_CONVERT, true, true}};
    Add(L"a.abc", 10);
    for (const auto& way : ways) {
        const ListOutcome outcome = RunList(files, L"Name\rFolder", [&](const ShownList& shown) {
            shown.SetTicked(0, false);
            ListView_SetColumnWidth(shown.List(), 1, 123);
            SendMessageW(shown.Dialog(), way.message, way.id, 0);
        });
        EXPECT_EQ(outcome.excluded.size(), way.keeps ? 1u : 0u) << way.id;
        EXPECT_EQ(outcome.converts, way.converts) << way.id;
        EXPECT_EQ(Utf8(ReadSettingString(setting::listColumns)), way.keeps ? "Name\rFolder" : "")
            << way.id;
        EXPECT_EQ(Utf8(ReadSettingString(setting::listColumnWidths)), way.keeps ? "250\r123" : "")
            << way.id;
    }
}

TEST_F(ListForm, HeaderHasTheMenuOfTheColumns) {
    Add(L"a.abc", 10);
    const ListOutcome outcome = RunList(files, L"Name\rFolder", [](const ShownList& shown) {
        // The first reading is over: what comes later comes of the new one.
        ASSERT_TRUE(PumpUntil([&] { return shown.Tells(oneFile); }));
        EXPECT_EQ(shown.Cell(0, 2), "");
        shown.ChooseForColumns(artistCommand);
        // The rows are read anew for it.
        EXPECT_TRUE(PumpUntil([&] { return shown.Cell(0, 2) == "Somebody"; }));
        EXPECT_TRUE(shown.IsTicked(0));
        shown.Press(IDC_CONVERT);
    });
    EXPECT_TRUE(outcome.converts);
    EXPECT_EQ(Utf8(ReadSettingString(setting::listColumns)), "Name\rFolder\rArtist");
}

TEST_F(ListForm, HeaderMenuBringsTheDefaultColumnsAndTheirTexts) {
    Add(L"a.abc", 10);
    RunList(files, L"Folder\rName", [](const ShownList& shown) {
        // The first reading is over: what comes later comes of the new one.
        ASSERT_TRUE(PumpUntil([&] { return shown.Tells(oneFile); }));
        shown.ChooseForColumns(ID_COLUMNS_DEFAULT);
        EXPECT_TRUE(PumpUntil([&] { return shown.Cell(0, 4) == "Somebody"; }));
    });
}

// The table of the dialog's layout, at whatever size.
void ExpectLayout(const ShownList& shown) {
    RECT client = {};
    GetClientRect(shown.Dialog(), &client);
    const POINT corner = shown.Units(7, 17);
    const RECT list = shown.Place(IDC_FILE_LIST);
    EXPECT_EQ(list.left, corner.x);
    EXPECT_EQ(list.top, corner.y);
    EXPECT_EQ(list.right - list.left, client.right - shown.Units(1, 14).y);
    EXPECT_EQ(list.bottom - list.top, client.bottom - shown.Units(1, 42).y);
    const struct {
        int id;
        LONG left;
    } buttons[] = {{IDOK, client.right / 2 - shown.Units(81, 1).x},
                   {IDC_CONVERT, client.right / 2 - shown.Units(25, 1).x},
                   {IDCANCEL, client.right / 2 + shown.Units(31, 1).x}};
    const POINT size = shown.Units(50, 14);
    for (const auto& button : buttons) {
        const RECT place = shown.Place(button.id);
        EXPECT_EQ(place.left, button.left) << button.id;
        EXPECT_EQ(place.top, client.bottom - shown.Units(1, 19).y) << button.id;
        EXPECT_EQ(place.right - place.left, size.x) << button.id;
        EXPECT_EQ(place.bottom - place.top, size.y) << button.id;
    }
}

// At first the platform's own restoring is refused, and this one with it.
bool Restores(const ShownList& shown) {
    return PumpUntil([&] {
        ShowWindow(shown.Dialog(), SW_SHOWNORMAL);
        return IsZoomed(shown.Dialog()) == FALSE;
    });
}

TEST_F(ListForm, LayoutFollowsTheSizeOfTheDialog) {
    Add(L"a.abc", 10);
    RunList(files, L"Name\rFolder", [](const ShownList& shown) {
        EXPECT_NE(IsZoomed(shown.Dialog()), FALSE);
        ExpectLayout(shown);
        ASSERT_TRUE(Restores(shown));
        ExpectLayout(shown);
        ShowWindow(shown.Dialog(), SW_MAXIMIZE);
        ExpectLayout(shown);
    });
}

TEST_F(ListForm, StaysInSightWhileItsFrameIsDragged) {
    Add(L"a.abc", 10);
    RunList(files, L"Name\rFolder", [](const ShownList& shown) {
        ASSERT_TRUE(PumpUntil([&] { return shown.Tells(oneFile); }));
        ASSERT_TRUE(Restores(shown));
        for (const int width : {700, 640, 900}) {
            SetWindowPos(shown.Dialog(), nullptr, 0, 0, width, 500,
                         SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
            ExpectLayout(shown);
            EXPECT_TRUE(IsWindowVisible(shown.Dialog())) << width;
            EXPECT_TRUE(shown.Tells(oneFile)) << width;
        }
    });
}

TEST_F(ListForm, LineIsPaintedAnewInARestoredDialog) {
    Add(L"a.abc", 786432);
    RunList(files, L"Name\rFolder", [](const ShownList& shown) {
        const clString line(L"Converting 1 Files, Source Size: 768 KB  Length: 1 minute 1 second");
        ASSERT_TRUE(PumpUntil([&] { return shown.Tells(line); }));
        ASSERT_TRUE(Restores(shown));
        EXPECT_TRUE(PumpUntil([&] { return shown.Tells(line); }));
    });
}

TEST_F(ListForm, ComesBackMaximisedFromTheTaskBar) {
    Add(L"a.abc", 10);
    RunList(files, L"Name\rFolder", [](const ShownList& shown) {
        PumpFor(1000);  // some timers of the dialog
        ShowWindow(shown.Dialog(), SW_MINIMIZE);
        EXPECT_TRUE(PumpUntil([&] { return IsIconic(shown.Dialog()) != FALSE; }));
        PumpFor(600);
        EXPECT_NE(IsIconic(shown.Dialog()), FALSE);
        ShowWindow(shown.Dialog(), SW_RESTORE);
        EXPECT_TRUE(PumpUntil([&] { return IsZoomed(shown.Dialog()) != FALSE; }));
        ExpectLayout(shown);
    });
}

TEST_F(ListForm, RowsAreInTheOrderOfTheColumnThatCarriesTheArrow) {
    Add(L"b.abc", 10);
    folder.AddFolder(L"inner");
    Add(L"inner\\a.abc", 10);
    Add(L"C.abc", 10);
    RunList(files, L"Folder\rName", [](const ShownList& shown) {
        EXPECT_THAT(shown.Cells(1), ElementsAre("a.abc", "b.abc", "C.abc"));
        EXPECT_EQ(shown.Arrow(1), 0);
        EXPECT_EQ(shown.Arrow(0), -1);
    });
}

TEST_F(ListForm, WithoutAColumnOfNamesTheFirstOneSorts) {
    folder.AddFolder(L"x");
    folder.AddFolder(L"A");
    folder.AddFolder(L"m");
    for (const wchar_t* name : {L"x\\1.abc", L"A\\3.abc", L"m\\2.abc"})
        Add(name, 10);
    RunList(files, L"Folder\rThe Name", [this](const ShownList& shown) {
        EXPECT_THAT(shown.Cells(0),
                    ElementsAre(Utf8(folder.Path(L"A\\")), Utf8(folder.Path(L"m\\")),
                                Utf8(folder.Path(L"x\\"))));
    });
}

TEST_F(ListForm, ClickOfAHeaderSortsAndTheNextOneTurns) {
    folder.AddFolder(L"inner");
    for (const wchar_t* name : {L"c.abc", L"inner\\b.abc", L"a.abc"})
        Add(name, 10);
    RunList(files, L"Name\rFolder", [](const ShownList& shown) {
        shown.ClickHeader(0);
        EXPECT_THAT(shown.Cells(0), ElementsAre("c.abc", "b.abc", "a.abc"));
        EXPECT_EQ(shown.Arrow(0), 1);
        shown.ClickHeader(1);
        EXPECT_EQ(shown.Cells(0).back(), "b.abc");
        EXPECT_EQ(shown.Arrow(0), -1);
        EXPECT_EQ(shown.Arrow(1), 0);
    });
}

// Keeps the reader at its file until it is let go on.
class HeldReader {
public:
    explicit HeldReader(clScriptedFolder& decoders)
        : go(CreateEventW(nullptr, TRUE, FALSE, L"Tonequarry tests: the list is read")) {
        decoders.SetScript("one",
                           "type=.abc|Some sound\nneeds-file=1\nlength-ms=61000\n"
                           "wait=Tonequarry tests: the list is read\n");
    }
    HeldReader(const HeldReader&) = delete;
    HeldReader& operator=(const HeldReader&) = delete;
    ~HeldReader() { CloseHandle(go); }

    void Hold() const { ResetEvent(go); }
    void LetGoOn() const { SetEvent(go); }

private:
    HANDLE go;
};

TEST_F(ListForm, RowsAreSortedAnewWhenAllIsRead) {
    const HeldReader reader(decoders);
    Add(L"a.abc", 300);
    Add(L"b.abc", 200);
    Add(L"c.abc", 100);
    RunList(files, L"Name\rSize\rFolder", [&reader](const ShownList& shown) {
        shown.ClickHeader(1);
        reader.LetGoOn();
        EXPECT_TRUE(PumpUntil([&shown] {
            return shown.Cells(0) == std::vector<std::string>{"c.abc", "b.abc", "a.abc"};
        }));
    });
}

TEST_F(ListForm, CountAloneIsToldWhileRowsAreReadAnew) {
    const HeldReader reader(decoders);
    Add(L"a.abc", 10);
    Add(L"b.abc", 10);
    RunList(files, L"Name\rFolder", [&reader](const ShownList& shown) {
        reader.LetGoOn();
        ASSERT_TRUE(PumpUntil([&] {
            return shown.Tells(
                L"Converting 2 Files, Source Size: 20 bytes  Length: 2 minutes 2 seconds");
        }));
        reader.Hold();
        shown.ChooseForColumns(artistCommand);
        shown.SetTicked(0, false);
        EXPECT_TRUE(shown.Tells(L"Converting 1 Files, Reading Meta Data..."));
        reader.LetGoOn();
        EXPECT_TRUE(PumpUntil([&] { return shown.Tells(oneFile); }));
    });
}

TEST_F(ListForm, UntickedRowIsLeftOutWhereverItWasGiven) {
    for (const wchar_t* name : {L"c.abc", L"a.abc", L"b.abc"})
        Add(name, 10);
    const ListOutcome outcome = RunList(files, L"Name\rFolder", [](const ShownList& shown) {
        shown.SetTicked(0, false);
        shown.Press(IDOK);
    });
    EXPECT_THAT(outcome.excluded, ElementsAre(Utf8(folder.Path(L"a.abc"))));
}

TEST_F(ListForm, UnreadRowShowsWhatItsPathTells) {
    Add(L"a.abc", 10);
    RunList(files, L"Type\rFolder\rName", [this](const ShownList& shown) {
        EXPECT_EQ(shown.Cell(0, 0), Utf8(FileTypeName(folder.Path(L"a.abc"))));
        EXPECT_EQ(shown.Cell(0, 1), Utf8(folder.Path(L"")));
        EXPECT_EQ(shown.Cell(0, 2), "a.abc");
    });
}

TEST_F(ListForm, MenuOfTheRowsIsDrawnByTheDialog) {
    Add(L"a.abc", 10);
    RunList(files, L"Name\rFolder", [](const ShownList& shown) {
        MEASUREITEMSTRUCT item = {};
        item.CtlType = ODT_MENU;
        item.itemID = ID_INVERT_SELECTION;
        SendMessageW(shown.Dialog(), WM_MEASUREITEM, 0, reinterpret_cast<LPARAM>(&item));
        EXPECT_GT(item.itemWidth, 0u);
        EXPECT_GT(item.itemHeight, 0u);
    });
}

TEST_F(ListForm, ListCannotHaveItsHeadersDragged) {
    Add(L"a.abc", 10);
    RunList(files, L"Name\rFolder", [](const ShownList& shown) {
        EXPECT_EQ(ListView_GetExtendedListViewStyle(shown.List()),
                  DWORD{LVS_EX_CHECKBOXES | LVS_EX_FULLROWSELECT | LVS_EX_LABELTIP});
    });
}

TEST_F(ListForm, ItsOwnerWaits) {
    Add(L"a.abc", 10);
    const OwnerWindow owner;
    RunList(
        files, L"Name\rFolder",
        [&owner](const ShownList& shown) {
            EXPECT_EQ(GetWindow(shown.Dialog(), GW_OWNER), owner.Window());
            EXPECT_FALSE(owner.IsEnabled());
        },
        owner.Window());
    EXPECT_TRUE(owner.IsEnabled());
}

TEST_F(ListForm, IsRestoredToTheMiddle) {
    Add(L"a.abc", 10);
    RunList(files, L"Name\rFolder", [](const ShownList& shown) {
        ASSERT_TRUE(Restores(shown));
        RECT frame = {};
        GetWindowRect(shown.Dialog(), &frame);
        EXPECT_EQ(frame.left, GetSystemMetrics(SM_CXSCREEN) / 2 - (frame.right - frame.left) / 2);
        EXPECT_EQ(frame.top, GetSystemMetrics(SM_CYSCREEN) / 2 - (frame.bottom - frame.top) / 2);
    });
}

std::vector<HCURSOR> cursorsSet;

HCURSOR WINAPI KeepCursor(HCURSOR cursor) {
    cursorsSet.push_back(cursor);
    return nullptr;
}

TEST_F(ListForm, PointerTellsThatTheListIsFilled) {
    Add(L"a.abc", 10);
    cursorsSet.clear();
    const ImportStub stub("SetCursor", &KeepCursor);
    RunList(files, L"Name\rFolder", [](const ShownList&) {
        EXPECT_THAT(cursorsSet, ElementsAre(LoadCursorW(nullptr, IDC_APPSTARTING),
                                            LoadCursorW(nullptr, IDC_ARROW)));
    });
}

}  // namespace
