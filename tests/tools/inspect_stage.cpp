#include "tests/tools/inspect_stage.h"

#include <windows.h>

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <stdexcept>
#include <thread>

#include "tests/support/converter_side.h"

namespace fs = std::filesystem;

namespace {

// Spelled out: a test that took them from the program could not see them change.
constexpr const wchar_t* settingsKey = L"Software\\Brindlefen\\Tonequarry";
constexpr const wchar_t* cacheKey = L"Software\\Brindlefen\\Tonequarry\\DecoderCache64";
constexpr const wchar_t* filterName = L"zKR-FileSelector-Exclusion";

void WriteText(const wchar_t* key, const std::wstring& name, const std::wstring& text) {
    const LSTATUS status =
        RegSetKeyValueW(HKEY_CURRENT_USER, key, name.c_str(), REG_SZ, text.c_str(),
                        static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
    if (status != ERROR_SUCCESS) throw std::runtime_error("cannot write the registry");
}

// As the C library takes a command line apart again.
std::wstring Quoted(const std::wstring& argument) {
    std::wstring quoted = L"\"";
    std::size_t backslashes = 0;
    for (const wchar_t ch : argument) {
        if (ch == L'"') quoted.append(backslashes + 1, L'\\');
        backslashes = ch == L'\\' ? backslashes + 1 : 0;
        quoted += ch;
    }
    quoted.append(backslashes, L'\\');
    return quoted + L"\"";
}

void MakeParents(const std::wstring& path) {
    for (auto at = path.find(L'\\', 3); at != std::wstring::npos; at = path.find(L'\\', at + 1)) {
        CreateDirectoryW((L"\\\\?\\" + path.substr(0, at)).c_str(), nullptr);
    }
}

}  // namespace

// The reading end of a pipe and the end that a child inherits.
class InspectStage::Pipe {
public:
    Pipe() {
        SECURITY_ATTRIBUTES inheritable{sizeof(inheritable), nullptr, TRUE};
        if (!CreatePipe(&read_, &write_, &inheritable, 0)) throw std::runtime_error("no pipe");
        SetHandleInformation(read_, HANDLE_FLAG_INHERIT, 0);
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    ~Pipe() {
        CloseRead();
        CloseWrite();
    }

    HANDLE WriteEnd() const { return write_; }
    void CloseRead() {
        if (read_ != nullptr) CloseHandle(read_);
        read_ = nullptr;
    }
    void CloseWrite() {
        if (write_ != nullptr) CloseHandle(write_);
        write_ = nullptr;
    }
    void ReadAll(std::string& bytes) const {
        char block[4096];
        DWORD got = 0;
        while (ReadFile(read_, block, sizeof(block), &got, nullptr) && got > 0) {
            bytes.append(block, got);
        }
    }

private:
    HANDLE read_ = nullptr;
    HANDLE write_ = nullptr;
};

InspectStage::InspectStage()
    : program_(parent_.AddFolder(L"program with blanks").Chars() + std::wstring(L"\\")) {
    wchar_t text[1000] = {};
    DWORD size = sizeof(text);
    hadFilter_ = RegGetValueW(HKEY_CURRENT_USER, settingsKey, filterName, RRF_RT_REG_SZ, nullptr,
                              text, &size) == ERROR_SUCCESS;
    savedFilter_ = text;
    RegDeleteKeyValueW(HKEY_CURRENT_USER, settingsKey, filterName);
    RegDeleteTreeW(HKEY_CURRENT_USER, cacheKey);
    fs::copy_file(TestProgramFolder() + L"inspect.exe", ProgramFolder() + L"inspect.exe");
}

InspectStage::~InspectStage() {
    RegDeleteTreeW(HKEY_CURRENT_USER, cacheKey);
    RegDeleteKeyValueW(HKEY_CURRENT_USER, settingsKey, filterName);
    if (hadFilter_) WriteText(settingsKey, filterName, savedFilter_);
}

std::wstring InspectStage::AddDecoder(const std::wstring& name, const std::string& script,
                                      const std::wstring& variant) const {
    const std::wstring library = DecoderFolder() + name + L".dll";
    AddDecoderFile(name + L".txt", script);
    fs::copy_file(TestProgramFolder() + variant + L".dll", library);
    return library;
}

std::wstring InspectStage::AddDecoderFile(const std::wstring& name,
                                          const std::string& bytes) const {
    const std::wstring path = DecoderFolder() + name;
    MakeParents(path);
    if (!WriteBytes(path, bytes)) throw std::runtime_error("cannot write a decoder's file");
    return path;
}

void InspectStage::SetFilter(const std::wstring& text) const {
    WriteText(settingsKey, filterName, text);
}

void InspectStage::Remember(const std::wstring& extension, const std::wstring& library) const {
    WriteText(cacheKey, extension, library);
}

bool InspectStage::RemembersAnything() const {
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, cacheKey, 0, KEY_READ, &key) != ERROR_SUCCESS) {
        return false;
    }
    RegCloseKey(key);
    return true;
}

std::wstring InspectStage::AddFile(const std::wstring& name) const {
    const std::wstring path = Music() + name;
    MakeParents(path);
    if (!WriteBytes(path, "")) throw std::runtime_error("cannot write " + NarrowUtf8(path));
    return path;
}

InspectOutcome InspectStage::Run(const std::vector<std::wstring>& arguments) const {
    Pipe out;
    return RunWith(out, arguments);
}

InspectOutcome InspectStage::RunUnread(const std::vector<std::wstring>& arguments) const {
    Pipe out;
    out.CloseRead();
    return RunWith(out, arguments);
}

InspectOutcome InspectStage::RunWith(Pipe& out, const std::vector<std::wstring>& arguments) const {
    std::wstring line = Quoted(ProgramFolder() + L"inspect.exe");
    for (const std::wstring& argument : arguments)
        line += L" " + Quoted(argument);
    Pipe errors;
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = out.WriteEnd();
    startup.hStdError = errors.WriteEnd();
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, Music().c_str(),
                        &startup, &process)) {
        throw std::runtime_error("inspect does not start");
    }
    out.CloseWrite();
    errors.CloseWrite();
    InspectOutcome outcome;
    std::thread reader([&] { errors.ReadAll(outcome.errors); });
    out.ReadAll(outcome.out);
    reader.join();
    WaitForSingleObject(process.hProcess, INFINITE);
    GetExitCodeProcess(process.hProcess, &outcome.code);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return outcome;
}

std::string Lines(const std::vector<std::wstring>& paths) {
    std::string text;
    for (const std::wstring& path : paths)
        text += NarrowUtf8(path) + "\n";
    return text;
}

std::vector<std::string> SortedLines(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    std::sort(lines.begin(), lines.end());
    return lines;
}
