#include "decoders/decoder_host.h"

#include <gmock/gmock.h>
#include <windows.h>

#include <memory>
#include <thread>

#include "decoders/tag_list.h"
#include "tests/support/decoder_folder.h"
#include "tests/support/text.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr const char* oneType = "type=.abc|Some files\n";

std::vector<std::string> MissingOf(const clTqDecoder& decoder) {
    clStringList names;
    decoder.MissingExports(names);
    std::vector<std::string> out;
    for (std::int64_t i = 0; i < names.Count(); ++i)
        out.push_back(Utf8(*names.At(i)));
    return out;
}

// What a decoder tells of one file, copied out of the record.
struct Opened {
    bool opened = false;
    std::int32_t bitRate = 0;
    std::int64_t lengthMs = 0;
    std::int64_t sourceBytes = 0;
    TagList tags;
    TagList properties;
    clWaveFormat wave;
};

std::unique_ptr<Opened> Open(clTqDecoder& decoder, const wchar_t* path) {
    auto out = std::make_unique<Opened>();
    DecoderOpenRecord record;
    out->opened = decoder.OpenFile(path, record);
    out->bitRate = record.bitRate;
    out->lengthMs = record.lengthMs;
    out->sourceBytes = record.sourceBytes;
    out->tags.Parse(record.tags, static_cast<std::int32_t>(record.tagsSize));
    out->properties.Parse(record.properties, static_cast<std::int32_t>(record.propertiesSize));
    TakeWaveFormat(record, out->wave);
    return out;
}

class DecoderHost : public testing::Test {
protected:
    clScriptedFolder folder;
    DecoderCreateRecord create{};
};

}  // namespace

TEST_F(DecoderHost, AFreshObjectIsUnbound) {
    clTqDecoder decoder;
    EXPECT_FALSE(decoder.HoldsLibrary());
    EXPECT_FALSE(decoder.HasInstance());
    EXPECT_EQ(Utf8(decoder.BoundExtension()), "");
    EXPECT_EQ(Utf8(decoder.Path()), "");
    EXPECT_FALSE(decoder.Load(nullptr));
    EXPECT_FALSE(decoder.NewInstance(&create));
    EXPECT_THAT(MissingOf(decoder), ElementsAre("Create", "Destroy", "Get", "Set", "Open", "Close",
                                                "DecodeBlock", "SetPosition", "DeleteATag"));
    DecoderGetRecord get;
    EXPECT_FALSE(decoder.GetElement(L"Decodes", 0, get));
    DecoderOpenRecord open;
    EXPECT_FALSE(decoder.OpenFile(L"C:\\a.abc", open));
}

TEST_F(DecoderHost, BindsToALibraryWithAllNineExports) {
    const clString library = folder.Add("whole", oneType);
    clTqDecoder decoder;
    ASSERT_TRUE(decoder.LoadAs(library, L".abc"));
    EXPECT_TRUE(decoder.HoldsLibrary());
    EXPECT_FALSE(decoder.HasInstance());
    EXPECT_EQ(Utf8(decoder.BoundExtension()), ".abc");
    EXPECT_EQ(Utf8(decoder.Path()), Utf8(library));
    EXPECT_THAT(MissingOf(decoder), IsEmpty());
    EXPECT_TRUE(decoder.NewInstance(&create));
    EXPECT_TRUE(decoder.HasInstance());
}

// Set to DeleteATag are never called, and each is missed all the same.
TEST_F(DecoderHost, RefusesALibraryThatLacksAnyOneExport) {
    for (const char* name : {"Create", "Destroy", "Get", "Set", "Open", "Close", "DecodeBlock",
                             "SetPosition", "DeleteATag"}) {
        const clString library = folder.Add("lacking", oneType, std::string("without_") + name);
        {
            clTqDecoder decoder;
            EXPECT_FALSE(decoder.LoadAs(library, L".abc")) << name;
            EXPECT_EQ(Utf8(decoder.Path()), "") << name;
            EXPECT_EQ(Utf8(decoder.BoundExtension()), "") << name;
            EXPECT_THAT(MissingOf(decoder), ElementsAre(name));
            // It stays held until the next Unload, and no call of it crashes.
            EXPECT_TRUE(decoder.HoldsLibrary()) << name;
            EXPECT_THAT(folder.Log("lacking"), ElementsAre("load")) << name;
            EXPECT_EQ(decoder.NewInstance(&create), std::string(name) != "Create") << name;
            DecoderGetRecord get;
            decoder.GetElement(L"Decodes", 0, get);
            Open(decoder, L"C:\\a.abc");
            decoder.Unload();
            EXPECT_FALSE(decoder.HoldsLibrary()) << name;
        }
        EXPECT_EQ(folder.Count("lacking", "unload"), 1) << name;
        folder.ClearLog("lacking");
    }
}

TEST_F(DecoderHost, RefusesWhatIsNoLibraryAndWhatIsNotThere) {
    clTqDecoder decoder;
    EXPECT_FALSE(decoder.LoadAs(folder.AddFile("damaged.dll", "MZ and nothing more"), L".abc"));
    EXPECT_FALSE(decoder.HoldsLibrary());
    EXPECT_EQ(Utf8(decoder.Path()), "");
    EXPECT_FALSE(decoder.LoadAs(folder.Path("missing.dll"), L".abc"));
    EXPECT_FALSE(decoder.HoldsLibrary());
    EXPECT_EQ(Utf8(decoder.BoundExtension()), "");
    // The object can be used for the next library.
    EXPECT_TRUE(decoder.LoadAs(folder.Add("whole", oneType), L".abc"));
}

TEST_F(DecoderHost, ASecondLoadAnswersTheOldFlagAndLoadsNothing) {
    const clString whole = folder.Add("whole", oneType);
    const clString lacking = folder.Add("lacking", oneType, "without_Set");
    clTqDecoder good;
    ASSERT_TRUE(good.Load(whole.Chars()));
    EXPECT_TRUE(good.Load(lacking.Chars()));
    EXPECT_TRUE(good.Load(nullptr));
    EXPECT_THAT(folder.Log("lacking"), IsEmpty());
    EXPECT_THAT(MissingOf(good), IsEmpty());
    clTqDecoder bad;
    ASSERT_FALSE(bad.Load(lacking.Chars()));
    EXPECT_FALSE(bad.Load(whole.Chars()));
    EXPECT_THAT(folder.Log("whole"), ElementsAre("load"));
}

TEST_F(DecoderHost, UnloadEndsTheInstanceBeforeItFreesTheLibrary) {
    clTqDecoder decoder;
    ASSERT_TRUE(decoder.LoadAs(folder.Add("whole", oneType), L".abc"));
    ASSERT_TRUE(decoder.NewInstance(&create));
    decoder.Unload();
    EXPECT_THAT(folder.Log("whole"), ElementsAre("load", "create 1", "destroy 1", "unload"));
    EXPECT_FALSE(decoder.HoldsLibrary());
    EXPECT_FALSE(decoder.HasInstance());
    EXPECT_EQ(Utf8(decoder.BoundExtension()), "");
    EXPECT_EQ(Utf8(decoder.Path()), "");
    EXPECT_EQ(MissingOf(decoder).size(), 9u);
    EXPECT_FALSE(decoder.NewInstance(&create));
    decoder.Unload();
    EXPECT_EQ(folder.Log("whole").size(), 4u);
}

TEST_F(DecoderHost, TheDestructorEndsTheInstanceAndFreesTheLibrary) {
    {
        clTqDecoder decoder;
        ASSERT_TRUE(decoder.LoadAs(folder.Add("whole", oneType), L".abc"));
        ASSERT_TRUE(decoder.NewInstance(&create));
    }
    EXPECT_THAT(folder.Log("whole"), ElementsAre("load", "create 1", "destroy 1", "unload"));
}

// Through the base, as the owner of a pointer would.
TEST_F(DecoderHost, TheBaseDestroysTheWholeObject) {
    auto decoder = std::make_unique<clTqDecoder>();
    ASSERT_TRUE(decoder->LoadAs(folder.Add("whole", oneType), L".abc"));
    ASSERT_TRUE(decoder->NewInstance(&create));
    std::unique_ptr<XDLL> base = std::move(decoder);
    base.reset();
    EXPECT_THAT(folder.Log("whole"), ElementsAre("load", "create 1", "destroy 1", "unload"));
}

namespace {

// A library of another kind, which is loaded and asked for nothing.
class clPlainLibrary : public XDLL {
public:
    [[nodiscard]] bool Load(const wchar_t* path) override {
        module = LoadLibraryW(path);
        loadSucceeded = module != nullptr;
        return loadSucceeded;
    }
};

}  // namespace

TEST_F(DecoderHost, TheBaseFreesTheLibraryByItself) {
    const clString path = folder.Add("whole", oneType);
    {
        clPlainLibrary library;
        ASSERT_TRUE(library.Load(path.Chars()));
    }
    EXPECT_THAT(folder.Log("whole"), ElementsAre("load loud", "unload"));
}

TEST_F(DecoderHost, LoadAsLeavesTheLibraryThatWasHeldBefore) {
    const clString first = folder.Add("first", oneType);
    const clString second = folder.Add("second", oneType);
    clTqDecoder decoder;
    ASSERT_TRUE(decoder.LoadAs(first, L".abc"));
    ASSERT_TRUE(decoder.NewInstance(&create));
    ASSERT_TRUE(decoder.LoadAs(second, L".def"));
    EXPECT_THAT(folder.Log("first"), ElementsAre("load", "create 1", "destroy 1", "unload"));
    EXPECT_EQ(Utf8(decoder.BoundExtension()), ".def");
    EXPECT_EQ(Utf8(decoder.Path()), Utf8(second));
    // Its own texts may be what it is given.
    ASSERT_TRUE(decoder.LoadAs(decoder.Path(), decoder.BoundExtension()));
    EXPECT_EQ(Utf8(decoder.BoundExtension()), ".def");
    EXPECT_EQ(Utf8(decoder.Path()), Utf8(second));
    EXPECT_EQ(folder.Count("second", "load"), 2);
}

TEST_F(DecoderHost, NewInstanceEndsTheOldOneFirstAndHandsOverAZeroedRecord) {
    clTqDecoder decoder;
    ASSERT_TRUE(decoder.LoadAs(folder.Add("whole", oneType), L".abc"));
    ASSERT_TRUE(decoder.NewInstance(&create));
    ASSERT_TRUE(decoder.NewInstance(&create));
    EXPECT_THAT(folder.Log("whole"), ElementsAre("load", "create 1", "destroy 1", "create 2"));
}

TEST_F(DecoderHost, AnInstanceThatIsRefusedIsNone) {
    clTqDecoder decoder;
    ASSERT_TRUE(decoder.LoadAs(folder.Add("whole", oneType), L".abc"));
    ASSERT_TRUE(decoder.NewInstance(&create));
    folder.SetScript("whole", "create=0");
    EXPECT_FALSE(decoder.NewInstance(&create));
    EXPECT_FALSE(decoder.HasInstance());
    EXPECT_TRUE(decoder.HoldsLibrary());
    decoder.Unload();
    EXPECT_THAT(folder.Log("whole"),
                ElementsAre("load", "create 1", "destroy 1", "create refused", "unload"));
}

TEST_F(DecoderHost, EveryGetStartsWithAZeroedRecord) {
    clTqDecoder decoder;
    ASSERT_TRUE(decoder.LoadAs(folder.Add("whole", "type=.a|A\ntype=.b|B\nelements=X|Y"), L".a"));
    ASSERT_TRUE(decoder.NewInstance(&create));
    DecoderGetRecord record;
    memset(&record, 0xEE, sizeof(record));
    EXPECT_TRUE(decoder.GetElement(L"Decodes", 0, record));
    EXPECT_EQ(Utf8(record.text), ".a");
    EXPECT_EQ(Utf8(record.text2), "A");
    EXPECT_TRUE(decoder.GetElement(L"Decodes", 1, record));
    EXPECT_EQ(Utf8(record.text), ".b");
    EXPECT_FALSE(decoder.GetElement(L"Decodes", 2, record));
    EXPECT_EQ(+record.text, nullptr);
    EXPECT_TRUE(decoder.GetElement(L"Property Elements", 0, record));
    EXPECT_EQ(Utf8(record.text), "X\rY");
    EXPECT_THAT(folder.Log("whole"),
                ElementsAre("load", "create 1", "get Decodes 0", "get Decodes 1", "get Decodes 2",
                            "get Property Elements 0"));
}

TEST_F(DecoderHost, OpenGetsThePathAndFlags28AndFillsTheRecord) {
    clTqDecoder decoder;
    ASSERT_TRUE(decoder.LoadAs(folder.Add("whole",
                                          "wave=1,2,44100,1,1,16\nbit-rate=320000\n"
                                          "length-ms=5000000000\nsource-bytes=6000000000\n"
                                          "tag=Artist|One\\rTwo\ntag=Title|T\nproperty=Codec|C\n"),
                               L".abc"));
    ASSERT_TRUE(decoder.NewInstance(&create));
    const auto file = Open(decoder, L"C:\\Music\\song.abc");
    EXPECT_TRUE(file->opened);
    EXPECT_EQ(file->bitRate, 320000);
    EXPECT_EQ(file->lengthMs, 5000000000);
    EXPECT_EQ(file->sourceBytes, 6000000000);
    EXPECT_EQ(Utf8(file->tags.Get(L"Artist")), "One\rTwo");
    EXPECT_EQ(Utf8(file->tags.Get(L"Title")), "T");
    EXPECT_EQ(Utf8(file->properties.Get(L"Codec")), "C");
    EXPECT_EQ(file->wave.Format().nAvgBytesPerSec, 176400u);
    EXPECT_THAT(folder.Log("whole"),
                ElementsAre("load", "create 1", "open C:\\Music\\song.abc 28"));
}

// Each record is a new one, whatever the last file left in it.
TEST_F(DecoderHost, EveryOpenStartsWithAZeroedRecord) {
    clTqDecoder decoder;
    ASSERT_TRUE(decoder.LoadAs(folder.Add("whole", "bit-rate=1\ntag=a|b"), L".abc"));
    ASSERT_TRUE(decoder.NewInstance(&create));
    DecoderOpenRecord record;
    memset(&record, 0xEE, sizeof(record));
    EXPECT_TRUE(decoder.OpenFile(L"C:\\1.abc", record));
    EXPECT_TRUE(decoder.OpenFile(L"C:\\2.abc", record));
    EXPECT_THAT(folder.Log("whole"),
                ElementsAre("load", "create 1", "open C:\\1.abc 28", "open C:\\2.abc 28"));
}

TEST_F(DecoderHost, AFileThatDoesNotOpenIsToldApart) {
    clTqDecoder decoder;
    ASSERT_TRUE(decoder.LoadAs(folder.Add("whole", "[bad.abc]\nopen=0\n"), L".abc"));
    ASSERT_TRUE(decoder.NewInstance(&create));
    EXPECT_FALSE(Open(decoder, L"C:\\bad.abc")->opened);
    EXPECT_TRUE(Open(decoder, L"C:\\good.abc")->opened);
}

// Nothing but Create, Destroy, Get and Open is ever called.
TEST_F(DecoderHost, AnOpenedInstanceIsDestroyedWithoutClose) {
    clTqDecoder decoder;
    ASSERT_TRUE(decoder.LoadAs(folder.Add("whole", oneType), L".abc"));
    ASSERT_TRUE(decoder.NewInstance(&create));
    ASSERT_TRUE(Open(decoder, L"C:\\1.abc")->opened);
    ASSERT_TRUE(decoder.NewInstance(&create));
    ASSERT_TRUE(Open(decoder, L"C:\\2.abc")->opened);
    decoder.Unload();
    EXPECT_THAT(folder.Log("whole"),
                ElementsAre("load", "create 1", "open C:\\1.abc 28", "destroy 1", "create 2",
                            "open C:\\2.abc 28", "destroy 2", "unload"));
}

TEST_F(DecoderHost, ADamagedTagBlockGivesTheEntriesBeforeTheFault) {
    clTqDecoder decoder;
    // Two entries promised; the second claims 127 bytes.
    ASSERT_TRUE(decoder.LoadAs(folder.Add("whole",
                                          "tags-hex=020000000C000000610000006200000"
                                          "07F00000061000000\n"),
                               L".abc"));
    ASSERT_TRUE(decoder.NewInstance(&create));
    const auto file = Open(decoder, L"C:\\1.abc");
    ASSERT_EQ(file->tags.Count(), 1);
    EXPECT_EQ(Utf8(file->tags.Get(L"a")), "b");
}

TEST_F(DecoderHost, ADamagedLibraryRaisesNoSystemBoxAndTheErrorModeComesBack) {
    const DWORD before = GetThreadErrorMode();
    ASSERT_EQ(before & SEM_FAILCRITICALERRORS, 0u);
    clTqDecoder decoder;
    ASSERT_TRUE(decoder.LoadAs(folder.Add("whole", oneType), L".abc"));
    // It would be "load loud".
    EXPECT_THAT(folder.Log("whole"), ElementsAre("load"));
    EXPECT_EQ(GetThreadErrorMode(), before);
}

TEST_F(DecoderHost, TheSameLibraryServesTwoObjectsInTwoThreads) {
    const clString library = folder.Add("whole", "type=.abc|A\ntag=a|b");
    const auto run = [&library] {
        DecoderCreateRecord record{};
        for (int i = 0; i < 20; ++i) {
            clTqDecoder decoder;
            if (!decoder.LoadAs(library, L".abc") || !decoder.NewInstance(&record)) return false;
            if (Utf8(Open(decoder, L"C:\\1.abc")->tags.Get(L"a")) != "b") return false;
        }
        return true;
    };
    clTqDecoder held;
    ASSERT_TRUE(held.LoadAs(library, L".abc"));
    bool otherRan = false;
    std::thread other([&] { otherRan = run(); });
    EXPECT_TRUE(run());
    other.join();
    EXPECT_TRUE(otherRan);
    held.Unload();
    // Forty instances in all, numbered by the one library that both share.
    EXPECT_EQ(folder.Count("whole", "load"), 1);
    EXPECT_EQ(folder.Count("whole", "unload"), 1);
    EXPECT_EQ(folder.Count("whole", "create 40"), 1);
    EXPECT_EQ(folder.Count("whole", "destroy 40"), 1);
}
