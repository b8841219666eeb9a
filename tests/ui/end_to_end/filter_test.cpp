// The filter over the main window.
#include <gmock/gmock.h>

#include "tests/support/converter_side.h"
#include "tests/ui/end_to_end/program_stage.h"
#include "tests/ui/keys.h"
#include "tests/ui/pixels.h"
#include "tests/ui/pointer.h"

namespace {

using testing::ElementsAre;
using Names = std::vector<std::wstring>;

constexpr const wchar_t* dialogTitle = L"Tonequarry: Filter Audio Types";
constexpr int excludeAllId = 1004;
constexpr int includeAllId = 1005;

class FilterTest : public testing::Test {
protected:
    FilterTest() {
        // In the order of the description the second type stands first.
        stage.AddDecoder(L"one", "type=.abc|Some sound\ntype=.def|Another sound\n");
        for (const wchar_t* name : {L"a.abc", L"b.def", L"c.abc"})
            stage.AddFile(name, 100);
    }
    HWND Open() const {
        stage.Program().PressButton(BarButton::Filter);
        return stage.Program().Dialog(dialogTitle);
    }
    static bool Goes(HWND dialog) {
        return WaitUntil([dialog] { return IsWindow(dialog) == FALSE; });
    }
    static void ClickControl(HWND dialog, int id) {
        ClickSettled(ScreenMiddle(GetDlgItem(dialog, id)));
    }
    static HWND BoxOf(HWND dialog) {
        const HWND box = FindWindowExW(dialog, nullptr, L"ListBox", nullptr);
        EXPECT_NE(box, nullptr);
        return box;
    }
    static POINT RowPoint(HWND dialog, int row, int x) {
        const HWND box = BoxOf(dialog);
        const auto height = static_cast<int>(Ask(box, LB_GETITEMHEIGHT));
        return ScreenPoint(box, x, row * height + height / 2);
    }
    // The pixels of the Filter button, away from the pointer, once they stand still.
    std::vector<COLORREF> ButtonLook() const {
        const HWND form = stage.Program().Form();
        SettlePointer(ScreenPoint(form, 600, 22));
        std::vector<COLORREF> look;
        std::vector<COLORREF> before;
        EXPECT_TRUE(WaitUntil([&] {
            before = look;
            look.clear();
            for (int y = 2; y < 51; y += 3) {
                for (int x = 0; x < 45; x += 3)
                    look.push_back(PixelOf(form, static_cast<int>(BarButton::Filter) + x, y));
            }
            Sleep(250);  // the bar looks for the pointer in less
            return look == before;
        }));
        return look;
    }
    bool NamesBecome(const Names& names) const {
        return WaitUntil([&] { return stage.Program().List().Column(L"Name") == names; }, 5000);
    }

    ProgramStage stage;
};

TEST_F(FilterTest, TypeTurnedBySpaceLeavesTheListAndIsKept) {
    stage.Start(stage.Music());
    const HWND dialog = Open();
    SetForegroundWindow(dialog);
    ClickSettled(RowPoint(dialog, 0, 150));
    PressKey(VK_SPACE);
    ClickControl(dialog, IDOK);
    ASSERT_TRUE(Goes(dialog));
    EXPECT_TRUE(NamesBecome({L"a.abc", L"c.abc"}));
    EXPECT_EQ(stage.Close(), 0u);
    EXPECT_EQ(stage.Text(L"zKR-FileSelector-Exclusion"), L".def;");
    stage.Start(stage.Music());
    EXPECT_TRUE(NamesBecome({L"a.abc", L"c.abc"}));
}

TEST_F(FilterTest, CancelBehindExcludeAllChangesNothing) {
    stage.Start(stage.Music());
    const HWND dialog = Open();
    ClickControl(dialog, excludeAllId);
    ClickControl(dialog, IDCANCEL);
    ASSERT_TRUE(Goes(dialog));
    EXPECT_TRUE(NamesBecome({L"a.abc", L"b.def", L"c.abc"}));
    EXPECT_EQ(stage.Close(), 0u);
    EXPECT_EQ(stage.Text(L"zKR-FileSelector-Exclusion"), L"");
}

// The list's own control has a number drawn by lot, and tells other things with it.
TEST_F(FilterTest, NothingButAClickOfAButtonCounts) {
    stage.Start(stage.Music());
    const HWND dialog = Open();
    for (const int notification : {BN_PAINT, BN_DOUBLECLICKED, BN_SETFOCUS, BN_KILLFOCUS})
        Ask(dialog, WM_COMMAND, static_cast<WPARAM>(MAKELONG(excludeAllId, notification)));
    ClickControl(dialog, IDOK);
    ASSERT_TRUE(Goes(dialog));
    EXPECT_EQ(stage.Close(), 0u);
    EXPECT_EQ(stage.Text(L"zKR-FileSelector-Exclusion"), L"");
}

// What every other test here leans on: the program learns by asking where the
// pointer is, however late it comes to a press.
TEST_F(FilterTest, ClickOfASlowProgramCountsWhereItWasMade) {
    stage.Start(stage.Music());
    const HWND dialog = Open();
    const POINT icon = RowPoint(dialog, 0, 12);
    {
        const Standstill standstill(dialog, 400);
        ClickSettled(icon);
        ClickControl(dialog, IDOK);
    }
    ASSERT_TRUE(Goes(dialog));
    EXPECT_TRUE(NamesBecome({L"a.abc", L"c.abc"}));
}

TEST_F(FilterTest, ExcludeAllIsKeptAndLatchesTheButton) {
    RunningProgram& program = stage.Start(stage.Music());
    const std::vector<COLORREF> released = ButtonLook();
    HWND dialog = Open();
    ClickControl(dialog, excludeAllId);
    ClickControl(dialog, IDOK);
    ASSERT_TRUE(Goes(dialog));
    EXPECT_TRUE(NamesBecome({}));
    const std::vector<COLORREF> latched = ButtonLook();
    EXPECT_NE(latched, released);
    EXPECT_EQ(program.Close(), 0u);
    EXPECT_EQ(stage.Text(L"zKR-FileSelector-Exclusion"), L".abc;.def;");

    stage.Start(stage.Music());
    EXPECT_TRUE(NamesBecome({}));
    EXPECT_EQ(ButtonLook(), latched);
    dialog = Open();
    ClickControl(dialog, includeAllId);
    ClickControl(dialog, IDOK);
    ASSERT_TRUE(Goes(dialog));
    EXPECT_TRUE(NamesBecome({L"a.abc", L"b.def", L"c.abc"}));
    EXPECT_EQ(ButtonLook(), released);
    EXPECT_EQ(stage.Close(), 0u);
    EXPECT_EQ(stage.Text(L"zKR-FileSelector-Exclusion"), L"");
}

TEST_F(FilterTest, CancelBehindIncludeAllChangesNothing) {
    stage.SetText(L"zKR-FileSelector-Exclusion", L".abc;");
    stage.Start(stage.Music());
    const HWND dialog = Open();
    ClickControl(dialog, includeAllId);
    ClickControl(dialog, IDCANCEL);
    ASSERT_TRUE(Goes(dialog));
    EXPECT_TRUE(NamesBecome({L"b.def"}));
    EXPECT_EQ(stage.Close(), 0u);
    EXPECT_EQ(stage.Text(L"zKR-FileSelector-Exclusion"), L".abc;");
}

TEST_F(FilterTest, CancelListsTheFolderAnew) {
    stage.Start(stage.Music());
    ASSERT_TRUE(NamesBecome({L"a.abc", L"b.def", L"c.abc"}));
    const HWND dialog = Open();
    stage.AddFile(L"d.abc");
    ClickControl(dialog, IDCANCEL);
    ASSERT_TRUE(Goes(dialog));
    EXPECT_TRUE(NamesBecome({L"a.abc", L"b.def", L"c.abc", L"d.abc"}));
}

TEST_F(FilterTest, MainWindowWaitsForIt) {
    RunningProgram& program = stage.Start(stage.Music());
    const HWND dialog = Open();
    EXPECT_EQ(GetWindow(dialog, GW_OWNER), program.Form());
    EXPECT_FALSE(IsWindowEnabled(program.Form()));
    ClickControl(dialog, IDCANCEL);
    ASSERT_TRUE(Goes(dialog));
    EXPECT_TRUE(WaitUntil([&] { return IsWindowEnabled(program.Form()) != FALSE; }));
}

TEST_F(FilterTest, EscapeAndTheCloseBoxChangeNothing) {
    stage.Start(stage.Music());
    for (const bool byKey : {true, false}) {
        const HWND dialog = Open();
        ClickSettled(RowPoint(dialog, 1, 12));
        if (byKey) {
            PressKey(VK_ESCAPE);
        } else {
            RECT frame = {};
            GetWindowRect(dialog, &frame);
            ClickSettled({frame.right - 12, frame.top + 13});
        }
        ASSERT_TRUE(Goes(dialog)) << byKey;
        EXPECT_TRUE(NamesBecome({L"a.abc", L"b.def", L"c.abc"})) << byKey;
    }
}

// A click on a row that is not selected selects it, and only its icon turns it.
TEST_F(FilterTest, IconTurnsAnyRowAndTheTextTheSelectedOne) {
    stage.Start(stage.Music());
    HWND dialog = Open();
    ClickSettled(RowPoint(dialog, 0, 12));
    ClickSettled(RowPoint(dialog, 1, 150));
    ClickControl(dialog, IDOK);
    ASSERT_TRUE(Goes(dialog));
    EXPECT_TRUE(NamesBecome({L"a.abc", L"c.abc"}));

    dialog = Open();
    ClickSettled(RowPoint(dialog, 1, 150));
    ClickSettled(RowPoint(dialog, 1, 250));
    ClickControl(dialog, IDOK);
    ASSERT_TRUE(Goes(dialog));
    EXPECT_TRUE(NamesBecome({}));
}

TEST_F(FilterTest, KeysAloneTurnATypeAndPressOk) {
    RunningProgram& program = stage.Start(stage.Music());
    const HWND dialog = Open();
    const auto focusIs = [dialog](HWND window) {
        return WaitUntil([=] {
            GUITHREADINFO info = {};
            info.cbSize = sizeof info;
            GetGUIThreadInfo(GetWindowThreadProcessId(dialog, nullptr), &info);
            return info.hwndFocus == window;
        });
    };
    const HWND box = BoxOf(dialog);
    ASSERT_TRUE(focusIs(GetDlgItem(dialog, IDOK)));
    // The list stands behind the four buttons.
    for (const HWND next : {GetDlgItem(dialog, IDCANCEL), GetDlgItem(dialog, excludeAllId),
                            GetDlgItem(dialog, includeAllId), box}) {
        PressKey(VK_TAB);
        ASSERT_TRUE(focusIs(next));
    }
    PressKey(VK_DOWN);
    PressKey(VK_DOWN);
    ASSERT_TRUE(WaitUntil([box] { return Ask(box, LB_GETCURSEL) == 1; }));
    PressKey(VK_SPACE);
    PressKey(VK_TAB);
    ASSERT_TRUE(focusIs(GetDlgItem(dialog, IDOK)));
    PressKey(VK_RETURN);
    ASSERT_TRUE(Goes(dialog));
    EXPECT_TRUE(NamesBecome({L"b.def"}));
    EXPECT_EQ(program.Close(), 0u);
}

TEST_F(FilterTest, OneExtensionOfTwoDecodersGoesWithTheLastOfItsRows) {
    stage.AddDecoder(L"two", "type=.abc|Some sound\n");
    stage.Start(stage.Music());
    HWND dialog = Open();
    EXPECT_EQ(Ask(BoxOf(dialog), LB_GETCOUNT), 3);
    ClickSettled(RowPoint(dialog, 1, 12));
    ClickControl(dialog, IDOK);
    ASSERT_TRUE(Goes(dialog));
    EXPECT_TRUE(NamesBecome({L"a.abc", L"b.def", L"c.abc"}));

    dialog = Open();
    ClickSettled(RowPoint(dialog, 2, 12));
    ClickControl(dialog, IDOK);
    ASSERT_TRUE(Goes(dialog));
    EXPECT_TRUE(NamesBecome({L"b.def"}));

    // Each row has kept its own.
    dialog = Open();
    ClickSettled(RowPoint(dialog, 2, 12));
    ClickControl(dialog, IDOK);
    ASSERT_TRUE(Goes(dialog));
    EXPECT_TRUE(NamesBecome({L"a.abc", L"b.def", L"c.abc"}));
}

TEST(FilterWithoutTypes, IsEmptyAndEndsWithOk) {
    ProgramStage stage;
    stage.AddFile(L"a.abc");
    RunningProgram& program = stage.Start(stage.Music());
    program.PressButton(BarButton::Filter);
    const HWND dialog = program.Dialog(dialogTitle);
    const HWND box = FindWindowExW(dialog, nullptr, L"ListBox", nullptr);
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(Ask(box, LB_GETCOUNT), 0);
    ClickSettled(ScreenMiddle(GetDlgItem(dialog, excludeAllId)));
    ClickSettled(ScreenMiddle(box));
    ClickSettled(ScreenMiddle(GetDlgItem(dialog, IDOK)));
    EXPECT_TRUE(WaitUntil([dialog] { return IsWindow(dialog) == FALSE; }));
    EXPECT_EQ(program.Close(), 0u);
    EXPECT_EQ(stage.Text(L"zKR-FileSelector-Exclusion"), L"");
}

}  // namespace
