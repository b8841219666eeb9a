// What the command line of `inspect` asks for.
#pragma once

#include <cstdint>

#include "foundation/arrays.h"
#include "foundation/string.h"

enum class InspectCommand { Help, Decoders, Gather, Convert, Properties };

// Paths and extensions stand as they were given, in the order given.
struct InspectRequest {
    InspectCommand command = InspectCommand::Help;
    clStringList folders;          // FOLDER: with everything beneath
    clStringList foldersOnly;      // --folder-only
    clStringList foldersExcluded;  // --exclude-folder
    clStringList filesIncluded;    // --include-file
    clStringList filesExcluded;    // --exclude-file
    clStringList typesExcluded;    // --exclude-type, each with its dot
    clStringList files;            // FILE of "properties"
};

// Reads the arguments behind the program's name into `request`, a fresh one.
// Returns what is wrong with them, a sentence without a full stop, or the empty
// string. A request for help wins over everything else. The disk is not looked at.
[[nodiscard]] clString ParseArguments(std::int32_t count, const wchar_t* const* arguments,
                                      InspectRequest& request);

// The few lines that go with an error, and what --help adds to them.
const wchar_t* UsageText();
const wchar_t* HelpText();
