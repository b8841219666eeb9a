// The window's place and the divider, over restarts.
#include <gmock/gmock.h>

#include <array>

#include "tests/support/converter_side.h"
#include "tests/ui/end_to_end/program_stage.h"
#include "tests/ui/keys.h"
#include "tests/ui/pointer.h"

namespace {

class PlacementTest : public testing::Test {
protected:
    void StorePlace() const {
        stage.SetNumber(L"zKR-FileSelector-X", 100);
        stage.SetNumber(L"zKR-FileSelector-Y", 80);
        stage.SetNumber(L"zKR-FileSelector-W", 900);
        stage.SetNumber(L"zKR-FileSelector-H", 600);
        stage.SetNumber(L"zKR-FileSelector-NotMax", 1);
    }
    std::vector<std::optional<DWORD>> StoredPlace() const {
        return {stage.Number(L"zKR-FileSelector-X"), stage.Number(L"zKR-FileSelector-Y"),
                stage.Number(L"zKR-FileSelector-W"), stage.Number(L"zKR-FileSelector-H"),
                stage.Number(L"zKR-FileSelector-NotMax")};
    }
    static std::vector<std::optional<DWORD>> NoPlace() {
        return std::vector<std::optional<DWORD>>(5, std::nullopt);
    }
    int TreeWidth() const {
        RECT rect = {};
        GetWindowRect(stage.Program().Tree().Window(), &rect);
        return rect.right - rect.left;
    }
    // Drags from the divider to screen points; the first is where it is taken.
    static void Drag(const std::vector<POINT>& way) {
        // Longer ago than the first half of a double click.
        Sleep(GetDoubleClickTime() + 50);
        SettlePointer(way.front());
        PressButton(PointerButton::Left);
        for (std::size_t i = 1; i < way.size(); ++i) {
            SettlePointer(way[i]);
            Sleep(200);  // seen as a move of its own
        }
        ReleaseButton(PointerButton::Left);
    }
    // Left, top, right and bottom in client coordinates of the form.
    using Box = std::array<LONG, 4>;
    Box InClient(HWND child) const {
        RECT rect = {};
        GetWindowRect(child, &rect);
        MapWindowPoints(nullptr, stage.Program().Form(), reinterpret_cast<POINT*>(&rect), 2);
        return {rect.left, rect.top, rect.right, rect.bottom};
    }
    POINT InForm(int x, int y) const { return ScreenPoint(stage.Program().Form(), x, y); }

    ProgramStage stage;
};

TEST_F(PlacementTest, NormalWindowComesBackToItsPlace) {
    StorePlace();
    stage.SetNumber(L"zKR-FileSelector-Devider", 50);
    RunningProgram& program = stage.Start();
    RECT rect = {};
    EXPECT_TRUE(WaitUntil([&] {
        GetWindowRect(program.Form(), &rect);
        return rect.left == 100 && rect.top == 80 && rect.right == 1000 && rect.bottom == 680;
    }));
    EXPECT_FALSE(IsZoomed(program.Form()));
    EXPECT_EQ(TreeWidth(), 100);
    SetWindowPos(program.Form(), nullptr, 40, 30, 800, 500, SWP_NOZORDER);
    EXPECT_EQ(program.Close(), 0u);
    EXPECT_THAT(StoredPlace(), testing::ElementsAre(40u, 30u, 800u, 500u, 1u));
    EXPECT_EQ(stage.Number(L"zKR-FileSelector-Devider"), 100u);
}

TEST_F(PlacementTest, MaximisedWindowKeepsNoPlace) {
    StorePlace();
    RunningProgram& program = stage.Start();
    ShowWindow(program.Form(), SW_MAXIMIZE);
    ASSERT_TRUE(WaitUntil([&] { return IsZoomed(program.Form()) != FALSE; }));
    EXPECT_EQ(program.Close(), 0u);
    EXPECT_EQ(StoredPlace(), NoPlace());
}

TEST_F(PlacementTest, MinimisedWindowKeepsNoPlaceAndComesBackMaximised) {
    StorePlace();
    RunningProgram& program = stage.Start();
    // The first show of Wine's dialog loop undoes what comes before it.
    ASSERT_TRUE(WaitUntil([&] {
        PostMessageW(program.Form(), WM_SYSCOMMAND, SC_MINIMIZE, 0);
        return WaitUntil([&] { return IsIconic(program.Form()) != FALSE; }, 500) &&
               !WaitUntil([&] { return IsIconic(program.Form()) == FALSE; }, 500);
    }));
    EXPECT_EQ(program.Close(), 0u);
    EXPECT_EQ(StoredPlace(), NoPlace());
    EXPECT_TRUE(WaitUntil([form = stage.Start().Form()] { return IsZoomed(form) != FALSE; }));
}

TEST_F(PlacementTest, PlaceLeftOfTheDesktopIsKept) {
    StorePlace();
    stage.SetNumber(L"zKR-FileSelector-X", static_cast<DWORD>(-30));
    RunningProgram& program = stage.Start();
    RECT rect = {};
    GetWindowRect(program.Form(), &rect);
    EXPECT_EQ(rect.left, -30);
    EXPECT_EQ(rect.right, 870);
    EXPECT_EQ(program.Close(), 0u);
    EXPECT_EQ(stage.Number(L"zKR-FileSelector-X"), static_cast<DWORD>(-30));
}

TEST_F(PlacementTest, PanesFillTheWindowBelowTheButtons) {
    StorePlace();
    stage.SetNumber(L"zKR-FileSelector-Devider", 250);
    RunningProgram& program = stage.Start();
    for (const SIZE size : {SIZE{900, 600}, SIZE{700, 420}}) {
        SetWindowPos(program.Form(), nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER);
        Ask(program.Form(), WM_NULL);
        RECT client = {};
        GetClientRect(program.Form(), &client);
        // One and sixteen vertical units of the dialogs' font, of which eight are 13 pixels.
        EXPECT_EQ(InClient(program.Tree().Window()), (Box{0, 57, 250, client.bottom - 26}));
        EXPECT_EQ(InClient(program.List().Window()),
                  (Box{254, 57, client.right, client.bottom - 26}));
    }
}

TEST_F(PlacementTest, DividerLeavesTheWindowAndIsKeptThere) {
    StorePlace();
    stage.SetNumber(L"zKR-FileSelector-W", 500);
    stage.SetNumber(L"zKR-FileSelector-Devider", 300);
    RunningProgram& program = stage.Start();
    Drag({InForm(302, 200), InForm(600, 200), InForm(802, 200)});
    EXPECT_TRUE(WaitUntil([&] { return TreeWidth() == 800; })) << TreeWidth();
    EXPECT_EQ(program.Close(), 0u);
    EXPECT_EQ(stage.Number(L"zKR-FileSelector-Devider"), 800u);
    stage.Start();
    EXPECT_EQ(TreeWidth(), 800);
}

TEST_F(PlacementTest, EnterAndEscapeDoNotClose) {
    RunningProgram& program = stage.Start();
    SendMessageW(program.Form(), WM_COMMAND, IDOK, 0);
    SendMessageW(program.Form(), WM_COMMAND, IDCANCEL, 0);
    PressKey(VK_ESCAPE);
    EXPECT_FALSE(WaitUntil([&] { return !program.IsRunning(); }, 300));
}

TEST_F(PlacementTest, PlaceOfZerosIsAFirstStart) {
    for (const wchar_t* name : {L"zKR-FileSelector-X", L"zKR-FileSelector-Y", L"zKR-FileSelector-W",
                                L"zKR-FileSelector-H"}) {
        stage.SetNumber(name, 0);
    }
    stage.SetNumber(L"zKR-FileSelector-NotMax", 1);
    RunningProgram& program = stage.Start();
    const int fifthX = GetSystemMetrics(SM_CXSCREEN) / 5;
    const int fifthY = GetSystemMetrics(SM_CYSCREEN) / 5;
    RECT rect = {};
    GetWindowRect(program.Form(), &rect);
    EXPECT_EQ(rect.left, fifthX);
    EXPECT_EQ(rect.top, fifthY);
    EXPECT_EQ(rect.right, 4 * fifthX);
    EXPECT_EQ(rect.bottom, 4 * fifthY);
}

TEST_F(PlacementTest, ValuesOfTheWrongTypeCountAsMissing) {
    stage.SetText(L"zKR-FileSelector-X", L"100");
    stage.SetText(L"zKR-FileSelector-NotMax", L"1");
    stage.SetText(L"zKR-FileSelector-Devider", L"300");
    RunningProgram& program = stage.Start();
    EXPECT_TRUE(WaitUntil([&] { return IsZoomed(program.Form()) != FALSE; }));
    EXPECT_EQ(TreeWidth(), GetSystemMetrics(SM_CXSCREEN) / 3);
}

TEST_F(PlacementTest, DividerFollowsThePointerAndIsKept) {
    StorePlace();
    stage.SetNumber(L"zKR-FileSelector-Devider", 300);
    stage.Start();
    Drag({InForm(302, 200), InForm(350, 220), InForm(402, 200)});
    EXPECT_TRUE(WaitUntil([&] { return TreeWidth() == 400; })) << TreeWidth();
    EXPECT_EQ(stage.Number(L"zKR-FileSelector-Devider"), 300u);
    EXPECT_EQ(stage.Close(), 0u);
    EXPECT_EQ(stage.Number(L"zKR-FileSelector-Devider"), 400u);
    stage.Start();
    EXPECT_EQ(TreeWidth(), 400);
}

TEST_F(PlacementTest, DividerStopsAtItsLeastWidthAndComesBackAtOnce) {
    StorePlace();
    stage.SetNumber(L"zKR-FileSelector-Devider", 300);
    stage.Start();
    Drag({InForm(300, 200), InForm(150, 200), InForm(20, 200)});
    EXPECT_TRUE(WaitUntil([&] { return TreeWidth() == 100; })) << TreeWidth();
    // The pointer's way back counts from where it was, not from the divider.
    Drag({InForm(102, 200), InForm(22, 200), InForm(62, 200)});
    EXPECT_TRUE(WaitUntil([&] { return TreeWidth() == 140; })) << TreeWidth();
}

TEST_F(PlacementTest, OtherButtonsDoNotTakeTheDivider) {
    StorePlace();
    stage.SetNumber(L"zKR-FileSelector-Devider", 300);
    stage.Start();
    for (const PointerButton button : {PointerButton::Right, PointerButton::Middle}) {
        SettlePointer(InForm(302, 200));
        PressButton(button);
        SettlePointer(InForm(360, 200));
        Sleep(200);
        ReleaseButton(button);
        EXPECT_FALSE(WaitUntil([&] { return TreeWidth() != 300; }, 200));
    }
}

TEST_F(PlacementTest, DividerIsTakenByItsZoneAlone) {
    StorePlace();
    stage.SetNumber(L"zKR-FileSelector-Devider", 300);
    RunningProgram& program = stage.Start();
    RECT client = {};
    GetClientRect(program.Form(), &client);
    RECT tree = {};
    GetWindowRect(program.Tree().Window(), &tree);
    POINT below = {0, tree.bottom};
    ScreenToClient(program.Form(), &below);
    for (const POINT start : {POINT{302, 54}, POINT{302, below.y}}) {
        Drag({InForm(start.x, start.y), InForm(360, start.y)});
        EXPECT_FALSE(WaitUntil([&] { return TreeWidth() != 300; }, 200)) << start.y;
    }
    Drag({InForm(302, below.y - 1), InForm(322, below.y - 1)});
    EXPECT_TRUE(WaitUntil([&] { return TreeWidth() == 320; }));
}

}  // namespace
