// From the start of a process to the first painting of its window: the program's,
// against a dialog of the same template whose procedure does nothing.
//
// It starts itself anew for each, with what to be in the environment: an argument
// would be the program's start folder. Both processes are the same file with the
// same libraries, and each tells of its painting by an event.
#include <windows.h>
// The platform's other headers need windows.h before them.
#include <commctrl.h>

#include <cstdio>
#include <cwchar>

#include "bench/measure.h"
#include "bench/ui_measure.h"
#include "mainwindow/main_form.h"
#include "resources/ids.h"

namespace {

constexpr int rounds = 5;
constexpr DWORD patienceMs = 10000;
const wchar_t* const modeName = L"START_BENCH_MODE";
const wchar_t* const bareMode = L"bare";
const wchar_t* const programMode = L"program";
const wchar_t* const eventName = L"StartBenchPainted";

constexpr UINT behindPainting = WM_APP + 77;

bool painted = false;

void TellPainted(HWND window) {
    painted = true;
    const HANDLE event = OpenEventW(EVENT_MODIFY_STATE, FALSE, eventName);
    SetEvent(event);
    CloseHandle(event);
    PostMessageW(window, WM_CLOSE, 0, 0);
}

// The message that is posted when the dialog's first WM_PAINT is fetched is fetched
// next, when the window shows what it has.
LRESULT CALLBACK WatchPainting(int code, WPARAM wParam, LPARAM lParam) {
    const auto& message = *reinterpret_cast<const MSG*>(lParam);
    if (code == HC_ACTION && wParam == PM_REMOVE && !painted) {
        wchar_t name[16] = {};
        GetClassNameW(message.hwnd, name, 16);
        if (message.message == WM_PAINT && std::wcscmp(name, L"#32770") == 0)
            PostMessageW(message.hwnd, behindPainting, 0, 0);
        if (message.message == behindPainting) TellPainted(message.hwnd);
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

INT_PTR CALLBACK BareProcedure(HWND window, UINT message, WPARAM, LPARAM) {
    if (message == WM_INITDIALOG) ShowWindow(window, SW_SHOWMAXIMIZED);
    if (message == WM_CLOSE) EndDialog(window, 0);
    return message == WM_INITDIALOG || message == WM_CLOSE || message == WM_DRAWITEM;
}

int RunProcess(bool bare) {
    const ProgramGround ground;
    SetWindowsHookExW(WH_GETMESSAGE, &WatchPainting, nullptr, GetCurrentThreadId());
    if (bare) {
        DialogBoxParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDD_MAIN), nullptr,
                        &BareProcedure, 0);
    } else {
        const frmMain form;
    }
    return painted ? 0 : 1;
}

// Seconds to the first painting.
double SecondsToPaint(const wchar_t* mode, Judge& judge) {
    wchar_t program[1000] = {};
    GetModuleFileNameW(nullptr, program, 1000);
    wchar_t line[1100] = {};
    std::swprintf(line, 1100, L"\"%ls\"", program);
    SetEnvironmentVariableW(modeName, mode);
    const HANDLE event = CreateEventW(nullptr, TRUE, FALSE, eventName);
    STARTUPINFOW how = {};
    how.cb = sizeof how;
    PROCESS_INFORMATION process = {};
    const double begin = Now();
    CreateProcessW(nullptr, line, nullptr, nullptr, FALSE, 0, nullptr, nullptr, &how, &process);
    const bool isPainted = WaitForSingleObject(event, patienceMs) == WAIT_OBJECT_0;
    const double seconds = Now() - begin;
    judge.Require("painted", isPainted, 1);
    WaitForSingleObject(process.hProcess, patienceMs);
    DWORD exitCode = 1;
    GetExitCodeProcess(process.hProcess, &exitCode);
    judge.Require("exit code of the started process", static_cast<std::int64_t>(exitCode), 0);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    CloseHandle(event);
    return seconds;
}

}  // namespace

int wmain() {
    wchar_t mode[16] = {};
    if (GetEnvironmentVariableW(modeName, mode, 16) != 0)
        return RunProcess(std::wcscmp(mode, bareMode) == 0);
    Judge judge;
    const std::vector<double> seconds = MediansOf(
        rounds, [&] { return SecondsToPaint(bareMode, judge); },
        [&] { return SecondsToPaint(programMode, judge); });
    std::printf("first painting: bare %.3f s, program %.3f s\n", seconds[0], seconds[1]);
    std::printf("%-66s %6.3f\n", "start to first painting, over a bare dialog",
                seconds[1] / seconds[0]);
    return judge.Held() ? 0 : 1;
}
