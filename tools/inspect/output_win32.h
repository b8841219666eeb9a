// Text on the two output streams: UTF-16 on a console, UTF-8 in a file or a pipe.
#pragma once

#include <windows.h>

#include <string>

#include "foundation/string.h"

// One stream. Lines end with a bare LF.
class Output {
public:
    // STD_OUTPUT_HANDLE or STD_ERROR_HANDLE.
    explicit Output(DWORD stream);
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;
    ~Output() { Flush(); }

    void Print(const clString& text);
    void PrintLine(const clString& text);
    // Brings out what is held back. False if anything so far could not be written.
    bool Flush();

private:
    void WriteConsoleText(const clString& text);

    HANDLE handle_;
    bool isConsole_;
    bool failed_ = false;
    std::string pending_;  // UTF-8, for files and pipes
};
