// The line above the conversion list, which is painted and no control.
#include "tests/ui/end_to_end/list_dialog.h"
#include "tests/ui/painted_line.h"

namespace {

constexpr const wchar_t* holdName = L"Tonequarry tests: reading goes on";

constexpr const char* script =
    "type=.abc|Some sound\nlength-ms=1000\ntag=Artist|Somebody\n"
    "wait=Tonequarry tests: reading goes on\n";

class ListTotalsTest : public ListDialogTest {
protected:
    ListTotalsTest() : hold(CreateEventW(nullptr, TRUE, TRUE, holdName)) {
        stage.AddDecoder(L"one", script);
        for (const wchar_t* name : {L"a.abc", L"b.abc", L"inner\\c.abc"})
            stage.AddFile(name, 786432);
    }
    ListTotalsTest(const ListTotalsTest&) = delete;
    ListTotalsTest& operator=(const ListTotalsTest&) = delete;
    ~ListTotalsTest() override {
        SetEvent(hold);
        CloseHandle(hold);
    }
    // Opens the list when the main window has read, and stops the reading there.
    HWND OpenHeld() {
        const RemoteList list = stage.Start(stage.Music()).List();
        EXPECT_TRUE(WaitUntil(
            [&] { return list.Column(L"Artist") == std::vector<std::wstring>(2, L"Somebody"); }));
        ResetEvent(hold);
        return OpenUnread();
    }
    // Whether the line comes to show exactly that text, pixel by pixel.
    static bool Tells(HWND dialog, const wchar_t* text) {
        RECT client = {};
        GetClientRect(dialog, &client);
        RECT list = {};
        GetWindowRect(GetDlgItem(dialog, 1002), &list);
        POINT corner = {list.left, list.top};
        ScreenToClient(dialog, &corner);
        // 7 horizontal and 5 vertical units; the list stands at 7 and 17.
        const POINT place = {corner.x, MulDiv(corner.y, 5, 17)};
        const SIZE band = {client.right, corner.y};
        return WaitUntil([&] { return ShowsLine(dialog, band, place, text); }, 5000);
    }

    HANDLE hold;
};

TEST_F(ListTotalsTest, CountIsToldWhileReadingAndTotalsBehindIt) {
    const HWND dialog = OpenHeld();
    EXPECT_TRUE(Tells(dialog, L"Converting 3 Files, Reading Meta Data..."));
    Untick(ListOf(dialog), L"a.abc");
    EXPECT_TRUE(Tells(dialog, L"Converting 2 Files, Reading Meta Data..."));
    SetEvent(hold);
    EXPECT_TRUE(Tells(dialog, L"Converting 2 Files, Source Size: 1.5 MB  Length: 2 seconds"));
    Untick(ListOf(dialog), L"b.abc");
    EXPECT_TRUE(Tells(dialog, L"Converting 1 Files, Source Size: 768 KB  Length: 1 second"));
}

// Its last file is in the list by then, and nothing is pumped any more.
TEST_F(ListTotalsTest, TotalsComeForAReaderThatEndsBehindItsLastFile) {
    stage.AddDecoder(L"one", std::string(script) + "destroy-sleep=1500\n");
    const HWND dialog = OpenHeld();
    SetEvent(hold);
    EXPECT_TRUE(Tells(dialog, L"Converting 3 Files, Reading Meta Data..."));
    EXPECT_TRUE(Tells(dialog, L"Converting 3 Files, Source Size: 2.25 MB  Length: 3 seconds"));
}

TEST_F(ListTotalsTest, NothingTickedIsZeroOfEverything) {
    const HWND dialog = OpenHeld();
    SetEvent(hold);
    ChooseFromRowMenu(ListOf(dialog), 2);
    EXPECT_TRUE(Tells(dialog, L"Converting 0 Files, Source Size: 0 bytes  Length: 0"));
    for (const int id : {IDOK, convertId})
        EXPECT_TRUE(IsWindowEnabled(GetDlgItem(dialog, id))) << id;
}

}  // namespace
