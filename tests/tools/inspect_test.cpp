#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/converter_side.h"
#include "tests/tools/inspect_stage.h"

namespace {

class Inspect : public testing::Test {
protected:
    void OfferTypes() { stage.AddDecoder(L"tones", "type=.tq|Tones\ntype=.other|Other tones"); }

    void ExpectGathered(const std::vector<std::wstring>& arguments,
                        const std::vector<std::wstring>& paths) {
        std::vector<std::wstring> all{L"gather"};
        all.insert(all.end(), arguments.begin(), arguments.end());
        const InspectOutcome outcome = stage.Run(all);
        EXPECT_EQ(outcome.errors, "");
        EXPECT_EQ(outcome.code, 0U);
        EXPECT_EQ(SortedLines(outcome.out), SortedLines(Lines(paths)));
    }

    InspectStage stage;
};

}  // namespace

TEST_F(Inspect, RefusesACommandLineThatMakesNoSense) {
    const struct {
        std::vector<std::wstring> arguments;
        const char* message;
    } cases[] = {
        {{}, "inspect: a command is missing\n"},
        {{L"list"}, "inspect: unknown command 'list'\n"},
        {{L"gather"}, "inspect: no folder is given\n"},
        {{L"gather", L"--deep", L"."}, "inspect: unknown option '--deep'\n"},
        {{L"convert", L".", L"--exclude-type"},
         "inspect: the option '--exclude-type' needs a value\n"},
        {{L"decoders", L"m\x00FC"}, "inspect: 'decoders' takes no argument 'm\xC3\xBC'\n"},
    };
    for (const auto& c : cases) {
        const InspectOutcome outcome = stage.Run(c.arguments);
        EXPECT_EQ(outcome.code, 2U) << c.message;
        EXPECT_EQ(outcome.out, "");
        EXPECT_TRUE(outcome.errors.starts_with(std::string(c.message) + "usage: inspect decoders"))
            << outcome.errors;
    }
}

TEST_F(Inspect, HelpsOnTheOutputStream) {
    const InspectOutcome outcome = stage.Run({L"--help"});
    EXPECT_EQ(outcome.code, 0U);
    EXPECT_EQ(outcome.errors, "");
    EXPECT_TRUE(outcome.out.starts_with("usage: inspect decoders\n")) << outcome.out;
    EXPECT_NE(outcome.out.find("--exclude-folder FOLDER"), std::string::npos);
    EXPECT_NE(outcome.out.find("Exit codes:"), std::string::npos);
}

TEST_F(Inspect, NamesEachFolderThatIsNotThere) {
    OfferTypes();
    stage.AddFile(L"a.tq");
    const InspectOutcome outcome = stage.Run({L"gather", L".", L"gone", L"--folder-only", L"a.tq",
                                              L"--exclude-folder", L"C:\\no such folder\\"});
    EXPECT_EQ(outcome.code, 2U);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.errors,
              "inspect: there is no folder gone\n"
              "inspect: there is no folder a.tq\n"
              "inspect: there is no folder C:\\no such folder\\\n");
}

TEST_F(Inspect, GathersAFolderWithAllBeneathIt) {
    OfferTypes();
    const auto a = stage.AddFile(L"a.tq");
    const auto b = stage.AddFile(L"sub\\B.TQ");
    const auto c = stage.AddFile(L"sub\\deep\\c.other");
    stage.AddFile(L"sub\\notes.txt");
    stage.AddFile(L"none");
    ExpectGathered({stage.Music()}, {a, b, c});
    ExpectGathered({stage.Music() + L"sub"}, {b, c});
}

TEST_F(Inspect, LeavesOutSubfoldersFilesAndTypes) {
    OfferTypes();
    const auto a = stage.AddFile(L"a.tq");
    const auto b = stage.AddFile(L"sub\\b.tq");
    const auto c = stage.AddFile(L"sub\\deep\\c.tq");
    const auto d = stage.AddFile(L"sub\\deep\\d.other");
    const auto e = stage.AddFile(L"other\\e.tq");
    const std::wstring music = stage.Music();
    ExpectGathered({music, L"--exclude-folder", music + L"sub"}, {a, e});
    ExpectGathered({music, L"--exclude-folder", music + L"SUB\\deep\\"}, {a, b, e});
    ExpectGathered({music, L"--exclude-file", c}, {a, b, d, e});
    ExpectGathered({music, L"--exclude-type", L".OTHER"}, {a, b, c, e});
    ExpectGathered({music, L"--exclude-type", L".tq"}, {d});
    ExpectGathered(
        {music, L"--exclude-folder", music + L"other", L"--exclude-folder", music + L"sub\\deep"},
        {a, b});
}

TEST_F(Inspect, GathersFoldersThenSingleFoldersThenFilesOfAnyKind) {
    OfferTypes();
    const auto a = stage.AddFile(L"one\\a.tq");
    const auto b = stage.AddFile(L"one\\only\\b.tq");
    stage.AddFile(L"one\\only\\deeper\\c.tq");
    const auto notes = stage.AddFile(L"notes.txt");
    const std::wstring gone = stage.Music() + L"gone.tq";
    const std::wstring only = stage.Music() + L"one\\only";
    const InspectOutcome outcome =
        stage.Run({L"gather", L"--include-file", notes, L"--include-file", gone, L"--folder-only",
                   only, stage.Music() + L"one"});
    EXPECT_EQ(outcome.code, 0U);
    EXPECT_EQ(outcome.out, Lines({a, b, notes, gone}));
}

TEST_F(Inspect, GathersAFolderThatIsNamedTwiceOnce) {
    OfferTypes();
    const auto a = stage.AddFile(L"one\\a.tq");
    ExpectGathered({stage.Music(), L".", stage.Music() + L"ONE\\..\\"}, {a});
    // Folder and file are different entries: the file stands twice.
    ExpectGathered({stage.Music(), L"--include-file", a}, {a, a});
}

TEST_F(Inspect, MakesRelativePathsAbsolute) {
    OfferTypes();
    const auto a = stage.AddFile(L"one\\a.tq");
    const auto b = stage.AddFile(L"two\\b.tq");
    ExpectGathered({L"."}, {a, b});
    ExpectGathered({L"one"}, {a});
    ExpectGathered({L"one\\..\\two\\"}, {b});
    ExpectGathered({L".", L"--exclude-file", L"one\\a.tq"}, {b});
    ExpectGathered({L".", L"--exclude-folder", L"two"}, {a});
    ExpectGathered({L"--include-file", L"x.tq"}, {stage.Music() + L"x.tq"});
}

TEST_F(Inspect, PrintsNamesOfAnyScriptAndLength) {
    OfferTypes();
    const auto a = stage.AddFile(L"m\x00FCsik\\\x4E2D\x6587 \xD83D\xDE00.tq");
    std::wstring deep = L"deep";
    while (stage.Music().size() + deep.size() < 320)
        deep += L"\\a folder of some length";
    const auto b = stage.AddFile(deep + L"\\b.tq");
    ASSERT_GT(b.size(), 300U);
    ExpectGathered({stage.Music()}, {a, b});
    ExpectGathered({stage.Music() + L"m\x00FCsik"}, {a});
    ExpectGathered({stage.Music() + deep}, {b});
    ExpectGathered({stage.Music(), L"--exclude-folder", stage.Music() + deep}, {a});
    ExpectGathered({L"--folder-only", stage.Music() + deep}, {b});
}

TEST_F(Inspect, HonoursTheStoredFilter) {
    OfferTypes();
    const auto a = stage.AddFile(L"a.tq");
    stage.AddFile(L"b.other");
    stage.SetFilter(L".other;");
    ExpectGathered({stage.Music()}, {a});
}

TEST_F(Inspect, TellsOfATypeThatNoDecoderOffersAndOfAnEmptyList) {
    OfferTypes();
    const auto a = stage.AddFile(L"sub\\a.tq");
    InspectOutcome outcome = stage.Run({L"gather", L".", L"--exclude-type", L".none"});
    EXPECT_EQ(outcome.code, 0U);
    EXPECT_EQ(outcome.out, Lines({a}));
    EXPECT_EQ(outcome.errors, "inspect: note: no decoder offers the type .none\n");

    outcome = stage.Run({L"gather", L"--folder-only", L"."});
    EXPECT_EQ(outcome.code, 1U);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.errors, "inspect: no audio file was found\n");
}

TEST_F(Inspect, ShowsWhatTheDecodersOfferAndWhatIsRefusedAndRemembered) {
    const auto good =
        stage.AddDecoder(L"a good one",
                         "type=.tq|T\xC3\xB6ne\ntype=.IGNORE.x|Hidden\ntype=.other|Other\n"
                         "elements=Codec|Encoder");
    const auto bad = stage.AddDecoderFile(L"b rubbish.dll", "no library");
    const auto lacking = stage.AddDecoder(L"c lacking", "type=.no|No", L"without_DecodeBlock");
    const auto failing = stage.AddDecoder(L"d failing", "create=0\ntype=.no|No");
    const auto quiet = stage.AddDecoder(L"e quiet", "");
    stage.SetFilter(L".other;");
    stage.Remember(L".tq", good);
    const InspectOutcome outcome = stage.Run({L"decoders"});
    EXPECT_EQ(outcome.code, 0U);
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(outcome.out, NarrowUtf8(good +
                                      L"\n"
                                      L"  type      .tq  T\x00F6ne\n"
                                      L"  type      .other  Other  (left out by the filter)\n"
                                      L"  property  Codec, Encoder\n" +
                                      bad + L"\n  refused   it cannot be loaded\n" + lacking +
                                      L"\n  refused   it does not export DecodeBlock\n" + failing +
                                      L"\n  refused   it makes no instance\n" + quiet +
                                      L"\nremembered extensions\n  .tq  " + good + L"\n"));
}

TEST_F(Inspect, PrintsMoreThanItHoldsBack) {
    const std::string description(200, 'd');
    stage.AddDecoder(L"many", "series=.n|" + description + "|900");
    const InspectOutcome outcome = stage.Run({L"decoders"});
    std::string expected = NarrowUtf8(stage.ProgramFolder()) + "decoder\\many.dll\n";
    for (int i = 0; i < 900; ++i)
        expected += "  type      .n" + std::to_string(i) + "  " + description + "\n";
    EXPECT_EQ(outcome.out, expected + "remembered extensions\n  none\n");
}

TEST_F(Inspect, SaysThatNobodyTakesItsOutput) {
    OfferTypes();
    stage.AddFile(L"a.tq");
    const InspectOutcome outcome = stage.RunUnread({L"gather", L"."});
    EXPECT_EQ(outcome.code, 1U);
    EXPECT_EQ(outcome.errors, "inspect: the output could not be written\n");
}

TEST_F(Inspect, TellsThatThereIsNoDecoderAndLeavesTheRegistryAlone) {
    const InspectOutcome outcome = stage.Run({L"decoders"});
    EXPECT_EQ(outcome.code, 1U);
    EXPECT_EQ(outcome.out, NarrowUtf8(L"no library in " + stage.ProgramFolder() +
                                      L"decoder\nremembered extensions\n  none\n"));
    EXPECT_FALSE(stage.RemembersAnything());
}
