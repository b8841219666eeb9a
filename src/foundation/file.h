// Reading and writing one file.
#pragma once

#include <windows.h>

#include <cstdint>

#include "foundation/string.h"

// With reporting on, a failing open, read or write asks the user in a modal
// Retry/Cancel box without an owner window, and is repeated for as long as the
// answer is Retry; the calling thread waits. With reporting off, failures show
// in the results only. There is no buffer: each call goes to the platform. One
// object belongs to one thread.
class clFile {
public:
    clFile() = default;
    clFile(const clFile&) = delete;
    clFile& operator=(const clFile&) = delete;
    ~clFile();

    // Opens `path` with the platform's access mask and creation disposition,
    // shared for reading and writing. A valid `handle` is the only sign of
    // success; a handle from before is not closed.
    void Open(DWORD access, DWORD disposition, bool report);
    // Closes the handle if it is owned; `handle` is invalid afterwards.
    void Close();
    // Bytes read; fewer than `count` at the end of the file, which is no error.
    // Retry goes on from where the file position then stands, with the bytes
    // read until then dropped.
    std::uint32_t Read(void* buffer, std::uint32_t count);
    // True if all bytes were written. Null with a count of 0 is true, null with
    // any other is false.
    [[nodiscard]] bool Write(const void* buffer, std::uint32_t count);
    // In bytes; 0 when not open. The platform's errors are not looked at.
    std::uint64_t Size() const;
    // Reads UTF-16 text in the machine's byte order up to a CR LF, LF or CR,
    // which is not part of `line`. False at the end of the file; the last line
    // needs no line end. Byte order marks at the start of a line and NULs are
    // dropped.
    [[nodiscard]] bool ReadLine(clString& line);
    bool IsOpen() const { return handle != INVALID_HANDLE_VALUE; }

    clString path;  // set before Open
    HANDLE handle = INVALID_HANDLE_VALUE;
    bool reportErrors = false;  // set by Open
    bool ownsHandle = false;    // set by Open; clear it to keep the handle open
};
