#include "tools/inspect/output_win32.h"

namespace {

constexpr std::size_t bufferSize = 65536;

bool LooksLikeConsole(HANDLE handle) {
    DWORD mode = 0;
    return GetConsoleMode(handle, &mode) != 0;
}

}  // namespace

Output::Output(DWORD stream)
    : handle_(GetStdHandle(stream)), isConsole_(LooksLikeConsole(handle_)) {}

void Output::Print(const clString& text) {
    if (isConsole_) {
        WriteConsoleText(text);
        return;
    }
    const int length = text.Length();
    const int size =
        WideCharToMultiByte(CP_UTF8, 0, text.Chars(), length, nullptr, 0, nullptr, nullptr);
    const std::size_t begin = pending_.size();
    pending_.resize(begin + static_cast<std::size_t>(size));
    WideCharToMultiByte(CP_UTF8, 0, text.Chars(), length, pending_.data() + begin, size, nullptr,
                        nullptr);
    if (pending_.size() >= bufferSize) Flush();
}

void Output::PrintLine(const clString& text) {
    Print(text);
    Print(L"\n");
}

void Output::WriteConsoleText(const clString& text) {
    const DWORD length = static_cast<DWORD>(text.Length());
    DWORD written = 0;
    if (!WriteConsoleW(handle_, text.Chars(), length, &written, nullptr)) failed_ = true;
}

bool Output::Flush() {
    std::size_t done = 0;
    while (!failed_ && done < pending_.size()) {
        DWORD written = 0;
        const DWORD count = static_cast<DWORD>(pending_.size() - done);
        failed_ =
            !WriteFile(handle_, pending_.data() + done, count, &written, nullptr) || written == 0;
        done += written;
    }
    pending_.clear();
    return !failed_;
}
