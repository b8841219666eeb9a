#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "tests/support/converter_side.h"
#include "tests/tools/inspect_stage.h"

namespace {

class InspectConvert : public testing::Test {
protected:
    InspectConvert() { stage.AddDecoder(L"tones", "type=.tq|Tones\ntype=.other|Other tones"); }

    InspectStage stage;
    const ScratchFolder temp;
    const clEnvironmentValue tempFolder{L"TMP", temp.Path().Chars()};
    const std::wstring converter = stage.ProgramFolder() + L"Wavewright.exe";
};

}  // namespace

TEST_F(InspectConvert, HandsTheGatheredListToTheConverterBesideIt) {
    const ConverterStage scripted("read\nsignal\ncheck-list", stage.ProgramFolder());
    const auto a = stage.AddFile(L"one\\a m\x00FC.tq");
    stage.AddFile(L"one\\b.other");
    const auto notes = stage.AddFile(L"notes.txt");
    const InspectOutcome outcome = stage.Run(
        {L"convert", L"one", L"--exclude-type", L".other", L"--include-file", L"notes.txt"});
    EXPECT_EQ(outcome.code, 0U);
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(outcome.out, NarrowUtf8(L"2 files handed to " + converter + L"\n"));
    EXPECT_EQ(scripted.List(), ListBytes({a, notes}));
    const std::wstring list = scripted.Option(L"list_to_conv");
    const std::wstring event = scripted.Option(L"signal_event_got_files");
    EXPECT_EQ(NarrowUtf8(scripted.CommandLine()),
              NarrowUtf8(L"\"" + converter + L"\" -list_to_conv=\"" + list +
                         L"\" -signal_event_got_files=\"" + event + L"\""));
    EXPECT_EQ(scripted.Reported("list-at-end"), "present");
    EXPECT_EQ(scripted.Reported("event"), "unsignalled");
    EXPECT_TRUE(FilesIn(temp.Path()).empty());
}

TEST_F(InspectConvert, WaitsForAConverterThatGoesOnAndMindsNotHowItEnds) {
    const ConverterStage scripted("read\nsignal\nwait 600\ncheck-list\nexit 7",
                                  stage.ProgramFolder());
    const auto a = stage.AddFile(L"a.tq");
    const InspectOutcome outcome = stage.Run({L"convert", L"."});
    EXPECT_EQ(outcome.code, 0U);
    EXPECT_EQ(outcome.out, NarrowUtf8(L"1 file handed to " + converter + L"\n"));
    EXPECT_EQ(scripted.Reported("list-at-end"), "present");
}

TEST_F(InspectConvert, SaysThatTheConverterCouldNotBeStarted) {
    stage.AddFile(L"a.tq");
    const InspectOutcome outcome = stage.Run({L"convert", L"."});
    EXPECT_EQ(outcome.code, 1U);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.errors, NarrowUtf8(L"inspect: could not start " + converter + L"\n"));
    EXPECT_TRUE(FilesIn(temp.Path()).empty());
}

TEST_F(InspectConvert, SaysThatThereIsNothingToConvertAndStartsNothing) {
    const ConverterStage scripted("read", stage.ProgramFolder());
    stage.AddFile(L"notes.txt");
    const InspectOutcome outcome = stage.Run({L"convert", L"."});
    EXPECT_EQ(outcome.code, 1U);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.errors, "inspect: no audio file was found\n");
    EXPECT_EQ(scripted.CommandLine(), L"");
}

TEST_F(InspectConvert, TheRecordingConverterRecordsWhatGatherPrints) {
    std::filesystem::copy_file(TestProgramFolder() + L"Wavewright.exe", converter);
    const std::wstring record = temp.Path(L"received.txt").Chars();
    const clEnvironmentValue recordFile(L"TONEQUARRY_RECORD", record);
    for (const wchar_t* name :
         {L"a.tq", L"m\x00FCsik\\\x4E2D\x6587 \xD83D\xDE00.tq", L"z\\z.other"}) {
        stage.AddFile(name);
    }
    EXPECT_EQ(stage.Run({L"convert", L"."}).code, 0U);
    const std::string received = ReadBytes(record).value_or("nothing");
    EXPECT_EQ(received, stage.Run({L"gather", L"."}).out);
    EXPECT_EQ(SortedLines(received).size(), 3U);
}
