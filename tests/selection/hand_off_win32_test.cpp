#include <thread>

#include "decoders/audio_type.h"
#include "foundation/handle.h"
#include "selection/disk_walk.h"
#include "selection/gather.h"
#include "tests/selection/hand_off_run.h"
#include "tests/support/import_stub.h"

namespace {

// A signal is noticed within 275 ms; the rest is for a busy machine.
constexpr long long noticedWithinMs = 1000;

// The cursor of the thread that owns the window.
HCURSOR CursorOf(HWND window) {
    const DWORD thread = GetWindowThreadProcessId(window, nullptr);
    AttachThreadInput(GetCurrentThreadId(), thread, TRUE);
    const HCURSOR cursor = GetCursor();
    AttachThreadInput(GetCurrentThreadId(), thread, FALSE);
    return cursor;
}

}  // namespace

TEST_F(HandOffRun, WritesTheListByteForByteAndInOrder) {
    ConverterStage stage("read\nsignal\ncheck-list");
    host.paths = {L"C:\\music\\one.flac", L"C:\\m\x00FCsik\\\x4E2D\x6587 \xD83D\xDE00.mp3",
                  L"C:\\music\\one.flac", L"C:\\" + std::wstring(300, L'x') + L".wav",
                  L"D:\\\"quoted\" name.ogg"};
    EXPECT_EQ(ConvertSelected(host), HandOffResult::Converted);
    ASSERT_TRUE(stage.List().has_value());
    EXPECT_EQ(*stage.List(), ListBytes(host.paths));
    EXPECT_EQ(stage.Reported("list-at-end"), "present");
    ExpectWindowAsBefore();
}

TEST_F(HandOffRun, AListOfOnePathIsTwoBytesAUnitAndFourMore) {
    ConverterStage stage("read");
    host.paths = {L"C:\\a.flac"};
    EXPECT_EQ(ConvertSelected(host), HandOffResult::Converted);
    EXPECT_EQ(stage.List().value_or("").size(), 2U * 9 + 4);
}

TEST_F(HandOffRun, StartsTheConverterBesideTheProgramWithListAndEvent) {
    const DWORD before = GetTickCount();
    ConverterStage stage("read\nsignal");
    EXPECT_EQ(ConvertSelected(host), HandOffResult::Converted);
    const std::wstring list = stage.Option(L"list_to_conv");
    const std::wstring event = stage.Option(L"signal_event_got_files");
    EXPECT_EQ(NarrowUtf8(stage.CommandLine()),
              NarrowUtf8(L"\"" + TestProgramFolder() + L"Wavewright.exe\" -list_to_conv=\"" + list +
                         L"\" -signal_event_got_files=\"" + event + L"\""));

    EXPECT_TRUE(list.starts_with(temp.Path(L"TMP").Chars())) << NarrowUtf8(list);
    EXPECT_TRUE(list.ends_with(L".tmp")) << NarrowUtf8(list);
    ASSERT_TRUE(event.starts_with(L"fszkr-")) << NarrowUtf8(event);
    const auto tick = static_cast<DWORD>(std::stoll(event.substr(6)));
    EXPECT_LE(tick - before, GetTickCount() - before);

    EXPECT_EQ(stage.Reported("event"), "unsignalled");
    EXPECT_EQ(stage.Reported("priority"), std::to_string(NORMAL_PRIORITY_CLASS));
    wchar_t current[1000] = {};
    GetCurrentDirectoryW(1000, current);
    EXPECT_EQ(stage.Reported("folder"), NarrowUtf8(current));
    EXPECT_EQ(LookAtEvent(event), EventState::Missing) << "the event was not closed";
}

namespace {

// Looks at what the platform is asked to start, and refuses it.
class StartRequest {
public:
    StartRequest() : stub_("CreateProcessW", Refuse) {
        flags = 0;
        isPlain = false;
    }

    static inline DWORD flags = 0;
    static inline bool isPlain = false;

private:
    static BOOL WINAPI Refuse(LPCWSTR program, LPWSTR, LPSECURITY_ATTRIBUTES process,
                              LPSECURITY_ATTRIBUTES thread, BOOL inherits, DWORD creationFlags,
                              LPVOID environment, LPCWSTR folder, LPSTARTUPINFOW startup,
                              LPPROCESS_INFORMATION) {
        flags = creationFlags;
        isPlain = program == nullptr && process == nullptr && thread == nullptr && !inherits &&
                  environment == nullptr && folder == nullptr && startup->cb == sizeof(*startup) &&
                  startup->dwFlags == 0 && startup->lpDesktop == nullptr &&
                  startup->lpTitle == nullptr;
        return FALSE;
    }

    ImportStub stub_;
};

}  // namespace

// Without the flag a converter would take over a lower priority.
TEST_F(HandOffRun, AsksForAProcessOfNormalPriorityAndForNothingElse) {
    const StartRequest request;
    EXPECT_EQ(ConvertSelected(host), HandOffResult::NotStarted);
    EXPECT_EQ(StartRequest::flags, 32u);
    EXPECT_TRUE(StartRequest::isPlain);
    ExpectWindowAsBefore();
}

TEST_F(HandOffRun, TheConverterInheritsNoHandle) {
    ConverterStage stage("read\nawait go-end");
    SECURITY_ATTRIBUTES inheritable{sizeof(inheritable), nullptr, TRUE};
    const wchar_t* const name = L"tonequarry-test-inheritable";
    clKernelHandle held(CreateEventW(&inheritable, TRUE, FALSE, name));
    std::thread observer([&] {
        EXPECT_TRUE(stage.WaitFor(L"started"));
        EXPECT_EQ(LookAtEvent(name), EventState::Unsignalled);
        held.Reset();
        // A handle of the converter's would keep it.
        EXPECT_EQ(LookAtEvent(name), EventState::Missing);
        stage.Give(L"go-end");
    });
    EXPECT_EQ(ConvertSelected(host), HandOffResult::Converted);
    observer.join();
}

TEST_F(HandOffRun, NoMessageIsTakenFromTheQueueUntilTheEnd) {
    ConverterStage stage("read\nsignal\nwait 600");
    ASSERT_TRUE(PostMessageW(owner.Get(), WM_APP, 0, 0));
    EXPECT_EQ(ConvertSelected(host), HandOffResult::Converted);
    MSG message{};
    EXPECT_TRUE(PeekMessageW(&message, owner.Get(), WM_APP, WM_APP, PM_REMOVE));
}

TEST_F(HandOffRun, StopsTheReaderThenShowsTheWaitCursorThenGathers) {
    ConverterStage stage("read");
    std::size_t filesAtGather = 99;
    bool startedAtGather = true;
    host.afterGather = [&] {
        filesAtGather = FilesIn(temp.Path()).size();
        startedAtGather = FileExists(stage.Record(L"started"));
    };
    EXPECT_EQ(ConvertSelected(host), HandOffResult::Converted);
    EXPECT_EQ(host.calls, (std::vector<std::string>{"stop", "gather"}));
    EXPECT_EQ(host.cursorAtStop, SystemCursor(IDC_ARROW));
    EXPECT_EQ(host.cursorAtGather, SystemCursor(IDC_WAIT));
    EXPECT_EQ(host.gatheredInto, 0);
    EXPECT_EQ(filesAtGather, 0U);
    EXPECT_FALSE(startedAtGather);
}

TEST_F(HandOffRun, HidesTheWindowFromTheSignalToTheEndAndShowsItAtItsPlace) {
    ConverterStage stage("read\nawait go-signal\nsignal\nawait go-end\ncheck-list\nexit 5");
    std::thread observer([&] {
        EXPECT_TRUE(stage.WaitFor(L"started"));
        // Longer than two passes of the wait: nothing may happen before the signal.
        Sleep(600);
        EXPECT_TRUE(owner.IsVisible());
        EXPECT_EQ(CursorOf(owner.Get()), SystemCursor(IDC_WAIT));

        stage.Give(L"go-signal");
        EXPECT_TRUE(stage.WaitFor(L"signalled"));
        EXPECT_TRUE(Poll([&] { return !owner.IsVisible(); }));
        const auto noticed = static_cast<long long>(GetTickCount64());
        EXPECT_LE(noticed - std::stoll("0" + stage.Reported("signal-tick")), noticedWithinMs);
        EXPECT_EQ(CursorOf(owner.Get()), SystemCursor(IDC_ARROW));

        // It stays hidden, and the list in place, for as long as the converter runs.
        for (int i = 0; i < 60; ++i) {
            EXPECT_FALSE(owner.IsVisible());
            Sleep(10);
        }
        EXPECT_TRUE(FileExists(stage.Option(L"list_to_conv")));
        // The look of the hand-off has not reset it.
        EXPECT_EQ(LookAtEvent(stage.Option(L"signal_event_got_files")), EventState::Signalled);
        stage.Give(L"go-end");
    });
    EXPECT_EQ(ConvertSelected(host), HandOffResult::Converted);
    observer.join();
    EXPECT_EQ(stage.Reported("list-at-end"), "present");
    EXPECT_FALSE(FileExists(stage.Option(L"list_to_conv")));
    ExpectWindowAsBefore();
}

TEST_F(HandOffRun, ASignalAtOnceIsNoticedInTheFirstPass) {
    ConverterStage stage("read\nsignal\nawait go-end");
    std::thread observer([&] {
        EXPECT_TRUE(stage.WaitFor(L"signalled"));
        EXPECT_TRUE(Poll([&] { return !owner.IsVisible(); }));
        const auto noticed = static_cast<long long>(GetTickCount64());
        EXPECT_LE(noticed - std::stoll("0" + stage.Reported("signal-tick")), noticedWithinMs);
        stage.Give(L"go-end");
    });
    EXPECT_EQ(ConvertSelected(host), HandOffResult::Converted);
    observer.join();
    ExpectWindowAsBefore();
}

TEST_F(HandOffRun, TheWindowStaysShownForAConverterThatNeverSignals) {
    ConverterStage stage("read\nawait go-end");
    std::thread observer([&] {
        EXPECT_TRUE(stage.WaitFor(L"started"));
        for (int i = 0; i < 80; ++i) {
            EXPECT_TRUE(owner.IsVisible());
            Sleep(10);
        }
        EXPECT_EQ(CursorOf(owner.Get()), SystemCursor(IDC_WAIT));
        stage.Give(L"go-end");
    });
    EXPECT_EQ(ConvertSelected(host), HandOffResult::Converted);
    observer.join();
    ExpectWindowAsBefore();
}

namespace {

// Counts how often a window of this thread is hidden and shown.
class ShowCounter {
public:
    explicit ShowCounter(HWND window) : window_(window) {
        hidden = shown = 0;
        former = reinterpret_cast<WNDPROC>(
            SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Count)));
    }
    ShowCounter(const ShowCounter&) = delete;
    ShowCounter& operator=(const ShowCounter&) = delete;
    ~ShowCounter() { SetWindowLongPtrW(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(former)); }

    static inline int hidden = 0;
    static inline int shown = 0;

private:
    static LRESULT CALLBACK Count(HWND window, UINT message, WPARAM w, LPARAM l) {
        if (message == WM_SHOWWINDOW) ++(w != 0 ? shown : hidden);
        return CallWindowProcW(former, window, message, w, l);
    }

    static inline WNDPROC former = nullptr;
    HWND window_;
};

}  // namespace

TEST_F(HandOffRun, AConverterThatDiesAtOnceNeverHidesTheWindow) {
    ConverterStage stage("read\nexit 3");
    const ShowCounter counter(owner.Get());
    EXPECT_EQ(ConvertSelected(host), HandOffResult::Converted);
    EXPECT_TRUE(stage.List().has_value());
    EXPECT_EQ(counter.hidden, 0);
    EXPECT_FALSE(FileExists(stage.Option(L"list_to_conv")));
    ExpectWindowAsBefore();
}

TEST_F(HandOffRun, TheWindowIsHiddenAndShownOnce) {
    ConverterStage stage("read\nsignal\nwait 900");
    const ShowCounter counter(owner.Get());
    EXPECT_EQ(ConvertSelected(host), HandOffResult::Converted);
    EXPECT_EQ(counter.hidden, 1);
    EXPECT_EQ(counter.shown, 1);
}

TEST_F(HandOffRun, WithoutAWindowTheConverterRunsAllTheSame) {
    ConverterStage stage("read\nsignal\nwait 400");
    RecordingHost console(nullptr);
    EXPECT_EQ(ConvertSelected(console), HandOffResult::Converted);
    EXPECT_EQ(stage.List(), ListBytes(console.paths));

    RecordingHost empty(nullptr);
    empty.paths.clear();
    EXPECT_EQ(ConvertSelected(empty), HandOffResult::NothingGathered);
}

TEST_F(HandOffRun, AConverterInAFolderWithBlanksStarts) {
    const ScratchFolder parent;
    const std::wstring program = parent.AddFolder(L"a folder with blanks").Chars();
    ConverterStage stage("read\nsignal", program + L"\\");
    const clString arguments = ConverterArguments(L"C:\\none.tmp", L"fszkr-none");
    EXPECT_TRUE(RunConverter(host, ConverterPath((program + L"\\").c_str()), arguments, nullptr));
    EXPECT_EQ(NarrowUtf8(stage.CommandLine()),
              NarrowUtf8(L"\"" + program +
                         L"\\Wavewright.exe\" -list_to_conv=\"C:\\none.tmp\""
                         L" -signal_event_got_files=\"fszkr-none\""));
    EXPECT_EQ(stage.Reported("list"), "missing");
}

TEST_F(HandOffRun, ACommandLineThatCannotBeStartedIsFalse) {
    EXPECT_FALSE(LaunchAndWait(host, L"\"C:\\no such folder\\x.exe\" -a", nullptr));
    EXPECT_FALSE(LaunchAndWait(host, L"", nullptr));
    EXPECT_TRUE(owner.IsVisible());
}

TEST_F(HandOffRun, LaunchingHidesTheWindowForAnEventThatIsSignalledAlready) {
    ConverterStage stage("wait 900");
    const clKernelHandle event(CreateEventW(nullptr, TRUE, TRUE, nullptr));
    EXPECT_TRUE(LaunchAndWait(host, stage.ConverterPath().c_str(), event.Get()));
    // Showing it again is not the wait's business.
    EXPECT_FALSE(owner.IsVisible());
}

TEST_F(HandOffRun, AFileTickedByHandIsWrittenThoughNoDecoderAcceptsIt) {
    ConverterStage stage("read\nsignal");
    host.paths.clear();
    SelectionLists lists;
    lists._FilesIncluded.Add(L"C:\\notes\\read me.txt");
    lists._FilesIncluded.Add(L"C:\\no such folder\\gone.flac");
    const clAudioTypes types;

    class GatheringHost : public RecordingHost {
    public:
        GatheringHost(HWND window, const SelectionLists& lists, const clAudioTypes& types)
            : RecordingHost(window), lists_(lists), types_(types) {}
        void Gather(clStringList& files) override {
            AudioTypeFilter filter(types_);
            DiskWalk walk;
            GatherFiles(lists_, filter, walk, files);
        }

    private:
        const SelectionLists& lists_;
        const clAudioTypes& types_;
    } gathering(owner.Get(), lists, types);

    EXPECT_EQ(ConvertSelected(gathering), HandOffResult::Converted);
    EXPECT_EQ(stage.List(),
              ListBytes({L"C:\\notes\\read me.txt", L"C:\\no such folder\\gone.flac"}));
}
