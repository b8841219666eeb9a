// The hand-off of the gathered list to the converter, a program of its own.
//
// The list goes into a temporary file: for each path its UTF-16LE units and then
// CR LF, also as UTF-16LE; no byte order mark, no quotes, no count. The converter
// is started with
//
//   "FOLDER\Wavewright.exe" -list_to_conv="LIST FILE" -signal_event_got_files="EVENT"
//
// reads the file, then opens the event and signals it. It may work on for as long
// as it likes; the file stays until its process has ended.
//
// Everything here runs on the user interface thread and blocks it, without
// dispatching any message, until the converter's process has ended.
#pragma once

#include <cstdint>

#include "foundation/arrays.h"
#include "foundation/string.h"

struct HWND__;  // the platform's window, as <windows.h> declares it

inline constexpr const wchar_t* converterName = L"Wavewright.exe";

// What the hand-off asks of the form.
class HandOffHost {
public:
    virtual ~HandOffHost() = default;
    // Signals the meta-data reader and polls its thread every 25 ms; returns when
    // the thread has ended or if there is none. It is not started again here.
    virtual void StopReader() = 0;
    // Appends the files to convert, in the order in which the converter gets them.
    virtual void Gather(clStringList& files) = 0;
    // The form. Null for a program without one: no window, cursor or box is shown
    // then but the file layer's, and an empty list is told by the result only.
    virtual HWND__* Window() = 0;
};

enum class HandOffResult {
    NothingGathered,  // no file was made and no process started
    NotStarted,       // the converter is missing or cannot be started
    Converted,        // the converter's process has ended, however it did
};

// Hands everything that the host gathers to the converter beside the program. The
// window is hidden from the converter's signal to its end. The user is told of an
// empty list, and by the file layer of a list file that cannot be written; a
// converter that does not start is met in silence.
HandOffResult ConvertSelected(HandOffHost& host);

// Starts `executable`, a full path without quotes, and waits for its end. False
// if it could not be started. `event` as for LaunchAndWait.
bool RunConverter(HandOffHost& host, const clString& executable, const clString& arguments,
                  void* const& event);

// Starts the whole command line and waits for the process without limit; hides
// the window once `event`, a platform handle or null for none, is signalled, which
// is noticed within 275 ms. The window is not shown again here. False if the
// process could not be started.
bool LaunchAndWait(HandOffHost& host, const clString& commandLine, void* const& event);

// The texts and bytes of the protocol.

// Bytes that belong to someone else.
struct ByteRun {
    const void* data = nullptr;
    std::uint32_t size = 0;  // in bytes
};

// An entry of the list file is these two runs: the path, valid until `path`
// changes, and the line end, valid for ever.
ByteRun ListEntryText(const clString& path);
ByteRun ListEntryEnd();

// "fszkr-" and the tick count as a signed number: a count above 0x7FFFFFFF is
// written with a minus sign.
clString HandOffEventName(std::uint32_t tickCount);
// `programFolder` ends in a backslash.
clString ConverterPath(const clString& programFolder);
clString ConverterArguments(const clString& listFile, const clString& eventName);
// The executable in double quotes, a blank, the arguments.
clString ConverterCommandLine(const clString& executable, const clString& arguments);
