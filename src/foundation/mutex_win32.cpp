#include <windows.h>
#include <winternl.h>

#include <type_traits>

#include "foundation/mutex.h"
#include "foundation/static_order.h"

// Why skipping the kernel is safe. `owner` is the serial number of the thread
// that owns the kernel mutex. A thread stores its own number only after the
// kernel gave it the mutex, and stores 0 before it gives the mutex back; no
// thread ever stores the number of another. So a thread that reads its own number
// owns the kernel mutex, and a thread that does not own it reads 0 or somebody
// else's number, however old the value, and goes to the kernel. That is a
// matter of one thread's own loads and stores, which every memory order keeps,
// so relaxed ones serve. What the mutex guards is published by the kernel's wait
// and release; `depth` is touched by the owner alone and travels the same way.
//
// The platform's thread ids would not do: a thread that ends while it owns the
// mutex leaves its id behind, a later thread may get that id, and would then
// take itself for the owner. Serial numbers are never used twice.
namespace {

std::uint64_t NewSerial(DWORD slot) {
    static std::atomic<std::uint64_t> last{0};
    const std::uint64_t serial = last.fetch_add(1, std::memory_order_relaxed) + 1;
    TlsSetValue(slot, reinterpret_cast<void*>(serial));
    return serial;
}

// Read straight from the thread's published block: the compiler's thread_local
// takes thirty times as long, and TlsGetValue changes the last error.
// Without a slot each call gives a new number, and all locks go to the kernel,
// which counts them itself.
std::uint64_t SerialOfThisThread() {
    static const DWORD slot = TlsAlloc();
    void* const value =
        slot < TLS_MINIMUM_AVAILABLE ? NtCurrentTeb()->TlsSlots[slot] : TlsGetValue(slot);
    const auto serial = reinterpret_cast<std::uint64_t>(value);
    return serial != 0 ? serial : NewSerial(slot);
}

bool IsSignalled(HANDLE event) {
    return event != nullptr && WaitForSingleObject(event, 0) == WAIT_OBJECT_0;
}

}  // namespace

static_assert(std::is_same_v<HANDLE, void*>);
static_assert(offsetof(TEB, TlsSlots) == 0x1480, "what every 64-bit Windows has there");
static_assert(std::atomic<void*>::is_always_lock_free);
static_assert(std::atomic<std::uint64_t>::is_always_lock_free);

clMutex::clMutex() : handle(nullptr), held(false), existed(false), owner(0), depth(0) {
    SetLastError(ERROR_SUCCESS);
    handle.store(CreateMutexW(nullptr, FALSE, nullptr), std::memory_order_relaxed);
    existed = GetLastError() == ERROR_ALREADY_EXISTS;
}

clMutex::~clMutex() {
    void* const old = handle.exchange(nullptr, std::memory_order_relaxed);
    if (old != nullptr) CloseHandle(old);
    held.store(false, std::memory_order_relaxed);
    existed = false;
    owner.store(0, std::memory_order_relaxed);
}

// The kernel has just given the mutex to this thread.
void clMutex::TakeNote(std::uint64_t self) {
    owner.store(self, std::memory_order_relaxed);
    depth = 1;
    held.store(true, std::memory_order_relaxed);
}

bool clMutex::Take(std::uint32_t milliseconds) {
    void* const kernel = Handle();
    if (kernel == nullptr) return false;
    const std::uint64_t self = SerialOfThisThread();
    if (owner.load(std::memory_order_relaxed) == self) {
        ++depth;
        held.store(true, std::memory_order_relaxed);
        return true;
    }
    const DWORD answer = WaitForSingleObject(kernel, milliseconds);
    if (answer != WAIT_OBJECT_0 && answer != WAIT_ABANDONED) return false;
    TakeNote(self);
    return true;
}

void clMutex::Lock() {
    Take(INFINITE);
}

bool clMutex::TryLock() {
    return Take(0);
}

bool clMutex::LockUnless(void* event) {
    void* const kernel = Handle();
    if (kernel == nullptr) return !IsSignalled(event);
    const std::uint64_t self = SerialOfThisThread();
    if (event == nullptr || owner.load(std::memory_order_relaxed) == self) {
        Lock();
        return true;
    }
    // Of two that are ready the kernel names the first.
    const HANDLE both[] = {event, kernel};
    const DWORD answer = WaitForMultipleObjects(2, both, FALSE, INFINITE);
    if (answer == WAIT_OBJECT_0) return false;
    if (answer == WAIT_OBJECT_0 + 1 || answer == WAIT_ABANDONED_0 + 1) {
        TakeNote(self);
    } else {
        Lock();  // what cannot be waited for must not cost the lock
    }
    return true;
}

// True if the kernel's mutex is now to be given back, `owner` being cleared as is
// due before that.
bool clMutex::IsLastLockOf(std::uint64_t self) {
    if (owner.load(std::memory_order_relaxed) != self) return true;
    if (--depth != 0) return false;
    owner.store(0, std::memory_order_relaxed);
    return true;
}

void clMutex::Unlock() {
    void* const kernel = Handle();
    if (kernel == nullptr) return;
    held.store(false, std::memory_order_relaxed);
    // On a thread that does not own the mutex the kernel refuses.
    if (IsLastLockOf(SerialOfThisThread())) ReleaseMutex(kernel);
}

bool clMutex::UnlockAndTest(void* event) {
    void* const kernel = Handle();
    const std::uint64_t self = SerialOfThisThread();
    const bool isLast = kernel != nullptr && event != nullptr &&
                        owner.load(std::memory_order_relaxed) == self && depth == 1;
    if (!isLast) {
        Unlock();
        return IsSignalled(event);
    }
    held.store(false, std::memory_order_relaxed);
    (void)IsLastLockOf(self);
    const DWORD answer = SignalObjectAndWait(kernel, event, 0, FALSE);
    if (answer != WAIT_FAILED) return answer == WAIT_OBJECT_0;
    ReleaseMutex(kernel);  // refused if the call came as far as that
    return IsSignalled(event);
}

clMutexLock::clMutexLock(clMutex& mutexToHold)
    : mutex(&mutexToHold), held(mutexToHold.Handle() != nullptr) {
    mutex->Lock();
}

void clMutexLock::Release() {
    if (!held) return;
    held = false;
    mutex->Unlock();
}

[[gnu::init_priority(static_order::mutexes)]] clMutex TooltipMutex;
[[gnu::init_priority(static_order::mutexes)]] clMutex WindowMutex;
[[gnu::init_priority(static_order::mutexes)]] clMutex SubclassMutex;
[[gnu::init_priority(static_order::mutexes)]] clMutex MetaDataMutex;
[[gnu::init_priority(static_order::mutexes)]] clMutex GeneralMutex;
