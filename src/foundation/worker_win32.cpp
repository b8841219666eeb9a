#include <process.h>
#include <windows.h>

#include <algorithm>
#include <memory>
#include <type_traits>

#include "foundation/worker.h"

static_assert(std::is_same_v<HANDLE, void*>);

namespace {

constexpr std::int32_t nameCapacity = 100;
constexpr DWORD pollMs = 25;

// What the owner hands to the new thread, which frees it.
struct StartRecord {
    wchar_t eventName[nameCapacity];
    clWorkerThread::Procedure procedure;
    std::int64_t parameter;
};

HANDLE OpenStopEvent(const wchar_t* name, bool& existed) {
    SetLastError(ERROR_SUCCESS);
    const HANDLE event = CreateEventW(nullptr, TRUE, FALSE, name);
    existed = GetLastError() == ERROR_ALREADY_EXISTS;
    return event;
}

unsigned __stdcall RunWorker(void* parameter) {
    const std::unique_ptr<StartRecord> record(static_cast<StartRecord*>(parameter));
    clWorkerStopFlag flag{};
    flag.handle = OpenStopEvent(record->eventName, flag.existed);
    record->procedure(&flag, record->parameter);
    if (flag.handle != nullptr) CloseHandle(flag.handle);
    return 0;
}

}  // namespace

bool StopRequested(const clWorkerStopFlag& flag) {
    return flag.handle != nullptr && WaitForSingleObject(flag.handle, 0) == WAIT_OBJECT_0;
}

clWorkerThread::clWorkerThread()
    : stopEvent(CreateEventW(nullptr, TRUE, FALSE, nullptr)),
      eventExisted(false),
      thread(nullptr),
      graceMs(0),
      suspended(false) {}

clWorkerThread::~clWorkerThread() {
    if (thread != nullptr) {
        Stop();
        CloseThread();
    }
    CloseStopEvent();
}

void clWorkerThread::CloseThread() {
    CloseHandle(thread);
    thread = nullptr;
}

void clWorkerThread::CloseStopEvent() {
    if (stopEvent != nullptr) CloseHandle(stopEvent);
    stopEvent = nullptr;
}

bool clWorkerThread::CreateStopEvent(clString& name) {
    for (std::uint32_t n = 0;; ++n) {
        name.Format(L"TRDEVTQ-%d", static_cast<int>(GetTickCount() + n));
        CloseStopEvent();
        stopEvent = OpenStopEvent(name.Chars(), eventExisted);
        if (stopEvent != nullptr && !eventExisted) return true;
        if (stopEvent != nullptr) continue;
        // Two errors tell that the name is in use as well: by an object of
        // another kind, or by an event that this user may not open.
        const DWORD error = GetLastError();
        if (error != ERROR_INVALID_HANDLE && error != ERROR_ACCESS_DENIED) return false;
    }
}

void clWorkerThread::Start(Procedure procedure, std::int64_t parameter, std::uint32_t grace) {
    if (thread != nullptr) {
        Stop();
        CloseThread();
        CloseStopEvent();
    }
    suspended = false;
    graceMs = grace;
    auto record = std::make_unique<StartRecord>();
    record->procedure = procedure;
    record->parameter = parameter;
    clString name;
    // A thread that could not be asked to stop is not started.
    if (!CreateStopEvent(name)) return;
    std::copy_n(name.Chars(), std::min(name.Length() + 1, nameCapacity), record->eventName);
    // Through the C runtime, whose state for each thread is then set up and freed.
    thread =
        reinterpret_cast<HANDLE>(_beginthreadex(nullptr, 0, RunWorker, record.get(), 0, nullptr));
    if (thread != nullptr) record.release();
}

void clWorkerThread::Stop() {
    if (thread == nullptr) return;
    if (suspended) {
        ResumeThread(thread);
        suspended = false;
    }
    SetEvent(stopEvent);
    const std::uint32_t begin = GetTickCount();
    do {
        if (WaitForSingleObject(thread, pollMs) != WAIT_TIMEOUT) return;
    } while (!GraceIsOver(begin, GetTickCount(), graceMs));
    // Killing it would leave locks taken and files half written.
    SuspendThread(thread);
    suspended = true;
}
