#include <windows.h>

#include <vector>

#include "foundation/file.h"
#include "foundation/folders.h"
#include "foundation/handle.h"
#include "foundation/paths.h"
#include "foundation/program_title.h"
#include "selection/hand_off.h"

namespace {

constexpr DWORD waitForProcessMs = 250;
constexpr DWORD pauseMs = 25;

// Without a window there is nothing whose cursor could be seen, and a console
// program is not made to need a desktop.
void ShowCursorShape(HandOffHost& host, const wchar_t* shape) {
    if (host.Window() != nullptr) SetCursor(LoadCursorW(nullptr, shape));
}

void ShowForm(HandOffHost& host, int command) {
    HWND window = host.Window();
    if (window != nullptr) ShowWindow(window, command);
}

void ReportEmptyList(HandOffHost& host) {
    HWND window = host.Window();
    if (window == nullptr) return;
    MessageBoxW(window, L"No audio files selected for conversion", programTitle,
                MB_OK | MB_ICONHAND);
}

// What goes wrong is asked of the user by the file layer. Whatever is answered,
// the converter is started: the results have no further use here.
void WriteListFile(const clString& path, const clStringList& files) {
    clFile file;
    file.path.Assign(path);
    file.Open(GENERIC_WRITE, CREATE_ALWAYS, true);
    const ByteRun end = ListEntryEnd();
    for (std::int64_t i = 0; i < files.Count(); ++i) {
        const ByteRun text = ListEntryText(*files.At(i));
        static_cast<void>(file.Write(text.data, text.size));
        static_cast<void>(file.Write(end.data, end.size));
    }
    file.Close();
}

// Returns RunConverter's result.
bool HandOver(HandOffHost& host, const clStringList& files) {
    clTempFile list;
    list.Create();
    WriteListFile(list, files);

    const clString executable = ConverterPath(ModuleDirectory());
    const clString eventName = HandOffEventName(GetTickCount());
    const clString arguments = ConverterArguments(list, eventName);
    // If the name is taken the event is joined, and if it is taken by something
    // else there is none: either way the converter is started.
    clKernelHandle event(CreateEventW(nullptr, TRUE, FALSE, eventName.Chars()));
    const bool started = RunConverter(host, executable, arguments, event.Get());

    ShowForm(host, SW_SHOW);
    event.Reset();
    if (!list.IsEmpty()) {
        DeletePath(list);
        // From now on the name may be someone else's.
        list.Assign(L"");
    }
    return started;
}

bool IsSignalled(HANDLE event) {
    return event != nullptr && WaitForSingleObject(event, 0) == WAIT_OBJECT_0;
}

void WaitForEnd(HandOffHost& host, HANDLE process, void* const& event) {
    bool seen = false;
    while (WaitForSingleObject(process, waitForProcessMs) == WAIT_TIMEOUT) {
        if (!seen && IsSignalled(event)) {
            seen = true;
            ShowCursorShape(host, IDC_ARROW);
            ShowForm(host, SW_HIDE);
        }
        Sleep(pauseMs);
    }
}

}  // namespace

HandOffResult ConvertSelected(HandOffHost& host) {
    host.StopReader();
    ShowCursorShape(host, IDC_WAIT);
    clStringList files;
    host.Gather(files);
    HandOffResult result = HandOffResult::NothingGathered;
    if (files.Count() == 0) {
        ReportEmptyList(host);
    } else {
        result = HandOver(host, files) ? HandOffResult::Converted : HandOffResult::NotStarted;
    }
    ShowCursorShape(host, IDC_ARROW);
    return result;
}

bool RunConverter(HandOffHost& host, const clString& executable, const clString& arguments,
                  void* const& event) {
    return LaunchAndWait(host, ConverterCommandLine(executable, arguments), event);
}

bool LaunchAndWait(HandOffHost& host, const clString& commandLine, void* const& event) {
    // The platform may write into the command line that it is given.
    std::vector<wchar_t> line(commandLine.Chars(), commandLine.Chars() + commandLine.Length() + 1);
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION information{};
    if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, NORMAL_PRIORITY_CLASS,
                        nullptr, nullptr, &startup, &information)) {
        return false;
    }
    const clKernelHandle process(information.hProcess);
    const clKernelHandle thread(information.hThread);
    WaitForEnd(host, process.Get(), event);
    return true;
}
