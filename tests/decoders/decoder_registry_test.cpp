#include "decoders/decoder_registry.h"

#include <gmock/gmock.h>
#include <windows.h>

#include "foundation/settings.h"
#include "tests/support/decoder_folder.h"
#include "tests/support/text.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class DecoderRegistry : public testing::Test {
protected:
    void SetUp() override { InitSettings(); }

    // The search with an object of its own: the found library's path, or "".
    std::string Found(const wchar_t* file) {
        clTqDecoder decoder;
        if (!FindDecoderFor(file, decoder, &create)) return "";
        EXPECT_TRUE(decoder.HasInstance());
        return Utf8(decoder.Path());
    }

    clScriptedFolder folder;
    DecoderCreateRecord create{};
};

// "extension|description" of each type, "-" in front of an excluded one.
std::vector<std::string> Shown(const clAudioTypes& types) {
    std::vector<std::string> out;
    for (std::int64_t i = 0; i < types.Count(); ++i) {
        const clAudioType& type = types.At(i);
        out.push_back((type.excluded ? "-" : "") + Utf8(type.extension) + "|" +
                      Utf8(type.description));
    }
    return out;
}

std::vector<std::string> Shown(const clStringList& list) {
    std::vector<std::string> out;
    for (std::int64_t i = 0; i < list.Count(); ++i)
        out.push_back(Utf8(*list.At(i)));
    return out;
}

std::vector<std::string> LoadedTypes() {
    clAudioTypes types;
    LoadAudioTypes(types);
    return Shown(types);
}

// The order in which the file system delivers the libraries, asked of it alone.
std::vector<std::string> FolderOrder(const clScriptedFolder& folder) {
    std::vector<std::string> paths;
    WIN32_FIND_DATAW record;
    const HANDLE find = FindFirstFileW(folder.Path("*.dll").Chars(), &record);
    if (find == INVALID_HANDLE_VALUE) return paths;
    do {
        paths.push_back(Utf8(folder.Path(Utf8(record.cFileName))));
    } while (FindNextFileW(find, &record) != 0);
    FindClose(find);
    return paths;
}

}  // namespace

TEST_F(DecoderRegistry, TryBindsALibraryThatClaimsTheExtensionAndLeavesAnInstance) {
    const clString library = folder.Add("one", "type=.abc|A\ntype=.def|D\n");
    clTqDecoder decoder;
    ASSERT_TRUE(TryDecoderFile(library, L".def", decoder, &create));
    EXPECT_TRUE(decoder.HasInstance());
    EXPECT_EQ(Utf8(decoder.BoundExtension()), ".def");
    EXPECT_EQ(Utf8(decoder.Path()), Utf8(library));
    EXPECT_THAT(folder.Log("one"),
                ElementsAre("load", "create 1", "get Decodes 0", "get Decodes 1"));
}

TEST_F(DecoderRegistry, TryUnloadsALibraryThatDoesNotClaimTheExtension) {
    clTqDecoder decoder;
    EXPECT_FALSE(TryDecoderFile(folder.Add("one", "type=.abc|A\n"), L".x", decoder, &create));
    EXPECT_FALSE(decoder.HoldsLibrary());
    EXPECT_EQ(Utf8(decoder.BoundExtension()), "");
    EXPECT_THAT(folder.Log("one"), ElementsAre("load", "create 1", "get Decodes 0", "get Decodes 1",
                                               "destroy 1", "unload"));
}

TEST_F(DecoderRegistry, TryUnloadsWhatCannotBeUsed) {
    clTqDecoder decoder;
    EXPECT_FALSE(TryDecoderFile(folder.Add("lacking", "type=.abc|A\n", "without_DeleteATag"),
                                L".abc", decoder, &create));
    EXPECT_FALSE(decoder.HoldsLibrary());
    EXPECT_THAT(folder.Log("lacking"), ElementsAre("load", "unload"));
    EXPECT_FALSE(TryDecoderFile(folder.Add("refusing", "create=0\ntype=.abc|A\n"), L".abc", decoder,
                                &create));
    EXPECT_FALSE(decoder.HoldsLibrary());
    EXPECT_THAT(folder.Log("refusing"), ElementsAre("load", "create refused", "unload"));
    EXPECT_FALSE(TryDecoderFile(folder.Path("missing.dll"), L".abc", decoder, &create));
}

TEST_F(DecoderRegistry, TryEndsAtANullTextOrAtTheFirstZeroAnswer) {
    clTqDecoder decoder;
    EXPECT_FALSE(TryDecoderFile(folder.Add("null", "type=.a|A\ntype=(null)|B\ntype=.abc|C\n"),
                                L".abc", decoder, &create));
    EXPECT_EQ(folder.Count("null", "get Decodes 2"), 0);
    EXPECT_FALSE(TryDecoderFile(folder.Add("zero", "decodes-result=0\ntype=.abc|C\n"), L".abc",
                                decoder, &create));
    EXPECT_THAT(folder.Log("zero"),
                ElementsAre("load", "create 1", "get Decodes 0", "destroy 1", "unload"));
    // The description is not looked at here.
    EXPECT_TRUE(TryDecoderFile(folder.Add("bare", "type=.x|(null)\ntype=.abc|(null)\n"), L".abc",
                               decoder, &create));
}

TEST_F(DecoderRegistry, ExtensionsAreComparedWithoutTheCaseOfAsciiLettersAlone) {
    struct Case {
        const wchar_t* extension;
        bool claimed;
    };
    const Case cases[] = {
        {L".abc", true},     {L".ABC", true},      {L".aBc", true}, {L".\u00E4x", true},
        {L".\u00E4X", true}, {L".\u00C4x", false}, {L".ab", false}, {L".abcd", false},
    };
    const clString library = folder.Add("one", "type=.Abc|A\ntype=.\xC3\xA4x|B\n");
    for (const Case& c : cases) {
        clTqDecoder decoder;
        EXPECT_EQ(TryDecoderFile(library, c.extension, decoder, &create), c.claimed)
            << Utf8(c.extension);
    }
}

TEST_F(DecoderRegistry, FindWalksTheFolderAndCachesTheWinner) {
    folder.Add("a", "type=.xyz|X\n");
    const clString winner = folder.Add("b", "type=.abc|A\n");
    EXPECT_EQ(Found(L"C:\\Music\\song.abc"), Utf8(winner));
    EXPECT_EQ(Utf8(folder.Cached(L".abc")), Utf8(winner));
    EXPECT_THAT(folder.CachedNames(), ElementsAre(".abc"));
}

TEST_F(DecoderRegistry, TheCachedValueIsTextWithItsTerminator) {
    const clString winner = folder.Add("a", "type=.abc|A\n");
    ASSERT_NE(Found(L"C:\\song.abc"), "");
    EXPECT_EQ(folder.CachedType(L".abc"), REG_SZ);
    EXPECT_EQ(folder.CachedBytes(L".abc"), 2 * (winner.Length() + 1));
}

TEST_F(DecoderRegistry, ACachedExtensionCostsOneLoadAndNoWalk) {
    folder.Add("a", "type=.xyz|X\n");
    folder.Add("b", "type=.abc|A\n");
    ASSERT_NE(Found(L"C:\\song.abc"), "");
    folder.ClearLog("a");
    folder.ClearLog("b");
    ASSERT_NE(Found(L"C:\\other.abc"), "");
    EXPECT_THAT(folder.Log("a"), IsEmpty());
    EXPECT_THAT(folder.Log("b"),
                ElementsAre("load", "create 1", "get Decodes 0", "destroy 1", "unload"));
}

// The value is broken on purpose: whoever read it would walk or load anew.
TEST_F(DecoderRegistry, ABoundExtensionTouchesNeitherRegistryNorLibrary) {
    const clString library = folder.Add("a", "type=.abc|A\n");
    clTqDecoder decoder;
    ASSERT_TRUE(FindDecoderFor(L"C:\\1.abc", decoder, &create));
    folder.ClearLog("a");
    folder.SetCached(L".abc", L"C:\\gone.dll");
    ASSERT_TRUE(FindDecoderFor(L"C:\\2.ABC", decoder, &create));
    ASSERT_TRUE(FindDecoderFor(L"C:\\3.abc", decoder, &create));
    EXPECT_TRUE(decoder.HasInstance());
    EXPECT_THAT(folder.Log("a"), ElementsAre("destroy 1", "create 2", "destroy 2", "create 3"));
    EXPECT_EQ(Utf8(folder.Cached(L".abc")), "C:\\gone.dll");
    EXPECT_EQ(Utf8(decoder.Path()), Utf8(library));
}

TEST_F(DecoderRegistry, AFailureOfTheBoundLibraryIsFinal) {
    folder.Add("a", "type=.abc|A\n");
    clTqDecoder decoder;
    ASSERT_TRUE(FindDecoderFor(L"C:\\1.abc", decoder, &create));
    folder.SetScript("a", "create=0");
    folder.Add("b", "type=.abc|A\n");
    EXPECT_FALSE(FindDecoderFor(L"C:\\2.abc", decoder, &create));
    EXPECT_FALSE(decoder.HasInstance());
    // Left without an instance but loaded; no other library was tried.
    EXPECT_TRUE(decoder.HoldsLibrary());
    EXPECT_THAT(folder.Log("b"), IsEmpty());
}

TEST_F(DecoderRegistry, AnotherExtensionUnloadsTheBoundLibrary) {
    folder.Add("a", "type=.abc|A\n");
    const clString other = folder.Add("b", "type=.def|D\n");
    clTqDecoder decoder;
    ASSERT_TRUE(FindDecoderFor(L"C:\\1.abc", decoder, &create));
    folder.SetCached(L".def", other);
    ASSERT_TRUE(FindDecoderFor(L"C:\\1.def", decoder, &create));
    EXPECT_EQ(Utf8(decoder.BoundExtension()), ".def");
    EXPECT_EQ(Utf8(decoder.Path()), Utf8(other));
    EXPECT_THAT(folder.Log("a"),
                ElementsAre("load", "create 1", "get Decodes 0", "destroy 1", "unload"));
}

// The held library is no part of the folder: no other load ends its instance.
TEST_F(DecoderRegistry, TheSearchEndsTheOldInstanceFirstAndKeepsTheLibrary) {
    const clString library = folder.Path("held.bin");
    ASSERT_TRUE(MoveFileW(folder.Add("held", "type=.abc|A\n").Chars(), library.Chars()));
    clTqDecoder decoder;
    ASSERT_TRUE(TryDecoderFile(library, L".abc", decoder, &create));
    EXPECT_FALSE(FindDecoderFor(L"C:\\1.nothing", decoder, &create));
    EXPECT_FALSE(decoder.HasInstance());
    EXPECT_TRUE(decoder.HoldsLibrary());
    EXPECT_THAT(folder.Log("held"), ElementsAre("load", "create 1", "get Decodes 0", "destroy 1"));
}

TEST_F(DecoderRegistry, AnUnclaimedExtensionWritesNothingAndLeavesAUselessValue) {
    folder.Add("a", "type=.abc|A\n");
    EXPECT_EQ(Found(L"C:\\song.nothing"), "");
    EXPECT_THAT(folder.CachedNames(), IsEmpty());
    folder.SetCached(L".nothing", L"C:\\gone.dll");
    EXPECT_EQ(Found(L"C:\\song.nothing"), "");
    EXPECT_EQ(Utf8(folder.Cached(L".nothing")), "C:\\gone.dll");
}

TEST_F(DecoderRegistry, ACachedPathThatHasGoneIsReplacedAfterAWalk) {
    const clString library = folder.Add("b", "type=.abc|A\n");
    folder.SetCached(L".abc", L"C:\\gone\\old.dll");
    EXPECT_EQ(Found(L"C:\\song.abc"), Utf8(library));
    EXPECT_EQ(Utf8(folder.Cached(L".abc")), Utf8(library));
}

TEST_F(DecoderRegistry, ACachedLibraryThatNoLongerClaimsTheExtensionIsReplaced) {
    const clString old = folder.Add("a", "type=.xyz|X\n");
    const clString library = folder.Add("b", "type=.abc|A\n");
    folder.SetCached(L".abc", old);
    EXPECT_EQ(Found(L"C:\\song.abc"), Utf8(library));
    EXPECT_EQ(Utf8(folder.Cached(L".abc")), Utf8(library));
}

TEST_F(DecoderRegistry, ANewcomerDoesNotTakeOverWhatACachedDecoderClaims) {
    const clString cached = folder.Add("m", "type=.abc|A\n");
    ASSERT_EQ(Found(L"C:\\song.abc"), Utf8(cached));
    const clString before = folder.Add("a", "type=.abc|A\n");
    folder.Add("z", "type=.abc|A\n");
    EXPECT_EQ(Found(L"C:\\song.abc"), Utf8(cached));
    EXPECT_THAT(folder.Log("a"), IsEmpty());
    EXPECT_THAT(folder.Log("z"), IsEmpty());
    folder.Remove("m");
    EXPECT_EQ(Found(L"C:\\song.abc"), FolderOrder(folder).front());
}

TEST_F(DecoderRegistry, WithAnEmptyCacheTheFirstLibraryOfTheFileSystemWins) {
    folder.Add("m", "type=.abc|A\n");
    folder.Add("a", "type=.abc|A\n");
    folder.Add("z", "type=.abc|A\n");
    const std::vector<std::string> order = FolderOrder(folder);
    ASSERT_EQ(order.size(), 3u);
    EXPECT_EQ(Found(L"C:\\song.abc"), order.front());
    EXPECT_EQ(folder.Log("m").size() + folder.Log("a").size() + folder.Log("z").size(), 5u);
    // The other way round: the cache beats the order.
    folder.SetCached(L".abc", clString(order.back().c_str()));
    EXPECT_EQ(Found(L"C:\\song.abc"), order.back());
}

// Spelling is that of the first file; one value serves all spellings.
TEST_F(DecoderRegistry, TheCacheNamesAnExtensionAsItWasFirstMet) {
    const clString library = folder.Add("a", "type=.abc|A\n");
    ASSERT_EQ(Found(L"C:\\song.Abc"), Utf8(library));
    ASSERT_EQ(Found(L"C:\\song.abc"), Utf8(library));
    ASSERT_EQ(Found(L"C:\\song.ABC"), Utf8(library));
    EXPECT_THAT(folder.CachedNames(), ElementsAre(".Abc"));
}

// A value of the other text type is read as it stands; that it becomes plain text
// shows that it was written.
TEST_F(DecoderRegistry, APathFromTheCacheIsWrittenBackThoughItHasNotChanged) {
    const clString library = folder.Add("a", "type=.abc|A\n");
    folder.SetCached(L".abc", library, REG_EXPAND_SZ);
    EXPECT_EQ(Found(L"C:\\song.abc"), Utf8(library));
    EXPECT_EQ(Utf8(folder.Cached(L".abc")), Utf8(library));
    EXPECT_EQ(folder.CachedType(L".abc"), REG_SZ);
}

// Another spelling of the path works, so it stays.
TEST_F(DecoderRegistry, ACachedPathIsBelievedAsItIsSpelled) {
    clString spelled(folder.Add("a", "type=.abc|A\n"));
    spelled.Replace(L"a.dll", L"A.DLL");
    folder.SetCached(L".ABC", spelled);
    EXPECT_EQ(Found(L"C:\\song.abc"), Utf8(spelled));
    EXPECT_EQ(Utf8(folder.Cached(L".abc")), Utf8(spelled));
}

TEST_F(DecoderRegistry, AFileWithoutAnExtensionIsWalkedForEachTime) {
    folder.Add("a", "type=.abc|A\n");
    for (int round = 1; round <= 2; ++round) {
        EXPECT_EQ(Found(L"C:\\folder.abc\\song"), "");
        EXPECT_EQ(folder.Count("a", "load"), round);
    }
    EXPECT_THAT(folder.CachedNames(), IsEmpty());
    const clString dot = folder.Add("b", "type=.|Dot\n");
    EXPECT_EQ(Found(L"C:\\song"), Utf8(dot));
    EXPECT_EQ(Found(L"C:\\song."), Utf8(dot));
}

TEST_F(DecoderRegistry, LibrariesThatCannotBeUsedAreSkippedInTheSearch) {
    folder.AddFile("a.dll", "no library");
    folder.Add("b", "type=.abc|A\n", "without_SetPosition");
    folder.Add("c", "create=0\ntype=.abc|A\n");
    folder.AddSubfolder("d.dll");
    const clString library = folder.Add("e", "type=.abc|A\n");
    EXPECT_EQ(Found(L"C:\\song.abc"), Utf8(library));
    EXPECT_EQ(folder.Count("b", "unload"), 1);
    EXPECT_EQ(folder.Count("c", "unload"), 1);
}

TEST_F(DecoderRegistry, TheSearchFindsTheTypesBeyondTheFirstThousandAndTheIgnoredOnes) {
    const clString library = folder.Add("a", "series=.n|Many|1500\ntype=.x.IGNORE|X\n");
    EXPECT_EQ(Found(L"C:\\song.n1499"), Utf8(library));
    clTqDecoder decoder;
    EXPECT_TRUE(TryDecoderFile(library, L".x.ignore", decoder, &create));
}

TEST_F(DecoderRegistry, TheWalkLeavesFoldersAndOtherFilesOut) {
    folder.Add("b", "");
    folder.Add("a", "");
    folder.AddSubfolder("c.dll");
    folder.AddFile("d.txt", "");
    std::vector<std::string> walked;
    WalkDecoderFolder([&](const clString& library) {
        walked.push_back(Utf8(library));
        return true;
    });
    std::vector<std::string> expected = FolderOrder(folder);
    std::erase(expected, Utf8(folder.Path("c.dll")));
    EXPECT_EQ(walked.size(), 2u);
    EXPECT_EQ(walked, expected);
}

TEST_F(DecoderRegistry, TheWalkEndsWhereItsVisitorSays) {
    folder.Add("a", "");
    folder.Add("b", "");
    int visits = 0;
    WalkDecoderFolder([&](const clString&) { return ++visits < 1; });
    EXPECT_EQ(visits, 1);
}

TEST_F(DecoderRegistry, AudioTypesComeInTheOrderOfTheWalkWithDuplicates) {
    folder.Add("a", "type=.abc|First\ntype=.def|Second\n");
    folder.Add("b", "type=.abc|Third\n");
    const bool aFirst = FolderOrder(folder).front() == Utf8(folder.Path("a.dll"));
    const std::vector<std::string> a = {".abc|First", ".def|Second"};
    std::vector<std::string> expected = aFirst ? a : std::vector<std::string>{".abc|Third"};
    if (aFirst) expected.push_back(".abc|Third");
    if (!aFirst) expected.insert(expected.end(), a.begin(), a.end());
    EXPECT_EQ(LoadedTypes(), expected);
    EXPECT_THAT(folder.Log("b"), ElementsAre("load", "create 1", "get Decodes 0", "get Decodes 1",
                                             "destroy 1", "unload"));
    // The cache belongs to the search alone.
    EXPECT_THAT(folder.CachedNames(), IsEmpty());
}

TEST_F(DecoderRegistry, AnEmptyOrMissingFolderGivesNoTypes) {
    EXPECT_THAT(LoadedTypes(), IsEmpty());
    RemoveDirectoryW(folder.Path("").Chars());
    EXPECT_THAT(LoadedTypes(), IsEmpty());
}

TEST_F(DecoderRegistry, LibrariesThatCannotBeUsedGiveNoTypes) {
    folder.AddFile("a.dll", "no library");
    folder.Add("b", "type=.b|B\n", "without_Close");
    folder.Add("c", "create=0\ntype=.c|C\n");
    folder.Add("d", "type=.d|D\n");
    EXPECT_THAT(LoadedTypes(), ElementsAre(".d|D"));
    EXPECT_THAT(folder.Log("b"), ElementsAre("load", "unload"));
    EXPECT_THAT(folder.Log("c"), ElementsAre("load", "create refused", "unload"));
}

TEST_F(DecoderRegistry, TheListOfTypesEndsAtANullTextWhateverGetAnswers) {
    folder.Add("a", "decodes-result=0\ntype=.a|A\ntype=.b|B\n");
    EXPECT_THAT(LoadedTypes(), ElementsAre(".a|A", ".b|B"));
    folder.Add("a", "type=.a|A\ntype=(null)|B\ntype=.c|C\n");
    EXPECT_THAT(LoadedTypes(), ElementsAre(".a|A"));
    folder.Add("a", "type=.a|A\ntype=.b|(null)\ntype=.c|C\n");
    EXPECT_THAT(LoadedTypes(), ElementsAre(".a|A"));
}

TEST_F(DecoderRegistry, AnIgnoredElementGivesNoTypeButTheListGoesOn) {
    folder.Add("a", "type=.a|A\ntype=.b.IGNORE|B\ntype=.c.ignore|C\ntype=.d|D\n");
    EXPECT_THAT(LoadedTypes(), ElementsAre(".a|A", ".c.ignore|C", ".d|D"));
}

TEST_F(DecoderRegistry, TheListOfTypesEndsAtAThousandElements) {
    folder.Add("a", "series=.n|N|1500\n");
    std::vector<std::string> types = LoadedTypes();
    ASSERT_EQ(types.size(), 1000u);
    EXPECT_EQ(types.back(), ".n999|N");
    EXPECT_EQ(folder.Count("a", "get Decodes 999"), 1);
    EXPECT_EQ(folder.Count("a", "get Decodes 1000"), 0);
    // An ignored element counts.
    folder.SetScript("a", "type=.x.IGNORE|X\nseries=.n|N|1500\n");
    types = LoadedTypes();
    ASSERT_EQ(types.size(), 999u);
    EXPECT_EQ(types.back(), ".n998|N");
}

TEST_F(DecoderRegistry, TheBoundOfAThousandIsPerLibrary) {
    folder.Add("a", "series=.a|A|1001\n");
    folder.Add("b", "type=.b|B\n");
    EXPECT_EQ(LoadedTypes().size(), 1001u);
}

TEST_F(DecoderRegistry, TypesThatTheExclusionSettingNamesAreExcluded) {
    folder.Add("a", "type=.abc|A\ntype=.ABC|B\ntype=.bc|C\ntype=.def|D\n");
    EXPECT_THAT(LoadedTypes(), ElementsAre(".abc|A", ".ABC|B", ".bc|C", ".def|D"));
    folder.SetExclusion(L".x.abc;.def");
    EXPECT_THAT(LoadedTypes(), ElementsAre("-.abc|A", ".ABC|B", ".bc|C", ".def|D"));
}

TEST_F(DecoderRegistry, LoadForListsBindsUnderTheNameThatIsNoExtension) {
    clTqDecoder decoder;
    ASSERT_TRUE(LoadForLists(folder.Add("a", "type=.a|A\n"), decoder));
    EXPECT_EQ(Utf8(decoder.BoundExtension()), ".NOTUSING");
    EXPECT_THAT(folder.Log("a"), ElementsAre("load", "create 1"));
}

TEST_F(DecoderRegistry, PropertyNamesArePackedText) {
    struct Case {
        const char* script;
        std::vector<std::string> names;
    };
    const Case cases[] = {
        {"elements=Codec|Encoder", {"Codec", "Encoder"}},
        {"elements=A|[Empty]|B", {"A", "", "B"}},
        {"elements=A||B", {"A"}},
        {"elements=", {}},
        {"", {}},
    };
    for (const Case& c : cases) {
        clTqDecoder decoder;
        ASSERT_TRUE(LoadForLists(folder.Add("a", c.script), decoder));
        clStringList names;
        names.Add(L"old");
        ReadPropertyNames(decoder, names);
        EXPECT_EQ(Shown(names), c.names) << c.script;
    }
}

TEST_F(DecoderRegistry, TheDescriptionTellsWhyALibraryIsRefused) {
    folder.AddFile("a.dll", "no library");
    folder.Add("b", "", "without_Set");
    folder.Add("c", "create=0\n");
    folder.Add("d", "type=.d|D\ntype=.e.IGNORE|E\ntype=.f|F\nelements=Codec|Mode\n");
    folder.SetExclusion(L".f;");
    std::vector<std::string> shown;
    DescribeDecoderFolder([&](const DecoderDescription& library) {
        std::string line = Utf8(library.path).substr(Utf8(folder.Path("")).size());
        line += library.loaded ? " loaded" : " not loaded";
        for (const std::string& name : Shown(library.missingExports))
            line += " lacks " + name;
        line += library.created ? " created" : " not created";
        for (const std::string& type : Shown(library.types))
            line += " " + type;
        for (const std::string& name : Shown(library.propertyNames))
            line += " " + name;
        shown.push_back(line);
        // Unloaded by now.
        EXPECT_EQ(folder.Count("d", "unload"), folder.Count("d", "load"));
    });
    EXPECT_THAT(shown, testing::UnorderedElementsAre("a.dll not loaded not created",
                                                     "b.dll loaded lacks Set not created",
                                                     "c.dll loaded not created",
                                                     "d.dll loaded created .d|D -.f|F Codec Mode"));
}
