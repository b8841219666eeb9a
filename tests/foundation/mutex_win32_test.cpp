#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <new>
#include <thread>
#include <vector>

#include "foundation/mutex.h"
#include "foundation/static_order.h"
#include "tests/support/import_stub.h"

namespace {

// What the kernel says to a thread that has never touched the mutex.
bool IsFreeForOthers(const clMutex& mutex) {
    bool isFree = false;
    std::thread([&] {
        const DWORD answer = WaitForSingleObject(mutex.Handle(), 0);
        isFree = answer == WAIT_OBJECT_0;
        if (isFree) ReleaseMutex(mutex.Handle());
    }).join();
    return isFree;
}

bool TryOnAnotherThread(clMutex& mutex) {
    bool taken = false;
    std::thread([&] {
        taken = mutex.TryLock();
        if (taken) mutex.Unlock();
    }).join();
    return taken;
}

// Takes all of them as early as any object may that has its own number.
struct EarlyUser {
    EarlyUser() : allServed(true) {
        for (clMutex* mutex :
             {&TooltipMutex, &WindowMutex, &SubclassMutex, &MetaDataMutex, &GeneralMutex}) {
            allServed = mutex->TryLock() && allServed;
            mutex->Unlock();
        }
    }
    bool allServed;
};

[[gnu::init_priority(static_order::mutexes + 1)]] const EarlyUser early;

}  // namespace

TEST(Mutex, StartsFreeAndAnonymous) {
    clMutex mutex;
    EXPECT_NE(mutex.Handle(), nullptr);
    EXPECT_FALSE(mutex.Held());
    EXPECT_FALSE(mutex.Existed());
    EXPECT_TRUE(IsFreeForOthers(mutex));
}

TEST(Mutex, LockKeepsOtherThreadsOutUntilUnlock) {
    clMutex mutex;
    mutex.Lock();
    EXPECT_TRUE(mutex.Held());
    EXPECT_FALSE(IsFreeForOthers(mutex));
    mutex.Unlock();
    EXPECT_FALSE(mutex.Held());
    EXPECT_TRUE(IsFreeForOthers(mutex));
}

TEST(Mutex, NestedLocksNeedAsManyUnlocks) {
    clMutex mutex;
    for (int i = 0; i < 5; ++i)
        mutex.Lock();
    for (int i = 0; i < 4; ++i) {
        mutex.Unlock();
        EXPECT_FALSE(IsFreeForOthers(mutex));
    }
    mutex.Unlock();
    EXPECT_TRUE(IsFreeForOthers(mutex));
}

TEST(Mutex, NestedLocksDoNotEnterTheKernel) {
    clMutex mutex;
    mutex.Lock();
    mutex.Lock();
    // Were the nested lock in the kernel too, one release would not free it.
    ReleaseMutex(mutex.Handle());
    EXPECT_TRUE(IsFreeForOthers(mutex));
    // The kernel's state put right again.
    WaitForSingleObject(mutex.Handle(), 0);
    mutex.Unlock();
    mutex.Unlock();
    EXPECT_TRUE(IsFreeForOthers(mutex));
}

TEST(Mutex, TryLockFailsWhileAnotherThreadHasIt) {
    clMutex mutex;
    EXPECT_TRUE(TryOnAnotherThread(mutex));
    mutex.Lock();
    EXPECT_FALSE(TryOnAnotherThread(mutex));
    EXPECT_TRUE(mutex.TryLock());  // nested
    mutex.Unlock();
    EXPECT_FALSE(TryOnAnotherThread(mutex));
    mutex.Unlock();
    EXPECT_TRUE(TryOnAnotherThread(mutex));
}

TEST(Mutex, TryLockNotesThatItIsHeldOnlyOnSuccess) {
    clMutex mutex;
    ASSERT_TRUE(mutex.TryLock());
    EXPECT_TRUE(mutex.Held());
    mutex.Unlock();
    ASSERT_FALSE(mutex.Held());
    HANDLE taken = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    HANDLE done = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    std::thread other([&] {
        WaitForSingleObject(mutex.Handle(), INFINITE);  // past the object, so no note
        SetEvent(taken);
        WaitForSingleObject(done, INFINITE);
        ReleaseMutex(mutex.Handle());
    });
    WaitForSingleObject(taken, INFINITE);
    EXPECT_FALSE(mutex.TryLock());
    EXPECT_FALSE(mutex.Held());
    SetEvent(done);
    other.join();
    CloseHandle(taken);
    CloseHandle(done);
}

TEST(Mutex, UnlockOnAThreadThatDoesNotOwnItGivesNothingBack) {
    clMutex mutex;
    mutex.Unlock();  // free: no underflow
    mutex.Lock();
    std::thread([&] { mutex.Unlock(); }).join();
    EXPECT_FALSE(IsFreeForOthers(mutex));
    mutex.Unlock();
    EXPECT_TRUE(IsFreeForOthers(mutex));
    mutex.Unlock();
    mutex.Lock();
    EXPECT_FALSE(IsFreeForOthers(mutex));
    mutex.Unlock();
    EXPECT_TRUE(IsFreeForOthers(mutex));
}

TEST(Mutex, MutexOfAnEndedThreadCountsAsFree) {
    clMutex mutex;
    std::thread([&] {
        mutex.Lock();
        mutex.Lock();
    }).join();
    ASSERT_TRUE(mutex.TryLock());
    EXPECT_TRUE(mutex.Held());
    EXPECT_FALSE(TryOnAnotherThread(mutex));
    mutex.Unlock();
    EXPECT_TRUE(TryOnAnotherThread(mutex));
}

// Thread ids come back. A thread that gets the id of one that ended while it had
// the mutex must not take itself for the owner.
TEST(Mutex, NoThreadInheritsTheLocksOfAnEndedOneWithItsId) {
    clMutex mutex;
    DWORD endedId = 0;
    std::thread([&] {
        endedId = GetCurrentThreadId();
        mutex.Lock();
    }).join();
    bool idCameBack = false;
    bool keptOthersOut = false;
    for (int i = 0; i < 20000 && !idCameBack; ++i) {
        std::thread([&] {
            if (GetCurrentThreadId() != endedId) return;
            idCameBack = true;
            mutex.Lock();
            keptOthersOut = !IsFreeForOthers(mutex);
            mutex.Unlock();
        }).join();
    }
    ASSERT_TRUE(idCameBack) << "nothing was put to the test";
    EXPECT_TRUE(keptOthersOut);
    EXPECT_TRUE(IsFreeForOthers(mutex));
}

TEST(Mutex, ManyThreadsNeverMeetInside) {
    clMutex mutex;
    constexpr int threadCount = 6;
    constexpr int roundsEach = 1500;
    long long sum = 0;  // unguarded but for the mutex
    std::atomic<int> owner{-1};
    std::atomic<int> meetings{0};
    std::vector<std::thread> threads;
    for (int id = 0; id < threadCount; ++id) {
        threads.emplace_back([&, id] {
            for (int i = 0; i < roundsEach; ++i) {
                const int depth = 1 + (i + id) % 4;
                if (i % 5 == 0) {
                    while (!mutex.TryLock())
                        Sleep(0);
                } else {
                    mutex.Lock();
                }
                if (owner.exchange(id) != -1) ++meetings;
                for (int nested = 1; nested < depth; ++nested)
                    mutex.Lock();
                sum = sum + 1;
                if (i % 64 == 0) Sleep(0);
                for (int nested = 1; nested < depth; ++nested)
                    mutex.Unlock();
                if (owner.exchange(-1) != id) ++meetings;
                mutex.Unlock();
                mutex.Unlock();  // one too many: not this thread's any more
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(meetings, 0);
    EXPECT_EQ(sum, static_cast<long long>(threadCount) * roundsEach);
    EXPECT_TRUE(IsFreeForOthers(mutex));
}

TEST(Mutex, WithoutTheKernelsMutexNothingIsGuarded) {
    const ImportStub stub(
        "CreateMutexW", +[](LPSECURITY_ATTRIBUTES, BOOL, LPCWSTR) -> HANDLE { return nullptr; });
    SetLastError(ERROR_ALREADY_EXISTS);  // of some call before
    clMutex mutex;
    EXPECT_EQ(mutex.Handle(), nullptr);
    EXPECT_FALSE(mutex.Existed());
    mutex.Lock();
    EXPECT_FALSE(mutex.Held());
    EXPECT_FALSE(mutex.TryLock());
    mutex.Unlock();
    const clMutexLock lock(mutex);
    EXPECT_FALSE(mutex.Held());
    // The event alone decides, and is found out.
    HANDLE event = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    EXPECT_TRUE(mutex.LockUnless(event));
    EXPECT_FALSE(mutex.UnlockAndTest(event));
    SetEvent(event);
    EXPECT_FALSE(mutex.LockUnless(event));
    EXPECT_TRUE(mutex.UnlockAndTest(event));
    CloseHandle(event);
}

TEST(Mutex, DestructionClosesTheHandleAndClearsTheFields) {
    alignas(clMutex) unsigned char storage[sizeof(clMutex)];
    auto* mutex = new (storage) clMutex;
    const HANDLE handle = mutex->Handle();
    DWORD flags = 0;
    ASSERT_NE(GetHandleInformation(handle, &flags), FALSE);
    mutex->Lock();
    mutex->Unlock();
    mutex->~clMutex();
    EXPECT_EQ(GetHandleInformation(handle, &flags), FALSE);
    EXPECT_EQ(std::count(storage, storage + sizeof(void*) + 2 * sizeof(bool), 0),
              static_cast<std::ptrdiff_t>(sizeof(void*) + 2 * sizeof(bool)));
    // A thread that comes late, at the process's end, finds nothing to wait for.
    auto* late = std::launder(reinterpret_cast<clMutex*>(storage));
    late->Lock();
    EXPECT_FALSE(late->TryLock());
    EXPECT_FALSE(late->Held());
    late->Unlock();
    const clMutexLock lock(*late);
    EXPECT_FALSE(late->Held());
}

namespace {

class Event {
public:
    explicit Event(bool resetsItself = false)
        : handle(CreateEventW(nullptr, !resetsItself, FALSE, nullptr)) {}
    Event(const Event&) = delete;
    Event& operator=(const Event&) = delete;
    ~Event() { CloseHandle(handle); }

    const HANDLE handle;
};

}  // namespace

TEST(Mutex, LockUnlessTakesTheMutexWhileTheEventIsQuiet) {
    clMutex mutex;
    const Event event;
    ASSERT_TRUE(mutex.LockUnless(event.handle));
    EXPECT_TRUE(mutex.Held());
    EXPECT_FALSE(IsFreeForOthers(mutex));
    mutex.Lock();  // nested, as behind Lock
    mutex.Unlock();
    EXPECT_FALSE(IsFreeForOthers(mutex));
    mutex.Unlock();
    EXPECT_TRUE(IsFreeForOthers(mutex));
}

TEST(Mutex, LockUnlessLeavesTheMutexWhenTheEventIsSignalled) {
    clMutex mutex;
    const Event event(true);
    SetEvent(event.handle);
    EXPECT_FALSE(mutex.LockUnless(event.handle));
    EXPECT_FALSE(mutex.Held());
    EXPECT_TRUE(IsFreeForOthers(mutex));
    EXPECT_TRUE(mutex.LockUnless(event.handle));  // it has reset itself
    SetEvent(event.handle);
    EXPECT_TRUE(mutex.LockUnless(event.handle));  // nested: not looked at
    mutex.Unlock();
    mutex.Unlock();
    EXPECT_FALSE(mutex.LockUnless(event.handle));
}

TEST(Mutex, LockUnlessWaitsForTheMutexOrTheEvent) {
    clMutex mutex;
    const Event event;
    for (const bool byEvent : {false, true}) {
        mutex.Lock();
        std::atomic<int> answer{-1};
        std::thread other([&] {
            answer = mutex.LockUnless(event.handle);
            if (answer == 1) mutex.Unlock();
        });
        Sleep(30);
        EXPECT_EQ(answer, -1);
        if (byEvent) {
            SetEvent(event.handle);
            other.join();
        }
        mutex.Unlock();
        if (!byEvent) other.join();
        EXPECT_EQ(answer, byEvent ? 0 : 1);
    }
}

TEST(Mutex, LockUnlessIsLockWithoutAnEventThatCanBeWaitedFor) {
    clMutex mutex;
    Event* const gone = new Event;
    const HANDLE stale = gone->handle;
    delete gone;
    for (const HANDLE event : {HANDLE{nullptr}, stale}) {
        EXPECT_TRUE(mutex.LockUnless(event));
        EXPECT_FALSE(IsFreeForOthers(mutex));
        mutex.Unlock();
        EXPECT_TRUE(IsFreeForOthers(mutex));
    }
}

TEST(Mutex, LockUnlessTakesTheMutexOfAnEndedThread) {
    clMutex mutex;
    const Event event;
    std::thread([&] { mutex.Lock(); }).join();
    EXPECT_TRUE(mutex.LockUnless(event.handle));
    EXPECT_FALSE(TryOnAnotherThread(mutex));
    mutex.Unlock();
    EXPECT_TRUE(TryOnAnotherThread(mutex));
}

TEST(Mutex, UnlockAndTestGivesBackAndTellsOfTheEvent) {
    clMutex mutex;
    const Event event;
    for (const bool isSet : {false, true, false}) {
        isSet ? SetEvent(event.handle) : ResetEvent(event.handle);
        mutex.Lock();
        mutex.Lock();
        EXPECT_EQ(mutex.UnlockAndTest(event.handle), isSet);
        EXPECT_FALSE(IsFreeForOthers(mutex));
        EXPECT_EQ(mutex.UnlockAndTest(event.handle), isSet);
        EXPECT_FALSE(mutex.Held());
        EXPECT_TRUE(IsFreeForOthers(mutex));
        EXPECT_EQ(mutex.UnlockAndTest(event.handle), isSet);  // nothing to give back
        mutex.Lock();
        EXPECT_FALSE(IsFreeForOthers(mutex));
        mutex.Unlock();
    }
}

TEST(Mutex, UnlockAndTestGivesBackWithoutAnEventThatCanBeAsked) {
    clMutex mutex;
    Event* const gone = new Event;
    const HANDLE stale = gone->handle;
    delete gone;
    for (const HANDLE event : {HANDLE{nullptr}, stale}) {
        mutex.Lock();
        EXPECT_FALSE(mutex.UnlockAndTest(event));
        EXPECT_TRUE(IsFreeForOthers(mutex));
    }
}

TEST(MutexLock, HoldsForItsScope) {
    clMutex mutex;
    {
        const clMutexLock lock(mutex);
        EXPECT_FALSE(IsFreeForOthers(mutex));
        const clMutexLock nested(mutex);
        EXPECT_FALSE(IsFreeForOthers(mutex));
    }
    EXPECT_TRUE(IsFreeForOthers(mutex));
}

TEST(MutexLock, ReleaseGivesBackOnce) {
    clMutex mutex;
    mutex.Lock();
    {
        clMutexLock lock(mutex);
        lock.Release();
        lock.Release();
        EXPECT_FALSE(IsFreeForOthers(mutex));
    }
    EXPECT_FALSE(IsFreeForOthers(mutex));
    mutex.Unlock();
    EXPECT_TRUE(IsFreeForOthers(mutex));
}

TEST(ProcessMutexes, ServeBeforeTheEntryFunction) {
    EXPECT_TRUE(early.allServed);
}

TEST(ProcessMutexes, AreFiveDifferentOnes) {
    std::vector<void*> handles;
    for (const clMutex* mutex :
         {&TooltipMutex, &WindowMutex, &SubclassMutex, &MetaDataMutex, &GeneralMutex}) {
        ASSERT_NE(mutex->Handle(), nullptr);
        EXPECT_TRUE(IsFreeForOthers(*mutex));
        handles.push_back(mutex->Handle());
    }
    std::sort(handles.begin(), handles.end());
    EXPECT_EQ(std::unique(handles.begin(), handles.end()), handles.end());
}
