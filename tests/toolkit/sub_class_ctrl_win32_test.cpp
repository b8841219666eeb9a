#include "toolkit/sub_class_ctrl.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <atomic>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

#include "foundation/mutex.h"
#include "tests/support/import_stub.h"
#include "tests/ui/pump.h"
#include "tests/ui/resource_counts.h"

namespace {

HWND NewEdit(const wchar_t* text = L"text") {
    return CreateWindowExW(0, L"EDIT", text, WS_POPUP, 0, 0, 100, 30, nullptr, nullptr,
                           GetModuleHandleW(nullptr), nullptr);
}

WNDPROC ProcedureOf(HWND window) {
    return reinterpret_cast<WNDPROC>(GetWindowLongPtrW(window, GWLP_WNDPROC));
}

// An edit box for one test.
class Edit {
public:
    Edit() : handle(NewEdit()), own(ProcedureOf(handle)) {}
    Edit(const Edit&) = delete;
    Edit& operator=(const Edit&) = delete;
    ~Edit() { DestroyWindow(handle); }
    LRESULT Length() const { return SendMessageW(handle, WM_GETTEXTLENGTH, 0, 0); }
    bool IsItself() const {
        return ProcedureOf(handle) == own && GetWindowLongPtrW(handle, GWLP_USERDATA) == 0;
    }

    const HWND handle;
    const WNDPROC own;
};

class Probe : public XSubClassCtrl {
public:
    LRESULT WndHook(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                    std::uint32_t* handled) override {
        flagSeen = *handled;
        messages.push_back({window, message, wParam, lParam, 0, {}});
        return hook ? hook(message, handled) : 0;
    }
    std::function<LRESULT(UINT, std::uint32_t*)> hook;
    std::vector<MSG> messages;
    std::uint32_t flagSeen = 99;
};

TEST(SubClassCtrl, SeesEachMessageFirstAndLetsItPass) {
    Edit edit;
    Probe probe;
    probe.Attach(edit.handle);
    EXPECT_EQ(probe.Control(), edit.handle);
    EXPECT_EQ(GetWindowLongPtrW(edit.handle, GWLP_USERDATA), reinterpret_cast<LONG_PTR>(&probe));
    EXPECT_NE(ProcedureOf(edit.handle), edit.own);
    EXPECT_EQ(SendMessageW(edit.handle, EM_GETLINECOUNT, 0, 0), 1);
    EXPECT_EQ(edit.Length(), 4);
    ASSERT_EQ(probe.messages.size(), 2u);
    EXPECT_EQ(probe.messages[1].hwnd, edit.handle);
    EXPECT_EQ(probe.messages[1].message, UINT{WM_GETTEXTLENGTH});
    EXPECT_EQ(probe.flagSeen, 0u);
    SendMessageW(edit.handle, EM_SETSEL, 1, -1);
    EXPECT_EQ(probe.messages.back().wParam, 1u);
    EXPECT_EQ(probe.messages.back().lParam, -1);
}

TEST(SubClassCtrl, AHookThatSetsTheFlagAnswersItself) {
    Edit edit;
    Probe probe;
    probe.Attach(edit.handle);
    probe.hook = [](UINT, std::uint32_t* handled) -> LRESULT {
        *handled = 0x80000000;
        return -9;
    };
    EXPECT_EQ(edit.Length(), -9);
    probe.hook = [](UINT, std::uint32_t*) -> LRESULT { return -9; };
    EXPECT_EQ(edit.Length(), 4) << "a result without the flag does not count";
}

TEST(SubClassCtrl, TheBaseLetsEverythingPass) {
    Edit edit;
    XSubClassCtrl bare;
    bare.Attach(edit.handle);
    EXPECT_EQ(edit.Length(), 4);
}

TEST(SubClassCtrl, DetachGivesTheControlBack) {
    Edit edit;
    Probe probe;
    probe.Detach();
    probe.Attach(edit.handle);
    probe.Detach();
    EXPECT_EQ(probe.Control(), nullptr);
    EXPECT_TRUE(edit.IsItself());
    EXPECT_EQ(edit.Length(), 4);
    EXPECT_TRUE(probe.messages.empty());
    probe.Detach();
    EXPECT_TRUE(edit.IsItself());
}

TEST(SubClassCtrl, DetachesAtItsEnd) {
    Edit edit;
    {
        Probe probe;
        probe.Attach(edit.handle);
    }
    EXPECT_TRUE(edit.IsItself());
    EXPECT_EQ(edit.Length(), 4);
}

TEST(SubClassCtrl, AttachLeavesTheEarlierControl) {
    Edit first;
    Edit second;
    Probe probe;
    probe.Attach(first.handle);
    probe.Attach(second.handle);
    EXPECT_TRUE(first.IsItself());
    EXPECT_EQ(probe.Control(), second.handle);
    probe.Attach(second.handle);  // the same again
    EXPECT_EQ(second.Length(), 4);
    EXPECT_EQ(probe.messages.size(), 1u);
    probe.Attach(nullptr);
    EXPECT_TRUE(second.IsItself());
    EXPECT_EQ(probe.Control(), nullptr);
}

TEST(SubClassCtrl, StaysDetachedIfThePlatformRefuses) {
    const HWND gone = NewEdit();
    DestroyWindow(gone);
    Probe probe;
    probe.Attach(gone);
    EXPECT_EQ(probe.Control(), nullptr);
}

using SetLong = LONG_PTR WINAPI(HWND, int, LONG_PTR);
SetLong* setLong;

LONG_PTR WINAPI RefuseProcedures(HWND window, int index, LONG_PTR value) {
    return index == GWLP_WNDPROC ? 0 : setLong(window, index, value);
}

TEST(SubClassCtrl, LeavesNoTraceOnAControlThatIsRefused) {
    Edit edit;
    Probe probe;
    {
        const ImportStub stub("SetWindowLongPtrW", &RefuseProcedures);
        setLong = stub.Original<SetLong>();
        probe.Attach(edit.handle);
    }
    EXPECT_EQ(probe.Control(), nullptr);
    EXPECT_TRUE(edit.IsItself());
}

TEST(SubClassCtrl, DropsMessagesWithoutAnObject) {
    Edit edit;
    Probe probe;
    probe.Attach(edit.handle);
    const auto kept = SetWindowLongPtrW(edit.handle, GWLP_USERDATA, 0);
    EXPECT_EQ(edit.Length(), 0);
    EXPECT_TRUE(probe.messages.empty());
    SetWindowLongPtrW(edit.handle, GWLP_USERDATA, kept);
    EXPECT_EQ(edit.Length(), 4);
}

TEST(SubClassCtrl, DropsMessagesWithoutAnEarlierProcedure) {
    Edit edit;
    Probe probe;
    probe.Attach(edit.handle);
    Probe neverAttached;
    const auto kept =
        SetWindowLongPtrW(edit.handle, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&neverAttached));
    EXPECT_EQ(edit.Length(), 0);
    EXPECT_TRUE(neverAttached.messages.empty());
    SetWindowLongPtrW(edit.handle, GWLP_USERDATA, kept);
}

TEST(SubClassCtrl, NestedMessagesHaveFlagsOfTheirOwn) {
    Edit edit;
    Probe probe;
    probe.Attach(edit.handle);
    LRESULT inner = -1;
    probe.hook = [&](UINT message, std::uint32_t* handled) -> LRESULT {
        if (message != WM_APP) return 0;
        *handled = 1;
        inner = edit.Length();
        return 77;
    };
    EXPECT_EQ(SendMessageW(edit.handle, WM_APP, 0, 0), 77);
    EXPECT_EQ(inner, 4);
}

TEST(SubClassCtrl, AHookMayDetachAndDestroyItsObject) {
    Edit edit;
    auto probe = std::make_unique<Probe>();
    probe->Attach(edit.handle);
    Probe* const object = probe.get();
    object->hook = [object](UINT, std::uint32_t*) -> LRESULT {
        object->Detach();
        return 0;
    };
    EXPECT_EQ(edit.Length(), 4) << "the control still answers";
    EXPECT_TRUE(edit.IsItself());

    class Ending : public XSubClassCtrl {
    public:
        LRESULT WndHook(HWND, UINT, WPARAM, LPARAM, std::uint32_t*) override {
            delete this;
            return 0;
        }
    };
    (new Ending)->Attach(edit.handle);
    EXPECT_EQ(edit.Length(), 4);
    EXPECT_TRUE(edit.IsItself());
}

TEST(SubClassCtrl, OutlivesItsControl) {
    Probe probe;
    {
        Edit edit;
        probe.Attach(edit.handle);
    }
    EXPECT_EQ(probe.messages.back().message, UINT{WM_NCDESTROY});
    Edit next;
    probe.Attach(next.handle);
    EXPECT_EQ(next.Length(), 4);
}

TEST(SubclassMutexIsHeld, ThroughoutEachMessageAndNotBeyond) {
    Edit edit;
    Probe probe;
    probe.Attach(edit.handle);
    const auto isFree = [] {
        bool taken = false;
        std::thread([&] {
            taken = SubclassMutex.TryLock();
            if (taken) SubclassMutex.Unlock();
        }).join();
        return taken;
    };
    bool freeInside = true;
    probe.hook = [&](UINT message, std::uint32_t*) -> LRESULT {
        if (message != WM_APP) return 0;
        edit.Length();  // a nested message gives nothing back too soon
        freeInside = isFree();
        return 0;
    };
    SendMessageW(edit.handle, WM_APP, 0, 0);
    EXPECT_FALSE(freeInside);
    EXPECT_TRUE(isFree());
}

TEST(SubclassMutexIsHeld, WhileAnotherThreadsControlWaits) {
    Edit edit;
    Probe probe;
    probe.Attach(edit.handle);
    std::atomic<bool> isReady{false};
    std::atomic<bool> isInside{false};
    std::atomic<bool> isServed{false};
    std::thread other([&] {
        Edit theirs;
        Probe their;
        their.Attach(theirs.handle);
        isReady = true;
        while (!isInside)
            Sleep(1);
        theirs.Length();
        isServed = true;
    });
    while (!isReady)
        Sleep(1);
    bool servedInside = true;
    probe.hook = [&](UINT, std::uint32_t*) -> LRESULT {
        isInside = true;
        Sleep(150);  // long enough, were it not kept waiting
        servedInside = isServed;
        return 0;
    };
    edit.Length();
    EXPECT_FALSE(servedInside);
    EXPECT_TRUE(PumpUntil([&] { return isServed.load(); }));
    other.join();
}

TEST(SubClassCtrlLeaks, AThousandLeaveNothing) {
    const auto makeAndEnd = [] {
        Edit edit;
        Probe probe;
        probe.Attach(edit.handle);
        edit.Length();
    };
    for (int i = 0; i < 20; ++i)
        makeAndEnd();
    const ResourceCounts before = CountResources();
    for (int i = 0; i < 1000; ++i)
        makeAndEnd();
    EXPECT_EQ(CountResources(), before);
}

}  // namespace
