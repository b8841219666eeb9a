// The one thread behind all tips, and how other threads wait for it.
#pragma once

#include <cstdint>

class XToolTip;

// The tips that are watched, and their thread. The list is guarded by the tooltip
// mutex; the thread is started and stopped by the user interface thread alone.
// Under the tooltip mutex the watcher takes a tip's timer mutex and the window
// mutex, never the subclass mutex or that of a bar, which the user interface
// thread may hold when it takes the tooltip mutex.
class TipWatcher {
public:
    // Under the tooltip mutex: starts the thread if none runs, appends the tip.
    static void Add(XToolTip* tip);
    // Under the tooltip mutex. A tip that is not in the list is none.
    static void Remove(const XToolTip* tip);
    // Ends the thread if no tip is left; without the tooltip mutex. Lets messages
    // of other threads through meanwhile. Nothing on the watcher's own thread.
    static void StopIfIdle();

    static bool IsThisThread();
    // The user interface thread.
    static bool IsRunning();
    // Any thread; takes the tooltip mutex.
    static std::int64_t TipCount();

private:
    static void TickAll();
};

// Holds the tooltip mutex, for threads that must not block on it: while another
// thread has it, messages are let through.
class TipLock {
public:
    enum class LetThrough {
        Sent,  // what other threads have sent and wait for
        All,   // and what lies in the thread's own queue
    };

    explicit TipLock(LetThrough what);
    TipLock(const TipLock&) = delete;
    TipLock& operator=(const TipLock&) = delete;
    ~TipLock();
};

// Dispatches what lies in this thread's queue. A request to quit stays there.
void DispatchPendingMessages();
// Waits so long, answering what other threads send meanwhile.
void SleepAnswering(std::uint32_t milliseconds);
