#include "tests/support/converter_stage.h"

#include <windows.h>

#include <filesystem>
#include <sstream>

#include "tests/support/converter_side.h"

namespace fs = std::filesystem;

namespace {

constexpr ULONGLONG longestWaitMs = 20000;

}  // namespace

std::wstring TestProgramFolder() {
    wchar_t path[1000] = {};
    GetModuleFileNameW(nullptr, path, 999);
    const std::wstring whole(path);
    return whole.substr(0, whole.rfind(L'\\') + 1);
}

std::vector<std::wstring> FilesIn(const clString& folder) {
    std::vector<std::wstring> files;
    for (const auto& entry : fs::directory_iterator(folder.Chars())) {
        if (entry.is_regular_file()) files.push_back(entry.path().wstring());
    }
    return files;
}

clEnvironmentValue::clEnvironmentValue(const wchar_t* name, const std::wstring& value)
    : name_(name) {
    if (GetEnvironmentVariableW(name, nullptr, 0) != 0) old_ = EnvironmentText(name);
    SetEnvironmentVariableW(name, value.c_str());
}

clEnvironmentValue::~clEnvironmentValue() {
    SetEnvironmentVariableW(name_.c_str(), old_ ? old_->c_str() : nullptr);
}

ConverterStage::ConverterStage(std::string_view script, const std::wstring& programFolder)
    : converter_(programFolder + L"Wavewright.exe"),
      script_(L"TONEQUARRY_CONVERTER_SCRIPT", Record(L"script.txt")) {
    WriteBytes(Record(L"script.txt"), script);
    fs::copy_file(TestProgramFolder() + L"scripted_converter.exe", converter_,
                  fs::copy_options::overwrite_existing);
}

// A converter that is still running cannot be removed, which is a fault: out of a
// destructor the exception ends the process, so that the test fails.
ConverterStage::~ConverterStage() {
    fs::remove(converter_);
}

std::wstring ConverterStage::Record(const std::wstring& name) const {
    return records_.Path().Chars() + name;
}

void ConverterStage::Give(const std::wstring& name) const {
    WriteBytes(Record(name), "");
}

bool ConverterStage::WaitFor(const std::wstring& name) const {
    const ULONGLONG begin = GetTickCount64();
    while (!FileExists(Record(name))) {
        if (GetTickCount64() - begin > longestWaitMs) return false;
        Sleep(5);
    }
    return true;
}

std::wstring ConverterStage::CommandLine() const {
    const std::string bytes = ReadBytes(Record(L"command-line.bin")).value_or("");
    return {reinterpret_cast<const wchar_t*>(bytes.data()), bytes.size() / sizeof(wchar_t)};
}

std::wstring ConverterStage::Option(const std::wstring& name) const {
    return ConverterOption(CommandLine(), name);
}

std::optional<std::string> ConverterStage::List() const {
    return ReadBytes(Record(L"list.bin"));
}

std::string ConverterStage::Reported(const std::string& name) const {
    std::istringstream lines(ReadBytes(Record(L"report.txt")).value_or(""));
    std::string line;
    while (std::getline(lines, line)) {
        if (line.starts_with(name + "=")) return line.substr(name.size() + 1);
    }
    return {};
}

std::string ListBytes(const std::vector<std::wstring>& paths) {
    std::string bytes;
    for (const std::wstring& path : paths) {
        for (const wchar_t ch : path + L"\r\n") {
            bytes += static_cast<char>(ch & 0xFF);
            bytes += static_cast<char>(ch >> 8);
        }
    }
    return bytes;
}
