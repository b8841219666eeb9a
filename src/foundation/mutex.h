// The mutex of the system, its scoped form, and the process-wide mutexes.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

// An anonymous kernel mutex: recursive, each Lock needs its Unlock on the same
// thread. Nested locks of the owning thread do not enter the kernel.
// If the platform refuses the mutex, Lock and Unlock do nothing: the program
// then runs unguarded rather than not at all. From any thread.
class clMutex {
public:
    clMutex();
    clMutex(const clMutex&) = delete;
    clMutex& operator=(const clMutex&) = delete;
    // Closes the handle and clears the fields: later calls do nothing.
    ~clMutex();

    // Waits without limit. A mutex whose owner ended without giving it back
    // counts as free.
    void Lock();
    // Takes the mutex if that needs no wait. False if another thread has it or
    // if there is no mutex.
    [[nodiscard]] bool TryLock();
    // Gives one lock back; nothing happens if the mutex is not this thread's.
    void Unlock();

    // Two questions at the price of one, for a loop that takes the mutex often and
    // looks at an event each time: a call of the kernel is dear under Wine.
    //
    // Lock, unless `event` (the platform's handle, or null for none) is signalled
    // before the mutex is taken: true if the mutex is taken. False: it is not, and
    // the event, if it is one that resets itself, has done so. A nested lock does
    // not look at the event. Where there is no mutex nothing is taken, and the
    // event alone decides.
    [[nodiscard]] bool LockUnless(void* event);
    // Unlock, then whether `event` is signalled; false for null.
    [[nodiscard]] bool UnlockAndTest(void* event);

    // The platform's handle, null if there is none. Never wait on it and never
    // release it past this object: the count of nested locks would be wrong.
    void* Handle() const { return handle.load(std::memory_order_relaxed); }
    // A note that the mutex was taken and not yet given back. Another thread may
    // see it out of date.
    bool Held() const { return held.load(std::memory_order_relaxed); }
    // The creation found a mutex that was already there.
    bool Existed() const { return existed; }

private:
    bool Take(std::uint32_t milliseconds);
    void TakeNote(std::uint64_t self);
    bool IsLastLockOf(std::uint64_t self);

    // All atomic, so that a thread that comes late sees what the destructor of a
    // static object left, and so that an Unlock by a thread that does not own
    // the mutex is no data race.
    std::atomic<void*> handle;
    std::atomic<bool> held;
    bool existed;
    std::atomic<std::uint64_t> owner;  // the owning thread's serial number, or 0
    std::uint32_t depth;               // locks of the owner, touched by it alone
};

// Holds a mutex from its construction to `Release` or the end of its scope.
// It takes the object and not the bare handle, so that scoped locks are counted
// with the others and nested ones stay out of the kernel as well.
class clMutexLock {
public:
    explicit clMutexLock(clMutex& mutexToHold);  // waits without limit
    clMutexLock(const clMutexLock&) = delete;
    clMutexLock& operator=(const clMutexLock&) = delete;
    ~clMutexLock() { Release(); }

    // Gives the mutex back before the end of the scope; a second call does nothing.
    void Release();

private:
    clMutex* mutex;
    bool held;
};

// The process-wide mutexes: made in this order before the entry function, and
// living as long as the process.
extern clMutex TooltipMutex;   // the tooltips and what their thread reads
extern clMutex WindowMutex;    // the list of all windows
extern clMutex SubclassMutex;  // held through each message of a subclassed control
extern clMutex MetaDataMutex;  // the file rows and the queue of the reader threads
extern clMutex GeneralMutex;   // guards nothing
