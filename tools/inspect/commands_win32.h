// The commands of `inspect`. Each returns the exit code (see usage.cpp).
#pragma once

#include "tools/inspect/arguments.h"
#include "tools/inspect/output_win32.h"

inline constexpr int exitDone = 0;
inline constexpr int exitNothing = 1;
inline constexpr int exitUsage = 2;

// Begins every line on the error stream.
inline constexpr const wchar_t* errorPrefix = L"inspect: ";

int RunDecoders(Output& out);
int RunGather(const InspectRequest& request, Output& out, Output& errors);
int RunConvert(const InspectRequest& request, Output& out, Output& errors);
int RunProperties(const InspectRequest& request, Output& out, Output& errors);

// Prints a line that ends with the path, to the error stream.
void PrintError(const wchar_t* before, const clString& path, Output& errors);
// The empty string if the platform cannot make sense of the path.
clString AbsolutePath(const clString& path);
