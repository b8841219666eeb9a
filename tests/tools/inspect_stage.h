// `inspect` in a program folder of its own, with scripted decoders, and what it
// says when it runs.
#pragma once

#include <string>
#include <vector>

#include "tests/support/converter_stage.h"

struct InspectOutcome {
    unsigned long code = 0;
    std::string out;     // UTF-8, as it came through the pipe
    std::string errors;  // the same
};

// Begins and ends without remembered extensions and without a stored filter; the
// user's own filter comes back at the end. The name of the program folder holds
// blanks.
class InspectStage {
public:
    InspectStage();
    InspectStage(const InspectStage&) = delete;
    InspectStage& operator=(const InspectStage&) = delete;
    ~InspectStage();

    std::wstring ProgramFolder() const { return program_; }
    // Puts a scripted decoder into the decoder folder; returns its full path. For
    // script and variant see scripted_decoder/script.h.
    std::wstring AddDecoder(const std::wstring& name, const std::string& script,
                            const std::wstring& variant = L"complete") const;
    // Any other file of the decoder folder.
    std::wstring AddDecoderFile(const std::wstring& name, const std::string& bytes) const;
    void SetFilter(const std::wstring& text) const;
    void Remember(const std::wstring& extension, const std::wstring& library) const;
    bool RemembersAnything() const;

    // Makes an empty file beneath the music folder, and its folders; returns its
    // full path. The name is relative to the music folder.
    std::wstring AddFile(const std::wstring& name) const;
    // The folder with the music, with its backslash.
    std::wstring Music() const { return music_.Path().Chars(); }

    // Runs `inspect` in the music folder and waits for its end.
    InspectOutcome Run(const std::vector<std::wstring>& arguments) const;
    // The same, but nobody is there to read the output stream.
    InspectOutcome RunUnread(const std::vector<std::wstring>& arguments) const;

private:
    class Pipe;

    InspectOutcome RunWith(Pipe& out, const std::vector<std::wstring>& arguments) const;
    std::wstring DecoderFolder() const { return program_ + L"decoder\\"; }

    ScratchFolder parent_;
    ScratchFolder music_;
    std::wstring program_;
    std::wstring savedFilter_;
    bool hadFilter_ = false;
};

// The paths as lines, each with an LF, in UTF-8.
std::string Lines(const std::vector<std::wstring>& paths);
// The same lines in an order of their own.
std::vector<std::string> SortedLines(const std::string& text);
