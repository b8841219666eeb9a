#include <thread>

#include "foundation/handle.h"
#include "tests/selection/hand_off_run.h"
#include "tests/support/message_box_driver.h"

TEST_F(HandOffRun, AMissingConverterIsMetInSilence) {
    ASSERT_FALSE(FileExists(TestProgramFolder() + L"Wavewright.exe"));
    const ULONGLONG begin = GetTickCount64();
    EXPECT_EQ(ConvertSelected(host), HandOffResult::NotStarted);
    EXPECT_LT(GetTickCount64() - begin, 5000U) << "something waited";
    ExpectWindowAsBefore();
}

TEST_F(HandOffRun, AConverterThatIsNoProgramIsMetInSilence) {
    ConverterStage stage("read");
    ASSERT_TRUE(WriteBytes(stage.ConverterPath(), "no program"));
    EXPECT_EQ(ConvertSelected(host), HandOffResult::NotStarted);
    EXPECT_FALSE(FileExists(stage.Record(L"started")));
    ExpectWindowAsBefore();
}

TEST_F(HandOffRun, AWindowHiddenBeforeIsShownWhateverComesOfIt) {
    ShowWindow(owner.Get(), SW_HIDE);
    EXPECT_EQ(ConvertSelected(host), HandOffResult::NotStarted);
    EXPECT_TRUE(owner.IsVisible());
}

namespace {

// Takes every name that an event could get within the next seconds.
class TakenNames {
public:
    using Maker = std::function<HANDLE(const wchar_t*)>;

    explicit TakenNames(const Maker& make) : first_(GetTickCount()) {
        for (DWORD i = 0; i < span; ++i) {
            taken_.emplace_back(make(HandOffEventName(first_ + i).Chars()));
        }
    }
    // Whether the names reach to this one; otherwise the machine was too slow.
    bool Holds(const std::wstring& eventName) const {
        const auto tick = static_cast<DWORD>(std::stoll(L"0" + eventName.substr(6)));
        return tick - first_ < span;
    }

private:
    static constexpr DWORD span = 10000;

    DWORD first_;
    std::vector<clKernelHandle> taken_;
};

}  // namespace

TEST_F(HandOffRun, AnEventOfTheSameNameIsJoined) {
    ConverterStage stage("read\nawait go-end");
    const TakenNames signalled(
        [](const wchar_t* name) { return CreateEventW(nullptr, TRUE, TRUE, name); });
    std::thread observer([&] {
        EXPECT_TRUE(stage.WaitFor(L"started"));
        // The converter never signals: the window hides for the older event.
        EXPECT_TRUE(Poll([&] { return !owner.IsVisible(); }));
        stage.Give(L"go-end");
    });
    EXPECT_EQ(ConvertSelected(host), HandOffResult::Converted);
    observer.join();
    EXPECT_TRUE(signalled.Holds(stage.Option(L"signal_event_got_files")));
    ExpectWindowAsBefore();
}

TEST_F(HandOffRun, WithoutAnEventTheConverterRunsAndTheWindowStays) {
    ConverterStage stage("read\nsignal\nawait go-end");
    const TakenNames mutexes(
        [](const wchar_t* name) { return CreateMutexW(nullptr, FALSE, name); });
    std::thread observer([&] {
        EXPECT_TRUE(stage.WaitFor(L"signalled"));
        for (int i = 0; i < 80; ++i) {
            EXPECT_TRUE(owner.IsVisible());
            Sleep(10);
        }
        stage.Give(L"go-end");
    });
    EXPECT_EQ(ConvertSelected(host), HandOffResult::Converted);
    observer.join();
    EXPECT_TRUE(mutexes.Holds(stage.Option(L"signal_event_got_files")));
    EXPECT_EQ(stage.Reported("event"), "missing");
    EXPECT_EQ(stage.List(), ListBytes(host.paths));
    ExpectWindowAsBefore();
}

TEST_F(HandOffRun, AnEmptyListIsToldInABoxOfTheWindowBeforeAnyFileIsMade) {
    ConverterStage stage("read");
    host.paths.clear();
    bool ownerEnabled = true;
    std::size_t files = 99;
    MessageBoxDriver driver(L"Tonequarry Batch Converter", {}, [&](std::size_t) {
        ownerEnabled = IsWindowEnabled(owner.Get()) != 0;
        files = FilesIn(temp.Path()).size();
    });
    EXPECT_EQ(ConvertSelected(host), HandOffResult::NothingGathered);
    const std::vector<SeenBox>& seen = driver.Seen();
    ASSERT_EQ(seen.size(), 1U);
    EXPECT_EQ(seen[0].text, "No audio files selected for conversion");
    EXPECT_EQ(seen[0].caption, "Tonequarry Batch Converter");
    EXPECT_EQ(seen[0].buttons.size(), 1U);
    EXPECT_TRUE(seen[0].hasHandIcon);
    EXPECT_TRUE(seen[0].hasOwner);
    EXPECT_FALSE(ownerEnabled) << "the box is not owned by the window";
    EXPECT_EQ(files, 0U);
    EXPECT_EQ(host.calls, (std::vector<std::string>{"stop", "gather"}));
    EXPECT_FALSE(FileExists(stage.Record(L"started")));
    ExpectWindowAsBefore();
}

namespace {

// The temporary folder is named, but a file stands in its place.
class HandOffWithoutTempFolder : public HandOffRun {
protected:
    HandOffWithoutTempFolder() { host.paths = {L"C:\\a.flac", L"C:\\b.flac"}; }

    void ExpectBox(const SeenBox& box, const char* text) {
        EXPECT_EQ(box.text, text + NarrowUtf8(stage.Option(L"list_to_conv")) + "'");
        EXPECT_EQ(box.caption, "File Write Error");
        EXPECT_EQ(box.buttons, (std::vector<int>{IDRETRY, IDCANCEL}));
        EXPECT_FALSE(box.hasOwner);
    }

    ConverterStage stage{"read\nsignal\nwait 600"};
    clString blocked = temp.AddFile(L"blocked");
    clEnvironmentValue missing{L"TMP", blocked.Chars() + std::wstring(L"\\")};
};

}  // namespace

TEST_F(HandOffWithoutTempFolder, EachRefusedWriteIsReportedAndTheConverterStartsAllTheSame) {
    MessageBoxDriver driver(L"File Write Error", {});
    EXPECT_EQ(ConvertSelected(host), HandOffResult::Converted);
    const std::vector<SeenBox>& seen = driver.Seen();
    // One for the file, then two for each path: its text and its line end.
    ASSERT_EQ(seen.size(), 5U);
    ExpectBox(seen[0], "Unable to open '");
    for (std::size_t i = 1; i < seen.size(); ++i)
        ExpectBox(seen[i], "Unable to write to '");
    EXPECT_TRUE(stage.Option(L"list_to_conv").starts_with(blocked.Chars()));
    EXPECT_EQ(stage.Reported("list"), "missing");
    EXPECT_EQ(stage.Reported("event"), "unsignalled");
    EXPECT_TRUE(owner.IsVisible());
}

TEST_F(HandOffWithoutTempFolder, RetryWritesTheListOnceThereIsAFolder) {
    MessageBoxDriver driver(L"File Write Error", {IDRETRY}, [&](std::size_t) {
        DeleteFileW(blocked.Chars());
        CreateDirectoryW(blocked.Chars(), nullptr);
    });
    EXPECT_EQ(ConvertSelected(host), HandOffResult::Converted);
    const std::vector<SeenBox>& seen = driver.Seen();
    ASSERT_EQ(seen.size(), 1U);
    ExpectBox(seen[0], "Unable to open '");
    EXPECT_EQ(stage.List(), ListBytes(host.paths));
    EXPECT_FALSE(FileExists(stage.Option(L"list_to_conv")));
    ExpectWindowAsBefore();
}
