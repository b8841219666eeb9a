#include <windows.h>

#include <atomic>
#include <cstdint>

#include "foundation/mutex.h"
#include "toolkit/window.h"
#include "toolkit/window_table.h"

// Every message of every window looks its object up, and a kernel mutex would
// cost more than all the rest of the way. So changes are made under the window
// mutex, and counted before and behind; a look-up reads without it and stands if
// no change was under way meanwhile. Otherwise it takes the mutex like a change.
//
// A look-up compares the handles that stand in the table and never touches an
// object of another thread, which may be ending.
namespace {

struct Entry {
    std::atomic<HWND> window{nullptr};
    std::atomic<XWindow*> object{nullptr};
};

// The forms and tooltips that show are a handful; a second block is rare. None
// is ever freed: a look-up may stand in it.
struct Block {
    static constexpr int size = 16;
    Entry entries[size];
    std::atomic<Block*> next{nullptr};
};

constinit Block firstBlock;
constinit std::atomic<std::uint32_t> version{0};  // odd while a change is under way
std::int32_t count = 0;                           // under the mutex
std::int32_t classCounter = 0;                    // under the mutex

struct KeptClass {
    clString name;
    KeptClass* next;
};

// A list of plain pointers, since it has to outlast every window of the process.
constinit KeptClass* keptClasses = nullptr;  // under the mutex

// For the thread that has the mutex.
class Change {
public:
    Change() : before(version.load(std::memory_order_relaxed)) {
        version.store(before + 1, std::memory_order_relaxed);
        std::atomic_thread_fence(std::memory_order_release);
    }
    Change(const Change&) = delete;
    Change& operator=(const Change&) = delete;
    ~Change() { version.store(before + 2, std::memory_order_release); }

private:
    std::uint32_t before;
};

// Makes the block if the index is the first behind the last one.
Entry& EntryAt(std::int32_t index) {
    Block* block = &firstBlock;
    for (; index >= Block::size; index -= Block::size) {
        Block* next = block->next.load(std::memory_order_relaxed);
        if (next == nullptr) {
            next = new Block;
            block->next.store(next, std::memory_order_release);
        }
        block = next;
    }
    return block->entries[index];
}

void Put(Entry& entry, HWND window, XWindow* object) {
    entry.window.store(window, std::memory_order_relaxed);
    entry.object.store(object, std::memory_order_relaxed);
}

void RemoveAt(std::int32_t index) {
    --count;
    for (std::int32_t i = index; i < count; ++i) {
        const Entry& next = EntryAt(i + 1);
        Put(EntryAt(i), next.window.load(std::memory_order_relaxed),
            next.object.load(std::memory_order_relaxed));
    }
    Put(EntryAt(count), nullptr, nullptr);
}

void RemoveAllOf(const XWindow* object) {
    for (std::int32_t i = count - 1; i >= 0; --i) {
        if (EntryAt(i).object.load(std::memory_order_relaxed) == object) RemoveAt(i);
    }
}

XWindow* Scan(HWND window) {
    for (const Block* block = &firstBlock; block != nullptr;
         block = block->next.load(std::memory_order_acquire)) {
        for (const Entry& entry : block->entries) {
            const HWND there = entry.window.load(std::memory_order_relaxed);
            if (there == window) return entry.object.load(std::memory_order_relaxed);
            if (there == nullptr) return nullptr;
        }
    }
    return nullptr;
}

}  // namespace

void AddToWindowTable(XWindow* object) {
    const clMutexLock lock(WindowMutex);
    const Change change;
    // A form that is shown again: the system may give its old handle to another.
    RemoveAllOf(object);
    Put(EntryAt(count), object->Window(), object);
    ++count;
}

void RemoveFromWindowTable(const XWindow* object) {
    const clMutexLock lock(WindowMutex);
    const Change change;
    RemoveAllOf(object);
}

XWindow* FindInWindowTable(HWND window) {
    if (window == nullptr) return nullptr;
    const std::uint32_t before = version.load(std::memory_order_acquire);
    if (before % 2 == 0) {
        XWindow* const found = Scan(window);
        std::atomic_thread_fence(std::memory_order_acquire);
        if (version.load(std::memory_order_relaxed) == before) return found;
    }
    const clMutexLock lock(WindowMutex);
    return Scan(window);
}

clString NewWindowClassName() {
    const clMutexLock lock(WindowMutex);
    clString name(L"XWnd");
    name.Append(clString(classCounter));
    ++classCounter;
    return name;
}

void KeepClassForLater(const clString& name) {
    const clMutexLock lock(WindowMutex);
    keptClasses = new KeptClass{name, keptClasses};
}

void GiveKeptClassesBack() {
    const clMutexLock lock(WindowMutex);
    for (KeptClass** link = &keptClasses; *link != nullptr;) {
        KeptClass* const kept = *link;
        // The platform refuses while there is a window.
        if (UnregisterClassW(kept->name.Chars(), GetModuleHandleW(nullptr))) {
            *link = kept->next;
            delete kept;
        } else {
            link = &kept->next;
        }
    }
}
