#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <vector>

#include "tests/support/converter_side.h"
#include "tests/tools/inspect_stage.h"

namespace {

const wchar_t unitsKey[] = L"Software\\Brindlefen\\Tonequarry\\Ref";
const wchar_t profileKey[] = L"Control Panel\\International";

// A value of the user's, and the one from before at the end.
class UserValue {
public:
    UserValue(const wchar_t* key, const wchar_t* name, DWORD type, const void* data, DWORD bytes)
        : key_(key), name_(name), saved_(1000) {
        savedBytes_ = static_cast<DWORD>(saved_.size());
        if (RegGetValueW(HKEY_CURRENT_USER, key, name, RRF_RT_ANY, &savedType_, saved_.data(),
                         &savedBytes_) != ERROR_SUCCESS) {
            savedType_ = REG_NONE;
        }
        EXPECT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, key, name, type, data, bytes), ERROR_SUCCESS);
    }
    UserValue(const UserValue&) = delete;
    UserValue& operator=(const UserValue&) = delete;
    ~UserValue() {
        if (savedType_ == REG_NONE) {
            RegDeleteKeyValueW(HKEY_CURRENT_USER, key_, name_);
        } else {
            RegSetKeyValueW(HKEY_CURRENT_USER, key_, name_, savedType_, saved_.data(), savedBytes_);
        }
    }

private:
    const wchar_t* key_;
    const wchar_t* name_;
    std::vector<char> saved_;
    DWORD savedBytes_ = 0;
    DWORD savedType_ = REG_NONE;
};

class TextValue : public UserValue {
public:
    TextValue(const wchar_t* name, const std::wstring& text)
        : UserValue(profileKey, name, REG_SZ, text.c_str(),
                    static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t))) {}
};

// The lines of `text` that begin with one of the names.
std::string Picked(const std::string& text, const std::vector<std::string>& names) {
    std::string picked;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = text.find('\n', at) + 1;
        const std::string line = text.substr(at, end - at);
        for (const std::string& name : names) {
            if (line.starts_with("  " + name + " ")) picked += line;
        }
        at = end;
    }
    return picked;
}

const char song[] =
    "type=.tq|Tones\n"
    "[song.tq]\n"
    "wave=1,2,44100,176400,4,16\n"
    "bit-rate=1234567\nlength-ms=3665000\nsource-bytes=64651\n"
    "tag=Artist|One\\rTw\xC3\xB6\ntag=Album|Album\ntag=Track|3/12\ntag=Rating|8\n"
    "tag=artist|hidden\ntag=Mood|\n"
    "property=Audio Quality|Lossless\nproperty=Codec|Tones\n";

class InspectProperties : public testing::Test {
protected:
    InspectStage stage;
};

}  // namespace

TEST_F(InspectProperties, ShowsEveryColumnWithAText) {
    stage.AddDecoder(L"tones", song);
    const std::wstring file = stage.AddFile(L"song.tq");
    const TextValue thousand(L"sThousand", L",");
    const TextValue point(L"sDecimal", L".");
    const InspectOutcome outcome = stage.Run({L"properties", L"song.tq"});
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(outcome.code, 0U);
    const std::string columns =
        "  Artist              One; Tw\xC3\xB6\n"
        "  Album               Album\n"
        "  Rating              8\n"
        "  Audio Quality       Lossless\n"
        "  Codec               Tones\n"
        "  Length              1:01:05\n"
        "  Channels            2\n"
        "  Sample Rate         44.1 KHz\n"
        "  Sample Size         16 bit\n"
        "  Bit Rate            1,234 kbps\n"
        "  Compression         100%\n"
        "  Track               03/12\n"
        "  Album Artist - Album - Disc - Track One; Tw\xC3\xB6 - Album - 03/12\n"
        "  Album - Disc - Track Album - 03/12\n"
        "  Compilation         No\n"
        "  sorted by: size 0, length 3665000 ms, bit rate 1234567 bit/s, compression 100%, "
        "rating 8\n";
    ASSERT_TRUE(outcome.out.starts_with(NarrowUtf8(file) + "\n")) << outcome.out;
    EXPECT_TRUE(outcome.out.ends_with(columns)) << outcome.out;
    EXPECT_EQ(Picked(outcome.out, {"Name", "Folder", "Size", "Type"}),
              "  Name                song.tq\n"
              "  Folder              " +
                  NarrowUtf8(stage.Music()) +
                  "\n"
                  "  Size                0 KB\n"
                  "  Type                tq File\n");
}

TEST_F(InspectProperties, ShowsWhatTheFileSystemKnows) {
    stage.AddDecoder(L"tones", "type=.tq|Tones");
    const std::wstring file = stage.AddFile(L"long.tq");
    {
        const HANDLE handle =
            CreateFileW(file.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
        SetFilePointer(handle, 1500000, nullptr, FILE_BEGIN);
        SetEndOfFile(handle);
        const SYSTEMTIME moment = {2024, 3, 2, 5, 13, 7, 0, 0};  // in UTC
        FILETIME modified = {};
        SystemTimeToFileTime(&moment, &modified);
        SetFileTime(handle, nullptr, nullptr, &modified);
        CloseHandle(handle);
    }
    const TextValue thousand(L"sThousand", L".");
    const TextValue dates(L"sShortDate", L"yyyy-MM-dd");
    const InspectOutcome outcome = stage.Run({L"properties", file});
    EXPECT_EQ(Picked(outcome.out, {"Size", "Date Modified"}),
              "  Size                1.465 KB\n"
              "  Date Modified       2024-03-05 01:07\n");
    EXPECT_NE(Picked(outcome.out, {"Date Created"}), "");
    EXPECT_NE(Picked(outcome.out, {"Date Accessed"}), "");
}

TEST_F(InspectProperties, FollowsTheUnitOfSampleRatesAndTheRegion) {
    stage.AddDecoder(L"tones", song);
    stage.AddFile(L"song.tq");
    const TextValue thousand(L"sThousand", L".");
    const TextValue point(L"sDecimal", L",");
    const TextValue time(L"sTime", L"'");
    const DWORD numbers[] = {0, 1, 2};
    const struct {
        DWORD type;
        const void* data;
        DWORD bytes;
        const char* rate;
    } rows[] = {{REG_DWORD, &numbers[0], 4, "44,1 KHz"},
                {REG_DWORD, &numbers[1], 4, "44.100 Hz"},
                {REG_DWORD, &numbers[2], 4, "44.100 Hz"},
                {REG_SZ, L"1", 4, "44,1 KHz"},
                {REG_BINARY, &numbers[1], 4, "44,1 KHz"}};
    for (const auto& row : rows) {
        const UserValue units(unitsKey, L"UnitsFreq", row.type, row.data, row.bytes);
        const InspectOutcome outcome = stage.Run({L"properties", L"song.tq"});
        EXPECT_EQ(Picked(outcome.out, {"Length", "Sample Rate", "Bit Rate"}),
                  "  Length              1'01'05\n"
                  "  Sample Rate         " +
                      std::string(row.rate) + "\n  Bit Rate            1.234 kbps\n");
    }
}

TEST_F(InspectProperties, ATagThatIsNamedLikeAFactTakesItsPlace) {
    stage.AddDecoder(L"tones", "type=.tq|Tones\ntag=size|huge\ntag=Name|\n");
    stage.AddFile(L"a.tq");
    const InspectOutcome outcome = stage.Run({L"properties", L"a.tq"});
    EXPECT_EQ(Picked(outcome.out, {"Size", "size", "Name"}),
              "  Name                a.tq\n"
              "  Size                huge\n");
}

TEST_F(InspectProperties, ShowsEachFileOnceInTheOrderGiven) {
    stage.AddDecoder(L"tones", "type=.tq|Tones");
    const std::wstring a = stage.AddFile(L"a.tq");
    const std::wstring b = stage.AddFile(L"sub\\\x4E2D.tq");
    const std::wstring c = stage.AddFile(L"c.txt");
    const InspectOutcome outcome =
        stage.Run({L"properties", L"sub\\\x4E2D.tq", L"c.txt", L"a.tq", L".\\sub\\\x4E2D.tq"});
    std::string paths;
    for (std::size_t at = 0; at < outcome.out.size(); at = outcome.out.find('\n', at) + 1) {
        if (outcome.out[at] == ' ') continue;
        paths += outcome.out.substr(at, outcome.out.find('\n', at) - at + 1);
    }
    EXPECT_EQ(paths, Lines({b, c, a}));
    EXPECT_EQ(outcome.code, 1U);
    EXPECT_EQ(outcome.errors, "inspect: no decoder reads " + NarrowUtf8(c) + "\n");
}

// As rows of a list do, whose paths are compared with their case.
TEST_F(InspectProperties, NamesThatDifferInCaseStandForTwoFiles) {
    stage.AddDecoder(L"tones", "type=.tq|Tones\necho=Title");
    const std::string a = NarrowUtf8(stage.AddFile(L"a.tq"));
    const InspectOutcome outcome = stage.Run({L"properties", L"a.tq", L"A.TQ", L"a.tq"});
    EXPECT_EQ(outcome.code, 0U);
    EXPECT_EQ(outcome.errors, "");
    const std::string other = a.substr(0, a.size() - 4) + "A.TQ";
    EXPECT_EQ(Picked(outcome.out, {"Title"}),
              "  Title               " + a + "\n  Title               " + other + "\n");
}

TEST_F(InspectProperties, AFileThatCannotBeOpenedHasItsFactsAlone) {
    stage.AddDecoder(L"tones", "type=.tq|Tones\n[bad.tq]\nopen=0");
    const std::wstring file = stage.AddFile(L"bad.tq");
    const InspectOutcome outcome = stage.Run({L"properties", file});
    EXPECT_EQ(outcome.code, 1U);
    EXPECT_EQ(outcome.errors, "inspect: no decoder reads " + NarrowUtf8(file) + "\n");
    EXPECT_EQ(Picked(outcome.out, {"Name", "Length", "Channels", "Compilation"}),
              "  Name                bad.tq\n");
}

TEST_F(InspectProperties, NamesEachFileThatIsNotThere) {
    stage.AddDecoder(L"tones", "type=.tq|Tones");
    stage.AddFile(L"a.tq");
    stage.AddFile(L"sub\\b.tq");
    const InspectOutcome outcome = stage.Run({L"properties", L"a.tq", L"gone.tq", L"sub"});
    EXPECT_EQ(outcome.code, 2U);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.errors,
              "inspect: there is no file gone.tq\n"
              "inspect: there is no file sub\n");
}
