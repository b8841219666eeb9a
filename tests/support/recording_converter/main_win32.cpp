// A converter that converts nothing: it writes the list that it was given, one
// path a line as UTF-8, to the file that TONEQUARRY_RECORD names, signals that it
// has the list, and ends. Exit code 0, or 1 if there is no list, 2 if it cannot
// be recorded, 3 if nobody waits for the signal.
#include <windows.h>

#include <string>

#include "tests/support/converter_side.h"

namespace {

// The list as UTF-8 with bare LFs behind its lines.
std::string Lines(const std::string& list) {
    std::wstring text(list.size() / sizeof(wchar_t), L'\0');
    for (std::size_t i = 0; i < text.size(); ++i) {
        text[i] = static_cast<wchar_t>(static_cast<unsigned char>(list[2 * i]) |
                                       static_cast<unsigned char>(list[2 * i + 1]) << 8);
    }
    std::erase(text, L'\r');
    return NarrowUtf8(text);
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, wchar_t*, int) {
    const std::wstring commandLine = GetCommandLineW();
    const auto list = ReadBytes(ConverterOption(commandLine, L"list_to_conv"));
    if (!list) return 1;
    if (!WriteBytes(EnvironmentText(L"TONEQUARRY_RECORD"), Lines(*list))) return 2;
    return SignalEvent(ConverterOption(commandLine, L"signal_event_got_files")) ? 0 : 3;
}
