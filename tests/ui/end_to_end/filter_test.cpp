// The filter over the main window.
#include <gmock/gmock.h>

#include "tests/support/converter_side.h"
#include "tests/ui/end_to_end/program_stage.h"
#include "tests/ui/keys.h"
#include "tests/ui/pointer.h"

namespace {

using testing::ElementsAre;
using Names = std::vector<std::wstring>;

constexpr const wchar_t* dialogTitle = L"Tonequarry: Filter Audio Types";
constexpr int excludeAllId = 1004;

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

}  // namespace
