// The button Convert: what the converter gets, and the window meanwhile.
#include <gmock/gmock.h>

#include "tests/support/converter_side.h"
#include "tests/ui/end_to_end/program_stage.h"
#include "tests/ui/pointer.h"

namespace {

class ConvertTest : public testing::Test {
protected:
    ConvertTest() {
        stage.AddDecoder(L"one", "type=.abc|Some sound\n");
        for (const wchar_t* name : {L"a.abc", L"b.abc", L"inner\\c.abc", L"inner\\notes.txt"})
            stage.AddFile(name, 100);
    }

    ProgramStage stage;
};

TEST_F(ConvertTest, ConverterGetsTheListAndTheWindowWaitsHidden) {
    const ConverterStage converter("read\nsignal\nawait go\ncheck-list\n", stage.ProgramFolder());
    RunningProgram& program = stage.Start(stage.Music());
    ClickSettled(program.List().TickPoint(1));
    ASSERT_TRUE(WaitUntil([&] { return !program.List().IsTicked(1); }));
    program.PressButton(BarButton::Convert);
    ASSERT_TRUE(converter.WaitFor(L"signalled"));
    EXPECT_TRUE(WaitUntil([&] { return IsWindowVisible(program.Form()) == FALSE; }));
    converter.Give(L"go");
    EXPECT_TRUE(WaitUntil([&] { return IsWindowVisible(program.Form()) != FALSE; }));
    EXPECT_EQ(converter.List(),
              ListBytes({stage.Music() + L"a.abc", stage.Music() + L"inner\\c.abc"}));
    EXPECT_EQ(converter.Reported("list-at-end"), "present");
    const std::wstring list = converter.Option(L"list_to_conv");
    EXPECT_TRUE(WaitUntil([&] { return !FileExists(list); }));

    // The selection stands as it was.
    const RemoteTree tree = program.Tree();
    EXPECT_EQ(tree.State(tree.Selected()), 4);
    EXPECT_THAT(program.List().Ticks(), testing::ElementsAre(true, false));
    EXPECT_EQ(program.Close(), 0u);
}

TEST_F(ConvertTest, NothingSelectedIsSaid) {
    const ConverterStage converter("read\nsignal\n", stage.ProgramFolder());
    RunningProgram& program = stage.Start();
    program.PressButton(BarButton::Convert);
    EXPECT_THAT(program.AnswerBox(IDOK),
                testing::HasSubstr(L"No audio files selected for conversion"));
    EXPECT_EQ(converter.CommandLine(), L"");
    EXPECT_EQ(program.Close(), 0u);
}

TEST_F(ConvertTest, MissingConverterLeavesTheWindowAsItWas) {
    RunningProgram& program = stage.Start(stage.Music());
    program.PressButton(BarButton::Convert);
    EXPECT_FALSE(WaitUntil([&] { return program.HasDialog(); }, 500));
    EXPECT_TRUE(IsWindowVisible(program.Form()));
    EXPECT_THAT(program.List().Ticks(), testing::ElementsAre(true, true));
    EXPECT_EQ(program.Close(), 0u);
}

}  // namespace
