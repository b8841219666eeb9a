#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <atomic>
#include <memory>
#include <vector>

#include "foundation/handle.h"
#include "foundation/worker.h"
#include "tests/support/eventually.h"
#include "tests/support/import_stub.h"
#include "tests/support/text.h"

namespace {

constexpr std::uint32_t longGraceMs = 20000;

// What a test thread has seen and is told. It outlives a frozen thread only if
// the thread is let go, which each test does at its end.
struct Scene {
    std::atomic<bool> started{false};
    std::atomic<bool> returned{false};
    std::atomic<bool> letGo{false};
    std::atomic<bool> sawStop{false};
    std::atomic<bool> existed{false};
    std::atomic<unsigned> steps{0};
    std::atomic<DWORD> threadId{0};
};

Scene& SceneOf(std::int64_t parameter) {
    return *reinterpret_cast<Scene*>(parameter);
}

std::int64_t ParameterOf(Scene& scene) {
    return reinterpret_cast<std::int64_t>(&scene);
}

void Begin(clWorkerStopFlag* flag, Scene& scene) {
    scene.existed = flag->existed;
    scene.threadId = GetCurrentThreadId();
    scene.started = true;
}

// Does as it is asked.
void Obey(clWorkerStopFlag* flag, std::int64_t parameter) {
    Scene& scene = SceneOf(parameter);
    Begin(flag, scene);
    while (!StopRequested(*flag))
        Sleep(1);
    scene.sawStop = true;
    scene.returned = true;
}

// Goes on until it is let go, and looks at the flag only then.
void Ignore(clWorkerStopFlag* flag, std::int64_t parameter) {
    Scene& scene = SceneOf(parameter);
    Begin(flag, scene);
    while (!scene.letGo) {
        ++scene.steps;
        Sleep(1);
    }
    scene.sawStop = StopRequested(*flag);
    scene.returned = true;
}

void ReturnAtOnce(clWorkerStopFlag* flag, std::int64_t parameter) {
    Begin(flag, SceneOf(parameter));
}

// Takes its time after it was asked to stop.
void OverrunBy300Ms(clWorkerStopFlag* flag, std::int64_t parameter) {
    Scene& scene = SceneOf(parameter);
    Begin(flag, scene);
    while (!StopRequested(*flag))
        Sleep(1);
    Sleep(300);
    scene.returned = true;
}

bool IsSignalled(HANDLE event) {
    return WaitForSingleObject(event, 0) == WAIT_OBJECT_0;
}

bool HasEnded(const clWorkerThread& worker) {
    return IsSignalled(worker.ThreadHandle());
}

// Milliseconds of the quickest of five calls: a busy machine may hold up some.
std::uint32_t QuickestStop(clWorkerThread& worker) {
    std::uint32_t quickest = UINT32_MAX;
    for (int i = 0; i < 5; ++i) {
        const std::uint32_t begin = GetTickCount();
        worker.Stop();
        quickest = std::min<std::uint32_t>(quickest, GetTickCount() - begin);
    }
    return quickest;
}

// Stops moving for longer than a step takes.
bool StandsStill(const Scene& scene) {
    const unsigned before = scene.steps;
    Sleep(60);
    return scene.steps == before;
}

clString EventName(std::uint32_t number) {
    clString name;
    name.Format(L"TRDEVTQ-%d", static_cast<int>(number));
    return name;
}

struct ThreadCall {
    void* security;
    unsigned stackSize;
    unsigned flags;
};

std::vector<ThreadCall> threadCalls;

std::uintptr_t RefuseThread(void* security, unsigned stackSize, unsigned(__stdcall*)(void*), void*,
                            unsigned flags, unsigned*) {
    threadCalls.push_back({security, stackSize, flags});
    return 0;
}

HANDLE WINAPI RefuseEvent(LPSECURITY_ATTRIBUTES, BOOL, BOOL, LPCWSTR) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
}

bool isDenied;  // the next event
decltype(CreateEventW)* platformCreateEvent;

HANDLE WINAPI DenyOneEvent(LPSECURITY_ATTRIBUTES security, BOOL manual, BOOL initial,
                           LPCWSTR name) {
    if (!isDenied) return platformCreateEvent(security, manual, initial, name);
    isDenied = false;
    SetLastError(ERROR_ACCESS_DENIED);
    return nullptr;
}

// The stop events among the `count` names from `first` on.
std::vector<clString> EventsInUse(std::uint32_t first, std::uint32_t count) {
    std::vector<clString> found;
    for (std::uint32_t i = 0; i < count; ++i) {
        const clString name = EventName(first + i);
        const clKernelHandle event(OpenEventW(SYNCHRONIZE, FALSE, name.Chars()));
        if (event.IsValid()) found.push_back(name);
    }
    return found;
}

}  // namespace

TEST(Worker, StartsIdleWithAnEvent) {
    const clWorkerThread worker;
    EXPECT_NE(worker.StopEvent(), nullptr);
    EXPECT_FALSE(IsSignalled(worker.StopEvent()));
    EXPECT_FALSE(worker.EventExisted());
    EXPECT_EQ(worker.ThreadHandle(), nullptr);
    EXPECT_EQ(worker.GraceMs(), 0u);
    EXPECT_FALSE(worker.IsSuspended());
}

TEST(Worker, StopWithoutAThreadReturnsAtOnceAndLeavesTheEvent) {
    clWorkerThread worker;
    EXPECT_LT(QuickestStop(worker), 20u);
    EXPECT_FALSE(IsSignalled(worker.StopEvent()));
    EXPECT_FALSE(worker.IsSuspended());
}

TEST(Worker, RunsTheProcedureOnAThreadOfItsOwn) {
    Scene scene;
    clWorkerThread worker;
    worker.Start(Obey, ParameterOf(scene), longGraceMs);
    ASSERT_NE(worker.ThreadHandle(), nullptr);
    ASSERT_TRUE(Eventually([&] { return scene.started.load(); }));
    EXPECT_NE(scene.threadId, GetCurrentThreadId());
    EXPECT_EQ(scene.threadId, GetThreadId(worker.ThreadHandle()));
    EXPECT_TRUE(scene.existed);  // the worker's handle is to the owner's event
    EXPECT_FALSE(worker.EventExisted());
    EXPECT_EQ(worker.GraceMs(), longGraceMs);
    EXPECT_FALSE(IsSignalled(worker.StopEvent()));
    worker.Stop();
}

TEST(Worker, StopIsSeenByTheThreadWhichEndsWithZero) {
    Scene scene;
    clWorkerThread worker;
    worker.Start(Obey, ParameterOf(scene), longGraceMs);
    worker.Stop();
    EXPECT_TRUE(scene.sawStop);
    EXPECT_TRUE(HasEnded(worker));
    EXPECT_FALSE(worker.IsSuspended());
    EXPECT_TRUE(IsSignalled(worker.StopEvent()));
    DWORD code = 1;
    EXPECT_NE(GetExitCodeThread(worker.ThreadHandle(), &code), FALSE);
    EXPECT_EQ(code, 0u);
}

TEST(Worker, StopEventStaysSignalledForEveryPoll) {
    Scene scene;
    clWorkerThread worker;
    worker.Start(Obey, ParameterOf(scene), longGraceMs);
    worker.Stop();
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(IsSignalled(worker.StopEvent()));
}

TEST(Worker, FlagWithoutAHandleNeverAsksToStop) {
    const clWorkerStopFlag flag{nullptr, false};
    EXPECT_FALSE(StopRequested(flag));
}

TEST(Worker, FlagAsksToStopWhileItsEventIsSignalled) {
    const clKernelHandle event(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    const clWorkerStopFlag flag{event.Get(), false};
    EXPECT_FALSE(StopRequested(flag));
    SetEvent(event.Get());
    EXPECT_TRUE(StopRequested(flag));
    EXPECT_TRUE(StopRequested(flag));
}

TEST(Worker, StopOfAnEndedThreadReturnsAtOnce) {
    Scene scene;
    clWorkerThread worker;
    worker.Start(ReturnAtOnce, ParameterOf(scene), 1);
    ASSERT_TRUE(Eventually([&] { return HasEnded(worker); }));
    EXPECT_LT(QuickestStop(worker), 20u);
    EXPECT_FALSE(worker.IsSuspended());
    EXPECT_TRUE(IsSignalled(worker.StopEvent()));
    EXPECT_NE(worker.ThreadHandle(), nullptr);
}

TEST(Worker, ThreadThatOverrunsItsGraceIsFrozen) {
    Scene scene;
    clWorkerThread worker;
    worker.Start(Ignore, ParameterOf(scene), 100);
    ASSERT_TRUE(Eventually([&] { return scene.started.load(); }));
    const std::uint32_t begin = GetTickCount();
    worker.Stop();
    EXPECT_GT(GetTickCount() - begin, 100u);
    EXPECT_TRUE(worker.IsSuspended());
    EXPECT_FALSE(HasEnded(worker));
    EXPECT_TRUE(StandsStill(scene));
    scene.letGo = true;
    EXPECT_FALSE(HasEnded(worker));  // it sees nothing while it is frozen
    worker.Stop();
    EXPECT_TRUE(HasEnded(worker));
}

TEST(Worker, NextStopResumesAFrozenThreadAndGivesItTheGraceAnew) {
    Scene scene;
    clWorkerThread worker;
    worker.Start(Ignore, ParameterOf(scene), 150);
    ASSERT_TRUE(Eventually([&] { return scene.started.load(); }));
    worker.Stop();
    ASSERT_TRUE(worker.IsSuspended());
    const unsigned frozenAt = scene.steps;
    const std::uint32_t begin = GetTickCount();
    worker.Stop();
    EXPECT_GT(GetTickCount() - begin, 150u);
    EXPECT_GT(scene.steps, frozenAt);  // it ran in between
    EXPECT_TRUE(worker.IsSuspended());
    EXPECT_TRUE(StandsStill(scene));
    // Frozen once and resumed once: a count that piled up would keep it frozen.
    scene.letGo = true;
    worker.Stop();
    EXPECT_TRUE(HasEnded(worker));
    EXPECT_FALSE(worker.IsSuspended());
    EXPECT_TRUE(scene.sawStop);
}

TEST(Worker, GraceZeroWaitsUntilTheThreadEnds) {
    Scene scene;
    clWorkerThread worker;
    worker.Start(OverrunBy300Ms, ParameterOf(scene), 0);
    worker.Stop();
    EXPECT_TRUE(scene.returned);
    EXPECT_TRUE(HasEnded(worker));
    EXPECT_FALSE(worker.IsSuspended());
}

TEST(Worker, StartStopsARunningThreadFirstAndTakesAFreshEvent) {
    Scene first;
    Scene second;
    clWorkerThread worker;
    const std::uint32_t ticks = GetTickCount();
    worker.Start(Obey, ParameterOf(first), longGraceMs);
    const std::vector<clString> firstNames = EventsInUse(ticks, 500);
    ASSERT_EQ(firstNames.size(), 1u);
    const clKernelHandle firstEvent(OpenEventW(SYNCHRONIZE, FALSE, firstNames[0].Chars()));
    worker.Start(Obey, ParameterOf(second), longGraceMs);
    EXPECT_TRUE(first.returned);
    EXPECT_TRUE(IsSignalled(firstEvent.Get()));
    EXPECT_FALSE(IsSignalled(worker.StopEvent()));
    ASSERT_TRUE(Eventually([&] { return second.started.load(); }));
    EXPECT_FALSE(second.sawStop);
    worker.Stop();
    EXPECT_TRUE(second.sawStop);
}

TEST(Worker, StartTidiesUpAFrozenThread) {
    Scene frozen;
    Scene next;
    clWorkerThread worker;
    worker.Start(Ignore, ParameterOf(frozen), 50);
    ASSERT_TRUE(Eventually([&] { return frozen.started.load(); }));
    worker.Stop();
    ASSERT_TRUE(worker.IsSuspended());
    frozen.letGo = true;
    worker.Start(Obey, ParameterOf(next), longGraceMs);
    EXPECT_TRUE(frozen.returned);
    EXPECT_FALSE(worker.IsSuspended());
    worker.Stop();
    EXPECT_TRUE(next.sawStop);
}

// The new thread's grace is its own, and so is its state.
TEST(Worker, StartForgetsThatTheOldThreadStaysFrozen) {
    static Scene frozen;  // its thread never goes on
    Scene next;
    clWorkerThread worker;
    worker.Start(Ignore, ParameterOf(frozen), 50);
    ASSERT_TRUE(Eventually([&] { return frozen.started.load(); }));
    worker.Start(Obey, ParameterOf(next), longGraceMs);
    EXPECT_FALSE(worker.IsSuspended());
    EXPECT_EQ(worker.GraceMs(), longGraceMs);
    EXPECT_TRUE(StandsStill(frozen));
    worker.Stop();
    EXPECT_TRUE(HasEnded(worker));
    EXPECT_TRUE(StandsStill(frozen));
}

TEST(Worker, CanBeStartedAgainAfterItsThreadEnded) {
    clWorkerThread worker;
    for (int i = 0; i < 20; ++i) {
        Scene scene;
        worker.Start(Obey, ParameterOf(scene), longGraceMs);
        worker.Stop();
        EXPECT_TRUE(scene.sawStop);
    }
}

// Every name that the clock can reach during the next seconds is taken, by
// events and by an object of another kind. The loop must count past them all,
// rather than wait for the clock or join a stranger's event.
TEST(Worker, TakenEventNamesAreSkipped) {
    constexpr std::uint32_t takenCount = 8000;
    const std::uint32_t first = GetTickCount();
    std::vector<clKernelHandle> taken;
    for (std::uint32_t i = 0; i < takenCount; ++i) {
        const clString name = EventName(first + i);
        taken.emplace_back(i % 100 == 99 ? CreateMutexW(nullptr, FALSE, name.Chars())
                                         : CreateEventW(nullptr, TRUE, FALSE, name.Chars()));
    }
    Scene scene;
    clWorkerThread worker;
    worker.Start(Obey, ParameterOf(scene), longGraceMs);
    ASSERT_LT(GetTickCount(), first + takenCount) << "the clock has overtaken the taken names";
    ASSERT_NE(worker.ThreadHandle(), nullptr);
    EXPECT_FALSE(worker.EventExisted());
    EXPECT_EQ(EventsInUse(first + takenCount, 3000).size(), 1u);
    worker.Stop();
    EXPECT_TRUE(scene.sawStop);
    for (std::uint32_t i = 0; i < takenCount; ++i) {
        const bool isEvent = i % 100 != 99;
        ASSERT_FALSE(isEvent && IsSignalled(taken[i].Get())) << i;
    }
}

TEST(Worker, ANameThatMayNotBeOpenedIsSkipped) {
    const ImportStub stub("CreateEventW", DenyOneEvent);
    platformCreateEvent = stub.Original<decltype(CreateEventW)>();
    Scene scene;
    clWorkerThread worker;
    isDenied = true;
    worker.Start(Obey, ParameterOf(scene), longGraceMs);
    EXPECT_FALSE(isDenied);
    ASSERT_NE(worker.ThreadHandle(), nullptr);
    worker.Stop();
    EXPECT_TRUE(scene.sawStop);
}

TEST(Worker, WithoutItsThreadItIsIdleAndCanBeStartedAgain) {
    Scene scene;
    clWorkerThread worker;
    threadCalls.clear();
    {
        const ImportStub stub("_beginthreadex", RefuseThread);
        worker.Start(Obey, ParameterOf(scene), longGraceMs);
    }
    ASSERT_EQ(threadCalls.size(), 1u);
    EXPECT_EQ(threadCalls[0].security, nullptr);
    EXPECT_EQ(threadCalls[0].stackSize, 0u);  // the default
    EXPECT_EQ(threadCalls[0].flags, 0u);      // runs straight away
    EXPECT_EQ(worker.ThreadHandle(), nullptr);
    worker.Stop();
    EXPECT_FALSE(IsSignalled(worker.StopEvent()));
    worker.Start(Obey, ParameterOf(scene), longGraceMs);
    worker.Stop();
    EXPECT_TRUE(scene.sawStop);
}

TEST(Worker, WithoutAnEventToStopItNoThreadIsStarted) {
    Scene scene;
    clWorkerThread worker;
    threadCalls.clear();
    {
        const ImportStub event("CreateEventW", RefuseEvent);
        const ImportStub thread("_beginthreadex", RefuseThread);
        worker.Start(Obey, ParameterOf(scene), longGraceMs);
    }
    EXPECT_TRUE(threadCalls.empty());
    EXPECT_EQ(worker.ThreadHandle(), nullptr);
    EXPECT_EQ(worker.StopEvent(), nullptr);
    worker.Start(Obey, ParameterOf(scene), longGraceMs);
    worker.Stop();
    EXPECT_TRUE(scene.sawStop);
}

TEST(Worker, DestructionStopsTheThreadAndClosesWhatItHolds) {
    Scene scene;
    const std::uint32_t ticks = GetTickCount();
    auto worker = std::make_unique<clWorkerThread>();
    worker->Start(Obey, ParameterOf(scene), longGraceMs);
    ASSERT_TRUE(Eventually([&] { return scene.started.load(); }));
    ASSERT_EQ(EventsInUse(ticks, 500).size(), 1u);
    const HANDLE thread = worker->ThreadHandle();
    worker.reset();
    EXPECT_TRUE(scene.returned);
    DWORD flags = 0;
    EXPECT_EQ(GetHandleInformation(thread, &flags), FALSE);
    // The worker's own handle of the event is closed as well.
    EXPECT_TRUE(EventsInUse(ticks, 500).empty());
}

TEST(Worker, DestructionOfAnIdleObjectClosesItsEvent) {
    auto worker = std::make_unique<clWorkerThread>();
    const HANDLE event = worker->StopEvent();
    worker.reset();
    DWORD flags = 0;
    EXPECT_EQ(GetHandleInformation(event, &flags), FALSE);
}

TEST(Worker, DestructionResumesAFrozenThreadOnceMore) {
    static Scene scene;  // its thread never goes on
    auto worker = std::make_unique<clWorkerThread>();
    worker->Start(Ignore, ParameterOf(scene), 50);
    ASSERT_TRUE(Eventually([] { return scene.started.load(); }));
    worker->Stop();
    ASSERT_TRUE(worker->IsSuspended());
    const unsigned frozenAt = scene.steps;
    worker.reset();
    EXPECT_GT(scene.steps, frozenAt);
    EXPECT_TRUE(StandsStill(scene));
}
