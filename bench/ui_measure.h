// What the benchmarks of windows share: a script that runs in a form's own message
// loop, a list that no class of ours stands behind, and what a process waits and holds.
#pragma once

#include <windows.h>
// commctrl.h needs windows.h before it.
#include <commctrl.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <string>
#include <thread>
#include <vector>

// Seconds since some moment.
double Now();

template <class Work>
double WallSecondsOf(Work&& work) {
    const double start = Now();
    work();
    return Now() - start;
}

// Private memory that is committed, added up page range by page range: not every
// system that runs Windows programs keeps a count of its own.
SIZE_T CommittedBytes();

// Puts another function into the slot through which this program calls `function`
// of a DLL, from its construction to its end.
template <class Function>
class ImportSwap {
public:
    ImportSwap(Function& importSlot, Function replacement) : slot(importSlot), original(slot) {
        Set(replacement);
    }
    ImportSwap(const ImportSwap&) = delete;
    ImportSwap& operator=(const ImportSwap&) = delete;
    ~ImportSwap() { Set(original); }

private:
    void Set(Function function) {
        DWORD old = 0;
        VirtualProtect(&slot, sizeof slot, PAGE_READWRITE, &old);
        slot = function;
        VirtualProtect(&slot, sizeof slot, old, &old);
    }

    Function& slot;
    Function original;
};

// Settings of its own for this process, at first none; nothing of the user's is
// read or written.
class OwnSettings {
public:
    OwnSettings();
    OwnSettings(const OwnSettings&) = delete;
    OwnSettings& operator=(const OwnSettings&) = delete;
    ~OwnSettings();

private:
    wchar_t path[64];
};

// What the program itself sets up before its first window, with OwnSettings.
class ProgramGround {
public:
    ProgramGround();
    ProgramGround(const ProgramGround&) = delete;
    ProgramGround& operator=(const ProgramGround&) = delete;
    ~ProgramGround();

private:
    OwnSettings settings;
};

// Runs a script once, from the message loop that the thread is in by then: that of
// a modal dialog. Made and used on the thread of the loop.
class LoopScript {
public:
    explicit LoopScript(std::function<void()> toRun);
    LoopScript(const LoopScript&) = delete;
    LoopScript& operator=(const LoopScript&) = delete;
    ~LoopScript();

    // As the first message of the loop.
    void RunFirst();
    // When the loop has had nothing else to do for a while.
    void RunWhenIdle();

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    std::function<void()> script;
    HWND window;
};

// From its construction to its end a thread posts a message to the constructing
// thread every few milliseconds, and each notes how long it waited.
class LongestWait {
public:
    LongestWait();
    LongestWait(const LongestWait&) = delete;
    LongestWait& operator=(const LongestWait&) = delete;
    ~LongestWait();

    // So far. The message that is still waiting counts when it arrives.
    double Milliseconds() const { return longest * 1000; }
    std::int64_t Messages() const { return messages; }
    // Seconds after construction at which the longest wait ended.
    double When() const { return when; }

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void Post();

    HWND window;
    double begin;
    double longest = 0;
    double when = 0;
    std::int64_t messages = 0;
    std::atomic<bool> stops{false};
    std::thread poster;
};

// The dialog of this process that is neither hidden nor bare, or null.
HWND ShownDialog();
// Serves messages until the condition holds; false if it does not in time.
bool ServeUntil(const std::function<bool()>& condition, DWORD limitMs);

// What a command of the row menu does, the menu's own time left out. `form` is the
// one of the list, and both are shown.
void RunRowCommand(HWND form, HWND list, int command);

// What the control of a list holds. All texts lie in one piece: a block of the heap
// for each of them would slow down what the program allocates meanwhile.
class ListContents {
public:
    struct Row {
        std::vector<const wchar_t*> cells;
        int image = -1;
        UINT state = 0;
    };

    explicit ListContents(HWND list);

    int RowCount() const { return static_cast<int>(images.size()); }
    // The cells of `row` are filled anew, and stay valid while this lives.
    void Take(int number, Row& row) const;

private:
    int columns;
    std::wstring texts;               // with a terminator behind each
    std::vector<std::size_t> begins;  // of all cells, row by row
    std::vector<int> images;
    std::vector<UINT> states;
};

// A dialog of the program's own template whose procedure does nothing, with the
// columns, styles and pictures of another list. It is shown where the other is.
class BareForm {
public:
    BareForm(int dialogId, int listId, HWND likeList);
    BareForm(const BareForm&) = delete;
    BareForm& operator=(const BareForm&) = delete;
    ~BareForm() { DestroyWindow(dialog); }

    HWND List() const { return list; }
    void Clear() const { SendMessageW(list, LVM_DELETEALLITEMS, 0, 0); }
    // Inserts rows with all their cells, with redraw off.
    void Insert(const ListContents& contents) const;
    // Appends a row: its parameter is its number, and each further column gets an
    // empty cell.
    void InsertRow(const ListContents::Row& row) const;
    void SetTick(int row, bool ticked) const;

private:
    HWND dialog;
    HWND list;
    int columns;
};
