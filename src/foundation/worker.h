// Background threads: started and stopped by one protocol, and never terminated.
#pragma once

#include <cstdint>

#include "foundation/string.h"

// What a worker sees of its owner: its own handle of the stop event.
struct clWorkerStopFlag {
    void* handle;  // null if the event could not be opened
    bool existed;  // the event was there already, as it is unless its maker is gone
};

// True once the owner has asked the worker to stop; false without a handle.
// A worker polls it at its own pace and returns soon after. Worker's thread.
[[nodiscard]] bool StopRequested(const clWorkerStopFlag& flag);

// True if more than `graceMs` milliseconds lie between the two tick counts; the
// counter may have wrapped in between. A grace of 0 is without limit.
bool GraceIsOver(std::uint32_t begin, std::uint32_t now, std::uint32_t graceMs);

// One background thread at a time. A worker is asked to stop through a named
// event; one that goes on beyond its grace time is frozen where it stands, so
// whatever it works on must outlive it. The object may be started any number of
// times. All operations belong to the owner's thread.
class clWorkerThread {
public:
    // The flag belongs to the thread and is gone when the procedure returns.
    using Procedure = void (*)(clWorkerStopFlag* flag, std::int64_t parameter);

    clWorkerThread();
    clWorkerThread(const clWorkerThread&) = delete;
    clWorkerThread& operator=(const clWorkerThread&) = delete;
    // Stops the thread first; one that overruns its grace stays frozen.
    ~clWorkerThread();

    // Stops the thread of an earlier start, then starts a new one. `graceMs`:
    // how long Stop waits for it; 0 means without limit. Nothing reports a
    // failure; ThreadHandle is null then.
    void Start(Procedure procedure, std::int64_t parameter, std::uint32_t graceMs);
    // Asks the thread to stop. On return it has ended, or it is frozen, or there
    // was none. A frozen thread is resumed first and gets its grace anew.
    void Stop();

    // Owned by this object; null when no thread was started.
    void* ThreadHandle() const { return thread; }
    // Owned by this object; signalled once Stop was called.
    void* StopEvent() const { return stopEvent; }
    // The last creation found an event of that name already there.
    bool EventExisted() const { return eventExisted; }
    std::uint32_t GraceMs() const { return graceMs; }
    // The last Stop froze the thread.
    bool IsSuspended() const { return suspended; }

private:
    // Makes the named event; the name is left in `name`.
    bool CreateStopEvent(clString& name);
    void CloseThread();
    void CloseStopEvent();

    void* stopEvent;
    bool eventExisted;
    void* thread;
    std::uint32_t graceMs;
    bool suspended;
};
