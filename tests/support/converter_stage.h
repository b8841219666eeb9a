// A scripted converter in its place, and what it records.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/string.h"
#include "tests/support/scratch_folder.h"

// The folder of the test program, with its backslash.
std::wstring TestProgramFolder();

// Full paths of the files in a folder (with its backslash), sub-folders left out.
std::vector<std::wstring> FilesIn(const clString& folder);

// Sets an environment variable and puts the old value back.
class clEnvironmentValue {
public:
    clEnvironmentValue(const wchar_t* name, const std::wstring& value);
    clEnvironmentValue(const clEnvironmentValue&) = delete;
    clEnvironmentValue& operator=(const clEnvironmentValue&) = delete;
    ~clEnvironmentValue();

private:
    std::wstring name_;
    std::optional<std::wstring> old_;
};

// For the language of the script see scripted_converter/main_win32.cpp.
class ConverterStage {
public:
    // Puts the converter into `programFolder` (with its backslash), and its script
    // and records into a scratch folder.
    explicit ConverterStage(std::string_view script,
                            const std::wstring& programFolder = TestProgramFolder());
    ConverterStage(const ConverterStage&) = delete;
    ConverterStage& operator=(const ConverterStage&) = delete;
    // Takes the converter away again.
    ~ConverterStage();

    const std::wstring& ConverterPath() const { return converter_; }
    // Full path of a file among the records.
    std::wstring Record(const std::wstring& name) const;
    // Makes a file that the script awaits.
    void Give(const std::wstring& name) const;
    // Waits until the converter has made a file; false after 20 s.
    bool WaitFor(const std::wstring& name) const;

    // The command line that the converter saw; empty if none ran.
    std::wstring CommandLine() const;
    std::wstring Option(const std::wstring& name) const;
    // The bytes of the list that it saw; nothing if there was none.
    std::optional<std::string> List() const;
    // A line of its report without the name and "="; empty if it is not there.
    std::string Reported(const std::string& name) const;

private:
    ScratchFolder records_;
    std::wstring converter_;
    clEnvironmentValue script_;
};

// The bytes of a list file with these paths.
std::string ListBytes(const std::vector<std::wstring>& paths);
