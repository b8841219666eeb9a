// A converter that does what a script says, line by line. The environment variable
// TONEQUARRY_CONVERTER_SCRIPT names the script; records go into its folder.
//
//   read          copies the list to list.bin, writes the command line to
//                 command-line.bin and what it sees of itself to report.txt, then
//                 makes the file "started"
//   signal        notes in the report how the event stood, signals it, and makes
//                 the file "signalled"
//   wait MS       sleeps
//   await NAME    waits for a file of that name in the folder, 30 s at most
//   check-list    notes in the report whether the list file is still there
//   exit CODE     ends at once; without it the code is 0
//
// Exit code 98 means that there is no script or a line of it makes no sense, 99
// that a file was awaited in vain.
#include <windows.h>

#include <sstream>
#include <string>

#include "tests/support/converter_side.h"

namespace {

constexpr int badScript = 98;
constexpr int gaveUp = 99;
constexpr ULONGLONG longestAwaitMs = 30000;

class ScriptedConverter {
public:
    explicit ScriptedConverter(const std::wstring& script)
        : folder_(script.substr(0, script.rfind(L'\\') + 1)),
          list_(ConverterOption(GetCommandLineW(), L"list_to_conv")),
          event_(ConverterOption(GetCommandLineW(), L"signal_event_got_files")) {}

    // Runs all lines; returns the exit code.
    int Run(const std::string& script) {
        std::istringstream lines(script);
        std::string line;
        while (!ended_ && std::getline(lines, line)) {
            std::istringstream words(line);
            std::string command;
            std::string argument;
            words >> command >> argument;
            if (!command.empty()) Step(command, argument);
        }
        return code_;
    }

private:
    void Step(const std::string& command, const std::string& argument) {
        if (command == "read") {
            Read();
        } else if (command == "signal") {
            Signal();
        } else if (command == "wait") {
            Sleep(static_cast<DWORD>(std::stoul(argument)));
        } else if (command == "await") {
            Await(argument);
        } else if (command == "check-list") {
            Note("list-at-end", FileExists(list_) ? "present" : "missing");
        } else if (command == "exit") {
            End(std::stoi(argument));
        } else {
            End(badScript);
        }
    }

    void End(int code) {
        ended_ = true;
        code_ = code;
    }

    void Note(const std::string& name, const std::string& value) {
        report_ += name + "=" + value + "\n";
        WriteBytes(folder_ + L"report.txt", report_);
    }

    void Read() {
        const std::wstring line = GetCommandLineW();
        WriteBytes(folder_ + L"command-line.bin",
                   {reinterpret_cast<const char*>(line.data()), line.size() * sizeof(wchar_t)});
        const auto list = ReadBytes(list_);
        if (list) WriteBytes(folder_ + L"list.bin", *list);
        Note("list", list ? "read" : "missing");
        wchar_t current[1024] = L"";
        GetCurrentDirectoryW(1024, current);
        Note("folder", NarrowUtf8(current));
        Note("priority", std::to_string(GetPriorityClass(GetCurrentProcess())));
        WriteBytes(folder_ + L"started", "");
    }

    void Signal() {
        static constexpr const char* states[] = {"missing", "unsignalled", "signalled"};
        Note("event", states[static_cast<int>(LookAtEvent(event_))]);
        // Noted before, so that whoever sees the effect of the signal finds it.
        Note("signal-tick", std::to_string(GetTickCount64()));
        SignalEvent(event_);
        WriteBytes(folder_ + L"signalled", "");
    }

    void Await(const std::string& name) {
        const ULONGLONG begin = GetTickCount64();
        while (!FileExists(folder_ + WideUtf8(name))) {
            if (GetTickCount64() - begin > longestAwaitMs) {
                End(gaveUp);
                return;
            }
            Sleep(10);
        }
    }

    std::wstring folder_;  // with its backslash
    std::wstring list_;
    std::wstring event_;
    std::string report_;
    int code_ = 0;
    bool ended_ = false;
};

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, wchar_t*, int) {
    const std::wstring path = EnvironmentText(L"TONEQUARRY_CONVERTER_SCRIPT");
    const auto script = ReadBytes(path);
    if (!script) return badScript;
    return ScriptedConverter(path).Run(*script);
}
