#include "toolkit/tool_tip_watcher.h"

#include <windows.h>
// objbase.h needs windows.h before it.
#include <objbase.h>

#include <algorithm>
#include <atomic>
#include <optional>
#include <vector>

#include "foundation/mutex.h"
#include "foundation/static_order.h"
#include "foundation/worker.h"
#include "toolkit/tool_tip.h"

namespace {

constexpr DWORD pollMs = 50;
constexpr std::uint32_t withoutLimit = 0;

// Its thread must be gone before the list is, so it stands behind it.
struct WatcherState {
    std::vector<XToolTip*> tips;
    std::atomic<DWORD> threadId{0};
    // Made anew after each stop, which closes the old handles.
    std::optional<clWorkerThread> worker{std::in_place};
};

[[gnu::init_priority(static_order::tooltipThread)]] WatcherState watcher;

// For the pictures of tips that are decoded when they are painted.
class ComOfThread {
public:
    ComOfThread() : isOurs(SUCCEEDED(CoInitialize(nullptr))) {}
    ComOfThread(const ComOfThread&) = delete;
    ComOfThread& operator=(const ComOfThread&) = delete;
    ~ComOfThread() {
        if (isOurs) CoUninitialize();
    }

private:
    bool isOurs;
};

// Answers what other threads have sent, without taking anything from the queue.
void AnswerSentMessages() {
    MSG message;
    PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE | (QS_SENDMESSAGE << 16));
}

// Waits for the handle's signal; true once it came.
bool WaitAnswering(HANDLE handle, DWORD milliseconds) {
    const DWORD count = handle != nullptr ? 1 : 0;
    const DWORD answer =
        MsgWaitForMultipleObjects(count, &handle, FALSE, milliseconds, QS_SENDMESSAGE);
    if (answer == WAIT_OBJECT_0 + count) AnswerSentMessages();
    return count == 1 && answer == WAIT_OBJECT_0;
}

}  // namespace

void DispatchPendingMessages() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) {
            // It is meant for the loop that waits further out.
            PostQuitMessage(static_cast<int>(message.wParam));
            return;
        }
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

void SleepAnswering(std::uint32_t milliseconds) {
    const std::uint32_t begin = GetTickCount();
    for (std::uint32_t passed = 0; passed < milliseconds; passed = GetTickCount() - begin)
        WaitAnswering(nullptr, milliseconds - passed);
}

TipLock::TipLock(LetThrough what) {
    while (!TooltipMutex.TryLock()) {
        // Without a mutex there is nothing to wait for, nor to guard.
        if (TooltipMutex.Handle() == nullptr) return;
        if (what == LetThrough::All) DispatchPendingMessages();
        SleepAnswering(1);
    }
}

TipLock::~TipLock() {
    TooltipMutex.Unlock();
}

void TipWatcher::Add(XToolTip* tip) {
    if (!IsRunning()) {
        watcher.worker->Start(
            [](clWorkerStopFlag* flag, std::int64_t) {
                const ComOfThread com;
                watcher.threadId = GetCurrentThreadId();
                while (!StopRequested(*flag)) {
                    TickAll();
                    // Not a plain sleep, so that a stop need not wait for its end.
                    if (flag->handle == nullptr) Sleep(pollMs);
                    if (flag->handle != nullptr) WaitForSingleObject(flag->handle, pollMs);
                    DispatchPendingMessages();
                }
                watcher.threadId = 0;
            },
            0, withoutLimit);
    }
    watcher.tips.push_back(tip);
}

void TipWatcher::Remove(const XToolTip* tip) {
    std::erase(watcher.tips, tip);
}

void TipWatcher::StopIfIdle() {
    if (IsThisThread() || !IsRunning() || TipCount() != 0) return;
    // The thread may wait for an answer of this one: it is asked to end first and
    // waited for afterwards, by when Stop itself finds it gone.
    SetEvent(watcher.worker->StopEvent());
    while (!WaitAnswering(watcher.worker->ThreadHandle(), pollMs)) {
    }
    watcher.worker->Stop();
    watcher.worker.emplace();
}

bool TipWatcher::IsThisThread() {
    return watcher.threadId == GetCurrentThreadId();
}

bool TipWatcher::IsRunning() {
    return watcher.worker->ThreadHandle() != nullptr;
}

std::int64_t TipWatcher::TipCount() {
    const TipLock lock(TipLock::LetThrough::Sent);
    return static_cast<std::int64_t>(watcher.tips.size());
}

void TipWatcher::TickAll() {
    POINT pointer{};
    GetCursorPos(&pointer);
    if (!TooltipMutex.TryLock()) return;
    // By index: a window that is made or destroyed runs code of its own.
    for (std::size_t i = 0; i < watcher.tips.size(); ++i)
        watcher.tips[i]->Tick(GetTickCount(), {pointer.x, pointer.y});
    TooltipMutex.Unlock();
}
