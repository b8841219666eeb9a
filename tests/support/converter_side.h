// The converter's half of the hand-off, and bytes in files, for the converters of
// the tests and for what looks at their records. Paths may be of any length.
#pragma once

#include <optional>
#include <string>
#include <string_view>

// The text between the quotes behind `-name=`; empty without that option.
std::wstring ConverterOption(const std::wstring& commandLine, const std::wstring& name);

// Nothing if the file cannot be opened.
std::optional<std::string> ReadBytes(const std::wstring& path);
// Replaces the file; false if it cannot be written.
bool WriteBytes(const std::wstring& path, std::string_view bytes);
bool FileExists(const std::wstring& path);

std::string NarrowUtf8(std::wstring_view text);
std::wstring WideUtf8(std::string_view text);

// The value of an environment variable; empty if it is not set.
std::wstring EnvironmentText(const wchar_t* name);

enum class EventState { Missing, Unsignalled, Signalled };
// Opens the event, which is never created here.
EventState LookAtEvent(const std::wstring& name);
// False if there is no such event.
bool SignalEvent(const std::wstring& name);
