// The conversion list over 100,000 gathered files, against a bare list:
//   list_dialog_bench FOLDER [opening|waits|ticking]
// FOLDER holds the 10,000 files that are read while the messages' waits are taken.
// Without a part named, all three are measured.
#include <windows.h>
// The platform's other headers need windows.h before them.
#include <commctrl.h>

#include <cstdio>
#include <cwchar>
#include <functional>
#include <memory>
#include <vector>

#include "bench/measure.h"
#include "bench/ui_measure.h"
#include "dialogs/list_form.h"
#include "foundation/dir_enum.h"
#include "mainwindow/columns.h"
#include "resources/ids.h"

namespace {

constexpr double openingLimit = 1.3;
constexpr double growthLimit = 1.5;
constexpr double waitLimitMs = 100;
constexpr int fewFiles = 10000;
constexpr int manyFiles = 100000;
constexpr int rounds = 3;
constexpr DWORD patienceMs = 300000;

void MakePaths(int count, clStringList& paths) {
    for (int number = 0; number < count; ++number) {
        wchar_t path[128] = {};
        std::swprintf(path, 128, L"C:\\Music\\Artist %04d\\%02d - Title of the piece %06d.tone",
                      number / 100, number * 7919 % 97 + 1, number);
        paths.Add(path);
    }
}

void ListFolder(const wchar_t* folder, clStringList& paths) {
    clDirEnum entries(L"*.*", folder);
    while (entries.Next()) {
        if ((entries.record.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0)
            paths.Add(entries.path);
    }
}

struct Dialog {
    HWND form;
    HWND list;
    double openedIn;  // seconds from the constructor to the loop
};

// Opens the dialog over these files, runs the work in its loop, and cancels it.
void InDialog(const clStringList& files, const std::function<void(const Dialog&)>& work) {
    const clString names(defaultColumns);
    PathList excluded;
    bool convert = false;
    double begin = 0;
    LoopScript script([&] {
        const double seconds = Now() - begin;
        const HWND form = ShownDialog();
        work({form, GetDlgItem(form, IDC_FILE_LIST), seconds});
        PostMessageW(form, WM_CLOSE, 0, 0);
    });
    script.RunFirst();
    begin = Now();
    const frmList dialog(nullptr, files, excluded, names, &convert);
}

void MeasureOpening(const clStringList& files, Judge& judge) {
    std::unique_ptr<ListContents> contents;
    std::unique_ptr<BareForm> bare;
    InDialog(files, [&](const Dialog& dialog) {
        contents = std::make_unique<ListContents>(dialog.list);
        bare = std::make_unique<BareForm>(IDD_LIST, IDC_FILE_LIST, dialog.list);
    });
    judge.Require("rows", contents->RowCount(), manyFiles);
    const std::vector<double> seconds = MediansOf(
        rounds,
        [&] {
            bare->Clear();
            return WallSecondsOf([&] { bare->Insert(*contents); });
        },
        [&] {
            bare->Clear();
            double opened = 0;
            InDialog(files, [&](const Dialog& dialog) { opened = dialog.openedIn; });
            return opened;
        });
    std::printf("opening: bare %.3f s, dialog %.3f s\n", seconds[0], seconds[1]);
    judge.Check("opening with 100,000 files, over a bare insertion", seconds[1] / seconds[0],
                openingLimit);
}

// Files are read in the order of the list: the last row comes last.
bool AllRead(HWND list) {
    constexpr int artistColumn = 4;  // of the default columns
    wchar_t text[100] = {};
    ListView_GetItemText(list, ListView_GetItemCount(list) - 1, artistColumn, text, 100);
    return *text != 0;
}

// Seconds for a row: Check All, Uncheck All, Invert Selection.
std::vector<double> TickingTimes(const clStringList& files, Judge& judge) {
    std::vector<double> times;
    InDialog(files, [&](const Dialog& dialog) {
        const bool isRead = ServeUntil([&] { return AllRead(dialog.list); }, patienceMs);
        judge.Require("all files read before the ticking", isRead, 1);
        const auto run = [&](int command) {
            return WallSecondsOf([&] { RunRowCommand(dialog.form, dialog.list, command); }) /
                   static_cast<double>(files.Count());
        };
        times = MediansOf(
            rounds, [&] { return run(ID_UNCHECK_ALL); }, [&] { return run(ID_CHECK_ALL); },
            [&] {
                const double seconds = run(ID_INVERT_SELECTION);
                // Each round turns every row each time.
                RunRowCommand(dialog.form, dialog.list, ID_CHECK_ALL);
                return seconds;
            });
        const int last = static_cast<int>(files.Count()) - 1;
        judge.Require("tick of the last row", ListView_GetCheckState(dialog.list, last), 1);
    });
    return times;
}

void MeasureTicking(const clStringList& few, const clStringList& many, Judge& judge) {
    const std::vector<double> fewTimes = TickingTimes(few, judge);
    const std::vector<double> manyTimes = TickingTimes(many, judge);
    const char* const names[] = {"Uncheck All", "Check All", "Invert Selection"};
    for (std::size_t i = 0; i < manyTimes.size(); ++i) {
        std::printf("%s: %.1f us for a row of 10,000, %.1f us for one of 100,000\n", names[i],
                    fewTimes[i] * 1e6, manyTimes[i] * 1e6);
        judge.Check(names[i], manyTimes[i] / fewTimes[i], growthLimit);
    }
}

void MeasureWaits(const clStringList& files, Judge& judge) {
    InDialog(files, [&](const Dialog& dialog) {
        const LongestWait wait;
        const bool isRead = ServeUntil([&] { return AllRead(dialog.list); }, patienceMs);
        judge.Require("all files read", isRead, 1);
        std::printf("reading: %lld messages, the longest wait ended after %.2f s\n",
                    static_cast<long long>(wait.Messages()), wait.When());
        judge.Check("longest wait of a message while 10,000 files are read, ms",
                    wait.Milliseconds(), waitLimitMs);
    });
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    if (argc != 2 && argc != 3) {
        std::printf("usage: list_dialog_bench FOLDER [opening|waits|ticking]\n");
        return 2;
    }
    const auto wants = [&](const wchar_t* part) {
        return argc == 2 || std::wcscmp(argv[2], part) == 0;
    };
    const ProgramGround ground;
    Judge judge;
    clStringList onDisk;
    ListFolder(argv[1], onDisk);
    if (onDisk.Count() != fewFiles) {
        std::printf("%lld files in the folder instead of %d\n",
                    static_cast<long long>(onDisk.Count()), fewFiles);
        return 2;
    }
    clStringList few;
    MakePaths(fewFiles, few);
    clStringList many;
    MakePaths(manyFiles, many);
    if (wants(L"opening")) MeasureOpening(many, judge);
    // Not first: behind the main window, too, rows have been painted before.
    if (wants(L"waits")) MeasureWaits(onDisk, judge);
    if (wants(L"ticking")) MeasureTicking(few, many, judge);
    return judge.Held() ? 0 : 1;
}
